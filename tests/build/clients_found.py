#!/usr/bin/env python3
"""Whether scripts/clients.py finds the clients that were started with a mark, and waits for their end.

Usage: clients_found.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import contextlib
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

MARK = f"TIDELOFT_FOUND_BY={os.getpid()}"
SLEEP = shutil.which("sleep")


@contextlib.contextmanager
def started(program, mark):
    """A process of the program with the mark in its environment. It ends with the block."""
    name, value = mark.split("=")
    with subprocess.Popen([program, "600"], env={"BEFORE": "1", name: value, "AFTER": "1"}) as process:
        try:
            yield process
        finally:
            process.kill()


def found(script, *arguments):
    return subprocess.run([sys.executable, "-B", script, *arguments], check=True, stdout=subprocess.PIPE, text=True,
                          timeout=60).stdout.split()


def check(script, client):
    with started(client, MARK) as first, started(client, MARK) as second, started(client, f"{MARK}0"), \
            started(SLEEP, MARK):
        assert set(found(script, MARK)) == {str(first.pid), str(second.pid)}, "only clients with the whole mark"
        with subprocess.Popen([sys.executable, "-B", script, "--wait", MARK]) as waiting:
            first.kill()
            first.wait()
            with contextlib.suppress(subprocess.TimeoutExpired):
                waiting.wait(1)
                raise AssertionError("it does not wait for the second one")
            second.kill()
            second.wait()
            assert waiting.wait(60) == 0
        assert not found(script, MARK)


def main():
    script = Path(sys.argv[1], "scripts/clients.py")
    with tempfile.TemporaryDirectory() as folder:
        client = Path(folder, "tideloft")
        shutil.copy(SLEEP, client)
        check(script, client)


if __name__ == "__main__":
    main()
