#include "commandline.h"

#include "omlog.h"
#include "omreader.h"

#include "platform/host/hostmovies.h"
#include "platform/host/outlinefaces.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr int kWrongUse = 2;
constexpr int kMaxScreenSide = 8192;

/// "800x600x16".
std::optional<platform::ScreenMode> parseScreen(const std::string& text) {
    OMScanner scanner(text);
    const auto width = scanner.number();
    if (!width || !scanner.literal("x")) return std::nullopt;
    const auto height = scanner.number();
    if (!height || !scanner.literal("x")) return std::nullopt;
    const auto depth = scanner.number();
    const auto isSide = [](int side) { return side >= 1 && side <= kMaxScreenSide; };
    const auto isDepth = [](int bits) {
        return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    };
    if (!depth || !scanner.atEnd() || !isSide(*width) || !isSide(*height) || !isDepth(*depth))
        return std::nullopt;
    return platform::ScreenMode{*width, *height, *depth};
}

/// "disk=N", "memory=N", "processor=386", "sound=none", "driver=fixed" or "driver=none".
bool readClaim(std::string_view claim, platform::MachineClaims& machine) {
    using Driver = platform::HostDisplay::Driver;
    const std::size_t end = std::min(claim.find('='), claim.size());
    const std::string_view key = claim.substr(0, end);
    const std::string_view value = claim.substr(std::min(end + 1, claim.size()));
    std::uint64_t bytes = 0;
    const auto [rest, error] = std::from_chars(value.data(), value.data() + value.size(), bytes);
    const bool isNumber = error == std::errc() && rest == value.data() + value.size();
    if (key == "disk" && isNumber)
        machine.freeSpace = bytes;
    else if (key == "memory" && isNumber)
        machine.availableMemory = bytes;
    else if (claim == "processor=386")
        machine.intel386 = true;
    else if (claim == "sound=none")
        machine.sound = false;
    else if (claim == "driver=fixed")
        machine.driver = Driver::FixedMode;
    else if (claim == "driver=none")
        machine.driver = Driver::None;
    else
        return false;
    return true;
}

/// "17:kill".
std::optional<platform::BreakPoint> parseBreakPoint(const std::string& text) {
    using platform::BreakHow;
    constexpr std::pair<std::string_view, BreakHow> kHows[] = {{"error", BreakHow::Error},
                                                               {"full", BreakHow::Full},
                                                               {"short", BreakHow::Short},
                                                               {"kill", BreakHow::Kill}};
    OMScanner scanner(text);
    const auto operation = scanner.number();
    if (!operation || *operation < 1 || !scanner.literal(":")) return std::nullopt;
    const std::string_view word = scanner.word();
    const auto* how = std::ranges::find(kHows, word, &std::pair<std::string_view, BreakHow>::first);
    if (how == std::end(kHows) || !scanner.atEnd()) return std::nullopt;
    return platform::BreakPoint{static_cast<std::uint32_t>(*operation), how->second,
                                std::string(OMLog::kFileName)};
}

std::string versionText() {
    std::string text = "zorbet " ZORBET_VERSION "\n";
    text += ZORBET_HAVE_SDL ? "window: SDL2\n" : "window: none (built without SDL2)\n";
    text += platform::OutlineFaces::kAvailable
                ? "TrueType faces: FreeType\n"
                : "TrueType faces: none (built without FreeType and fontconfig)\n";
    text += platform::HostMovies::kAvailable
                ? "movies: libavcodec"
                : "movies: none (built without libavformat and libavcodec)";
    return text;
}

bool readInput(const std::string& file, platform::Timeline& timeline) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        std::fprintf(stderr, "%s: cannot be read\n", file.c_str());
        return false;
    }
    auto parsed = platform::parseTimeline(input);
    if (const auto* error = std::get_if<platform::TimelineError>(&parsed)) {
        std::fprintf(stderr, "%s:%d: %s\n", file.c_str(), error->line, error->text.c_str());
        return false;
    }
    timeline = std::move(std::get<platform::Timeline>(parsed));
    return true;
}

} // namespace

std::variant<CommandLine, int> parseCommandLine(int argc, char** argv) {
    CommandLine line;
    std::string input;
    std::string screen;
    std::vector<std::string> claims;
    std::string breakPoint;

    CLI::App app("Plays a game of scripts and resource libraries.", "zorbet");
    app.add_option("--content", line.content, "Folder of the game (default: the sample game)")
        ->check(CLI::ExistingDirectory);
    app.add_option("--cd", line.cd, "Folder that drive D: stands for")
        ->check(CLI::ExistingDirectory);
    app.add_option("--home", line.home, "Folder for log and saved games");
    app.add_option("--seed", line.seed, "Seed of the random generator instead of the time");
    auto* headless = app.add_flag("--headless", line.headless, "No window and no sound device");
    app.add_option("--input", input, "File of what happens from outside")->needs(headless);
    app.add_option("--until", line.untilMs, "End the main loop at this virtual millisecond")
        ->needs(headless);
    app.add_option("--step", line.stepMs, "Virtual milliseconds of one pass (default 1)")
        ->needs(headless)
        ->check(CLI::Range(1u, 60000u));
    app.add_option("--screen", screen, "Screen that the program sees (default 640x480x8)")
        ->needs(headless);
    app.add_option("--machine", claims,
                   "What the machine lacks: disk=BYTES, memory=BYTES, processor=386, sound=none, "
                   "driver=fixed or none")
        ->needs(headless)
        ->delimiter(',');
    app.add_option("--record-sound", line.recordSound, "Folder for what would have been heard")
        ->needs(headless);
    app.add_option("--break-file", breakPoint, "File operation that fails, for tests: N:HOW")
        ->needs(headless);
    app.set_version_flag("--version", versionText());
    try {
        app.parse(argc, argv);
        if (!screen.empty()) {
            const auto mode = parseScreen(screen);
            if (!mode) throw CLI::ValidationError("--screen", "expected WIDTHxHEIGHTxDEPTH");
            line.screen = *mode;
        }
        for (const std::string& claim : claims)
            if (!readClaim(claim, line.machine))
                throw CLI::ValidationError("--machine", "does not know " + claim);
        if (!breakPoint.empty()) {
            line.breakPoint = parseBreakPoint(breakPoint);
            if (!line.breakPoint)
                throw CLI::ValidationError("--break-file", "expected N:error, full, short or kill");
        }
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << error.what() << "\n\n" << app.help();
        return kWrongUse;
    }
    if (!input.empty() && !readInput(input, line.timeline)) return kWrongUse;
    return line;
}
