// Canvases and palettes: what is drawn where, with which pixels, and how much of it is shown.
#include "canvasfixture.h"
#include "formats/picture/palette.h"

#include "omcursor.h"
#include "omwndcanvas.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using platform::Rect;
using platform::Rgb;
using testing_support::pixelAt;
using testing_support::Process;
using testing_support::setPixel;

namespace {

using Messages = std::vector<std::string>;
using Picture = std::vector<std::vector<std::uint32_t>>; // rows of pixels

/// The pixel at a place of a canvas whose area is `area`.
template <class Rows>
auto& at(Rows& picture, const Rect& area, const platform::Point& place) {
    return picture[static_cast<std::size_t>(place.y - area.top)]
                  [static_cast<std::size_t>(place.x - area.left)];
}

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

std::mt19937 engine{4711};

int randomBetween(int least, int most) {
    return std::uniform_int_distribution(least, most)(engine);
}

Picture pictureOf(OMCanvas& canvas) {
    Picture picture;
    const Rect area = canvas.pixels().area;
    for (int y = area.top; y < area.bottom; ++y) {
        picture.emplace_back();
        for (int x = area.left; x < area.right; ++x)
            picture.back().push_back(pixelAt(canvas, x, y));
    }
    return picture;
}

void fillWithNoise(OMCanvas& canvas) {
    const Rect area = canvas.pixels().area;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            setPixel(canvas, x, y, static_cast<std::uint32_t>(engine()));
}

OMRegion randomRegion(int side) {
    OMRegion region;
    for (int i = randomBetween(0, 4); i >= 0; --i) {
        const int x = randomBetween(-4, side);
        const int y = randomBetween(-4, side);
        region.unite(Rect{x, y, x + randomBetween(0, side), y + randomBetween(0, side)});
    }
    return region;
}

OMPalette noisePalette() {
    OMPalette palette;
    const auto part = [] { return static_cast<std::uint16_t>(engine()); };
    for (OMColor& color : palette) color = {part(), part(), part()};
    return palette;
}

// Palettes

TEST(OMPalette, theGameOwnsEntries10To245Only) {
    OMPalette given;
    given.fill(OMColor(0x12FF, 0x34FF, 0x5600));
    given[100] = {0xFFFF, 0xFF00, 0xFF80};
    given[101] = {0x00FF, 0x0001, 0};
    given[102] = {0xFF00, 0xFF00, 0xFE00};
    const OMDevicePalette palette = OMGamePalette(given);
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const Rgb expected = i < 10 || i > 245 ? platform::staticPalette()[i]
                             : i == 100        ? Rgb{254, 254, 254}
                             : i == 101        ? Rgb{1, 1, 1}
                             : i == 102        ? Rgb{255, 255, 254}
                                               : Rgb{0x12, 0x34, 0x56};
        EXPECT_EQ(palette[i], expected) << i;
    }
}

TEST(OMPalette, isReadWholeAndGivenBackAsStored) {
    Process process(8);
    std::vector<std::byte> data(formats::picture::kPaletteSize, std::byte{0x77});
    data[200 * 6] = std::byte{0xFE}; // the second byte of each word does not count
    const std::optional<OMPalette> palette = OMReadPalette(data);
    ASSERT_TRUE(palette);
    EXPECT_EQ((*palette)[200], OMColor(0xFE00, 0x7700, 0x7700));
    data.pop_back();
    EXPECT_FALSE(OMReadPalette(data));
    EXPECT_EQ(process.takeMessages(), Messages{"no palette"});

    OMMemCanvas canvas(4, 4, 8);
    EXPECT_EQ(canvas.getPalette(), OMPaletteFromDevice(platform::staticPalette()));
    canvas.setPalette(*palette);
    OMWndCanvas window({0, 0, 64, 48});
    window.setPalette(canvas.getPalette());
    EXPECT_EQ(window.getPalette(), canvas.getPalette());
    EXPECT_EQ(process.display().palette(), canvas.devicePalette()) << "installed on the display";
    for (const int index : {-1, 256, kMost}) EXPECT_EQ(canvas.getPaletteEntry(index), OMColor());
    EXPECT_EQ(process.messages,
              Messages(3, "OMCanvas::getPaletteEntry - index must be between 0 and 255!"));
}

// Creation and colours

TEST(OMCanvas, refusesImpossibleSizesAndDepths) {
    Process process(8);
    constexpr auto kTooSmall =
        "OMMemCanvas::OMMemCanvas - height and width must be greater than 0!";
    constexpr auto kTooLarge = "OMMemCanvas::OMMemCanvas - the canvas is too large!";
    constexpr auto kDepth = "OMCanvas::OMCanvas - canvases can only be 8, 16, 24 or 32 bit!";
    struct Row {
        int width, height, depth;
        Messages messages;
    };
    const Row rows[] = {{0, 5, 8, {kTooSmall}},          {5, -5, 16, {kTooSmall}},
                        {kMost, 2, 32, {kTooLarge}},     {0x7FFF, 0x7FFF, 8, {kTooLarge}},
                        {0, 0, -8, {kDepth, kTooSmall}}, {3, 3, 15, {kDepth}}};
    for (const Row& row : rows) {
        OMMemCanvas canvas(row.width, row.height, row.depth);
        EXPECT_EQ(process.takeMessages(), row.messages);
        EXPECT_EQ(canvas.bounds(), row.width == 3 ? (Rect{0, 0, 3, 3}) : (Rect{0, 0, 1, 1}));
        EXPECT_EQ(canvas.depth(), row.depth == 16 || row.depth == 32 ? row.depth : 8);
        canvas.fillRect({0, 0, 10, 10});
    }
}

TEST(OMCanvas, resolvesColorsForItsDepth) {
    Process process(8);
    OMPalette palette;
    palette.fill(OMColor(0x4000, 0x4000, 0x4000));
    palette[20] = {0xF800, 0x0800, 0x1000};
    palette[30] = {0x8000, 0x8200, 0x8400};
    struct Row {
        int depth;
        std::uint32_t index20;
        std::uint32_t rgb; // of 0x8180, 0x82FF, 0x8300
    };
    for (const Row& row : {Row{8, 20, 30}, Row{16, 0x7C22, 16u << 10 | 16u << 5 | 16u},
                           Row{24, 0xF80810, 0x818283}, Row{32, 0xF80810, 0x818283}}) {
        OMMemCanvas canvas(3, 1, row.depth);
        canvas.setPalette(palette);
        EXPECT_EQ(canvas.pixelValue(OMColor(0x8180, 0x82FF, 0x8300)), row.rgb) << row.depth;
        canvas.setColor(OMColor(20));
        canvas.fillRect({1, 0, 3, 1});
        EXPECT_EQ(pictureOf(canvas), (Picture{{0, row.index20, row.index20}}));
    }
    OMMemCanvas canvas(1, 1, 8);
    EXPECT_EQ(canvas.pixelValue(OMColor()), 0u) << "of several blacks the lowest entry";
    EXPECT_EQ(canvas.pixelValue(OMColor(0xFF00, 0xFF00, 0xFF00)), 255u);
    canvas.setPalette(palette);
    EXPECT_EQ(canvas.pixelValue(OMColor(0x5000, 0x5000, 0x5000)), 10u) << "of equally near ones";
}

// Copies

/// One random copy done by the canvas and pixel by pixel.
void checkRandomCopy(OMCanvas& source, OMCanvas& destination, OMRasterOp operation) {
    const int sourceX = randomBetween(-12, 40);
    const int sourceY = randomBetween(-12, 40);
    const int width = randomBetween(-2, 45);
    const int height = randomBetween(-2, 45);
    const int toX = randomBetween(-12, 40);
    const int toY = randomBetween(-12, 40);
    const OMRegion extra = randomRegion(30);
    const bool converted = source.depth() != destination.depth();
    const bool useExtra = converted || randomBetween(0, 2) == 0;
    std::optional<OMRegion> clip;
    if (randomBetween(0, 2) == 0) destination.setClipRegion(clip.emplace(randomRegion(30)));

    const Picture from = pictureOf(source);
    Picture expected = pictureOf(destination);
    const Rect fromArea = source.pixels().area;
    const Rect toArea = destination.pixels().area;
    std::size_t changed = 0;
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const platform::Point place{sourceX + column, sourceY + row};
            const platform::Point to{toX + column, toY + row};
            if (!OMContains(fromArea, place) || !OMContains(toArea, to)) continue;
            if (useExtra && !extra.contains(to)) continue;
            if (clip && !clip->contains(to)) continue;
            std::uint32_t pixel = at(from, fromArea, place);
            if (converted)
                pixel = destination.pixelValue(source.getPaletteEntry(static_cast<int>(pixel)));
            std::uint32_t& target = at(expected, toArea, to);
            if (operation == OMRasterOp::SrcCopy) target = pixel;
            if (operation == OMRasterOp::SrcInvert) target ^= pixel;
            if (operation == OMRasterOp::SrcAnd) target &= pixel;
            ++changed;
        }
    const std::uint64_t before = destination.changedPixels();
    destination.blt(source, sourceX, sourceY, width, height, toX, toY, operation,
                    useExtra ? &extra : nullptr);
    destination.removeClipRegion();
    ASSERT_EQ(pictureOf(destination), expected)
        << sourceX << " " << sourceY << " " << width << " " << height << " " << toX << " " << toY;
    EXPECT_EQ(destination.changedPixels() - before, changed);
}

TEST(OMCanvas, copiesMatchAPixelByPixelCopy) {
    for (const int depth : {8, 16, 24, 32}) {
        Process process(depth);
        OMMemCanvas one(33, 27, depth);
        OMMemCanvas other(29, 35, depth);
        OMMemCanvas indexed(29, 35, 8);
        OMWndCanvas window({20, 10, 50, 40});
        OMWndCanvas beneath({3, 2, 45, 45});
        fillWithNoise(other);
        fillWithNoise(indexed);
        indexed.setPalette(noisePalette());
        for (const OMRasterOp operation :
             {OMRasterOp::SrcCopy, OMRasterOp::SrcInvert, OMRasterOp::SrcAnd})
            for (int round = 0; round < 60; ++round) {
                fillWithNoise(one);
                checkRandomCopy(other, one, operation);
                checkRandomCopy(one, one, operation); // overlapping
                checkRandomCopy(one, window, operation);
                checkRandomCopy(window, window, operation);
                checkRandomCopy(beneath, window, operation);
                checkRandomCopy(window, one, operation);
                checkRandomCopy(indexed, window, operation);
                if (HasFatalFailure()) FAIL() << depth << " bits, round " << round;
            }
        EXPECT_EQ(process.messages, Messages{});
    }
}

TEST(OMCanvas, extremeArgumentsOfACopyDoNoHarm) {
    Process process(8);
    OMMemCanvas source(8, 8, 8);
    OMMemCanvas destination(8, 8, 8);
    fillWithNoise(source);
    destination.blt(source, kMost, 0, kMost, 8, kLeast, 0);
    destination.blt(source, 0, 0, kLeast, kMost, 0, kMost);
    destination.blt(source, kLeast, 0, kMost, 1, kLeast, 0);
    EXPECT_EQ(destination.changedPixels(), 0u);
    destination.blt(source, -kMost + 8, 0, kMost, kMost, -kMost + 8, 0);
    EXPECT_EQ(destination.changedPixels(), 64u);
    EXPECT_EQ(pictureOf(destination), pictureOf(source));
}

TEST(OMCanvas, depthRules) {
    Process process(8);
    OMMemCanvas eight(4, 4, 8);
    OMMemCanvas sixteen(4, 4, 16);
    OMMemCanvas twentyFour(4, 4, 24);
    const OMRegion everything(Rect{0, 0, 4, 4});
    sixteen.setColor(OMColor(0xFF00, 0x8000, 0));
    sixteen.fillRect(sixteen.bounds());

    eight.blt(sixteen, 0, 0, 4, 4, 0, 0);
    eight.blt(twentyFour, 0, 0, 4, 4, 0, 0, OMRasterOp::SrcCopy, &everything);
    EXPECT_EQ(process.takeMessages(), Messages(2, "OMCanvas::blt - blt'ing from a 16/24/32 bit "
                                                  "canvas\nto an 8 bit canvas is not allowed!"));
    EXPECT_EQ(eight.changedPixels(), 0u);
    twentyFour.blt(sixteen, 0, 0, 4, 4, 0, 0);
    sixteen.blt(eight, 0, 0, 4, 4, 0, 0);
    EXPECT_EQ(process.takeMessages(),
              Messages(2, "OMCanvasDIBToDIB - memory canvases must be the same size for blt!"));
    EXPECT_EQ(twentyFour.changedPixels(), 0u);

    twentyFour.blt(sixteen, 0, 0, 4, 4, 0, 0, OMRasterOp::SrcCopy, &everything);
    EXPECT_EQ(pixelAt(twentyFour, 3, 3), 0xFF8400u);
    sixteen.setClipRegion(OMRegion(Rect{0, 0, 1, 1}));
    sixteen.blt(twentyFour, 0, 0, 4, 4, 0, 0);
    EXPECT_EQ(pixelAt(sixteen, 0, 0), 31u << 10 | 16u << 5);
    EXPECT_EQ(process.messages, Messages{});
}

// Fills and frames

TEST(OMCanvas, fillsAndFramesKeepToTheClipRegion) {
    Process process(8);
    OMMemCanvas canvas(6, 6, 8);
    canvas.setColor(OMColor(7));
    canvas.setFrameColor(OMColor(9));
    canvas.fillRect({4, 3, 100, 100});
    canvas.setClipRegion(OMRegion(Rect{0, 0, 6, 3}));
    canvas.frameRect({0, 0, 5, 5});
    canvas.removeClipRegion();
    OMRegion shape(Rect{0, 2, 3, 6});
    shape.unite(Rect{0, 2, 4, 4});
    canvas.frameRegion(shape);
    const Picture expected{{9, 9, 9, 9, 9, 0}, {9, 0, 0, 0, 9, 0}, {9, 9, 9, 9, 9, 0},
                           {9, 0, 0, 9, 7, 7}, {9, 0, 9, 0, 7, 7}, {9, 9, 9, 0, 7, 7}};
    EXPECT_EQ(pictureOf(canvas), expected);
    canvas.setClipRegion(OMRegion());
    canvas.fillRect(canvas.bounds());
    canvas.removeClipRegion();
    canvas.setColor(std::nullopt);
    canvas.fillRect(canvas.bounds());
    EXPECT_EQ(pictureOf(canvas), expected) << "neither an empty clip region nor no colour paints";
}

// The window

TEST(OMWndCanvas, showsWhatChangedAndNothingElse) {
    Process process(8);
    OMWndCanvas window({-10, -5, 20, 15});
    EXPECT_EQ(window.bounds(), (Rect{0, 0, 30, 20}));
    OMRegion spots(Rect{0, 0, 13, 8});
    spots.unite(Rect{27, 18, 40, 40});
    window.setColor(OMColor(3));
    window.fillRegion(spots);
    OMRegion expected(Rect{0, 0, 3, 3});
    expected.unite(Rect{17, 13, 20, 15});
    EXPECT_EQ(process.display().presented, expected);
    EXPECT_EQ(window.changedPixels(), 15u);
    EXPECT_EQ(process.display().screen().row(14)[19], 3);
    EXPECT_EQ(process.display().screen().row(14)[20], 0);

    process.display().presented.clear();
    OMMemCanvas memory(30, 20, 8);
    window.blt(memory, 5, 5, 10, 10, 100, 100);
    EXPECT_TRUE(process.display().presented.isEmpty());
    memory.blt(window, 0, 0, 30, 20, 0, 0);
    EXPECT_EQ(memory.changedPixels(), 300u) << "hidden parts of a window cannot be copied from";
    EXPECT_EQ(pixelAt(memory, 9, 5), 0u);
    EXPECT_EQ(pixelAt(memory, 10, 5), 3u);

    OMWndCanvas away({64, 0, 80, 10});
    away.fillRect(away.bounds());
    memory.blt(away, 0, 0, 16, 10, 0, 0);
    EXPECT_EQ(away.changedPixels(), 0u);
}

TEST(OMWndCanvas, tellsTheDisplayEachNewCursorOnce) {
    Process process(8);
    OMWndCanvas window({0, 0, 64, 48});
    const auto wait = OMCursor::load(kOMCursorWait);
    window.setCursor(wait);
    window.setCursor(wait);
    window.setCursor(OMCursor::load(kOMCursorCross));
    EXPECT_EQ(wait.use_count(), 1) << "kept only while it is shown";
    EXPECT_EQ(process.display().cursors, (std::vector<int>{-2, -4}));
}

} // namespace
