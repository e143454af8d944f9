#!/usr/bin/env python3
"""What ./test --nightly makes of its parts, with short ones in the place of its own; whether its own parts are commands
that there are; and how the tests are counted that an hour has ended.

Usage: nightly_parts.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

ROOT = Path(sys.argv[1]).resolve()
sys.path.insert(0, str(ROOT / "scripts"))
import nightly  # noqa: E402

PARTS = """# a comment
first | | echo begun; echo 7 passed, 0 failed
broken | | echo begun; echo 6 passed, 1 failed; exit 1
without packages | | echo They can be installed by root only.; exit 3
needy | nothing:at-all | echo never
last | | test -f scripts/nightly.py && echo in the folder of the project
"""


class TestNightly(unittest.TestCase):
    def night(self, parts, *arguments):
        """Exit code, and each line of the table by the name of its part, split at two blanks; the counts as "" """
        with tempfile.TemporaryDirectory() as folder:
            listing = Path(folder, "parts.txt")
            listing.write_text(parts, encoding="utf-8")
            done = subprocess.run([sys.executable, "-B", ROOT / "scripts/nightly.py", listing, Path(folder, "logs"),
                                   *arguments], text=True, check=False, stdout=subprocess.PIPE)
            logs = sorted(path.name for path in Path(folder, "logs").iterdir())
        lines = done.stdout.split("\npart ")[1].splitlines()
        return done.returncode, {line.split("  ")[0]: re.split(" {2,}", line)[1:] for line in lines[1:]}, logs

    def test_every_part_runs_whatever_the_others_did(self):
        ended, rows, logs = self.night(PARTS.replace("needy | nothing:at-all", "needy |"))
        self.assertEqual(ended, 1)
        self.assertEqual({name: row[0] for name, row in rows.items() if row},
                         {"first": "passed", "broken": "failed", "without packages": "skipped", "needy": "passed",
                          "last": "passed"})
        self.assertEqual(rows["broken"][-1], "6 passed, 1 failed")
        self.assertEqual(rows["last"][-1], "in the folder of the project")
        self.assertIn("3 passed, 1 failed, 1 skipped, 0 not run", rows)
        self.assertEqual(logs, ["broken.log", "first.log", "last.log", "needy.log", "without-packages.log"])

    def test_only_some_and_none(self):
        ended, rows, _ = self.night(PARTS, "first|last")
        self.assertEqual((ended, rows["first"][0], rows["last"][0], "broken" in rows), (0, "passed", "passed", False))
        ended, rows, _ = self.night(PARTS, "without packages")
        self.assertEqual((ended, rows["without packages"][0]), (1, "skipped"), "nothing was shown")

    def test_says_for_lack_of_what_a_part_is_skipped(self):
        part = nightly.Part("trial | root cgroups mirror | exit 1")
        with mock.patch.object(nightly.os, "geteuid", return_value=1000), \
                mock.patch.object(nightly, "has_mirror", return_value=False), tempfile.TemporaryDirectory() as folder:
            nightly.run(part, Path(folder))
        self.assertEqual(part.result, "skipped")
        self.assertIn("for lack of the rights of root", part.remark)
        self.assertIn("and the mirror of Debian", part.remark)

    def test_names_the_packages_that_are_missing(self):
        script = nightly.MISSING.replace('source "$root/scripts/packages.sh"', 'source "$root/scripts/packages.sh"\n'
                                         "root_command() { return 1; }\nis_installed() { [[ $1 == cmake ]]; }\n"
                                         "dpkg-query() { :; }")
        with mock.patch.object(nightly, "MISSING", script):
            self.assertEqual(nightly.lack_of("packages:valgrind,cpack"),
                             "the packages valgrind libc6-dbg dpkg-dev file")
        with mock.patch.object(nightly, "MISSING", script.replace("return 1;", "echo sudo;")):
            self.assertEqual(nightly.lack_of("packages:valgrind"), "", "they will be installed")

    def test_its_own_parts_are_commands_that_there_are(self):
        parts = nightly.parts_of((ROOT / "scripts/nightly_parts.txt").read_text(encoding="utf-8"))
        self.assertEqual(len({part.name for part in parts}), len(parts))
        self.assertGreaterEqual(len(parts), 9)
        for part in parts:
            script, option = part.command.split()[:2]
            text = (ROOT / script).read_text(encoding="utf-8")
            self.assertTrue(re.search(rf"(?m)^ *(\S+ \| )*{option}( \| \S+)*\) ", text), part.command)
            for need in part.needs:
                kind, _, lists = need.partition(":")
                self.assertIn(kind, ("packages", "root", "cgroups", "mirror"))
                for name in filter(None, lists.split(",")):
                    self.assertTrue((ROOT / f"packaging/debian-packages/{name}.txt").exists(), name)


class TestCutOff(unittest.TestCase):
    def counted(self, seconds, status, output):
        """The last line of the summary of one test."""
        with tempfile.NamedTemporaryFile("w", suffix=".xml", encoding="utf-8") as results:
            results.write(f'<testsuite><testcase name="tst_a" time="{seconds}" status="{status}">'
                          f"<system-out>{output}</system-out></testcase></testsuite>")
            results.flush()
            done = subprocess.run([sys.executable, "-B", ROOT / "scripts/test_summary.py", results.name, "--cut-off",
                                   "600"], text=True, check=False, stdout=subprocess.PIPE)
        return done.stdout.splitlines()[-1], done.returncode

    def test_what_had_found_nothing_passed(self):
        self.assertEqual(self.counted(600.02, "fail", "PASS   : a\n"), ("1 passed, 0 failed", 0))

    def test_what_had_found_something_failed(self):
        self.assertEqual(self.counted(600.02, "fail", "FAIL!  : a\n"), ("0 passed, 1 failed", 1))
        self.assertEqual(self.counted(600.02, "fail", "QObject::connect: no\n"), ("0 passed, 1 failed", 1))

    def test_what_broke_off_earlier_failed(self):
        self.assertEqual(self.counted(599, "fail", "PASS   : a\n"), ("0 passed, 1 failed", 1))

    def test_what_came_to_its_end_counts_as_ever(self):
        totals = "Totals: 5 passed, 0 failed, 0 skipped, 0 blacklisted, 1ms\n"
        self.assertEqual(self.counted(900, "run", totals), ("5 passed, 0 failed", 0))
        self.assertEqual(self.counted(900, "fail", totals.replace("0 failed", "2 failed")), ("5 passed, 2 failed", 1))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
