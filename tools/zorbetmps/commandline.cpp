#include "zorbetmps/commandline.h"

#include "zorbetmps/check/check.h"
#include "zorbetmps/check/report.h"
#include "zorbetmps/pages.h"
#include "zorbetmps/profile.h"
#include "zorbetmps/scripts/scriptcommands.h"
#include "zorbetmps/words.h"

#include "commands/commands.h"
#include "commands/vocabulary.h"
#include "ykeyword.h"

#include "platform/commandline/commandline.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace mps {

namespace {

constexpr int kSound = 0;
constexpr int kErrors = 1;

const std::string kAboutCheck =
    R"(Nothing is run. Of a game's folder all scripts are checked, as the game finds them, and
those are told that none leads to. Without findings nothing is printed. Each has a name in
brackets, by which a comment in the script silences it:
  ; check skip NAME...   in the next statement's line
  ; check off NAME...    from here on, to "; check on NAME..."
The exit code is 0 without errors and warnings, 1 with some, 2 when the command line is wrong.

Examples:
  zorbet-mps check my-game
  zorbet-mps check my-game/scripts/harbour.mps

Findings:
)";

constexpr const char* kAboutCompile =
    R"(What a script includes is compiled in. The game runs the result as it runs the script, by
the name of its file, but tells no lines in its messages. Nothing is written when a script has
mistakes, which are told as "check" tells them; the exit code is 1 then.

Examples:
  zorbet-mps compile my-game/scripts/harbour.mps -o release/scripts/harbour.mps
  zorbet-mps compile my-game/scripts/*.mps -o release/scripts)";

constexpr const char* kAboutDisasm =
    R"(Scripts may be texts or precompiled. Of two scripts that do the same in the same order the
listings are the same, but for the lines.

Example:
  zorbet-mps disasm --no-lines harbour.mps)";

constexpr const char* kAboutFormat =
    R"(Lines stay lines, words stay words: what changes are indents, blanks between words and at
the ends of lines, and blank lines. Both texts are compiled, and a script that would become
another one is left as it is. Scripts with mistakes are refused, and the exit code is 1, as it is
when --check finds a script that would change.

Examples:
  zorbet-mps format harbour.mps
  zorbet-mps format --write my-game)";

constexpr const char* kAboutProfile =
    R"(Plays the game, with nothing saved, and tells what its statements took of this machine's
time: each line by itself, and each procedure with what it called. A folded stack is a line
"OUTER;INNER;FILE:LINE MICROSECONDS".

Examples:
  zorbet-mps profile my-game --input visit.input --until 20000
  zorbet-mps profile my-game --window --folded stacks.txt)";

constexpr double kLongestRunMs = 1e9;
constexpr double kMostRows = 1e6;

constexpr const char* kAboutWords =
    R"(Example:
  zorbet-mps words RAnimation)";

/// The names of the global commands, as long as it is there.
class KnownCommands {
  public:
    KnownCommands() {
        for (const RCommandWords& command : RCommands::words())
            YCommands::add(command.name, nullptr);
    }
    ~KnownCommands() { YCommands::clear(); }
    KnownCommands& operator=(KnownCommands&&) = delete;
};

int checkAll(const std::vector<std::string>& paths, bool json, std::ostream& out) {
    const KnownCommands commands;
    const std::vector<Finding> findings = check(paths);
    if (json)
        reportJson(findings, out);
    else
        report(findings, out);
    const bool isSound = std::ranges::all_of(findings, [](const Finding& finding) {
        return aboutRule(finding.rule).severity == Severity::Note;
    });
    return isSound ? kSound : kErrors;
}

void addProfile(commandline::Program& program, ProfiledRun& run, std::ostream& out,
                std::ostream& errors) {
    commandline::Command command =
        program.add("profile", "Tell where the time of scripts goes",
                    "DIR [--input FILE] [--until MS] [--window] [--folded FILE]", kAboutProfile,
                    [&run, &out, &errors] { return profile(run, out, errors) ? kSound : kErrors; });
    command.add("DIR", &run.game, "The game's folder").folder().required();
    const commandline::Option window =
        command.add("--window", &run.isInWindow,
                    "Play in a window, until it is closed, instead of without one");
    command.add("--input", &run.input, "File of what happens from outside", "FILE")
        .excludes(window);
    command.add("--until", &run.untilMs, "End at this time of the game (default 60000)", "MS")
        .within(1, kLongestRunMs)
        .excludes(window);
    command.add("--most", &run.mostLines, "So many rows of each table (default 20)", "N")
        .within(1, kMostRows);
    command.add("--folded", &run.folded,
                "Write the stacks with their microseconds for a viewer of flame graphs", "FILE");
}

} // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    commandline::Program line(
        "zorbet-mps", "For the authors of scripts of zorbet: finds mistakes, compiles, formats, "
                      "profiles, tells words.");
    line.setVersion("zorbet-mps " ZORBET_VERSION);
    std::vector<std::string> paths;
    bool json = false;
    commandline::Command checking =
        line.add("check", "Tell the mistakes in scripts", "DIR|FILE...", kAboutCheck + ruleList(),
                 [&] { return checkAll(paths, json, out); });
    checking.add("PATH", &paths, "A game's folder, or scripts, as texts or precompiled").required();
    checking.add("--json", &json, "Print the findings as a list for programs");

    std::string to;
    const auto whether = [&](auto work) {
        const KnownCommands known;
        return work(Told{out, errors}) ? kSound : kErrors;
    };
    commandline::Command compiling = line.add(
        "compile", "Write scripts in their precompiled form", "FILE... [-o FILE|DIR]",
        kAboutCompile,
        [&] { return whether([&](const Told& told) { return compileScripts(paths, to, told); }); });
    compiling.add("FILE", &paths, "Scripts").required();
    compiling.add("-o,--output", &to,
                  "The file, or the folder for files of the same names; without it they lie "
                  "beside the scripts and end with .mpc",
                  "FILE|DIR");
    bool isWithoutLines = false;
    commandline::Command listing = line.add(
        "disasm", "List what scripts are compiled to", "FILE... [--no-lines]", kAboutDisasm, [&] {
            return whether(
                [&](const Told& told) { return listScripts(paths, !isWithoutLines, told); });
        });
    listing.add("FILE", &paths, "Scripts").required();
    listing.add("--no-lines", &isWithoutLines, "Leave out where in the script instructions stand");
    bool isChecked = false;
    bool isWritten = false;
    commandline::Command formatting = line.add(
        "format", "Print scripts, or write them, in one layout",
        "FILE | FILE|DIR... --check|--write", kAboutFormat, [&] {
            const Formatting what = isChecked   ? Formatting::Check
                                    : isWritten ? Formatting::Write
                                                : Formatting::Print;
            return whether([&](const Told& told) { return formatScripts(paths, what, told); });
        });
    formatting.add("PATH", &paths, "Scripts, or folders with scripts").required();
    const commandline::Option checked =
        formatting.add("--check", &isChecked, "Only tell which scripts would change");
    formatting.add("--write", &isWritten, "Change them, and tell which").excludes(checked);

    ProfiledRun profiled;
    addProfile(line, profiled, out, errors);
    std::vector<std::string> classes;
    std::string pages;
    bool write = false;
    const auto tell = [&] {
        const bool sound =
            pages.empty() ? tellWords(classes, out, errors) : renewPages(pages, write, out);
        return sound ? kSound : kErrors;
    };
    commandline::Command words = line.add("words", "Tell the words of classes, and the commands",
                                          "[CLASS...] | --pages DIR [--write]", kAboutWords, tell);
    const commandline::Option folder =
        words.add("--pages", &pages, "Compare the tables in the pages of a folder instead", "DIR");
    words.add("CLASS", &classes, "Classes; without any, all of them and the commands")
        .excludes(folder);
    words.add("--write", &write, "Write the tables into these pages").needs(folder);
    return line.run(argc, argv, out, errors);
}

} // namespace mps
