// Ids of resources have 16 bits. Wherever a number that a script gives is kept as an id, its low 16
// bits are what counts: 65637 is 101, and 65535 is -1, which is none.
#pragma once

#include <cstdint>

template <class Stored = std::int16_t>
[[nodiscard]] constexpr Stored OMNarrowId(int id) {
    static_assert(sizeof(Stored) == sizeof(std::int16_t));
    return static_cast<Stored>(id);
}
