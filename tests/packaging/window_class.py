"""The launcher recognises the client's windows: what the desktop entry expects is what they carry under X11.

window_class.py --client PROGRAM --source DIR
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import argparse
import configparser
import pathlib
import re
import subprocess
import sys
import tempfile

ENTRY = "packaging/desktop/im.tideloft.TideLoft.desktop"


def parse_arguments():
    parser = argparse.ArgumentParser(description="Compares a window's class with the desktop entry.")
    for name in ("client", "source"):
        parser.add_argument(f"--{name}", required=True, type=pathlib.Path)
    return parser.parse_args()


def expected_class(source):
    entry = configparser.ConfigParser(interpolation=None, strict=False)
    entry.optionxform = str
    entry.read(source / ENTRY, encoding="utf-8")
    return entry["Desktop Entry"]["StartupWMClass"]


def tool(environment, *arguments):
    return subprocess.run(arguments, env=environment, capture_output=True, text=True, check=False).stdout


def classes_of_windows(client, environment, wait_until):
    """What X says of the class of every window that the started client shows."""
    process = subprocess.Popen([client], env=environment)
    try:
        windows = wait_until("a window", lambda: tool(
            environment, "xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split())
        return {re.sub(r'.*, "(.*)"\n', r"\1", tool(environment, "xprop", "-id", window, "WM_CLASS"))
                for window in windows}
    finally:
        process.terminate()
        process.wait()


def main():
    arguments = parse_arguments()
    sys.path.insert(0, str(arguments.source / "tests/tour"))
    import display
    from checks import wait_until
    with display.virtual_display() as screen, tempfile.TemporaryDirectory() as home:
        environment = display.clean_environment(screen, home) | {"HOME": home}
        found = classes_of_windows(arguments.client, environment, wait_until)
    expected = {expected_class(arguments.source)}
    print(f"the windows say {found}, the desktop entry {expected}")
    return 0 if found == expected else 1


if __name__ == "__main__":
    sys.exit(main())
