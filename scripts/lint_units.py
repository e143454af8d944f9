"""Makes one source of those that a unity build compiles together, for a checker that takes most of its time for headers.

Usage: lint_units.py ROOT DATABASE FOLDER SETTINGS <NAMES

DATABASE/compile_commands.json is that of a unity build. In FOLDER, which is made anew, there will be a source for each
of its units, a compile_commands.json of the units and of every source, and beside the units of each folder of ROOT a copy of the
file SETTINGS that says how its sources are looked at. NAMES are sources, each followed by NUL: printed is what to look
at in their place, units and the sources that are in none, in the same form.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import json
import os
import pathlib
import re
import shutil
import sys


def included_sources(unit):
    return re.findall(r'^#include "(.*)"', pathlib.Path(unit).read_text(encoding="utf-8"), re.MULTILINE)


# By "UnifiedSource" in its name the analyzer knows a file whose included sources it has to look through like its own.
def write_unit(root, folder, settings, unit):
    """Its name, and the names of the sources in it."""
    sources = included_sources(unit)
    top = pathlib.Path(os.path.relpath(sources[0], root)).parts[0]
    target, number = re.search(r"CMakeFiles/(.*)\.dir/Unity/unity_(\d+)_", unit).groups()
    name = folder / top / f"UnifiedSource_{target}_{number}.cpp"
    name.parent.mkdir(parents=True, exist_ok=True)
    if (root / top / settings).exists():
        shutil.copy(root / top / settings, name.parent)
    name.write_text("".join(f'#include "{source}" // NOLINT(bugprone-suspicious-include)\n' for source in sources),
                    encoding="utf-8")
    return str(name), sources


def main():
    root, database, folder = map(pathlib.Path, sys.argv[1:4])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    entries = json.loads((database / "compile_commands.json").read_text(encoding="utf-8"))
    compiled = []
    units = []
    covered = set()
    for entry in entries:
        if "/Unity/unity_" not in entry["file"]:
            compiled.append(entry)
            continue
        name, sources = write_unit(root, folder, sys.argv[4], os.path.join(entry["directory"], entry["file"]))
        compiled += [dict(entry, file=file, command=entry["command"].replace(entry["file"], file))
                     for file in [name] + sources]
        units.append(name)
        covered.update(sources)
    (folder / "compile_commands.json").write_text(json.dumps(compiled), encoding="utf-8")
    wanted = [name for name in sys.stdin.read().split("\0") if name]
    alone = [name for name in wanted if os.path.abspath(name) not in covered]
    sys.stdout.write("".join(f"{name}\0" for name in units + alone))


if __name__ == "__main__":
    main()
