"""The client through a screen reader's ears: a real X server, the real service, and nothing but keys.

listen.py --client PROGRAM --service PROGRAM --certificates DIR
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import argparse
import contextlib
import http.cookiejar
import json
import os
import pathlib
import sys
import tempfile
import traceback
import urllib.request

# The tour's screen, service and client.
sys.path.insert(0, str(pathlib.Path(__file__).absolute().parent.parent / "tour"))

import display  # noqa: E402


def parse_arguments():
    parser = argparse.ArgumentParser(description="Every control has a name and a role.")
    for name in ("client", "service", "certificates"):
        parser.add_argument(f"--{name}", required=True, type=lambda path: pathlib.Path(path).absolute())
    parser.add_argument("--on-screen", action="store_true", help=argparse.SUPPRESS)
    return parser.parse_args()


def make_peer(service, name, home):
    """Has the service know NAME, who can be written to with the key of the client that lives in HOME, or not
    at all."""
    opener = urllib.request.build_opener(urllib.request.ProxyHandler({}),
                                         urllib.request.HTTPSHandler(context=service.trust),
                                         urllib.request.HTTPCookieProcessor(http.cookiejar.CookieJar()))

    def post(path, **body):
        headers = {"Content-Type": "application/json", "X-Device-Token": f"device-of-{name}",
                   "X-Device-Name": name}
        address = f"https://localhost:{service.port}{path}"
        opener.open(urllib.request.Request(address, json.dumps(body).encode(), headers), timeout=10).close()

    account = {"username": name, "password": "moonlight-on-the-bay"}
    post("/api/auth/register", **account)
    if home:
        post("/api/auth/login", **account)
        key = pathlib.Path(home, "data/TideLoft/TideLoft/chat_public_key.b64").read_text("ascii").strip()
        post("/api/chat/device-key", deviceId=f"device-of-{name}", deviceName=name, publicKey=key)


class Peers:
    """Those who are written to: whoever comes second meets the same people."""

    def __init__(self, service):
        self.service, self.known = service, set()

    def meet(self, name, home):
        if name not in self.known:
            make_peer(self.service, name, home)
            self.known.add(name)


def visit_in(language, name, arguments, directory, peer, checks):
    """NAME's visit with a new client in LANGUAGE; what there was to hear."""
    import visit  # needs the session bus that is there only now
    from client import Client
    from listener import Listener
    from words import words_of

    pictures = pathlib.Path(directory, f"{name}-pictures")
    pictures.mkdir()
    with contextlib.chdir(pictures):  # where the client looks for files first
        client = Client(name, arguments.client, directory, 10, {})
    try:
        listener = Listener(client, language, checks)
        visit.Visit(listener, words_of(language), peer, display.draw_picture(pictures)).take()
        heard = len(listener.heard)
        checks.check(f"{heard} different controls were heard in {language}", heard > 500)
        return listener.heard
    finally:
        client.stop()


def run_on_screen(arguments):
    from checks import Broken, Checks
    from companion import Service
    from databases import SqliteFile
    from words import untranslated

    checks = Checks()
    with tempfile.TemporaryDirectory() as directory, contextlib.ExitStack() as stack:
        try:
            stack.enter_context(display.window_manager())
            service = Service(arguments.service, directory, arguments.certificates, SqliteFile(directory))
            stack.callback(service.stop)
            os.environ["TIDELOFT_E2E_ORIGIN"] = f"https://localhost:{service.port}"
            os.environ["TIDELOFT_E2E_CA"] = str(arguments.certificates / "ca.pem")
            peer = Peers(service).meet
            left = untranslated([visit_in(language, name, arguments, directory, peer, checks)
                                 for language, name in (("English", "alice"), ("Swedish", "astrid"))])
            checks.check(f"each control has a name in each language {left or ''}".rstrip(), not left)
        except Broken as reason:
            checks.broke(str(reason))
        except Exception:  # a fault of the test itself is a failure like any other
            checks.broke(traceback.format_exc())
    return checks.report()


def main():
    arguments = parse_arguments()
    return run_on_screen(arguments) if arguments.on_screen else display.run_again_on_screen()


if __name__ == "__main__":
    sys.exit(main())
