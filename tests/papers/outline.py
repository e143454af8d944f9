# What each paper is there for: sections and pictures that it must not lose.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

SECTIONS = {
    "README.md": ["Two commands", "Installing", "A service of one's own", "What version 1.0 leaves out", "Limits"],
    "docs/architecture.md": ["Rooms", "From typing to reading", "What it stands on"],
    "docs/self-hosting.md": ["Packages", "Certificate", "Firewall", "Members", "Backup", "Monitoring", "Upgrade",
                             "Another machine", "How large it may get"],
    "docs/user-guide.md": ["First steps", "Why a message could not be displayed", "Keys and backup", "The restart key"],
    "docs/user-guide.sv.md": ["Komma igång", "Varför ett meddelande inte kunde visas", "Nycklar och säkerhetskopia",
                              "Omstartstangenten"],
}
PICTURES = {
    "README.md": ["docs/pictures/conversation.png"],
    "docs/architecture.md": ["pictures/layers.svg", "pictures/message.svg"],
}


def check_outline(project):
    """Sections and pictures of each paper that stand in these tables."""
    problems = []
    for path, sections in SECTIONS.items():
        headings = [text for _, text in project.paper(path).headings()]
        problems += [f"{path}: no section {section!r}" for section in sections if section not in headings]
    for path, pictures in PICTURES.items():
        shown = [target for _, target in project.paper(path).pictures()]
        problems += [f"{path}: does not show {picture}" for picture in pictures if picture not in shown]
    return problems
