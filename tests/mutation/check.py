"""Plants small changes and counts how many the tests notice: check.py ROOT FOLDER SEED COUNT LEAST."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import pathlib
import random
import re
import sys

import answers
import mutants
import project_copy

# What decides something and draws nothing, and the folders of tests that answer for it. Changes that the first
# does not notice are tried on the next ones, which take far longer, when all have been tried on their first.
ROOMS = {
    "crypto": ("tests/crypto", "tests/app", "tests/faults", "tests/fuzz"),
    "local_files": ("tests/local_files", "tests/crypto", "tests/net", "tests/faults"),
    "net": ("tests/net", "tests/faults", "tests/gui"),
    "ui": ("tests/ui", "tests/gui"),
}
PURE = {
    "crypto": "*",
    "local_files": "*",
    "net": "device_identity device_key_records etag_cache image_upload json_pipeline json_reply reply_cache "
    "reply_outcome search_query service_request",
    "ui": "bounded_text conversation_row_models display_records history_cache history_groups history_row_models "
    "initials message_time picture_file row_plan sealing_devices server_models spoken_text text",
}


def candidates(source):
    found = []
    for room, names in PURE.items():
        files = [f"{name}.cpp" for name in names.split()] if names != "*" else ["*.cpp"]
        for pattern in files:
            paths = sorted((source / room).rglob(pattern))
            assert paths, f"{pattern} is not in {room}/"
            for path in paths:
                found += mutants.mutants_of(path.relative_to(source).as_posix(), path.read_text())
    return found


def log(text):
    print(text, file=sys.stderr, flush=True)


class Trial:
    """Tries changes, one at a time, on tests that were seen to pass without any."""

    def __init__(self, copy):
        self.copy = copy
        self.tests = {}

    def prove(self, folder):
        """The names of a folder's tests, which all pass as long as nothing is changed."""
        if folder not in self.tests:
            log(f"{folder}: do they pass without any change?")
            names = self.copy.tests_in(folder)
            self.copy.make([f"{folder}/all"])
            if failed := self.copy.failures(folder, names):
                sys.exit(f"The tests in {folder} fail without any change: {failed}")
            self.tests[folder] = names
        return self.tests[folder]

    def stages(self, path, folders):
        """(folder, targets, names of tests): the unit's own tests, and then whole folders."""
        unit = pathlib.Path(path).stem
        own = re.compile(rf"tst_(\w+_)?{unit}(_\w+)?")
        for folder in folders:
            names = self.prove(folder)
            nearest = [name for name in names if own.fullmatch(name)]
            if nearest:
                yield folder, nearest, nearest
            yield folder, [f"{folder}/all"], [name for name in names if name not in nearest]

    def noticed_by(self, mutant, folders):
        """The test in these that fails with this change; None when none does, False when it does not compile."""
        path = self.copy.source / mutant.path
        original = path.read_text()
        for folder, targets, names in self.stages(mutant.path, folders):
            path.write_text(mutant.apply(original))
            try:
                if not self.copy.compiles(mutant.path):
                    return False
                self.copy.make(targets)
                if name := self.failing_test(folder, names):
                    return name
            finally:
                path.write_text(original)
        return None

    def failing_test(self, folder, names):
        """The first that fails, and fails again: a busy machine has not noticed anything. Or nothing."""
        while names:
            failed = self.copy.failures(folder, names, "--stop-on-failure")
            if not failed:
                return None
            for name, how in failed:
                if "Timeout" in how or self.copy.failures(folder, [name]):
                    return name
                log(f"{name} failed once and passed then.")
            doubtful = {name for name, _ in failed}
            names = [name for name in names if name not in doubtful]
        return None


def describe(number, mutant, answer):
    row = (str(number), f"{mutant.path}:{mutant.line + 1}", f"`{mutant.before.strip()}`", f"`{mutant.after.strip()}`")
    print("| " + " | ".join((*(cell.replace("|", "\\|") for cell in row), answer or "**nobody**")) + " |", flush=True)


def folders_of(mutant):
    return ROOMS[mutant.path.split("/")[0]]


def answers_to(pool, count, trial, known):
    """(number, mutant, test or None) of the first of the pool that compile."""
    undecided = []
    number = 0
    for mutant in pool:
        if number == count:
            break
        answer = known.find(mutant) or trial.noticed_by(mutant, folders_of(mutant)[:1])
        if answer is False:
            continue
        number += 1
        if answer:
            yield number, mutant, answer
        else:
            log(f"{number}. {mutant.path}:{mutant.line + 1} is still to be noticed: {mutant.after.strip()}")
            undecided.append((number, mutant))
    for number, mutant in undecided:
        yield number, mutant, trial.noticed_by(mutant, folders_of(mutant)[1:])


def main(root, folder, seed, count, least):
    copy = project_copy.Copy(root, folder)
    copy.configure()
    trial = Trial(copy)
    for first, *_ in ROOMS.values():
        trial.prove(first)
    known = answers.Answers(copy.source, folder / "noticed.json")
    pool = candidates(copy.source)
    random.Random(seed).shuffle(pool)
    print(f"{count} of {len(pool)} possible changes, seed {seed}\n")
    print("| | Where | Before | After | Noticed by |\n|---|---|---|---|---|", flush=True)
    tried = noticed = 0
    for number, mutant, answer in answers_to(pool, count, trial, known):
        if answer:
            known.keep(mutant, answer)
        tried += 1
        noticed += answer is not None
        describe(number, mutant, answer)
    print(f"\n{noticed} of {tried} noticed")
    return 0 if tried == count and noticed >= least else 1


if __name__ == "__main__":
    ROOT, FOLDER = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    sys.exit(main(ROOT, FOLDER, *map(int, sys.argv[3:6])))
