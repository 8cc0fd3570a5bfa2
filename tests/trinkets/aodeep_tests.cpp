#include "trinkets/windowfixture.h"

#include "aodeep.h"
#include "omao.h"

#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Failures = std::vector<std::string>;

namespace {

constexpr int kClear = -1;
constexpr std::uint8_t kKey = 255; ///< no picture has it

/// A picture as a plain array, and what a frame of it must look like.
struct Picture {
    int width;
    int height;
    std::vector<int> pixels;

    [[nodiscard]] int at(int x, int y) const {
        const bool inside = x >= 0 && x < width && y >= 0 && y < height;
        return inside ? pixels[static_cast<std::size_t>(y * width + x)] : kClear;
    }
    /// What lies x, y from the corner of the frame turned by `direction`.
    [[nodiscard]] int turned(int x, int y, int direction) const {
        const int right = width - 1;
        const int bottom = height - 1;
        switch (direction) {
        case 0: return at(x, y);
        case 1: return at(right - x, y);
        case 2: return at(x, bottom - y);
        case 3: return at(right - x, bottom - y);
        case 4: return at(y, bottom - x);
        case 5: return at(y, x);
        case 6: return at(right - y, bottom - x);
        default: return at(right - y, x);
        }
    }
    [[nodiscard]] std::shared_ptr<AOImage> image() const {
        AseqBuilder builder;
        AseqBuilder::Frame& frame = builder.frames.emplace_back();
        frame.width = width;
        frame.height = height;
        for (int y = 0; y < height; ++y) {
            std::vector<std::uint8_t> row;
            for (int x = 0; x < width; ++x)
                row.push_back(at(x, y) == kClear ? kKey : static_cast<std::uint8_t>(at(x, y)));
            aorow::encodeRow(row, kKey, frame.rows);
        }
        return builder.sequence({{0, 0, 0, 0}}).image();
    }
};

Picture randomPicture(std::mt19937& random, int width, int height) {
    Picture picture{width, height, {}};
    const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    while (picture.pixels.size() < size) {
        const int colour = random() % 3 == 0 ? kClear : static_cast<int>(random() % 200);
        const std::size_t run = random() % 3 == 0 ? random() % 70 : 1 + random() % 4;
        picture.pixels.insert(picture.pixels.end(), run, colour);
    }
    picture.pixels.resize(size);
    return picture;
}

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

class DeepFrameTest : public ApplicationTest {
  protected:
    static constexpr int kSide = 60;

    OMRegion randomClip() {
        if (random() % 4 == 0) return OMRegion(Rect{-100, -100, 1000, 1000});
        OMRegion clip;
        for (unsigned i = random() % 4; i > 0; --i) {
            const int left = static_cast<int>(random() % kSide);
            const int top = static_cast<int>(random() % kSide);
            clip.unite(Rect{left, top, left + static_cast<int>(random() % 40),
                            top + static_cast<int>(random() % 40)});
        }
        return clip;
    }

    /// Draws by the frame and compares with the picture, pixel for pixel.
    void check(const Picture& picture, const AOImage& image, int depth, const OMRegion& clip,
               Point at, int direction) {
        OMMemCanvas canvas(kSide, kSide, depth);
        const std::uint32_t behind = depth == 8 ? 250 : 0x3F3F3F & ((1u << (depth - 1)) - 1);
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x)
                for (int byte = 0; byte < depth / 8; ++byte)
                    canvas.pixels().at(x, y)[byte] = static_cast<std::uint8_t>(behind >> 8 * byte);
        const AOFrame frame = image.unpackedFrame(
            0, depth == 8 ? kAOIndexPixels : AOPixelsOf(palette(), canvas), depth / 8);
        frame.draw(canvas, clip, at, direction);
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                const int there = picture.turned(x - at.x, y - at.y, direction);
                ASSERT_EQ(frame.hit({x, y}, at, direction), there != kClear) << x << " " << y;
                const int index = clip.contains(Point{x, y}) ? there : kClear;
                std::uint32_t expected = behind;
                if (index != kClear)
                    expected = depth == 8
                                   ? static_cast<std::uint32_t>(index)
                                   : pixelOf(palette()[static_cast<std::size_t>(index)], depth);
                ASSERT_EQ(read(canvas, x, y), expected)
                    << depth << " bits, direction " << direction << ", at " << x << " " << y;
            }
    }

    std::mt19937 random{5};
};

TEST_F(DeepFrameTest, EveryDepthDirectionAndClipShowsThePicture) {
    for (int round = 0; round < 60; ++round) {
        const Picture picture = randomPicture(random, 1 + static_cast<int>(random() % 70),
                                              1 + static_cast<int>(random() % 40));
        const auto image = picture.image();
        const OMRegion clip = randomClip();
        const Point at{static_cast<int>(random() % 80) - 40, static_cast<int>(random() % 80) - 40};
        for (const int depth : {8, 16, 24, 32})
            for (int direction = 0; direction < 8; ++direction)
                ASSERT_NO_FATAL_FAILURE(check(picture, *image, depth, clip, at, direction));
    }
}

TEST_F(DeepFrameTest, RunsAtTheirLimitAreDrawnWhole) {
    for (const int width : {249, 250, 251, 300, 500, 501})
        for (const int kind : {0, 1, 2}) { // a fill, literals, clear pixels with one behind
            Picture picture{width, 2, {}};
            for (int i = 0; i < width * 2; ++i)
                picture.pixels.push_back(kind == 0                ? 9
                                         : kind == 1              ? i % 200
                                         : i % width == width - 1 ? 7
                                                                  : kClear);
            const auto image = picture.image();
            for (const int depth : {8, 16, 24, 32})
                for (const int left : {0, 20 - width, -249, -250, -251, -100})
                    for (const int direction : {0, 1, 3})
                        ASSERT_NO_FATAL_FAILURE(check(picture, *image, depth,
                                                      OMRegion(Rect{3, 0, kSide, kSide}), {left, 5},
                                                      direction))
                            << width << " " << kind << " " << left;
        }
}

TEST_F(DeepFrameTest, DamagedRowsShowWhatIsLeftOfThem) {
    AseqBuilder builder;
    builder.frames.push_back({4, 3, {2, 10, 11, 251, 255, 12, 9, 0, 1, 1, 13}});
    const auto image = builder.sequence({{0, 0, 0, 0}}).image();
    const Picture left{4, 3, {10, 11, -1, -1, 12, 12, 12, 12, -1, 13, -1, -1}};
    for (const int depth : {8, 16, 24, 32})
        for (int direction = 0; direction < 8; ++direction)
            ASSERT_NO_FATAL_FAILURE(
                check(left, *image, depth, OMRegion(Rect{0, 0, kSide, kSide}), {5, 5}, direction));
}

TEST_F(DeepFrameTest, OtherDepthsAreRefused) {
    const auto image = Picture{1, 1, {40}}.image();
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
    AODeepFrames(image, pixels, 4).frame(0).draw(deep, all, {0, 0}, 8);
    EXPECT_EQ(shallow.changedPixels() + deep.changedPixels(), 0u);
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

TEST_P(DeepWindowTest, AnimationsKeepTheRecordThatWasCurrentWhenTheyWereMade) {
    ASSERT_EQ(window.backBuffer().depth(), GetParam());
    const platform::Rgb red{200, 8, 0};
    const platform::Rgb blue{0, 8, 200};
    AOPaletteRecord::setCurrent(record(red));
    OMAnimation first(window, builder().image(), 1, 0, 0);
    AOPaletteRecord::setCurrent(record(blue));
    OMAnimation second(window, builder().image(), 1, 20, 0);
    window.idle();
    EXPECT_EQ(backPixel(5, 5), pixelOf(red, GetParam()));
    EXPECT_EQ(backPixel(25, 5), pixelOf(blue, GetParam()));

    first.setPalette(second.palette());
    window.idle();
    EXPECT_EQ(backPixel(5, 5), pixelOf(blue, GetParam()));
    first.setPalette(nullptr);
    EXPECT_EQ(takeFailures(), Failures{"aoPalette is zero"});
    EXPECT_EQ(first.palette(), second.palette());
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
