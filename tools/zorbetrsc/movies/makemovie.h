// The command "movie": makes a movie file out of pictures and a sound.
#pragma once

#include "movies/movieframes.h"

#include <iosfwd>

namespace rsc {

struct MovieOptions {
    static constexpr int kShortestFrameTime = 100;      ///< a millisecond
    static constexpr int kLongestFrameTime = 6'000'000; ///< a minute
    static constexpr int kNormalFrameTime = 6666;       ///< 15 frames a second

    std::vector<std::filesystem::path> frames; ///< PNG files and folders of these
    std::filesystem::path output;
    int frameTime = kNormalFrameTime; ///< hundredths of a millisecond, within the bounds
    std::optional<std::filesystem::path> sound;
    bool unpacked = false; ///< the sound is stored as it is
    bool ring = false;     ///< adds a frame that leads back to the first one
    MovieColourOptions colours;
};

/// The bytes of the movie file. `notes` is told what the author should know.
[[nodiscard]] Bytes makeMovie(const MovieOptions& options, std::ostream& notes);

/// Returns the exit code; faults are told as "FILE: text" and leave an old file as it was.
[[nodiscard]] int runMovie(const MovieOptions& options, std::ostream& errors);

} // namespace rsc
