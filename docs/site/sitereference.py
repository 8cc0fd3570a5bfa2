"""The reference: a page for every class, one for the commands, an index of all words, and the options of programs.

Names, arguments, access and who inherits what are the program's own (zorbet-mps words --json). What a word means is
told by its row in the table of the page that explains it, between marks "<!-- words: RText methods -->"; of words
that no table has, the program itself says something.
"""
import json
import posixpath
import re
import subprocess
from dataclasses import dataclass

from sitepages import layout_of, rebased

FOLDER = "reference"
TITLE = "Reference"
MARK = re.compile(r"<!-- words: (.+) (\w+) -->")
COMMAND = re.compile(r"^### (`.+`)\n\n((?:.+\n)+)", re.M)
SLUG = re.compile(r"[^\w\- ]")
ALL_OBJECTS = "all objects"  # what the class without a name is called


def words_of(app):
    """All that zorbet-mps knows; asked once."""
    if not hasattr(app, "site_words_told"):
        told = subprocess.run([app.config.site_words, "words", "--json"], check=True, capture_output=True)
        app.site_words_told = json.loads(told.stdout)
    return app.site_words_told


@dataclass
class Told:
    """What a page says of a word."""

    page: str  # with the place in it
    value: str  # what a property's value is; empty for others
    meaning: str


def slug(heading):
    return SLUG.sub("", heading.lower()).replace(" ", "-")


def cells(line):
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]


class Explained:
    """What the tables of the pages say of words, by class and word."""

    def __init__(self, texts):
        self.rows = {}
        self.pages = {}  # of classes
        self.commands = {}
        for name, text in texts.items():
            self.read(name, text)
        for name in texts:  # classes without words of their own
            self.pages.setdefault(posixpath.basename(name).removesuffix(".md"), name)

    def read(self, name, text):
        heading, owners, kind, fenced = "", [], "", False
        self.note_commands(name, text)
        for line in text.split("\n"):
            fenced ^= line.startswith("```")
            mark = MARK.fullmatch(line)
            if fenced:
                continue
            if line.startswith("#"):
                heading = line.lstrip("#").strip()
            elif mark:
                owners, kind = mark[1].split(), mark[2]
                for owner in owners:
                    self.pages.setdefault(owner, name)
            elif line == "<!-- end -->":
                owners = []
            elif owners and line.startswith("| `"):
                self.note_row(owners, kind, f"{name}#{slug(heading)}", cells(line))

    def note_row(self, owners, kind, page, row):
        value = row[1] if kind == "properties" else ""
        for owner in owners:
            self.rows[owner, row[0].strip("`")] = Told(page, value, row[-1])

    def note_commands(self, name, text):
        """Headings "### `Scene PICTURE [PALETTE]`" of the page of commands, with the first sentence below."""
        if name.endswith("/commands.md"):
            for heading, below in COMMAND.findall(text):
                sentence = re.split(r"(?<=[.:]) ", " ".join(below.split()))[0]
                word = re.split(r"[ `]", heading)[1]
                self.commands[word] = Told(f"{name}#{slug(heading)}", "", sentence.rstrip(".:"))


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(cell or " " for cell in row) + " |" for row in rows]) + "\n"


def escaped(text):
    """Text of the program, which knows no Markdown."""
    return re.sub(r"([\\`*_\[\]<>|])", r"\\\1", text)


class Reference:
    def __init__(self, known, explained):
        self.classes = {one["name"]: one for one in known["classes"]}
        self.commands = known["commands"]
        self.explained = explained

    def file(self, name):
        return f"{FOLDER}/{name or 'objects'}.md"

    def lineage(self, name):
        """The class and those before it, the nearest first."""
        while True:
            yield self.classes[name]
            if "base" not in self.classes[name]:
                return
            name = self.classes[name]["base"]

    def words(self, name):
        """All words that objects of the class have, with the class that each comes from: the nearest counts."""
        found = {}
        for one in self.lineage(name):
            for word in one["words"]:
                found.setdefault((word["kind"], word["name"]), (word, one["name"]))
        return sorted(found.values(), key=lambda each: each[0]["name"].lower())

    def link(self, name):
        return f"[{name or ALL_OBJECTS}]({self.file(name).split('/')[1]})"

    def name_cell(self, word, owner, page):
        told = self.told(word, owner)
        return rebased(f"[`{word['name']}`]({told.page})", "page", page) if told else f"`{word['name']}`"

    def told(self, word, owner):
        name = owner + (".passing" if word.get("passing") else "")
        return self.explained.rows.get((name, word["name"]))

    def meaning(self, word, owner, page):
        told = self.told(word, owner)
        if not told or not told.meaning:
            return "" if word["kind"] == "method" else escaped(word["help"])
        return self.linked(told, page)

    def linked(self, told, page):
        """What a page says, with its links as they must read here."""
        explained = told.page.partition("#")[0]
        text = told.meaning.replace("](#", f"]({posixpath.basename(explained)}#")
        return rebased(text, explained, page)

    def row(self, word, owner, page):
        row = [self.name_cell(word, owner, page)]
        told = self.told(word, owner)
        if word["kind"] == "property":
            row += [told.value if told else "", word["access"]]
        elif word["kind"] == "method":
            row += [" or ".join(escaped(form.strip().upper()) for form in word["help"].split("|") if form.strip())]
        return row + [self.meaning(word, owner, page), self.link(owner)]

    HEADS = {
        "property": ("Properties", ["Name", "Value", "Access", "Meaning", "From"]),
        "method": ("Methods", ["Name", "Arguments", "Effect", "From"]),
        "event": ("Events", ["Name", "When", "From"]),
    }

    def class_page(self, name):
        page, one = self.file(name), self.classes[name]
        title = name or "What all objects have"
        text = f"# {title}\n\n"
        explained = self.explained.pages.get(name)
        if explained:
            text += rebased(f"[Its page]({explained}) explains it, with examples.", "page", page) + " "
        bases = [self.link(each["name"]) for each in self.lineage(name)][1:]
        if bases:
            text += "It has all words of " + ", ".join(bases) + ". "
        heirs = sorted(each["name"] for each in self.classes.values() if each.get("base") == name)
        if heirs:
            text += "Of its kind are " + ", ".join(map(self.link, heirs)) + "."
        text += "\n\n"
        if "arguments" in one:
            forms = [form.strip().upper() for form in one["arguments"].split("|")]
            text += "## Making one\n\n```text\n" + "".join(f"NAME={name} {form}".rstrip() + "\n" for form in forms)
            text += "```\n\n"
        words = self.words(name)
        for kind, (heading, head) in self.HEADS.items():
            rows = [self.row(word, owner, page) for word, owner in words if word["kind"] == kind]
            if rows:
                text += f"## {heading}\n\n{table(head, rows)}\n"
        return text

    def commands_page(self):
        page = f"{FOLDER}/commands.md"
        rows = []
        for command in sorted(self.commands, key=lambda each: each["name"].lower()):
            told = self.explained.commands.get(command["name"])
            name = rebased(f"[`{command['name']}`]({told.page})", "page", page) if told else f"`{command['name']}`"
            effect = self.linked(told, page) if told else ""
            rows.append([name, escaped(command["arguments"].upper()), effect])
        return "# Commands in the order of the alphabet\n\n" + table(["Name", "Arguments", "Effect"], rows)

    def words_page(self):
        """Every property, method and event once, with the classes that bring it in."""
        found = {}
        for one in self.classes.values():
            for word in one["words"]:
                found.setdefault((word["name"], word["kind"]), []).append(self.link(one["name"]))
        rows = [
            [f"`{name}`", kind, ", ".join(sorted(owners))]
            for (name, kind), owners in sorted(found.items(), key=lambda each: each[0][0].lower())
        ]
        return "# All words\n\nWhat objects understand, and which classes have it first.\n\n" + table(
            ["Name", "What it is", "Class"], rows
        )

    def index_page(self):
        rows = []
        for name in sorted(filter(None, self.classes), key=str.lower):
            one = self.classes[name]
            explained = self.explained.pages.get(name)
            page = rebased(f"[its page]({explained})", "page", f"{FOLDER}/index.md") if explained else ""
            rows.append([self.link(name), self.link(one["base"]), page])
        return (
            f"# {TITLE}\n\nAll that scripts can use, printed from the tables of the program itself: the classes here, "
            "[the commands](commands.md), [all words](words.md) in the order of the alphabet, and "
            "[what all objects have](objects.md); and the options of the programs [zorbet](zorbet.md), "
            "[zorbet-mps](zorbet-mps.md) and [zorbet-rsc](zorbet-rsc.md).\n\n" + table(["Class", "Made of", "Explained on"], rows)
        )

    def pages(self):
        yield "commands", self.commands_page()
        yield "words", self.words_page()
        for name in sorted(self.classes, key=str.lower):
            yield self.file(name).split("/")[1].removesuffix(".md"), self.class_page(name)


def program_pages(app):
    """The options of the programs, told by themselves."""
    for program in (app.config.site_player, app.config.site_words, app.config.site_packer):
        told = subprocess.run([program, "--describe-as", "markdown"], check=True, capture_output=True)
        yield posixpath.basename(program), told.stdout.decode("utf-8")


def add(app):
    layout = layout_of(app)
    reference = Reference(words_of(app), Explained(layout.texts))
    pages = [*reference.pages(), *program_pages(app)]
    for name, text in pages:
        layout.add(f"{FOLDER}/{name}.md", text)
    inside = "\n".join(name for name, _ in pages)
    index = f"{FOLDER}/index.md"
    layout.add(index, reference.index_page() + f"\n```{{toctree}}\n:hidden:\n\n{inside}\n```\n")
    app.site_made.append((TITLE, [index]))


def setup(app):
    app.connect("builder-inited", add, priority=700)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
