"""The tour's pictures in the order in which they were taken, and the page that shows them as a film."""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import html
import html.parser

import display

INDEX = "index.html"
LOADERS = ("script", "link", "iframe", "object", "embed", "base")
PICTURES = "[0-9][0-9]-*.png"

# Everything is in the page itself: it is opened from the disk, and asks nobody for anything.
HEAD = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta name="color-scheme" content="light dark">
<title>TideLoft: the tour</title>
<style>
:root { color-scheme: light dark; --page: #ffffff; --text: #1a1a2e; --quiet: #50607a; --line: #d0d8e8; }
@media (prefers-color-scheme: dark) {
  :root { --page: #0f1923; --text: #e8f0f8; --quiet: #9ab0c8; --line: #2a4060; }
}
body { margin: 2rem auto; max-width: 70rem; padding: 0 1rem; background: var(--page); color: var(--text);
       font: 1rem/1.5 system-ui, sans-serif; }
ol { list-style: none; margin: 0; padding: 0; }
figure { margin: 0 0 3rem; }
img { display: block; max-width: 100%; height: auto; border: 1px solid var(--line); border-radius: 6px; }
figcaption { margin-top: 0.5rem; }
.whose { color: var(--quiet); }
</style>
</head>
<body>
<h1>TideLoft: the tour</h1>
"""
INTRODUCTION = """<p>Alice reads English, Bob reads Swedish: two clients and the service, driven by mouse \
and keyboard. {count} pictures.</p>
<ol>
"""
FIGURE = """<li><figure id="{name}">
<img src="{file}" width="{width}" height="{height}" alt="{whose}: {what}">
<figcaption>{number}. {what} <span class="whose">({whose})</span></figcaption>
</figure></li>
"""
FOOT = """</ol>
</body>
</html>
"""


class Film:
    """Takes the pictures and keeps for each what is seen on it, and whose window that is."""

    def __init__(self, directory):
        self.directory = directory
        self.scenes = []
        directory.mkdir(parents=True, exist_ok=True)
        for old in (*directory.glob(PICTURES), directory / INDEX):
            old.unlink(missing_ok=True)

    def take(self, name, what, clients=(), number=None):
        """A picture of the window of the one client, or of the whole screen."""
        number = number or len(self.scenes) + 1
        area = clients[0].area() if clients else (0, 0, display.WIDTH, display.HEIGHT)
        scene = {"number": number, "name": name, "file": f"{number:02}-{name}.png",
                 "what": as_sentence(what), "width": area[2], "height": area[3],
                 "whose": f"{clients[0].name.capitalize()}'s window" if clients else "the whole screen"}
        display.save_picture(self.directory / scene["file"], area)
        self.scenes.append(scene)

    def write(self):
        figures = [FIGURE.format_map({key: html.escape(str(value)) for key, value in scene.items()})
                   for scene in self.scenes]
        page = HEAD + INTRODUCTION.format(count=len(figures)) + "".join(figures) + FOOT
        (self.directory / INDEX).write_text(page, encoding="utf-8")

    def faults(self):
        """What is wrong with the page as it lies there: nothing, if each picture stands in its place."""
        page = Page((self.directory / INDEX).read_text(encoding="utf-8"))
        there = sorted(path.name for path in self.directory.glob(PICTURES))
        return page.faults(there)


def as_sentence(text):
    """TEXT with names and its beginning as they are written, and a full stop."""
    for name in ("alice", "bob"):
        text = text.replace(name, name.capitalize())
    return f"{text[0].upper()}{text[1:]}{'' if text[-1] in '.!?' else '.'}"


class Page(html.parser.HTMLParser):
    """The film as a browser finds it: its pictures, their captions, and whatever else it would load."""

    def __init__(self, text):
        super().__init__()
        self.pictures, self.captions, self.loads = [], [], []
        self.in_caption = False
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag == "img":
            self.pictures.append((values.get("src"), values.get("alt")))
        elif tag in LOADERS or {"src", "href"} & values.keys():
            self.loads.append(tag)
        if tag == "figcaption":
            self.in_caption = True
            self.captions.append("")

    def handle_endtag(self, tag):
        self.in_caption = self.in_caption and tag != "figcaption"

    def handle_data(self, data):
        if self.in_caption:
            self.captions[-1] += data

    def faults(self, there):
        """THERE are the names of the picture files, sorted."""
        found = [f"it would load a {tag}" for tag in self.loads]
        if not there or [source for source, _ in self.pictures] != there:
            found.append(f"it shows {[source for source, _ in self.pictures]}, and there is {there}")
        if len(self.captions) != len(self.pictures):
            found.append(f"{len(self.captions)} captions for {len(self.pictures)} pictures")
        for (source, alternative), caption in zip(self.pictures, self.captions):
            words = " ".join(caption.split())
            whose, _, what = (alternative or "").partition(": ")
            if not what or not words.endswith(f"{what} ({whose})"):
                found.append(f"{source} has the words {alternative!r} and {words!r}")
        return found
