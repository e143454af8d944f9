"""Somebody's first visit without eyes and without a mouse, through every page, menu and dialog."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import re

from accessibility import BUTTON, CHECK_BOX, LABEL, LINE_EDIT, LIST, PASSWORD, ROW, text_of
from popups import MENU
from words import MESSAGE, SERVER

SECRET = "tidewater-by-the-pier"
BOX, DIALOG, ENTRY, COMBO, CELL = "alert", "dialog", "menu item", "combo box", "table cell"
SECTIONS = {
    "Account": [(LINE_EDIT, "Display name"), (LINE_EDIT, "Bio"), (BUTTON, "Save changes")],
    "Privacy": [(CHECK_BOX, "Read receipts"), (CHECK_BOX, "Typing indicator")],
    "Security": [(CHECK_BOX, "2FA enabled"), (BUTTON, "View all")],
    "Notifications": [(CHECK_BOX, "Sound"), (CHECK_BOX, "Mentions")],
    "Chat": [(CHECK_BOX, "Compact mode"), (CHECK_BOX, "Save drafts")],
    "Appearance": [(CHECK_BOX, "Light"), (BUTTON, "Green"), (CHECK_BOX, "Animations")],
    "Advanced": [(BUTTON, "Clear"), (CHECK_BOX, "Developer mode")],
    "About TideLoft": [],
}


class Visit:
    """Everything that LISTENER hears and does, in the language of WORDS; PEER makes others known to the
    service; PICTURE is the only file where the client looks first."""

    def __init__(self, listener, words, peer, picture):
        self.listener, self.words, self.peer, self.picture = listener, words, peer, picture
        self.client = listener.client

    def take(self):
        self.choose_language()
        self.sign_up()
        self.find("bob", has_keys=True)
        self.write()
        self.find("carol", has_keys=False)
        self.write_in_vain()
        self.make_server()
        self.open_server_menu()
        self.leaf_through_settings()
        self.see_message()
        self.open_profile()
        self.change_picture()
        self.open_privacy()
        self.log_out()
        self.be_refused()
        self.open_languages()

    def hear(self, page, *expected):
        """EXPECTED stands in English here."""
        self.listener.hear(page, *((role, self.words[name]) for role, name in expected))

    def walk_to(self, role, name, key="Tab"):
        self.listener.walk_to(role, self.words[name], key)

    def wait_for_focus(self, role, name):
        self.listener.wait_for_focus(role, self.words[name])

    def choose_language(self):
        self.listener.hear("language question", (BUTTON, "🇸🇪   Svenska"), (BUTTON, "🇬🇧   English"))
        self.walk_to(BUTTON, "🇬🇧   English")
        self.listener.press("space")

    def sign_up(self):
        self.hear("sign-in page", (COMBO, "Language: English"), (LINE_EDIT, "Username"),
                  (PASSWORD, "Password"), (BUTTON, "Create account"))
        self.wait_for_focus(LINE_EDIT, "Username")
        self.listener.type(self.client.name)
        self.listener.press("Tab")
        self.wait_for_focus(PASSWORD, "Password")
        self.listener.type(SECRET)
        self.walk_to(BUTTON, "Create account")
        self.listener.press("space")
        self.hear("main page", (CHECK_BOX, "Messages"), (BUTTON, "Create server"),
                  (BUTTON, "New conversation"), (LIST, "Conversations"), (BUTTON, "Account menu"),
                  (BUTTON, "➕  Start new conversation"))

    def find(self, name, has_keys):
        self.peer(name, self.client.home if has_keys else None)
        self.walk_to(LINE_EDIT, "Search or start conversation", "shift+Tab")
        self.listener.type(name)
        self.client.find(ROW, f"👤  {name}")
        self.hear(f"search for {name}", (LIST, "Search results"))
        self.listener.press("Tab", "Return")
        self.hear(f"conversation with {name}", (LIST, "History"), (LINE_EDIT, "Message"), (BUTTON, "Send"))
        self.client.find(LABEL, name)
        self.wait_for_focus(LINE_EDIT, "Message")

    def write(self):
        self.listener.type(MESSAGE)
        self.listener.press("Return")
        spoken = self.client.find_row(self.words["History"], MESSAGE).get_name()
        self.listener.checks.check(f"a message tells sender, text and time: {spoken}", re.fullmatch(
            f"{self.words['You']}, {MESSAGE}, [0-2][0-9]:[0-5][0-9]", spoken))
        listed = self.client.find_row(self.words["Conversations"], "bob").get_name()
        self.listener.checks.check(f"a conversation tells peer, preview and time: {listed}",
                                   re.fullmatch("bob, .+, [0-2][0-9]:[0-5][0-9]", listed))
        self.hear("conversation with a message", (LIST, "History"))

    def write_in_vain(self):
        self.listener.type("Are you there?")
        self.listener.press("Return")
        self.hear_box("refused message", "Recipient has no registered keys.")
        self.wait_for_focus(LINE_EDIT, "Message")

    def hear_box(self, page, text):
        self.hear(page, (BOX, "TideLoft"), (LABEL, text), (BUTTON, "OK"))
        self.wait_for_focus(BUTTON, "OK")
        self.listener.press("Return")

    def make_server(self):
        self.open_server_dialog()
        self.listener.press("Escape")
        self.wait_for_focus(BUTTON, "Create server")
        self.open_server_dialog()
        self.listener.type(SERVER)
        self.listener.press("Return")
        self.client.find(LABEL, SERVER)  # the header's title
        self.listener.walk_to(CHECK_BOX, SERVER, "shift+Tab")
        self.hear("server", (ROW, "Server chat coming soon. Select a channel from the web client."))

    def open_server_dialog(self):
        self.walk_to(BUTTON, "Create server", "shift+Tab")
        self.listener.press("space")
        self.hear("create-server dialog", (DIALOG, "Create server"), (LINE_EDIT, "Server name"),
                  (LINE_EDIT, "Description (optional)"), (BUTTON, "Cancel"))

    def open_server_menu(self):
        self.listener.press("Menu")
        self.hear("server menu", (MENU, "Server menu"), (ENTRY, "Upload server icon"), (ENTRY, "Open server"))
        self.walk_to(ENTRY, "Open server", "Down")
        self.listener.leave_menu()

    def leaf_through_settings(self):
        self.walk_to(CHECK_BOX, "Settings")
        self.listener.press("space")
        self.hear("settings", (LIST, "Settings"), (BUTTON, "←  Back to chat"))
        self.walk_to(LIST, "Settings")
        for name, controls in SECTIONS.items():
            if name != "Account":
                self.listener.press("Down")
            self.hear(f"settings: {name}", ("panel", name), *controls)

    def see_message(self):
        self.listener.press("Up")
        self.walk_to(BUTTON, "Clear")
        self.listener.press("space")
        self.hear_box("message of a setting", "Cache cleared.")
        self.wait_for_focus(BUTTON, "Clear")

    def open_profile(self):
        """Pressed by the screen reader itself, an entry acts as for a key, and closes the menu."""
        self.walk_to(BUTTON, "Account menu", "shift+Tab")
        self.listener.press("Return")
        self.hear("account menu for a press", (MENU, "Account menu"), (ENTRY, "Profile"))
        self.listener.press_as_reader(ENTRY, self.words["Profile"])
        self.listener.wait_for_no_menu()
        self.hear("settings: Account, from the menu", ("panel", "Account"))

    def change_picture(self):
        self.walk_to(BUTTON, "Profile picture")
        self.listener.press("space")
        self.hear("file dialog", (DIALOG, "Choose profile picture"), (LINE_EDIT, "File name:"),
                  (BUTTON, "Parent Directory"), ("tree", "Files"), (BUTTON, "Cancel"))
        self.client.find(CELL, self.picture.name)
        self.wait_for_focus(LINE_EDIT, "File name:")
        self.listener.type(self.picture.name)
        self.client.wait("its name", lambda: self.picture.name == text_of(
            self.client.find(LINE_EDIT, self.words["File name:"])))
        self.listener.press("Return")
        self.listener.hear_news(lambda text: text == self.words["✓ Picture updated"])
        self.wait_for_focus(BUTTON, "Profile picture")

    def open_privacy(self):
        self.walk_to(BUTTON, "Quillory", "shift+Tab")
        self.listener.press("space")
        self.hear("privacy dialog", (DIALOG, "Quillory — Privacy"), (CHECK_BOX, "Public profile"),
                  (BUTTON, "Save"))
        self.listener.press("Escape")
        self.wait_for_focus(BUTTON, "Quillory")

    def log_out(self):
        self.walk_to(BUTTON, "Account menu", "shift+Tab")
        self.listener.press("Return")
        self.hear("account menu", (MENU, "Account menu"), (ENTRY, "Profile"), (ENTRY, "Settings"),
                  (ENTRY, "Log out"))
        self.walk_to(ENTRY, "Log out", "Down")
        self.listener.press("Return")
        self.hear("sign-in page again", (LINE_EDIT, "Username"), (BUTTON, "Sign in"))
        self.wait_for_focus(LINE_EDIT, "Username")

    def be_refused(self):
        empty = self.words["Please enter your username and password."]
        for _ in range(2):  # the same error is news each time
            self.listener.press("Return")
            self.listener.hear_news(lambda text: text == empty)
        self.listener.type(self.client.name)
        self.listener.press("Tab")
        self.listener.type("not-her-password")
        self.listener.press("Return")
        self.listener.hear_news(lambda text: "password" in text.lower())
        self.hear("refused sign-in", (BUTTON, "Sign in"))
        self.wait_for_focus(PASSWORD, "Password")

    def open_languages(self):
        self.walk_to(COMBO, "Language: English", "shift+Tab")
        self.listener.press("alt+Down")
        self.hear("languages", (LIST, "Language"))
        self.client.find(ROW, "Svenska")
        self.client.find(ROW, "English")
        self.listener.press("Escape")
        self.wait_for_focus(COMBO, "Language: English")
