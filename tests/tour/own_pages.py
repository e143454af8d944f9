"""What Alice does for herself: a server, pictures, her profile, every section of the settings, and log-out."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import json
import pathlib
import re

import display
from accessibility import BUTTON, CHECK_BOX, LABEL, LINE_EDIT, NOTIFICATION, PASSWORD, ROW
SERVER = "Pier & Harbour"
BIO = "Down by the water most days."
USER_MENU = ("Profile", "Settings", "Log out")
PROFILE = ("username", "bio", "avatarUrl")
CMAKE = pathlib.Path(__file__).parents[2] / "CMakeLists.txt"
VERSION = re.search(r"^project\(TideLoft VERSION ([\d.]+)", CMAKE.read_text(), re.MULTILINE)[1]
SECTIONS = {
    "Account": "ACCOUNT INFO",
    "Privacy": "VISIBILITY",
    "Security": "Your account is verified and secure",
    "Notifications": "DESKTOP NOTIFICATIONS",
    "Chat": "DISPLAY",
    "Advanced": "PERFORMANCE",
    "About TideLoft": f"Version {VERSION}",
    "Appearance": "ACCENT COLOR",
}


class OwnPages:
    """The way of one client, ALICE, through everything that is not a conversation."""

    def __init__(self, alice, wire, directory, checks, done):
        self.alice = alice
        self.wire, self.checks, self.done = wire, checks, done
        self.picture = display.draw_picture(directory)

    def take(self, password):
        self.make_server()
        self.give_icon()
        self.give_picture()
        self.save_profile()
        self.open_sections()
        self.choose_light()
        self.see_privacy()
        self.log_out()
        self.come_back(password)

    def make_server(self):
        self.alice.click(self.alice.find(BUTTON, "Create server"))
        self.alice.find(LABEL, "Create a new server")
        self.alice.move_dialog_into_place()
        self.alice.type_into(LINE_EDIT, "Server name", SERVER)
        self.alice.type_into(LINE_EDIT, "Description (optional)", "Boats, tides and weather.")
        self.done("alice describes a server", "create-server-alice", self.alice)
        self.alice.press("Return")
        self.alice.find(CHECK_BOX, SERVER)
        self.alice.find(LABEL, SERVER)  # the header's title
        self.alice.find_row("History", "Server chat coming soon.")
        self.done("the server stands in the rail and opens", "server-alice", self.alice)

    def give_icon(self):
        self.alice.click(self.alice.find(CHECK_BOX, SERVER), button="3")
        self.alice.choose_in_menu(1, lambda: self.done(
            "the server has a menu", "server-menu-alice", self.alice))
        self.alice.choose_file(self.picture, lambda: self.done(
            "alice chooses an icon", "choose-icon-alice", self.alice))
        path = self.alice.wait("the server's new icon", self.new_icon)
        self.checks.check(f"the service keeps the icon under a random name: {path}", self.is_random(path))

    def new_icon(self):
        return next((found["iconUrl"] for found in self.replies("iconUrl") if found["iconUrl"]), None)

    def give_picture(self):
        self.alice.click(self.alice.find(LABEL, "Profile picture"))
        self.alice.choose_file(self.picture)
        self.alice.find(NOTIFICATION, "✓ Picture updated")
        self.done("alice has a picture", "picture-alice", self.alice)

    def save_profile(self):
        self.choose_in_user_menu("Profile", lambda: self.done(
            "the footer has a menu", "user-menu-alice", self.alice))
        self.alice.type_into(LINE_EDIT, "Bio", BIO)
        self.alice.find(NOTIFICATION, "● Online")
        self.alice.click(self.alice.find(BUTTON, "Save changes"))
        self.alice.find(NOTIFICATION, "✓ Saved")
        self.done("alice saves what she says of herself", "profile-alice", self.alice)

    def choose_in_user_menu(self, entry, look=lambda: None):
        self.alice.click(self.alice.find(LABEL, "alice"))  # the name in the footer
        self.alice.choose_in_menu(USER_MENU.index(entry) + 1, look)

    def open_sections(self):
        for name, sign in SECTIONS.items():
            self.alice.click(self.alice.find(ROW, lambda row, name=name: row.endswith(f"  {name}")))
            self.alice.find(LABEL, sign)
            file_name = name.split()[0].lower()
            self.done(f"alice sees the settings: {name}", f"settings-{file_name}-alice", self.alice)

    def choose_light(self):
        self.alice.click(self.alice.find(CHECK_BOX, "Light"))
        self.done("alice chooses the light theme", "light-alice", self.alice)
        self.alice.click(self.alice.find(BUTTON, "Green"))
        self.done("alice chooses a green accent", "green-alice", self.alice)
        self.alice.click(self.alice.find(BUTTON, "Blue"))
        self.alice.click(self.alice.find(BUTTON, "←  Back to chat"))
        self.alice.click(self.alice.find_row("Conversations", "bob"))
        self.alice.find(LABEL, "🔒 End-to-end encrypted")
        self.alice.move_pointer_away()
        self.done("the conversation is light too", "light-conversation-alice", self.alice)

    def see_privacy(self):
        self.alice.click(self.alice.find(BUTTON, "Quillory"))
        self.alice.find(LABEL, "Privacy Settings")
        self.alice.move_dialog_into_place()
        self.alice.find(CHECK_BOX, "Public profile")
        self.done("alice sees the privacy dialog", "privacy-alice", self.alice)
        self.alice.click(self.alice.find(BUTTON, "Save"))

    def log_out(self):
        self.choose_in_user_menu("Log out")
        self.alice.find(LABEL, "Welcome back!")
        self.done("alice logs out", "logged-out-alice", self.alice)

    def come_back(self, password):
        self.alice.type_into(LINE_EDIT, "Username", "alice")
        self.alice.type_into(PASSWORD, "Password", password)
        self.alice.press("Return")
        self.alice.find(CHECK_BOX, SERVER)
        self.done("alice comes back and finds her server", "back-alice", self.alice)
        own = self.alice.wait("her profile", self.own_profile)
        self.checks.check("the service kept her words", own["bio"] == BIO)
        self.checks.check(f"the service kept her picture: {own['avatarUrl']}", self.is_random(own["avatarUrl"]))

    def own_profile(self):
        """Alice's as the service sent it after she had saved it. At her first sign-in it was empty."""
        profiles = [found for found in self.replies(*PROFILE) if found["username"] == "alice"]
        return next((found for found in profiles if found["bio"] or found["avatarUrl"]), None)

    def replies(self, *fields):
        """The objects that have passed and hold FIELDS."""
        bodies = re.findall(rb"\r\n\r\n(\{[^{}]*\})", self.wire.recorded())
        return [found for found in map(json.loads, bodies) if found.keys() >= set(fields)]

    @staticmethod
    def is_random(path):
        """Nothing that the person's file was called, and long enough not to be guessed."""
        return re.fullmatch(r"/[a-z/]+/[0-9a-f]{32,}", path) is not None
