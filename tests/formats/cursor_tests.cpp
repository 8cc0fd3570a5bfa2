#include "formats/picture/cursor.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace formats::picture;
using formats::Bytes;
using formats::ByteSpan;
using formats::Result;

namespace {

constexpr std::uint32_t kRed = 0xFFC80A14;
constexpr std::uint32_t kBlue = 0xFF010203;

const Cursor kSmall{3, 2, {2, 1}, {kRed, 0, kBlue, kRed, kRed, 0}};

/// The example of docs/formats.md.
const Bytes kSmallCursor = {
    0,    0,  2,   0, 1,    0,                                 // a cursor of one picture
    3,    2,  3,   0, 2,    0, 1, 0, 68, 0, 0, 0, 22, 0, 0, 0, // 3x2, 3 colours, hot spot 2 1
    40,   0,  0,   0, 3,    0, 0, 0, 4,  0, 0, 0, 1,  0, 8, 0, // header
    0,    0,  0,   0, 16,   0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, //
    3,    0,  0,   0, 0,    0, 0, 0,                           //
    20,   10, 200, 0, 0,    0, 0, 0, 3,  2, 1, 0,              // colours
    0,    0,  1,   0, 0,    1, 2, 0,                           // lower and upper row
    0x20, 0,  0,   0, 0x40, 0, 0, 0                            // what is transparent
};

/// Of the first picture.
Result<std::optional<CursorPixels>> pixelsOf(const Bytes& bytes) {
    const auto file = readCursorFile(bytes);
    if (!file.ok()) return {{}, file.refusal};
    return plainPixels(file.value.entries.at(0));
}

TEST(CursorFormat, HasATableUpTo256Colours) {
    EXPECT_EQ(writeCursor(kSmall), kSmallCursor);
    Cursor large{64, 64, {0, 63}, CursorPixels(64 * 64, kRed)};
    for (std::uint32_t i = 0; i < 255; ++i) large.pixels[i] = 0xFF000303 | i << 16;
    const Bytes most = writeCursor(large);
    EXPECT_EQ(most[8], 0) << "256 colours";
    EXPECT_EQ(most.size(), 62U + 256 * 4 + 64 * 64 + 64 * 8);
    large.pixels.back() = 0; // black is one more
    const Bytes more = writeCursor(large);
    EXPECT_EQ(more[36], 24) << "bits a pixel";
    EXPECT_EQ(more.size(), 62U + 64 * 64 * 3 + 64 * 8);
    for (const Bytes& bytes : {most, more}) {
        EXPECT_EQ(readCursorFile(bytes).value.length, bytes.size());
        const auto pixels = pixelsOf(bytes).value;
        ASSERT_TRUE(pixels);
        EXPECT_EQ(pixels->at(254), 0xFFFE0303);
        EXPECT_EQ(pixels->back(), bytes == most ? kRed : 0);
        EXPECT_EQ(readCursor(bytes).value().pixels, *pixels) << "what is shown";
    }
}

TEST(CursorFormat, TellsDamageFromOtherKinds) {
    constexpr const char* kCutOff = "the cursor is cut off";
    constexpr const char* kPictureCutOff = "the cursor's picture is cut off";
    const struct {
        std::size_t at;
        std::uint8_t value;
        std::string problem;
        const char* name;
    } rows[] = {
        {14, 67, kPictureCutOff, "its mask is cut off"},
        {14, 3, kPictureCutOff, "its header is cut off"},
        {4, 0, "no cursor file", "no pictures"},
        {21, 0xFF, kCutOff, "far behind the end"},
        {74, 3, "damaged cursor: a pixel lies outside of its colours", "no such colour"},
        {26, 4, "", "another width than the directory's"},
        {36, 4, "", "four bits a pixel"},
        {38, 1, "", "compressed"},
        {57, 0xFF, "", "too many colours"},
    };
    for (const auto& row : rows) {
        Bytes bytes = kSmallCursor;
        bytes[row.at] = row.value;
        const auto [pixels, refusal] = pixelsOf(bytes);
        EXPECT_FALSE(pixels) << row.name;
        EXPECT_EQ(refusal, row.problem) << row.name;
    }
    for (std::size_t size = 0; size < kSmallCursor.size(); ++size)
        EXPECT_EQ(readCursorFile(ByteSpan(kSmallCursor).first(size)).refusal, kCutOff) << size;
}

} // namespace
