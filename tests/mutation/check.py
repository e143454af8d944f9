"""Plants small changes and counts how many the tests notice: check.py ROOT FOLDER SEED COUNT LEAST."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import random
import resource
import shutil
import subprocess
import sys

import mutants

# What decides something and draws nothing, and the folders of tests that answer for it: the nearest first.
# A change that those do not notice is tried on the second.
ROOMS = {
    "crypto": (("tests/crypto",), ("tests/faults", "tests/fuzz")),
    "net": (("tests/net",), ("tests/gui",)),
    "ui": (("tests/ui",), ("tests/gui",)),
}
PURE = {
    "crypto": "*",
    "net": "device_identity device_key_records image_upload json_reply repeated_array search_query",
    "ui": "bounded_text conversation_rows device_lists display_records history_groups history_rows initials "
    "message_time opened_history picture_file row_plan server_models text",
}
# A change can make a test wait for ever, or ask for all memory there is: both are noticed.
SECONDS_A_TEST = 60
MEMORY = 8 << 30


def quiet(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


class Copy:
    """The project's files in a folder of their own, where they are changed, built and tested."""

    def __init__(self, root, folder):
        self.source = folder / "source"
        self.build = self.source / "build/dev"
        listed = subprocess.run(["git", "-C", root, "ls-files", "-z"], check=True, stdout=subprocess.PIPE, text=True)
        for name in filter(None, listed.stdout.split("\0")):
            self.bring(root / name, self.source / name)

    @staticmethod
    def bring(origin, target):
        """Leaves alone what is the same already: the build goes by times."""
        if target.exists() and target.read_bytes() == origin.read_bytes():
            return
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(origin, target)

    def configure(self):
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        subprocess.run(
            ["cmake", "--preset", "dev", "--log-level=WARNING", *launcher],
            check=True, cwd=self.source, stdout=subprocess.DEVNULL,
        )

    def compiles(self, folders):
        targets = [f"{folder}/all" for folder in folders]
        return quiet(["cmake", "--build", self.build, "--target", *targets]).returncode == 0

    def failing_test(self, folders):
        """The name of a test that fails, or nothing."""
        for folder in folders:
            result = quiet(
                ["ctest", "--test-dir", self.build / folder, "-j", str(os.cpu_count()), "--stop-on-failure",
                 "--no-tests=error", "--timeout", str(SECONDS_A_TEST)],
                stdin=subprocess.DEVNULL,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY)),
            )
            if result.returncode != 0:
                return failed_name(result.stdout) or folder
        return None


def failed_name(output):
    rows = [line for line in output.splitlines() if "***" in line]
    return rows[0].split(":", 1)[1].split()[0].strip(".") if rows else None


def candidates(source):
    found = []
    for room, names in PURE.items():
        files = [f"{name}.cpp" for name in names.split()] if names != "*" else ["*.cpp"]
        for pattern in files:
            paths = sorted((source / room).glob(pattern))
            assert paths, f"{room}/{pattern} is not there"
            for path in paths:
                found += mutants.mutants_of(path.relative_to(source).as_posix(), path.read_text())
    return found


def noticed_by(copy, mutant):
    """The test that fails with this change; None when none does, False when it does not compile."""
    path = copy.source / mutant.path
    original = path.read_text()
    path.write_text(mutant.apply(original))
    try:
        for folders in ROOMS[mutant.path.split("/")[0]]:
            if not copy.compiles(folders):
                return False
            if name := copy.failing_test(folders):
                return name
        return None
    finally:
        path.write_text(original)


def describe(number, mutant, answer):
    row = (str(number), f"{mutant.path}:{mutant.line + 1}", f"`{mutant.before.strip()}`", f"`{mutant.after.strip()}`")
    print("| " + " | ".join((*(cell.replace("|", "\\|") for cell in row), answer or "**nobody**")) + " |", flush=True)


def main(root, folder, seed, count, least):
    copy = Copy(root, folder)
    copy.configure()
    nearest = sorted({name for first, _ in ROOMS.values() for name in first})
    if not copy.compiles(nearest) or (name := copy.failing_test(nearest)):
        sys.exit(f"The tests fail without any change: {name if copy.compiles(nearest) else 'they do not compile'}")
    pool = candidates(copy.source)
    random.Random(seed).shuffle(pool)
    print(f"{count} of {len(pool)} possible changes, seed {seed}\n")
    print("| | Where | Before | After | Noticed by |\n|---|---|---|---|---|")
    tried = noticed = 0
    for mutant in pool:
        if tried == count:
            break
        answer = noticed_by(copy, mutant)
        if answer is False:
            continue
        tried += 1
        noticed += answer is not None
        describe(tried, mutant, answer)
    print(f"\n{noticed} of {tried} noticed")
    return 0 if tried == count and noticed >= least else 1


if __name__ == "__main__":
    ROOT, FOLDER = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    sys.exit(main(ROOT, FOLDER, *map(int, sys.argv[3:6])))
