"""What the two people of the tour do, and what has to be true of it."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import re
import stat

import display
import secrecy
from accessibility import BUTTON, LABEL, LINE_EDIT, NOTIFICATION, PASSWORD
from checks import Broken
from client import Client
from own_pages import OwnPages

MESSAGE = "Hej Bob! Ses vi kl. 12? 🌊"
ANSWER = "Ja, gärna vid ån ☀ Det blir fint!"
ALICE_PASSWORD = "tidewater-by-the-pier"
BOB_PASSWORD = "moonlight-on-the-bay"
TOOLKIT_WARNING = re.compile(r"\bQ(Painter|Object)(::\w+)?\b[:(]")


class Tour:
    """Alice reads English and sits on the left, Bob reads Swedish and sits on the right."""

    def __init__(self, arguments, directory, service, wire, checks, film, stack):
        self.service, self.wire, self.checks, self.film = service, wire, checks, film
        display.put_on_keyboard([MESSAGE, ANSWER])
        self.alice = self.open_client("alice", arguments.client, directory, 10, stack)
        self.bob = self.open_client("bob", arguments.client, directory, 1130, stack)
        self.own_pages = OwnPages(self.alice, wire, directory, checks, self.done)

    @staticmethod
    def open_client(name, program, directory, left, stack):
        client = Client(name, program, directory, left, {})
        stack.callback(client.stop)
        return client

    def take(self):
        try:
            self.take_steps()
        except Broken as reason:
            ended = self.service.process.poll()
            service = "" if ended is None else f"; the service had ended with {ended}"
            raise Broken(f"{reason}{service}") from None

    def take_steps(self):
        self.choose_languages()
        self.sign_up(self.alice, ALICE_PASSWORD, "Username", "Password", "Create account",
                     "Welcome to TideLoft")
        self.be_refused()
        self.sign_up(self.bob, BOB_PASSWORD, "Användarnamn", "Lösenord", "Skapa konto",
                     "Välkommen till TideLoft")
        self.check_keys()
        self.search()
        self.write()
        self.answer()
        self.check_windows()
        self.own_pages.take(ALICE_PASSWORD)
        self.leave()
        self.check_secrecy()

    def done(self, what, picture=None, *clients):
        """A step that held; with a picture of the window of a client, or of the whole screen, whose caption
        says WHAT is seen."""
        if picture:
            self.film.take(picture, what, clients)
        self.checks.held(what)

    def choose_languages(self):
        self.choose_language(self.alice, "🇬🇧   English", "Welcome back!", "en")
        self.choose_language(self.bob, "🇸🇪   Svenska", "Välkommen tillbaka!", "sv")

    def choose_language(self, client, language, greeting, stored):
        client.find(BUTTON, "🇸🇪   Svenska")
        button = client.find(BUTTON, language)
        client.find(LABEL, "Choose your language / Välj ditt språk")
        client.move_into_place()
        self.done(f"{client.name} is asked for a language", f"language-{client.name}", client)
        client.click(button)
        client.find(LABEL, greeting)
        client.move_into_place()
        self.done(f"{client.name} sees the sign-in page: {greeting}", f"sign-in-{client.name}", client)
        settings = (client.home / "config/TideLoft/TideLoft.conf").read_text("utf-8")
        self.checks.check(f"the settings keep language={stored}",
                          f"language={stored}" in settings.splitlines())

    def sign_up(self, client, password, name_field, password_field, button, welcome):
        client.type_into(LINE_EDIT, name_field, client.name)
        client.type_into(PASSWORD, password_field, password)
        client.click(client.find(BUTTON, button))
        client.find(LABEL, welcome)
        client.find(LABEL, client.name)  # the footer
        self.done(f"{client.name} creates an account and is signed in", f"empty-{client.name}", client)

    def be_refused(self):
        self.bob.type_into(LINE_EDIT, "Användarnamn", "alice")
        self.bob.type_into(PASSWORD, "Lösenord", "not-her-password")
        self.bob.press("Return")
        refusal = self.bob.wait("the service's refusal", self.wire.last_refusal)
        self.bob.find(NOTIFICATION, refusal)
        self.done(f"a wrong password is refused: {refusal}", "refused-bob", self.bob)

    def check_keys(self):
        for client in (self.alice, self.bob):
            for name in ("chat_private_key.b64", "chat_public_key.b64", "device_id.txt"):
                file = client.home / "data/TideLoft/TideLoft" / name
                owner_only = file.is_file() and stat.S_IMODE(file.stat().st_mode) == 0o600
                self.checks.check(f"{client.name} alone may read {name}", owner_only)

    def search(self):
        self.alice.type_into(LINE_EDIT, "Search or start conversation", "bob")
        found = self.alice.find_row("Search results", "👤  bob")
        self.done("alice finds bob", "search-alice", self.alice)
        self.alice.click(found)
        self.alice.find(LABEL, "🔒 End-to-end encrypted")
        self.done("alice opens the conversation", "conversation-alice", self.alice)

    def write(self):
        self.alice.type_into(LINE_EDIT, "Message", MESSAGE)
        self.done("alice types her message", "typed-alice", self.alice)
        self.alice.click(self.alice.find(BUTTON, "Send"))
        self.find_message(self.alice, MESSAGE)
        self.done("alice sends it and reads it in her window", "sent-alice", self.alice)

    def answer(self):
        entry = self.bob.find_row("Konversationer", "alice")
        self.done("bob sees alice's conversation in his list", "listed-bob", self.bob)
        self.bob.click(entry)
        self.find_message(self.bob, MESSAGE)
        self.done("bob opens it and reads her message", "read-bob", self.bob)
        self.bob.type_into(LINE_EDIT, "Meddelande", ANSWER)
        self.bob.press("Return")
        self.find_message(self.bob, ANSWER)
        self.done("bob answers", "answered-bob", self.bob)
        self.find_message(self.alice, ANSWER)
        self.done("alice reads his answer", "answer-alice", self.alice)

    def find_message(self, client, text):
        return client.find_row({self.alice: "History", self.bob: "Historik"}[client], text)

    def check_windows(self):
        for client in (self.alice, self.bob):
            for text in (MESSAGE, ANSWER):
                self.find_message(client, text)
                self.checks.held(f"{client.name}'s window shows: {text}")
        self.done("both windows side by side", "both")

    def leave(self):
        for client in (self.alice, self.bob):
            self.checks.check(f"{client.name}'s client ends with 0 when it is closed", client.close() == 0)
            warnings = [line for line in client.printed().splitlines() if TOOLKIT_WARNING.search(line)]
            self.checks.check(f"{client.name}'s client printed no toolkit warning {warnings or ''}".rstrip(),
                              not warnings)

    def check_secrecy(self):
        running = self.service.database.content()
        self.checks.check("the service ends with 0 when it is asked to", self.service.stop() == 0)
        places = {
            "the running service's database": running,
            "the ended service's database": self.service.database.content(),
            "the service's log": self.service.log.read_bytes(),
            "what the wire carried": self.wire.recorded(),
        }
        for text in (MESSAGE, ANSWER):
            for place, data in places.items():
                self.checks.check(f"not in {place}: {text}", not secrecy.found_in(text, data))
        self.check_search(places)

    def check_search(self, places):
        """The search above means something only if it sees the whole traffic, and finds what is there."""
        self.checks.check("two messages were sent", self.wire.requests(b"POST /api/chat/send ") == 2)
        self.checks.check("only TLS 1.3 was spoken", self.wire.versions == {"TLSv1.3"})
        self.checks.check("the service's log tells of them", b"/api/chat/send" in places["the service's log"])
        compressed = re.search(rb"(?i)\r\ncontent-encoding:", places["what the wire carried"])
        self.checks.check("nothing on the wire was compressed", compressed is None)
        for place in ("the running service's database",
                      "the ended service's database", "what the wire carried"):
            self.checks.check(f"control: the name alice is found in {place}",
                              secrecy.found_in("alice", places[place]))
        self.checks.check("control: the password is found on the wire, inside TLS",
                          secrecy.found_in(ALICE_PASSWORD, places["what the wire carried"]))
        for text in (MESSAGE, ANSWER):
            overlooked = secrecy.misses(text)
            self.checks.check(f"control: each form is found where it was planted {overlooked or ''}".rstrip(),
                              not overlooked)
            self.checks.check("control: a message stored as it was typed is found in the database",
                              secrecy.found_after_planting(text, self.service.database))
