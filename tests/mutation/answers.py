"""What was found out before, for a run that was interrupted or that follows on new tests: Answers."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import dataclasses
import hashlib
import json

# The changed code, what its tests share, how it is built, and how it is decided that a test noticed. Of all
# that is elsewhere in tests/ only the test that noticed says anything about a change.
GROUND = ("crypto/", "local_files/", "net/", "ui/", "cmake/", "tests/support/", "tests/mutation/project_copy.py",
          "CMake")


def digest(paths):
    whole = hashlib.sha256()
    for path in paths:
        whole.update(f"{path.name} {hashlib.sha256(path.read_bytes()).hexdigest()}\n".encode())
    return whole.hexdigest()


class Answers:
    """The changes that a test noticed, kept in FILE, as long as neither the code nor that test has changed.

    What nobody noticed is tried again every time: there may be a new test.
    """

    def __init__(self, source, file):
        self.source = source
        self.file = file
        files = (path for path in source.rglob("*") if path.is_file())
        self.ground = digest(sorted(p for p in files if p.relative_to(source).as_posix().startswith(GROUND)))
        kept = json.loads(file.read_text()) if file.exists() else {}
        self.known = kept.get("known", {}) if kept.get("ground") == self.ground else {}

    @staticmethod
    def key(mutant):
        return json.dumps(dataclasses.astuple(mutant))

    def test_digest(self, test):
        """Nothing for a test whose source has another name."""
        sources = sorted((self.source / "tests").rglob(f"{test}.cpp"))
        return digest(sources) if len(sources) == 1 else None

    def find(self, mutant):
        """The test that noticed the change, or nothing."""
        test, of_source = self.known.get(self.key(mutant), (None, None))
        return test if test and of_source == self.test_digest(test) else None

    def keep(self, mutant, test):
        if of_source := self.test_digest(test):
            self.known[self.key(mutant)] = (test, of_source)
            self.file.write_text(json.dumps({"ground": self.ground, "known": self.known}))
