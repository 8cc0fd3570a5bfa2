// The head of a movie file: what is known of a movie before anything is decoded.
//
//     0x00  "SMK2" or "SMK4"
//     0x04  width, height, number of frames
//     0x10  frame time: milliseconds, or hundredths of them when negative
//     0x14  flags: a ring frame, pictures of twice the height
//     0x34  size of the trees
//     0x48  formats of the sound tracks
//     0x68  a table of the frames' sizes, a table of their parts, the trees, the frames
#pragma once

#include "platform/files.h"
#include "platform/host/sound/moviespeaker.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace platform {

struct MovieHeader {
    static constexpr int kMaxSide = 4096; ///< pixels, of the picture that is shown

    struct Sound {
        SoundFormat format;
        int stream = 0;     ///< which one of the file's tracks, from 0
        int lastFrame = -1; ///< the last one that brings sound; -1 when none does
    };

    int width = 0;
    int height = 0;               ///< of the pictures in the file
    bool doubled = false;         ///< every line is shown twice
    int frames = 0;               ///< at least 1; a ring frame does not count
    int frameTime = 0;            ///< hundredths of a millisecond, at least 1
    std::size_t treesSize = 0;    ///< bytes
    std::optional<Sound> sound;   ///< the first track that can be played
    int wholeFrames = 0;          ///< frames that the file has to their end, from the first on
    std::uint64_t framesSize = 0; ///< bytes of all frames

    [[nodiscard]] int shownHeight() const { return doubled ? 2 * height : height; }
};

/// None when it is no movie, the file ends within the tables or the trees, or its numbers are
/// absurd.
[[nodiscard]] std::optional<MovieHeader> readMovieHeader(File& file);

} // namespace platform
