"""A PostgreSQL server of the tour's own: in a folder that goes away, on a free port of this machine."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import signal
import socket
import subprocess
import tempfile

from checks import Broken, wait_until

PROGRAMS = pathlib.Path("/usr/lib/postgresql")
NOBODY = 65534


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def command(program, *arguments):
    """The command of a program of PostgreSQL. The server refuses to run as root, and ends with who started it,
    however that ends."""
    found = sorted(PROGRAMS.glob(f"*/bin/{program}"))
    if not found:
        raise Broken(f"PostgreSQL is not installed: there is no {program} in {PROGRAMS}")
    user = [f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if os.geteuid() == 0 else []
    return ["setpriv", *user, "--pdeathsig=QUIT", str(found[-1]), *arguments]


class PostgresqlServer:
    """Runs from its construction until stop() or the end of this program."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory()
        self.data = pathlib.Path(self.folder.name, "data")
        if os.geteuid() == 0:
            os.chown(self.folder.name, NOBODY, NOBODY)
        self.run("initdb", "--auth=trust", "--no-sync", "--username=tideloft", "--encoding=UTF8", "--locale=C.UTF-8",
                 "-D", str(self.data))
        self.port = free_port()
        self.address = f"postgresql://tideloft@127.0.0.1:{self.port}/postgres"
        with open(pathlib.Path(self.folder.name, "log"), "wb") as log:
            self.process = subprocess.Popen(
                command("postgres", "-D", str(self.data), "-h", "127.0.0.1", "-p", str(self.port),
                        "-k", self.folder.name, "-F"), stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        try:
            wait_until("PostgreSQL", self._answers, 60)
        except Broken:
            self.stop()
            raise

    @staticmethod
    def run(program, *arguments, **options):
        """What a program of PostgreSQL prints."""
        done = subprocess.run(command(program, *arguments), capture_output=True, check=False, **options)
        if done.returncode != 0:
            raise Broken(f"{program} ended with {done.returncode}: {done.stderr.decode(errors='replace')}")
        return done.stdout

    def ask(self, statements, **values):
        """Runs statements, in which :'name' stands for a value."""
        settings = [f"--set={name}={value}" for name, value in values.items()]
        return self.run("psql", "--no-psqlrc", "--quiet", "--set=ON_ERROR_STOP=1", *settings, self.address,
                        input=statements.encode())

    def dump(self):
        """All rows as a text."""
        return self.run("pg_dump", self.address)

    def files(self):
        """The contents of all files, once everything has been written into them."""
        self.ask("CHECKPOINT")
        return b"\n".join(self._read(file) for file in sorted(self.data.rglob("*")) if file.is_file())

    def stop(self):
        """Ends the server at once. Nothing of it stays."""
        self.process.send_signal(signal.SIGQUIT)
        self.process.wait()
        self.folder.cleanup()

    def _answers(self):
        if self.process.poll() is not None:
            raise Broken(f"PostgreSQL ended: {pathlib.Path(self.folder.name, 'log').read_text('utf-8')}")
        try:
            return self.ask("SELECT 1")
        except Broken:
            return None

    @staticmethod
    def _read(file):
        try:
            return file.read_bytes()
        except FileNotFoundError:  # taken away since it was listed
            return b""
