#include "zorbetmps/commandline.h"

#include "zorbetmps/check/check.h"
#include "zorbetmps/check/report.h"
#include "zorbetmps/pages.h"
#include "zorbetmps/profile.h"
#include "zorbetmps/scripts/scriptcommands.h"
#include "zorbetmps/texts/textcommand.h"
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

constexpr const char* kAboutTexts =
    R"(A catalogue, languages/LANG.po in the game's folder, holds the translations of the texts that
stand in quotes in the scripts; programs for translators open it. Taken are the texts that are
shown, as far as that is evident. A comment decides about the statement in the next line:
  ; texts take     its texts are for people
  ; texts skip     they are not
Translations stay when a catalogue is written anew. Without --check the exit code is 0 unless
scripts have mistakes; with it, 1 when a catalogue lacks something.

Examples:
  zorbet-mps texts my-game > my-game.pot
  zorbet-mps texts my-game --write en fr
  zorbet-mps texts my-game --check)";

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

/// All commands, with the values of their options.
class Commands {
  public:
    Commands(commandline::Program& program, std::ostream& out, std::ostream& errors)
        : program_(program), out_(out), errors_(errors) {
        addCheck();
        addCompile();
        addDisasm();
        addFormat();
        addProfile();
        addTexts();
        addWords();
    }
    Commands& operator=(Commands&&) = delete;

  private:
    void addCheck();
    void addCompile();
    void addDisasm();
    void addFormat();
    void addProfile();
    void addTexts();
    void addWords();

    int checkAll();
    /// The exit code of something that is done to scripts; `work` tells whether it went well.
    template <class Work>
    int whether(Work work) {
        const KnownCommands known;
        return work(Told{out_, errors_}) ? kSound : kErrors;
    }

    commandline::Program& program_;
    std::ostream& out_;
    std::ostream& errors_;
    std::vector<std::string> paths_;
    bool json_ = false;
    std::string to_;
    bool isWithoutLines_ = false;
    bool isChecked_ = false;
    bool isWritten_ = false;
    ProfiledRun profiled_;
    TextsWork texts_;
    std::vector<std::string> classes_;
    std::string pages_;
    bool arePagesWritten_ = false;
};

void Commands::addCheck() {
    commandline::Command command =
        program_.add("check", "Tell the mistakes in scripts", "DIR|FILE...",
                     kAboutCheck + ruleList(), [this] { return checkAll(); });
    command.add("PATH", &paths_, "A game's folder, or scripts, as texts or precompiled").required();
    command.add("--json", &json_, "Print the findings as a list for programs");
}

int Commands::checkAll() {
    const KnownCommands commands;
    const std::vector<Finding> findings = check(paths_);
    if (json_)
        reportJson(findings, out_);
    else
        report(findings, out_);
    const bool isSound = std::ranges::all_of(findings, [](const Finding& finding) {
        return aboutRule(finding.rule).severity == Severity::Note;
    });
    return isSound ? kSound : kErrors;
}

void Commands::addCompile() {
    const auto work = [this](const Told& told) { return compileScripts(paths_, to_, told); };
    commandline::Command command =
        program_.add("compile", "Write scripts in their precompiled form", "FILE... [-o FILE|DIR]",
                     kAboutCompile, [=, this] { return whether(work); });
    command.add("FILE", &paths_, "Scripts").required();
    command.add("-o,--output", &to_,
                "The file, or the folder for files of the same names; without it they lie "
                "beside the scripts and end with .mpc",
                "FILE|DIR");
}

void Commands::addDisasm() {
    const auto work = [this](const Told& told) {
        return listScripts(paths_, !isWithoutLines_, told);
    };
    commandline::Command command =
        program_.add("disasm", "List what scripts are compiled to", "FILE... [--no-lines]",
                     kAboutDisasm, [=, this] { return whether(work); });
    command.add("FILE", &paths_, "Scripts").required();
    command.add("--no-lines", &isWithoutLines_, "Leave out where in the script instructions stand");
}

void Commands::addFormat() {
    const auto work = [this](const Told& told) {
        const Formatting what = isChecked_   ? Formatting::Check
                                : isWritten_ ? Formatting::Write
                                             : Formatting::Print;
        return formatScripts(paths_, what, told);
    };
    commandline::Command command = program_.add(
        "format", "Print scripts, or write them, in one layout",
        "FILE | FILE|DIR... --check|--write", kAboutFormat, [=, this] { return whether(work); });
    command.add("PATH", &paths_, "Scripts, or folders with scripts").required();
    const commandline::Option checked =
        command.add("--check", &isChecked_, "Only tell which scripts would change");
    command.add("--write", &isWritten_, "Change them, and tell which").excludes(checked);
}

void Commands::addProfile() {
    commandline::Command command =
        program_.add("profile", "Tell where the time of scripts goes",
                     "DIR [--input FILE] [--until MS] [--window] [--folded FILE]", kAboutProfile,
                     [this] { return profile(profiled_, out_, errors_) ? kSound : kErrors; });
    command.add("DIR", &profiled_.game, "The game's folder").folder().required();
    const commandline::Option window =
        command.add("--window", &profiled_.isInWindow,
                    "Play in a window, until it is closed, instead of without one");
    command.add("--input", &profiled_.input, "File of what happens from outside", "FILE")
        .excludes(window);
    command.add("--until", &profiled_.untilMs, "End at this time of the game (default 60000)", "MS")
        .within(1, kLongestRunMs)
        .excludes(window);
    command.add("--most", &profiled_.mostLines, "So many rows of each table (default 20)", "N")
        .within(1, kMostRows);
    command.add("--folded", &profiled_.folded,
                "Write the stacks with their microseconds for a viewer of flame graphs", "FILE");
}

void Commands::addTexts() {
    const auto work = [this](const Told& told) { return drawOutTexts(texts_, told); };
    commandline::Command command = program_.add(
        "texts", "Draw the texts out of a game's scripts, to be translated",
        "DIR [--write LANG...] [--check]", kAboutTexts, [=, this] { return whether(work); });
    command.add("DIR", &texts_.game, "The game's folder").folder().required();
    command.add("--write", &texts_.written,
                "Make or renew the catalogues of these languages, by their tags, instead of "
                "printing a template",
                "LANG");
    command.add("--check", &texts_.isChecked,
                "Only tell what the game's catalogues lack, letters of its fonts too");
}

void Commands::addWords() {
    const auto work = [this] {
        if (json_) {
            tellWordsJson(out_);
            return kSound;
        }
        const bool sound = pages_.empty() ? tellWords(classes_, out_, errors_)
                                          : renewPages(pages_, arePagesWritten_, out_);
        return sound ? kSound : kErrors;
    };
    commandline::Command command =
        program_.add("words", "Tell the words of classes, and the commands",
                     "[CLASS...] | --json | --pages DIR [--write]", kAboutWords, work);
    const commandline::Option folder = command.add(
        "--pages", &pages_, "Compare the tables in the pages of a folder instead", "DIR");
    const commandline::Option json =
        command.add("--json", &json_, "Print all of them as a record for programs");
    json.excludes(folder);
    command.add("CLASS", &classes_, "Classes; without any, all of them and the commands")
        .excludes(folder)
        .excludes(json);
    command.add("--write", &arePagesWritten_, "Write the tables into these pages").needs(folder);
}

} // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    commandline::Program program(
        "zorbet-mps",
        "Finds mistakes in scripts, compiles, formats and profiles them, draws out texts",
        "It is for the authors of zorbet's games, and tells them the words of scripts, too.");
    program.setManual({1, {"zorbet(6)", "zorbet-rsc(1)"}});
    program.setVersion("zorbet-mps " ZORBET_VERSION);
    const Commands commands(program, out, errors);
    return program.run(argc, argv, out, errors);
}

} // namespace mps
