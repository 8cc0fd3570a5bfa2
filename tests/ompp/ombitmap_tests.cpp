// Pictures from BMP data: what is read, what is refused, and how they are drawn.
#include "canvasfixture.h"

#include "formats/picture/bitmap.h"
#include "formats/picture/dib.h"
#include "ombitmap.h"
#include "omistreamfile.h"

using namespace testing_support;

namespace {

using Messages = std::vector<std::string>;
using Pixels = std::vector<std::uint32_t>;

constexpr std::int32_t kLargestSide = formats::picture::kLargestBitmapSide;
constexpr std::uint32_t kAllBits = 0xFFFFFFFF;

struct Bmp {
    formats::picture::DibHeader head{2, 2, 8};
    Pixels pixels{1, 2, 3, 4}; ///< rows in the order of the data
    bool isFile = true;
    std::uint32_t headerSize = 40;
    std::size_t table = 256; ///< entries of 8-bit pictures

    [[nodiscard]] Bytes build() const {
        formats::ByteWriter out;
        if (isFile) out.text("BM").zeros(8).u32(kAllBits); // where the pixels are is not looked at
        const std::size_t start = out.size();
        formats::picture::writeDibHeader(out, head, 0);
        out.putU32(start, headerSize);
        out.putU16(start + 12, 0);                                 // nor are planes
        for (std::size_t i = 0; head.depth == 8 && i < table; ++i) // red i, rest fixed
            out.u8(0x11).u8(0x22).u16(static_cast<std::uint8_t>(i));
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            for (int bit = 0; bit < head.depth; bit += 8)
                out.u8(static_cast<std::uint8_t>(pixels[i] >> bit));
            if (head.width > 0 && (i + 1) % static_cast<std::size_t>(head.width) == 0)
                while ((out.size() - start) % 4 > 0) out.u8(0);
        }
        return toBytes(out.bytes());
    }
};

struct OMBitmapTest : testing::Test {
    std::unique_ptr<OMBitmap> read(const Bytes& data, int mode = kOMIStreamCache) {
        process.machine.files().put("a.bmp", data);
        OMIStreamFile stream("a.bmp", mode);
        return OMBitmap::createInstance(stream);
    }
    static Pixels pixelsOf(OMCanvas& canvas) { // 2 x 2
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
        {{{2, -2, 8, 0, 256}}, {1, 2, 3, 4}},
        {{{2, 2, 16}, {0x7FFF, 0x1F, 0x8001, 0}}, {0x8001, 0, 0x7FFF, 0x1F}},
        {{{2, 2, 24}, {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {{{2, 2, 32}, {0xFF0000, 0xFF, 7, 0}}, {7, 0, 0xFF0000, 0xFF}},
        {{{2, 2, 8}, {252, 1, 2, 252}}, {2, 5, 5, 1}, true}, // without entry 252
        {{{2, 2, 8}, {252, 1, 2, 252}}, {2, 252, 252, 5}, true, OMColor(1)},
        {{{2, 2, 16}, {0x801F, 0x1F, 7, 0x3F}}, {7, 0x3F, 5, 5}, true}, // without blue
        {{{2, 2, 24}, {0xFF, 0xFE, 1, 2}}, {1, 2, 5, 0xFE}, true},
        {{{2, 2, 32}, {0xAA102030, 3, 1, 2}}, {1, 2, 5, 3}, true, OMColor(0x10FF, 0x20FF, 0x3000)},
    };
    for (const auto& row : rows) {
        const auto bitmap = read(row.bmp.build());
        ASSERT_TRUE(bitmap);
        OMMemCanvas canvas(2, 2, row.bmp.head.depth);
        for (int i = 0; i < 4; ++i) setPixel(canvas, i % 2, i / 2, 5);
        canvas.setTransparentDrawing(row.transparent);
        EXPECT_NE(bitmap->maskRow(0), nullptr); // built for the first invisible colour
        if (row.invisible) bitmap->setInvisibleColor(*row.invisible);
        canvas.draw(0, 0, *bitmap);
        EXPECT_EQ(pixelsOf(canvas), row.drawn) << &row - rows;
    }
    const auto indexed = read(Bmp{}.build());
    const auto deep = read(Bmp{{2, 2, 24}}.build());
    indexed->setInvisibleColor(OMColor(1, 2, 3));
    deep->setInvisibleColor(OMColor(7));
    OMMemCanvas(2, 2, 8).draw(0, 0, *deep);
    OMMemCanvas canvas(2, 2, 32);
    canvas.draw(-1, -1, *indexed); // pixel 2 of the lower row, in its fixed colour
    EXPECT_EQ(pixelsOf(canvas), (Pixels{0x00008000, 0, 0, 0}));
    const std::string text = "OMBitmap::setInvisibleColor - invisible color must be an ";
    EXPECT_EQ(process.failures,
              (Messages{text + "index for 8-bit bitmaps!", text + "RGB for 16/24-bit bitmaps!",
                        "OMCanvas::draw - 16/24/32 bit bitmaps cannot be drawn on 8 bit "
                        "canvases!"}));
}

TEST_F(OMBitmapTest, DamagedHeadersAreRefused) {
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
    const Pixels line(kLargestSide + 1);
    const auto expect = [&](const Messages& messages, const std::vector<Bmp>& all) {
        for (const Bmp& bmp : all) {
            EXPECT_EQ(read(bmp.build()) != nullptr, messages.empty()) << &bmp - all.data();
            EXPECT_EQ(process.takeFailures(), messages) << &bmp - all.data();
        }
    };
    const std::string place = "OMBitmap::createInstance - ";
    expect({}, {{{kLargestSide, 1, 8}, line}, {{1, -kLargestSide, 8}, line}});
    expect({place + "8 bit BMP's must have an OM palette!"},
           {{{2, 2, 8, 0, 255}}, {{2, 2, 8, 0, 257}}});
    expect({place + "16/32 bit BMP's cannot have a palette!"},
           {{{2, 2, 16, 0, kAllBits}}, {{2, 2, 32, 0, 1}}});
    std::vector<Bmp> odd{{.headerSize = 12}, {.headerSize = 108}, {.table = 255}};
    for (const auto& [width, height] :
         {std::pair(0, 2), {-2, 2}, {2, 0}, {2, 3}, {2, -3}, {2, kLowest}, {kHighest, 2}})
        odd.push_back({{width, height, 8}});
    odd.insert(odd.end(), {{{2, 2, 0}}, {{2, 2, 4}}, {{2, 2, 8, 1}}, {{2, 2, 16, 3}}});
    odd.insert(odd.end(), {{{2, 2, 24, 0, 1000}}, {{2, 2, 24, 0, kAllBits}}});
    odd.insert(odd.end(), {{{32767, -32767, 32}}, {{kLargestSide + 1, 1, 8}, line}});
    odd.push_back({{1, -kLargestSide - 1, 8}, line});
    expect({place + "unknown bitmap type!"}, odd);
    EXPECT_EQ(read(Bmp{}.build(), kOMIStreamBuffered), nullptr);
    EXPECT_EQ(process.takeFailures(),
              Messages{"OMBitmap::OMBitmap - OMIStream source must be cached!"});
}

} // namespace
