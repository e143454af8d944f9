#!/usr/bin/env python3
"""Whether the tour's PostgreSQL server ends with who started it, also when that is killed.

Usage: server_ends.py FOLDER, the folder of the tour
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import contextlib
import pathlib
import shutil
import socket
import subprocess
import sys
import time

STARTED = """
import sys
from postgresql import PostgresqlServer
server = PostgresqlServer()
print(server.port, server.folder.name, flush=True)
sys.stdin.readline()
server.stop()
"""


def answers(port):
    with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", port), timeout=5):
        return True
    return False


@contextlib.contextmanager
def started(folder):
    """Who starts a server, and where that is. Nothing of either stays."""
    with subprocess.Popen([sys.executable, "-B", "-c", STARTED], cwd=folder, text=True, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE) as process:
        port, place = process.stdout.readline().split()
        assert answers(int(port)), "the server does not run"
        try:
            yield process, int(port), pathlib.Path(place)
        finally:
            process.kill()
            process.wait()
            shutil.rmtree(place, ignore_errors=True)


def main():
    folder = sys.argv[1]
    with started(folder) as (process, port, place):
        process.communicate("\n", timeout=60)
        assert process.returncode == 0 and not answers(port) and not place.exists(), "it does not end in good order"
    with started(folder) as (process, port, _):
        process.kill()
        process.wait()
        end = time.monotonic() + 60
        while answers(port):
            assert time.monotonic() < end, "the server outlives who started it"
            time.sleep(0.05)


if __name__ == "__main__":
    main()
