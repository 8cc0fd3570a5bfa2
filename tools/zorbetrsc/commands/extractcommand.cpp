#include "commands/commands.h"

#include "library/extract.h"
#include "library/nelibrary.h"

#include "commandline/commandline.h"

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr const char* kAboutExtract =
    R"(Packing FOLDER/resources.manifest gives the same libraries again.

Example:
  zorbet-rsc extract my-game/RSC/* -o unpacked)";

} // namespace

void addExtractCommand(tools::CommandLine& line) {
    const auto options = std::make_shared<ExtractOptions>();
    CLI::App& command =
        line.add("extract", "Unpack libraries into files and a manifest for \"pack\"",
                 "[OPTIONS] FILE... -o FOLDER", kAboutExtract);
    command.add_option("FILE", options->files, "Resource libraries; maps beside them are read")
        ->required();
    tools::named(
        command.add_option("-o,--output", options->folder, "Where the files and the manifest go"),
        "FOLDER")
        ->required();
    tools::named(command.add_option("--palette", options->palette,
                                    "Show all pictures in this palette (RRGB), instead of\n"
                                    "each in the one that fits"),
                 "ID")
        ->check(tools::within(1, kLargestId));
    command.add_flag("--force", options->force, "Write into a folder that is not empty");
    command.callback(
        [options, &line] { line.exitCode() = runExtract(*options, std::cout, std::cerr); });
}

} // namespace rsc
