# Every check of the papers fails when what it checks is broken: broken.py ROOT
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import sys
import unittest

import commands
import figures
import guides
import links
import outline
from check import CHECKS
from project import Project

GUIDE = guides.ENGLISH
GUIDE_SV = guides.SWEDISH

# What is checked, in which file which words become which others, and what has to be said of it.
BREAKS = [
    ("a link to no file", links.check_links, "README.md", "](SECURITY.md)", "](SECRECY.md)",
     "leads to no file"),
    ("a picture that is not there", links.check_links, GUIDE, "pictures/light.png", "pictures/dark.png",
     "no file"),
    ("a link to no heading", links.check_links, GUIDE, "(#losing-them)", "(#finding-them)",
     "leads to no heading"),
    ("a heading that others link to is renamed", links.check_links, "README.md", "leaves out\n", "lacks\n",
     "leads to no heading"),
    ("a picture without words", links.check_links, GUIDE, "![The light theme]", "![]", "no alternative text"),
    ("a file that is not there", links.check_files, "CONTRIBUTING.md", "crypto/cipher/secret_bytes.h",
     "crypto/secret.h",
     "there is no crypto/secret.h"),
    ("a unit that is not there", links.check_files, "docs/architecture.md", "`ui/lists/row_plan`", "`ui/row_idea`",
     "there is no ui/row_idea"),
    ("a test that is not there", links.check_tests, "SECURITY.md", "`tst_tls_policy`", "`tst_tls_police`",
     "there is no test tst_tls_police"),
    ("a pattern that matches no test", links.check_tests, "docs/security-testing.md", "`./test round_trip`",
     "`./test square_trip`", "no test matches square_trip"),
    ("an option that ./run does not have", commands.check_commands, "README.md", "`./run --tour`",
     "`./run --trip`",
     "./run has no option --trip"),
    ("an option that ./test lost", commands.check_commands, "test", "--valgrind [PATTERN]", "[PATTERN]",
     "./test has no option --valgrind"),
    ("an option that the service does not have", commands.check_commands, "README.md", "--listen ::",
     "--host ::", "tideloftd has no option --host"),
    ("an option that the service lost", commands.check_commands, "service/option_table.cpp",
     '"listen", &', '"hear", &', "tideloftd has no option --listen"),
    ("an option that the manual page lost", commands.check_manual, "packaging/man/tideloftd.8", ".It Fl -database",
     ".It Ar database", "does not tell of --database"),
    ("an option that the client does not have", commands.check_commands, "SECURITY.md",
     "`tideloft --version`",
     "`tideloft --release`", "tideloft has no option --release"),
    ("a script that is not there", commands.check_commands, "README.md", "`./run --tour`", "`./walk --tour`",
     "there is no script for ./walk"),
    ("an option on its own that nothing has", commands.check_lone_options, "README.md", "`--database`",
     "`--drawer`", "nothing has the option --drawer"),
    ("an option on its own of another script", commands.check_lone_options, "packaging/packages",
     "--service-url", "--service", "nothing has the option --service-url"),
    ("a command that tideloftctl lost", commands.check_control_commands, "service/control/command_table.cpp",
     '{u"invite revoke"_s', '{u"invite recall"_s', "the manual page of tideloftctl has"),
    ("a command that tideloftctl does not have", commands.check_control_commands, "README.md", "`tideloftctl`",
     "`tideloftctl user rename`", "tideloftctl cannot do"),
    ("an option that tideloftctl does not have", commands.check_commands, "README.md", "`tideloftctl`",
     "`tideloftctl --force`", "tideloftctl has no option --force"),
    ("a preset that is not there", commands.check_cmake, "README.md", "--preset release", "--preset shipped",
     "no preset shipped"),
    ("a preset that cannot be tested", commands.check_cmake, "CONTRIBUTING.md", "ctest --preset dev",
     "ctest --preset release", "no preset release among the testPresets"),
    ("a setting that is not there", commands.check_cmake, "README.md", "-DTIDELOFT_SERVICE_URL",
     "-DTIDELOFT_SERVICE", "no setting TIDELOFT_SERVICE"),
    ("a preset that is not listed", commands.check_preset_table, "CONTRIBUTING.md", "| `release` |", "| |",
     "lists the"),
    ("a section in one language only", guides.check_structure, GUIDE_SV, "### Servrar", "Servrar",
     "headings"),
    ("a row in one language only", guides.check_structure, GUIDE,
     "| Space | presses a button, turns a switch |\n", "",
     "tables"),
    ("a paragraph in one language only", guides.check_structure, GUIDE_SV, "## Utan mus",
     "## Utan mus\n\nMer.\n",
     "paragraphs"),
    ("a text that is not the client's", guides.check_messages, GUIDE, "could not be displayed\" |",
     "cannot be displayed\" |", "no text of the client"),
    ("a text in the other language", guides.check_messages, GUIDE_SV, '| "Ogiltigt format."',
     '| "Invalid format."',
     "no text of the client"),
    ("a text that the client changed", guides.check_messages, "ui/messages/unreadable_message.cpp",
     "Message could not be",
     "Message can not be", "no text of the client"),
    ("a text that stands in another row", guides.check_messages, GUIDE_SV, '"✓ Sparad"', '"Cache rensad."',
     "no text of the client"),
    ("a text of the service in one guide only", guides.check_messages, GUIDE_SV, '| "Unknown error"', '| "Unknown"',
     "the guides quote different texts"),
    ("a text that is not the service's", guides.check_english_messages, GUIDE, '"This user name is already taken."',
     '"This name is already taken."', "the service does not say"),
    ("a text of the service without a row", guides.check_english_messages, "service/api/chat_handlers.cpp",
     "There is no user with this name.", "This user has gone away.", "does not explain 'This user has gone away.'"),
    ("a text that the service says no more", guides.check_english_messages, "service/api/picture_handlers.cpp",
     'u"There is no such picture."_s', 'QString()', "nobody says 'There is no such picture.' any more"),
    ("a text that is not the encryption's", guides.check_english_messages, GUIDE, "RSA encrypt failed",
     "RSA encryption failed", "the encryption does not say"),
    ("a text of the encryption without a row", guides.check_english_messages, "envelope_sealing.cpp",
     "No valid recipient device keys found.", "These keys are no good.", "does not explain"),
    ("a text that is not the network's", guides.check_network_messages, GUIDE, '"SSL handshake failed…"',
     '"TLS handshake failed…"', "the network does not say 'TLS handshake failed…'"),
    ("a box of the settings without a row", guides.check_warnings, "ui/settings/settings_sections.cpp", 'u"Resetting..."_s',
     'u"All is reset."_s', "does not explain 'All is reset.'"),
    ("a warning without a row", guides.check_warnings, "ui/messages/outbox.cpp",
     "sentTexts.append(plainText);",
     'sentTexts.append(plainText); emit failed(LocalizedText{u"Vänta."_s, u"Wait."_s});',
     "does not explain 'Wait.'"),
    ("warnings that are not found", guides.check_warnings, "ui/widgets/picture_file.cpp", "return LocalizedText{",
     "return Both{",
     "warnings were found"),
    ("a button that is called otherwise", guides.check_screen_words, GUIDE, "**Create account**",
     "**Make account**", "no 'Make account' on the screen"),
    ("a button in the other language", guides.check_screen_words, GUIDE_SV, "**Skapa konto**",
     "**Create account**",
     "no 'Create account' on the screen"),
    ("a second list of what is left out", guides.check_left_out, "CONTRIBUTING.md", "## Tests",
     "## What is left out", "lists of what is left out"),
    ("a guide without the way to the list", guides.check_left_out, GUIDE_SV, guides.LEFT_OUT, "../README.md",
     "does not link"),
    ("a figure that the paper has wrong", figures.check_figures, "README.md", "most 50 devices",
     "most 60 devices", "is 60, and 50"),
    ("a figure that the source changed", figures.check_figures, "service/store/groups.h", "maximumGroups = 100",
     "maximumGroups = 10", "is 100, and 10"),
    ("a version that the build does not ask for", figures.check_figures, "docs/building.md", "| CMake | 3.25 |",
     "| CMake | 3.20 |", "is 3.20, and 3.25"),
    ("a figure that is told no more", figures.check_figures, GUIDE, "5,242,880", "many", "is None"),
    ("a file that is called otherwise", figures.check_file_names, "key_store.cpp",
     "chat_private_key.b64", "private_key.b64", "does not name chat_private_key.b64"),
    ("a setting that the service does not have", figures.check_installed, "README.md",
     "`port = 443`", "`door = 443`", "does not know door"),
    ("a setting in a block that the service does not have", figures.check_installed, "docs/self-hosting.md",
     "trusted-proxy = ", "trusted-door = ", "does not know trusted-door"),
    ("a metric that the service does not have", figures.check_metrics, "service/metrics/counters.cpp",
     '"tideloftd_requests_total"', '"tideloftd_replies_total"', "there is no metric tideloftd_requests_total"),
    ("an alert that is gone", figures.check_metrics, "docs/self-hosting.md", "- alert: CertificateEnds", "- note: x",
     "has no three alerts"),
    ("a certificate in another place", figures.check_installed, "README.md", "/etc/tideloft/server.pem",
     "/etc/tideloft/chain.pem", "does not know /etc/tideloft/chain.pem"),
    ("a section that is gone", outline.check_outline, "README.md", "## Limits", "## Notes", "no section 'Limits'"),
    ("a drawing that is not shown", outline.check_outline, "docs/architecture.md", "](pictures/layers.svg)",
     "](pictures/message.svg)", "does not show pictures/layers.svg"),
]


class BrokenPapers(unittest.TestCase):
    def test_each_break_is_seen(self):
        for what, check, path, before, after, said in BREAKS:
            with self.subTest(what):
                text = Project(ROOT).read(path)
                self.assertIn(before, text, "nothing to break")
                problems = check(Project(ROOT, {path: text.replace(before, after)}))
                self.assertTrue(any(said in problem for problem in problems), problems)

    def test_each_check_is_broken(self):
        self.assertEqual({check for _, check, *_ in BREAKS}, set(CHECKS))


if __name__ == "__main__":
    ROOT = sys.argv.pop()
    unittest.main()
