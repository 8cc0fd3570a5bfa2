// Pictures of animations: what is refused of damaged resources, and what is still usable; what is
// drawn in every depth; what is packed from a canvas.
#include "../../fuzz/framecheck.h"
#include "trinkets/flippingfixture.h"

#include "aodeep.h"
#include "omao.h"

#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Texts = std::vector<std::string>;

namespace {

constexpr int kMost = 32767;

/// A resource with one number written over.
Bytes patched(Bytes data, std::size_t at, std::int64_t value, int bytes = 2) {
    for (int i = 0; i < bytes; ++i)
        data.at(at + static_cast<std::size_t>(i)) = static_cast<std::byte>(value >> 8 * i);
    return data;
}

class ImageTest : public WindowTest {
  protected:
    /// The frame as it is drawn, as far as it fits; "-" when it is empty.
    static std::string picture(const AOImage& image, int number) {
        OMMemCanvas canvas(8, 4, 8);
        image.frame(number).draw(canvas, OMRegion(canvas.bounds()), {0, 0}, 0);
        const Rect shown =
            platform::intersection(canvas.bounds(), AOBounds(image.frameSize(number), {}, 0));
        return shown.empty() ? "-" : pixelsOf(canvas, shown);
    }
    /// What is seen of each frame and how many are broken, or why there is none.
    static std::string outcome(const Bytes& data) {
        std::string text;
        const auto image = AOImage::read(data, text);
        EXPECT_EQ(image == nullptr, !text.empty());
        for (int i = 0; image && i < image->frameCount(); ++i) text += picture(*image, i) + " ";
        return image ? text + std::to_string(image->brokenFrames()) : text;
    }
};

TEST_F(ImageTest, WhatIsDamagedIsNamedAndTheRestIsStillSeen) {
    AseqBuilder builder;
    builder.frame({"abbbbb", "..c...", "...ddd"}).frame({"xy", "z."});
    builder.sequence({entry(0, 10), entry(1, 10), entry(-2), entry(-1)});
    builder.sequence({entry(-500, 7), entry(-1)});
    const Bytes whole = builder.build();
    // The frame table, sequences, frames, and the second frame.
    const std::size_t t = 10, s = t + 12, f = s + 52, g = whole.size() - 7 - 6;
    const int size = static_cast<int>(whole.size() - f);
    const int second = static_cast<int>(g - f);
    const std::string first = "abbbbb/..c.../...ddd/ ", other = "xy/z./ ";
    const auto cut = [&](std::size_t length) {
        return Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    };
    for (const auto& [length, expected] : {std::pair(t - 1, std::string("its header is cut short")),
                                           {s - 1, "its frame table is cut short"},
                                           {f - 1, "its sequences are cut short"},
                                           {f + 5, "- - 2"},
                                           {f + 6, "....../....../....../ - 1"},
                                           {f + 12, "abbbbb/....../....../ - 1"},
                                           {g + 5, first + "- 1"},
                                           {g + 6, first + "../../ 0"},
                                           {g + 8, first + "x./../ 0"},
                                           {g + 9, first + "xy/../ 0"},
                                           {whole.size(), first + other + "0"}})
        EXPECT_EQ(outcome(cut(length)), expected) << length;
    const std::tuple<std::size_t, std::int64_t, int, std::string> rows[] = {
        {t, -1, 4, "- " + other + "1"},         {t, size, 4, "- " + other + "1"},
        {t, size - 5, 4, "- " + other + "1"},   {t + 4, 0, 4, first + first + "0"},
        {t, second, 4, other + other + "0"},    {f + 2, -1, 2, "- " + other + "1"},
        {f + 4, 0, 2, "- " + other + "0"},      {f + 4, -1, 2, "- " + other + "1"},
        {f + 4, 1, 2, "abbbbb/ " + other + "0"}};
    for (const auto& [at, value, bytes, expected] : rows)
        EXPECT_EQ(outcome(patched(whole, at, value, bytes)), expected) << at << " " << value;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int value : {0, 1, 0x7F, 0x80, 0xFB, 0xFF})
            (void)outcome(patched(cut(whole.size()), at, value, 1));
}

TEST_F(ImageTest, WhatOverrunsARowIsNotInTheNext) {
    const std::pair<std::vector<std::uint8_t>, const char*> rows[] = {
        {{6, 'a', 'b', 'c', 'd', 'e', 'f', 1, 'g'}, "abcd/g.../..../ 0"},
        {{255, 'a', 250, 255, 'b', 2, 255, 'c', 99}, "aaaa/bbcc/..../ 0"},
        {{1, 'a', 0, 250, 1, 'b'}, "a.../b.../..../ 0"},
        {{0, 0, 0, 0, 1, 'a'}, "..../..../a.../ 0"}, // tokens of nothing end a row
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
    for (const bool farCorner : {false, true})
        fuzzing::FrameCheck(*image, 0, {{3, 4}, farCorner, OMRegion(Rect{0, 0, 99, 99}), 16}).run();
    OMAnimation animation(window, image, 1, -3, 0);
    for (int i = 0; i < 30; ++i) cycle();
    EXPECT_EQ(animation.boundingRectangle(), (Rect{-3, 0, kMost - 3, kMost}));
    EXPECT_EQ(backPixel(5, 1), 'd');
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

struct DeepWindowTest : SurfaceTest {
    DeepWindowTest() : SurfaceTest(OMApp::DisplayMode::FullScreen, 24) {
        open(OMTrinketWindow::Showing::Copying);
    }
    ~DeepWindowTest() override { AOPaletteRecord::setCurrent(nullptr); }
    static std::shared_ptr<AOPaletteRecord> record(platform::Rgb fifty) {
        OMDevicePalette colors{};
        colors[50] = fifty;
        colors[51] = {255, 0, 8};
        return std::make_shared<AOPaletteRecord>(colors);
    }
};

TEST_F(DeepWindowTest, AnimationsHaveTheirPaletteAndShareFramesOfOneRecord) {
    AseqBuilder builder;
    builder.block(10, 10, 50).block(10, 10, 51);
    const auto image = builder.sequence({entry(0), entry(-4), entry(0), entry(1)}).image();
    const auto colors = record({0, 8, 200});
    AOPaletteRecord::setCurrent(colors);
    OMAnimation first(*window, image, 1, 0, 0), second(*window, image, 1, 30, 30);
    const auto frames = colors->framesOf(image, window->backBuffer());
    EXPECT_EQ(frames->converted(), 1) << "the frame shown, as soon as it is placed";
    const auto seen = [&](int frame) {
        first.setFrameNumber(frame);
        cycle();
        const std::uint8_t* pixel = window->backBuffer().pixels().at(5, 5);
        return std::vector<int>{pixel[0], pixel[1], pixel[2]};
    };
    second.setFrameNumber(3);
    EXPECT_EQ(seen(3), (std::vector{8, 0, 255})) << "blue first";
    EXPECT_EQ(frames->converted(), 2);
    const auto other = record({200, 8, 0});
    first.setPalette(other);
    EXPECT_EQ(seen(1), (std::vector{0, 8, 200}));
    first.setPalette(nullptr);
    EXPECT_EQ(takeFailures(), Texts{"aoPalette is zero"});
    EXPECT_EQ(first.palette(), other);
    first.replaceColorIndex(50, 51);
    first.swapColorIndices(50, 51);
    for (const auto& [box, what] : {std::pair(0u, "Can't replace"), {1u, "Can't swap"}})
        EXPECT_TRUE(machine.dialogs().boxes.at(box).starts_with(what));
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
    const int fitting = static_cast<int>(AOFrameCache::kMostBytes / image->frame(0).memory());
    ASSERT_GT(fitting, 1);
    for (int i = 0; i <= fitting; ++i) cache.keep(i, AOFrame(image->frame(0)));
    EXPECT_EQ(cache.find(0), nullptr);
    EXPECT_NE(cache.find(fitting), nullptr);
}

TEST_F(ImageTest, WhatIsPackedIsShownAgain) {
    OMMemCanvas canvas(300, 20, 8), deep(10, 10, 24);
    for (int i = 0; i < 300 * 20; ++i)
        *canvas.pixels().at(i % 300, i / 300) =
            static_cast<std::uint8_t>(i < 400 ? '.' : 'a' + i % 26);
    for (const auto& [area, cut] : {std::pair(Rect{0, 0, 0, 0}, Rect{0, 0, 300, 20}),
                                    {Rect{7, 0, 258, 9}, Rect{7, 0, 258, 9}},
                                    {Rect{290, 15, 310, 30}, Rect{290, 15, 300, 20}},
                                    {Rect{-5, -5, 6, 7}, Rect{0, 0, 6, 7}}}) {
        const auto animation =
            OMAnimation::createFromImage(AOPack(canvas, area, '.'), 0, 0, window);
        OMMemCanvas copy(300, 20, 8);
        animation->paintAt(copy, {0, 0});
        EXPECT_EQ(pixelsOf(copy, {0, 0, cut.width(), cut.height()}), pixelsOf(canvas, cut));
    }
    EXPECT_TRUE(AOPack(canvas, {300, 0, 310, 10}, '.').empty() && AOPack(deep, {}, 0).empty());
    EXPECT_EQ(machine.dialogs().boxes.at(0), "Can't pack from a 24-bit canvas.");
}

} // namespace
