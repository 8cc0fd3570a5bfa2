"""Lays the pages of the source folder out for Sphinx.

The site has the pages that docs/README.md lists, that page itself as its first one, and what these link to. In the
side bar a section of docs/README.md is a section, and what it lists stands below it, in its order: that page is the
only place that has the structure. Pages are copied, since those that are made (sitereference) must lie among them,
and nothing is written into the source folder.
"""
import json
import posixpath
import re
from pathlib import Path

FIRST = "docs/README.md"
MOVED = {FIRST: "index.md"}
ALSO = ["README.md"]  # pages that are not listed; linked ones come along by themselves
LINK = re.compile(r"(\]\()([^)\s]+)(\))")
OUTSIDE = re.compile(r"[a-z]+:|#|//")


def beyond_fences(text, change):
    """The text with `change` done to each line that is in no fenced block."""
    lines, fenced = [], False
    for line in text.split("\n"):
        if line.startswith("```"):
            fenced = not fenced
        elif not fenced:
            line = change(line)
        lines.append(line)
    return "\n".join(lines)


def moved(name):
    """Where a file of the source folder lies among the pages."""
    return MOVED.get(name, name)


def resolved(name, target):
    """The file of the source folder that a link of the page `name` means, and the rest of the link from "#" on."""
    path, mark, place = target.partition("#")
    return posixpath.normpath(posixpath.join(posixpath.dirname(name), path)), mark + place


def rebased(line, name, page):
    """A line of `name` with its links as they must read in `page`."""

    def link(match):
        if OUTSIDE.match(match[2]):
            return match[0]
        file, place = resolved(name, match[2])
        return match[1] + posixpath.relpath(moved(file), posixpath.dirname(page) or ".") + place + match[3]

    return LINK.sub(link, line)


def links(text, name):
    """The files of the source folder that a page links to."""
    found = []

    def note(line):
        found.extend(resolved(name, match[2])[0] for match in LINK.finditer(line) if not OUTSIDE.match(match[2]))
        return line

    beyond_fences(text, note)
    return found


def write(path, text):
    """Only what changes is written, so that only that is read again."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.is_file() or path.read_text("utf-8") != text:
        path.write_text(text, "utf-8")


def sections(text):
    """The sections of the first page: their titles, and the pages that each lists, a page once in all."""
    listed, seen = [], set()
    for part in re.split(r"^## ", text, flags=re.M)[1:]:
        pages = [page for page in links(part, FIRST) if page.endswith(".md") and page not in seen]
        seen.update(pages)
        listed.append((part.partition("\n")[0], list(dict.fromkeys(pages))))
    return listed


def toctree(title, pages):
    names = "\n".join("/" + moved(page).removesuffix(".md") for page in pages)
    return f"\n```{{toctree}}\n:hidden:\n:caption: {json.dumps(title)}\n\n{names}\n```\n"


class Layout:
    """The pages that go into the site, out of `sources` into `target`."""

    def __init__(self, sources, target):
        self.sources, self.target = sources, target
        self.texts = {}  # of Markdown files, by their names in the source folder
        self.laid = set()
        self.follow([FIRST, *ALSO])

    def follow(self, names):
        """Takes these files and all that they lead to."""
        while names:
            name = names.pop()
            path = self.sources / name
            if name in self.texts or name in self.laid or name.startswith("..") or not path.is_file():
                continue  # Sphinx tells of links to nothing
            if name.endswith(".md"):
                self.texts[name] = path.read_text("utf-8")
                names.extend(links(self.texts[name], name))
            else:
                self.copy(name)

    def copy(self, name):
        target = self.target / name
        data = (self.sources / name).read_bytes()
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.is_file() or target.read_bytes() != data:
            target.write_bytes(data)
        self.laid.add(name)

    def add(self, name, text):
        """A page that was made for the site."""
        self.laid.add(name)
        write(self.target / name, text)

    def lay(self, made):
        """Writes all pages; `made` are sections of made pages, behind the others."""
        listed = sections(self.texts[FIRST]) + made
        placed = {page for _, pages in listed for page in pages}
        for name, text in self.texts.items():
            page = moved(name)
            text = beyond_fences(text, lambda line: rebased(line, name, page))
            if name == FIRST:
                text += "".join(f"\n## {title}\n\n- [{title}]({pages[0]})\n" for title, pages in made)
                text += "".join(toctree(*section) for section in listed)
            elif name not in placed:
                text = "---\norphan: true\n---\n" + text
            self.laid.add(page)
            write(self.target / page, text)
        for path in [path for path in self.target.rglob("*") if path.is_file()]:
            if path.relative_to(self.target).as_posix() not in self.laid:
                path.unlink()  # of an earlier build


def layout_of(app):
    """The layout that the other extensions add to, until it is laid."""
    if not hasattr(app, "site_layout"):
        app.site_layout = Layout(Path(app.config.site_sources), Path(app.srcdir))
        app.site_made = []
    return app.site_layout


def lay(app):
    layout_of(app).lay(app.site_made)


def outdated(app, env, added, changed, removed):
    """All pages have the side bar, so all are written anew when it may be another one."""
    return env.found_docs if added or removed or app.config.root_doc in changed else []


def setup(app):
    for name in ("sources", "player", "words", "packer", "game"):
        app.add_config_value("site_" + name, "", "env", [str])
    app.connect("env-get-outdated", outdated)
    app.connect("builder-inited", lay, priority=900)  # when the others have added their pages
    return {"parallel_read_safe": True, "parallel_write_safe": True}
