"""Runs a checker on every source that has changed since the checker found nothing in it.

Usage: lint_changed.py DATABASE MEMORY SETTINGS COMMAND... <NAMES

NAMES are files, each followed by NUL. COMMAND is run with one of them as its last word, one a processor; only what a
failing one says is printed, in one piece, and the exit code is 1 when there was one. What passed is written down in
the folder MEMORY, with a digest of all that it depends on: the COMMAND, the checker's version, every file of the name
SETTINGS in the source's folder and those around it ('' for none), how DATABASE/compile_commands.json has the source
compiled, and the text of every file that it includes.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys


@functools.cache
def digest(path):
    """Of a file's bytes; of none when there is no such file."""
    try:
        return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()
    except OSError:
        return ""


def compile_commands(database):
    """How each source is compiled: {absolute path: (folder, command without "-o NAME")}."""
    entries = json.loads(pathlib.Path(database, "compile_commands.json").read_text(encoding="utf-8"))
    found = {}
    for entry in entries:
        words = shlex.split(entry["command"])
        if "-o" in words:
            at = words.index("-o")
            del words[at:at + 2]
        found[os.path.normpath(os.path.join(entry["directory"], entry["file"]))] = (entry["directory"], words)
    return found


def included_files(folder, how):
    """The files that the compiler reads, the source among them; none when it cannot."""
    rule = subprocess.run([*how, "-M", "-w"], cwd=folder, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True, check=False)
    if rule.returncode != 0:
        return []
    names = re.split(r"(?<!\\)\s+", rule.stdout.partition(": ")[2].replace("\\\n", " ").strip())
    return [os.path.join(folder, name.replace("\\ ", " ")) for name in names]


def settings_of(source, name):
    """Every file that may say how the source is looked at, also those that are not there yet."""
    return [str(folder / name) for folder in pathlib.Path(os.path.abspath(source)).parents] if name else []


class Memory:
    """What a checker found nothing in."""

    def __init__(self, folder, circumstances):
        self.folder = pathlib.Path(folder)
        self.circumstances = circumstances
        self.folder.mkdir(parents=True, exist_ok=True)

    def _note(self, source):
        return self.folder / (source.replace("/", "+") + ".json")

    def has(self, source, how):
        try:
            note = json.loads(self._note(source).read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return False
        return note["how"] == [self.circumstances, how] and all(
            digest(path) == known for path, known in note["files"].items())

    def add(self, source, how, digests):
        note = {"how": [self.circumstances, how], "files": digests}
        self._note(source).write_text(json.dumps(note), encoding="utf-8")


def check(source, command, settings, memory, compiled):
    """What the checker says of a source that it does not let pass."""
    folder, how = compiled.get(os.path.abspath(source), (None, []))
    if folder and memory.has(source, how):
        return ""
    included = included_files(folder, how) if folder else []
    digests = {path: digest(path) for path in included + settings_of(source, settings)}
    result = subprocess.run([*command, source], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                            errors="replace", stdin=subprocess.DEVNULL, check=False)
    if result.returncode != 0:
        return result.stdout or f"{source}: exit code {result.returncode}\n"
    if included:
        memory.add(source, how, digests)
    return ""


def main():
    database, folder, settings, *command = sys.argv[1:]
    version = subprocess.run([command[0], "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    circumstances = hashlib.sha256(json.dumps([command, version]).encode()).hexdigest()
    memory = Memory(folder, circumstances)
    compiled = compile_commands(database)
    failed = False
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        sources = [source for source in sys.stdin.read().split("\0") if source]
        for words in pool.map(lambda source: check(source, command, settings, memory, compiled), sources):
            sys.stdout.write(words)
            sys.stdout.flush()
            failed = failed or bool(words)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
