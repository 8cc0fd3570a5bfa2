// Plays a game with the program itself, without a window, and tells what the process took.
#pragma once

#include "cputime.h"

#include <string>

/// Nanoseconds of whole processes.
struct ProcessTimes {
    Samples processor;
    Samples clock;
};

/// Runs `zorbet`, which must lie beside this program, on the game in a folder, which must end by
/// itself. Throws when it does not end well or shows a box.
[[nodiscard]] ProcessTimes playGame(const std::string& folder, int repetitions);
