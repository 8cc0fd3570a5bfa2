// The entry of the program: command line, platform, game.
#include "app.h"
#include "omplatform.h"
#include "startup/commandline.h"
#include "startup/programresources.h"
#include "startup/visitdata.h"

#include "formats/base/latin1.h"
#include "platform/commandline/commandline.h"
#include "platform/headless/headlessplatform.h"
#include "platform/host/files/scratchfolder.h"
#include "platform/host/game/datafolder.h"
#include "platform/host/game/gameinfo.h"
#include "platform/host/game/playerpermits.h"
#include "platform/host/machine/hostmachine.h"
#include "platform/host/machine/installation.h"
#include "platform/host/visit/visitwriter.h"
#if ZORBET_HAVE_SDL
#include "platform/sdl/sdlplatform.h"
#endif

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr int kNoWindow = 2;
constexpr int kNoPlace = 1;
constexpr const char* kSampleGame = "org.zorbet.Zorbet"; ///< the identifier of the sample

/// What is known before there is a machine.
struct Start {
    CommandLine line;
    platform::HostOptions host;
    platform::GameInfo game;
};

std::unique_ptr<platform::Platform> makeHeadless(const Start& start, const std::string& language,
                                                 const RProgramTexts& texts) {
    const CommandLine& line = start.line;
    platform::HeadlessOptions options;
    options.host = start.host;
    options.host.freeSpace = line.machine.freeSpace;
    options.machine = line.machine;
    options.timeline = line.timeline;
    options.untilMs = line.untilMs;
    options.turns = line.turns;
    options.stepMs = line.stepMs;
    options.playsByKeys = line.playsByKeys;
    options.speaksTexts = line.speaksTexts;
    options.calm = line.comfort.calm;
    options.buttons = texts.buttons();
    options.language = language;
    options.screen = line.screen;
    options.recordSound = line.recordSound;
    options.profile = line.profile;
    options.breakPoint = line.breakPoint;
    options.resources = texts.resources();
    options.versionStrings = RVersionStrings();
    return std::make_unique<platform::HeadlessPlatform>(options);
}

/// None without an author, nor while a visit is recorded, of which it would make another one.
std::optional<platform::WorkshopOptions> workshopOptions(const Start& start) {
    if (!start.line.author || !start.line.record.empty()) return std::nullopt;
    return platform::WorkshopOptions{.game = start.host.content,
                                     .cd = start.host.cd,
                                     .packer = platform::programNamed("zorbet-rsc"),
                                     .atOnce = start.line.reloadsAtOnce.value_or(false)};
}

std::unique_ptr<platform::Platform> makeWindow(const Start& start, const std::string& language,
                                               const RProgramTexts& texts,
                                               platform::VisitWriter* visit) {
#if ZORBET_HAVE_SDL
    auto made = platform::makeSdlPlatform({.host = start.host,
                                           .game = start.game,
                                           .author = start.line.author,
                                           .playsByKeys = start.line.playsByKeys,
                                           .kiosk = start.line.kiosk,
                                           .speaksTexts = start.line.speaksTexts,
                                           .comfort = start.line.comfort,
                                           .workshop = workshopOptions(start),
                                           .profile = start.line.profile,
                                           .visit = visit,
                                           .screen = start.line.screen,
                                           .resources = texts.resources(),
                                           .versionStrings = RVersionStrings(),
                                           .buttons = texts.buttons(),
                                           .language = language});
    if (auto* ready = std::get_if<std::unique_ptr<platform::Platform>>(&made))
        return std::move(*ready);
    std::fprintf(stderr,
                 "zorbet: no window can be opened (%s). Start it on a desktop, or without a window "
                 "by --headless.\n",
                 std::get<std::string>(made).c_str());
#else
    static_cast<void>(start);
    static_cast<void>(language);
    static_cast<void>(texts);
    static_cast<void>(visit);
    std::fputs("zorbet: it was built without SDL2 and has no window. Use --headless, or install "
               "libsdl2-dev and build it again.\n",
               stderr);
#endif
    return nullptr;
}

void complain(const std::vector<std::string>& problems) {
    for (const std::string& problem : problems)
        std::fprintf(stderr, "zorbet: %s\n", problem.c_str());
}

/// The folder of the game that is played when none is named; nothing when it is not there, which is
/// told.
std::optional<std::string> sampleGame() {
    const std::filesystem::path folder = platform::dataNamed("sample");
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) return folder.string();
    complain(
        {"the sample game is not in " + folder.string() +
         "; install it too (the package zorbet-sample), or name a game's folder by --content"});
    return std::nullopt;
}

Start prepare(const CommandLine& line) {
    Start start{line, {line.content, line.cd, line.home}, {}};
    start.host.trusted = line.trusted;
    start.host.components = line.components || platform::permitsComponents(start.host.content);
    start.game = platform::readGameInfo(start.host.content);
    if (line.home.empty()) {
        if (start.game.identifier == kSampleGame) platform::moveOldSaves(kSampleGame);
        start.host.home = platform::claimDataFolder(start.game.identifier, start.host.content);
    }
    return start;
}

/// The tag of a language of the game; empty when it has none. What was asked for and is not there
/// is told.
std::string languageOf(const platform::GameInfo& game, const CommandLine& line) {
    std::vector<std::string> wanted;
    if (!line.language.empty())
        wanted = {line.language};
    else if (!line.headless)
        wanted = platform::systemLanguages();
    std::string chosen = platform::chooseLanguage(game, wanted);
    if (!line.language.empty() && !platform::belongsToLanguage(line.language, chosen))
        complain({"the game is not in the language " + line.language + ", but in " +
                  (chosen.empty() ? "none that its game.ini tells" : chosen)});
    return chosen;
}

/// On the installed platform; the exit code.
int play(const CommandLine& line, const std::string& language,
         std::optional<platform::VisitWriter>& visit) {
    std::optional<std::uint32_t> seed = line.seed;
    if (visit) {
        if (!seed) seed = static_cast<std::uint32_t>(std::time(nullptr));
        visit->begin(*seed, line.scene, language, RDataFileBytes());
    }
    if (const auto problem = line.data ? RBringDataFile(*line.data) : std::nullopt) {
        complain({*problem});
        return kNoPlace;
    }
    return RGameMain({seed, formats::latin1FromUtf8(line.scene).value_or(line.scene), language});
}

/// What the command line leaves open: the game, and the home of a visit that is not kept. The exit
/// code when that cannot be, which is told.
std::optional<int> complete(CommandLine& line, std::optional<platform::ScratchFolder>& scratch) {
    try {
        if (line.home.empty() && (!line.scene.empty() || line.data))
            line.home = scratch.emplace().path().string();
    } catch (const std::filesystem::filesystem_error& error) {
        complain({error.what()});
        return kNoPlace;
    }
    if (!line.content.empty()) return std::nullopt;
    const auto sample = sampleGame();
    line.content = sample.value_or("");
    return sample ? std::nullopt : std::optional(commandline::kWrong);
}

/// Makes the machine and plays; the exit code.
int playOnMachine(const Start& start) {
    const CommandLine& line = start.line;
    const std::string language = languageOf(start.game, line);
    const RProgramTexts texts(language, start.game.boxTexts);
    complain(texts.problems());
    std::optional<platform::VisitWriter> visit; // that is recorded
    if (!line.record.empty()) visit.emplace(line.record);
    platform::catchTermination();
    const auto machine = line.headless
                             ? makeHeadless(start, language, texts)
                             : makeWindow(start, language, texts, visit ? &*visit : nullptr);
    if (!machine) return kNoWindow;
    if (visit && !visit->open()) {
        complain({line.record + " cannot be made: " + std::strerror(errno) +
                  ". Name another file by --record"});
        return kNoPlace;
    }
    OMSetPlatform(machine.get());
    const int exitCode = play(line, language, visit);
    machine->programEnds(exitCode);
    OMSetPlatform(nullptr);
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    const auto parsed = parseCommandLine(argc, argv);
    if (const int* exitCode = std::get_if<int>(&parsed)) return *exitCode;
    CommandLine line = std::get<CommandLine>(parsed);
    std::optional<platform::ScratchFolder> scratch;
    if (const auto exitCode = complete(line, scratch)) return *exitCode;
    const Start start = prepare(line);
    complain(start.game.problems);
    return playOnMachine(start);
}
