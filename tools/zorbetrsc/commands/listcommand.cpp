#include "commands/commands.h"

#include "library/list.h"

#include "commandline/commandline.h"

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr const char* kAboutList =
    R"(A line has type, id, bytes and offset of a resource, and what it is. What the game cannot
show or play is told besides, and the exit code is 1.

Example:
  zorbet-rsc list my-game/RSC/*.rsc)";

} // namespace

void addListCommand(tools::CommandLine& line) {
    const auto files = std::make_shared<std::vector<std::filesystem::path>>();
    CLI::App& command =
        line.add("list", "Show what lies in resource libraries and movies", "FILE...", kAboutList);
    command.add_option("FILE", *files, "Resource libraries and movies")->required();
    command.callback([files, &line] { line.exitCode() = runList(*files, std::cout, std::cerr); });
}

} // namespace rsc
