#include "formats/movie/videodecoder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace formats {

namespace {

using BlockLine = std::array<std::uint8_t, kBlockSide>;

/// For four bits of a mask, 0xFF where the pixel has the second colour.
constexpr std::array<std::uint32_t, 16> makeLineMasks() {
    std::array<std::uint32_t, 16> masks{};
    for (std::size_t bits = 0; bits < masks.size(); ++bits) {
        BlockLine line{};
        for (std::size_t x = 0; x < line.size(); ++x) line[x] = bits >> x & 1 ? 0xFF : 0;
        masks[bits] = std::bit_cast<std::uint32_t>(line);
    }
    return masks;
}
constexpr auto kLineMasks = makeLineMasks();

std::uint32_t lineOfColour(std::uint32_t colour) { return colour * 0x01010101U; }

std::uint8_t lowByteOf(std::uint16_t pair) { return static_cast<std::uint8_t>(pair); }
std::uint8_t highByteOf(std::uint16_t pair) { return static_cast<std::uint8_t>(pair >> 8); }

} // namespace

std::optional<VideoDecoder> VideoDecoder::make(int width, int height, bool later, ByteSpan trees) {
    VideoDecoder video;
    video.stride_ = static_cast<std::size_t>(width);
    video.blocksAcross_ = video.stride_ / kBlockSide;
    video.blocks_ = video.blocksAcross_ * (static_cast<std::size_t>(height) / kBlockSide);
    video.later_ = later;
    BitReader in(trees);
    bool hasTrees = false;
    for (WordCodes* codes : {&video.masks_, &video.colours_, &video.pairs_, &video.runs_}) {
        if (!codes->read(in)) return std::nullopt;
        hasTrees |= codes->isThere();
    }
    return hasTrees ? std::optional(std::move(video)) : std::nullopt;
}

bool VideoDecoder::draw(ByteSpan frame, std::span<std::uint8_t> pixels) {
    for (WordCodes* codes : {&masks_, &colours_, &pairs_, &runs_}) codes->startFrame();
    BitReader in(frame);
    std::uint8_t* row = pixels.data(); // of blocks
    std::size_t column = 0;
    for (std::size_t left = blocks_; left > 0;) {
        const BlockRun run = BlockRun::fromValue(runs_.get(in));
        const Detail detail = readDetail(in, run);
        std::size_t blocks = std::min(run.length(), left);
        left -= blocks;
        while (blocks > 0) {
            const std::size_t inRow = std::min(blocks, blocksAcross_ - column);
            drawBlocks(in, run, detail, row + column * kBlockSide, inRow);
            if (in.overrun()) return false;
            blocks -= inRow;
            column += inRow;
            if (column < blocksAcross_) continue;
            column = 0;
            row += kBlockSide * stride_;
        }
    }
    return true;
}

VideoDecoder::Detail VideoDecoder::readDetail(BitReader& in, const BlockRun& run) const {
    if (!later_ || run.kind != BlockKind::Full) return Detail::All;
    if (in.takeBit()) return Detail::Quarters;
    return in.takeBit() ? Detail::Rows : Detail::All;
}

/// Blocks side by side.
void VideoDecoder::drawBlocks(BitReader& in, const BlockRun& run, Detail detail,
                              std::uint8_t* first, std::size_t count) {
    std::uint8_t* const end = first + count * kBlockSide;
    switch (run.kind) {
    case BlockKind::Mono:
        for (; first < end; first += kBlockSide) drawMono(in, first);
        break;
    case BlockKind::Full:
        for (; first < end; first += kBlockSide) drawFull(in, detail, first);
        break;
    case BlockKind::Skip: break;
    case BlockKind::Solid:
        for (std::size_t y = 0; y < kBlockSide; ++y)
            std::memset(lineOf(first, y), run.colour, count * kBlockSide);
        break;
    }
}

void VideoDecoder::drawMono(BitReader& in, std::uint8_t* block) {
    const std::uint16_t colours = colours_.get(in);
    const std::uint16_t mask = masks_.get(in);
    const std::uint32_t first = lineOfColour(lowByteOf(colours));
    const std::uint32_t changes = first ^ lineOfColour(highByteOf(colours));
    for (std::size_t y = 0; y < kBlockSide; ++y) {
        const std::uint32_t line = first ^ (changes & kLineMasks[mask >> (4 * y) & 15]);
        std::memcpy(lineOf(block, y), &line, sizeof(line));
    }
}

void VideoDecoder::drawFull(BitReader& in, Detail detail, std::uint8_t* block) {
    for (std::size_t y = 0; y < kBlockSide; y += detail == Detail::All ? 1 : 2) {
        const std::uint16_t right = pairs_.get(in);
        BlockLine line = {lowByteOf(right), lowByteOf(right), highByteOf(right), highByteOf(right)};
        if (detail != Detail::Quarters) {
            const std::uint16_t left = pairs_.get(in);
            line = {lowByteOf(left), highByteOf(left), lowByteOf(right), highByteOf(right)};
        }
        std::ranges::copy(line, lineOf(block, y));
        if (detail != Detail::All) std::ranges::copy(line, lineOf(block, y + 1));
    }
}

} // namespace formats
