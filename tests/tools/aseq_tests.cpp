#include "pictures/aseq.h"

#include "testfiles.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using rsc::Aseq;
using rsc::AseqEntry;
using rsc::Bytes;
using testfiles::join;
using testfiles::refusalOf;
using testing::HasSubstr;

const Bytes kRedRow = {2, 5, 6};            // two pixels
const Bytes kTallRows = {1, 9, 0, 1, 1, 9}; // three rows of one pixel

Aseq smallAnimation() {
    Aseq aseq;
    aseq.framesPerSecond = 8;
    aseq.x = -5;
    aseq.y = 300;
    aseq.depth = 7;
    aseq.frames = {{2, 1, kRedRow}, {1, 3, kTallRows}};
    aseq.sequences = {{{0, 0, -4, 0}, {3, -1, 1, 120}, {0, 0, -1, 0}}, {{0, 0, -1, 0}}};
    return aseq;
}

const Bytes kSmallBytes = join({
    {2, 0, 2, 0, 8, 0, 0, 0, 0, 0},       // counts, rate, swap flag
    {0, 0, 0, 0, 9, 0, 0, 0},             // frame offsets
    {0x05, 0x2C, 0x18, 7},                // x 0x805, y 0x12C
    {3, 0},                               // first sequence
    {0, 0, 0, 0, 0xFC, 0xFF, 0, 0},       //
    {3, 0, 0xFF, 0xFF, 1, 0, 120, 0},     //
    {0, 0, 0, 0, 0xFF, 0xFF, 0, 0},       //
    {1, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0}, // second sequence
    {0, 0, 2, 0, 1, 0},
    kRedRow,
    {0, 0, 1, 0, 3, 0},
    kTallRows,
});

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

TEST(Aseq, IsWrittenInItsLayoutAndReadInBothByteOrdersWithPadding) {
    EXPECT_EQ(rsc::writeAseq(smallAnimation()), kSmallBytes);
    const Aseq small = smallAnimation();
    for (const Bytes& bytes : {kSmallBytes, bigEndianTwin(), join({kSmallBytes, Bytes(15, 0)})}) {
        const Aseq read = rsc::readAseq(bytes);
        EXPECT_EQ(rsc::writeAseq(read), kSmallBytes);
        EXPECT_EQ(read.sequences, small.sequences);
        EXPECT_EQ(read.x, -5);
    }
}

TEST(Aseq, RefusesWhatItsFieldsCannotHold) {
    const struct {
        std::string text; ///< part of the refusal
        void (*spoil)(Aseq&);
    } cases[] = {
        {"number of sequences is 32768",
         [](Aseq& a) {
             a.sequences.resize(32768, {{0, 0, -1, 0}});
         }},
        {"rate is 256", [](Aseq& a) { a.framesPerSecond = 256; }},
        {"embedded x is -2048", [](Aseq& a) { a.x = -2048; }},
        {"embedded depth is 256", [](Aseq& a) { a.depth = 256; }},
        {"width is 32768", [](Aseq& a) { a.frames[0].width = 32768; }},
        {"height is 0", [](Aseq& a) { a.frames[1].height = 0; }},
        {"dy is -32769", [](Aseq& a) { a.sequences[0][1].dy = -32769; }},
        {"code is 2", [](Aseq& a) { a.sequences[0][1].code = 2; }},
    };
    for (const auto& row : cases) {
        Aseq aseq = smallAnimation();
        row.spoil(aseq);
        EXPECT_THAT(refusalOf([&] { (void)rsc::writeAseq(aseq); }), HasSubstr(row.text));
    }
}

TEST(Aseq, TellsWhatIsDamaged) {
    const std::vector<testfiles::Damage> damages = {
        {0, 0, "the animation has no sequences"},
        {3, 0x80, "the animation has no frames"},
        {14, 200, "frame 2 lies past the end"},
        {14, 2, "frame 2 is damaged in row 1"}, // in the middle of frame 1
        {22, 0, "sequence 1 has no entries"},
        {36, 2, "sequence 1 shows frame 3 of 2"},
        {44, 0xFE, "sequence 1 has no end"},
        {60, 0, "frame 1 is empty"},
        {64, 251, "frame 1 is damaged in row 1"},
        {75, 2, "frame 2 is damaged in row 2"},
    };
    testfiles::expectRefused(kSmallBytes, damages,
                             [](const Bytes& data) { (void)rsc::readAseq(data); });
}

/// A hundred frames, `step` bytes apart, in data that reads as a frame of 257 rows at every sixth
/// byte. Reading thousands of these one by one would take for ever.
Bytes manyFrames(std::size_t step) {
    constexpr std::size_t kFrames = 100;
    Bytes bytes = {1, 0, kFrames, 0, 8, 0, 0, 0, 0, 0};
    for (std::size_t i = 0; i < kFrames; ++i) rsc::put32(bytes, i * step);
    rsc::put32(bytes, 0);
    bytes.insert(bytes.end(), {1, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0});
    for (std::size_t i = 0; i < 200; ++i) bytes.insert(bytes.end(), {1, 0, 1, 0, 1, 1});
    return bytes;
}

TEST(Aseq, RefusesFramesThatOverlap) {
    const Bytes shared = manyFrames(0);
    EXPECT_EQ(rsc::readAseq(shared).frames.size(), 100U) << "the same data is no overlap";
    const Bytes overlapping = manyFrames(6);
    EXPECT_THAT(refusalOf([&] { (void)rsc::readAseq(overlapping); }),
                HasSubstr("frame 4 overlaps other frames"));
}

} // namespace
