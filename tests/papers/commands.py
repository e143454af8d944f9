# Commands, options and presets of the papers.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import json
import re

SCRIPT = re.compile(r"(?:\./)?((?:run|test)|[a-z]+(?:/[a-z_]+)+)(?= |$)")
OPTION = re.compile(r"(?<![^\s\[(])(--[a-z][a-z-]*)")


def usage(project, script):
    """What a script says of itself when it is asked for help."""
    text = project.read(script)
    found = re.search(r"^usage\(\)\n.*?<<'?END'?\n(.*?)^END$", text, re.M | re.S)
    return found[1] if found else text


def is_script(project, path):
    return project.exists(path) and not (project.root / path).is_dir() and project.read(path).startswith("#!")


def service_options(project):
    table = re.findall(r"\w\(\"([a-z-]+)\", &Options", project.read("service/option_table.cpp"))
    lone = re.findall(r"[{ ]u\"([a-z-]{2,})\"_s[,}]", project.read("service/options.cpp"))
    return {f"--{name}" for name in table + lone}


def client_options(project):
    return set(OPTION.findall(project.read("app/command_line.cpp")))


def control_options(project):
    text = project.read("service/control/call_parser.cpp")
    return {f"--{name}" for name in re.findall(r"[{ ]u\"([a-z-]{2,})\"_s[,}]", text)}


def control_commands(project):
    """What tideloftctl can be asked to do: names, with what each takes."""
    table = project.read("service/control/command_table.cpp")
    return dict(re.findall(r"\{u\"([a-z ]+)\"_s, (?:\{\}|u\"([A-Z ]+)\"_s),", table))


def check_control_commands(project):
    """tideloftctl is asked for what it can do, and its manual page explains each command and no other."""
    known = control_commands(project)
    problems = []
    for paper in project.papers():
        for command in single_commands(paper):
            arguments = re.sub(r"--database \S+", "", command)
            words = [word for word in arguments.split()[1:] if not word.startswith(("-", "<"))]
            if command.split(" ")[0] == "tideloftctl" and words and not asks_for_one(known, words):
                problems.append(f"{paper.path}: tideloftctl cannot do {command!r}")
    page = re.findall(r"^\.It Cm ([a-z ]+?)(?: Ar [a-z ]+)?$", project.read("packaging/man/tideloftctl.8"), re.M)
    if sorted(page) != sorted(known):
        problems.append(f"the manual page of tideloftctl has {sorted(page)}, and the program {sorted(known)}")
    return problems


def asks_for_one(known, words):
    for name, parameter in known.items():
        given = words[len(name.split()):]
        if words[:len(name.split())] == name.split():
            return len(given) == len(parameter.split())
    return False


def options_of(project, command):
    """The options of the command's program, or nothing if it is none of ours."""
    program = command.split(" ")[0]
    if program.split("/")[-1] == "tideloftd":
        return service_options(project)
    if program.split("/")[-1] == "tideloftctl":
        return control_options(project)
    if program.split("/")[-1] == "tideloft":
        return client_options(project)
    script = SCRIPT.match(command)
    if script and (command.startswith("./") or "/" in script[1]) and is_script(project, script[1]):
        return set(OPTION.findall(usage(project, script[1]))) | {"--help"}
    return None


def check_commands(project):
    """Every script that is called exists, and it and our programs know every option they are given."""
    problems = []
    for paper in project.papers():
        for command in single_commands(paper):
            known = options_of(project, command)
            if known is None and command.startswith("./"):
                problems.append(f"{paper.path}: there is no script for {command}")
            program = command.split(" ")[0]
            problems += [f"{paper.path}: {program} has no option {option}"
                         for option in OPTION.findall(command) if known is not None and option not in known]
    return problems


def check_lone_options(project):
    """An option that is named on its own belongs to a program that the papers call."""
    papers = project.papers()
    known = service_options(project) | client_options(project) | control_options(project)
    for paper in papers:
        for command in single_commands(paper):
            known |= options_of(project, command) or set()
    return [f"{paper.path}: nothing has the option {span}" for paper in papers
            for span in paper.spans() if OPTION.fullmatch(span) and span not in known]


def check_manual(project):
    """The manual page of the service has every option."""
    page = project.read("packaging/man/tideloftd.8")
    lines = re.findall(r"^\.It (Fl .*)$", page, re.M)
    told = {f"-{name}" for line in lines for name in re.findall(r"(?:Fl|,) (-[a-z-]+)", line)}
    return [f"packaging/man/tideloftd.8: does not tell of {name}" for name in sorted(service_options(project) - told)]


def single_commands(paper):
    return [re.sub(r"^sudo ", "", part.strip())
            for command in paper.commands() for part in re.split(r"&&|;|\| ", command)]


def presets(project, kind):
    listed = json.loads(project.read("CMakePresets.json"))[kind]
    return [preset["name"] for preset in listed if not preset.get("hidden")]


def check_cmake(project):
    """CMake is given settings that the project has, and presets that exist for what is done with them."""
    files = ["CMakeLists.txt", "tests/CMakeLists.txt", *project.files("cmake/*.cmake")]
    settings = {name for path in files
                for name in re.findall(r"^\s*(?:set|option)\((\w+)", project.read(path), re.M)}
    problems = []
    for paper in project.papers():
        for command in single_commands(paper):
            kind = ("testPresets" if command.startswith("ctest") else
                    "buildPresets" if "cmake --build" in command else "configurePresets")
            problems += [f"{paper.path}: no preset {name} among the {kind}"
                         for name in re.findall(r"--preset (\S+)", command)
                         if name not in presets(project, kind)]
            problems += [f"{paper.path}: no setting {name}" for name in re.findall(r"-D(\w+)=", command)
                         if name not in settings and not name.startswith(("CMAKE_", "BUILD_TESTING"))]
    return problems


def check_preset_table(project):
    """CONTRIBUTING.md lists the presets, each once."""
    table = project.paper("CONTRIBUTING.md").tables()[0]
    listed = sorted(name for row in table for name in re.findall(r"`(\w+)`", row[0]))
    wanted = sorted(presets(project, "configurePresets"))
    return [] if listed == wanted else [f"CONTRIBUTING.md: lists the presets {listed}, there are {wanted}"]
