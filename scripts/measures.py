#!/usr/bin/env python3
"""Prints how easily the project can be taken over, as figures: each with the most that it may be, and a mark where it
is more. The exit code is 1 then. What is built is not looked at, but for the number of programs of tests.

Usage: scripts/measures.py
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True
sys.path[:0] = [str(ROOT / "scripts"), str(ROOT / "tests/build")]
import layers  # noqa: E402
import lengths  # noqa: E402
import units  # noqa: E402

WINDOW = "ui/main_window"
# What the toolkit has no function for is searched here, and nowhere else.
TOOLKIT_PARTS = "ui/widgets/toolkit_parts.cpp"
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
LABEL = re.compile(r"\b(?:public|protected|private)?\s*(?:slots|signals|public|protected|private)\s*:(?!:)")
PROGRAM = re.compile(r'^add_test\(\[*=*\[?"?([\w.]+)\]?=*\]*"?\s+"([^"]+)"', re.MULTILINE)


def body_of(text, name):
    """What stands between the braces of the class NAME, without comments."""
    text = COMMENT.sub("", text)
    start = text.index("{", re.search(rf"^class {name}\b[^;{{]*{{", text, re.MULTILINE).start()) + 1
    depth, end = 1, start
    while depth:
        depth += {"{": 1, "}": -1}.get(text[end], 0)
        end += 1
    return text[start:end - 1]


def without_nested(text, left, right):
    """TEXT without all that stands between LEFT and RIGHT, whatever the depth."""
    pattern = re.compile(rf"{re.escape(left)}[^{re.escape(left + right)}]*{re.escape(right)}")
    while (shorter := pattern.sub("", text)) != text:
        text = shorter
    return text


def members(text, name):
    """The names of the data members of a class."""
    body = without_nested(without_nested(body_of(text, name), "{", "}"), "<", ">")
    found = []
    for declaration in LABEL.sub(";", body.replace("Q_OBJECT", "")).split(";"):
        declaration = declaration.split("=")[0].strip()
        if not declaration or "(" in declaration or re.match(r"(using|friend|class|struct|enum)\b", declaration):
            continue
        found += [re.search(r"\w+$", part.strip()).group() for part in declaration.split(",")]
    return found


def declared(text, name, label):
    """How many functions the class NAME declares under LABEL."""
    parts = re.split(rf"({LABEL.pattern})", body_of(text, name))
    sections = [parts[index + 1] for index in range(1, len(parts), 2) if re.search(rf"\b{label}\s*:", parts[index])]
    return sum(len(re.findall(r"\)[^;()]*;", section)) for section in sections)


def lines(text):
    return text.count("\n")


def product(files):
    """The sources of client and service."""
    return {path: text for path, text in files.items() if path.split("/")[0] not in units.NO_ROOMS}


def window_measures(files):
    header = files[f"{WINDOW}.h"]
    sources = [text for path, text in files.items() if re.fullmatch(rf"{WINDOW}\w*\.cpp", path)]
    yield "MainWindow: data members", len(members(header, "MainWindow")), 20
    yield "MainWindow: lines of its header", lines(header), 130
    yield "MainWindow: lines of its sources together", sum(map(lines, sources)), 450
    yield "MainWindow: sources", len(sources), None
    yield "MainWindow: slots", declared(header, "MainWindow", "slots"), 33
    yield "MainWindow: signals", declared(header, "MainWindow", "signals"), 1


def tree_measures(files):
    ours = product(files)
    long_files = [path for path in ours if lines(ours[path]) > lengths.FILE_LINES]
    long_headers = [path for path in ours if path.endswith(".h") and lines(ours[path]) > lengths.HEADER_LINES]
    reasons = lengths.reasons_of(ROOT / "scripts/lint.d/long_headers.txt")
    searches = {path: text.count("findChild") for path, text in ours.items()}
    toolkits = searches.pop(TOOLKIT_PARTS)
    yield "findChild for parts of our own", sum(searches.values()), 0
    yield f"... for the toolkit's, in {TOOLKIT_PARTS}", toolkits, 3
    yield f"headers over {lengths.HEADER_LINES} lines", len(long_headers), None
    yield "... without a reason in scripts/lint.d/long_headers.txt", len({*long_headers} - {*reasons}), 0
    yield f"files over {lengths.FILE_LINES} lines", len(long_files), 0
    yield "circles of units", len([*layers.circles(layers.sources(ROOT))]), 0
    yield "units", len(units.units(files)), None
    yield "... tested by tests of another name only", len(units.listed(files[units.LISTED])), None
    yield "... without any test", len([*units.without_test(files)]), 0


def test_measures(files):
    yield "sources of tests", len(units.tests_in(files)), None
    tests = [found for path in (ROOT / "build/dev").rglob("CTestTestfile.cmake")
             for found in PROGRAM.findall(path.read_text(encoding="utf-8"))]
    if tests:
        programs = {program for _, program in tests if Path(program).is_relative_to(ROOT / "build/dev")}
        yield "tests of ctest", len(tests), None
        yield "programs of tests", len(programs), None


def main():
    files = units.project(ROOT)
    status = 0
    print(f"{'':58}{'is':>6}{'at most':>10}")
    for name, value, most in [*window_measures(files), *tree_measures(files), *test_measures(files)]:
        too_much = most is not None and value > most
        status |= too_much
        print(f"{name:58}{value:6}{'' if most is None else most:>10}{'  too much' if too_much else ''}")
    return status


if __name__ == "__main__":
    sys.exit(main())
