#!/usr/bin/env python3
"""What packaging/check compares: comparisons.py NAME ARGUMENTS. Says what is off, and fails.

translated METAINFO ENTRY          every text has its Swedish one, each kind of element as often as in English
contents PACKAGE LIST              rights, owner and path of all that is in a package
files FOLDER LIST                  the files below a folder are those of the list
relates PACKAGE FIELD NAMES...     a field of a package names these
hardened PROGRAM FOLDER            placed anywhere, every address settled before the start, a guarded stack, no
                                   symbols, and nothing of the folder that it was built in
fortified COMMANDS                 every compile command asks for fortified calls
papers FOLDER MANUAL               the papers lead to each other and to their pictures; the manual page names both guides
service PACKAGE PROGRAM            package and program tell which service the client was built for
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import json
import re
import subprocess
import sys
from pathlib import Path

SERVICE = "localhost:8443"
TEXTS = ("summary", "developer_name", "p", "li", "keyword")
KEYS = ("GenericName", "Comment", "Keywords")
LINK = re.compile(r"\]\(([^):]+)\)")


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, errors="surrogateescape").stdout


def translated(metainfo, entry):
    text = Path(metainfo).read_text(encoding="utf-8")
    for tag in TEXTS:
        english, swedish = text.count(f"<{tag}>"), text.count(f'<{tag} xml:lang="sv">')
        if english == 0 or english != swedish:
            yield f"{tag}: {english} English, {swedish} Swedish"
    text = Path(entry).read_text(encoding="utf-8")
    for key in KEYS:
        if not re.search(rf"^{key}\[sv\]=.", text, re.MULTILINE):
            yield f"{key} has no [sv]"


def listed(path):
    """Rights, owner and path of each line."""
    lines = Path(path).read_text(encoding="utf-8").splitlines()
    return [tuple(line.split(maxsplit=2)) for line in lines if line and not line.startswith("#")]


def differences(found, wanted):
    for line in sorted(wanted - found):
        yield f"missing: {' '.join(line)}"
    for line in sorted(found - wanted):
        yield f"not in the list: {' '.join(line)}"


def contents(package, listing):
    words = [line.split(maxsplit=5) for line in output_of("dpkg-deb", "--contents", package).splitlines()]
    found = {(rights, owner, path.split(" -> ")[0]) for rights, owner, _, _, _, path in words}
    yield from differences(found, set(listed(listing)))


def files(folder, listing):
    found = {(f"./{path.relative_to(folder)}",) for path in Path(folder).rglob("*")
             if path.is_symlink() or not path.is_dir()}
    wanted = {(path,) for rights, _, path in listed(listing) if not rights.startswith("d")}
    yield from differences(found, wanted)


def relates(package, field, *names):
    told = output_of("dpkg-deb", "--field", package, field).strip()
    related = {relation.split()[0] for relation in told.split(",") if relation.strip()}
    for name in names:
        if name not in related:
            yield f"{name} is not in: {told}"


def hardened(program, folder):
    def tells(what, pattern):
        return re.search(pattern, output_of("readelf", "--wide", f"--{what}", program), re.MULTILINE)

    if not tells("file-header", r"Type: *DYN"):
        yield "no PIE"
    if not tells("dynamic", r"Flags:.* NOW.* PIE"):
        yield "not bound at once"
    if not tells("program-headers", "GNU_RELRO"):
        yield "no RELRO"
    if not tells("dyn-syms", "__stack_chk_fail"):
        yield "no stack guard"
    if not tells("sections", r" \.text "):
        yield "its sections cannot be told"
    if tells("sections", r" \.symtab "):
        yield "not stripped"
    if folder.encode() in Path(program).read_bytes():
        yield "names the folder of its build"


def fortified(commands):
    """Whether a call was fortified cannot be told from a program that has none to fortify. Pictures are no code."""
    entries = json.loads(Path(commands).read_text(encoding="utf-8"))
    sources = [entry for entry in entries if not Path(entry["file"]).name.startswith("qrc_")]
    if not sources:
        yield "no commands"
    for entry in sources:
        if "-D_FORTIFY_SOURCE=2" not in entry["command"]:
            yield entry["file"]


def papers(folder, manual):
    count = 0
    for paper in sorted(Path(folder).glob("*.md")):
        for target in LINK.findall(paper.read_text(encoding="utf-8")):
            place = paper.parent / target.split("#")[0]
            if not place.exists():
                yield f"{paper}: no {target}"
            count += 1
    if count <= 20:
        yield f"only {count} links"
    page = Path(manual).read_text(encoding="utf-8")
    for guide in ("user-guide.md", "user-guide.sv.md"):
        if guide not in page:
            yield f"{manual} does not name {guide}"


def service(package, program):
    """In the words that apt shows before the package is installed, and in the program's own afterwards."""
    for told, line in ((output_of("dpkg-deb", "--field", package, "Description"), f" {SERVICE}."),
                       (output_of(program, "--version"), f"Service: {SERVICE}")):
        if line not in told.splitlines():
            yield f"nothing like '{line}' in: {told}"


COMPARISONS = {compare.__name__: compare
               for compare in (translated, contents, files, relates, hardened, fortified, papers, service)}


def main(name, *arguments):
    found = list(COMPARISONS[name](*arguments))
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
