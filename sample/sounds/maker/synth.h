// Plays the notes of a score into samples, one note after the other.
#pragma once

#include "score.h"

#include <cstdint>
#include <vector>

/// Sums of all notes; 32,768 is a note at full level. A loop has exactly its length, a whole number
/// of mixer buffers, and what rings on beyond its end is heard at its beginning. A score that plays
/// once is as long as its last note rings.
[[nodiscard]] std::vector<std::int64_t> playScore(const Score& score);
