// Pictures of animations: resources that are damaged or made to do harm (what is refused and why,
// what is still usable, and that neither time nor memory get out of proportion to their bytes),
// what is drawn in every depth, and what is packed from a canvas.
#include "../../fuzz/framecheck.h"
#include "growth.h"
#include "trinkets/flippingfixture.h"

#include "aodeep.h"
#include "omao.h"

#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Texts = std::vector<std::string>;

namespace {

constexpr std::size_t kOffsetsAt = 10; ///< the frame table
constexpr int kMost = 32767;

/// A resource with one number written over.
Bytes patched(Bytes data, std::size_t at, std::int64_t value, int bytes = 2) {
    for (int i = 0; i < bytes; ++i)
        data.at(at + static_cast<std::size_t>(i)) = static_cast<std::byte>(value >> 8 * i);
    return data;
}

class ImageTest : public WindowTest {
  protected:
    /// Two frames and two sequences.
    static AseqBuilder small() {
        AseqBuilder builder;
        builder.frame({"abbbbb", "..c...", "...ddd"}).frame({"xy", "z."});
        builder.sequence({entry(0, 10), entry(1, 10), entry(-2), entry(-1)});
        builder.sequence({entry(-500, 7), entry(-1)});
        return builder;
    }
    static constexpr std::size_t kSequencesAt = kOffsetsAt + 2 * 4 + 4;
    static constexpr std::size_t kFramesAt = kSequencesAt + (2 + 4 * 8) + (2 + 2 * 8);

    /// Null, and `problem` says why, when it is refused.
    std::shared_ptr<AOImage> read(const Bytes& data) {
        // A copy that is exactly as large, so that every byte too many is noticed.
        const auto copy = std::make_unique<std::byte[]>(data.size());
        std::copy(data.begin(), data.end(), copy.get());
        problem.clear();
        auto image = AOImage::read({copy.get(), data.size()}, problem);
        EXPECT_EQ(image == nullptr, !problem.empty());
        return image;
    }
    /// The frame as it is drawn, as far as it fits; "-" when it is empty.
    static std::string picture(const AOImage& image, int number) {
        OMMemCanvas canvas(8, 4, 8);
        image.frame(number).draw(canvas, OMRegion(canvas.bounds()), {0, 0}, 0);
        const Rect shown =
            platform::intersection(canvas.bounds(), AOBounds(image.frameSize(number), {}, 0));
        return shown.empty() ? "-" : pixelsOf(canvas, shown);
    }
    /// What is seen of each frame, or why there is none.
    std::string outcome(const Bytes& data) {
        const auto image = read(data);
        if (!image) return problem;
        std::string text;
        for (int i = 0; i < image->frameCount(); ++i) text += picture(*image, i) + " ";
        return text + std::to_string(image->brokenFrames()) + " broken";
    }

    std::string problem;
};

constexpr const char* kWhole = "abbbbb/..c.../...ddd/ xy/z./ 0 broken";
constexpr const char* kNoSequence = "it has no sequence";
constexpr const char* kNegative = "its number of frames is negative";
constexpr const char* kTableCut = "its frame table is cut short";
constexpr const char* kSequencesCut = "its sequences are cut short";

// Cut off

TEST_F(ImageTest, WhatIsCutOffIsNamedAndTheRestIsStillSeen) {
    const Bytes whole = small().build();
    const std::size_t second = whole.size() - read(whole)->packedRows(1).size(); // its rows
    const std::string first = "abbbbb/..c.../...ddd/ ";
    const std::pair<std::size_t, std::string> rows[] = {
        {0, "its header is cut short"},
        {kOffsetsAt - 1, "its header is cut short"},
        {kOffsetsAt, kTableCut},
        {kSequencesAt - 1, kTableCut},
        {kSequencesAt, kSequencesCut},
        {kFramesAt - 1, kSequencesCut},
        {kFramesAt, "- - 2 broken"},
        {kFramesAt + 5, "- - 2 broken"},
        {kFramesAt + 6, "....../....../....../ - 1 broken"},
        {kFramesAt + 6 + 6, "abbbbb/....../....../ - 1 broken"},
        {second - 1, first + "- 1 broken"},
        {second, first + "../../ 0 broken"},
        {second + 2, first + "x./../ 0 broken"},
        {second + 3, first + "xy/../ 0 broken"},
        {second + 5, first + "xy/z./ 0 broken"},
        {whole.size(), kWhole},
    };
    const auto cut = [&](std::size_t length) {
        return Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    };
    for (const auto& [length, expected] : rows) EXPECT_EQ(outcome(cut(length)), expected) << length;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        (void)outcome(cut(at));
        for (const int value : {0, 1, 0x7F, 0x80, 0xFB, 0xFF})
            (void)outcome(patched(whole, at, value, 1));
    }
}

// Numbers

TEST_F(ImageTest, WrongNumbersAreRefusedOrCostNoMoreThanTheirFrame) {
    const std::size_t second = kSequencesAt + 2 + 4 * 8;
    const std::size_t width = kFramesAt + 2;
    const std::size_t height = kFramesAt + 4;
    const Bytes whole = small().build();
    const int size = static_cast<int>(whole.size() - kFramesAt);
    const int other = static_cast<int>(whole.size() - read(whole)->packedRows(1).size() - 6 -
                                       kFramesAt); // offset of the second frame
    const struct {
        const char* name;
        Bytes data;
        std::string outcome;
    } rows[] = {
        {"no sequence", patched(whole, 0, 0), kNoSequence},
        {"32767 sequences", patched(whole, 0, kMost), kSequencesCut},
        {"no frame: its offsets are a placement and a sequence", patched(whole, 2, 0),
         kSequencesCut},
        {"-1 frames", patched(whole, 2, -1), kNegative},
        {"32767 frames", patched(whole, 2, kMost), kTableCut},
        {"-1 entries", patched(whole, kSequencesAt, -1), kSequencesCut},
        {"32767 entries", patched(whole, kSequencesAt, kMost), kSequencesCut},
        {"as many entries as half of the bytes", patched(whole, second, size / 2), kSequencesCut},
        {"offset -1", patched(whole, kOffsetsAt, -1, 4), "- xy/z./ 1 broken"},
        {"the highest offset", patched(whole, kOffsetsAt, 0x7FFFFFFF, 4), "- xy/z./ 1 broken"},
        {"an offset at the end", patched(whole, kOffsetsAt, size, 4), "- xy/z./ 1 broken"},
        {"half a header", patched(whole, kOffsetsAt, size - 5, 4), "- xy/z./ 1 broken"},
        {"both the first frame", patched(whole, kOffsetsAt + 4, 0, 4),
         "abbbbb/..c.../...ddd/ abbbbb/..c.../...ddd/ 0 broken"},
        {"both the second frame", patched(whole, kOffsetsAt, other, 4), "xy/z./ xy/z./ 0 broken"},
        {"width -1", patched(whole, width, -1), "- xy/z./ 1 broken"},
        {"height 0", patched(whole, height, 0), "- xy/z./ 0 broken"},
        {"height -1", patched(whole, height, -1), "- xy/z./ 1 broken"},
        {"one row only", patched(whole, height, 1), "abbbbb/ xy/z./ 0 broken"},
    };
    for (const auto& row : rows) EXPECT_EQ(outcome(row.data), row.outcome) << row.name;
}

// Rows

TEST_F(ImageTest, WhatOverrunsARowIsNotInTheNext) {
    const std::pair<std::vector<std::uint8_t>, const char*> rows[] = {
        {{6, 'a', 'b', 'c', 'd', 'e', 'f', 1, 'g'}, "abcd/g.../..../ 0 broken"},
        {{255, 'a', 250, 255, 'b', 2, 255, 'c', 99}, "aaaa/bbcc/..../ 0 broken"},
        {{1, 'a', 0, 250, 1, 'b'}, "a.../b.../..../ 0 broken"},
        {{0, 0, 0, 0, 1, 'a'}, "..../..../a.../ 0 broken"}, // tokens of nothing end a row
    };
    for (const auto& [packed, seen] : rows) {
        AseqBuilder builder;
        builder.frames.push_back({4, 3, packed});
        EXPECT_EQ(outcome(builder.sequence({}).build()), seen);
    }
}

TEST_F(ImageTest, TheLargestFramesTakeAsMuchAsTheirBytes) {
    AseqBuilder builder;
    builder.frames.push_back({kMost, kMost, {3, 'a', 'b', 'c', 0, 250, 251, 255, 'd', 250}});
    const auto image = builder.sequence({entry(0, 10), entry(-2)}).image();
    EXPECT_LT(image->frame(0).memory(), 4096U);
    EXPECT_LT(image->unpackedFrame(0, kAOIndexPixels, 4).memory(), 4096U);
    EXPECT_EQ(picture(*image, 0), "abc...../dddddddd/......../......../");
    for (const bool farCorner : {false, true})
        fuzzing::FrameCheck(*image, 0, {{3, 4}, farCorner, OMRegion(Rect{0, 0, 99, 99}), 16}).run();
    // It plays, too.
    OMAnimation animation(window, image, 1, -3, 0);
    for (int i = 0; i < 30; ++i) cycle();
    EXPECT_EQ(animation.boundingRectangle(), (Rect{-3, 0, kMost - 3, kMost}));
    EXPECT_EQ(backPixel(5, 1), 'd');
}

/// A resource of `count` frames that all reach to its end, each from another place on.
std::shared_ptr<AOImage> overlapping(int count) {
    AseqBuilder builder;
    for (int i = 0; i < count; ++i) builder.frames.push_back({1, 1, {1, 7}});
    Bytes data = builder.sequence({entry(0)}).build();
    const std::size_t frames = data.size() - static_cast<std::size_t>(count) * 8;
    for (std::size_t at = frames; at < data.size(); ++at)
        data[at] = std::byte{at % 2 == frames % 2 ? std::uint8_t{1} : std::uint8_t{7}};
    for (int i = 0; i < count; ++i)
        data = patched(std::move(data), kOffsetsAt + static_cast<std::size_t>(i) * 4, i * 2, 4);
    std::string problem;
    return AOImage::read(data, problem);
}

TEST_F(ImageTest, ColoursOfFramesThatOverlapChangeInProportion) {
    AOColorMap map{};
    for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<std::uint8_t>(i);
    std::swap(map[7], map[9]);
    EXPECT_LT(growthOfFour(2000, [&](int count) { (void)overlapping(count)->recoloured(map); }),
              kInProportion);
    const auto changed = overlapping(8)->recoloured(map);
    ASSERT_EQ(changed->frameCount(), 8);
    EXPECT_EQ(changed->packedRows(0)[0], 1);
    for (std::size_t i = 1; i < changed->packedRows(0).size(); i += 2)
        EXPECT_EQ(changed->packedRows(0)[i], 9) << i;
}

// Drawn in every depth

constexpr std::uint8_t kKey = 255; ///< no picture has it
constexpr int kSide = 60;

/// One frame of these colour indices, row by row.
std::shared_ptr<AOImage> imageOf(int width, const std::vector<std::uint8_t>& pixels) {
    AseqBuilder builder;
    AseqBuilder::Frame& frame = builder.frames.emplace_back();
    const std::size_t row = static_cast<std::size_t>(width);
    frame.width = width;
    frame.height = static_cast<int>(pixels.size() / row);
    for (std::size_t at = 0; at < pixels.size(); at += row)
        formats::animation::encodeRow(std::span(pixels).subspan(at, row), kKey, frame.rows);
    return builder.sequence({{0, 0, 0, 0}}).image();
}

class DrawnTest : public OMAppTest {
  protected:
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    std::shared_ptr<AOImage> randomImage() {
        const int width = 1 + below(70);
        const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(1 + below(40));
        std::vector<std::uint8_t> pixels;
        while (pixels.size() < size) {
            const int run = below(3) == 0 ? below(70) : 1 + below(4);
            const auto color = static_cast<std::uint8_t>(below(3) == 0 ? kKey : below(200));
            pixels.insert(pixels.end(), static_cast<std::size_t>(run), color);
        }
        pixels.resize(size);
        return imageOf(width, pixels);
    }
    OMRegion randomClip() {
        if (below(4) == 0) return OMRegion(Rect{-100, -100, 1000, 1000});
        OMRegion clip;
        for (int i = below(4); i > 0; --i) {
            const int left = below(kSide);
            const int top = below(kSide);
            clip.unite(Rect{left, top, left + below(40), top + below(40)});
        }
        return clip;
    }
    /// Draws the first frame in all directions; ends the program where a pixel is not as its row
    /// says.
    static void check(const AOImage& image, Point at, const OMRegion& clip) {
        for (const int depth : {16, 24, 32})
            fuzzing::FrameCheck(image, 0, {at, false, clip, depth}).run();
    }

    std::mt19937 random{5};
};

TEST_F(DrawnTest, EveryDepthDirectionAndClipShowsThePicture) {
    for (int round = 0; round < 100; ++round)
        check(*randomImage(), {below(70) - 45, below(55) - 35}, randomClip());
}

TEST_F(DrawnTest, RunsAtTheirLimitAreDrawnWhole) {
    const auto fill = [](int, int) { return 9; };
    const auto literals = [](int i, int) { return i % 200; };
    const auto clearButTheLast = [](int i, int width) { return i % width == width - 1 ? 7 : kKey; };
    for (const int width : {249, 250, 251, 300, 500, 501})
        for (int (*const colorAt)(int, int) : {+fill, +literals, +clearButTheLast}) {
            std::vector<std::uint8_t> pixels;
            for (int i = 0; i < width * 2; ++i)
                pixels.push_back(static_cast<std::uint8_t>(colorAt(i, width)));
            for (const int left : {0, 20 - width, -249, -250, -251, -100})
                check(*imageOf(width, pixels), {left, 5}, OMRegion(Rect{3, 0, kSide, kSide}));
        }
}

TEST_F(DrawnTest, OtherDepthsAreRefused) {
    const auto image = imageOf(1, {40});
    OMMemCanvas shallow(4, 4, 8);
    OMMemCanvas deep(4, 4, 32);
    const AOPixelTable pixels = AOPixelsOf(OMDevicePalette{}, deep);
    const OMRegion all(Rect{0, 0, 4, 4});
    AODeepFrames(image, pixels, 1).frame(0).draw(shallow, all, {0, 0}, 0);
    EXPECT_EQ(takeFailures(), Texts{"Use GDI to do 8-bit graphics."});
    AODeepFrames(image, pixels, 5).frame(0).draw(deep, all, {0, 0}, 0);
    EXPECT_EQ(takeFailures(), Texts{"This is one deep canvas."});
    image->frame(0).draw(deep, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 4).frame(0).draw(shallow, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 3).frame(0).draw(deep, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 4).frame(0).draw(deep, all, {0, 0}, 8); // no direction
    EXPECT_EQ(shallow.changedPixels() + deep.changedPixels(), 0u);
    EXPECT_FALSE(image->frame(0).hit({5, 7}, {5, 7}, 8));
    EXPECT_TRUE(image->frame(0).hit({3, 3}, {0, 0}, -1)) << "asks for the window's corner";
    EXPECT_EQ(takeFailures(), Texts{});
}

TEST(FrameCacheTest, ManyLargeFramesOfFewBytesDoNotFillTheMemory) {
    // Thousands of frames share rows that unpack to a hundred times their size.
    AseqBuilder builder;
    AseqBuilder::Frame& frame = builder.frames.emplace_back();
    frame.width = 30000;
    frame.height = 500;
    for (int i = 0; i < 500 * 480; ++i) frame.rows.insert(frame.rows.end(), {255, 9, 63});
    AOFrameCache cache;
    const auto image = builder.sequence({{0, 0, 0, 0}}).image();
    const std::size_t size = image->frame(0).memory();
    const int fitting = static_cast<int>(AOFrameCache::kMostBytes / size);
    ASSERT_GT(fitting, 1);
    for (int i = 0; i <= fitting; ++i) cache.keep(i, AOFrame(image->frame(0)));
    EXPECT_EQ(cache.find(0), nullptr);
    EXPECT_NE(cache.find(fitting), nullptr);
}

// In a deep window

class DeepWindowTest : public SurfaceTest, public testing::WithParamInterface<int> {
  protected:
    DeepWindowTest() : SurfaceTest(OMApp::DisplayMode::FullScreen, GetParam()) {
        open(OMTrinketWindow::Showing::Copying);
    }
    ~DeepWindowTest() override { AOPaletteRecord::setCurrent(nullptr); }

    static std::shared_ptr<AOPaletteRecord> record(platform::Rgb fifty) {
        OMDevicePalette colors{};
        colors[50] = fifty;
        colors[51] = {255, 0, 8};
        return std::make_shared<AOPaletteRecord>(colors);
    }
    std::uint32_t backPixel() {
        std::uint32_t pixel = 0;
        for (int byte = 0; byte < GetParam() / 8; ++byte)
            pixel |= std::uint32_t{window->backBuffer().pixels().at(5, 5)[byte]} << 8 * byte;
        return pixel;
    }
    const std::shared_ptr<AOImage> image = AseqBuilder()
                                               .block(10, 10, 50)
                                               .block(10, 10, 51)
                                               .sequence({entry(0), entry(-4), entry(0), entry(1)})
                                               .image();
};
INSTANTIATE_TEST_SUITE_P(Depths, DeepWindowTest, testing::Values(16, 24, 32));

TEST_P(DeepWindowTest, AnimationsHaveTheirPaletteAndShareFramesOfOneRecord) {
    const auto colors = record({0, 8, 200});
    AOPaletteRecord::setCurrent(colors);
    OMAnimation first(*window, image, 1, 0, 0);
    OMAnimation second(*window, image, 1, 30, 30);
    const auto frames = colors->framesOf(image, window->backBuffer());
    EXPECT_EQ(frames->converted(), 1) << "the frame shown, as soon as it is placed";
    first.setFrameNumber(3);
    second.setFrameNumber(3);
    cycle();
    EXPECT_EQ(frames->converted(), 2);
    EXPECT_EQ(backPixel(), GetParam() == 16 ? 31U * 1024 + 1 : 0xFF0008U) << "blue lowest";
    const auto other = record({200, 8, 0});
    first.setPalette(other);
    first.setFrameNumber(1);
    cycle();
    EXPECT_EQ(backPixel(), GetParam() == 16 ? 25U * 1024 + 32 : 0xC80800U);
    first.setPalette(nullptr);
    EXPECT_EQ(takeFailures(), Texts{"aoPalette is zero"});
    EXPECT_EQ(first.palette(), other);
    first.replaceColorIndex(50, 51);
    first.swapColorIndices(50, 51);
    const std::string end = " color indices in a " + std::to_string(GetParam()) + "-bit canvas.";
    EXPECT_EQ(machine.dialogs().boxes.at(0).text, "Can't replace" + end);
    EXPECT_EQ(machine.dialogs().boxes.at(1).text, "Can't swap" + end);
}

using DeepWindowDeathTest = DeepWindowTest;
INSTANTIATE_TEST_SUITE_P(One, DeepWindowDeathTest, testing::Values(32));

TEST_P(DeepWindowDeathTest, WithoutPaletteRecordThereIsNoAnimation) {
    EXPECT_EXIT(OMAnimation(*window, image, 1, 0, 0), testing::ExitedWithCode(255),
                "currentAOPalette is zero");
}

// Packed from a canvas

TEST_F(ImageTest, WhatIsPackedIsShownAgain) {
    OMMemCanvas canvas(300, 20, 8);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 300; ++x)
            *canvas.pixels().at(x, y) = static_cast<std::uint8_t>(y == 0   ? '.'
                                                                  : y == 1 ? 'f'
                                                                           : 'a' + (x + y) % 26);
    const std::pair<Rect, Rect> rows[] = {
        {{0, 0, 0, 0}, {0, 0, 300, 20}}, // empty: the whole canvas
        {{7, 0, 258, 9}, {7, 0, 258, 9}},
        {{290, 15, 310, 30}, {290, 15, 300, 20}},
        {{-5, -5, 6, 7}, {0, 0, 6, 7}},
    };
    for (const auto& [area, cut] : rows) {
        const auto animation =
            OMAnimation::createFromImage(AOPack(canvas, area, '.'), 0, 0, window);
        ASSERT_TRUE(animation);
        EXPECT_EQ(animation->state(), OMAnimation::State::Held);
        OMMemCanvas copy(300, 20, 8);
        animation->paintAt(copy, {0, 0});
        EXPECT_EQ(pixelsOf(copy, {0, 0, cut.width(), cut.height()}), pixelsOf(canvas, cut));
    }
    EXPECT_TRUE(AOPack(canvas, {300, 0, 310, 10}, '.').empty());
    EXPECT_EQ(OMAnimation::createFromImage(Bytes(20), 0, 0, window), nullptr);
    OMMemCanvas deep(10, 10, 24);
    EXPECT_TRUE(AOPack(deep, {}, 0).empty());
    EXPECT_EQ(machine.dialogs().boxes.at(0).text, "Can't pack from a 24-bit canvas.");
}

} // namespace
