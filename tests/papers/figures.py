# The figures, settings and file names that the papers tell users, beside those in the sources.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re

SELF_HOSTING = "docs/self-hosting.md"
REQUIREMENTS = "cmake/Requirements.cmake"
METAINFO = "packaging/desktop/im.tideloft.TideLoft.metainfo.xml"

# A paper and its words around a figure; a source and its words around the same one.
FIGURES = [
    ("docs/building.md", r"\| CMake \| ([\d.]+) \|", "CMakeLists.txt", r"cmake_minimum_required\(VERSION ([\d.]+)"),
    ("docs/building.md", r"\| GCC \| ([\d.]+) \|", REQUIREMENTS, r"COMPILER_VERSION VERSION_LESS ([\d.]+)"),
    ("docs/building.md", r"\| Qt: [^|]+ \| ([\d.]+) \|", REQUIREMENTS, r"find_package\(Qt6 ([\d.]+)"),
    ("docs/building.md", r"\| OpenSSL: [^|]+ \| ([\d.]+) \|", REQUIREMENTS, r"find_package\(OpenSSL ([\d.]+)"),
    ("docs/building.md", r"\| Boost: [^|]+ \| ([\d.]+) \|", REQUIREMENTS, r"find_package\(Boost ([\d.]+)"),
    ("README.md", r"at most ([\d,]+) devices", "service/store/device_keys.h", r"maximumDevices = ([\d']+)"),
    ("README.md", r"devices and ([\d,]+) servers", "service/store/groups.h", r"maximumGroups = ([\d']+)"),
    ("README.md", r"oneself ([\d,]+) characters", "service/api/profile_handlers.cpp", r"longestBio = ([\d']+)"),
    ("README.md", r"user name ([\d,]+),", "service/store/account_rules.cpp", r"size\(\) > ([\d']+)"),
    ("README.md", r"password ([\d,]+),", "service/store/account_rules.h", r"longestPassword = ([\d']+)"),
    ("README.md", r"server's name ([\d,]+) ", "service/api/group_handlers.cpp", r"longestName = ([\d']+)"),
    ("README.md", r"description ([\d,]+)\.", "service/api/group_handlers.cpp", r"longestDescription = ([\d']+)"),
    ("README.md", r"most ([\d,]+) characters", "ui/texts/bounded_text.h", r"messageLimits\{([\d']+)"),
    ("README.md", r" ([\d,]+) lines", "ui/texts/bounded_text.h", r"messageLimits\{[\d']+, ([\d']+)"),
    ("README.md", r" ([\d,]+) emoji", "ui/texts/bounded_text.h", r"messageLimits\{[\d']+, [\d']+, ([\d']+)"),
    ("README.md", r"finds at most ([\d,]+) users", "service/api/profile_handlers.cpp", r"mostResults = ([\d']+)"),
    ("README.md", r"every (\w+) seconds", "ui/refresh_timer.h", r"refreshInterval = (\d)'000;"),
    ("README.md", r"newest ([\d,]+) messages", "ui/lists/bounded_rows.h", r"historyLimit = ([\d']+)"),
    ("README.md", r", ([\d,]+) conversations", "ui/lists/bounded_rows.h", r"conversationsLimit = ([\d']+)"),
    ("README.md", r", ([\d,]+) found users", "ui/lists/bounded_rows.h", r"foundUsersLimit = ([\d']+)"),
    ("README.md", r"found users and ([\d,]+) servers", "ui/lists/bounded_rows.h", r"serversLimit = ([\d']+)"),
    ("README.md", r"at least ([\d,]+) x", "ui/main_window.cpp", r"setMinimumSize\((\d+)"),
    ("README.md", r"at least [\d,]+ x ([\d,]+) px", "ui/main_window.cpp", r"setMinimumSize\(\d+, (\d+)"),
    (METAINFO, r'side="longest" compare="ge">(\d+)<', "ui/main_window.cpp", r"setMinimumSize\((\d+)"),
    (METAINFO, r'side="shortest" compare="ge">(\d+)<', "ui/main_window.cpp", r"setMinimumSize\(\d+, (\d+)"),
    ("docs/self-hosting.md", r"have sent ([\d,]+) messages", "service/api/usual_limits.h", r"usualMessages = ([\d']+)"),
    ("docs/self-hosting.md", r"and ([\d,]+) conversations", "service/api/usual_limits.h",
     r"usualConversations = ([\d']+)"),
    ("docs/self-hosting.md", r"may hold ([\d,]+) connections", "service/option_table.h",
     r"connectionsPerAddress = ([\d']+)"),
    ("docs/user-guide.md", r"name has ([\d,]+) to", "service/store/account_rules.cpp", r"size\(\) < (\d+)"),
    ("docs/user-guide.md", r"name has [\d,]+ to ([\d,]+)", "service/store/account_rules.cpp", r"size\(\) > (\d+)"),
    ("docs/user-guide.md", r"password has ([\d,]+) to", "service/store/account_rules.h", r"shortestPassword = (\d+)"),
    ("docs/user-guide.md", r"password has [\d,]+ to ([\d,]+)", "service/store/account_rules.h",
     r"longestPassword = (\d+)"),
    ("docs/user-guide.md", r"or ([\d,]+) days", "service/api/sign_in_sessions.cpp", r"\? (\d+) \* dayInSeconds"),
    ("docs/user-guide.md", r"more than ([\d,]+) bytes", "ui/widgets/picture_file.cpp", r"largestPicture = ([\d']+)"),
    ("docs/user-guide.sv.md", r"större än ([\d ]+) byte", "ui/widgets/picture_file.cpp", r"largestPicture = ([\d']+)"),
]
WORDS = {"three": "3"}
NAMES = [("chat_private_key.b64", "key_store.cpp"), ("chat_public_key.b64", "key_store.cpp"),
         ("device_id.txt", "device_identity.cpp")]


def figure(project, path, pattern):
    found = re.search(pattern, re.sub(r"\s+", " ", project.read(path)))
    return found and WORDS.get(found[1], re.sub(r"[,' ]", "", found[1]))


def check_figures(project):
    """Each figure is the same in the paper and in the source, and is found in both."""
    problems = []
    for paper, told, source, meant in FIGURES:
        pair = figure(project, paper, told), figure(project, source, meant)
        if None in pair or pair[0] != pair[1]:
            problems.append(f"{paper}: {told!r} is {pair[0]}, and {pair[1]} in {source}")
    return problems


def check_file_names(project):
    """The files that hold the keys are called in both guides what the client calls them."""
    return [f"{guide} or {source} does not name {name}" for name, source in NAMES
            for guide in ("docs/user-guide.md", "docs/user-guide.sv.md")
            if f"`{name}`" not in project.read(guide) or f'"{name}"' not in project.read(source)]


def check_installed(project):
    """Neither README nor the page on self-hosting names a setting that the service does not have, or a place that its
    unit does not know."""
    unit = project.read("packaging/systemd/tideloftd.service.in")
    unit = unit.replace("@CMAKE_INSTALL_FULL_SYSCONFDIR@", "/etc")
    options = project.read("service/option_table.cpp")
    problems = []
    for path in ("README.md", SELF_HOSTING):
        text = project.read(path)
        blocks = re.findall(r"cat > /etc/tideloft/tideloftd\.conf <<'END'\n(.*?)END", text, re.S)
        settings = set(re.findall(r"`([a-z-]+) = [^`]+`", text) + re.findall(r"^ *([a-z-]+) = ", "".join(blocks), re.M))
        places = set(re.findall(r"/etc/tideloft/[\w.-]+", text))
        problems += [f"{path}: the service does not know {name}" for name in sorted(settings)
                     if f'("{name}", &Options' not in options]
        problems += [f"{path}: the unit does not know {name}" for name in sorted(places) if name not in unit]
        problems += [] if settings and places else [f"{path}: tells nothing of the installed service"]
    return problems


def check_metrics(project):
    """The page on self-hosting watches metrics that the service has, with at least three alerts."""
    text = project.read(SELF_HOSTING)
    sources = project.read("service/metrics_page.cpp") + project.read("service/metrics/counters.cpp")
    problems = [f"{SELF_HOSTING}: there is no metric {name}" for name in sorted(set(re.findall(r"tideloftd_\w+", text)))
                if f'"{name}"' not in sources]
    return problems + ([] if text.count("- alert: ") >= 3 else [f"{SELF_HOSTING}: has no three alerts"])
