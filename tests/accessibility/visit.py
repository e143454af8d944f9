"""Alice's first visit without eyes and without a mouse, through every page and dialog of her client."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import re

import display
from accessibility import BUTTON, CHECK_BOX, LABEL, LINE_EDIT, LIST, PASSWORD

SECRET = "tidewater-by-the-pier"
MESSAGE = "Hello Bob"
SECTIONS = {
    "Account": [("text", "Display name"), ("text", "Bio"), ("push button", "Save changes")],
    "Privacy": [("check box", "Read receipts"), ("check box", "Typing indicator")],
    "Security": [("check box", "2FA enabled"), ("push button", "View all")],
    "Notifications": [("check box", "Sound"), ("check box", "Mentions")],
    "Chat": [("check box", "Compact mode"), ("check box", "Save drafts")],
    "Appearance": [("check box", "Light"), ("push button", "Green"), ("check box", "Animations")],
    "Advanced": [("push button", "Clear"), ("check box", "Developer mode")],
    "About TideLoft": [],
}


class Visit:
    """Everything that LISTENER hears and does; PEER makes bob known to the service."""

    def __init__(self, listener, peer, directory):
        self.listener, self.peer = listener, peer
        self.client = listener.client
        self.picture = display.draw_picture(directory)

    def take(self):
        self.choose_language()
        self.sign_up()
        self.find_bob()
        self.write()
        self.leaf_through_settings()
        self.change_picture()
        self.open_dialogs()
        self.log_out()
        self.be_refused()

    def choose_language(self):
        self.listener.hear("language question", ("push button", "🇸🇪   Svenska"),
                           ("push button", "🇬🇧   English"))
        self.listener.walk_to(BUTTON, "🇬🇧   English")
        self.listener.press("space")

    def sign_up(self):
        self.listener.hear("sign-in page", ("combo box", "Language: English"), ("text", "Username"),
                           ("password text", "Password"), ("push button", "Create account"))
        self.listener.wait_for_focus(LINE_EDIT, "Username")
        self.listener.type("alice")
        self.listener.press("Tab")
        self.listener.wait_for_focus(PASSWORD, "Password")
        self.listener.type(SECRET)
        self.listener.walk_to(BUTTON, "Create account")
        self.listener.press("space")
        self.listener.hear("main page", ("check box", "Messages"), ("push button", "Create server"),
                           ("push button", "New conversation"), ("list", "Conversations"),
                           ("push button", "Account menu"), ("push button", "➕  Start new conversation"))

    def find_bob(self):
        self.peer("bob", self.client.home)
        self.listener.walk_to(LINE_EDIT, "Search or start conversation")
        self.listener.type("bob")
        self.listener.hear("search", ("list", "Search results"), ("list item", "👤  bob"))
        self.listener.press("Tab", "Return")
        self.listener.hear("conversation", ("list", "History"), ("text", "Message"),
                           ("push button", "Send"))
        self.listener.wait_for_focus(LINE_EDIT, "Message")

    def write(self):
        self.listener.type(MESSAGE)
        self.listener.press("Return")
        spoken = self.client.find_row("History", MESSAGE).get_name()
        self.listener.checks.check(f"a message tells sender, text and time: {spoken}",
                                   re.fullmatch(f"You, {MESSAGE}, [0-2][0-9]:[0-5][0-9]", spoken))
        listed = self.client.find_row("Conversations", "bob").get_name()
        self.listener.checks.check(f"a conversation tells peer, preview and time: {listed}",
                                   re.fullmatch("bob, .+, [0-2][0-9]:[0-5][0-9]", listed))
        self.listener.hear("conversation with a message", ("list", "History"))

    def leaf_through_settings(self):
        self.listener.walk_to(CHECK_BOX, "Settings", "shift+Tab")
        self.listener.press("space")
        self.listener.hear("settings", ("list", "Settings"), ("push button", "←  Back to chat"))
        self.listener.walk_to(LIST, "Settings")
        for name, controls in SECTIONS.items():
            if name != "Account":
                self.listener.press("Down")
            self.listener.hear(f"settings: {name}", ("panel", name), *controls)

    def change_picture(self):
        self.listener.press("Home")
        self.listener.walk_to(BUTTON, "Profile picture")
        self.listener.press("space")
        self.client.find(LINE_EDIT, "File name:")
        self.listener.wait_for_focus(LINE_EDIT, "File name:")
        self.listener.type(str(self.picture))
        self.listener.press("Return")
        self.client.find(LABEL, "✓ Picture updated")
        self.listener.wait_for_focus(BUTTON, "Profile picture")

    def open_dialogs(self):
        self.listener.walk_to(BUTTON, "Create server")
        self.listener.press("space")
        self.listener.hear("create-server dialog", ("text", "Server name"),
                           ("text", "Description (optional)"), ("push button", "Cancel"))
        self.listener.press("Escape")
        self.listener.wait_for_focus(BUTTON, "Create server")
        self.listener.walk_to(BUTTON, "Quillory")
        self.listener.press("space")
        self.listener.hear("privacy dialog", ("check box", "Public profile"), ("push button", "Save"))
        self.listener.press("Escape")
        self.listener.wait_for_focus(BUTTON, "Quillory")

    def log_out(self):
        self.listener.walk_to(BUTTON, "Account menu")
        self.listener.press("Return")
        # What stands in a menu is told by events alone: the tree of elements leaves popups out.
        self.client.wait("a menu", lambda: len(self.client.visible_windows()) > 1)
        self.listener.press("Up", "Return")
        self.listener.hear("sign-in page again", ("text", "Username"), ("push button", "Sign in"))
        self.listener.wait_for_focus(LINE_EDIT, "Username")

    def be_refused(self):
        self.listener.type("alice")
        self.listener.press("Tab")
        self.listener.type("not-her-password")
        self.listener.press("Return")
        self.client.find(LABEL, lambda text: "password" in text.lower() and text != "Password")
        self.listener.hear("refused sign-in", ("push button", "Sign in"))
