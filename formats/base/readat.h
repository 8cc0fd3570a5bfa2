// Files of which only parts are read.
#pragma once

#include "formats/base/bytes.h"

#include <algorithm>
#include <functional>

namespace formats {

/// Up to as many bytes of a file as the buffer holds, from a place on; fewer at its end, none past
/// it. Gives their number.
using ReadAt = std::function<std::size_t(std::uint64_t place, std::span<std::byte> buffer)>;

/// Reads of a block, which must outlive what is returned.
[[nodiscard]] inline ReadAt readAt(ByteSpan block) {
    return [block](std::uint64_t place, std::span<std::byte> buffer) {
        const ByteSpan there = block.subspan(std::min<std::uint64_t>(place, block.size()));
        const std::size_t count = std::min(buffer.size(), there.size());
        std::ranges::copy(std::as_bytes(there.first(count)), buffer.begin());
        return count;
    };
}

} // namespace formats
