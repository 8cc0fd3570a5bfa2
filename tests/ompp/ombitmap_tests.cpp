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

constexpr std::int32_t kLargestSide = formats::picture::kLargestBitmapSide;

class OMBitmapTest : public ::testing::Test {
  protected:
    std::unique_ptr<OMBitmap> read(const Bytes& data, int mode = kOMIStreamCache) {
        process.machine.files().put("a.bmp", data);
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
    const struct {
        Bmp bmp;
        Pixels drawn; ///< over 5, on a canvas of the picture's depth
        bool transparent = false;
        std::optional<OMColor> invisible = {};
    } rows[] = {
        {{.isFile = false}, {3, 4, 1, 2}},
        {{.height = -2}, {1, 2, 3, 4}},
        {{.colours = 256}, {3, 4, 1, 2}},
        {{.planes = 0}, {3, 4, 1, 2}},
        {{.pixelOffset = 0xFFFFFFFF}, {3, 4, 1, 2}},
        {{.depth = 16, .pixels = {0x7FFF, 0x1F, 0x8001, 0}}, {0x8001, 0, 0x7FFF, 0x1F}},
        {{.depth = 24, .pixels = {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {{.depth = 32, .pixels = {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {{.pixels = {252, 1, 2, 252}}, {2, 5, 5, 1}, true}, // without entry 252
        {{.pixels = {252, 1, 2, 252}}, {2, 252, 252, 5}, true, OMColor(1)},
        {{.depth = 16, .pixels = {0x801F, 0x1F, 7, 0x3F}}, {7, 0x3F, 5, 5}, true}, // without blue
        {{.depth = 24, .pixels = {0xFF, 0xFE, 1, 2}}, {1, 2, 5, 0xFE}, true},
        {{.depth = 32, .pixels = {0xAA102030, 3, 1, 2}},
         {1, 2, 5, 3},
         true,
         OMColor(0x10FF, 0x20FF, 0x3000)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
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
    for (const Bmp& large :
         {Bmp{.width = kLargestSide, .height = 1, .pixels = Pixels(kLargestSide, 3)},
          Bmp{.width = 1, .height = -kLargestSide, .pixels = Pixels(kLargestSide, 3)}})
        EXPECT_TRUE(read(large));
    EXPECT_EQ(process.messages, Messages{});
}

TEST_F(OMBitmapTest, DamagedHeadersAreRefused) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    const std::string place = "OMBitmap::createInstance - ";
    const auto expect = [&](const std::string& message, std::initializer_list<Bmp> all) {
        for (const Bmp& bmp : all) {
            EXPECT_EQ(read(bmp), nullptr) << &bmp - all.begin();
            EXPECT_EQ(process.takeMessages(), Messages{place + message}) << &bmp - all.begin();
        }
    };
    expect("8 bit BMP's must have an OM palette!", {{.colours = 255}, {.colours = 257}});
    expect("16/32 bit BMP's cannot have a palette!",
           {{.depth = 16, .colours = 0xFFFFFFFF}, {.depth = 32, .colours = 1}});
    const std::string unknown = "unknown bitmap type!";
    for (const auto& [width, height] :
         {std::pair{0, 2}, {-2, 2}, {2, 0}, {2, 3}, {2, -3}, {2, kLowest}, {kHighest, 2}})
        expect(unknown, {{.width = width, .height = height}});
    expect(unknown, {{.depth = 0}, {.depth = 4}, {.depth = 0xFFF8, .pixels = {}}});
    for (const std::uint32_t size : {12U, 108U}) expect(unknown, {{.headerSize = size}});
    for (const std::uint32_t colours : {1000U, 0xFFFFFFFF}) // more than bytes
        expect(unknown, {{.depth = 24, .colours = colours}});
    const Pixels more(kLargestSide + 1);
    expect(unknown, {{.width = kLargestSide + 1, .height = 1, .pixels = more},
                     {.width = 1, .height = -kLargestSide - 1, .pixels = more},
                     {.width = 32767, .height = -32767, .depth = 32},
                     {.compression = 1},
                     {.depth = 16, .compression = 3},
                     {.table = 255}});
    EXPECT_EQ(read(Bmp{}.build(), kOMIStreamBuffered), nullptr);
    EXPECT_EQ(process.takeMessages(),
              Messages{"OMBitmap::OMBitmap - OMIStream source must be cached!"});
    for (const Bmp& whole : {Bmp{}, Bmp{.isFile = false, .depth = 24}})
        for (Bytes data = whole.build(); !data.empty();) {
            data.pop_back();
            ASSERT_EQ(read(data), nullptr) << data.size();
        }
}

TEST_F(OMBitmapTest, ColoursAreOfThePicturesKindAndDrawingIsClippedAndConverted) {
    const auto indexed = read(Bmp{});
    const auto deep = read(Bmp{.depth = 24});
    indexed->setInvisibleColor(OMColor(1, 2, 3));
    EXPECT_EQ(indexed->invisibleColor(), OMColor(252));
    deep->setInvisibleColor(OMColor(7));
    EXPECT_EQ(deep->invisibleColor(), (OMColor{0, 0, 0xFF00}));
    OMPalette palette;
    ASSERT_TRUE(indexed->getPalette(palette));
    EXPECT_EQ(palette[100], (OMColor{100 * 256, 0x22 * 256, 0x11 * 256}));
    for (const std::size_t fixed : {9, 246})
        EXPECT_EQ(palette[fixed], OMColor::fromRgb8(platform::staticPalette()[fixed]));
    EXPECT_FALSE(deep->getPalette(palette));

    OMMemCanvas canvas(2, 2, 32);
    canvas.draw(-1, -1, *indexed); // pixel 2 of the lower row
    EXPECT_EQ(pixelsOf(canvas), (Pixels{0x00008000, 0, 0, 0})) << "in its own fixed colour 2";
    canvas.draw(std::numeric_limits<int>::max(), 0, *indexed);
    canvas.setClipRegion(OMRegion(platform::Rect{1, 0, 2, 1}));
    canvas.draw(0, 0, *indexed);
    EXPECT_EQ(pixelAt(canvas, 1, 0), 0x000080u);
    EXPECT_EQ(canvas.changedPixels(), 2u);
    OMMemCanvas shallow(2, 2, 8);
    shallow.draw(0, 0, *deep);
    EXPECT_EQ(shallow.changedPixels(), 0u);
    const std::string text = "OMBitmap::setInvisibleColor - invisible color must be an ";
    EXPECT_EQ(process.messages,
              (Messages{text + "index for 8-bit bitmaps!", text + "RGB for 16/24-bit bitmaps!",
                        "OMCanvas::draw - 16/24/32 bit bitmaps cannot be drawn on 8 bit "
                        "canvases!"}));
}

} // namespace
