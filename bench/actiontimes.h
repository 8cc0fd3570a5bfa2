// How long a pass of the main loop takes for actions that are active.
#pragma once

#include "cputime.h"

#include <cstddef>

struct ActionTimes {
    Samples delayNanoseconds; ///< a pass in which as many delays wait
    Samples moveNanoseconds;  ///< a pass with a frame in which as many trinkets move, unseen
};

inline constexpr std::size_t kActions = 1000;

[[nodiscard]] ActionTimes measureActions(int repetitions);
