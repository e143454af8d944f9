# The two user guides: built alike, and true to the words that are on the screen.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import re

ENGLISH = "docs/user-guide.md"
SWEDISH = "docs/user-guide.sv.md"
LEFT_OUT = "../README.md#what-version-10-leaves-out"

LITERAL = r'u"((?:[^"\\]|\\.)*)"_s'
# Where the client warns: every text that appears there has its row in the guides.
WARNING = re.compile(r"(?:showWarning\(this, text\(|showAuthError\(\s*text\(|return Words\{)"
                     + LITERAL + r",\s*" + LITERAL)
PADLOCK = "\N{LOCK} "


class Texts:
    """The client's texts: pairs of Swedish and English, and those that are the same in both languages."""

    def __init__(self, project):
        files = [path for room in ("app", "ui") for path in project.files(f"{room}/**/*.cpp")]
        sources = [joined_literals(project.read(path)) for path in files]
        self.pairs = {pair for source in sources for pair in re.findall(LITERAL + r",\s*" + LITERAL, source)}
        self.warnings = {pair for source in sources for pair in WARNING.findall(source)}
        self.warnings |= {pair for pair in self.pairs if re.match(PADLOCK + r"\S", pair[0])}
        in_pairs = {text for pair in self.pairs for text in pair}
        self.neutral = {text for source in sources for text in re.findall(LITERAL, source)} - in_pairs
        service = "".join(joined_literals(project.read(path)) for path in project.files("service/*.cpp"))
        self.service = set(re.findall(r'u"((?:[^"\\]|\\.)*)"_s', service))
        self.service |= set(re.findall(r'QStringLiteral\("([^"]*)"\)', service))

    def of(self, language):
        return {pair[language] for pair in self.pairs} | self.neutral


def joined_literals(source):
    """Source with literals that the compiler joins written as one."""
    return re.sub(r'"\s*\n\s*"', "", source)


def guides(project):
    return project.paper(SWEDISH), project.paper(ENGLISH)


def check_structure(project):
    """Both guides have the same headings in the same order by level, the same tables, pictures and lists."""
    shapes = []
    for guide in guides(project):
        shape = {"headings": [level for level, _ in guide.headings()],
                 "tables": [[len(row) for row in table] for table in guide.tables()],
                 "pictures": [target for _, target in guide.pictures()],
                 "links": [target.split("#")[0] for target in guide.links() if "user-guide" not in target],
                 "code": guide.code,
                 "paragraphs": paragraphs_by_section(guide)}
        shapes.append(shape)
    return [f"the guides differ in their {what}: {shapes[0][what]} and {shapes[1][what]}"
            for what in shapes[0] if shapes[0][what] != shapes[1][what]]


def paragraphs_by_section(guide):
    sections = re.split(r"^#+ .*$", guide.prose, flags=re.M)
    return [len([part for part in re.split(r"\n\s*\n", section) if part.strip()]) for section in sections]


def message_tables(guide):
    """The first cells of the tables of texts: what the client says, and what the service says."""
    tables = [[re.findall(r'"([^"]*)"', row[0]) for row in table] for table in guide.tables()]
    return [table for table in tables if any(table)]


def plain(text):
    """A quoted text without the ellipsis that stands for what follows."""
    return text.removesuffix("…").rstrip()


def check_messages(project):
    """Each text of the first table is the client's in the guide's language, row by row the same one."""
    texts = Texts(project)
    swedish, english = (message_tables(guide) for guide in guides(project))
    if len(swedish) != 2 or len(english) != 2:
        return ["each guide needs a table of the client's texts and one of the service's"]
    known = {(swedish.rstrip(), english.rstrip()) for swedish, english in texts.pairs}
    problems = []
    for row_sv, row_en in zip(swedish[0], english[0]):
        partners = {(plain(sv), plain(en)) for sv in row_sv for en in row_en}
        if not row_sv or not row_en or not partners <= known:
            problems.append(f"no text of the client is {row_sv} in Swedish and {row_en} in English")
    problems += [f"the service does not say {text!r}" for table in (swedish[1], english[1])
                 for row in table for text in row if text not in texts.service]
    if swedish[1] != english[1]:
        problems.append("the guides quote different texts of the service")
    return problems


def check_warnings(project):
    """No warning of the client is missing in the tables."""
    texts = Texts(project)
    if len(texts.warnings) < 9:
        return [f"only {len(texts.warnings)} warnings were found in the client's sources"]
    problems = []
    for language, guide in enumerate(guides(project)):
        told = {plain(text) for row in message_tables(guide)[0] for text in row}
        problems += [f"{guide.path} does not explain {pair[language]!r}" for pair in sorted(texts.warnings)
                     if pair[language].rstrip() not in told]
    return problems


def check_screen_words(project):
    """What is bold stands on the screen in the guide's language, perhaps behind a sign and two blanks."""
    texts = Texts(project)
    problems = []
    for language, guide in enumerate(guides(project)):
        known = texts.of(language)
        known |= {text.split("  ", 1)[1] for text in known if "  " in text.strip()}
        known |= {"fetstil", "bold"}  # the words that explain it
        problems += [f"{guide.path}: no {word!r} on the screen" for word in guide.bold() if word not in known]
    return problems


def check_left_out(project):
    """What is left out is listed in the README alone, and both guides lead there."""
    problems = [f"{guide.path} does not link to {LEFT_OUT}" for guide in guides(project)
                if LEFT_OUT not in guide.links()]
    lists = [paper.path for paper in project.papers() for _, heading in paper.headings()
             if re.search(r"leaves? out|left out|limitations|not in version", heading, re.I)]
    return problems + ([] if lists == ["README.md"] else [f"lists of what is left out: {lists}"])
