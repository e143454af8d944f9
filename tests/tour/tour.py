"""The main job from outside: two real clients, the real service, and a person's mouse and keyboard.

tour.py --client PROGRAM --service PROGRAM --certificates DIR --pictures DIR [--port N]
        [--database sqlite|postgresql]

With --port 0 the clients are told where the service is (TIDELOFT_E2E_ORIGIN, TIDELOFT_E2E_CA), which only the
program made for this test understands; the shipped client finds the port that it was built for. With --database
postgresql the service keeps everything on a server that the tour starts and ends.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import argparse
import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile
import traceback

import display


def parse_arguments():
    parser = argparse.ArgumentParser(description="Two clients exchange a message.")
    for name in ("client", "service", "certificates", "pictures"):
        parser.add_argument(f"--{name}", required=True, type=lambda path: pathlib.Path(path).absolute())
    parser.add_argument("--port", type=int, default=0)
    parser.add_argument("--database", choices=("sqlite", "postgresql"), default="sqlite")
    parser.add_argument("--on-screen", action="store_true", help=argparse.SUPPRESS)
    return parser.parse_args()


def show_film(film, checks):
    """The page of the pictures. It is there for a tour that broke off too, whose last picture shows where."""
    film.write()
    faults = film.faults()
    checks.check(f"{len(film.scenes)} pictures stand in the film, each with a caption {faults or ''}".rstrip(),
                 not faults)


def run_on_screen(arguments):
    import steps  # needs the session bus that is there only now
    from checks import Broken, Checks
    from companion import Service
    from databases import new_database
    from film import Film
    from wire import Wire

    checks = Checks()
    film = Film(arguments.pictures)
    with tempfile.TemporaryDirectory() as directory, contextlib.ExitStack() as stack:
        try:
            stack.enter_context(display.window_manager())
            database = new_database(arguments.database, directory)
            stack.callback(database.stop)
            service = Service(arguments.service, directory, arguments.certificates, database)
            stack.callback(service.stop)
            wire = Wire(arguments.port, service.port, arguments.certificates)
            stack.callback(wire.close)
            os.environ["TIDELOFT_E2E_ORIGIN"] = f"https://localhost:{wire.port}"
            os.environ["TIDELOFT_E2E_CA"] = str(arguments.certificates / "ca.pem")
            steps.Tour(arguments, directory, service, wire, checks, film, stack).take()
        except Broken as reason:
            checks.broke(str(reason))
            with contextlib.suppress(OSError, subprocess.SubprocessError):
                film.take("broken", f"the tour broke off: {reason}", number=99)
        except Exception:  # a fault of the tour itself is a failure like any other
            checks.broke(traceback.format_exc())
    show_film(film, checks)
    return checks.report()


def main():
    arguments = parse_arguments()
    return run_on_screen(arguments) if arguments.on_screen else display.run_again_on_screen()


if __name__ == "__main__":
    sys.exit(main())
