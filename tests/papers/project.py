# The project as its papers speak of it: its files, and the parts of a Markdown text that can be checked.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re
from pathlib import Path

ROOMS = ("app", "ui", "net", "crypto", "local_files", "service")
GENERATED = ("build", "tour", ".tideloft-local")  # made by commands, so not there in a fresh checkout


class Project:
    """The files below `root`; `changed` maps paths to texts that take the place of what is on disk."""

    def __init__(self, root, changed=None):
        self.root = Path(root)
        self.changed = {self.place(path): text for path, text in (changed or {}).items()}

    def place(self, path):
        """The path itself, or that of the one source in a room that is called so: a source may move."""
        if "/" in path or (self.root / path).exists():
            return path
        found = [place for room in ROOMS for place in self.files(f"{room}/**/{path}")]
        if len(found) != 1:
            raise FileNotFoundError(f"{path} is in {found}")
        return found[0]

    def read(self, path):
        path = self.place(path)
        if path in self.changed:
            return self.changed[path]
        return (self.root / path).read_text(encoding="utf-8")

    def exists(self, path):
        return path in self.changed or (self.root / path).exists()

    def files(self, pattern):
        """Sorted paths below the root; nothing of a build, and nothing hidden."""
        found = (path.relative_to(self.root) for path in self.root.glob(pattern))
        return sorted(str(path) for path in found
                      if path.parts[0] not in GENERATED and not path.parts[0].startswith("."))

    def papers(self):
        return [Paper(path, self.read(path)) for path in self.files("*.md") + self.files("docs/**/*.md")]

    def paper(self, path):
        return Paper(path, self.read(path))


def slug(heading):
    """The anchor that a heading gets: small letters and hyphens, without markup and punctuation."""
    plain = re.sub(r"[`*]|\[([^]]*)\]\([^)]*\)", r"\1", heading)
    return re.sub(r"[^\w\- ]", "", plain.lower()).replace(" ", "-")


class Paper:
    """One Markdown text. A block of code is indented by four blanks more than the text around it."""

    def __init__(self, path, text):
        self.path = path
        self.text = text
        lines = text.split("\n")
        self.code = [line.strip() for line in lines if self._is_code(line)]
        self.prose = "\n".join("" if self._is_code(line) else line for line in lines)

    @staticmethod
    def _is_code(line):
        return re.match(r" {4}", line) is not None

    def headings(self):
        """Pairs of level and text."""
        return [(len(marks), text.strip()) for marks, text in re.findall(r"^(#+) (.*)$", self.prose, re.M)]

    def anchors(self):
        anchors = []
        for _, text in self.headings():
            anchor = slug(text)
            count = sum(known == anchor or known.startswith(f"{anchor}-") for known in anchors)
            anchors.append(f"{anchor}-{count}" if anchor in anchors else anchor)
        return anchors

    def links(self):
        """Targets of links and pictures, whether their words stand on one line or on two."""
        return re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`]*`", "", self.prose))

    def pictures(self):
        """Pairs of alternative text and target."""
        return re.findall(r"!\[([^]]*)\]\(([^)\s]+)\)", self.prose)

    def spans(self):
        """What stands between single backticks; inside a table "\\|" means "|"."""
        return [span.replace("\\|", "|").replace("\n", " ") for span in re.findall(r"`([^`]+)`", self.prose)]

    def commands(self):
        """Everything that could be typed: backticks and blocks of code, without what follows "#"."""
        blocks = re.sub(r"\\\n", " ", "\n".join(self.code)).split("\n")
        return [re.sub(r"\s+#.*", "", text) for text in self.spans() + blocks]

    def tables(self):
        """Each table as a list of rows without its head, each row a list of cells."""
        tables, current = [], []
        for line in self.prose.split("\n") + [""]:
            if line.startswith("|"):
                current.append([cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]])
            elif current:
                tables.append(current[2:])
                current = []
        return tables

    def bold(self):
        return [text.replace("\n", " ") for text in re.findall(r"\*\*([^*]+)\*\*", self.prose)]
