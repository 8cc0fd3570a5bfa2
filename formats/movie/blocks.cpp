#include "formats/movie/blocks.h"

#include <algorithm>
#include <array>

namespace formats {

namespace {

constexpr std::array<std::uint16_t, 64> makeRunLengths() {
    std::array<std::uint16_t, 64> lengths{};
    for (std::uint16_t i = 0; i < 59; ++i) lengths[i] = i + 1;
    for (std::uint16_t i = 59; i < 64; ++i)
        lengths[i] = static_cast<std::uint16_t>(128 << (i - 59));
    return lengths;
}
constexpr auto kRunLengths = makeRunLengths();

} // namespace

BlockRun BlockRun::longest(BlockKind kind, std::size_t blocks, std::uint8_t colour) {
    const auto* beyond = std::ranges::upper_bound(kRunLengths, blocks);
    return {kind, static_cast<std::uint8_t>(beyond - kRunLengths.begin() - 1), colour};
}

std::uint16_t BlockRun::value() const {
    return static_cast<std::uint16_t>(static_cast<int>(kind) | lengthIndex << 2 | colour << 8);
}

std::size_t BlockRun::length() const { return kRunLengths[lengthIndex]; }

} // namespace formats
