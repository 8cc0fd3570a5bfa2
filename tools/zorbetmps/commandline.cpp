#include "zorbetmps/commandline.h"

#include "zorbetmps/check.h"
#include "zorbetmps/pages.h"
#include "zorbetmps/words.h"

#include "commands/commands.h"
#include "commands/vocabulary.h"
#include "ykeyword.h"

#include "commandline/commandline.h"

#include <ostream>
#include <string>
#include <vector>

namespace mps {

namespace {

constexpr int kSound = 0;
constexpr int kErrors = 1;

constexpr const char* kAboutCheck =
    R"(Nothing is run. Each mistake is a line FILE:LINE: TEXT; without any nothing is printed.
Includes are looked for beside the script, in "scripts" there, and in the folder above.
The exit code is 0 without mistakes, 1 with some, 2 when the command line is wrong.

Example:
  zorbet-mps check my-game/*.mps my-game/scripts/*.mps)";

constexpr const char* kAboutWords =
    R"(Example:
  zorbet-mps words RAnimation)";

int checkAll(const std::vector<std::string>& files, std::ostream& out) {
    for (const RCommandWords& command : RCommands::words()) YCommands::add(command.name, nullptr);
    bool sound = true;
    for (const std::string& file : files) sound &= checkScript(file, out);
    YCommands::clear();
    return sound ? kSound : kErrors;
}

} // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    tools::CommandLine line("zorbet-mps",
                            "For the authors of scripts of zorbet: finds mistakes, tells words.",
                            "zorbet-mps " ZORBET_VERSION);
    std::vector<std::string> files;
    line.add("check", "Compile scripts and tell every mistake", "FILE...", kAboutCheck,
             [&] { return checkAll(files, out); })
        .add("FILE", &files, "Scripts, as texts or precompiled")
        .required();
    std::vector<std::string> classes;
    std::string pages;
    bool write = false;
    const auto tell = [&] {
        const bool sound =
            pages.empty() ? tellWords(classes, out, errors) : renewPages(pages, write, out);
        return sound ? kSound : kErrors;
    };
    tools::Command words = line.add("words", "Tell the words of classes, and the commands",
                                    "[CLASS...] | --pages DIR [--write]", kAboutWords, tell);
    const tools::Option folder =
        words.add("--pages", &pages, "Compare the tables in the pages of a folder instead", "DIR");
    words.add("CLASS", &classes, "Classes; without any, all of them and the commands")
        .excludes(folder);
    words.add("--write", &write, "Write the tables into these pages").needs(folder);
    return line.run(argc, argv, out, errors);
}

} // namespace mps
