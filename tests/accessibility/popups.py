"""The menus that are open: the tree of elements leaves popups out, but each tells when it comes up."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import accessibility
from gi.repository import Atspi, GLib

MENU = "popup menu"


def is_open(menu):
    try:
        return accessibility.is_showing(menu)
    except GLib.Error:
        return False  # deleted when it closed


class Popups:
    """Hears of menus from the moment it is made. A menu's entries can be read like what stands on a page."""

    def __init__(self):
        self.menus = []
        self.events = Atspi.EventListener.new(self._heard)
        self.events.register("object:state-changed:showing")

    def _heard(self, event):
        try:
            if event.detail1 and event.source.get_role_name() == MENU:
                self.menus.append(event.source)
        except GLib.Error:
            pass  # gone before it could be asked

    def open(self):
        """The menus on the screen, as far as their events have come in."""
        while GLib.MainContext.default().iteration(False):
            pass
        self.menus = [menu for menu in self.menus if is_open(menu)]
        return self.menus

    def elements(self):
        for menu in self.open():
            yield menu
            yield from accessibility.showing(menu)
