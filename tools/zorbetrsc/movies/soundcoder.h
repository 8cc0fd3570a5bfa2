// The sound of a movie, cut into a chunk for each frame.
#pragma once

#include "movies/moviesound.h"

namespace rsc {

struct CodedSound {
    std::vector<Bytes> chunks;    ///< of each frame; empty where it has none
    std::size_t largestChunk = 0; ///< bytes of samples
    std::size_t leftOut = 0;      ///< samples behind the last frame
};

/// The first frame carries the sound of itself and of one second more, the others one frame each,
/// so that players always have sound in stock. What lies behind the last frame is left out.
/// `frameTime` is in hundredths of a millisecond. `packed`: as differences with short codes, else
/// as it is.
[[nodiscard]] CodedSound codeSound(const MovieSound& sound, std::size_t frames, int frameTime,
                                   bool packed);

} // namespace rsc
