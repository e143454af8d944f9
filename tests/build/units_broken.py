#!/usr/bin/env python3
"""Whether the check of the units sees what it is there for: each offence is planted once, in memory.

Usage: units_broken.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import sys
from pathlib import Path

import units

TEST = "class TestSea : public QObject\nTIDELOFT_TEST_MAIN(TestSea)\n"
LISTING = "tests/net/CMakeLists.txt"


def planted(files):
    """Each offence: what it is called, and the files that it changes."""
    unit = {"net/sea.h": "", "net/sea.cpp": ""}
    known = next(iter(units.listed(files[units.LISTED])))
    return (
        ("a unit without a test", unit),
        ("a unit in a new folder", {"net/deep/sea.h": "", "net/deep/sea.cpp": ""}),
        ("a unit in a new room", {"sea/sea.h": "", "sea/sea.cpp": ""}),
        ("a unit in the list that is not there", {units.LISTED: files[units.LISTED] + "net/sea: tst_text\n"}),
        ("a unit in the list that has its test", {units.test_of(known): TEST}),
        ("a unit in the list without tests", {**unit, units.LISTED: files[units.LISTED] + "net/sea:\n"}),
        ("a test in the list that is not there", {**unit, units.LISTED: files[units.LISTED] + "net/sea: tst_sea\n"}),
        ("two tests of one name", {"tests/net/tst_text.cpp": TEST}),
        ("two classes of one name", {"tests/net/tst_sea.cpp": TEST.replace("TestSea", "TestText"),
                                     LISTING: files[LISTING] + "tst_sea"}),
        ("a test with another main()", {"tests/net/tst_sea.cpp": TEST.replace("TIDELOFT_TEST", "QTEST")}),
        ("a test in no program", {"tests/net/tst_sea.cpp": TEST}),
    )


def main():
    files = units.project(Path(sys.argv[1]))
    before = len(units.offences(files))
    missed = [name for name, changes in planted(files) if len(units.offences({**files, **changes})) <= before]
    fine = {"net/sea.h": "", "net/sea.cpp": "", "tests/net/tst_sea.cpp": TEST, LISTING: files[LISTING] + "tst_sea"}
    if len(units.offences({**files, **fine})) != before:
        missed.append("(it has something against a unit with its test)")
    if missed:
        sys.exit("The check of the units does not see:\n  " + "\n  ".join(missed))
    print(f"{len(planted(files))} planted offences were seen")


if __name__ == "__main__":
    main()
