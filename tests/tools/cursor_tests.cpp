#include "pictures/cursor.h"

#include "testfiles.h"

#include <gtest/gtest.h>

namespace {

using rsc::Bytes;
using rsc::CursorFile;
using rsc::Picture;
using rsc::Refusal;
using testfiles::Rgba;

constexpr Rgba kRedPixel{200, 10, 20, 255};
constexpr Rgba kBluePixel{1, 2, 3, 128};
constexpr Rgba kFaint{9, 9, 9, 127};

Picture picture(int width, const std::vector<Rgba>& pixels) {
    return Picture::fromPng(testfiles::truecolourPng(width, pixels));
}

const Picture kSmall = picture(3, {kRedPixel, kFaint, kBluePixel, kRedPixel, kRedPixel, kFaint});

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

TEST(Cursor, HasATableUpTo256Colours) {
    EXPECT_EQ(rsc::buildCursor(kSmall, {2, 1}), kSmallCursor);
    std::vector<Rgba> pixels(64 * 64, kRedPixel);
    for (std::size_t i = 0; i < 255; ++i) pixels[i] = {static_cast<std::uint8_t>(i), 3, 3, 255};
    const Bytes most = rsc::buildCursor(picture(64, pixels), {0, 63});
    EXPECT_EQ(most[8], 0) << "256 colours";
    EXPECT_EQ(most.size(), 62U + 256 * 4 + 64 * 64 + 64 * 8);
    pixels.back() = kFaint; // black is one more
    const Bytes more = rsc::buildCursor(picture(64, pixels), {0, 0});
    EXPECT_EQ(more[36], 24) << "bits a pixel";
    EXPECT_EQ(more.size(), 62U + 64 * 64 * 3 + 64 * 8);
    for (const Bytes& bytes : {most, more}) {
        const CursorFile file = rsc::readCursorFile(bytes);
        EXPECT_EQ(file.length, bytes.size());
        const auto again = rsc::cursorPixels(file.entries.at(0));
        ASSERT_TRUE(again);
        EXPECT_EQ(again->at(254).colour, (platform::Rgb{254, 3, 3}));
        EXPECT_EQ(again->back().opaque(), bytes == most);
    }
}

TEST(Cursor, RefusesPicturesThatDoNotFit) {
    const std::vector<Rgba> row(65, kRedPixel);
    for (const int width : {65, 1})
        EXPECT_THROW((void)rsc::buildCursor(picture(width, row), {0, 0}), Refusal);
    for (const rsc::HotSpot hotSpot : {rsc::HotSpot{3, 0}, rsc::HotSpot{0, 2}})
        EXPECT_THROW((void)rsc::buildCursor(kSmall, hotSpot), Refusal);
}

TEST(Cursor, RefusesDamage) {
    for (std::size_t size = 0; size < kSmallCursor.size(); ++size)
        EXPECT_THROW((void)rsc::readCursorFile(rsc::ByteSpan(kSmallCursor).first(size)), Refusal);
    const auto pixelsWith = [](std::size_t at, std::uint8_t value) {
        Bytes bytes = kSmallCursor;
        bytes[at] = value;
        return rsc::cursorPixels(rsc::readCursorFile(bytes).entries.at(0));
    };
    EXPECT_THROW((void)pixelsWith(14, 67), Refusal) << "its mask is cut off";
    EXPECT_THROW((void)pixelsWith(14, 3), Refusal) << "its header is cut off";
    EXPECT_THROW((void)pixelsWith(4, 0), Refusal) << "no pictures";
    EXPECT_THROW((void)pixelsWith(21, 0xFF), Refusal) << "far behind the end";
    EXPECT_THROW((void)pixelsWith(74, 3), Refusal) << "a colour that is not there";
    EXPECT_EQ(pixelsWith(26, 4), std::nullopt) << "another width than the directory's";
    EXPECT_EQ(pixelsWith(36, 4), std::nullopt) << "four bits a pixel";
    EXPECT_EQ(pixelsWith(38, 1), std::nullopt) << "compressed";
    EXPECT_EQ(pixelsWith(57, 0xFF), std::nullopt) << "too many colours";
}

} // namespace
