// The game's main procedure: brings the program up in a fixed order, runs the main loop until the
// game ends, and takes everything down in reverse.
#pragma once

#include <cstdint>
#include <optional>

/// Runs the game on the installed platform; its exit code. `seed` replaces the time as the seed of
/// the random generator.
int RGameMain(std::optional<std::uint32_t> seed);
