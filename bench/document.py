#!/usr/bin/env python3
"""Writes what was measured into a document: document.py DOCUMENT COMMAND, with the figures on standard input.

A line of figures is "figure", what was measured, the value, the target, and whether it was reached, with tabs between
them. What stands above the mark in the document was written by hand, and stays.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import datetime
import os
import re
import subprocess
import sys
from pathlib import Path

MARK = "<!-- What follows is written by the command. -->\n"
HEAD = "| figure | measured | must reach | reached |\n|---|---|---|---|\n"


def rows(figures):
    cells = [line.split("\t") for line in figures.splitlines()]
    if not cells or any(len(row) != 5 or row[0] != "figure" for row in cells):
        sys.exit(f"These are no figures: {figures}")
    return "".join(f"| {' | '.join(row[1:])} |\n" for row in cells)


def version_of(library):
    return subprocess.run(["pkg-config", "--modversion", library], check=True, stdout=subprocess.PIPE,
                          text=True).stdout.strip()


def processor():
    found = re.search(r"^model name\s*: (.*)$", Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.MULTILINE)
    return found.group(1) if found else "unknown"


def machine(command):
    today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
    return (f'Measured on {today} with "{command}".\n\n'
            f"Machine: {processor()}, {len(os.sched_getaffinity(0))} cores. "
            f"Qt {version_of('Qt6Core')}, OpenSSL {version_of('libcrypto')}.\n\n")


def main(document, command):
    path = Path(document)
    by_hand, mark, _ = path.read_text(encoding="utf-8").partition(MARK)
    if not mark:
        sys.exit(f"{document} has no line {MARK}")
    measured = f"{machine(command)}{HEAD}{rows(sys.stdin.read())}"
    path.write_text(f"{by_hand}{MARK}\n{measured}", encoding="utf-8")
    print(measured, end="")


if __name__ == "__main__":
    main(*sys.argv[1:])
