"""The project in a folder of its own, where it is changed, compiled and tested: Copy."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys

# A change can make a test wait for ever, or ask for all memory there is: both are noticed. The slowest test
# takes a quarter of this on two busy processors.
SECONDS_A_TEST = 180
MEMORY = 8 << 30
JOBS = str(os.cpu_count())
# These see the programs of other rooms, which are not built here.
ELSEWHERE = "e2e"

RESULT = re.compile(r"^ *\d+/\d+ Test +#\d+: (\S+) \.*(.*?) +[\d.]+ sec", re.MULTILINE)
NOT_RUN = re.compile(r"\*\*\*(?:Not Run|Skipped)|No tests were found|Could not find executable")
# What the compiler says; the build and the disk have other words.
REFUSED = re.compile(r"^[^\s:]+:\d+:\d+: error: ", re.MULTILINE)


def quiet(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


def stop(what, output):
    """Nothing can be said about the tests: neither that they noticed nor that they did not."""
    sys.exit(f"{what}:\n{output[-4000:]}")


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


class Copy:
    """SOURCE is what ROOT has, without what is built there; BUILD is made of it."""

    def __init__(self, root, folder):
        self.source = folder / "source"
        self.build = self.source / "build/dev"
        command = ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
        listed = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
        names = {name for name in listed.split("\0") if name and (root / name).is_file()}
        self.remove_all_but(names)
        for name in sorted(names):
            self.bring(root / name, self.source / name)

    def remove_all_but(self, names):
        """What has left the project since leaves the copy too."""
        for place, folders, files in os.walk(self.source):
            if place == str(self.source) and "build" in folders:
                folders.remove("build")
            for name in files:
                path = os.path.join(place, name)
                if os.path.relpath(path, self.source) not in names:
                    os.remove(path)

    @staticmethod
    def bring(origin, target):
        """Leaves alone what is the same already: the build goes by times."""
        if target.exists() and target.read_bytes() == origin.read_bytes():
            return
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(origin, target)

    def configure(self):
        """Each source is compiled by itself: a mutant then costs one, not the seven others beside it."""
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        result = quiet(
            ["cmake", "--preset", "dev", "--log-level=WARNING", f"-DTIDELOFT_TEST_TIMEOUT={SECONDS_A_TEST}",
             "-DCMAKE_UNITY_BUILD=OFF", *launcher],
            cwd=self.source,
        )
        if result.returncode != 0:
            stop("The copy cannot be configured", result.stdout)

    def make(self, targets):
        """Builds what no change can keep from being built."""
        result = self.ninja(targets)
        if result.returncode != 0:
            stop(f"{' '.join(targets)} cannot be built", result.stdout)

    def ninja(self, targets):
        return quiet(["cmake", "--build", self.build, "-j", JOBS, "--target", *targets])

    def compiles(self, path):
        """Whether the compiler takes the file; whatever else can go wrong ends everything."""
        result = self.ninja(self.objects_of(path))
        if result.returncode != 0 and not REFUSED.search(result.stdout):
            stop(f"{path} cannot be compiled, and the compiler does not say why", result.stdout)
        return result.returncode == 0

    def objects_of(self, path):
        file = str(self.source / path)
        commands = json.loads((self.build / "compile_commands.json").read_text())
        words = [shlex.split(entry["command"]) for entry in commands if entry["file"] == file]
        objects = [command[command.index("-o") + 1] for command in words]
        # Only the library's own: a test that takes the file in too is built with the other tests.
        own = [name for name in objects if name.startswith(f"{path.split('/')[0]}/")]
        return own or stop(f"Nothing is made of {path}", "\n".join(objects))

    def tests_in(self, folder):
        """The names of a folder's tests that see no other room's program."""
        result = subprocess.run(
            ["ctest", "--test-dir", self.build / folder, "-LE", ELSEWHERE, "--show-only=json-v1"],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
        )
        names = [test["name"] for test in json.loads(result.stdout)["tests"]]
        return names or stop(f"{folder} has no tests", result.stdout)

    def failures(self, folder, names, *options):
        """[(name, how)] of those tests of a folder that fail."""
        chosen = "|".join(map(re.escape, names))
        result = quiet(
            ["ctest", "--test-dir", self.build / folder, "-j", JOBS, "--no-tests=error", "-R", f"^({chosen})$",
             *options],
            stdin=subprocess.DEVNULL, preexec_fn=limit_memory,
        )
        ended = RESULT.findall(result.stdout)
        failed = [(name, how) for name, how in ended if how.strip() != "Passed"]
        if not ended or NOT_RUN.search(result.stdout) or (result.returncode != 0) != bool(failed):
            stop(f"The tests in {folder} cannot be run", result.stdout)
        return failed
