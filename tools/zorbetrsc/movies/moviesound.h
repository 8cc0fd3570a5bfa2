// The sound of a movie, as its author gives it.
#pragma once

#include "filesystem.h"

#include "formats/movie/moviesound.h"

namespace rsc {

struct MovieSound {
    formats::MovieSoundFormat format;
    Bytes samples; ///< whole ones of all channels
};

/// The samples of a WAVE file of 8 or 16 bits are kept as they are; sounds of more bits, and of all
/// other kinds, become samples of 16 bits. Refuses what is damaged, has no samples, more than two
/// channels, or less than 1,000 or more than 192,000 samples a second.
[[nodiscard]] MovieSound readMovieSound(ByteSpan file);

} // namespace rsc
