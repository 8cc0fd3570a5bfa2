#include "commands.h"

#include "movie/makemovie.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace rsc {

namespace {

constexpr double kTicksOfSecond = 100000; ///< hundredths of a millisecond
constexpr double kSlowestRate = 0.02;     ///< frames a second
constexpr double kFastestRate = 1000;

void addTimeOptions(CLI::App& command, const std::shared_ptr<MovieOptions>& options) {
    const auto setRate = [options](double rate) {
        options->frameTime = static_cast<int>(kTicksOfSecond / rate);
    };
    CLI::Option* rate =
        command.add_option_function<double>("--fps", setRate, "Frames a second, 15 without it")
            ->check(CLI::Range(kSlowestRate, kFastestRate));
    command
        .add_option("--frame-time", options->frameTime,
                    "Hundredths of a millisecond from frame to frame, instead of --fps")
        ->check(CLI::Range(MovieOptions::kShortestFrameTime, MovieOptions::kLongestFrameTime))
        ->excludes(rate);
}

void addColourOptions(CLI::App& command, MovieColourOptions& colours) {
    CLI::Option* at = command
                          .add_option("--palette-at", colours.paletteAt,
                                      "Number of a frame, counted from 1, from which on there is "
                                      "another palette; may be given many times")
                          ->allow_extra_args(false);
    command
        .add_option("--palette", colours.palette,
                    "Indexed PNG whose palette is used instead of one made from the frames")
        ->excludes(at);
    command.add_flag("--remap", colours.remap, "Treat indexed frames as truecolour ones");
}

} // namespace

void addMovieCommand(CLI::App& app, int& exitCode) {
    const auto options = std::make_shared<MovieOptions>();
    CLI::App* command = app.add_subcommand("movie", "Make a movie out of pictures and a sound");
    command
        ->add_option("frames", options->frames,
                     "PNG files in their order, or a folder of them in the order of their names")
        ->required();
    command->add_option("-o,--output", options->output, "Movie file, FILE.smk")->required();
    addTimeOptions(*command, options);
    command->add_option("--sound", options->sound, "WAVE file to be heard with it");
    command->add_flag_callback(
        "--unpacked", [options] { options->packSound = false; }, "Store the sound as it is");
    command->add_flag(
        "--ring", options->ring,
        "Add a frame that leads from the last one to the second, for playing in rounds");
    addColourOptions(*command, options->colours);
    command->callback([options, &exitCode] { exitCode = runMovie(*options, std::cerr); });
}

} // namespace rsc
