// Sound files of every kind. They are read by the library libsndfile; a build without it can only
// say so.
#pragma once

#include "filesystem.h"

namespace rsc {

struct SoundSamples {
    int rate = 0; ///< samples a second
    int channels = 1;
    bool isDeep = false;       ///< they have more than 8 bits
    std::vector<float> values; ///< -1 to 1, and beyond where the file is; of all channels in turn
};

/// Whether this build can do it at all.
[[nodiscard]] bool canReadSounds();

/// Refused when the library is missing or does not know the file, and what is damaged, endless or
/// has no samples.
[[nodiscard]] SoundSamples readSoundFile(ByteSpan file);

} // namespace rsc
