#include "commands/commands.h"

#include "manifest/pack.h"

#include "commandline/commandline.h"

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr const char* kAboutPack =
    R"(A manifest is a text that names what goes into the libraries:

  palette meadow
      from meadow.png bee.png
  library meadow.rsc
      use meadow
      colours 100 meadow
      picture 100 meadow.png
      picture 101 bee.png
      sound 201 buzz.wav

Sounds of any rate, bits and channels become what the game plays. Pictures have 236
colours in common; what gets lost of more is counted in a warning. A mistake is told as
MANIFEST:LINE: TEXT; the old libraries then stay as they were.

Example:
  zorbet-rsc pack my-game/resources.manifest -o my-game/RSC)";

} // namespace

void addPackCommand(tools::CommandLine& line) {
    const auto options = std::make_shared<PackOptions>();
    CLI::App& command = line.add("pack", "Build resource libraries and their map",
                                 "MANIFEST -o FOLDER", kAboutPack);
    command.add_option("MANIFEST", options->manifest, "Text file that names what goes into them")
        ->required();
    tools::named(
        command.add_option("-o,--output", options->folder, "Where the libraries and the map go"),
        "FOLDER")
        ->required();
    command.callback([options, &line] { line.exitCode() = runPack(*options, std::cerr); });
}

} // namespace rsc
