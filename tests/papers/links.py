# Links, pictures, anchors and named files of the papers.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import fnmatch
import os
import re

from commands import usage
from project import GENERATED

PATH = re.compile(r"\"?(\.?[A-Za-z_][\w.\-]*/[\w./\-]*|[A-Z]+\.md)\"?")


def check_links(project):
    """Every relative link leads to a file, every anchor to a heading, and every picture has a text."""
    problems = []
    for paper in project.papers():
        for target in paper.links():
            if not re.match(r"[a-z]+:", target):
                problems += link_problems(project, paper, target)
        problems += [f"{paper.path}: the picture {target} has no alternative text"
                     for text, target in paper.pictures() if not text.strip()]
    return problems


def link_problems(project, paper, target):
    path, _, anchor = target.partition("#")
    path = os.path.normpath(os.path.join(os.path.dirname(paper.path), path)) if path else paper.path
    if not project.exists(path):
        return [f"{paper.path}: {target} leads to no file"]
    if anchor and anchor not in project.paper(path).anchors():
        return [f"{paper.path}: {target} leads to no heading"]
    return []


def check_files(project):
    """Every path of the source tree that is named in backticks is there, with or without its ending."""
    problems = []
    for paper in project.papers():
        for span in paper.spans():
            match = PATH.fullmatch(span.split(" ")[0])
            if match and not is_there(project, paper, match[1]):
                problems.append(f"{paper.path}: there is no {match[1]}")
    return problems


def is_there(project, paper, path):
    first = path.split("/")[0]
    if first in GENERATED:
        return True
    path = re.sub(r"/[A-Z]+(/.*)?$", "", path)  # a word in capitals stands for whatever is meant
    return project.exists(path.rstrip("/")) or bool(project.files(f"{path.rstrip('/')}.*"))


def test_names(project):
    """The tests and benches by name: their programs, and what CMake calls otherwise."""
    programs = project.files("tests/**/tst_*.cpp") + project.files("bench/bench_*.cpp")
    names = {os.path.splitext(os.path.basename(path))[0] for path in programs}
    for path in [path for pattern in ("tests/**/CMakeLists.txt", "tests/**/*.cmake", "cmake/*.cmake")
                 for path in project.files(pattern)]:
        names |= set(re.findall(r"(?:add_test\(NAME|set\(program) (\w+)", project.read(path)))
        names |= set(re.findall(r"tideloft_test\((\w+)", project.read(path)))
    return names


def check_tests(project):
    """Every test that is named exists, and every pattern after ./test matches one."""
    names = test_names(project)
    own_words = re.findall(r"\./test ([a-z]+)", usage(project, "test"))
    problems = []
    for paper in project.papers():
        problems += [f"{paper.path}: there is no test {span}" for span in paper.spans()
                     if re.fullmatch(r"(tst|e2e|bench)_[\w*]+", span) and not fnmatch.filter(names, span)]
        for span in paper.spans():
            match = re.fullmatch(r"\./test (?:--\w+ )?'?([a-z_(|)0-9]+)'?", span)
            if match and match[1] not in own_words and not any(re.search(match[1], name) for name in names):
                problems.append(f"{paper.path}: no test matches {match[1]}")
    return problems
