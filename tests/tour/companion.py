"""The real service, with a fresh database, on a free port."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import pathlib
import re
import ssl
import subprocess
import urllib.error
import urllib.request

from checks import Broken, wait_until


class Service:
    """A running tideloftd; everything that it prints is kept."""

    def __init__(self, program, directory, certificates, database):
        self.database = database
        self.log = pathlib.Path(directory, "service.log")
        self.trust = ssl.create_default_context(cafile=certificates / "ca.pem")
        with open(self.log, "wb") as output:
            self.process = subprocess.Popen(
                [program, "--port", "0", "--database", database.address,
                 "--sign-ins-per-minute", "0", "--registrations-per-minute", "0",  # the tour is in a hurry
                 "--tls-cert", str(certificates / "server.pem"),
                 "--tls-key", str(certificates / "server-key.pem")],
                stdout=output, stderr=subprocess.STDOUT)
        self.port = wait_until("the service's port", self._port)
        wait_until("the service's answer", self._is_well)

    def _port(self):
        """The port that the service says it listens on, or None as long as it has not."""
        if self.process.poll() is not None:
            raise Broken(f"the service ended with {self.process.returncode}: {self.log.read_text('utf-8')}")
        said = re.search(r"^listening on \S+:(\d+)\n", self.log.read_text("utf-8"), re.MULTILINE)
        return said and int(said[1])

    def _is_well(self):
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}),
                                             urllib.request.HTTPSHandler(context=self.trust))
        try:
            with opener.open(f"https://localhost:{self.port}/healthz", timeout=5) as reply:
                return reply.status == 200
        except (urllib.error.URLError, OSError):
            return False

    def stop(self):
        """Asks the service to end; its exit code."""
        if self.process.poll() is None:
            self.process.terminate()
        try:
            return self.process.wait(timeout=30)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return None
