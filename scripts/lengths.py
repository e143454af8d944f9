# How long files and functions may be: says what is longer, and fails. Functions in C++ are clang-tidy's matter.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
"""Usage: lengths.py LONG_HEADERS, in the folder of the tree. LONG_HEADERS lists "PATH: why it may be longer"."""

import ast
import pathlib
import re
import subprocess
import sys

FILE_LINES = 300
HEADER_LINES = 100
FUNCTION_LINES = 40
SOURCES = ["*.cpp", "*.h", "*.py", "*.sh", "*.cmake", "CMakeLists.txt"]
SCRIPT = r"^#!(/usr)?/bin/(env )?((ba)?sh|python3)( |$)"
PYTHON_SCRIPT = re.compile(r"#!(/usr)?/bin/(env )?python3\b")
SHELL_FUNCTION = re.compile(r"^(\w+)\(\)\n\{\n(.*?)^\}$", re.MULTILINE | re.DOTALL)


def output_lines(*command):
    return subprocess.run(command, capture_output=True, text=True).stdout.splitlines()


def source_names():
    listed = output_lines("git", "ls-files", "--cached", "--others", "--exclude-standard", "--", *SOURCES)
    scripts = output_lines("git", "grep", "-l", "--untracked", "-E", SCRIPT)
    return sorted({*listed, *scripts})


def reasons_of(path):
    lines = [line for line in path.read_text().splitlines() if line and not line.startswith("#")]
    return dict(line.split(": ", 1) for line in lines)


def python_functions(text):
    """Name and number of lines of every function."""
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, (ast.FunctionDef, ast.AsyncFunctionDef)):
            yield node.name, node.end_lineno - node.lineno


def shell_functions(text):
    for found in SHELL_FUNCTION.finditer(text):
        yield found.group(1), found.group(2).count("\n")


def long_functions(name, text):
    if name.endswith(".py") or PYTHON_SCRIPT.match(text):
        functions = python_functions(text)
    elif text.startswith("#!") or name.endswith(".sh"):
        functions = shell_functions(text)
    else:
        return
    for function, lines in functions:
        if lines > FUNCTION_LINES:
            yield f"{name}: {function} has {lines} lines, and {FUNCTION_LINES} are allowed"


def findings(names, reasons):
    for name in names:
        text = pathlib.Path(name).read_text()
        lines = text.count("\n")
        allowed = HEADER_LINES if name.endswith(".h") and name not in reasons else FILE_LINES
        if lines > allowed:
            yield f"{name}: {lines} lines, and {allowed} are allowed"
        if name in reasons and lines <= HEADER_LINES:
            yield f"{name}: {lines} lines, and yet listed as a long header"
        yield from long_functions(name, text)
    for name in sorted(set(reasons) - set(names)):
        yield f"{name}: listed as a long header, and not there"


def main(long_headers):
    found = list(findings(source_names(), reasons_of(pathlib.Path(long_headers))))
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
