#include "commands.h"

#include "pack.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace rsc {

void addPackCommand(CLI::App& app, int& exitCode) {
    const auto options = std::make_shared<PackOptions>();
    CLI::App* command = app.add_subcommand("pack", "Build resource libraries and their map");
    command->add_option("manifest", options->manifest, "Text file that names what goes into them")
        ->required();
    command->add_option("-o,--output", options->folder, "Folder for the libraries and the map")
        ->required();
    command->callback([options, &exitCode] { exitCode = runPack(*options, std::cerr); });
}

} // namespace rsc
