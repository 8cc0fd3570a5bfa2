#include "commands.h"

#include "extract.h"
#include "nelibrary.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace rsc {

void addExtractCommand(CLI::App& app, int& exitCode) {
    const auto options = std::make_shared<ExtractOptions>();
    CLI::App* command =
        app.add_subcommand("extract", "Unpack libraries into files and a manifest for \"pack\"");
    command->add_option("files", options->files, "Resource libraries")->required();
    command->add_option("-o,--output", options->folder, "Folder for the files and the manifest")
        ->required();
    command
        ->add_option("--palette", options->palette,
                     "Id of the palette for all pictures, instead of the one that fits each")
        ->check(CLI::Range(1, kLargestId));
    command->add_flag("--force", options->force, "Write into a folder that is not empty");
    command->callback(
        [options, &exitCode] { exitCode = runExtract(*options, std::cout, std::cerr); });
}

} // namespace rsc
