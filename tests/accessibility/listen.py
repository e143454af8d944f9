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
import subprocess
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


def run_under_virtual_display():
    """Starts this program again with a screen and a session bus of its own."""
    missing = display.missing_tools()
    if missing:
        raise SystemExit(f"listen: not installed: {', '.join(missing)}. ./test installs what it needs.")
    with display.virtual_display() as screen, tempfile.TemporaryDirectory() as directory:
        return subprocess.run(
            ["dbus-run-session", "--", sys.executable, "-B", *sys.argv, "--on-screen"],
            env=display.clean_environment(screen, directory), check=False).returncode


def make_peer(service, name, home):
    """Has the service know NAME, who can be written to with the key of the client that lives in HOME."""
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
    post("/api/auth/login", **account)
    key = pathlib.Path(home, "data/TideLoft/TideLoft/chat_public_key.b64").read_text("ascii").strip()
    post("/api/chat/device-key", deviceId=f"device-of-{name}", deviceName=name, publicKey=key)


def run_on_screen(arguments):
    import visit  # needs the session bus that is there only now
    from checks import Broken, Checks
    from client import Client
    from companion import Service
    from listener import Listener

    checks = Checks()
    with tempfile.TemporaryDirectory() as directory, contextlib.ExitStack() as stack:
        try:
            stack.enter_context(display.window_manager())
            service = Service(arguments.service, directory, arguments.certificates)
            stack.callback(service.stop)
            os.environ["TIDELOFT_E2E_ORIGIN"] = f"https://localhost:{service.port}"
            os.environ["TIDELOFT_E2E_CA"] = str(arguments.certificates / "ca.pem")
            client = Client("alice", arguments.client, directory, 10, {})
            stack.callback(client.stop)
            listener = Listener(client, checks)
            visit.Visit(listener, lambda name, home: make_peer(service, name, home), directory).take()
            checks.check(f"{listener.heard} controls were heard in all", listener.heard > 200)
        except Broken as reason:
            checks.broke(str(reason))
        except Exception:  # a fault of the test itself is a failure like any other
            checks.broke(traceback.format_exc())
    return checks.report()


def main():
    arguments = parse_arguments()
    return run_on_screen(arguments) if arguments.on_screen else run_under_virtual_display()


if __name__ == "__main__":
    sys.exit(main())
