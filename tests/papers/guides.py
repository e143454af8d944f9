# The two user guides: built alike, and true to the words that are on the screen.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
from pathlib import Path

ENGLISH = "docs/user-guide.md"
SWEDISH = "docs/user-guide.sv.md"
LEFT_OUT = "../README.md#what-version-10-leaves-out"

LITERAL = r'u"((?:[^"\\]|\\.)*)"_s'
# Where the client warns: every text that appears there has its row in the guides.
WARNING = re.compile(r"(?:showError\(\s*text\(|LocalizedText(?: \w+)?\{|confirm\(text\(|Severity::\w+,\s*\{)"
                     + LITERAL + r",\s*" + LITERAL)
# The message tables of a guide, in this order.
CLIENT, SERVICE, NETWORK, ENCRYPTION = range(4)
# What the service says only to requests that this client does not send, or in answers that it does not show: the
# uploads, the groups, the profile and the registration of a device.
NOT_SHOWN = {
    "A device identifier has 1 to 128 characters on one line.", "A device name must not have control characters.",
    "A picture may have at most 5 MB.", "A picture must be a PNG, JPEG, GIF or WebP file.",
    "A plain message must not carry a nonce or keys.", "Pages of other services must not send pictures here.",
    "The JSON in the request is nested too deeply.", "The field … is not a wrapped key.",
    "The field … is not valid text.", "The field … must be 1 or 0.", "The field … must be 12 bytes in Base64.",
    "The field … must be a text.", "The field … must be an array.", "The field … must be true or false.",
    "The field … must be … here.", "The field … must have at most … keys.",
    "The field … must hold objects with a … and an ….", "The field … must not be empty.",
    "The field … must not hold control characters.", "The field … is not a ciphertext in Base64.",
    "The form in the request has no valid boundary.", "The form in the request is broken.",
    "The form must have the field … once.", "The message has no text.", "The picture is empty.",
    "The public key must be an RSA key of 2048 to 4096 bits in Base64.",
    "The request must be JSON (Content-Type application/json).",
    "The request must be a form (Content-Type multipart/form-data).", "The request must be one JSON object.",
    "There is no such group.", "There is no such picture.", "This expectation cannot be met.",
    "This transfer encoding is not supported.", "You have too many devices already (…).",
    "You have too many groups already (…).",
    # What the encryption says of what the client never asks for: it seals some text, for somebody, with fresh keys.
    "Plain text is empty.", "Recipient has no registered device keys.", "AES key must be 32 bytes.",
    "IV must be 12 bytes.",
    # And what it says of messages that cannot be opened, in whose place the padlock stands.
    "IV must be 12 bytes for this client.", "Ciphertext is too short.", "AES-GCM decrypt update failed: …",
    "AES-GCM set tag failed: …", "AES-GCM authentication failed."}
# Whose words the window puts behind its own when a message cannot be sealed.
SEALING = ("envelope_sealing.cpp", "key_wrapping.cpp", "aes_gcm.cpp")
# What the service says to the person who runs it.
TO_OPERATORS = ("service/options.cpp", "service/option_table.cpp", "service/config_file.cpp", "service/start_check.cpp",
                "service/main.cpp", "service/api/health.cpp", "service/http/certificate.cpp",
                "service/store/database.cpp", "service/store/database_file.cpp", "service/store/schema.cpp")
ADMINISTRATION = "service/control/"
TOOLKIT = "/usr/lib/*/libQt6Network.so.6"
PADLOCK = "\N{LOCK} "


class Texts:
    """The client's texts: pairs of Swedish and English, and those that are the same in both languages."""

    def __init__(self, project):
        files = [path for room in ("app", "ui") for path in project.files(f"{room}/**/*.cpp")]
        sources = [joined_literals(project.read(path)) for path in files]
        self.pairs = {pair for source in sources for pair in re.findall(LITERAL + r",\s*" + LITERAL, source)}
        self.warnings = {pair for source in sources for pair in WARNING.findall(source)}
        self.warnings |= {pair for pair in self.pairs if re.match(PADLOCK + r"\S", pair[0])}
        in_pairs = {text for pair in self.pairs for text in pair}
        self.neutral = {text for source in sources for text in re.findall(LITERAL, source)} - in_pairs
        self.service = {text for path in project.files("service/**/*.cpp")
                        if path not in TO_OPERATORS and not path.startswith(ADMINISTRATION)
                        for text in sentences(project, path)}
        self.service |= set(re.findall(r'return u"([A-Z][^"]+)"_s', project.read("net/api_client.cpp")))
        self.encryption = {text for path in SEALING
                           for text in sentences(project, path)}

    def of(self, language):
        return {pair[language] for pair in self.pairs} | self.neutral


def joined_literals(source):
    """Source with literals that the compiler joins written as one."""
    return re.sub(r'"\s*\n\s*"', "", source)


def sentences(project, path):
    """The source's texts that are sentences, with "…" for every quoted word and every place of something else."""
    literals = re.findall(r'(?:u|QStringLiteral\()"((?:[^"\\]|\\.)*)"', joined_literals(project.read(path)))
    texts = {re.sub(r'\\"[^"]*\\"|%\d', "…", re.sub(r"'(%\d)'", r"\1", text)) for text in literals}
    return {text for text in texts if re.match(r"[A-Z][\w-]* .*(\.|: …)$", text)}


def guides(project):
    return project.paper(SWEDISH), project.paper(ENGLISH)


def check_structure(project):
    """Both guides have the same headings in the same order by level, the same tables, pictures and lists."""
    shapes = []
    for guide in guides(project):
        shape = {"headings": [level for level, _ in guide.headings()],
                 "tables": [[len(row) for row in table] for table in guide.tables()],
                 "pictures": [target for _, target in guide.pictures()],
                 "links": [target.split("#")[0] for target in guide.links() if "user-guide" not in target],
                 "code": guide.code,
                 "paragraphs": paragraphs_by_section(guide)}
        shapes.append(shape)
    return [f"the guides differ in their {what}: {shapes[0][what]} and {shapes[1][what]}"
            for what in shapes[0] if shapes[0][what] != shapes[1][what]]


def paragraphs_by_section(guide):
    sections = re.split(r"^#+ .*$", guide.prose, flags=re.M)
    return [len([part for part in re.split(r"\n\s*\n", section) if part.strip()]) for section in sections]


def message_tables(guide):
    """The first cells of the tables of texts: what the client says, and what the service says."""
    tables = [[re.findall(r'"([^"]*)"', row[0]) for row in table] for table in guide.tables()]
    return [table for table in tables if any(table)]


def plain(text):
    """A quoted text without the ellipsis that stands for what follows."""
    return text.removesuffix("…").rstrip()


def check_messages(project):
    """Each text of the first table is the client's in the guide's language, row by row the same ones."""
    texts = Texts(project)
    swedish, english = (message_tables(guide) for guide in guides(project))
    if len(swedish) != 4 or len(english) != 4:
        return ["each guide needs tables of the texts of client, service, network and encryption"]
    known = {(swedish.rstrip(), english.rstrip()) for swedish, english in texts.pairs}
    problems = []
    for row_sv, row_en in zip(swedish[CLIENT], english[CLIENT]):
        partners = {(plain(sv), plain(en)) for sv in row_sv for en in row_en} & known
        if {text for pair in partners for text in pair} != {plain(text) for text in row_sv + row_en}:
            problems.append(f"no text of the client is {row_sv} in Swedish and {row_en} in English")
    if swedish[SERVICE:] != english[SERVICE:]:
        problems.append("the guides quote different texts of service, network or encryption")
    return problems


def check_english_messages(project):
    """The service and the encryption say what the guide quotes, and nothing else that a person sees."""
    texts = Texts(project)
    tables = message_tables(project.paper(ENGLISH))
    told = {table: {text for row in tables[table] for text in row} for table in (SERVICE, ENCRYPTION)}
    problems = [f"the service does not say {text!r}" for text in sorted(told[SERVICE] - texts.service)]
    problems += [f"the encryption does not say {text!r}" for text in sorted(told[ENCRYPTION] - texts.encryption)]
    said = texts.service | texts.encryption
    problems += [f"{ENGLISH} does not explain {text!r}"
                 for text in sorted(said - told[SERVICE] - told[ENCRYPTION] - NOT_SHOWN)]
    return problems + [f"nobody says {text!r} any more" for text in sorted(NOT_SHOWN - said)]


def check_network_messages(project):
    """The toolkit that is installed, or the unit that adds to it, has the words that the guide quotes of the network."""
    libraries = list(Path("/").glob(TOOLKIT[1:]))
    if not libraries:
        return [f"there is no {TOOLKIT} to look into"]
    words = libraries[0].read_bytes() + project.read("net/reply_outcome.cpp").encode()
    return [f"the network does not say {text!r}" for row in message_tables(project.paper(ENGLISH))[NETWORK]
            for text in row if not all(part.strip().encode() in words for part in text.split("…"))]


def check_warnings(project):
    """No warning of the client is missing in the tables."""
    texts = Texts(project)
    if len(texts.warnings) < 15:
        return [f"only {len(texts.warnings)} warnings were found in the client's sources"]
    problems = []
    for language, guide in enumerate(guides(project)):
        told = {plain(text) for row in message_tables(guide)[0] for text in row}
        problems += [f"{guide.path} does not explain {pair[language]!r}" for pair in sorted(texts.warnings)
                     if pair[language].rstrip() not in told]
    return problems


def check_screen_words(project):
    """What is bold stands on the screen in the guide's language, perhaps behind a sign and two blanks."""
    texts = Texts(project)
    problems = []
    for language, guide in enumerate(guides(project)):
        known = texts.of(language)
        known |= {text.split("  ", 1)[1] for text in known if "  " in text.strip()}
        known |= {"fetstil", "bold"}  # the words that explain it
        problems += [f"{guide.path}: no {word!r} on the screen" for word in guide.bold() if word not in known]
    return problems


def check_left_out(project):
    """What is left out is listed in the README alone, and both guides lead there."""
    problems = [f"{guide.path} does not link to {LEFT_OUT}" for guide in guides(project)
                if LEFT_OUT not in guide.links()]
    lists = [paper.path for paper in project.papers() for _, heading in paper.headings()
             if re.search(r"leaves? out|left out|limitations|not in version", heading, re.I)]
    return problems + ([] if lists == ["README.md"] else [f"lists of what is left out: {lists}"])
