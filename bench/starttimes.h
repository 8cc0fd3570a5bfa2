// How long the program itself takes from its start to the first picture of a game with very many
// resources.
#pragma once

#include "cputime.h"

#include <cstddef>

inline constexpr std::size_t kStartResources = 8000;

/// Nanoseconds of the whole process, which ends when it has shown the picture.
struct StartTimes {
    Samples processor;
    Samples clock;
};

/// Runs `zorbet`, which must lie beside this program, without a window.
[[nodiscard]] StartTimes measureStart(int repetitions);
