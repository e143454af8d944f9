"""The search for a text that must not be there, in every form in which it could plausibly hide."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import base64
import json
import urllib.parse


def _base64_forms(data):
    """The characters that DATA gives inside Base64, whichever place in a group of three it starts at."""
    for offset in range(3):
        encoded = base64.b64encode(bytes(offset) + data)
        first = -(-offset * 4 // 3)  # characters that the bytes before it reach into
        usable = (offset + len(data)) * 4 // 3
        yield encoded[first:usable]


def forms(text):
    """Every form of TEXT that is searched for, by name."""
    found = {
        "UTF-8": text.encode("utf-8"),
        "UTF-16 little endian": text.encode("utf-16-le"),
        "UTF-16 big endian": text.encode("utf-16-be"),
        "JSON, escaped": json.dumps(text)[1:-1].encode("ascii"),
        "percent-encoded": urllib.parse.quote(text).encode("ascii"),
        "hexadecimal": text.encode("utf-8").hex().encode("ascii"),
    }
    for name in ("UTF-8", "UTF-16 little endian"):
        for offset, form in enumerate(_base64_forms(found[name])):
            found[f"Base64 of {name} at {offset}"] = form
    return found


def found_in(text, data):
    """The names of the forms of TEXT that DATA holds."""
    return [name for name, form in forms(text).items() if form in data]


def misses(text):
    """The forms of TEXT that the search would overlook, each planted on its own between other bytes."""
    return [name for name, form in forms(text).items()
            if name not in found_in(text, b"\0before" + form + b"after\xff")]


def found_after_planting(text, database):
    """Whether the search finds TEXT when the database does hold it."""
    return bool(found_in(text, database.content_with(text)))
