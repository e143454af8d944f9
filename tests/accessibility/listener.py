"""A client as somebody has it who neither sees it nor uses a mouse: names to hear, keys to press."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import accessibility
import display
import news
import popups
from accessibility import NOTIFICATION
from checks import Broken
from gi.repository import Atspi, GLib

# What a person may use. Whatever else takes the keyboard counts too.
CONTROLS = ("push button", "check box", "radio button", "toggle button", "text", "password text", "combo box",
            "list", "list item", "menu item", "push button menu", "spin button", "slider", "link")
# What a person is told to be in.
PLACES = ("dialog", "alert", "popup menu")
# What takes the keyboard without being anything that a person uses: a folder has no size.
CONTENTS = ("table cell",)
# What says nothing of what it is for.
FILLING = ("filler", "unknown", "invalid", "redundant object")


def says_something(name):
    return sum(letter.isalpha() for letter in name) >= 2


def takes_keyboard(element):
    return element.get_state_set().contains(Atspi.StateType.FOCUSABLE)


class Listener:
    """Listens to CLIENT, which speaks LANGUAGE, and presses its keys; books what is wrong with CHECKS."""

    def __init__(self, client, language, checks):
        self.client, self.language, self.checks = client, language, checks
        self.popups = popups.Popups()
        self.news = news.News()
        self.heard = set()  # (page, role, name)

    def everything(self):
        """What is on the screen, menus first: they have the keyboard while they are open."""
        yield from self.popups.elements()
        program = accessibility.application(self.client.process.pid)
        if program:
            yield from accessibility.showing(program)

    def told(self):
        """(role, name, whether it is to be used) of all that is on the screen."""
        found = []
        for element in self.everything():
            try:
                role, name = accessibility.role_of(element), element.get_name()
                is_used = role in CONTROLS + PLACES or takes_keyboard(element)
                found.append((role, name, is_used and role not in CONTENTS))
            except GLib.Error:
                continue  # a list was rebuilt meanwhile
        return found

    def told_with(self, expected):
        told = self.told()
        return told if expected <= {(role, name) for role, name, _ in told} else None

    def hear(self, page, *expected):
        """PAGE is there: EXPECTED must be among what it tells, and every control must have a name."""
        told = self.client.wait(f"{page}: {expected}", lambda: self.told_with(set(expected)))
        controls = [(role, name) for role, name, is_used in told if is_used]
        self.heard.update((page, role, name) for role, name in controls)
        nameless = [role for role, name in controls if not says_something(name)]
        filling = [(role, name) for role, name in controls if role in FILLING]
        said = f"{self.language}, {page}: {len(controls)} controls"
        self.checks.check(f"{said}, each has a name {nameless or ''}".rstrip(), not nameless)
        self.checks.check(f"{said}, each has a role {filling or ''}".rstrip(), not filling)

    def hear_news(self, matches):
        """A notification that MATCHES is told without being asked for, and is there to be found."""
        told = self.client.wait("news", lambda: [text for text in self.news.take() if matches(text)])
        self.client.find(NOTIFICATION, told[0])
        self.checks.check(f"{self.language}: told at once: {told[0]}", True)

    def focused(self):
        """(role, name) of what has the keyboard. A list's current row says so even while another widget has
        it: here the list counts. A menu's entries have it without saying that they may."""
        for element in self.everything():
            try:
                role = accessibility.role_of(element)
                may = role == "menu item" or (role != "list item" and takes_keyboard(element))
                if may and accessibility.has_focus(element):
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

    def press_as_reader(self, role, name):
        """Has the screen reader press what has that ROLE and NAME: no key, no click."""
        pressed = self.client.wait(f"{role} {name!r}", lambda: self.find_to_press(role, name))
        actions = [Atspi.Action.get_action_name(pressed, index)
                   for index in range(Atspi.Action.get_n_actions(pressed))]
        Atspi.Action.do_action(pressed, actions.index("Press"))

    def find_to_press(self, role, name):
        for element in self.everything():
            try:
                if (accessibility.role_of(element), element.get_name()) == (role, name):
                    return element
            except GLib.Error:
                continue
        return None

    def leave_menu(self):
        self.press("Escape")
        self.wait_for_no_menu()

    def wait_for_no_menu(self):
        self.client.wait("no menu", lambda: not self.popups.open())

    def press(self, *keys):
        for key in keys:
            self.client.press(key)

    def type(self, text):
        display.tool("xdotool", "type", "--delay", "15", text)
