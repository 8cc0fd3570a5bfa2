// Canvases and palettes: what is drawn where, with which pixels, and how much of it is shown.
#include "canvasfixture.h"

#include "omwndcanvas.h"

#include <limits>
#include <random>

using platform::Point;
using platform::Rect;
using namespace testing_support;

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

TEST(OMCanvas, refusesImpossibleSizesAndResolvesColorsForItsDepth) {
    Process process(8);
    const std::string small = "OMMemCanvas::OMMemCanvas - height and width must be greater than 0!";
    const std::string large = "OMMemCanvas::OMMemCanvas - the canvas is too large!";
    const std::string odd = "OMCanvas::OMCanvas - canvases can only be 8, 16, 24 or 32 bit!";
    const struct {
        int width, height, depth;
        Messages messages;
    } sizes[] = {{0, 5, 8, {small}},           {5, -5, 16, {small}},     {kLargest, 2, 32, {large}},
                 {0x7FFF, 0x7FFF, 8, {large}}, {0, 0, -8, {odd, small}}, {3, 3, 15, {odd}}};
    for (const auto& [width, height, depth, messages] : sizes) {
        OMMemCanvas canvas(width, height, depth);
        EXPECT_EQ(process.takeFailures(), messages);
        EXPECT_EQ(canvas.bounds(), width == 3 ? (Rect{0, 0, 3, 3}) : (Rect{0, 0, 1, 1}));
        EXPECT_EQ(canvas.depth(), depth == 16 || depth == 32 ? depth : 8);
        canvas.fillRect({0, 0, 10, 10});
    }
    OMMemCanvas canvas(2, 1, 16);
    canvas.setColor(OMColor(0xFF00, 0x82FF, 0x1000));
    canvas.fillRect({1, 0, 3, 1});
    EXPECT_EQ(pictureOf(canvas), (Picture{{0, 0x7E02}}));
    OMCanvas::setSurfaces(true);
    EXPECT_EQ(OMMemCanvas(2, 1, 8).depth() + OMMemCanvas(2, 1, 16).depth(), 16);
    OMCanvas::setSurfaces(false);
    EXPECT_EQ(process.takeFailures(), Messages{"OMCanvas::OMCanvas - DirectDraw canvases must be "
                                               "the same bit depth as the display!"});
}

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
        EXPECT_EQ(process.failures, Messages{});
    }
}

TEST(OMCanvas, copiesOfAnySizeBetweenDepths) {
    Process process(8);
    OMMemCanvas source(8, 8, 8);
    OMMemCanvas destination(8, 8, 8);
    fillWithNoise(source);
    destination.blt(source, kLargest, 0, kLargest, 8, kSmallest, 0);
    destination.blt(source, 0, 0, kSmallest, kLargest, 0, kLargest);
    destination.blt(source, kSmallest, 0, kLargest, 1, kSmallest, 0);
    EXPECT_EQ(destination.changedPixels(), 0u);
    destination.blt(source, -kLargest + 8, 0, kLargest, kLargest, -kLargest + 8, 0);
    EXPECT_EQ(pictureOf(destination), pictureOf(source));

    OMMemCanvas sixteen(8, 8, 16);
    OMMemCanvas deep(8, 8, 24);
    destination.blt(sixteen, 0, 0, 4, 4, 0, 0);
    deep.blt(sixteen, 0, 0, 4, 4, 0, 0);
    EXPECT_EQ(destination.changedPixels() + deep.changedPixels(), 64u);
    EXPECT_EQ(process.failures,
              (Messages{"OMCanvas::blt - blt'ing from a 16/24/32 bit canvas\n"
                        "to an 8 bit canvas is not allowed!",
                        "OMCanvasDIBToDIB - memory canvases must be the same size for blt!"}));
}

} // namespace
