"""What travels between the clients and the service, TLS taken off: a proxy that passes it on and keeps it."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import contextlib
import json
import re
import select
import socket
import ssl
import threading


class Wire:
    """Stands in the service's place towards the clients, and speaks TLS to both sides."""

    def __init__(self, port, service_port, certificates):
        self.service_port = service_port
        self.connections = []  # for each: [bytes to the service, bytes to the client]
        self.versions = set()
        self.lock = threading.Lock()
        self.to_clients = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        self.to_clients.load_cert_chain(certificates / "server.pem", certificates / "server-key.pem")
        self.to_service = ssl.create_default_context(cafile=certificates / "ca.pem")
        self.listener = socket.create_server(("127.0.0.1", port), backlog=64)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self.listener.close()

    def recorded(self):
        """Every byte that has passed, one direction of one connection after the other."""
        with self.lock:
            return b"\n".join(bytes(direction) for record in self.connections for direction in record)

    def requests(self, start):
        """How often a request beginning with START was made."""
        with self.lock:
            return sum(bytes(record[0]).count(start) for record in self.connections)

    def last_refusal(self):
        """The message of the last reply with status 401, as the service worded it."""
        replies = re.findall(rb"HTTP/1\.1 401 .*?\r\n\r\n(\{.*?\})", self.recorded(), re.DOTALL)
        return json.loads(replies[-1])["message"] if replies else None

    def _accept(self):
        while True:
            try:
                plain, _ = self.listener.accept()
            except OSError:
                return  # closed
            threading.Thread(target=self._serve, args=(plain,), daemon=True).start()

    def _serve(self, plain):
        record = [bytearray(), bytearray()]
        with contextlib.suppress(OSError), plain:
            with self.to_clients.wrap_socket(plain, server_side=True) as client:
                plain_service = socket.create_connection(("127.0.0.1", self.service_port))
                with self.to_service.wrap_socket(plain_service, server_hostname="localhost") as service:
                    with self.lock:
                        self.connections.append(record)
                        self.versions.add(client.version())
                    self._pass_on(client, service, record)

    def _pass_on(self, client, service, record):
        """Until one side ends. One thread serves both directions: a TLS connection is not for two at once."""
        ways = {client: (service, record[0]), service: (client, record[1])}
        while True:
            readable, _, _ = select.select(list(ways), [], [])
            for source in readable:
                target, kept = ways[source]
                data = self._read(source)
                if data is None:
                    continue  # a TLS record without content for us, such as a session ticket
                if not data:
                    return
                with self.lock:
                    kept += data
                target.sendall(data)

    @staticmethod
    def _read(source):
        """What has arrived, b"" at the end, None for nothing. Reads all that TLS has already taken off
        the socket: select would not report that again."""
        source.setblocking(False)
        try:
            data = source.recv(65536)
            while source.pending():
                data += source.recv(65536)
            return data
        except ssl.SSLWantReadError:
            return None
        finally:
            source.setblocking(True)
