#include "commands/commands.h"

#include "library/map.h"

#include "commandline/commandline.h"

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr const char* kAboutMap =
    R"(The map tells the game which library holds what; "pack" writes one, too.

Example:
  zorbet-rsc map my-game/RSC/*.rsc -o my-game/RSC --name MEADOW)";

} // namespace

void addMapCommand(tools::CommandLine& line) {
    const auto options = std::make_shared<MapOptions>();
    CLI::App& command = line.add("map", "Write the map of libraries that are there",
                                 "[OPTIONS] FILE... -o FOLDER", kAboutMap);
    command.add_option("FILE", options->files, "Resource libraries")->required();
    tools::named(command.add_option("-o,--output", options->output,
                                    "Where resource.map goes; or a file, NAME.map"),
                 "FOLDER")
        ->required();
    tools::named(command.add_option("--name", options->name,
                                    "The map's identifier; without it the name of the first\n"
                                    "library"),
                 "NAME");
    command.add_flag("--audio", options->audio, "Write audio.map too, beside it");
    command.callback([options, &line] { line.exitCode() = runMap(*options, std::cerr); });
}

} // namespace rsc
