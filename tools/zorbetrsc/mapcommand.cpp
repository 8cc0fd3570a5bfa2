#include "commands.h"

#include "map.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace rsc {

void addMapCommand(CLI::App& app, int& exitCode) {
    const auto options = std::make_shared<MapOptions>();
    CLI::App* command = app.add_subcommand("map", "Write the map of libraries that are there");
    command->add_option("files", options->files, "Resource libraries")->required();
    command
        ->add_option("-o,--output", options->output,
                     "Folder for resource.map, or a file that ends in .map")
        ->required();
    command->add_option("--name", options->name,
                        "The map's identifier; without it the name of the first library");
    command->add_flag("--audio", options->audio, "Write audio.map too, beside it");
    command->callback([options, &exitCode] { exitCode = runMap(*options, std::cerr); });
}

} // namespace rsc
