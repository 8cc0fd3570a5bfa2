// zorbet-rsc: builds, unpacks and shows resource libraries, makes movies, and bundles games.
#include "bundle/bundle.h"
#include "bundle/debianpackage.h"
#include "fonts/facefont.h"
#include "library/extract.h"
#include "library/list.h"
#include "library/map.h"
#include "library/nelibrary.h"
#include "manifest/pack.h"
#include "movies/makemovie.h"
#include "pictures/quantizer.h"
#include "sounds/resampler.h"
#include "sounds/soundfile.h"

#include "platform/commandline/commandline.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr double kTicksOfSecond = 100000; ///< hundredths of a millisecond
constexpr double kSlowestRate = 0.02;     ///< frames a second
constexpr double kFastestRate = 1000;

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
    text += rsc::canMakePackages() ? "\nDebian packages of games: libarchive"
                                   : "\nDebian packages of games: none (built without libarchive)";
    return text;
}

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

void addPack(commandline::Program& line) {
    const auto options = std::make_shared<rsc::PackOptions>();
    commandline::Command command =
        line.add("pack", "Build resource libraries and their map", "MANIFEST -o FOLDER", kAboutPack,
                 [options] { return runPack(*options, std::cerr); });
    command.add("MANIFEST", &options->manifest, "Text file that names what goes into them")
        .required();
    command.add("-o,--output", &options->folder, "Where the libraries and the map go", "FOLDER")
        .required();
}

constexpr const char* kAboutExtract =
    R"(Packing FOLDER/resources.manifest gives the same libraries again.

Example:
  zorbet-rsc extract my-game/RSC/* -o unpacked)";

void addExtract(commandline::Program& line) {
    const auto options = std::make_shared<rsc::ExtractOptions>();
    commandline::Command command =
        line.add("extract", "Unpack libraries into files and a manifest for \"pack\"",
                 "[OPTIONS] FILE... -o FOLDER", kAboutExtract,
                 [options] { return runExtract(*options, std::cout, std::cerr); });
    command.add("FILE", &options->files, "Resource libraries; maps beside them are read")
        .required();
    command.add("-o,--output", &options->folder, "Where the files and the manifest go", "FOLDER")
        .required();
    command
        .add("--palette", &options->palette,
             "Show all pictures in this palette (RRGB), instead of\n"
             "each in the one that fits",
             "ID")
        .within(1, rsc::kLargestId);
    command.add("--force", &options->force, "Write into a folder that is not empty");
}

constexpr const char* kAboutList =
    R"(A line has type, id, bytes and offset of a resource, and what it is. What the game cannot
show or play is told besides, and the exit code is 1.

Example:
  zorbet-rsc list my-game/RSC/*.rsc)";

void addList(commandline::Program& line) {
    const auto files = std::make_shared<std::vector<std::filesystem::path>>();
    line.add("list", "Show what lies in resource libraries and movies", "FILE...", kAboutList,
             [files] { return rsc::runList(*files, std::cout, std::cerr); })
        .add("FILE", files.get(), "Resource libraries and movies")
        .required();
}

constexpr const char* kAboutMap =
    R"(The map tells the game which library holds what; "pack" writes one, too.

Example:
  zorbet-rsc map my-game/RSC/*.rsc -o my-game/RSC --name MEADOW)";

void addMap(commandline::Program& line) {
    const auto options = std::make_shared<rsc::MapOptions>();
    commandline::Command command =
        line.add("map", "Write the map of libraries that are there", "[OPTIONS] FILE... -o FOLDER",
                 kAboutMap, [options] { return runMap(*options, std::cerr); });
    command.add("FILE", &options->files, "Resource libraries").required();
    command
        .add("-o,--output", &options->output, "Where resource.map goes; or a file, NAME.map",
             "FOLDER")
        .required();
    command.add("--name", &options->name,
                "The map's identifier; without it the name of the first\n"
                "library",
                "NAME");
    command.add("--audio", &options->audio, "Write audio.map too, beside it");
}

constexpr const char* kAboutMovie =
    R"(Frames have one size, whose sides are multiples of 4. They share 236 colours.

Example:
  zorbet-rsc movie storm/ --sound storm.wav -o my-game/storm.smk)";

void addMovieTime(commandline::Command& command, rsc::MovieOptions& options,
                  std::optional<double>& framesPerSecond) {
    const commandline::Option rate =
        command.add("--fps", &framesPerSecond, "Frames a second; 15 without it", "N");
    rate.within(kSlowestRate, kFastestRate);
    command
        .add("--frame-time", &options.frameTime,
             "Hundredths of a millisecond from frame to frame,\n"
             "instead of --fps",
             "N")
        .within(rsc::MovieOptions::kShortestFrameTime, rsc::MovieOptions::kLongestFrameTime)
        .excludes(rate);
}

void addMovieColours(commandline::Command& command, rsc::MovieColourOptions& colours) {
    const commandline::Option at =
        command.add("--palette-at", &colours.paletteAt,
                    "From this frame on, counted from 1, there is another\n"
                    "palette; may be given many times",
                    "N");
    at.named();
    command
        .add("--palette", &colours.palette,
             "Indexed PNG whose palette is used instead of one made\n"
             "from the frames",
             "FILE")
        .excludes(at);
    command.add("--remap", &colours.remap, "Treat indexed frames as truecolour ones");
}

void addMovie(commandline::Program& line) {
    const auto options = std::make_shared<rsc::MovieOptions>();
    const auto framesPerSecond = std::make_shared<std::optional<double>>();
    const auto make = [options, framesPerSecond] {
        if (*framesPerSecond)
            options->frameTime = static_cast<int>(kTicksOfSecond / **framesPerSecond);
        return runMovie(*options, std::cerr);
    };
    commandline::Command command = line.add("movie", "Make a movie out of pictures and a sound",
                                            "[OPTIONS] FRAME... -o FILE", kAboutMovie, make);
    command
        .add("FRAME", &options->frames,
             "PNG files in their order, or a folder of them in the\n"
             "order of their names")
        .required();
    command.add("-o,--output", &options->output, "The movie, NAME.smk", "FILE").required();
    addMovieTime(command, *options, *framesPerSecond);
    command.add("--sound", &options->sound, "Sound file to be heard with it", "FILE");
    command.add("--unpacked", &options->unpacked, "Store the sound as it is");
    command.add("--ring", &options->ring,
                "Add a frame that leads from the last one to the\n"
                "second, for playing in rounds");
    addMovieColours(command, options->colours);
}

constexpr const char* kAboutBundle =
    R"(Checks the scripts, packs the game's resources.manifest, and makes in FOLDER

  NAME-VERSION/            the game with the engine, to be started from anywhere by NAME
  NAME_VERSION_ARCH.deb    the same as a Debian package

without what only the author needs. The game's folder stays as it is. Its game.ini says
who the game is: identifier, title, version and icon must be there. The same game gives
the same bytes, in which nothing tells of this computer.

Example:
  zorbet-rsc bundle my-game -o for-others)";

void addBundle(commandline::Program& line) {
    const auto options = std::make_shared<rsc::BundleOptions>();
    commandline::Command command =
        line.add("bundle", "Make of a game what others can play", "[OPTIONS] DIR -o FOLDER",
                 kAboutBundle, [options] { return runBundle(*options, std::cout, std::cerr); });
    command.add("DIR", &options->game, "The game's folder").folder().required();
    command
        .add("-o,--output", &options->output,
             "Where it is made: a folder that is empty, or not there\n"
             "yet",
             "FOLDER")
        .required();
    command.add("--name", &options->name,
                "Of the program and the package; without it the last\n"
                "word of the identifier",
                "NAME");
    command
        .add("--with", &options->also,
             "Take along this file or folder of the game, too; may be\n"
             "given many times",
             "PATH")
        .named();
}

int run(int argc, char** argv) {
    commandline::Program line(
        "zorbet-rsc", "Packs pictures, sounds, fonts and cursors into resource libraries",
        "It is for the authors of zorbet's games. It shows and unpacks libraries, too, makes\n"
        "movies, and bundles games for others.");
    line.setManual({1, {"zorbet(6)", "zorbet-mps(1)"}});
    line.setVersion(versionText());
    addPack(line);
    addExtract(line);
    addList(line);
    addMap(line);
    addMovie(line);
    addBundle(line);
    return line.run(argc, argv, std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv) {
    return commandline::runProgram("zorbet-rsc", [&] { return run(argc, argv); });
}
