#!/usr/bin/env python3
"""Prints the process numbers of the clients that were started with a mark: clients.py [--wait] MARK. With --wait it
waits until there is none, and prints nothing.

MARK is a whole variable of the environment, like NAME=VALUE. A client that restarts itself is another process, which
has left the terminal's group and is no child of whoever started it; its environment is what it keeps. Other programs
may have got that from a client, a message bus for example, and stay for good: what is no client does not count.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import os
import signal
import sys
import time
from pathlib import Path

PROGRAM = "tideloft"
SECONDS_BETWEEN = 0.3


def is_client(process):
    """A program that was built anew since it started has a word behind its name."""
    return Path(os.readlink(process / "exe")).name.startswith(PROGRAM)


def has_mark(process, mark):
    return mark.encode() in (process / "environ").read_bytes().split(b"\0")


def clients_with(mark, processes=Path("/proc")):
    """Processes of others cannot be looked into, and some end meanwhile: both are none."""
    found = []
    for process in processes.glob("[0-9]*"):
        try:
            if has_mark(process, mark) and is_client(process):
                found.append(int(process.name))
        except OSError:
            continue
    return sorted(found)


def main(arguments):
    if arguments[:1] != ["--wait"]:
        print(*clients_with(arguments[0]), sep="\n")
        return
    while clients_with(arguments[1]):
        time.sleep(SECONDS_BETWEEN)


if __name__ == "__main__":
    signal.signal(signal.SIGINT, signal.SIG_DFL)  # Ctrl+C in the terminal is for whoever waits
    main(sys.argv[1:])
