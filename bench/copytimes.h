// What a copy in the background costs the main loop.
#pragma once

#include <cstddef>
#include <vector>

struct CopyTimes {
    std::size_t bytes = 0;
    double seconds = 0;         ///< from the request to the end of the copy
    std::vector<double> passMs; ///< of each pass of the main loop, by the time of day, ascending
};

enum class CopyTarget { Memory, Disk };

/// Copies a file while the main loop runs with a short rest between its passes.
[[nodiscard]] CopyTimes measureBackgroundCopy(CopyTarget target);
