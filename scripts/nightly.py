"""Runs what takes long, part after part, whatever the others did, and ends with one table.

Usage: nightly.py PARTS FOLDER [PATTERN]   PARTS lists "NAME | WHAT IT NEEDS | COMMAND"; what a part says goes into
                                           FOLDER; only parts whose name matches PATTERN are run
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import os
import re
import subprocess
import sys
import time
import urllib.request
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MIRROR = "http://deb.debian.org/debian/dists/bookworm/InRelease"
NO_PACKAGES = 3  # how the project's commands end when they lack packages
# Prints what is missing of the lists, unless it can be installed without a question.
MISSING = """
set -eu
root=$1
shift
source "$root/scripts/packages.sh"
command -v dpkg-query >/dev/null && ! root_command >/dev/null && missing_packages "$@"
exit 0
"""


class Part:
    def __init__(self, line):
        self.name, needs, self.command = (field.strip() for field in line.split("|"))
        self.needs = needs.split()
        self.result, self.remark, self.seconds = "not run", "", 0.0


def parts_of(text):
    return [Part(line) for line in text.splitlines() if line and not line.startswith("#")]


def has_mirror():
    try:
        with urllib.request.urlopen(MIRROR, timeout=20) as reply:
            return reply.status == 200
    except OSError:
        return False


def lack_of(need):
    """What is not there of something that a part needs, in words; nothing if it is there."""
    kind, _, lists = need.partition(":")
    if kind == "packages":
        done = subprocess.run(["bash", "-c", MISSING, "missing", ROOT, *lists.split(",")], text=True, check=True,
                              stdout=subprocess.PIPE)
        return f"the packages {' '.join(done.stdout.split())}" if done.stdout else ""
    found = {"root": lambda: os.geteuid() == 0,
             "cgroups": lambda: "\tcgroup2\n" in Path("/proc/filesystems").read_text(encoding="utf-8"),
             "mirror": has_mirror}
    words = {"root": "the rights of root", "cgroups": "control groups", "mirror": "the mirror of Debian"}
    return "" if found[kind]() else words[kind]


def log_of(part, folder):
    return folder / f"{re.sub('[^A-Za-z0-9]+', '-', part.name)}.log"


def last_line(log):
    lines = [line for line in log.read_text(encoding="utf-8", errors="replace").splitlines() if line.strip()]
    return lines[-1].strip() if lines else "said nothing"


def run(part, folder):
    lacks = [lack for lack in map(lack_of, part.needs) if lack]
    if lacks:
        part.result, part.remark = "skipped", f"for lack of {' and '.join(lacks)}"
        return
    log = log_of(part, folder)
    begin = time.monotonic()
    with open(log, "wb") as output:
        ended = subprocess.run(part.command, shell=True, check=False, cwd=ROOT, stdin=subprocess.DEVNULL,
                               stdout=output, stderr=subprocess.STDOUT).returncode
    part.seconds = time.monotonic() - begin
    part.result = {0: "passed", NO_PACKAGES: "skipped"}.get(ended, "failed")
    part.remark = last_line(log)
    if part.result == "skipped":
        part.remark = f"for lack of packages: {part.remark}"


def duration(seconds):
    if seconds < 60:
        return f"{seconds:.0f} s"
    hours, minutes = divmod(round(seconds / 60), 60)
    return f"{hours} h {minutes:02} min" if hours else f"{minutes} min"


def table(parts):
    rows = [("part", "result", "time", "its last words")]
    rows += [(part.name, part.result, duration(part.seconds) if part.seconds else "", part.remark) for part in parts]
    widths = [max(len(row[column]) for row in rows) for column in range(3)]
    lines = ["  ".join([*map(str.ljust, row[:3], widths), row[3][:150]]).rstrip() for row in rows]
    counts = ", ".join(f"{sum(part.result == result for part in parts)} {result}"
                       for result in ("passed", "failed", "skipped", "not run"))
    return "\n".join([*lines, "", counts])


def main():
    pattern = sys.argv[3] if len(sys.argv) > 3 else ""
    folder = Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    parts = [part for part in parts_of(Path(sys.argv[1]).read_text(encoding="utf-8"))
             if re.search(pattern, part.name)]
    try:
        for part in parts:
            print(f"== {part.name}: {part.command}", flush=True)
            run(part, folder)
            print(f"{part.result}  {part.remark}", flush=True)
    except KeyboardInterrupt:
        print("Interrupted")
    print(f"\n{table(parts)}\nWhat they said lies in {folder}")
    sys.exit(0 if any(part.result == "passed" for part in parts)
             and all(part.result in ("passed", "skipped") for part in parts) else 1)


if __name__ == "__main__":
    main()
