#include "trinkets/windowfixture.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

AseqBuilder sample() {
    AseqBuilder builder;
    builder.rate = 12;
    builder.x = 0x805;
    builder.y = 0x123;
    builder.depth = 200;
    builder.frame({"abbbbb", "..c...", "......"}).block(3, 2, 'z');
    builder.sequence({{1, -2, 0, 30}, {300, -300, 1, 40}, {0, 0, -2, 0}, {0, 0, -1, 0}});
    builder.sequence({{0, 0, -500, 7}, {0, 0, -1, 0}});
    return builder;
}

std::shared_ptr<const AOImage> read(std::span<const std::byte> data) {
    std::string problem;
    auto image = AOImage::read(data, problem);
    EXPECT_EQ(image == nullptr, !problem.empty());
    return image;
}

std::string problemOf(std::span<const std::byte> data) {
    std::string problem;
    EXPECT_EQ(AOImage::read(data, problem), nullptr);
    return problem;
}

TEST(AOImageTest, ReadsHeaderPlacementAndSequences) {
    const auto image = sample().image();
    EXPECT_EQ(image->framesPerSecond(), 12);
    EXPECT_EQ(image->embedded().x, -5);
    EXPECT_EQ(image->embedded().y, 0x123);
    EXPECT_EQ(image->embedded().depth, 200);
    ASSERT_EQ(image->sequenceCount(), 2);
    EXPECT_EQ(image->sequence(0)[1], (AOEntry{300, -300, 1, 40}));
    EXPECT_EQ(image->sequence(1)[0], (AOEntry{0, 0, -500, 7}));
    EXPECT_EQ(image->frameCount(), 2);
    EXPECT_EQ(image->brokenFrames(), 0);
    EXPECT_EQ(image->frameSize(0).width, 6);
    EXPECT_EQ(image->frameSize(0).height, 3);
    EXPECT_EQ(image->frameSize(2).width, 0);
    EXPECT_EQ(image->frameSize(-1).height, 0);
}

TEST(AOImageTest, EmbeddedPlacesHaveTwelveBits) {
    const std::pair<int, int> rows[] = {{0, 0},      {255, 255},  {0x7FF, 2047}, {0x800, 2048},
                                        {0x801, -1}, {0x805, -5}, {0xFFF, -2047}};
    for (const auto& [stored, expected] : rows) {
        AseqBuilder builder = sample();
        builder.x = stored;
        builder.y = 0xFFF - stored;
        const auto image = builder.image();
        EXPECT_EQ(image->embedded().x, expected) << stored;
    }
}

class AOFrameTest : public ApplicationTest {
  protected:
    OMMemCanvas canvas{40, 40, 8};
};

TEST_F(AOFrameTest, AByteSwappedResourceIsTheSameAndStaysAsItIs) {
    const Bytes swapped = sample().build(true);
    const Bytes before = swapped;
    for (int times = 0; times < 2; ++times) {
        const auto image = read(swapped);
        const auto twin = sample().image();
        EXPECT_EQ(image->embedded().x, -5);
        for (int i = 0; i < 2; ++i) EXPECT_EQ(image->sequence(i), twin->sequence(i));
        OMMemCanvas other(40, 40, 8);
        image->frame(0).draw(canvas, OMRegion(canvas.bounds()), {2, 3}, 0);
        twin->frame(0).draw(other, OMRegion(canvas.bounds()), {2, 3}, 0);
        EXPECT_EQ(pixelsOf(canvas, canvas.bounds()), pixelsOf(other, other.bounds()));
        EXPECT_EQ(pixelsOf(canvas, {2, 3, 8, 6}), "abbbbb/..c.../....../");
    }
    EXPECT_EQ(swapped, before);
}

TEST_F(AOFrameTest, DrawingIsClippedToTheRegionAndTheCanvas) {
    const auto image = AseqBuilder().block(30, 30, 'x').sequence({{0, 0, 0, 0}}).image();
    OMRegion clip(Rect{0, 0, 10, 10});
    clip.unite(Rect{12, 5, 14, 7});
    clip.unite(Rect{38, 38, 60, 60});
    image->frame(0).draw(canvas, clip, {9, 1}, 0);
    image->frame(0).draw(canvas, clip, {36, -5}, 0);
    image->frame(0).draw(canvas, clip, {-25, -28}, 0); // its corner only
    OMRegion expected(Rect{9, 1, 10, 10});
    expected.unite(Rect{12, 5, 14, 7});
    expected.unite(Rect{0, 0, 5, 2});
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            EXPECT_EQ(*canvas.pixels().at(x, y) == 'x', expected.contains(Point{x, y}))
                << x << " " << y;
}

TEST_F(AOFrameTest, EightDirectionsDrawWhatTheyHit) {
    const char* const expected[] = {
        "abb/.c./",  "bba/.c./",  ".c./abb/",  ".c./bba/",
        ".a/cb/.b/", "a./bc/b./", ".b/cb/.a/", "b./bc/a./",
    };
    const auto image = AseqBuilder().frame({"abb", ".c."}).sequence({{0, 0, 0, 0}}).image();
    const AOFrame frame = image->frame(0);
    const Point at{5, 7};
    for (int direction = 0; direction < 8; ++direction) {
        OMMemCanvas fresh(40, 40, 8);
        frame.draw(fresh, OMRegion(fresh.bounds()), at, direction);
        const Rect bounds = frame.bounds(at, direction);
        EXPECT_EQ(bounds.width(), direction < 4 ? 3 : 2);
        EXPECT_EQ(pixelsOf(fresh, bounds), expected[direction]) << direction;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x)
                EXPECT_EQ(frame.hit({x, y}, at, direction), *fresh.pixels().at(x, y) != 0)
                    << direction << " at " << x << " " << y;
        // The same again through a region of single columns and rows.
        OMMemCanvas pieces(40, 40, 8);
        for (int i = 0; i < 40; ++i)
            frame.draw(pieces,
                       OMRegion(direction % 2 ? Rect{i, 0, i + 1, 40} : Rect{0, i, 40, i + 1}), at,
                       direction);
        EXPECT_EQ(pixelsOf(pieces, bounds), expected[direction]) << direction;
    }
    OMMemCanvas fresh(40, 40, 8);
    frame.draw(fresh, OMRegion(fresh.bounds()), at, 8);
    EXPECT_EQ(fresh.changedPixels(), 0u);
    EXPECT_FALSE(frame.hit({5, 7}, at, 8));
    EXPECT_TRUE(frame.hit({30, 30}, {-1, -1}, -1)); // the window's corner is the pixel "c"
}

// Damaged resources

TEST_F(AOFrameTest, AResourceCutShortAnywhereIsRefusedOrDrawsLess) {
    for (const bool swapped : {false, true}) {
        const Bytes whole = sample().build(swapped);
        const std::size_t tables = 10 + 2 * 4 + 4 + (2 + 4 * 8) + (2 + 2 * 8);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            // Exactly as large as it is, so that every byte too many is noticed.
            const Bytes data(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const auto image = read(data);
            EXPECT_EQ(image != nullptr, length >= tables) << length;
            if (!image) continue;
            for (int frame = 0; frame < image->frameCount(); ++frame)
                for (int direction = 0; direction < 8; ++direction) {
                    image->frame(frame).draw(canvas, OMRegion(canvas.bounds()), {-1, 1}, direction);
                    (void)image->frame(frame).hit({2, 2}, {0, 0}, direction);
                }
        }
    }
}

TEST_F(AOFrameTest, EveryByteMayBeWrong) {
    const Bytes whole = sample().build();
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int value : {0, 1, 0x7F, 0x80, 0xFB, 0xFF}) {
            Bytes data = whole;
            data[at] = static_cast<std::byte>(value);
            const auto image = read(data);
            if (!image) continue;
            for (int frame = 0; frame < image->frameCount(); ++frame) {
                image->frame(frame).draw(canvas, OMRegion(canvas.bounds()), {3, 3}, 5);
                (void)image->frame(frame).hit({4, 4}, {3, 3}, 5);
            }
        }
}

TEST(AOImageTest, SaysWhatIsWrong) {
    EXPECT_EQ(problemOf(Bytes(9)), "its header is cut short");
    EXPECT_EQ(problemOf(AseqBuilder().block(1, 1, 'a').build()), "it has no sequence");
    Bytes data = sample().build();
    data[3] = std::byte{0x80};
    EXPECT_EQ(problemOf(data), "its number of frames is negative");
    data[3] = std::byte{0x7F}; // more than there is
    EXPECT_EQ(problemOf(data), "its frame table is cut short");
    data = sample().build();
    data[23] = std::byte{0x80}; // count of the first sequence
    EXPECT_EQ(problemOf(data), "its sequences are cut short");
}

TEST_F(AOFrameTest, FramesOutsideOfTheDataAreEmptyAndCounted) {
    AseqBuilder builder = sample();
    for (const std::uint32_t offset : {0x7FFFFFFFu, 0xFFFFFFFFu, 0x80000000u, 60u}) {
        Bytes data = builder.build();
        for (int byte = 0; byte < 4; ++byte)
            data[static_cast<std::size_t>(10 + byte)] = static_cast<std::byte>(offset >> 8 * byte);
        const auto image = read(data);
        ASSERT_TRUE(image) << offset;
        EXPECT_EQ(image->brokenFrames(), 1) << offset;
        EXPECT_EQ(image->frameSize(0).width, 0) << offset;
        EXPECT_EQ(image->frameSize(1).width, 3) << offset;
    }
    builder.frames[0].height = -1;
    EXPECT_EQ(builder.image()->brokenFrames(), 1);
    builder.frames[0].height = 32767; // rows that are not there
    const auto image = builder.image();
    image->frame(0).draw(canvas, OMRegion(canvas.bounds()), {0, 0}, 0);
    EXPECT_FALSE(image->frame(0).hit({0, 32000}, {0, 0}, 0));
}

TEST(AOImageTest, ASequenceWithoutTerminatorGetsOne) {
    const auto image = AseqBuilder().block(1, 1, 'a').sequence({}).sequence({{0, 0, 0, 0}}).image();
    EXPECT_EQ(image->sequence(0), (AOSequence{{0, 0, -1, 0}}));
    EXPECT_EQ(image->sequence(1), (AOSequence{{0, 0, 0, 0}, {0, 0, -1, 0}}));
}

TEST(AOImageStoreTest, AnImageIsSharedWhileSomebodyHasIt) {
    AOImageStore store;
    auto image = sample().image();
    store.keep(7, image);
    EXPECT_EQ(store.find(7), image);
    EXPECT_EQ(store.find(8), nullptr);
    image.reset();
    EXPECT_EQ(store.find(7), nullptr);
}

} // namespace
