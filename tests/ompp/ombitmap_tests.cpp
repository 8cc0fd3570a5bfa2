// Pictures from BMP data: what is read, what is refused, and how they are drawn.
#include "bmpbuilder.h"
#include "canvasfixture.h"

#include "formats/picture/bitmap.h"
#include "ombitmap.h"
#include "omistreamfile.h"

#include <gtest/gtest.h>

#include <limits>

using testing_support::Bmp;
using testing_support::Bytes;
using testing_support::pixelAt;
using testing_support::Process;
using testing_support::setPixel;

namespace {

using Messages = std::vector<std::string>;
using Pixels = std::vector<std::uint32_t>;

class OMBitmapTest : public ::testing::Test {
  protected:
    std::unique_ptr<OMBitmap> read(const Bytes& data, int mode = kOMIStreamCache) {
        process.files().put("a.bmp", data);
        OMIStreamFile stream("a.bmp", mode);
        return OMBitmap::createInstance(stream);
    }
    std::unique_ptr<OMBitmap> read(const Bmp& bmp) { return read(bmp.build()); }
    /// The pixels of a canvas of 2 x 2.
    static Pixels pixelsOf(OMCanvas& canvas) {
        return {pixelAt(canvas, 0, 0), pixelAt(canvas, 1, 0), pixelAt(canvas, 0, 1),
                pixelAt(canvas, 1, 1)};
    }

    Process process{8};
};

TEST_F(OMBitmapTest, IsDrawnInEveryDepthWithAndWithoutItsInvisibleColour) {
    struct Row {
        const char* name;
        Bmp bmp;
        Pixels drawn; ///< over 5, on a canvas of the picture's depth
        bool transparent = false;
        std::optional<OMColor> invisible = {};
    };
    const std::vector<Row> rows = {
        {"resource", {.isFile = false}, {3, 4, 1, 2}},
        {"highest row first", {.height = -2}, {1, 2, 3, 4}},
        {"full colour table", {.colours = 256}, {3, 4, 1, 2}},
        {"16 bits", {.depth = 16, .pixels = {0x7FFF, 0x1F, 0x8001, 0}}, {0x8001, 0, 0x7FFF, 0x1F}},
        {"24 bits", {.depth = 24, .pixels = {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {"32 bits", {.depth = 32, .pixels = {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {"without entry 252", {.pixels = {252, 1, 2, 252}}, {2, 5, 5, 1}, true},
        {"without entry 1", {.pixels = {252, 1, 2, 252}}, {2, 252, 252, 5}, true, OMColor(1)},
        {"16 bits without blue",
         {.depth = 16, .pixels = {0x801F, 0x1F, 7, 0x3F}},
         {7, 0x3F, 5, 5},
         true},
        {"24 bits without blue",
         {.depth = 24, .pixels = {0xFF, 0xFE, 1, 2}},
         {1, 2, 5, 0xFE},
         true},
        {"32 bits without a colour",
         {.depth = 32, .pixels = {0xAA102030, 3, 1, 2}},
         {1, 2, 5, 3},
         true,
         OMColor(0x10FF, 0x20FF, 0x3000)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto bitmap = read(row.bmp);
        ASSERT_TRUE(bitmap);
        OMMemCanvas canvas(2, 2, row.bmp.depth);
        for (int i = 0; i < 4; ++i) setPixel(canvas, i % 2, i / 2, 5);
        canvas.setTransparentDrawing(row.transparent);
        EXPECT_NE(bitmap->maskRow(0), nullptr); // built for the first invisible colour
        if (row.invisible) bitmap->setInvisibleColor(*row.invisible);
        canvas.draw(0, 0, *bitmap);
        EXPECT_EQ(pixelsOf(canvas), row.drawn);
    }
    EXPECT_EQ(process.messages, Messages{});
}

TEST_F(OMBitmapTest, DamagedHeadersAreRefusedOrMakeNoDifference) {
    constexpr const char* kUnknown = "OMBitmap::createInstance - unknown bitmap type!";
    constexpr const char* kNoPalette =
        "OMBitmap::createInstance - 8 bit BMP's must have an OM palette!";
    constexpr const char* kPalette =
        "OMBitmap::createInstance - 16/32 bit BMP's cannot have a palette!";
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kSide = formats::picture::kLargestBitmapSide;
    struct Row {
        const char* name;
        Bmp bmp;
        const char* message = nullptr; ///< null: read as any other
    };
    const std::vector<Row> rows = {
        {"no plane", {.planes = 0}},
        {"pixels said to lie beyond the end", {.pixelOffset = 0xFFFFFFFF}},
        {"run-length coded", {.compression = 1}, kUnknown},
        {"bit fields", {.depth = 16, .compression = 3}, kUnknown},
        {"255 colours", {.colours = 255}, kNoPalette},
        {"257 colours", {.colours = 257}, kNoPalette},
        {"16 bits with the most colours", {.depth = 16, .colours = 0xFFFFFFFF}, kPalette},
        {"32 bits with a colour", {.depth = 32, .colours = 1}, kPalette},
        {"24 bits, more colours than bytes", {.depth = 24, .colours = 1000}, kUnknown},
        {"24 bits with the most colours", {.depth = 24, .colours = 0xFFFFFFFF}, kUnknown},
        {"a table cut off", {.table = 255}, kUnknown},
        {"no width", {.width = 0}, kUnknown},
        {"width below 0", {.width = -2}, kUnknown},
        {"no height", {.height = 0}, kUnknown},
        {"one row too many", {.height = 3}, kUnknown},
        {"one row too many, the highest first", {.height = -3}, kUnknown},
        {"the lowest height", {.height = kLowest}, kUnknown},
        {"the most bytes", {.width = 32767, .height = -32767, .depth = 32}, kUnknown},
        {"the highest width", {.width = kHighest}, kUnknown},
        {"as wide as can be", {.width = kSide, .height = 1, .pixels = Pixels(kSide, 3)}},
        {"wider", {.width = kSide + 1, .height = 1, .pixels = Pixels(kSide + 1)}, kUnknown},
        {"as high as can be", {.width = 1, .height = -kSide, .pixels = Pixels(kSide, 3)}},
        {"higher", {.width = 1, .height = -kSide - 1, .pixels = Pixels(kSide + 1)}, kUnknown},
        {"4 bits", {.depth = 4}, kUnknown},
        {"no depth", {.depth = 0}, kUnknown},
        {"the highest depth", {.depth = 0xFFF8, .pixels = {}}, kUnknown},
        {"an older header", {.headerSize = 12}, kUnknown},
        {"a newer header", {.headerSize = 108}, kUnknown},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto bitmap = read(row.bmp);
        EXPECT_EQ(process.takeMessages(), row.message ? Messages{row.message} : Messages{});
        ASSERT_EQ(bitmap == nullptr, row.message != nullptr);
        if (!bitmap) continue;
        OMMemCanvas canvas(2, 2, 8);
        canvas.draw(0, 0, *bitmap);
        EXPECT_EQ(pixelAt(canvas, 0, 0), 3U);
    }
    EXPECT_EQ(read(Bmp{}.build(), kOMIStreamBuffered), nullptr);
    EXPECT_EQ(process.takeMessages(),
              Messages{"OMBitmap::OMBitmap - OMIStream source must be cached!"});
    for (const Bmp& whole : {Bmp{}, Bmp{.isFile = false, .depth = 24}})
        for (Bytes data = whole.build(); !data.empty();) {
            data.pop_back();
            ASSERT_EQ(read(data), nullptr) << data.size();
        }
}

TEST_F(OMBitmapTest, ColoursAreOfThePicturesKind) {
    const auto indexed = read(Bmp{});
    const auto deep = read(Bmp{.depth = 24});
    indexed->setInvisibleColor(OMColor(1, 2, 3));
    EXPECT_EQ(indexed->invisibleColor(), OMColor(252));
    deep->setInvisibleColor(OMColor(7));
    EXPECT_EQ(deep->invisibleColor(), (OMColor{0, 0, 0xFF00}));
    EXPECT_EQ(
        process.takeMessages(),
        (Messages{
            "OMBitmap::setInvisibleColor - invisible color must be an index for 8-bit bitmaps!",
            "OMBitmap::setInvisibleColor - invisible color must be an RGB for 16/24-bit "
            "bitmaps!"}));
    OMPalette palette;
    ASSERT_TRUE(indexed->getPalette(palette));
    EXPECT_EQ(palette[100], (OMColor{100 * 256, 0x22 * 256, 0x11 * 256}));
    for (const std::size_t fixed : {9, 246})
        EXPECT_EQ(palette[fixed], OMColor::fromRgb8(platform::staticPalette()[fixed]));
    EXPECT_FALSE(deep->getPalette(palette));
}

TEST_F(OMBitmapTest, IsClippedAndConverted) {
    const auto bitmap = read(Bmp{});
    OMMemCanvas canvas(2, 2, 32);
    canvas.draw(-1, -1, *bitmap); // pixel 2 of the lower row
    EXPECT_EQ(pixelsOf(canvas), (Pixels{0x00008000, 0, 0, 0})) << "in its own fixed colour 2";
    canvas.draw(std::numeric_limits<int>::max(), 0, *bitmap);
    canvas.setClipRegion(OMRegion(platform::Rect{1, 0, 2, 1}));
    canvas.draw(0, 0, *bitmap);
    EXPECT_EQ(pixelAt(canvas, 1, 0), 0x000080u);
    EXPECT_EQ(canvas.changedPixels(), 2u);
    OMMemCanvas shallow(2, 2, 8);
    shallow.draw(0, 0, *read(Bmp{.depth = 24}));
    EXPECT_EQ(process.takeMessages(),
              Messages{"OMCanvas::draw - 16/24/32 bit bitmaps cannot be drawn on 8 bit canvases!"});
    EXPECT_EQ(shallow.changedPixels(), 0u);
}

TEST_F(OMBitmapTest, KeyedCopiesLeaveTheKeyColourOut) {
    OMMemCanvas source(2, 1, 8);
    setPixel(source, 0, 0, 200);
    setPixel(source, 1, 0, 3);
    for (const int depth : {8, 32}) {
        OMMemCanvas target(2, 1, depth);
        target.setClipRegion(OMRegion(target.bounds()));
        setPixel(target, 0, 0, 9);
        source.setKeyColor(OMColor(200));
        target.blt(source, 0, 0, 2, 1, 0, 0, OMRasterOp::SrcCopyKeyed);
        EXPECT_EQ(pixelAt(target, 0, 0), 9u);
        EXPECT_EQ(pixelAt(target, 1, 0), depth == 8 ? 3u : 0x808000u);
        source.setKeyColor(std::nullopt);
        target.blt(source, 0, 0, 2, 1, 0, 0, OMRasterOp::SrcCopyKeyed);
        EXPECT_NE(pixelAt(target, 0, 0), 9u);
    }
}

} // namespace
