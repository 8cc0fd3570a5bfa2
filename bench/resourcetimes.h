// How long the resource manager takes to find a resource, and a stream to open and read one.
#pragma once

#include "cputime.h"

#include <cstddef>

struct LookupTimes {
    std::size_t resources = 0;
    Samples nanoseconds;      ///< of one look-up in a sorted table
    Samples firstNanoseconds; ///< of the first one after a change, which sorts
};

[[nodiscard]] LookupTimes measureLookups(int repetitions);

/// Nanoseconds of opening a resource and reading it whole.
struct ReadTimes {
    std::size_t bytes = 0; ///< of the resource
    Samples disk;          ///< the library stays open, as in the game; the system has its pages
    Samples memory;        ///< the library is cached in memory
    Samples plain;         ///< a plain file of that size: open, read, close
};

[[nodiscard]] ReadTimes measureReads(int repetitions);
