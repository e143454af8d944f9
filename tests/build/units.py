#!/usr/bin/env python3
"""Fails when a unit has no test of its own name: FOLDER/NAME is a header with its source, and its test is
tests/FOLDER/tst_NAME.cpp. What has none is listed in tested_elsewhere.txt with the tests that look at it; a unit
that has got its test leaves the list, so the list can only become shorter. Fails as well when two sources of tests
or two classes in them have the same name, because several make one program, and when no program takes a source.

Usage: units.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
import sys
from collections import Counter
from pathlib import Path

# Folders at the root whose sources are no part of client or service.
NO_ROOMS = ("bench", "build", "tests")
LISTED = "tests/build/tested_elsewhere.txt"
# A class at the left margin: one of an anonymous namespace counts too, which is more than has to be.
TEST_CLASS = re.compile(r"^class (\w+) : public QObject", re.MULTILINE)
ENTERS = re.compile(r"^TIDELOFT_\w+\(", re.MULTILINE)
OTHER_MAIN = re.compile(r"^QTEST_\w*MAIN\(", re.MULTILINE)


def read(root, patterns):
    """The texts of the files that are called so, by their paths from the root; nothing that is built or hidden."""
    folders = [path for path in sorted(root.iterdir())
               if path.is_dir() and path.name != "build" and not path.name.startswith(".")]
    paths = [path for folder in folders for pattern in patterns for path in sorted(folder.rglob(pattern))]
    return {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8") for path in paths}


def units(files):
    own = {path.rsplit(".", 1)[0] for path in files if path.split("/")[0] not in NO_ROOMS}
    return sorted(unit for unit in own if f"{unit}.h" in files and f"{unit}.cpp" in files)


def test_of(unit):
    folder, name = unit.rsplit("/", 1)
    return f"tests/{folder}/tst_{name}.cpp"


def tests_in(files):
    """The sources of tests: path and text."""
    return {path: text for path, text in files.items() if path.startswith("tests/") and ENTERS.search(text)
            and path.endswith(".cpp")}


def listed(text):
    """What the list says: each unit with the names of the tests that look at it."""
    lines = [line for line in text.splitlines() if line and not line.startswith("#")]
    return {unit: tests.split() for unit, tests in (line.split(":", 1) for line in lines)}


def without_test(files):
    elsewhere = listed(files[LISTED])
    names = {Path(path).stem for path in tests_in(files)}
    known = units(files)
    for unit in known:
        if test_of(unit) not in files and unit not in elsewhere:
            yield f"{unit} has no {test_of(unit)}"
    for unit, tests in elsewhere.items():
        if unit not in known:
            yield f"{LISTED} names {unit}, which is no unit"
        elif test_of(unit) in files:
            yield f"{LISTED} names {unit}, which has its test"
        if not tests:
            yield f"{LISTED} names no test for {unit}"
        for name in sorted({*tests} - names):
            yield f"{LISTED} names {name} for {unit}, which is no test"


def twins(files):
    """Names that more than one source of tests has, or a class in one."""
    tests = tests_in(files)
    names = Counter(Path(path).name for path in tests)
    classes = Counter(name for text in tests.values() for name in TEST_CLASS.findall(text))
    for name, count in (names + classes).items():
        if count > 1:
            yield f"{count} tests or classes of tests are called {name}"


def with_another_main(files):
    """Sources that bring the main() of the test framework, which knows no names of classes."""
    for path, text in files.items():
        if path.startswith("tests/") and OTHER_MAIN.search(text):
            yield f"{path} does not enter its program with a macro of tests/support/test_main.h"


def in_no_program(files):
    listings = "\n".join(text for path, text in files.items() if path.endswith(("CMakeLists.txt", ".cmake")))
    for path in tests_in(files):
        name = Path(path).stem
        if not re.search(rf"\b({name}|{name.removeprefix('tst_')})\b", listings):
            yield f"no program takes {path}"


def project(root):
    return read(root, ("*.h", "*.cpp", "CMakeLists.txt", "*.cmake", Path(LISTED).name))


def offences(files):
    return [*without_test(files), *twins(files), *with_another_main(files), *in_no_program(files)]


def main():
    files = project(Path(sys.argv[1]))
    if len(units(files)) < 100 or len(tests_in(files)) < 200:
        sys.exit(f"Hardly anything was found below {sys.argv[1]}: nothing was checked.")
    if found := offences(files):
        sys.exit("\n".join(found))
    print(f"{len(units(files))} units, {len(listed(files[LISTED]))} of them tested elsewhere")


if __name__ == "__main__":
    main()
