"""What a screen reader says without being asked: notifications, as they come up."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

from accessibility import NOTIFICATION
from gi.repository import Atspi, GLib


class News:
    """Hears of notifications from the moment it is made."""

    def __init__(self):
        self.told = []
        self.events = Atspi.EventListener.new(self._heard)
        self.events.register("object:state-changed:showing")

    def _heard(self, event):
        try:
            if event.detail1 and event.source.get_role_name() == NOTIFICATION:
                self.told.append(event.source.get_name())
        except GLib.Error:
            pass  # gone before it could be asked

    def take(self):
        """What was heard since the last time, as far as it has come in."""
        while GLib.MainContext.default().iteration(False):
            pass
        told, self.told = self.told, []
        return told
