"""Where the service of the tour keeps everything: in a file, or on a server of the tour's own."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import pathlib
import shutil
import sqlite3
import tempfile

from postgresql import PostgresqlServer


class SqliteFile:
    """A file, and what lies beside it, its journal for one."""

    def __init__(self, directory):
        self.path = pathlib.Path(directory, "service.sqlite")
        self.address = str(self.path)

    def content(self):
        """Everything that the service keeps, as it lies on the disk."""
        return b"\n".join(file.read_bytes() for file in sorted(self._files()))

    def content_with(self, text):
        """The content of a copy of the database that holds TEXT as it was typed."""
        with tempfile.TemporaryDirectory() as directory:
            for file in self._files():
                shutil.copy(file, directory)
            copy = SqliteFile(directory)
            connection = sqlite3.connect(copy.path)
            with connection:
                connection.execute("CREATE TABLE planted (text TEXT)")
                connection.execute("INSERT INTO planted VALUES (?)", (text,))
            connection.close()
            return copy.content()

    def stop(self):
        """A file needs no end."""

    def _files(self):
        return self.path.parent.glob(f"{self.path.name}*")


class PostgresqlDatabase:
    """A server that keeps nothing but what the service keeps."""

    def __init__(self):
        self.server = PostgresqlServer()
        self.address = self.server.address

    def content(self):
        """The server's files, and its rows as a text too: the server may compress what is long."""
        return self.server.files() + b"\n" + self.server.dump()

    def content_with(self, text):
        """The server's files while a table holds TEXT as it was typed."""
        self.server.ask("CREATE TABLE planted (text TEXT);\nINSERT INTO planted VALUES (:'text');\n", text=text)
        files = self.server.files()
        self.server.ask("DROP TABLE planted")
        return files

    def stop(self):
        """Ends the server."""
        self.server.stop()


def new_database(kind, directory):
    """An empty one of a KIND that the tour knows."""
    return PostgresqlDatabase() if kind == "postgresql" else SqliteFile(directory)
