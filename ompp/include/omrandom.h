// The program's one random generator, so that one seed makes a whole run repeatable.
#pragma once

#include <cstdint>

void OMSeedRandom(std::uint32_t seed);

/// Uniform over all 32-bit values.
[[nodiscard]] std::uint32_t OMRandom();

/// Uniform enough over 0 to `count` - 1; `count` at least 1.
[[nodiscard]] inline std::uint32_t OMRandomBelow(std::uint32_t count) { return OMRandom() % count; }
