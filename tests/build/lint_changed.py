#!/usr/bin/env python3
"""Whether scripts/lint_changed.py looks again at what has changed, at all that it depends on, and at nothing else.

Usage: lint_changed.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import json
import subprocess
import sys
import tempfile
from pathlib import Path

# Writes down what it is asked to look at, and finds the word "fault".
CHECKER = """#!/usr/bin/python3
import sys
if sys.argv[1] == "--version":
    sys.exit(print("version", open("version").read()))
open("seen", "a").write(sys.argv[-1] + "\\n")
if "fault" in open(sys.argv[-1]).read():
    sys.exit(f"{sys.argv[-1]} has a fault")
"""


class Tree:
    """Two sources, one of which includes a header, the other in a folder, and a third that nobody compiles."""

    def __init__(self, folder, script):
        self.folder = Path(folder)
        self.script = script
        self.flags = ""
        (self.folder / "in").mkdir()
        for name, text in {"one.cpp": '#include "one.h"\n', "one.h": "int one();\n", "in/two.cpp": "int two();\n",
                           "loose.cpp": "int loose();\n", "version": "1", "settings": "", "checker": CHECKER}.items():
            self.write(name, text)
        (self.folder / "checker").chmod(0o755)

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def looked_at(self, option="--plain", code=0):
        """What the checker is run for."""
        entries = [{"directory": str(self.folder), "file": name, "command": f"c++ {self.flags} -o x.o -c {name}"}
                   for name in ("one.cpp", "in/two.cpp")]
        self.write("compile_commands.json", json.dumps(entries))
        self.write("seen", "")
        result = subprocess.run(
            [sys.executable, "-B", self.script, self.folder, self.folder / "memory", "settings", "./checker", option],
            input="one.cpp\0in/two.cpp\0loose.cpp\0", cwd=self.folder, stdout=subprocess.PIPE, text=True, check=False)
        assert result.returncode == code, result
        assert (code != 0) == ("has a fault" in result.stdout), result
        return set((self.folder / "seen").read_text(encoding="utf-8").split())


def check(tree):
    loose = {"loose.cpp"}  # nobody knows what it depends on: it is always looked at
    everything, one, two = {"one.cpp", "in/two.cpp"} | loose, {"one.cpp"} | loose, {"in/two.cpp"} | loose
    assert tree.looked_at() == everything, "the first time"
    assert tree.looked_at() == loose, "nothing has changed"
    tree.write("in/two.cpp", "int two(int);\n")
    assert tree.looked_at() == two, "a source has changed"
    tree.write("one.h", "int one(int);\n")
    assert tree.looked_at() == one, "a header has changed"
    tree.write("in/two.cpp", "int fault();\n")
    assert tree.looked_at(code=1) == two
    assert tree.looked_at(code=1) == two, "a fault is found again"
    tree.write("in/two.cpp", "int two(int);\n")
    assert tree.looked_at() == loose, "it is as it was when it passed"
    for change in (lambda: setattr(tree, "flags", "-DMORE"), lambda: tree.write("version", "2"),
                   lambda: tree.write("settings", "more")):
        change()
        assert tree.looked_at() == everything
        assert tree.looked_at() == loose
    tree.write("in/settings", "less")
    assert tree.looked_at() == two, "settings of its folder have come"
    assert tree.looked_at() == loose
    assert tree.looked_at("--other") == everything, "another option"


def main():
    with tempfile.TemporaryDirectory() as folder:
        check(Tree(folder, Path(sys.argv[1], "scripts/lint_changed.py").resolve()))


if __name__ == "__main__":
    main()
