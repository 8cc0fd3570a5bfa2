// The game's main procedure: brings the program up in a fixed order, runs the main loop until the
// game ends, and takes everything down in reverse.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct RGameStart {
    std::optional<std::uint32_t> seed; ///< of the random numbers, instead of the time
    std::string scene;                 ///< the first script, if not the game's own
    std::string language;              ///< of the game's texts; empty: that of the scripts
};

/// Runs the game on the installed platform, again and again where the platform wants it; the exit
/// code.
int RGameMain(const RGameStart& start);
