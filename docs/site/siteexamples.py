"""Pictures of examples.

A fenced block "mps" begins an example; the blocks behind it say what happens and what comes of it (tests play all of
them). An example whose block "input" takes screenshots is played by the program while the site is built, and the
pictures stand behind the example's last block.
"""
import concurrent.futures
import hashlib
import os
import re
import shutil
import subprocess
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

from docutils import nodes
from docutils.parsers.rst import Directive
from sitepages import layout_of
from sphinx.errors import ExtensionError

PICTURES = "examples"  # their folder among the pages
PARTS = {"output", "again", "boxes", "report", "input", "check", "notes", "log", "file"}
SHOT = re.compile(r"^(\d+)\s+screenshot\s+(\S+)$", re.M)
LONGEST_S = 60


@dataclass
class Example:
    line: int  # of its "mps"
    last: int = 0  # line that closes its last block; lines count from 0
    files: dict = field(default_factory=dict)  # by their names in the game's folder
    input: str = ""

    def shots(self):
        """The time in milliseconds and the file of each screenshot."""
        return [(int(time), name) for time, name in SHOT.findall(self.input)]


def blocks(lines):
    """The fenced blocks of a page: first and last line, the words behind the fence, the text."""
    first = None
    for number, line in enumerate(lines):
        if not line.startswith("```"):
            continue
        if first is None:
            first = number
        else:
            yield first, number, lines[first][3:].split(), "".join(text + "\n" for text in lines[first + 1 : number])
            first = None


def examples(text):
    found = []
    for first, last, words, inside in blocks(text.split("\n")):
        kind, name = (words + ["", ""])[:2]
        if kind == "mps" and not name:
            found.append(Example(first))
            name = "Startup.mps"
        elif not found or kind not in PARTS | {"mps"}:
            continue
        example = found[-1]
        example.last = last
        if kind == "mps":
            example.files[name] = inside
        elif kind == "input":
            example.input = inside
    return found


def link_or_copy(source, target):
    """Puts a file into a game: no symbolic link, since the fence lets none lead out of it."""
    try:
        os.link(source, target)
    except OSError:  # another file system
        shutil.copy(source, target)


class Player:
    """Plays examples with the files of the sample game."""

    def __init__(self, program, game, folder):
        self.program, self.game, self.folder = program, game, folder
        self.folder.mkdir(parents=True, exist_ok=True)
        self.made = hashlib.sha256()
        for path in [program, game / "RSC" / "resource.map", *sorted(game.glob("RSC/*.rsc")), *game.glob("movies/*")]:
            self.made.update(f"{path} {path.stat().st_mtime_ns}\n".encode())

    def play(self, page, number, example):
        """The pictures of an example that is played now, unless it was before. What is wrong, or nothing."""
        names = [f"{page}-{number}-{name}" for _, name in example.shots()]
        key = self.made.copy()
        key.update(repr((sorted(example.files.items()), example.input, names)).encode())
        stamp = self.folder / f"{page}-{number}.key"
        if stamp.is_file() and stamp.read_text() == key.hexdigest():
            return names, None
        with tempfile.TemporaryDirectory(dir=self.folder) as work:
            wrong = self.run(Path(work), example)
            for (_, shot), name in zip(example.shots(), names):
                if not (Path(work) / shot).is_file():
                    return names, f"no {shot} was taken: {wrong}"
                shutil.copy(Path(work) / shot, self.folder / name)
        stamp.write_text(key.hexdigest())
        return names, None

    def run(self, work, example):
        """Plays until the last screenshot; gives what the program said when something went wrong."""
        content = work / "content"
        content.mkdir()
        (work / "home").mkdir()
        for folder in ("RSC", "movies"):
            shutil.copytree(self.game / folder, content / folder, copy_function=link_or_copy)
        for name, script in example.files.items():
            (content / name).parent.mkdir(parents=True, exist_ok=True)
            (content / name).unlink(missing_ok=True)  # one of the sample game's stays as it is
            (content / name).write_text(script, "latin-1")
        (work / "input").write_text(example.input, "utf-8")
        until = max(time for time, _ in example.shots()) + 100
        options = ["--headless", "--content", "content", "--home", "home", "--seed", "1", "--until", str(until)]
        try:
            done = subprocess.run(
                [self.program, *options, "--input", "input"], cwd=work, capture_output=True, timeout=LONGEST_S
            )
        except subprocess.TimeoutExpired:
            return f"the example did not end in {LONGEST_S} s"
        return (done.stderr or done.stdout).decode("utf-8", "replace")


def show(text, played):
    """The page with its pictures behind the examples. `played` has the names of the pictures by example."""
    lines = text.split("\n")
    for example, names in sorted(played, key=lambda one: -one[0].last):
        rows = [f"{name} {time}" for name, (time, _) in zip(names, example.shots())]
        lines[example.last + 1 : example.last + 1] = ["", "```{shows}", *rows, "```"]
    return "\n".join(lines)


class Shows(Directive):
    """The pictures of an example in a row, each line a file and its time."""

    has_content = True

    def run(self):
        row = nodes.container(classes=["pictures"])
        for line in self.content:
            name, time = line.split()
            when = f"after {int(time) / 1000:g} s"
            figure = nodes.figure()
            figure += nodes.image(uri=f"/{PICTURES}/{name}", alt=f"What this example shows {when}")
            figure += nodes.caption("", when)
            row += figure
        return [row]


def play_all(app):
    layout = layout_of(app)
    player = Player(Path(app.config.site_player), Path(app.config.site_game), Path(app.srcdir) / PICTURES)
    tasks = [
        (page, number, example)
        for page, text in layout.texts.items()
        for number, example in enumerate(examples(text), 1)
        if example.shots() and not text_is_followed(text)
    ]
    played = {}
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = pool.map(lambda task: player.play(Path(task[0]).stem, *task[1:]), tasks)
        for (page, number, example), (names, wrong) in zip(tasks, results):
            if wrong:
                raise ExtensionError(f"{page}:{example.line + 1}: {wrong}")
            layout.laid.update(f"{PICTURES}/{name}" for name in [*names, f"{Path(page).stem}-{number}.key"])
            played.setdefault(page, []).append((example, names))
    for page, of_page in played.items():
        layout.texts[page] = show(layout.texts[page], of_page)


def text_is_followed(text):
    """Whether a page is followed step by step, with the files that it names: it has its pictures itself."""
    return re.search(r"^`[^`]+`:$", text, re.M) is not None


def setup(app):
    app.add_directive("shows", Shows)
    app.connect("builder-inited", play_all, priority=600)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
