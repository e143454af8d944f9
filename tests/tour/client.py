"""One client as a person has it before them: found by what it shows, moved by mouse and keyboard."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import subprocess

from gi.repository import GLib

import accessibility
import display
from checks import Broken, wait_until


class Client:
    """A client process with a home of its own, on one half of the screen."""

    def __init__(self, name, program, directory, left, environment):
        self.name = name
        self.left = left
        self.main_window = None
        self.home = pathlib.Path(directory, name)
        self.output = pathlib.Path(directory, f"{name}.output")
        self.environment = dict(environment, XDG_DATA_HOME=str(self.home / "data"),
                                XDG_CONFIG_HOME=str(self.home / "config"),
                                XDG_CACHE_HOME=str(self.home / "cache"))
        for folder in ("data", "config", "cache"):
            (self.home / folder).mkdir(mode=0o700, parents=True)
        with open(self.output, "wb") as output:
            self.process = subprocess.Popen([program], env={**os.environ, **self.environment},
                                            stdout=output, stderr=subprocess.STDOUT)

    def wait(self, what, condition, seconds=30.0):
        """As wait_until, for something in this client's window; at once Broken when the client has ended."""
        def look():
            if self.process.poll() is not None:
                ended = f"{self.name}'s client ended with {self.process.returncode}"
                raise Broken(f"{ended}: {self.printed()[-2000:]}")
            try:
                return condition()
            except GLib.Error:
                return None  # the widget was rebuilt between two questions
        return wait_until(f"{what} in {self.name}'s window", look, seconds)

    def find(self, role, name, seconds=30.0):
        """The one element of ROLE that shows and is called NAME (a text, or a test of it)."""
        matches = name if callable(name) else lambda text: text == name
        return self.wait(f"the {role} {name!r}", lambda: next(iter(
            accessibility.find_all(self.process.pid, role, matches)), None), seconds)

    def find_row(self, list_name, text):
        """The first row of a list whose text holds TEXT."""
        return self.wait(f"{text!r} in the list {list_name!r}", lambda: next(iter(
            accessibility.find_rows(self.process.pid, list_name, lambda name: text in name)), None))

    def window(self):
        """The number of the window that the person sees; with dialogs or menus before it, of the one below."""
        def known():
            found = self.visible_windows()
            if len(found) == 1:
                self.main_window = found[0]
            return self.main_window if self.main_window in found else None
        return self.wait("a window", known)

    def visible_windows(self):
        return subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)],
                              capture_output=True, text=True, check=False).stdout.split()

    def area(self, window=None):
        """x, y, width and height of WINDOW, or of the window that the person sees."""
        shell = display.tool("xdotool", "getwindowgeometry", "--shell", window or self.window()).decode()
        values = dict(line.split("=", 1) for line in shell.split())
        return tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def move_into_place(self):
        """Puts the window on its half of the screen, and waits until the program knows it."""
        self.move(self.window(), self.left, 20)

    def move_dialog_into_place(self):
        """Likewise the dialog, into the middle of the window. Unmoved ones may never hear where they were put."""
        left, top, width, height = self.area()
        dialog = self.wait("a dialog", lambda: next(
            (window for window in self.visible_windows() if window != self.main_window), None))
        dialog_width, dialog_height = self.area(dialog)[2:]
        self.move(dialog, left + (width - dialog_width) // 2, top + (height - dialog_height) // 2)

    def move(self, window, left, top):
        display.tool("xdotool", "windowmove", window, str(left), str(top))
        program = accessibility.application(self.process.pid)
        self.wait("its new place", lambda: any(
            accessibility.area(known)[:2] == (left, top) for known in accessibility.children(program)))

    def click(self, element, button="1"):
        """A click into the middle of ELEMENT, once it has stopped moving."""
        def resting():
            place = accessibility.centre(element)
            return place if place == accessibility.centre(element) else None
        x, y = self.wait("something to click on", resting)
        display.tool("xdotool", "mousemove", "--sync", str(x), str(y))
        display.tool("xdotool", "click", button)

    def move_pointer_away(self):
        """So that a picture shows nothing as hovered over."""
        x, y, width, height = self.area()
        display.tool("xdotool", "mousemove", "--sync", str(x + width // 2), str(y + height + 10))

    def press(self, key):
        display.tool("xdotool", "key", key)

    def type_into(self, role, name, text):
        """Clicks into a field, replaces what it holds by TEXT, key by key, and waits until it is there."""
        field = self.find(role, name)
        self.click(field)
        self.wait(f"the keyboard in {name!r}", lambda: accessibility.has_focus(field))
        self.press("ctrl+a")
        display.tool("xdotool", "type", "--delay", "15", text)
        if role == accessibility.PASSWORD:
            self.wait(f"{len(text)} dots", lambda: accessibility.text_length(field) == len(text))
        else:
            self.wait(f"{text!r}", lambda: accessibility.text_of(field) == text)
        return field

    def choose_in_menu(self, position, look=lambda: None):
        """Has a LOOK at the menu that opens and takes its entry at POSITION."""
        self.wait("a menu", lambda: len(self.visible_windows()) > 1)
        look()
        for _ in range(position):
            self.press("Down")
        self.press("Return")

    def choose_file(self, path, look=lambda: None):
        """Answers the file dialog: types PATH, has a LOOK at it, and presses Return."""
        self.find(accessibility.LINE_EDIT, "File name:")
        self.move_dialog_into_place()
        self.type_into(accessibility.LINE_EDIT, "File name:", str(path))
        look()
        self.press("Return")

    def close(self):
        """Closes the window as the window manager does; the client's exit code."""
        display.tool("xdotool", "windowactivate", "--sync", self.window())
        self.press("alt+F4")
        try:
            return self.process.wait(timeout=30)
        except subprocess.TimeoutExpired:
            return None

    def stop(self):
        """For a tour that broke off: the process must not stay."""
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def printed(self):
        return self.output.read_text(encoding="utf-8", errors="replace")
