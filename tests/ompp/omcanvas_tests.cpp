// Canvases and palettes: what is drawn where, with which pixels, and how much of it is shown.
#include "canvasfixture.h"
#include "formats/picture/palette.h"

#include "omcursor.h"
#include "omwndcanvas.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using platform::Point;
using platform::Rect;
using platform::Rgb;
using testing_support::pixelAt;
using testing_support::Process;
using testing_support::setPixel;

namespace {

using Messages = std::vector<std::string>;
using Picture = std::vector<std::vector<std::uint32_t>>; // rows of pixels

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

std::mt19937 engine{4711};

int randomBetween(int least, int most) {
    return std::uniform_int_distribution(least, most)(engine);
}

template <class Function>
void forEachPixel(const Rect& area, Function function) {
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) function(Point{x, y});
}

Picture pictureOf(OMCanvas& canvas) {
    const Rect area = canvas.pixels().area;
    Picture picture(static_cast<std::size_t>(area.height()));
    forEachPixel(area, [&](Point at) {
        picture[static_cast<std::size_t>(at.y - area.top)].push_back(pixelAt(canvas, at.x, at.y));
    });
    return picture;
}

void fillWithNoise(OMCanvas& canvas) {
    forEachPixel(canvas.pixels().area, [&](Point at) {
        setPixel(canvas, at.x, at.y, static_cast<std::uint32_t>(engine()));
    });
}

OMRegion randomRegion(int side) {
    OMRegion region;
    for (int i = randomBetween(0, 4); i >= 0; --i) {
        const Point at{randomBetween(-4, side), randomBetween(-4, side)};
        region.unite(
            Rect{at.x, at.y, at.x + randomBetween(0, side), at.y + randomBetween(0, side)});
    }
    return region;
}

// Palettes

TEST(OMPalette, theGameOwnsEntries10To245Only) {
    Process process(8);
    formats::Bytes data(formats::picture::kPaletteSize, 0x77);
    const auto put = [&](std::size_t index, std::initializer_list<int> values) {
        for (const int value : values) data.at(index++) = static_cast<std::uint8_t>(value);
    };
    put(100 * 6, {0xFF, 0xFF, 0xFF, 0, 0xFF, 0x80});
    put(101 * 6, {0, 0xFF, 0, 1, 0, 0});
    put(102 * 6, {0xFF, 0, 0xFF, 0, 0xFE, 0});
    const std::optional<OMPalette> given = OMReadPalette(std::as_bytes(std::span(data)));
    ASSERT_TRUE(given);
    EXPECT_EQ((*given)[102], OMColor(0xFF00, 0xFF00, 0xFE00)) << "the second bytes do not count";
    data.pop_back();
    EXPECT_FALSE(OMReadPalette(std::as_bytes(std::span(data))));
    EXPECT_EQ(process.takeMessages(), Messages{"no palette"});

    OMWndCanvas window({0, 0, 64, 48});
    EXPECT_EQ(window.getPalette(), OMPaletteFromDevice(platform::staticPalette()));
    window.setPalette(*given);
    EXPECT_EQ(process.display.palette(), window.devicePalette()) << "installed on the display";
    for (std::size_t i = 0; i < 256; ++i) {
        const Rgb expected = i < 10 || i > 245 ? platform::staticPalette()[i]
                             : i == 100        ? Rgb{254, 254, 254}
                             : i == 101        ? Rgb{1, 1, 1}
                             : i == 102        ? Rgb{255, 255, 254}
                                               : Rgb{0x77, 0x77, 0x77};
        EXPECT_EQ(window.devicePalette()[i], expected) << i;
        EXPECT_EQ(window.getPaletteEntry(static_cast<int>(i)), OMColor::fromRgb8(expected));
    }
    for (const int index : {-1, 256}) EXPECT_EQ(window.getPaletteEntry(index), OMColor());
    EXPECT_EQ(process.messages,
              Messages(2, "OMCanvas::getPaletteEntry - index must be between 0 and 255!"));
}

// Creation and colours

TEST(OMCanvas, refusesImpossibleSizesAndDepths) {
    Process process(8);
    constexpr auto kTooSmall =
        "OMMemCanvas::OMMemCanvas - height and width must be greater than 0!";
    constexpr auto kTooLarge = "OMMemCanvas::OMMemCanvas - the canvas is too large!";
    constexpr auto kDepth = "OMCanvas::OMCanvas - canvases can only be 8, 16, 24 or 32 bit!";
    const struct {
        int width, height, depth;
        Messages messages;
    } rows[] = {{0, 5, 8, {kTooSmall}},          {5, -5, 16, {kTooSmall}},
                {kLargest, 2, 32, {kTooLarge}},  {0x7FFF, 0x7FFF, 8, {kTooLarge}},
                {0, 0, -8, {kDepth, kTooSmall}}, {3, 3, 15, {kDepth}}};
    for (const auto& row : rows) {
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
    const struct {
        int depth;
        std::uint32_t index20;
        std::uint32_t rgb; // of 0x8180, 0x82FF, 0x8300
    } rows[] = {
        {8, 20, 30}, {16, 0x7C22, 0x4210}, {24, 0xF80810, 0x818283}, {32, 0xF80810, 0x818283}};
    for (const auto& row : rows) {
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
    const Point from{randomBetween(-12, 40), randomBetween(-12, 40)};
    const Point to{randomBetween(-12, 40), randomBetween(-12, 40)};
    const Rect size{0, 0, randomBetween(-2, 45), randomBetween(-2, 45)};
    const OMRegion extra = randomRegion(30);
    const bool converted = source.depth() != destination.depth();
    const bool useExtra = converted || randomBetween(0, 2) == 0;
    const std::uint32_t key = pixelAt(source, source.pixels().area.left, source.pixels().area.top);
    const bool keyed = operation == OMRasterOp::SrcCopyKeyed && randomBetween(0, 1) == 0;
    source.setKeyColor(keyed ? std::optional(OMColor(static_cast<int>(key))) : std::nullopt);
    OMRegion clip(OMRegion::kShapeBounds);
    if (randomBetween(0, 2) == 0) destination.setClipRegion(clip = randomRegion(30));

    const Picture pixels = pictureOf(source);
    Picture expected = pictureOf(destination);
    const Rect fromArea = source.pixels().area;
    const Rect toArea = destination.pixels().area;
    std::size_t changed = 0;
    forEachPixel(size, [&](Point at) {
        const Point there{from.x + at.x, from.y + at.y};
        const Point here{to.x + at.x, to.y + at.y};
        if (!OMContains(fromArea, there) || !OMContains(toArea, here) || !clip.contains(here) ||
            (useExtra && !extra.contains(here)))
            return;
        ++changed;
        std::uint32_t pixel = pixels[static_cast<std::size_t>(there.y - fromArea.top)]
                                    [static_cast<std::size_t>(there.x - fromArea.left)];
        if (keyed && pixel == key) return;
        if (converted)
            pixel = destination.pixelValue(source.getPaletteEntry(static_cast<int>(pixel)));
        std::uint32_t& target = expected[static_cast<std::size_t>(here.y - toArea.top)]
                                        [static_cast<std::size_t>(here.x - toArea.left)];
        if (operation == OMRasterOp::SrcInvert) pixel ^= target;
        if (operation == OMRasterOp::SrcAnd) pixel &= target;
        target = pixel;
    });
    const std::uint64_t before = destination.changedPixels();
    destination.blt(source, from.x, from.y, size.right, size.bottom, to.x, to.y, operation,
                    useExtra ? &extra : nullptr);
    destination.removeClipRegion();
    ASSERT_EQ(pictureOf(destination), expected) << from.x << " " << from.y << " " << size.right
                                                << " " << size.bottom << " " << to.x << " " << to.y;
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
        OMPalette noise;
        const auto part = [] { return static_cast<std::uint16_t>(engine()); };
        for (OMColor& color : noise) color = {part(), part(), part()};
        indexed.setPalette(noise);
        std::vector<OMRasterOp> operations{OMRasterOp::SrcCopy, OMRasterOp::SrcInvert,
                                           OMRasterOp::SrcAnd};
        if (depth == 8) operations.push_back(OMRasterOp::SrcCopyKeyed);
        for (const OMRasterOp operation : operations)
            for (int round = 0; round < 50; ++round) {
                fillWithNoise(one);
                checkRandomCopy(other, one, operation);
                checkRandomCopy(one, one, operation); // overlapping
                checkRandomCopy(one, window, operation);
                checkRandomCopy(window, window, operation);
                checkRandomCopy(beneath, window, operation);
                checkRandomCopy(window, one, operation);
                checkRandomCopy(indexed, window, operation);
                if (testing::Test::HasFatalFailure()) FAIL() << depth << " bits, round " << round;
            }
        for (int round = 0; round < 50; ++round)
            checkRandomCopy(indexed, window, OMRasterOp::SrcCopyKeyed);
        EXPECT_EQ(process.messages, Messages{});
    }
}

TEST(OMCanvas, extremeArgumentsOfACopyDoNoHarm) {
    Process process(8);
    OMMemCanvas source(8, 8, 8);
    OMMemCanvas destination(8, 8, 8);
    fillWithNoise(source);
    destination.blt(source, kLargest, 0, kLargest, 8, kSmallest, 0);
    destination.blt(source, 0, 0, kSmallest, kLargest, 0, kLargest);
    destination.blt(source, kSmallest, 0, kLargest, 1, kSmallest, 0);
    EXPECT_EQ(destination.changedPixels(), 0u);
    destination.blt(source, -kLargest + 8, 0, kLargest, kLargest, -kLargest + 8, 0);
    EXPECT_EQ(destination.changedPixels(), 64u);
    EXPECT_EQ(pictureOf(destination), pictureOf(source));
}

TEST(OMCanvas, depthRules) {
    Process process(8);
    OMMemCanvas eight(4, 4, 8);
    OMMemCanvas sixteen(4, 4, 16);
    OMMemCanvas twentyFour(4, 4, 24);
    const OMRegion everything(Rect{0, 0, 4, 4});
    const auto copy = [](OMCanvas& from, OMCanvas& to, const OMRegion* clip = nullptr) {
        to.blt(from, 0, 0, 4, 4, 0, 0, OMRasterOp::SrcCopy, clip);
        return to.changedPixels();
    };
    sixteen.setColor(OMColor(0xFF00, 0x8000, 0));
    sixteen.fillRect(sixteen.bounds());
    EXPECT_EQ(copy(sixteen, eight) + copy(twentyFour, eight, &everything), 0u);
    EXPECT_EQ(process.takeMessages(), Messages(2, "OMCanvas::blt - blt'ing from a 16/24/32 bit "
                                                  "canvas\nto an 8 bit canvas is not allowed!"));
    EXPECT_EQ(copy(sixteen, twentyFour) + copy(eight, sixteen), 16u) << "those of the fill";
    EXPECT_EQ(process.takeMessages(),
              Messages(2, "OMCanvasDIBToDIB - memory canvases must be the same size for blt!"));
    copy(sixteen, twentyFour, &everything);
    EXPECT_EQ(pixelAt(twentyFour, 3, 3), 0xFF8400u);
    sixteen.setClipRegion(OMRegion(Rect{0, 0, 1, 1}));
    copy(twentyFour, sixteen);
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
    EXPECT_EQ(process.display.presented, expected);
    EXPECT_EQ(window.changedPixels(), 15u);
    EXPECT_EQ(process.display.screen().row(14)[19], 3);
    EXPECT_EQ(process.display.screen().row(14)[20], 0);
    process.display.presented.clear();
    OMMemCanvas memory(30, 20, 8);
    window.blt(memory, 5, 5, 10, 10, 100, 100);
    EXPECT_TRUE(process.display.presented.isEmpty());
    OMWndCanvas away({64, 0, 80, 10});
    away.fillRect(away.bounds());
    memory.blt(away, 0, 0, 16, 10, 0, 0);
    EXPECT_EQ(away.changedPixels() + memory.changedPixels(), 0u);

    const auto wait = OMCursor::load(kOMCursorWait);
    window.setCursor(wait);
    window.setCursor(wait);
    window.setCursor(OMCursor::load(kOMCursorCross));
    EXPECT_EQ(wait.use_count(), 1) << "kept only while it is shown";
    EXPECT_EQ(process.display.cursors, (std::vector<int>{-2, -4})) << "each new one once";
}

// The application's window on the screen, and canvases made of surfaces: the screen in exclusive
// mode, what is behind it, and its loss

using Mode = OMApp::DisplayMode;

void fill(OMCanvas& canvas, int index) {
    canvas.setColor(OMColor(index));
    canvas.fillRect(canvas.bounds());
}

int shownPixel(Process& process) { return process.display.shown().row(5)[7]; }

TEST(OMApp, CoversTheDesktopUnlessItIsOverlappedOrOfSurfaces) {
    Process process(16);
    const Rect all{0, 0, 64, 48};
    const auto expect = [&](Mode mode, const Rect& covered, int depth = 16) {
        process.display.presented.clear();
        {
            const OMApp app(mode, OMColor(), {10, 20, 30, 40}, 8);
            EXPECT_EQ(process.display.presented.boundingBox(), covered);
            EXPECT_EQ(process.display.mode().depth, depth);
        }
        EXPECT_EQ(process.display.mode(), (platform::ScreenMode{64, 48, 16}));
    };
    OMApp::useDirectDraw();
    OMApp::useGDI();
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMApp::useDirectDraw - cannot useDirectDraw after an OMApp has been "
                        "instantiated!",
                        "OMApp::useGDI - cannot useGDI after an OMApp has been instantiated!"}));
    process.app.reset();
    expect(Mode::Overlapped, {10, 20, 30, 40});
    for (const Mode mode : {Mode::Captioned, Mode::PopUp, Mode::PopUpMinimise, Mode::FullScreen})
        expect(mode, all);
    OMApp::useDirectDraw();
    expect(Mode::PopUp, {0, 0, 20, 20}); // at the upper left
    expect(Mode::Captioned, all);
    expect(Mode::FullScreen, {0, 0, 20, 20}, 8); // which is the screen then
    process.restart(Mode::PopUp, 8);
    EXPECT_TRUE(OMApp::usingDirectDraw());
    EXPECT_EQ(OMMemCanvas(4, 4, 8).depth(), 16);
    process.display.refusesExclusive = true;
    process.restart(Mode::FullScreen, 8);
    EXPECT_FALSE(OMApp::usingDirectDraw());
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMCanvas::OMCanvas - DirectDraw canvases must be the same bit depth as "
                        "the display!",
                        "OMApp::OMApp - DirectDraw failed to initialize!"}));
}

TEST(OMWndCanvas, FlipsInExclusiveModeAndGivesBackWhatWasShown) {
    Process process(8);
    {
        OMWndCanvas window({0, 0, 64, 48});
        OMMemCanvas back(64, 48, 8, OMMemCanvas::Kind::Flippable);
        EXPECT_FALSE(window.attachToFlipChain(back));
        window.detachFromFlipChain(back);
        EXPECT_FALSE(window.flip());
        Messages texts;
        for (const char* operation : {"attachToFlipChain", "detachFromFlipChain", "flip"})
            texts.push_back(std::string("OMWndCanvas::") + operation +
                            " - must be in exclusive mode to use flipping!");
        EXPECT_EQ(process.takeMessages(), texts);
    }
    process.app.reset();
    OMApp::useDirectDraw();
    process.restart(Mode::FullScreen, 8);
    OMWndCanvas window({0, 0, 64, 48});
    OMMemCanvas fixed(64, 48, 8);
    EXPECT_FALSE(window.attachToFlipChain(fixed));
    OMMemCanvas back(64, 48, 8, OMMemCanvas::Kind::Flippable);
    fill(window, 11);
    ASSERT_TRUE(window.attachToFlipChain(back));
    fill(back, 12);
    EXPECT_EQ(shownPixel(process), 11);
    process.display.busyFlips = 3;
    EXPECT_TRUE(window.flip());
    EXPECT_EQ(shownPixel(process), 12);
    EXPECT_EQ(pixelAt(window, 7, 5), 12u);
    EXPECT_EQ(pixelAt(back, 7, 5), 11u);
    process.display.setInForeground(false);
    EXPECT_FALSE(window.flip());
    fill(window, 13);
    EXPECT_EQ(shownPixel(process), 12) << "nothing is presented";
    process.display.setInForeground(true);
    EXPECT_TRUE(OMWndCanvas::restore());
    EXPECT_FALSE(OMWndCanvas::restore()) << "only once";
    fill(back, 14);
    window.detachFromFlipChain(back);
    EXPECT_EQ(pixelAt(back, 7, 5), 14u) << "keeps its picture";
    EXPECT_FALSE(window.flip());
    EXPECT_EQ(process.takeMessages(), Messages(2, "OMWndCanvas::flip - flip failed!"));
    OMMemCanvas large(100, 100, 8, OMMemCanvas::Kind::Flippable);
    ASSERT_TRUE(window.attachToFlipChain(large));
    fill(large, 9); // only where the screen is
    EXPECT_TRUE(window.flip());
    EXPECT_EQ(shownPixel(process), 9);
    window.detachFromFlipChain(large);
}

} // namespace
