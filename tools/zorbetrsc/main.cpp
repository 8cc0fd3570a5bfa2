// zorbet-rsc: builds, unpacks and shows resource libraries, and makes movies.
#include "commands/commands.h"
#include "fonts/facefont.h"
#include "pictures/quantizer.h"
#include "sounds/resampler.h"
#include "sounds/soundfile.h"

#include "commandline/commandline.h"

#include <iostream>

namespace {

std::string versionText() {
    std::string text = "zorbet-rsc " ZORBET_VERSION "\n";
    text += rsc::canReduceColours() ? "palettes out of many colours: libimagequant\n"
                                    : "palettes out of many colours: none (built without "
                                      "libimagequant)\n";
    text += rsc::canRenderFaces() ? "fonts from TrueType faces: FreeType\n"
                                  : "fonts from TrueType faces: none (built without FreeType)\n";
    text += rsc::canReadSounds() ? "sounds of other kinds: libsndfile\n"
                                 : "sounds of other kinds: none (built without libsndfile)\n";
    text += rsc::canResample() ? "sounds of other rates: libsamplerate"
                               : "sounds of other rates: none (built without libsamplerate)";
    return text;
}

int run(int argc, char** argv) {
    tools::CommandLine line(
        "zorbet-rsc",
        "Packs pictures, sounds, fonts and cursors into the resource libraries of "
        "a game,\nshows and unpacks them, and makes movies.",
        versionText());
    rsc::addPackCommand(line);
    rsc::addExtractCommand(line);
    rsc::addListCommand(line);
    rsc::addMapCommand(line);
    rsc::addMovieCommand(line);
    return line.run(argc, argv, std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv) {
    return tools::runProgram("zorbet-rsc", [&] { return run(argc, argv); });
}
