// A damaged BMP, drawn on canvases of all depths. The first bytes of an input say where and how,
// the rest is the file. What is read are the pixels of the file; whatever is drawn lies inside the
// picture's rectangle; and transparent drawing leaves out the invisible colour and nothing else.
#include "fuzzmachine.h"
#include "pixelgrid.h"

#include "ombitmap.h"
#include "omistreamfile.h"
#include "ommemcanvas.h"

#include <optional>
#include <vector>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using fuzzing::Pixels;
using platform::Point;

constexpr const char* kName = "a.bmp";
constexpr int kWidth = 24; ///< of the canvases
constexpr int kHeight = 16;
constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kColoursAt = 32; ///< in the information header

/// What the bytes of the file say about a picture that was read.
class File {
  public:
    File(const Bytes& bytes, const OMBitmap& bitmap)
        : bytes_(bytes), width_(bitmap.width()), height_(bitmap.height()),
          pixel_(static_cast<std::size_t>(bitmap.bitsPerPixel() / 8)) {
        const bool isFile = bytes[0] == std::byte{'B'} && bytes[1] == std::byte{'M'};
        const std::size_t info = isFile ? kFileHeader : 0;
        start_ = info + kInfoHeader;
        if (pixel_ == 1) start_ += 4 * 256;
        if (pixel_ == 3) start_ += 4 * std::size_t{number(info + kColoursAt, 4)};
        upright_ = (number(info + 8, 4) & 0x80000000u) != 0;
        stride_ = (static_cast<std::size_t>(width_) * pixel_ + 3) & ~std::size_t{3};
    }

    [[nodiscard]] std::uint32_t pixel(int x, int y) const {
        const auto row = static_cast<std::size_t>(upright_ ? y : height_ - 1 - y);
        return number(start_ + row * stride_ + static_cast<std::size_t>(x) * pixel_, pixel_);
    }

  private:
    [[nodiscard]] std::uint32_t number(std::size_t at, std::size_t size) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value |= std::to_integer<std::uint32_t>(bytes_.at(at + i)) << 8 * i;
        return value;
    }

    const Bytes& bytes_;
    int width_;
    int height_;
    std::size_t pixel_;
    std::size_t start_ = 0;
    std::size_t stride_ = 0;
    bool upright_ = false;
};

/// The bits of a pixel that are compared with the invisible colour.
std::uint32_t comparedBits(int depth) {
    if (depth == 8) return 0xFF;
    return depth == 16 ? 0x7FFF : 0xFFFFFF;
}

std::uint32_t invisiblePixel(const OMBitmap& bitmap) {
    const OMColor& color = bitmap.invisibleColor();
    if (bitmap.bitsPerPixel() == 8) return static_cast<std::uint32_t>(color.index());
    const platform::Rgb rgb = color.rgb8();
    if (bitmap.bitsPerPixel() == 16)
        return static_cast<std::uint32_t>(rgb.red / 8 * 1024 + rgb.green / 8 * 32 + rgb.blue / 8);
    return static_cast<std::uint32_t>(rgb.red * 65536 + rgb.green * 256 + rgb.blue);
}

struct Drawing {
    int depth;
    Point at;
    bool transparent;
    bool clipped;
};

void checkDrawing(OMBitmap& bitmap, const File& file, const Drawing& drawing) {
    OMMemCanvas canvas(kWidth, kHeight, drawing.depth);
    fuzzing::fillNoise(canvas);
    const Pixels before = fuzzing::pixelsOf(canvas);
    const platform::Rect clip{3, 2, kWidth - 5, kHeight - 1};
    if (drawing.clipped) canvas.setClipRegion(OMRegion(clip));
    canvas.setTransparentDrawing(drawing.transparent);
    canvas.draw(drawing.at.x, drawing.at.y, bitmap);
    const Pixels after = fuzzing::pixelsOf(canvas);

    const bool drawable = drawing.depth > 8 || bitmap.bitsPerPixel() == 8;
    const std::uint32_t invisible = invisiblePixel(bitmap);
    for (int y = 0, i = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x, ++i) {
            const std::int64_t column = std::int64_t{x} - drawing.at.x;
            const std::int64_t row = std::int64_t{y} - drawing.at.y;
            const bool inside = drawable && column >= 0 && column < bitmap.width() && row >= 0 &&
                                row < bitmap.height() &&
                                (!drawing.clipped || OMContains(clip, Point{x, y}));
            const auto place = static_cast<std::size_t>(i);
            std::optional<std::uint32_t> source;
            if (inside) source = file.pixel(static_cast<int>(column), static_cast<int>(row));
            if (source && drawing.transparent &&
                (*source & comparedBits(bitmap.bitsPerPixel())) == invisible)
                source.reset();
            if (!source)
                expect(after[place] == before[place], "what is not drawn stays");
            else if (drawing.depth == bitmap.bitsPerPixel())
                expect(after[place] == *source, "a canvas shows the pixels of the file");
        }
}

void setInvisible(OMBitmap& bitmap, fuzzing::Choices& choices) {
    const OMColor before = bitmap.invisibleColor();
    const bool index = choices.byte() % 2 == 0;
    const auto component = [&] { return static_cast<std::uint16_t>(choices.word()); };
    const OMColor wanted =
        index ? OMColor(choices.byte()) : OMColor(component(), component(), component());
    bitmap.setInvisibleColor(wanted);
    const bool fits = index == (bitmap.bitsPerPixel() == 8);
    expect(bitmap.invisibleColor() == (fits ? wanted : before),
           "an invisible colour is of the picture's kind");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int kPlaces = 2;
    fuzzing::World world;
    fuzzing::Choices choices(data, size);
    std::vector<Drawing> drawings;
    for (int i = 0; i < kPlaces; ++i) {
        const Point at{choices.word(), choices.word()};
        const int how = choices.byte();
        // Mostly somewhere on the canvas.
        const Point near{at.x % (2 * kWidth), at.y % (2 * kHeight)};
        for (const int depth : {8, 16, 24, 32})
            for (const bool transparent : {false, true})
                drawings.push_back(
                    {depth, (how & 2) != 0 ? at : near, transparent, (how & 1) != 0});
    }
    fuzzing::Choices colours = choices;
    for (int i = 0; i < 8; ++i) (void)choices.byte();
    const Bytes bytes = choices.rest();
    world.files.put(kName, bytes);
    world.makeApp();

    OMIStreamFile stream(kName, kOMIStreamCache);
    const auto bitmap = OMBitmap::createInstance(stream);
    if (!bitmap) return 0;
    expect(bitmap->width() >= 1 && bitmap->height() >= 1, "a picture has pixels");
    const File file(bytes, *bitmap);
    OMPalette palette;
    expect(bitmap->getPalette(palette) == (bitmap->bitsPerPixel() == 8),
           "8-bit pictures have a palette");
    for (const Drawing& drawing : drawings) checkDrawing(*bitmap, file, drawing);
    setInvisible(*bitmap, colours);
    for (const Drawing& drawing : drawings)
        if (drawing.transparent) checkDrawing(*bitmap, file, drawing);
    return 0;
}
