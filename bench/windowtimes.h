// How long a trinket window takes for its idle cycles and its hit tests.
#pragma once

#include "cputime.h"

#include <cstddef>

struct WindowTimes {
    Samples idleNanoseconds;   ///< a cycle in which nothing has changed
    Samples movingNanoseconds; ///< a cycle in which every animation moves
    Samples pixelNanoseconds;  ///< the hit test of one animation
    Samples windowNanoseconds; ///< finding what lies under the pointer
    double coverage = 0;       ///< animations over a pixel of the window, in the mean
};

inline constexpr std::size_t kIdleTrinkets = 1000;
inline constexpr std::size_t kMovingAnimations = 300;

[[nodiscard]] WindowTimes measureWindow(int repetitions);
