// How long the program itself takes from its start to the first picture of a game with very many
// resources.
#pragma once

#include "gameprocess.h"

#include <cstddef>

inline constexpr std::size_t kStartResources = 8000;

/// Each process ends when it has shown the picture.
[[nodiscard]] ProcessTimes measureStart(int repetitions);
