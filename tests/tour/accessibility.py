"""A program's window as a screen reader finds it: what is showing, what it is called and where it stands."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

BUTTON = "push button"
LABEL = "label"
NOTIFICATION = "notification"
LINE_EDIT = "text"
PASSWORD = "password text"
LIST = "list"
ROW = "list item"
CHECK_BOX = "check box"


def desktop():
    """All programs that can be read. Nothing is remembered between two looks: windows change."""
    root = Atspi.get_desktop(0)
    root.set_cache_mask(Atspi.Cache.NONE)
    return root


def children(element):
    for index in range(element.get_child_count()):
        child = element.get_child_at_index(index)
        if child is not None:
            yield child


def application(process_id):
    try:
        for program in children(desktop()):
            if program.get_process_id() == process_id:
                return program
    except GLib.Error:
        pass  # a program that ends while it is looked at
    return None


def is_showing(element):
    return element.get_state_set().contains(Atspi.StateType.SHOWING)


def showing(element):
    """ELEMENT's descendants that are on the screen, in reading order."""
    for child in children(element):
        try:
            if is_showing(child):
                yield child
                yield from showing(child)
        except GLib.Error:
            continue  # deleted meanwhile: lists are rebuilt every three seconds


def role_of(element):
    """The role's name. What is a push button here is a "button" to newer libraries, or a "push button menu"."""
    name = element.get_role_name()
    return BUTTON if name in ("button", "push button menu") else name


def find_all(process_id, role, matches=lambda name: True):
    """What of the ROLE a program shows and whose name MATCHES."""
    program = application(process_id)
    if program is None:
        return []
    found = []
    try:
        for element in showing(program):
            if role_of(element) == role and matches(element.get_name()):
                found.append(element)
    except GLib.Error:
        return []  # the next look sees it whole
    return found


def find_rows(process_id, list_name, matches):
    """The rows of the list called LIST_NAME whose name MATCHES."""
    rows = []
    try:
        for rows_of in find_all(process_id, LIST, lambda name: name == list_name):
            rows += [row for row in children(rows_of) if matches(row.get_name())]
    except GLib.Error:
        return []  # rebuilt meanwhile
    return rows


def area(element):
    extents = element.get_extents(Atspi.CoordType.SCREEN)
    return extents.x, extents.y, extents.width, extents.height


def centre(element):
    x, y, width, height = area(element)
    return x + width // 2, y + height // 2


def has_focus(element):
    return element.get_state_set().contains(Atspi.StateType.FOCUSED)


def text_length(element):
    return Atspi.Text.get_character_count(element)


def text_of(element):
    return Atspi.Text.get_text(element, 0, text_length(element))
