#include "startup/commandline.h"

#include "gametest/gametests.h"
#include "startup/makegame.h"

#include "formats/base/scanner.h"
#include "omlog.h"

#include "platform/commandline/commandline.h"
#include "platform/host/faces/outlinefaces.h"
#include "platform/host/files/secondwall.h"
#include "platform/host/game/comfort.h"
#include "platform/host/game/gameinfo.h"
#include "platform/host/screen/pointers.h"
#include "platform/host/speech/synthesizer.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr int kMaxScreenSide = 8192;

// When what the author saved is loaded again.
constexpr const char* kOnKey = "on-key";
constexpr const char* kAtOnce = "at-once";

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
    text += platform::Synthesizer::kAvailable
                ? "\nspoken texts: Speech Dispatcher, where it is installed"
                : "\nspoken texts: none (built without libspeechd)";
    const int wall = platform::secondWallVersion();
    text += wall > 0 ? "\nfence: that of the program, and Landlock " + std::to_string(wall) +
                           " of this machine"
                     : "\nfence: that of the program (this machine has no Landlock)";
    if (content.empty()) return text;
    const platform::GameInfo game = platform::readGameInfo(content);
    return text + "\ngame: " + game.title + (game.version.empty() ? "" : " ") + game.version;
}

using formats::inQuotes;

/// What the command line says itself goes before what the file says.
bool readInput(const std::string& file, bool hasStep, CommandLine& line) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        std::fprintf(stderr, "zorbet: the input file %s cannot be read: %s\n",
                     inQuotes(file).c_str(), std::strerror(errno));
        return false;
    }
    auto parsed = platform::parseVisit(input);
    if (const auto* error = std::get_if<platform::TimelineError>(&parsed)) {
        std::fprintf(stderr, "%s:%d: %s\n", file.c_str(), error->line, error->text.c_str());
        return false;
    }
    auto& visit = std::get<platform::Visit>(parsed);
    line.timeline = std::move(visit.timeline);
    if (!line.seed) line.seed = visit.seed;
    if (!hasStep) line.stepMs = visit.stepMs.value_or(line.stepMs);
    if (line.scene.empty()) line.scene = visit.scene;
    if (line.language.empty()) line.language = visit.language;
    // Of one that was recorded and ended before its first turns were written.
    if (visit.data && visit.turns.empty() && !line.untilMs)
        line.untilMs = line.timeline.empty() ? 0 : line.timeline.back().timeMs;
    line.turns = std::move(visit.turns);
    line.data = std::move(visit.data);
    return true;
}

constexpr const char* kArguments =
    R"([--content DIR] [--cd DIR] [--home DIR] [--seed N] [--scene NAME]
              [--language TAG] [--trust] [--components] [--author [--reload WHEN]] [--keys]
              [--speak] [--pointer N] [--double-click MS] [--calm]
              [--kiosk [KEY]] [--record FILE] [--profile FILE]
              [--headless [--input FILE] [--until MS] [--step MS] [--screen WxHxD]
                          [--machine LIST] [--record-sound DIR]])";

/// What stands at the end of the help.
std::vector<commandline::Section> sections() {
    return {
        {"Keys in the window",
         "Alt+Enter and F11 switch the full screen on and off, Ctrl+Q asks whether to leave the\n"
         "game, Shift+F1 tells the version, Shift+F5 switches playing with keys on and off,\n"
         "Shift+F6 spoken texts, Shift+F7 asks how you want to play: all of this, a larger\n"
         "pointer, slower double clicks. With --author Shift+F2 opens the console, Shift+F3 loads\n"
         "the running scene again with all that was saved, Ctrl+Shift+F3 keeps its variables.\n"
         "With --record Shift+F4 takes a picture."},
        {"Keys that play, after Shift+F5 or --keys",
         "Tab, Shift+Tab and the arrows move the mark, Enter and the space bar click, Ctrl+Enter\n"
         "clicks twice. What can be dragged is taken by Enter, moved by the arrows to where it\n"
         "can be put, or by Ctrl and arrows a little, and let go by Enter; Esc puts it back."},
        {"Files",
         "game.ini in the game's folder says who the game is. Saved games, ZORBET.DAT, and what "
         "the\n"
         "player chose, settings.ini, lie in zorbet/IDENTIFIER in the user's data folder. The "
         "log,\n"
         "zorbelog.txt, lies in the game's folder, or with the saved games when that is not to be\n"
         "written to."},
        {"Environment",
         "XDG_DATA_HOME is the user's data folder (without it ~/.local/share), XDG_CONFIG_HOME "
         "that\n"
         "of what a player permits to games, XDG_STATE_HOME that of the log when it can lie "
         "nowhere\n"
         "else. LANGUAGE, LC_ALL, LC_MESSAGES and LANG choose the language of the game and of the\n"
         "program's boxes. SDL_VIDEODRIVER and SDL_AUDIODRIVER choose how the window and the sound "
         "are "
         "made."},
        {"Exit codes", "0 the game ended, 1 a script is missing, or a file cannot be written, 2 "
                       "the command line\n"
                       "is wrong or there is no window."}};
}

constexpr const char* kAboutNew =
    R"(DIR must not be there yet, or be empty. The game that it gets runs at once: a garden with
a hedgehog and a puzzle, whose README.md tells what to change first. The exit code is 1 when
it could not be made.

Example:
  zorbet new my-game --title "The Pond")";

/// A reader of values in a form of their own: `take` tells whether it is one.
commandline::Reader reader(const std::function<bool(const std::string&)>& take,
                           const std::string& otherwise) {
    return [=](const std::string& value) {
        return take(value) ? std::string() : inQuotes(value) + otherwise;
    };
}

commandline::Reader screenReader(platform::ScreenMode& screen) {
    return reader(
        [&screen](const std::string& value) {
            const auto mode = parseScreen(value);
            screen = mode.value_or(screen);
            return mode.has_value();
        },
        " is no screen; one is 640x480x8: width, height, and 1, 4, 8, 16, 24 or 32 bits a pixel");
}

/// Claims, with commas between them.
commandline::Reader machineReader(platform::MachineClaims& machine) {
    return [&machine](const std::string& list) {
        for (std::string_view rest = list;;) {
            const std::string_view claim = rest.substr(0, rest.find(','));
            if (!readClaim(claim, machine))
                return inQuotes(claim) + " is not known; \"zorbet --help\" has the words";
            if (claim.size() == rest.size()) return std::string();
            rest.remove_prefix(claim.size() + 1);
        }
    };
}

commandline::Reader breakPointReader(std::optional<platform::BreakPoint>& breakPoint) {
    return reader(
        [&breakPoint](const std::string& value) {
            breakPoint = parseBreakPoint(value);
            return breakPoint.has_value();
        },
        " is none; one is 3:kill: a number from 1, and error, full, short or kill");
}

commandline::Reader reloadReader(std::optional<bool>& atOnce) {
    return reader(
        [&atOnce](const std::string& value) {
            atOnce = value == kAtOnce;
            return *atOnce || value == kOnKey;
        },
        std::string(" is none; write ") + kOnKey + " or " + kAtOnce);
}

commandline::Reader leavingKeyReader(std::optional<platform::LeavingKey>& key) {
    return reader(
        [&key](const std::string& value) {
            key = value.empty() ? platform::LeavingKey{} : platform::parseLeavingKey(value);
            return key.has_value();
        },
        " is no key to leave by; one is Ctrl-Alt-Q: Ctrl- or Alt- in front, and none that the "
        "desktop keeps for itself, as Alt-F4");
}

/// Throws commandline::Mistake.
void checkKiosk(const CommandLine& line) {
    if (!line.kiosk) return;
    if (line.headless)
        throw commandline::Mistake("--kiosk: is for a game in a window; leave out --headless");
    if (line.author)
        throw commandline::Mistake("--kiosk: has no keys for authors; leave out --author");
    if (!line.record.empty())
        throw commandline::Mistake(
            "--kiosk: begins again and again, which is no visit; leave out --record");
}

/// Throws commandline::Mistake.
void checkReload(const CommandLine& line) {
    if (!line.reloadsAtOnce) return;
    if (!line.author)
        throw commandline::Mistake("--reload: is for who makes the game; add --author");
    if (line.headless)
        throw commandline::Mistake("--reload: is for a game in a window; leave out --headless");
    if (!line.record.empty())
        throw commandline::Mistake(
            "--reload: makes another visit of the one that is recorded; leave "
            "out --record");
}

/// What is there with --headless only.
class HeadlessOptions {
  public:
    HeadlessOptions(commandline::Command& command, CommandLine& line) : line_(line) {
        add(command, "--input", &input_, "File of what happens from outside", "FILE");
        add(command, "--until", &line.untilMs, "End at this time, as if the window were closed",
            "MS");
        add(command, "--step", &line.stepMs, "Time of one turn of the program (default 1)", "MS")
            .within(1, platform::kMostStepMs);
        add(command, "--screen", screenReader(line.screen),
            "Screen that the program sees (default 640x480x8)", "WxHxD");
        add(command, "--machine", machineReader(line.machine),
            "What the machine lacks: disk=BYTES, memory=BYTES,\n"
            "processor=386, sound=none, driver=fixed, driver=none",
            "LIST");
        add(command, "--record-sound", &line.recordSound, "Folder for what would be heard", "DIR");
        add(command, "--break-file", breakPointReader(line.breakPoint),
            "File operation that fails, for tests", "N:HOW");
    }

    /// Throws commandline::Mistake; false when the input file cannot be read, which is told.
    [[nodiscard]] bool finish() {
        for (const commandline::Option& option : options_)
            if (option.isGiven() && !line_.headless)
                throw commandline::Mistake(option.name() +
                                           ": is for runs without a window; add --headless");
        if (line_.headless && !line_.record.empty())
            throw commandline::Mistake("--record: is for a window; leave --headless out");
        return input_.empty() || readInput(input_, hasStep(), line_);
    }

  private:
    [[nodiscard]] bool hasStep() const {
        return std::ranges::any_of(options_, [](const commandline::Option& option) {
            return option.name() == "--step" && option.isGiven();
        });
    }
    const commandline::Option& add(commandline::Command& command, const std::string& name,
                                   const commandline::Target& target,
                                   const std::string& description, const std::string& value) {
        options_.push_back(command.add(name, target, description, value));
        return options_.back().under("Only with --headless");
    }

    CommandLine& line_;
    std::string input_;
    std::vector<commandline::Option> options_;
};

void addOptions(commandline::Command& command, CommandLine& line) {
    command.add("--content", &line.content, "Folder of the game (default: the sample game)", "DIR")
        .folder();
    command.add("--cd", &line.cd, "Folder that is to be the CD in drive D:", "DIR").folder();
    command.add("--home", &line.home,
                "Folder for saved games and settings (default: the game's\n"
                "own, in the user's data folder)",
                "DIR");
    command.add("--seed", &line.seed, "Seed of the random numbers instead of the time", "N");
    command.add("--scene", &line.scene,
                "Begin with this script, with the player that tests/player.mps\n"
                "of the game prepares; nothing is kept",
                "NAME");
    command.add("--language", &line.language,
                "Of the game's languages this one (default: the system's, and\n"
                "without a window the game's own)",
                "TAG");
    command.add("--trust", &line.trusted,
                "The game may open all files of this machine that you may: for\n"
                "your own work only");
    command.add("--components", &line.components,
                "The game may bring native code (components), which can do all\n"
                "that you can");
    command.add("--author", &line.author,
                "For who makes the game: warnings of scripts are told here with\n"
                "their places, Shift+F2 opens a console with messages, variables\n"
                "and a line to run, and the title tells how many pictures a second\n"
                "there are");
    command.add("--reload", reloadReader(line.reloadsAtOnce),
                "With --author: when what was saved is loaded again, on-key\n"
                "(Shift+F3, as without this option) or at-once",
                "WHEN");
    command.add("--keys", &line.playsByKeys,
                "Play with keys alone: Tab and the arrows move a mark over all\n"
                "that can be clicked, Enter clicks it (Shift+F5 in the window)");
    command
        .add("--kiosk", leavingKeyReader(line.kiosk),
             "For a class room: the full screen, left by this key only (default:\n"
             "Ctrl-Alt-Q); a game that ends begins again",
             "[KEY]")
        .mayLackValue();
    command.add("--speak", &line.speaksTexts,
                "Speak texts, and with --keys what the mark is on (Shift+F6 in\n"
                "the window)");
    command
        .add("--pointer", &line.comfort.pointer,
             "Pointer of the mouse so many times as large, 1 to 3", "N")
        .within(1, platform::kMostPointerScale);
    command
        .add("--double-click", &line.comfort.doubleClickMs,
             "Two presses within so many milliseconds, 200 to 2000, are a\n"
             "double click (default: the system's)",
             "MS")
        .within(platform::kLeastDoubleClickMs, platform::kMostDoubleClickMs);
    command.add("--calm", &line.comfort.calm,
                "Hold still what flashes more than three times a second");
    command.add("--record", &line.record,
                "File that gets what happens in the window, to be played again\n"
                "by --input; Shift+F4 takes a picture",
                "FILE");
    command.add("--profile", &line.profile,
                "File that gets where the time of scripts goes; see \"zorbet-mps\n"
                "profile\"",
                "FILE");
    command.add("--headless", &line.headless,
                "No window and no sound to be heard, on a clock of its own");
}

constexpr const char* kAboutTest =
    R"(Plays every tests/NAME.input of the game without a window, in a copy of the game and with
nothing saved. What it expects must be so, and its screenshots must be equal to the pictures
beside it. What failed tests left, with the differences of pictures, is kept in a folder.
The exit code is 0 when all passed, 1 when some failed, 2 when there is nothing to play.

Examples:
  zorbet test my-game
  zorbet test my-game harbour --renew)";

void addTests(commandline::Program& program, gametest::Options& options) {
    commandline::Command command = program.add(
        "test", "Play the tests of a game", "DIR [NAME...] [--junit FILE] [--renew]", kAboutTest,
        [&options] { return gametest::run(options, std::cout, std::cerr); });
    command.add("DIR", &options.game, "The game's folder").folder().required();
    command.add("NAME", &options.names, "Tests; without any, all of them");
    command.add("--results", &options.results,
                "Folder for what failed tests left (default:\nzorbet-tests, here)", "FOLDER");
    command.add("--junit", &options.junit, "Write the result for build servers, too", "FILE");
    command.add("--renew", &options.renew, "Store the pictures anew; look at each");
}

/// `first` is the first word of the command line.
void addNew(commandline::Program& program, NewGame& game, std::string_view first) {
    const auto work = [&game, first] {
        if (first != "new") throw commandline::Mistake("no option may stand before \"new\"");
        return makeGame(game, std::cout, std::cerr);
    };
    commandline::Command command =
        program.add("new", "Make a small game, to be changed into one of your own",
                    "DIR [--title TEXT]", kAboutNew, work);
    command.add("DIR", &game.folder, "Folder of the new game").required();
    command.add("--title", &game.title, "Its title (default: the folder's name)", "TEXT");
}

} // namespace

std::variant<CommandLine, int> parseCommandLine(int argc, char** argv) {
    commandline::Program program(
        "zorbet", "Plays games that are made of scripts, pictures and sounds",
        "A game is a folder with the script Startup.mps and a folder RSC of resource libraries.\n"
        "Without options the program opens a window and plays the sample game.");
    program.setManual({6, {"zorbet-mps(1)", "zorbet-rsc(1)"}});
    CommandLine line;
    bool isGame = false;
    bool version = false;
    std::function<int()> start;
    commandline::Command game =
        program.byItself(kArguments, sections(), [&start] { return start(); });
    addOptions(game, line);
    HeadlessOptions headless(game, line);
    game.add("--version", &version,
             "Print the version, what the program was built with, and\n"
             "with --content the game's title and version");
    NewGame newGame;
    addNew(program, newGame, argc > 1 ? argv[1] : "");
    start = [&] {
        if (version) {
            std::cout << versionText(line.content) << std::endl;
            return 0;
        }
        checkReload(line);
        checkKiosk(line);
        isGame = headless.finish();
        return isGame ? 0 : commandline::kWrong;
    };
    gametest::Options tests;
    addTests(program, tests);
    const int exitCode = program.run(argc, argv, std::cout, std::cerr);
    if (!isGame) return exitCode;
    return line;
}
