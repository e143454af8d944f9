"""Small changes to source files, each of which a good test notices: the mutants of mutants_of(FILE)."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import dataclasses
import re

# What is between quotes and in comments says nothing to the compiler that a mutant could change.
SILENT = re.compile(r'//.*|"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'')

# The code is formatted: an operator has a blank on both sides, an angle bracket of a template has none.
OPERATORS = (
    (" == ", " != "),
    (" != ", " == "),
    (" <= ", " < "),
    (" >= ", " > "),
    (" < ", " <= "),
    (" > ", " >= "),
    (" && ", " || "),
    (" || ", " && "),
    (" + ", " - "),
    (" - ", " + "),
    (" * ", " / "),
    (" / ", " * "),
    ("true", "false"),
    ("false", "true"),
)
NUMBER = re.compile(r"(?<![\w.'])\d+(?![\w.'])")
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()(.*)(\)(?: \{)?)$")
CALL = re.compile(r"^\s+(?!return\b|throw\b|delete\b|emit\b|else\b)[\w.:>()\-]+\(.*\);$")

# Without these a program does the same: room is made early, warnings are not part of what is promised, and
# neither is how long one sleeps between two looks at a lock.
WITHOUT_EFFECT = re.compile(
    r"\breserve\(|\bmsleep\(|Q_ASSERT|qCWarning|qWarning|static_assert|Q_UNUSED|^constexpr int (?:\w*P|p)ause = "
)
# Whoever gets the address of it writes it before anybody reads it.
WRITTEN_ELSEWHERE = re.compile(r"^ +(?:int|size_t) (\w+) = 0;$")


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One changed line, counted from 0."""

    path: str
    line: int
    before: str
    after: str

    def apply(self, text):
        """The whole file with this line changed."""
        lines = text.split("\n")
        assert lines[self.line] == self.before
        lines[self.line] = self.after
        return "\n".join(lines)


def mask(line):
    """The line with blanks of another kind where the compiler sees no code; as long as before."""
    return SILENT.sub(lambda match: "\0" * len(match.group()), line)


def changed_operators(line, masked):
    for operator, other in OPERATORS:
        pattern = re.escape(operator) if operator.startswith(" ") else rf"\b{operator}\b"
        for match in re.finditer(pattern, masked):
            yield line[: match.start()] + other + line[match.end() :]


def changed_numbers(line, masked):
    for match in NUMBER.finditer(masked):
        yield line[: match.start()] + str(int(match.group()) + 1) + line[match.end() :]


def changed_condition(line, masked):
    match = CONDITION.match(masked)
    if match and ";" not in match.group(2):
        start, end = match.span(2)
        yield f"{line[:start]}!({line[start:end]}){line[end:]}"


def left_out_call(line, masked):
    if CALL.match(masked) and masked.count("(") == masked.count(")"):
        yield line[: len(line) - len(line.lstrip())] + ";"


def is_written_elsewhere(line, text):
    written = WRITTEN_ELSEWHERE.match(line)
    return written and (f"&{written.group(1)})" in text or f"&{written.group(1)}," in text)


def variants(line, text):
    """What the line, which is one of the text's, may be changed to so that somebody could tell."""
    masked = mask(line)
    if masked.lstrip().startswith("#") or WITHOUT_EFFECT.search(masked) or is_written_elsewhere(line, text):
        return
    for change in (changed_operators, changed_numbers, changed_condition, left_out_call):
        yield from change(line, masked)


def mutants_of(path, text):
    """Every mutant of a file's text, in the order of its lines."""
    return [
        Mutant(path, number, line, variant)
        for number, line in enumerate(text.split("\n"))
        for variant in variants(line, text)
    ]
