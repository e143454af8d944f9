"""Runs the GUI tests under valgrind: valgrind_tests.py DIR SUPPRESSIONS [PATTERN].

An error counts when this project's own code stands in its stack. The toolkit, the fonts and the graphics
driver make noise of their own, which a suppression file cannot name completely.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

OURS = re.compile(r"\btideloft::(ui|net|crypto|app)::")


def is_ours(error):
    return any(OURS.search(frame.findtext("fn", "")) for frame in error.iter("frame"))


def describe(error):
    what = error.findtext("what") or error.findtext("xwhat/text")
    frames = [f"    {frame.findtext('fn', '?')} ({frame.findtext('file', frame.findtext('obj', '?'))}"
              f":{frame.findtext('line', '')})" for frame in error.find("stack").iter("frame")]
    return "\n".join([f"  {error.findtext('kind')}: {what}", *frames])


def run(program, suppressions):
    """What went wrong in one test program, as texts."""
    with tempfile.TemporaryDirectory() as directory:
        report = pathlib.Path(directory, "errors.xml")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", TZ="UTC", LC_ALL="C.UTF-8")
        finished = subprocess.run(
            ["valgrind", "--xml=yes", f"--xml-file={report}", "--leak-check=full",
             "--show-leak-kinds=definite", "--num-callers=40",
             f"--suppressions={suppressions}", str(program), "-maxwarnings", "0"],
            env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
            errors="replace", check=False)
        try:
            errors = ElementTree.parse(report).getroot().findall("error")
        except (OSError, ElementTree.ParseError) as reason:
            return [f"  no report: {reason}\n{finished.stderr[-2000:]}"]
        faults = [describe(error) for error in errors if is_ours(error)]
        if finished.returncode != 0:
            faults.append(f"  exit code {finished.returncode}\n{finished.stdout[-4000:]}")
        return faults


def main():
    directory, suppressions, pattern = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    programs = [path for path in sorted(directory.glob("tst_*"))
                if path.is_file() and os.access(path, os.X_OK) and re.search(pattern, path.name)]
    failed = 0 if programs else 1  # nothing ran: nothing was shown
    for program in programs:
        faults = run(program, suppressions)
        failed += bool(faults)
        print("\n".join([f"{'FAILED' if faults else 'passed'}: {program.name}", *faults]), flush=True)
    print(f"{max(len(programs) - failed, 0)} passed, {failed} failed")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
