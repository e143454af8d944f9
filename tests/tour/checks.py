"""The tour's book of what held and what did not: one line a check, and totals at the end."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import sys
import time


class Broken(Exception):
    """What a person would have waited for did not come; the tour cannot go on."""


def wait_until(what, condition, seconds=30.0):
    """Returns the first true result of CONDITION, asked again and again; Broken when none came in time."""
    deadline = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise Broken(f"waited {seconds:.0f} s for {what}")
        time.sleep(0.03)


class Checks:
    """Prints each check as it is made and counts."""

    def __init__(self):
        self.passed = 0
        self.failed = 0
        self.started = time.monotonic()

    def held(self, what):
        self.passed += 1
        print(f"PASS   : {what}", flush=True)

    def broke(self, what):
        self.failed += 1
        print(f"FAIL!  : {what}", flush=True)

    def check(self, what, result):
        (self.held if result else self.broke)(what)

    def report(self):
        """Prints the totals in the form of the other test programs; the process's exit code."""
        sys.stderr.flush()
        milliseconds = round((time.monotonic() - self.started) * 1000)
        print(f"Totals: {self.passed} passed, {self.failed} failed, 0 skipped, 0 blacklisted, "
              f"{milliseconds}ms", flush=True)
        return 0 if self.failed == 0 and self.passed > 0 else 1
