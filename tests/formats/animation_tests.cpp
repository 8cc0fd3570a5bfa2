#include "formats/animation/animation.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace formats::animation;
using formats::Bytes;

namespace {

const Bytes kRedRow = {2, 5, 6};            // two pixels
const Bytes kTallRows = {1, 9, 0, 1, 1, 9}; // three rows of one pixel

Animation smallAnimation() {
    Animation small{8, -5, 300, 7, {}, {}};
    small.frames = {{2, 1, kRedRow}, {1, 3, kTallRows}};
    small.sequences = {{{0, 0, -4, 0}, {3, -1, 1, 120}, {0, 0, -1, 0}}, {{0, 0, -1, 0}}};
    return small;
}

const Bytes kSmallBytes = {
    2,    0,    2,    0,    8,    0,    0,    0,    0, 0, // counts, rate, swap flag
    0,    0,    0,    0,    9,    0,    0,    0,          // frame offsets
    0x05, 0x2C, 0x18, 7,                                  // x 0x805, y 0x12C
    3,    0,                                              // first sequence
    0,    0,    0,    0,    0xFC, 0xFF, 0,    0,          //
    3,    0,    0xFF, 0xFF, 1,    0,    120,  0,          //
    0,    0,    0,    0,    0xFF, 0xFF, 0,    0,          //
    1,    0,    0,    0,    0,    0,    0xFF, 0xFF, 0, 0, // second sequence
    0,    0,    2,    0,    1,    0,    2,    5,    6,    // frames
    0,    0,    1,    0,    3,    0,    1,    9,    0, 1, 1, 9,
};

/// The same with all numbers turned around, except what is never turned.
Bytes bigEndianTwin() {
    Bytes twin = kSmallBytes;
    const auto turn = [&](std::size_t at, long size) {
        const auto first = twin.begin() + static_cast<long>(at);
        std::reverse(first, first + size);
    };
    for (const std::size_t at : {0, 2, 60, 62, 69, 71}) turn(at, 2);
    for (const std::size_t at : {10, 14}) turn(at, 4);
    for (std::size_t at = 22; at < 22 + 2 + 3 * 8 + 2 + 8; at += 2) turn(at, 2);
    twin[5] = 1;
    return twin;
}

Bytes changed(Bytes bytes, std::size_t at, std::uint8_t value) {
    bytes.at(at) = value;
    return bytes;
}

/// Empty when all is whole.
std::string problemOf(const Bytes& bytes) { return readWhole(bytes).refusal; }

TEST(AnimationFormat, IsWrittenInItsLayoutAndReadInBothByteOrdersWithPadding) {
    EXPECT_EQ(write(smallAnimation()), kSmallBytes);
    EXPECT_EQ(write(smallAnimation(), std::endian::big), bigEndianTwin());
    Bytes padded = kSmallBytes;
    padded.resize(padded.size() + 15);
    for (const Bytes& bytes : {kSmallBytes, bigEndianTwin(), padded}) {
        const auto [whole, refusal] = readWhole(bytes);
        ASSERT_EQ(refusal, "");
        EXPECT_EQ(write(whole), kSmallBytes);
        EXPECT_EQ(whole.x, -5);
    }
}

TEST(AnimationFormat, EmbeddedPlacesHaveTwelveBits) {
    constexpr std::size_t kPlaceAt = 18;
    const struct {
        std::uint8_t low;
        std::uint8_t high;
        int expected;
    } rows[] = {{0xFF, 0x77, 2047}, {0, 0x88, 2048}, {1, 0x88, -1}, {0xFF, 0xFF, -2047}};
    for (const auto& [low, high, expected] : rows) {
        Bytes bytes = kSmallBytes;
        bytes[kPlaceAt] = bytes[kPlaceAt + 1] = low;
        bytes[kPlaceAt + 2] = high;
        const auto [stored, refusal] = read(bytes);
        ASSERT_EQ(refusal, "");
        EXPECT_EQ(stored.x, expected);
        EXPECT_EQ(stored.y, expected);
    }
}

TEST(AnimationFormat, TellsWhatItsFieldsCannotHold) {
    const struct {
        std::string text; ///< begins the reason
        void (*spoil)(Animation&);
    } cases[] = {
        {"the number of sequences is 32768",
         [](Animation& a) {
             a.sequences.resize(32768, {{0, 0, -1, 0}});
         }},
        {"the rate is 256", [](Animation& a) { a.framesPerSecond = 256; }},
        {"the embedded x is -2048", [](Animation& a) { a.x = -2048; }},
        {"the embedded depth is 256", [](Animation& a) { a.depth = 256; }},
        {"a frame's width is 32768", [](Animation& a) { a.frames[0].width = 32768; }},
        {"a frame's height is 0", [](Animation& a) { a.frames[1].height = 0; }},
        {"a step's code is 2", [](Animation& a) { a.sequences[0][1].code = 2; }},
    };
    for (const auto& row : cases) {
        Animation animation = smallAnimation();
        row.spoil(animation);
        EXPECT_EQ(whyNotStored(animation).find(row.text), 0U) << whyNotStored(animation);
    }
}

TEST(AnimationFormat, TellsWhatIsDamaged) {
    const struct {
        std::size_t at;
        std::uint8_t value;
        std::string problem;
    } rows[] = {
        {0, 0, "the animation has no sequences"},
        {3, 0x80, "the animation has no frames"},
        {14, 200, "frame 2 lies past the end"},
        {14, 2, "frame 2 is damaged in row 1"}, // in the middle of frame 1
        {22, 0, "sequence 1 has no entries"},
        {49, 0x80, "sequence 2 has no entries"},
        {36, 2, "sequence 1 shows frame 3 of 2"},
        {44, 0xFE, "sequence 1 has no end"},
        {60, 0, "frame 1 is empty"},
        {64, 251, "frame 1 is damaged in row 1"},
        {75, 2, "frame 2 is damaged in row 2"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(problemOf(changed(kSmallBytes, row.at, row.value)), row.problem) << row.at;
    for (std::size_t size = 0; size < kSmallBytes.size(); ++size)
        EXPECT_NE(problemOf({kSmallBytes.begin(), kSmallBytes.begin() + static_cast<long>(size)}),
                  "")
            << size;
}

/// A hundred frames, `step` bytes apart, in data that reads as a frame of 257 rows at every sixth
/// byte. Reading thousands of these one by one would take for ever.
Bytes manyFrames(int step) {
    formats::ByteWriter out;
    out.u16(1).u16(100).u8(8).zeros(5);
    for (int i = 0; i < 100; ++i) out.u32(i * step);
    out.u32(0).u16(1).u32(0).u16(-1).u16(0);
    for (int i = 0; i < 200; ++i) out.u16(1).u16(1).u16(0x0101);
    return out.take();
}

TEST(AnimationFormat, FramesMayBeTheSameButNotOverlap) {
    EXPECT_EQ(problemOf(manyFrames(0)), "");
    EXPECT_EQ(problemOf(manyFrames(6)), "frame 4 overlaps other frames");
}

} // namespace
