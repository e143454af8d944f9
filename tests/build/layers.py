#!/usr/bin/env python3
"""Fails when a folder includes a header of a folder that it must not know, when it includes a toolkit that is left
to others, when a source asks the system for what only a few may ask for, and when units include each other, directly
or round a corner. A unit is a header and the source of the same name. Linking catches a wrong call; this catches the
include of a header that needs no linking.

Usage: layers.py ROOT
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
import sys
from pathlib import Path

# The sources that ask the system itself. Each stands behind one header, which says what another system would have to
# provide.
ASK_THE_SYSTEM = ("app/this_system.cpp", "local_files/system.cpp", "service/store/database_file.cpp",
                  "service/store/database_lock.cpp", "service/system/process.cpp")
# What is neither C++ nor a library that builds look for: the C headers, and signals.
SYSTEM = re.compile(r"(?!openssl/).*\.h$|csignal$")
# The rooms that pages are built from, and the toolkits that no room of the window uses.
TOOLS = "lists|widgets|keyboard|texts|style"
NOT_FOR_UI = "openssl/|QSql|boost/"
NOT_FOR_CRYPTO = "QNetwork|QSsl|QTcp|QWidget|QSql|boost/"

# Longest folder first: the first that a file lies in is its own. Each with the headers that it may include, and
# the toolkits that it may not.
FOLDERS = (
    ("service/http", "service/(http|system)/", "QSql|QJson"),
    ("service/metrics", "service/metrics/", "QSql|QJson|openssl/|boost/"),
    ("service/system", "service/system/", "Q|openssl/|boost/"),
    ("service/threads", "service/(threads|system)/", "Q|openssl/|boost/"),
    ("service/store", "service/(store|threads)/", "openssl/|QJson|boost/"),
    ("service/secrets", "service/secrets/", "QSql|QJson|boost/"),
    ("service/control", "service/(control|secrets|store|system)/", "openssl/|QSql|QJson|boost/"),
    ("service/api", "service/(api|secrets|store|threads)/|service/http/(byte_budget|exchange|multipart|header_value)",
     "QSql|boost/"),
    ("service", "service/", "openssl/|QSql|QJson"),
    *((f"ui/{room}", f"ui/({room}|{TOOLS})/", NOT_FOR_UI) for room in ("rail", "settings", "sign_in")),
    *((f"ui/{room}", f"ui/({room}|messages|{TOOLS})/", NOT_FOR_UI) for room in ("sidebar", "chat")),
    ("ui/messages", "ui/(messages|texts|lists)/|crypto/", "QNetwork|" + NOT_FOR_UI),
    ("ui/lists", "ui/lists/", NOT_FOR_UI),
    ("ui/widgets", "ui/(widgets|keyboard|texts|style)/", NOT_FOR_UI),
    ("ui/keyboard", "ui/keyboard/", NOT_FOR_UI),
    ("ui/texts", "ui/texts/", NOT_FOR_UI),
    ("ui/style", "ui/style/", NOT_FOR_UI),
    ("ui", "(ui|net|crypto)/", NOT_FOR_UI),
    ("app", "(app|ui|net)/", "openssl/|QSql|boost/"),
    ("net", "(net|local_files)/", "openssl/|QWidget|QSql|boost/"),
    ("crypto/messages", "crypto/", NOT_FOR_CRYPTO),
    ("crypto/keys", "(crypto/(keys|cipher)|local_files)/", NOT_FOR_CRYPTO),
    ("crypto/cipher", r"crypto/cipher/|local_files/system\.h", NOT_FOR_CRYPTO),  # it wipes what libcrypto frees
    ("local_files", "local_files/", "openssl/|QNetwork|QSsl|QTcp|QWidget|QSql|boost/"),
)
QUOTED = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)
BRACKETS = re.compile(r"^[ \t]*#[ \t]*include[ \t]*<([^>]+)>", re.MULTILINE)


def sources(root):
    """Every source below the rooms, by its path from the root."""
    rooms = {folder.split("/")[0] for folder, _, _ in FOLDERS}
    paths = [path for room in rooms for path in (root / room).rglob("*") if path.name.endswith((".h", ".cpp", ".in"))]
    return {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8") for path in sorted(paths)}


def wrong_includes(files):
    for path, text in files.items():
        _, allowed, foreign = next(rule for rule in FOLDERS if path.startswith(rule[0] + "/"))
        for header in QUOTED.findall(text):
            if not header.endswith(".moc") and not re.match(allowed, header):
                yield f'{path} includes "{header}"'
        for header in BRACKETS.findall(text):
            if re.match(foreign, header) or (path not in ASK_THE_SYSTEM and SYSTEM.match(header)):
                yield f"{path} includes <{header}>"


def unit_of(path):
    """A header and the source of the same name are one unit."""
    return path.split(".")[0]


def circles(files):
    """Each circle of units once, as the way round."""
    includes = {unit_of(path): set() for path in files}
    for path, text in files.items():
        includes[unit_of(path)] |= {unit_of(header) for header in QUOTED.findall(text) if header in files}
    done = set()

    def follow(unit, way):
        if unit in way:
            yield " -> ".join([*way[way.index(unit):], unit])
        elif unit not in done:
            for other in sorted(includes[unit] - {unit}):
                yield from follow(other, [*way, unit])
            done.add(unit)

    for unit in includes:
        yield from follow(unit, [])


def main():
    files = sources(Path(sys.argv[1]))
    if len(files) < 100:
        sys.exit(f"Only {len(files)} files were found below {sys.argv[1]}: nothing was checked.")
    missing = [f"{path} is not there" for path in ASK_THE_SYSTEM if path not in files]
    offences = [*missing, *wrong_includes(files), *circles(files)]
    if offences:
        sys.exit("A folder may include only what stands below it (app -> ui -> net, crypto -> local_files;\n"
                 "window -> pages -> messages -> tool rooms; crypto/messages -> crypto/keys -> crypto/cipher;\n"
                 "service/api -> service/http, service/store, service/secrets), no units include each other, and\n"
                 f"only these include headers of the system: {' '.join(ASK_THE_SYSTEM)}\n  "
                 + "\n  ".join(offences))
    print(f"{len(files)} files keep to their layer")


if __name__ == "__main__":
    main()
