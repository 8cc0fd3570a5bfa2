#include "../../fuzz/framecheck.h"
#include "trinkets/windowfixture.h"

#include "aodeep.h"
#include "omao.h"

#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Failures = std::vector<std::string>;

namespace {

OMDevicePalette palette() {
    OMDevicePalette colors{};
    for (std::size_t i = 0; i < colors.size(); ++i)
        colors[i] = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i),
                     static_cast<std::uint8_t>(i * 7)};
    return colors;
}

/// The pixel by hand: blue lowest, 5-5-5 at 16 bits.
std::uint32_t pixelOf(platform::Rgb color, int depth) {
    if (depth == 16)
        return static_cast<std::uint32_t>((color.red / 8) * 1024 + (color.green / 8) * 32 +
                                          color.blue / 8);
    return static_cast<std::uint32_t>(color.red * 65536 + color.green * 256 + color.blue);
}

std::uint32_t read(OMMemCanvas& canvas, int x, int y) {
    std::uint32_t pixel = 0;
    for (int byte = 0; byte < canvas.depth() / 8; ++byte)
        pixel |= std::uint32_t{canvas.pixels().at(x, y)[byte]} << 8 * byte;
    return pixel;
}

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

class DeepFrameTest : public OMAppTest {
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

TEST_F(DeepFrameTest, EveryDepthDirectionAndClipShowsThePicture) {
    for (int round = 0; round < 100; ++round)
        check(*randomImage(), {below(70) - 45, below(55) - 35}, randomClip());
}

TEST_F(DeepFrameTest, RunsAtTheirLimitAreDrawnWhole) {
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

TEST_F(DeepFrameTest, OtherDepthsAreRefused) {
    const auto image = imageOf(1, {40});
    OMMemCanvas shallow(4, 4, 8);
    OMMemCanvas deep(4, 4, 32);
    const AOPixelTable pixels = AOPixelsOf(palette(), deep);
    const OMRegion all(Rect{0, 0, 4, 4});
    AODeepFrames(image, pixels, 1).frame(0).draw(shallow, all, {0, 0}, 0);
    EXPECT_EQ(takeFailures(), Failures{"Use GDI to do 8-bit graphics."});
    AODeepFrames(image, pixels, 5).frame(0).draw(deep, all, {0, 0}, 0);
    EXPECT_EQ(takeFailures(), Failures{"This is one deep canvas."});
    image->frame(0).draw(deep, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 4).frame(0).draw(shallow, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 3).frame(0).draw(deep, all, {0, 0}, 0);
    AODeepFrames(image, pixels, 4).frame(0).draw(deep, all, {0, 0}, 8); // no direction
    EXPECT_EQ(shallow.changedPixels() + deep.changedPixels(), 0u);
    EXPECT_FALSE(image->frame(0).hit({5, 7}, {5, 7}, 8));
    EXPECT_TRUE(image->frame(0).hit({3, 3}, {0, 0}, -1)) << "asks for the window's corner";
    EXPECT_EQ(takeFailures(), Failures{});
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

// Animations in a deep window

class DeepWindowTest : public FrameworkTest, public testing::WithParamInterface<int> {
  protected:
    struct Surfaces {
        Surfaces() { OMApp::useDirectDraw(); }
        ~Surfaces() {
            OMApp::useGDI();
            AOPaletteRecord::setCurrent(nullptr);
        }
    };
    struct Screen {
        Surfaces surfaces;
        OMApp app;
        explicit Screen(int depth)
            : app(OMApp::DisplayMode::FullScreen, OMColor(), {0, 0, 640, 480}, depth) {}
    };

    static std::shared_ptr<AOPaletteRecord> record(platform::Rgb fifty) {
        OMDevicePalette colors = palette();
        colors[50] = fifty;
        return std::make_shared<AOPaletteRecord>(colors);
    }
    std::uint32_t backPixel(int x, int y) { return read(window.backBuffer(), x, y); }

    AseqBuilder builder() {
        AseqBuilder made;
        made.block(10, 10, 50).block(10, 10, 51);
        return made.sequence({{0, 0, -4, 0}, {0, 0, 0, 0}, {0, 0, 1, 0}});
    }

    Screen screen{GetParam()};
    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
};
INSTANTIATE_TEST_SUITE_P(Depths, DeepWindowTest, testing::Values(16, 24, 32));

TEST_P(DeepWindowTest, AnimationsHaveTheirPalette) {
    const platform::Rgb red{200, 8, 0};
    AOPaletteRecord::setCurrent(record({0, 8, 200}));
    OMAnimation animation(window, builder().image(), 1, 0, 0);
    const auto other = record(red);
    animation.setPalette(other);
    window.idle();
    EXPECT_EQ(backPixel(5, 5), pixelOf(red, GetParam()));
    animation.setPalette(nullptr);
    EXPECT_EQ(takeFailures(), Failures{"aoPalette is zero"});
    EXPECT_EQ(animation.palette(), other);
}

TEST_P(DeepWindowTest, AFrameIsConvertedOnceForAllWhoShareImageAndRecord) {
    const auto colors = record({1, 2, 3});
    AOPaletteRecord::setCurrent(colors);
    const auto image = builder().image();
    OMAnimation first(window, image, 1, 0, 0);
    OMAnimation second(window, image, 1, 30, 30);
    const auto frames = colors->framesOf(image, window.backBuffer());
    EXPECT_EQ(frames->converted(), 1) << "the frame shown, as soon as it is placed";
    window.idle();
    EXPECT_EQ(frames->converted(), 1);
    first.setFrameNumber(2);
    second.setFrameNumber(2);
    window.idle();
    EXPECT_EQ(frames->converted(), 2);
    EXPECT_EQ(backPixel(5, 5), pixelOf(palette()[51], GetParam()));
}

TEST_P(DeepWindowTest, ColourIndicesCannotBeChanged) {
    AOPaletteRecord::setCurrent(record({}));
    OMAnimation animation(window, builder().image(), 1, 0, 0);
    animation.replaceColorIndex(50, 51);
    animation.swapColorIndices(50, 51);
    ASSERT_EQ(machine.dialogs().boxes.size(), 2u);
    const std::string end = " color indices in a " + std::to_string(GetParam()) + "-bit canvas.";
    EXPECT_EQ(machine.dialogs().boxes[0].text, "Can't replace" + end);
    EXPECT_EQ(machine.dialogs().boxes[1].text, "Can't swap" + end);
    window.idle();
    EXPECT_EQ(backPixel(5, 5), 0u);
}

using DeepWindowDeathTest = DeepWindowTest;
INSTANTIATE_TEST_SUITE_P(One, DeepWindowDeathTest, testing::Values(32));

TEST_P(DeepWindowDeathTest, WithoutPaletteRecordThereIsNoAnimation) {
    EXPECT_EXIT(OMAnimation(window, builder().image(), 1, 0, 0), testing::ExitedWithCode(255),
                "currentAOPalette is zero");
}

} // namespace
