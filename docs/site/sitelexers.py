"""Colours for the blocks of the pages: scripts, what happens from outside, manifests, and what a program says."""
from pygments.lexer import RegexLexer, bygroups, words
from pygments.lexers.html import XmlLexer
from pygments.lexers.special import TextLexer
from pygments.token import Comment, Generic, Keyword, Name, Number, Operator, Punctuation, String, Text
from sitereference import words_of

PLAIN = ["output", "again", "boxes", "report", "check", "notes", "log", "file"]


class InputLexer(RegexLexer):
    """Input files: a time, an event, its words."""

    name = "Zorbet input"
    tokens = {
        "root": [
            (r"#.*", Comment),
            (r"^(\d+)(\s+)(\S+)", bygroups(Number, Text, Keyword)),
            (r"-?\d+\b", Number),
            (r"\s+", Text),
            (r"\S+", Name),
        ]
    }


class ManifestLexer(RegexLexer):
    """Manifests of resources: the first word says what a line is."""

    name = "Zorbet manifest"
    tokens = {
        "root": [
            (r"#.*", Comment),
            (r"^(\s*)([a-z]+)", bygroups(Text, Keyword)),
            (r"-?\d+\b", Number),
            (r"[^\s\d]\S*|\d\S+", Name),
            (r"\s+", Text),
        ]
    }


def script_lexer(known):
    """A lexer for scripts, with the words that the program has."""
    classes = [one["name"] for one in known["classes"] if "arguments" in one]
    commands = [one["name"] for one in known["commands"]]

    class ScriptLexer(RegexLexer):
        name = "Zorbet script"
        tokens = {
            "root": [
                (r'"[^"\n]*"?', String),
                (r";.*", Comment),
                (r"^(\s*)(else)(\s+)(if)\b", bygroups(Text, Keyword, Text, Keyword)),
                (words(known["keywords"], prefix=r"(?:(?<=\n)|^)[ \t]*", suffix=r"\b"), Keyword),
                (words(commands, prefix=r"^[ \t]*", suffix=r"\b"), Name.Function),
                (words(classes, prefix=r"(?<==)\s*", suffix=r"\b"), Name.Class),
                (r"(RECEIVER|RESULT|OBJECT)\b", Name.Builtin),
                (r"\d+(\.\d+)?\b", Number),
                (r"[A-Za-z_][\w.]*", Name),
                (r"[-+*/%=#<>&|!]", Operator),
                (r"[\[\](){}@,]", Punctuation),
                (r"\s+", Text),
                (r".", Text),
            ]
        }

    return ScriptLexer


def add(app):
    app.add_lexer("mps", script_lexer(words_of(app)))
    app.add_lexer("input", InputLexer)
    app.add_lexer("manifest", ManifestLexer)
    app.add_lexer("svg", XmlLexer)
    for kind in PLAIN:
        app.add_lexer(kind, TextLexer)


def setup(app):
    app.connect("builder-inited", add)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
