#!/usr/bin/env python3
"""Writes what was measured into a document: document.py [--rows] DOCUMENT COMMAND, with the figures on standard input.

A line of figures is "figure", what was measured, the value, the target, and whether it was reached, with tabs between
them. What stands above the mark in the document was written by hand, and stays. With --rows there is a table of its
own between two marks, in which each figure stands with the command that measured it: those that were measured again
are replaced, the others stay.
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
ROWS_BEGIN = "<!-- The rows of this table are written by their commands. -->\n"
ROWS_END = "<!-- Here the rows end. -->\n"
ROWS_HEAD = "| figure | measured | must reach | reached | command, day |\n|---|---|---|---|---|\n"


def cells(figures):
    split = [line.split("\t") for line in figures.splitlines()]
    if not split or any(len(row) != 5 or row[0] != "figure" for row in split):
        sys.exit(f"These are no figures: {figures}")
    return [row[1:] for row in split]


def rows(figures):
    return "".join(f"| {' | '.join(row)} |\n" for row in cells(figures))


def version_of(library):
    return subprocess.run(["pkg-config", "--modversion", library], check=True, stdout=subprocess.PIPE,
                          text=True).stdout.strip()


def processor():
    found = re.search(r"^model name\s*: (.*)$", Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.MULTILINE)
    return found.group(1) if found else "unknown"


def today():
    return datetime.datetime.now(datetime.timezone.utc).date().isoformat()


def machine(command):
    return (f'Measured on {today()} with "{command}".\n\n'
            f"Machine: {processor()}, {len(os.sched_getaffinity(0))} cores. "
            f"Qt {version_of('Qt6Core')}, OpenSSL {version_of('libcrypto')}.\n\n")


def parted(text, *marks):
    """What stands between the marks."""
    parts = []
    for mark in marks:
        before, found, text = text.partition(mark)
        if not found:
            sys.exit(f"There is no line {mark}")
        parts.append(before)
    return [*parts, text]


def write_table(path, command):
    by_hand, _ = parted(path.read_text(encoding="utf-8"), MARK)
    measured = f"{machine(command)}{HEAD}{rows(sys.stdin.read())}"
    path.write_text(f"{by_hand}{MARK}\n{measured}", encoding="utf-8")
    print(measured, end="")


def write_rows(path, command):
    before, table, after = parted(path.read_text(encoding="utf-8"), ROWS_BEGIN, ROWS_END)
    old = [line for line in table.splitlines(keepends=True) if line.startswith("|")]
    lines = {line.split(" | ")[0]: line for line in old[2:]}
    lines |= {f"| {row[0]}": f"| {' | '.join(row)} | `{command}`, {today()} |\n" for row in cells(sys.stdin.read())}
    text = f"{before}{ROWS_BEGIN}\n{ROWS_HEAD}{''.join(lines.values())}\n{ROWS_END}{after}"
    path.write_text(text, encoding="utf-8")


def main(*arguments):
    write = write_rows if arguments[0] == "--rows" else write_table
    document, command = arguments[-2:]
    write(Path(document), command)


if __name__ == "__main__":
    main(*sys.argv[1:])
