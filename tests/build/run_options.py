#!/usr/bin/env python3
"""Whether ./run refuses what it does not know before it does anything.

Usage: run_options.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import subprocess
import sys
from pathlib import Path

REFUSED = (
    ["--toor"],
    ["--tour", "--database"],
    ["--tour", "--database", "other"],
    ["--tour", "--databases", "postgresql"],
    ["--tour", "--database", "postgresql", "more"],
    ["--database", "postgresql"],
)


def run(root, arguments):
    return subprocess.run(["/bin/bash", Path(root, "run"), *arguments], capture_output=True, text=True, check=False,
                          timeout=60)


def main():
    root = sys.argv[1]
    usage = run(root, ["--help"])
    assert usage.returncode == 0 and "--tour [--database postgresql]" in usage.stdout
    for arguments in REFUSED:
        done = run(root, arguments)
        assert done.returncode == 2 and done.stderr == usage.stdout and not done.stdout, (arguments, done)


if __name__ == "__main__":
    main()
