// Entries in a random order.
#pragma once

#include "omrandom.h"

#include <cstdint>
#include <ranges>
#include <utility>

namespace world {

/// Exchanges two different entries, twice as often as there are entries (below 2^31). The number of
/// exchanges is even, so only half of all orders can come out: those that an even number reaches.
template <std::ranges::random_access_range Entries>
void shuffle(Entries&& entries) {
    const auto count = static_cast<std::uint32_t>(std::ranges::size(entries));
    if (count < 2) return;
    const auto at = [&](std::uint32_t index) -> auto& {
        return entries[static_cast<std::ranges::range_size_t<Entries>>(index)];
    };
    for (std::uint32_t exchange = 0; exchange < 2 * count; ++exchange) {
        const std::uint32_t first = OMRandomBelow(count);
        std::uint32_t second = OMRandomBelow(count);
        if (second == first) second = (first + 1) % count;
        std::swap(at(first), at(second));
    }
}

} // namespace world
