#include "commands/commands.h"

#include "movies/makemovie.h"

#include "commandline/commandline.h"

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr double kTicksOfSecond = 100000; ///< hundredths of a millisecond
constexpr double kSlowestRate = 0.02;     ///< frames a second
constexpr double kFastestRate = 1000;

constexpr const char* kAboutMovie =
    R"(Frames have one size, whose sides are multiples of 4. They share 236 colours.

Example:
  zorbet-rsc movie storm/ --sound storm.wav -o my-game/storm.smk)";

void addTimeOptions(CLI::App& command, const std::shared_ptr<MovieOptions>& options) {
    const auto setRate = [options](double rate) {
        options->frameTime = static_cast<int>(kTicksOfSecond / rate);
    };
    CLI::Option* rate = tools::named(command.add_option_function<double>(
                                         "--fps", setRate, "Frames a second; 15 without it"),
                                     "N")
                            ->check(tools::within(kSlowestRate, kFastestRate));
    tools::named(command.add_option("--frame-time", options->frameTime,
                                    "Hundredths of a millisecond from frame to frame,\n"
                                    "instead of --fps"),
                 "N")
        ->check(tools::within(MovieOptions::kShortestFrameTime, MovieOptions::kLongestFrameTime))
        ->excludes(rate);
}

void addSoundOptions(CLI::App& command, const std::shared_ptr<MovieOptions>& options) {
    tools::named(command.add_option("--sound", options->sound, "Sound file to be heard with it"),
                 "FILE");
    command.add_flag_callback(
        "--unpacked", [options] { options->packSound = false; }, "Store the sound as it is");
}

void addColourOptions(CLI::App& command, MovieColourOptions& colours) {
    CLI::Option* at =
        tools::named(command.add_option("--palette-at", colours.paletteAt,
                                        "From this frame on, counted from 1, there is "
                                        "another\npalette; may be given many times"),
                     "N")
            ->allow_extra_args(false);
    tools::named(command.add_option("--palette", colours.palette,
                                    "Indexed PNG whose palette is used instead of one made\n"
                                    "from the frames"),
                 "FILE")
        ->excludes(at);
    command.add_flag("--remap", colours.remap, "Treat indexed frames as truecolour ones");
}

} // namespace

void addMovieCommand(tools::CommandLine& line) {
    const auto options = std::make_shared<MovieOptions>();
    CLI::App& command = line.add("movie", "Make a movie out of pictures and a sound",
                                 "[OPTIONS] FRAME... -o FILE", kAboutMovie);
    command
        .add_option("FRAME", options->frames,
                    "PNG files in their order, or a folder of them in the\n"
                    "order of their names")
        ->required();
    tools::named(command.add_option("-o,--output", options->output, "The movie, NAME.smk"), "FILE")
        ->required();
    addTimeOptions(command, options);
    addSoundOptions(command, options);
    command.add_flag("--ring", options->ring,
                     "Add a frame that leads from the last one to the\n"
                     "second, for playing in rounds");
    addColourOptions(command, options->colours);
    command.callback([options, &line] { line.exitCode() = runMovie(*options, std::cerr); });
}

} // namespace rsc
