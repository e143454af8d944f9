"""Adds up what ctest wrote to its JUnit file. The last line is "N passed, N failed".

Usage: test_summary.py FILE [--cut-off SECONDS]   a test that was ended after that time, and had found nothing, passed
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import re
import sys
import xml.etree.ElementTree as ElementTree

TOTALS = re.compile(r"^Totals: (\d+) passed, (\d+) failed, (\d+) skipped, (\d+) blacklisted", re.MULTILINE)
FOUND = re.compile(r"^(FAIL!|XPASS|QFATAL|SKIP) ", re.MULTILINE)
# A warning as the toolkit prints it: "QObject::connect: ...", "QPainter::begin(): ...".
TOOLKIT_WARNING = re.compile(r"\bQ(Painter|Object)(::~?\w+)?(\(.*?\))?:")


def warnings_in(output):
    return [line for line in output.splitlines()
            if TOOLKIT_WARNING.search(line) and not line.startswith(("PASS", "FAIL"))]


def was_cut_off(case, seconds, output):
    """Whether a test was ended by the clock, and had found nothing until then. Whether it hung is not seen here."""
    return (float(case.get("time", 0)) >= seconds and not TOTALS.search(output) and not FOUND.search(output)
            and not warnings_in(output))


def count(name, status, output):
    """The passed and failed functions of one test program, and what there is to say about it."""
    totals = TOTALS.findall(output)
    passed = sum(int(total[0]) for total in totals)
    failed = sum(int(total[1]) for total in totals)
    skipped = sum(int(total[2]) + int(total[3]) for total in totals)
    remarks = [f"{name}: {line}" for line in warnings_in(output)]
    failed += len(remarks) + skipped
    if skipped:
        remarks.append(f"{name}: {skipped} skipped, which counts as failed")
    if status != "run":  # ctest's word for a test that ran and passed
        remarks.append(f"{name}: {status}")
        failed = max(failed, 1)  # a crash or a time-out leaves no totals
    elif not totals:
        passed += 1  # a check without functions of its own
    return passed, failed, remarks


def main():
    try:
        cases = ElementTree.parse(sys.argv[1]).getroot().findall("testcase")
    except (OSError, ElementTree.ParseError) as reason:
        sys.exit(f"No results: {reason}\n0 passed, 1 failed")
    cut_off = float(sys.argv[3]) if sys.argv[2:3] == ["--cut-off"] else float("inf")
    passed = failed = 0
    for case in cases:
        output = case.findtext("system-out", "")
        if was_cut_off(case, cut_off, output):
            print(f"{case.get('name')} was ended after {cut_off:.0f} s, and had found nothing")
            passed += 1
            continue
        more_passed, more_failed, remarks = count(case.get("name"), case.get("status"), output)
        passed += more_passed
        failed += more_failed
        for remark in remarks:
            print(f"FAILED: {remark}")
    failed += 0 if cases else 1  # nothing ran: nothing was shown
    print(f"{passed} passed, {failed} failed")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
