// The command line of the program.
#pragma once

#include "platform/display.h"
#include "platform/headless/breakingfiles.h"
#include "platform/headless/claimedmachine.h"
#include "platform/host/game/comfort.h"
#include "platform/host/visit/leavingkey.h"
#include "platform/host/visit/timeline.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

struct CommandLine {
    std::string content; ///< host folder; empty: the sample game
    std::string cd;
    std::string home;
    std::optional<std::uint32_t> seed;
    bool trusted = false;                      ///< no fence around the game's files
    bool components = false;                   ///< native code of the game is loaded
    bool author = false;                       ///< shows what concerns the one who makes the game
    std::optional<bool> reloadsAtOnce;         ///< what the author saves; not given: when asked to
    bool playsByKeys = false;                  ///< without a mouse
    std::optional<platform::LeavingKey> kiosk; ///< the one that ends a game in a class room
    bool speaksTexts = false;                  ///< to who cannot read
    platform::Comfort comfort;                 ///< of the window; its calm also without one
    bool headless = false;
    std::string
        language;      ///< a tag of the game's; empty: by the system, or without a window the first
    std::string scene; ///< a script to begin with; empty: the game's first one
    platform::Timeline timeline;
    std::vector<platform::Turns> turns; ///< times of the first turns, when they are known
    std::optional<std::string> data;    ///< bytes of the data file to begin with
    std::string record;                 ///< host file for the visit; empty: it is not recorded
    std::optional<std::uint32_t> untilMs;
    std::uint32_t stepMs = 1;
    platform::ScreenMode screen;
    platform::MachineClaims machine;
    std::string profile;     ///< host file; empty: no profile is made
    std::string recordSound; ///< host folder; empty: nothing is recorded
    std::optional<platform::BreakPoint> breakPoint;
};

/// The options, or the exit code after --help, --version, or a mistake, which is told on standard
/// error.
[[nodiscard]] std::variant<CommandLine, int> parseCommandLine(int argc, char** argv);
