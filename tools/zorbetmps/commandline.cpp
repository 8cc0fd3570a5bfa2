#include "zorbetmps/commandline.h"

#include "zorbetmps/check/check.h"
#include "zorbetmps/check/report.h"
#include "zorbetmps/pages.h"
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

constexpr const char* kAboutWords =
    R"(Example:
  zorbet-mps words RAnimation)";

int checkAll(const std::vector<std::string>& paths, bool json, std::ostream& out) {
    for (const RCommandWords& command : RCommands::words()) YCommands::add(command.name, nullptr);
    const std::vector<Finding> findings = check(paths);
    YCommands::clear();
    if (json)
        reportJson(findings, out);
    else
        report(findings, out);
    const bool isSound = std::ranges::all_of(findings, [](const Finding& finding) {
        return aboutRule(finding.rule).severity == Severity::Note;
    });
    return isSound ? kSound : kErrors;
}

} // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    commandline::Program line("zorbet-mps",
                              "For the authors of scripts of zorbet: finds mistakes, tells words.");
    line.setVersion("zorbet-mps " ZORBET_VERSION);
    std::vector<std::string> paths;
    bool json = false;
    commandline::Command checking =
        line.add("check", "Tell the mistakes in scripts", "DIR|FILE...", kAboutCheck + ruleList(),
                 [&] { return checkAll(paths, json, out); });
    checking.add("PATH", &paths, "A game's folder, or scripts, as texts or precompiled").required();
    checking.add("--json", &json, "Print the findings as a list for programs");
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
