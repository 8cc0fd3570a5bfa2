// What happens to a score's samples when all notes are played: echo, a low-pass filter, the level,
// and the rounding to 8 bits.
#pragma once

#include "score.h"

#include <cstdint>
#include <vector>

/// 8-bit samples, 128 is silence. Ends of a score that plays once are silent; a loop joins.
[[nodiscard]] std::vector<std::uint8_t> finishSamples(const Score& score,
                                                      std::vector<std::int64_t> samples);
