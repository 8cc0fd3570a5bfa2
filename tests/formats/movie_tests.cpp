// What the writer of movies writes, the reader reads; tests of both against another decoder are
// in judge/.
#include "formats/movieframesof.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using formats::Bytes;
using testing_support::framesOf;
using Pictures = std::vector<Bytes>;
using Block = std::array<std::uint8_t, 16>;

constexpr std::uint8_t kBefore = 7; ///< colour

/// The first frame is told whole, the others as changes. None when a tree has too many values.
std::optional<Bytes> movieOf(int width, const Pictures& pictures) {
    const int height = static_cast<int>(pictures.front().size()) / width;
    formats::VideoCoder coder(width, height);
    for (const Bytes& picture : pictures) coder.add(picture, &picture == &pictures.front());
    const auto video = coder.finish();
    if (!video) return std::nullopt;
    std::vector<formats::MovieFrame> frames(pictures.size());
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i].picture = video->frames[i];
    return formats::makeMovieFile(
        {.width = static_cast<std::uint32_t>(width), .height = static_cast<std::uint32_t>(height)},
        video->trees, frames);
}

void roundTrip(int width, const Pictures& pictures) {
    auto frames = framesOf(movieOf(width, pictures).value());
    for (std::size_t i = 0; i < pictures.size(); ++i)
        EXPECT_TRUE(frames[static_cast<std::int64_t>(i)].picture == pictures[i]) << i;
}

/// Of one kind; number `i` differs from its neighbours, but for solid and skipped ones.
Block blockOf(unsigned kind, std::size_t i) {
    Block pixels;
    pixels.fill(kind == 2 ? kBefore : kind == 3 ? 200 : static_cast<std::uint8_t>(10 + i % 90));
    if (kind < 2) pixels[1 + i % 15] = 101;
    if (kind == 1) pixels[1 + (i + 3) % 15] = 102;
    return pixels;
}

TEST(Movie, TellsEveryKindOfBlockInEveryRun) {
    std::vector<std::size_t> lengths = {127, 128, 256, 512, 1024, 2048, 4096 + 60};
    for (std::size_t length = 1; length <= 60; ++length) lengths.push_back(length);
    for (const unsigned kind : {0U, 1U, 2U, 3U}) {
        std::vector<Block> row;
        for (const std::size_t length : lengths) {
            for (std::size_t i = 0; i < length; ++i) row.push_back(blockOf(kind, i));
            row.push_back(blockOf((kind + 1) % 4, 0));
        }
        const std::size_t width = row.size() * 4;
        Bytes picture(width * 4);
        for (std::size_t i = 0; i < picture.size(); ++i)
            picture[i] = row[i % width / 4][i / width * 4 + i % 4];
        const Bytes before(picture.size(), kBefore);
        roundTrip(static_cast<int>(width), {before, picture, before, before});
    }
}

TEST(Movie, NeedsValuesForTheMarkers) {
    // each pair of neighbouring colours once: blocks of 8 pairs in a row
    const auto pictureWith = [](std::size_t pairs) {
        constexpr std::size_t kBlocks = 65536 / 8;
        Bytes picture(kBlocks * 16);
        for (std::size_t i = 0; i < 65536; ++i) {
            const std::size_t pair = std::min(i, pairs - 1);
            const std::size_t at = i % 8 / 2 * kBlocks * 4 + i / 8 * 4 + i % 2 * 2;
            picture[at] = static_cast<std::uint8_t>(pair);
            picture[at + 1] = static_cast<std::uint8_t>(pair >> 8);
        }
        return picture;
    };
    roundTrip(65536 / 2, {pictureWith(65533)});
    roundTrip(65536 / 2, {pictureWith(65534)}); // 0 is there from the start
    EXPECT_FALSE(movieOf(65536 / 2, {pictureWith(65535)}));
}

/// Differences as frequent as the Fibonacci numbers make the deepest trees.
TEST(Movie, BoundsTheLengthOfCodes) {
    Bytes samples = {0};
    std::array<std::size_t, 2> counts{1, 1};
    for (unsigned step = 1; step <= 28; ++step) {
        for (std::size_t i = 0; i < counts[0]; ++i)
            samples.push_back(static_cast<std::uint8_t>(samples.back() + step));
        counts = {counts[1], counts[0] + counts[1]};
    }
    const formats::MovieSoundFormat format{22050, 8, 1, true};
    const Bytes chunk = formats::makeSoundChunk(format, samples);
    const auto read = formats::readSoundChunk(format, formats::ByteSpan(chunk).subspan(4));
    EXPECT_TRUE(read.value() == samples);
    for (std::size_t size = 4; size + 1 < chunk.size(); size += 7919) // cut off
        EXPECT_FALSE(
            formats::readSoundChunk(format, formats::ByteSpan(chunk).subspan(4, size - 4)));
}

} // namespace
