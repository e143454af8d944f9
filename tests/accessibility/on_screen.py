"""Runs a program on a screen of its own with a session bus, where assistive programs are listened to.

on_screen.py PROGRAM [ARGUMENTS]
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import pathlib
import subprocess
import sys

# The tour's screen.
sys.path.insert(0, str(pathlib.Path(__file__).absolute().parent.parent / "tour"))

import display  # noqa: E402


def main():
    if sys.argv[-1] != "--on-screen":
        return display.run_again_on_screen()
    import accessibility  # needs the session bus that is there only now

    accessibility.desktop()  # with somebody who listens, programs begin to tell
    return subprocess.run(sys.argv[1:-1], check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
