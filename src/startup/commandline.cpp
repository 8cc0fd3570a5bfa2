#include "startup/commandline.h"

#include "formats/base/scanner.h"
#include "omlog.h"

#include "platform/host/faces/outlinefaces.h"
#include "platform/host/files/secondwall.h"
#include "platform/host/game/gameinfo.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
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
    formats::TextScanner scanner(text);
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
    formats::TextScanner scanner(text);
    const auto operation = scanner.number();
    if (!operation || *operation < 1 || !scanner.literal(":")) return std::nullopt;
    const std::string_view word = scanner.word();
    const auto* how = std::ranges::find(kHows, word, &std::pair<std::string_view, BreakHow>::first);
    if (how == std::end(kHows) || !scanner.atEnd()) return std::nullopt;
    return platform::BreakPoint{static_cast<std::uint32_t>(*operation), how->second,
                                std::string(OMLog::kFileName)};
}

/// `content` is the folder of a game, or empty.
std::string versionText(const std::string& content) {
    std::string text = "zorbet " ZORBET_VERSION "\n";
    text +=
        ZORBET_HAVE_SDL ? "window: SDL2\n" : "window: none, only --headless (built without SDL2)\n";
    text += platform::OutlineFaces::kAvailable
                ? "TrueType faces: FreeType"
                : "TrueType faces: none (built without FreeType and fontconfig)";
    const int wall = platform::secondWallVersion();
    text += wall > 0 ? "\nfence: that of the program, and Landlock " + std::to_string(wall) +
                           " of this machine"
                     : "\nfence: that of the program (this machine has no Landlock)";
    if (content.empty()) return text;
    const platform::GameInfo game = platform::readGameInfo(content);
    return text + "\ngame: " + game.title + (game.version.empty() ? "" : " ") + game.version;
}

using formats::inQuotes;

/// What is wrong with a folder that must be there; empty when nothing is.
std::string folderProblem(const std::string& folder) {
    std::error_code error;
    const auto status = std::filesystem::status(folder, error);
    if (!std::filesystem::exists(status))
        return "there is no folder " + inQuotes(folder) + "; give the name of one that is there";
    if (!std::filesystem::is_directory(status))
        return inQuotes(folder) + " is a file; give the name of the folder that it lies in";
    return {};
}

bool readInput(const std::string& file, platform::Timeline& timeline) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        std::fprintf(stderr, "zorbet: the input file %s cannot be read: %s\n",
                     inQuotes(file).c_str(), std::strerror(errno));
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

/// The options as they are written, before those that need a closer look are read.
struct Words {
    CommandLine line;
    std::string input;
    std::string screen;
    std::vector<std::string> claims;
    std::string breakPoint;
    bool version = false;
};

constexpr const char* kHeadlessOnly = "Only with --headless";

void addOptions(CLI::App& app, Words& words) {
    const auto option = [&app](const std::string& name, auto& value, const std::string& type,
                               const std::string& description) {
        return app.add_option(name, value, description)->type_name(type);
    };
    const CLI::Validator isFolder(folderProblem, "");
    CommandLine& line = words.line;
    option("--content", line.content, "DIR", "Folder of the game (default: the sample game)")
        ->check(isFolder);
    option("--cd", line.cd, "DIR", "Folder that is to be the CD in drive D:")->check(isFolder);
    option("--home", line.home, "DIR",
           "Folder for saved games and settings (default: the game's\n"
           "own, in the user's data folder)");
    option("--seed", line.seed, "N", "Seed of the random numbers instead of the time");
    app.add_flag("--trust", line.trusted,
                 "The game may open all files of this machine that you may: for\n"
                 "your own work only");
    app.add_flag("--components", line.components,
                 "The game may bring native code (components), which can do all\n"
                 "that you can");
    app.add_flag("--author", line.author,
                 "For who makes the game: the window's title tells how many\n"
                 "pictures a second are shown");
    app.add_flag("--headless", line.headless,
                 "No window and no sound to be heard, on a clock of its own");
    for (CLI::Option* each :
         {option("--input", words.input, "FILE", "File of what happens from outside"),
          option("--until", line.untilMs, "MS", "End at this time, as if the window were closed"),
          option("--step", line.stepMs, "MS", "Time of one turn of the program (default 1)")
              ->check(CLI::Range(1u, 60000u).description("")),
          option("--screen", words.screen, "WxHxD",
                 "Screen that the program sees (default 640x480x8)"),
          option("--machine", words.claims, "LIST",
                 "What the machine lacks: disk=BYTES, memory=BYTES,\n"
                 "processor=386, sound=none, driver=fixed, driver=none")
              ->delimiter(','),
          option("--record-sound", line.recordSound, "DIR", "Folder for what would be heard"),
          option("--break-file", words.breakPoint, "N:HOW",
                 "File operation that fails, for tests")})
        each->group(kHeadlessOnly);
    app.add_flag("--version", words.version,
                 "Print the version, what the program was built with, and\n"
                 "with --content the game's title and version");
    app.set_help_flag("-h,--help", "Print this");
    app.footer(
        "Keys in the window: Alt+Enter and F11 switch the full screen on and off, Ctrl+Q asks\n"
        "whether to leave the game, Shift+F1 tells the version.\n"
        "Exit codes: 0 the game ended, 1 a script is missing, 2 the command line is wrong or\n"
        "there is no window.");
}

/// Reads what stands in options of a form of their own. Throws CLI::ParseError.
void readWords(const CLI::App& app, Words& words) {
    const auto refuse = [](const char* option, const std::string& text, const char* remedy) {
        throw CLI::ValidationError(option, inQuotes(text) + remedy);
    };
    CommandLine& line = words.line;
    for (const CLI::Option* option : app.get_options())
        if (option->get_group() == kHeadlessOnly && option->count() > 0 && !line.headless)
            throw CLI::ValidationError(option->get_name(),
                                       "is for runs without a window; add --headless");
    if (!words.screen.empty()) {
        const auto mode = parseScreen(words.screen);
        if (!mode)
            refuse("--screen", words.screen,
                   " is no screen; one is 640x480x8: width, height, and 1, 4, 8, 16, 24 or 32 bits "
                   "a pixel");
        line.screen = *mode;
    }
    for (const std::string& claim : words.claims)
        if (!readClaim(claim, line.machine))
            refuse("--machine", claim, " is not known; the words are in the list below");
    if (!words.breakPoint.empty()) {
        line.breakPoint = parseBreakPoint(words.breakPoint);
        if (!line.breakPoint)
            refuse("--break-file", words.breakPoint,
                   " is none; one is 3:kill: a number from 1, and error, full, short or kill");
    }
}

} // namespace

std::variant<CommandLine, int> parseCommandLine(int argc, char** argv) {
    Words words;
    CLI::App app("Plays a game: a folder with the script Startup.mps and a folder RSC of resource "
                 "libraries.\nWithout options it opens a window and plays the sample game.",
                 "zorbet");
    addOptions(app, words);
    try {
        app.parse(argc, argv);
        readWords(app, words);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        std::cerr << "zorbet: " << error.what() << "\n\n" << app.help();
        return kWrongUse;
    }
    if (words.version) {
        std::cout << versionText(words.line.content) << std::endl;
        return 0;
    }
    if (!words.input.empty() && !readInput(words.input, words.line.timeline)) return kWrongUse;
    return words.line;
}
