#!/usr/bin/env python3
"""Runs the fuzzers that are built and prints a table of what they found: fuzz.py ROOT LIMIT [TARGET].

LIMIT is the fuzzers' own option for when to end. The exit code is 1 when there is a finding.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# The time-out is by the clock: a machine that has much else to do may take long over one input.
OPTIONS = ("-timeout=120", "-rss_limit_mb=4096", "-print_final_stats=1")
# Where memory was taken is kept in brief: to see all of it, run the input of a finding by hand.
SANITIZERS = {"ASAN_OPTIONS": "detect_stack_use_after_return=1:malloc_context_size=1",
              "UBSAN_OPTIONS": "print_stacktrace=1"}
RUNS = re.compile(r"^stat::number_of_executed_units: *(\d+)", re.MULTILINE)
MEMORY = Path("/dev/shm")


def scratch_parent():
    """Key files are written again and again: in memory, where there is a file system for it."""
    return MEMORY if os.access(MEMORY, os.W_OK) else None


def execute(program, limit, folder, corpus, scratch):
    """Runs one fuzzer; its exit code. What it finds and says lies in FOLDER."""
    command = [program, limit, *OPTIONS, f"-artifact_prefix={folder}/finding-", folder / "corpus", corpus]
    with open(folder / "log", "wb") as log:
        return subprocess.run(command, env={**os.environ, **SANITIZERS, "TMPDIR": scratch}, stdout=log,
                              stderr=subprocess.STDOUT).returncode


def fuzz(root, target, limit, scratch):
    """Prints a row of the table. Whether the fuzzer found nothing and ended as it should."""
    folder = root / "build/fuzz/results" / target
    (folder / "corpus").mkdir(parents=True, exist_ok=True)
    for finding in folder.glob("finding-*"):
        finding.unlink()
    before = len(os.listdir(folder / "corpus"))
    print(f"Fuzzing {target}; its log is {folder}/log", file=sys.stderr, flush=True)
    code = execute(root / f"build/fuzz/tests/fuzz/fuzz_{target}", limit, folder, root / "tests/fuzz/corpus" / target,
                   scratch)
    log = (folder / "log").read_text(encoding="utf-8", errors="replace")
    runs = RUNS.search(log)
    new = len(os.listdir(folder / "corpus")) - before
    findings = len([*folder.glob("finding-*")])
    print(f"| {target} | {runs.group(1) if runs else 'unknown'} | {new} | {findings} |", flush=True)
    if code != 0:
        print("\n".join(log.splitlines()[-40:]), file=sys.stderr)
    return code == 0


def main(root, limit, *chosen):
    targets = chosen or sorted(path.name for path in (root / "tests/fuzz/corpus").iterdir() if path.is_dir())
    print("| target | runs | new corpus entries | findings |\n|---|---|---|---|", flush=True)
    with tempfile.TemporaryDirectory(prefix="fuzz.", dir=scratch_parent()) as scratch:
        fine = [fuzz(root, target, limit, scratch) for target in targets]
    return 0 if all(fine) else 1


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), *sys.argv[2:]))
