#include "movies/blockcoder.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::array<std::uint16_t, 64> makeRunLengths() {
    std::array<std::uint16_t, 64> lengths{};
    for (std::uint16_t i = 0; i < 59; ++i) lengths[i] = i + 1;
    for (std::uint16_t i = 59; i < 64; ++i)
        lengths[i] = static_cast<std::uint16_t>(128 << (i - 59));
    return lengths;
}
constexpr auto kRunLengths = makeRunLengths();

using BlockPixels = std::span<const std::uint8_t, kBlockSide * kBlockSide>;

std::uint16_t word(std::uint8_t low, std::uint8_t high) {
    return static_cast<std::uint16_t>(low | high << 8);
}

/// The second colour of a block whose first is that of its first pixel; the same when it has only
/// one, none when it has more.
std::optional<std::uint8_t> secondColour(BlockPixels pixels) {
    std::uint8_t second = pixels[0];
    for (const std::uint8_t pixel : pixels) {
        if (pixel == pixels[0] || pixel == second) continue;
        if (second != pixels[0]) return std::nullopt;
        second = pixel;
    }
    return second;
}

std::uint16_t maskOf(BlockPixels pixels) {
    std::uint16_t mask = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        if (pixels[i] != pixels[0]) mask |= static_cast<std::uint16_t>(1 << i);
    return mask;
}

void addPairs(BlockPixels pixels, Values& pairs) {
    for (std::size_t row = 0; row < pixels.size(); row += kBlockSide) {
        pairs.push_back(word(pixels[row + 2], pixels[row + 3]));
        pairs.push_back(word(pixels[row], pixels[row + 1]));
    }
}

/// Joins blocks to runs.
class RunJoiner {
  public:
    explicit RunJoiner(Values& runs) : runs_(runs) {}

    void add(BlockKind kind, std::uint8_t colour) {
        if (kind != kind_ || colour != colour_) finish();
        kind_ = kind;
        colour_ = colour;
        ++blocks_;
    }

    void finish() {
        while (blocks_ > 0) {
            const BlockRun run = BlockRun::longest(kind_, blocks_, colour_);
            runs_.push_back(run.value());
            blocks_ -= run.length();
        }
    }

  private:
    Values& runs_;
    BlockKind kind_ = BlockKind::Skip;
    std::uint8_t colour_ = 0;
    std::size_t blocks_ = 0;
};

} // namespace

BlockRun BlockRun::longest(BlockKind kind, std::size_t blocks, std::uint8_t colour) {
    const auto* beyond = std::ranges::upper_bound(kRunLengths, blocks);
    return {kind, static_cast<std::uint8_t>(beyond - kRunLengths.begin() - 1), colour};
}

BlockRun BlockRun::fromValue(std::uint16_t value) {
    return {static_cast<BlockKind>(value & 3), static_cast<std::uint8_t>(value >> 2 & 63),
            static_cast<std::uint8_t>(value >> 8)};
}

std::uint16_t BlockRun::value() const {
    return static_cast<std::uint16_t>(static_cast<int>(kind) | lengthIndex << 2 | colour << 8);
}

std::size_t BlockRun::length() const { return kRunLengths[lengthIndex]; }

BlockCoder::BlockCoder(int width, int height)
    : width_(static_cast<std::size_t>(width)), blocksAcross_(width_ / kBlockSide),
      blocks_(blocksAcross_ * (static_cast<std::size_t>(height) / kBlockSide)) {}

BlockCoder::Block BlockCoder::blockAt(ByteSpan indices, std::size_t block) const {
    const std::size_t top = block / blocksAcross_ * kBlockSide;
    const std::size_t left = block % blocksAcross_ * kBlockSide;
    Block pixels{};
    auto to = pixels.begin();
    for (std::size_t y = top; y < top + kBlockSide; ++y)
        to = std::ranges::copy(indices.subspan(y * width_ + left, kBlockSide), to).out;
    return pixels;
}

FrameBlocks BlockCoder::code(ByteSpan indices, bool whole) {
    FrameBlocks frame;
    RunJoiner runs(frame.runs);
    for (std::size_t i = 0; i < blocks_; ++i) {
        const Block pixels = blockAt(indices, i);
        const auto second = secondColour(pixels);
        if (!whole && !before_.empty() && pixels == blockAt(before_, i)) {
            runs.add(BlockKind::Skip, 0);
        } else if (!second) {
            runs.add(BlockKind::Full, 0);
            addPairs(pixels, frame.pairs);
        } else if (*second == pixels[0]) {
            runs.add(BlockKind::Solid, pixels[0]);
        } else {
            runs.add(BlockKind::Mono, 0);
            frame.colours.push_back(word(pixels[0], *second));
            frame.masks.push_back(maskOf(pixels));
        }
    }
    runs.finish();
    before_.assign(indices.begin(), indices.end());
    return frame;
}

} // namespace rsc
