"""A client as somebody has it who neither sees it nor uses a mouse: names to hear, keys to press."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import accessibility
import display
from checks import Broken
from gi.repository import Atspi, GLib

# What a person may use. Whatever else takes the keyboard counts too.
CONTROLS = ("push button", "check box", "radio button", "toggle button", "text", "password text", "combo box",
            "list", "list item", "menu item", "push button menu", "spin button", "slider", "link")
# What says nothing of what it is for.
FILLING = ("filler", "unknown", "invalid", "redundant object")


def says_something(name):
    return sum(letter.isalpha() for letter in name) >= 2


def takes_keyboard(element):
    return element.get_state_set().contains(Atspi.StateType.FOCUSABLE)


class Listener:
    """Listens to CLIENT and presses its keys; books what is wrong with CHECKS."""

    def __init__(self, client, checks):
        self.client, self.checks = client, checks
        self.heard = 0

    def everything(self):
        program = accessibility.application(self.client.process.pid)
        return accessibility.showing(program) if program else ()

    def controls(self):
        """(role, name) of each control on the screen."""
        found = []
        for element in self.everything():
            try:
                role, name = element.get_role_name(), element.get_name()
                if role in CONTROLS or takes_keyboard(element):
                    found.append((role, name))
            except GLib.Error:
                continue  # a list was rebuilt meanwhile
        return found

    def hear(self, page, *expected):
        """PAGE is there: EXPECTED must be among its controls, and every control must have a name."""
        self.client.wait(f"{page}: {expected}", lambda: set(expected) <= set(self.controls()))
        controls = self.controls()
        self.heard += len(controls)
        nameless = [role for role, name in controls if not says_something(name)]
        filling = [(role, name) for role, name in controls if role in FILLING]
        named = f"{page}: {len(controls)} controls, each has a name {nameless or ''}".rstrip()
        self.checks.check(named, not nameless)
        self.checks.check(f"{page}: each has a role {filling or ''}".rstrip(), not filling)

    def focused(self):
        """(role, name) of what has the keyboard. A list's current row says so even while another widget has it:
        here the list counts."""
        for element in self.everything():
            try:
                role = element.get_role_name()
                if role != "list item" and takes_keyboard(element) and accessibility.has_focus(element):
                    return role, element.get_name()
            except GLib.Error:
                continue
        return None

    def wait_for_focus(self, role, name):
        self.client.wait(f"the keyboard at the {role} {name!r}", lambda: self.focused() == (role, name))

    def walk_to(self, role, name, key="Tab"):
        """Presses KEY until the keyboard stands there."""
        at = self.client.wait("the keyboard somewhere", self.focused)
        came_by = [at]
        while at != (role, name) and len(came_by) < 40:
            self.client.press(key)
            at = self.client.wait(f"the keyboard beyond {at!r}", lambda at=at: self.moved_from(at))
            came_by.append(at)
        if at != (role, name):
            raise Broken(f"{key} never leads to the {role} {name!r}, only to {came_by}")

    def moved_from(self, before):
        at = self.focused()
        return None if at == before else at

    def press(self, *keys):
        for key in keys:
            self.client.press(key)

    def type(self, text):
        display.tool("xdotool", "type", "--delay", "15", text)
