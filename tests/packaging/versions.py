"""Everything that names the version names the same one, and every list of releases the same releases.

versions.py --version V --source DIR --build DIR --client PROGRAM --service PROGRAM --control PROGRAM
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import argparse
import datetime
import email.utils
import gzip
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

APP_ID = "im.tideloft.TideLoft"


def parse_arguments():
    parser = argparse.ArgumentParser(description="Compares versions.")
    parser.add_argument("--version", required=True)
    for name in ("source", "build", "client", "service", "control"):
        parser.add_argument(f"--{name}", required=True, type=pathlib.Path)
    return parser.parse_args()


def printed(program):
    """What PROGRAM answers to --version."""
    return subprocess.run([program, "--version"], check=True, capture_output=True, text=True).stdout


def shown(program):
    """What PROGRAM has in itself to show behind the word "Version"."""
    found = re.findall("Version ".encode("utf-16-le") + rb"((?:[\d.]\0)+)", program.read_bytes())
    return found[0].decode("utf-16-le") if len(found) == 1 else f"{len(found)} versions"


def first_match(pattern, path):
    found = re.search(pattern, path.read_text(encoding="utf-8"), re.MULTILINE)
    return found.group(1) if found else f"nothing like {pattern}"


def written_versions(arguments):
    """Where a version is named, and what is named there."""
    source, build = arguments.source, arguments.build
    versions = {
        "tideloft --version": printed(arguments.client).removeprefix("TideLoft ").split("\n")[0],
        "tideloftd --version": printed(arguments.service).removeprefix("tideloftd ").removesuffix("\n"),
        "tideloftctl --version": printed(arguments.control).removeprefix("tideloftctl ").removesuffix("\n"),
        "the settings page About": shown(arguments.client),
        "the packages": first_match(r'^set\(CPACK_PACKAGE_VERSION \[*"?([^]")]*)', build / "CPackConfig.cmake"),
    }
    for page in sorted((source / "packaging/man").iterdir()):
        versions[page.name] = first_match(r'^\.Os "TideLoft (.*)"$', build / "packaging/man" / page.name)
    return versions


def changelog_releases(source):
    """(version, date) of each release, the newest first; what is not released yet is left out."""
    text = (source / "CHANGELOG.md").read_text(encoding="utf-8")
    return [pair for pair in re.findall(r"^## \[(.+?)\](?: - (\S+))?$", text, re.MULTILINE)
            if pair[0] != "Unreleased"]


def metainfo_releases(source):
    tree = xml.etree.ElementTree.parse(source / f"packaging/desktop/{APP_ID}.metainfo.xml")
    return [(release.get("version"), release.get("date")) for release in tree.findall("releases/release")]


def package_releases(build, package):
    """The same from the changelog inside a package."""
    text = gzip.decompress((build / "packaging" / package / "changelog.gz").read_bytes()).decode("utf-8")
    versions = re.findall(rf"^{package} \((.+?)\)", text, re.MULTILINE)
    dates = re.findall(r"^ -- .+?>  (.+)$", text, re.MULTILINE)
    return [(version, email.utils.parsedate_to_datetime(date).date().isoformat())
            for version, date in zip(versions, dates, strict=True)]


def man_page_dates(source):
    for page in sorted((source / "packaging/man").iterdir()):
        written = first_match(r"^\.Dd (.*)$", page)
        yield page.name, datetime.datetime.strptime(written, "%B %d, %Y").date().isoformat()


def problems(arguments):
    for place, version in written_versions(arguments).items():
        if version != arguments.version:
            yield f"{place}: {version!r} and not {arguments.version!r}"
    releases = changelog_releases(arguments.source)
    if not releases or releases[0][0] != arguments.version:
        yield f"CHANGELOG.md: its newest release is {releases[:1]} and not {arguments.version!r}"
        return
    lists = {"the metainfo": metainfo_releases(arguments.source)}
    for package in ("tideloft", "tideloftd"):
        lists[f"the changelog in {package}"] = package_releases(arguments.build, package)
    for place, known in lists.items():
        if known != releases:
            yield f"{place}: the releases are {known}, and in CHANGELOG.md {releases}"
    for page, date in man_page_dates(arguments.source):
        if date < releases[0][1]:
            yield f"{page}: dated {date}, before the release"


def main():
    found = list(problems(parse_arguments()))
    for problem in found:
        print(problem, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
