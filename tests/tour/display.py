"""A screen of the tour's own: a virtual display, its window manager, its keyboard and its pictures."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import contextlib
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from checks import wait_until

WIDTH, HEIGHT = 2240, 760

TOOLS = ("Xvfb", "openbox", "xdotool", "xmodmap", "import", "convert", "dbus-run-session")

# What a session bus says as it starts.
USUAL_WORDS = ("Failed to set fd limit", "Activating service name=", "Successfully activated service",
               "SpiRegistry daemon is running")

# Windows without a frame stand exactly where they are put. Keys do what they do on most desktops.
WINDOW_MANAGER = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><keepBorder>no</keepBorder></theme>
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
  <applications><application class="*"><decor>no</decor></application></applications>
</openbox_config>
"""


def missing_tools():
    return [tool for tool in TOOLS if not shutil.which(tool)]


@contextlib.contextmanager
def virtual_display():
    """A fresh X server on a free display number, which it picks itself; yields the name of the display."""
    reader, writer = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp"],
        pass_fds=(writer,), stderr=subprocess.DEVNULL)
    os.close(writer)
    try:
        with os.fdopen(reader) as number:
            display = number.readline().strip()
        if not display:
            raise SystemExit("tour: Xvfb did not start")
        yield f":{display}"
    finally:
        server.terminate()
        server.wait()


def clean_environment(display, directory):
    """The environment of everything on the tour's screen: nothing of the person's own desktop reaches it."""
    unwanted = ("QT_", "XDG_", "GTK_", "LC_", "TIDELOFT_")
    proxies = ("http_proxy", "https_proxy", "all_proxy", "no_proxy")
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith(unwanted) and name.lower() not in proxies
                   and name not in ("WAYLAND_DISPLAY", "SESSION_MANAGER", "NO_AT_BRIDGE", "LANGUAGE")}
    runtime = pathlib.Path(directory, "runtime")
    runtime.mkdir(mode=0o700)
    environment.update(DISPLAY=display, LANG="C.UTF-8", LC_ALL="C.UTF-8", XDG_RUNTIME_DIR=str(runtime),
                       QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    return environment


def run_again_on_screen():
    """Starts the running program again, with --on-screen and a screen and a session bus of its own."""
    missing = missing_tools()
    if missing:
        raise SystemExit(f"{pathlib.Path(sys.argv[0]).stem}: not installed: {', '.join(missing)}. "
                         "./test installs what it needs.")
    with virtual_display() as screen, tempfile.TemporaryDirectory() as directory:
        # A file: of a pipe nobody would know when the last program of the session bus has closed it.
        complaints = pathlib.Path(directory, "complaints")
        try:
            with open(complaints, "wb") as output:
                return subprocess.run(
                    ["dbus-run-session", "--", sys.executable, "-B", *sys.argv, "--on-screen"],
                    env=clean_environment(screen, directory), stderr=output, check=False).returncode
        finally:
            show_complaints(complaints.read_text(encoding="utf-8", errors="replace"))


def show_complaints(text):
    """What went wrong, an import that failed for example, without what is always said."""
    for line in text.splitlines():
        if line.strip() and not any(usual in line for usual in USUAL_WORDS):
            print(line, file=sys.stderr)


def tool(*arguments, **options):
    return subprocess.run(arguments, check=True, capture_output=True, **options).stdout


@contextlib.contextmanager
def window_manager():
    with tempfile.TemporaryDirectory() as directory:
        settings = pathlib.Path(directory, "rc.xml")
        settings.write_text(WINDOW_MANAGER, encoding="utf-8")
        manager = subprocess.Popen(["openbox", "--sm-disable", "--config-file", str(settings)],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until("the window manager", lambda: subprocess.run(
                ["xdotool", "get_desktop"], capture_output=True, check=False).returncode == 0)
            yield
        finally:
            manager.terminate()
            manager.wait()


def put_on_keyboard(texts):
    """Gives every letter of TEXTS that the keyboard lacks a key of its own. Changing the keyboard between
    two key presses instead would race with the program that reads them."""
    keys = tool("xmodmap", "-pke").decode().splitlines()
    free = [line.split()[1] for line in keys if line.split("=")[1].strip() == ""]
    letters = sorted({letter for text in texts for letter in text if ord(letter) > 126})
    for letter in letters:
        tool("xmodmap", "-e", f"keycode {free.pop()} = U{ord(letter):04X}")


def draw_picture(directory):
    """A picture such as a person might take for their own, wider than high."""
    path = pathlib.Path(directory, "By the Sea.PNG")
    tool("convert", "-size", "200x100", "gradient:#ffb36b-#2f6fb0", "-fill", "#fff3c4",
         "-draw", "circle 150,32 150,50", f"png:{path}")
    return path


def screen_pixels():
    return tool("import", "-silent", "-window", "root", "-depth", "8", "rgb:-")


def steady_screen(seconds=3.0):
    """The screen once two looks in a row were the same, so that no picture shows half a fade."""
    deadline = time.monotonic() + seconds
    before = None
    while True:
        pixels = screen_pixels()
        digest = hashlib.sha256(pixels).digest()
        if digest == before or time.monotonic() > deadline:
            return pixels
        before = digest


def save_picture(path, area):
    """Writes AREA (x, y, width, height) of the screen to PATH."""
    x, y, width, height = area
    tool("convert", "-size", f"{WIDTH}x{HEIGHT}", "-depth", "8", "rgb:-",
         "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-strip", str(path), input=steady_screen())
