"""Runs the GUI tests under valgrind: valgrind_tests.py SUPPRESSIONS PATTERN DIR...

An error counts when this project's own code stands in its stack. The toolkit, the fonts and the graphics
driver make noise of their own, which a suppression file cannot name completely. Tests that look for what was freed
are left out: valgrind keeps it.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

OURS = re.compile(r"\btideloft::(ui|net|crypto|local_files|app)::")


def is_ours(error):
    return any(OURS.search(frame.findtext("fn", "")) for frame in error.iter("frame"))


def describe(error):
    what = error.findtext("what") or error.findtext("xwhat/text")
    frames = [f"    {frame.findtext('fn', '?')} ({frame.findtext('file', frame.findtext('obj', '?'))}"
              f":{frame.findtext('line', '')})" for frame in error.find("stack").iter("frame")]
    return "\n".join([f"  {error.findtext('kind')}: {what}", *frames])


def execute(command, suppressions, directory):
    """Runs one class of tests. Its process, its exit code, and what it printed."""
    # A program that starts another is two processes for a moment, and both would write into one file.
    report = pathlib.Path(directory, "%p.xml")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", TZ="UTC", LC_ALL="C.UTF-8",
                       TIDELOFT_TEST_PATIENCE="20", TIDELOFT_TEST_ROUNDS="1",
                       QTEST_FUNCTION_TIMEOUT=str(2 * 60 * 60 * 1000))
    with subprocess.Popen(
            ["valgrind", "--xml=yes", f"--xml-file={report}", "--leak-check=full",
             "--show-leak-kinds=definite", "--num-callers=40",
             f"--suppressions={suppressions}", *command, "-maxwarnings", "0"],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            text=True, errors="replace") as process:
        output, messages = process.communicate()
    return process.pid, process.returncode, output, messages


def read_report(report):
    """The errors of one process, and whether the report has an end: a process that has become another
    program leaves it without one."""
    parser = ElementTree.XMLPullParser(["end"])
    parser.feed(report.read_bytes())
    elements = [element for _, element in parser.read_events()]
    errors = [element for element in elements if element.tag == "error"]
    return errors, bool(elements) and elements[-1].tag == "valgrindoutput"


def run(command, suppressions):
    """What went wrong in one class of tests, as texts."""
    with tempfile.TemporaryDirectory() as directory:
        process, code, output, messages = execute(command, suppressions, directory)
        try:
            reports = {report.stem: read_report(report) for report in pathlib.Path(directory).iterdir()}
        except (OSError, ElementTree.ParseError) as reason:
            return [f"  no report: {reason}\n{messages[-2000:]}"]
    faults = [describe(error) for errors, _ in reports.values() for error in errors if is_ours(error)]
    _, complete = reports.get(str(process), ([], False))
    if not complete:
        faults.append(f"  no whole report\n{messages[-2000:]}")
    if code != 0:
        faults.append(f"  exit code {code}\n{output[-4000:]}")
    return faults


def labels(test):
    return {label for each in test.get("properties", []) if each["name"] == "LABELS" for label in each["value"]}


def tests_in(directory, pattern):
    """(name, command) of the classes of tests. Their runs in other surroundings are left out, and what looks for freed
    memory."""
    listed = subprocess.run(["ctest", "--test-dir", directory, "--show-only=json-v1"],
                            check=True, stdout=subprocess.PIPE, text=True).stdout
    tests = [(test["name"], test["command"]) for test in json.loads(listed)["tests"]
             if "freed-memory" not in labels(test)]
    return [(name, command) for name, command in sorted(tests) if command[1:] == [name] and re.search(pattern, name)]


def main():
    suppressions, pattern, *directories = sys.argv[1:]
    tests = [test for directory in directories for test in tests_in(directory, pattern)]
    failed = 0 if tests else 1  # nothing ran: nothing was shown
    for name, command in tests:
        faults = run(command, suppressions)
        failed += bool(faults)
        print("\n".join([f"{'FAILED' if faults else 'passed'}: {name}", *faults]), flush=True)
    print(f"{max(len(tests) - failed, 0)} passed, {failed} failed")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
