#include "trinkets/windowfixture.h"

using namespace testing_support;

namespace {

AseqBuilder sample() {
    AseqBuilder builder;
    builder.rate = 12;
    builder.x = 0x805;
    builder.y = 0x123;
    builder.depth = 200;
    builder.frame({"abbbbb", "..c...", "......"}).block(3, 2, 'z');
    builder.sequence({{1, -2, 0, 30}, {300, -300, 1, 40}, {0, 0, -1, 0}});
    builder.sequence({{0, 0, -500, 7}}).sequence({});
    return builder;
}

TEST(AOImageTest, ReadsBothByteOrdersAndLeavesTheResourceAsItIs) {
    for (const bool swapped : {false, true}) {
        SCOPED_TRACE(swapped);
        const Bytes data = sample().build(swapped);
        const Bytes before = data;
        std::string problem;
        const auto image = AOImage::read(data, problem);
        ASSERT_TRUE(image) << problem;
        EXPECT_EQ(data, before);
        EXPECT_EQ(image->framesPerSecond(), 12);
        EXPECT_EQ(image->embedded().x, -5);
        EXPECT_EQ(image->embedded().y, 0x123);
        EXPECT_EQ(image->embedded().depth, 200);
        ASSERT_EQ(image->sequenceCount(), 3);
        EXPECT_EQ(image->sequence(0),
                  (AOSequence{{1, -2, 0, 30}, {300, -300, 1, 40}, {0, 0, -1, 0}}));
        EXPECT_EQ(image->sequence(1), (AOSequence{{0, 0, -500, 7}, {0, 0, -1, 0}}));
        EXPECT_EQ(image->sequence(2), (AOSequence{{0, 0, -1, 0}})) << "each has its end";
        EXPECT_EQ(image->frameCount(), 2);
        EXPECT_EQ(image->brokenFrames(), 0);
        EXPECT_EQ(image->frameSize(0).width, 6);
        EXPECT_EQ(image->frameSize(0).height, 3);
        for (const int none : {2, -1}) EXPECT_EQ(image->frameSize(none).width, 0);
    }
}

TEST(AOImageTest, EmbeddedPlacesHaveTwelveBits) {
    const std::pair<int, int> rows[] = {{0x7FF, 2047}, {0x800, 2048}, {0x801, -1}, {0xFFF, -2047}};
    for (const auto& [stored, expected] : rows) {
        AseqBuilder builder = sample();
        builder.x = builder.y = stored;
        const auto image = builder.image();
        EXPECT_EQ(image->embedded().x, expected) << stored;
        EXPECT_EQ(image->embedded().y, expected) << stored;
    }
}

} // namespace
