#include "ombitmap.h"

#include "formats/picture/bitmap.h"
#include "omdebug.h"
#include "omistream.h"

#include <algorithm>

using formats::picture::BitmapFault;

namespace {

bool refuse(const char* condition, const char* message) {
    return OMDebug::check(false, condition, message);
}

void refuse(BitmapFault fault) {
    switch (fault) {
    case BitmapFault::None: return;
    case BitmapFault::Unknown:
        refuse("unknown", "OMBitmap::createInstance - unknown bitmap type!");
        return;
    case BitmapFault::PaletteSize:
        refuse("bmiHeader->biClrUsed != 256",
               "OMBitmap::createInstance - 8 bit BMP's must have an OM palette!");
        return;
    case BitmapFault::UnwantedPalette:
        refuse("bmiHeader->biClrUsed != 0",
               "OMBitmap::createInstance - 16/32 bit BMP's cannot have a palette!");
        return;
    }
}

OMDevicePalette withFixedColours(const formats::picture::Palette& given) {
    OMDevicePalette palette = OMDefaultPalette();
    for (int i = platform::kFirstFreeColour; i < platform::kFirstHighStaticColour; ++i) {
        const auto& [red, green, blue] = given[static_cast<std::size_t>(i)];
        palette[static_cast<std::size_t>(i)] = {red, green, blue};
    }
    return palette;
}

} // namespace

std::unique_ptr<OMBitmap> OMBitmap::createInstance(OMIStream& stream) {
    OMDebug::requireApp("OMBitmap");
    if (!OMDebug::check(stream.isWhole(), "!stream->isCached()",
                        "OMBitmap::OMBitmap - OMIStream source must be cached!"))
        return nullptr;
    BitmapFault fault = BitmapFault::None;
    const auto stored = formats::picture::readBitmap(formats::asNumbers(stream.readAll()), fault);
    if (!stored) {
        refuse(fault);
        return nullptr;
    }
    platform::Surface surface(stored->width, stored->height, stored->depth);
    for (int y = 0; y < stored->height; ++y) // rows are padded alike in the data and in surfaces
        std::ranges::copy(stored->row(y), surface.row(y));
    std::optional<OMDevicePalette> palette;
    if (stored->palette) palette = withFixedColours(*stored->palette);
    return std::unique_ptr<OMBitmap>(new OMBitmap(std::move(surface), palette));
}

OMBitmap::OMBitmap(platform::Surface surface, std::optional<OMDevicePalette> palette)
    : surface_(std::move(surface)), palette_(palette),
      invisible_(palette_ ? OMColor(kInvisibleIndex) : kInvisibleBlue),
      maskStride_((static_cast<std::size_t>(surface_.width()) + 31) / 32 * 4) {}

bool OMBitmap::getPalette(OMPalette& palette) const {
    if (palette_) palette = OMPaletteFromDevice(*palette_);
    return palette_.has_value();
}

void OMBitmap::setInvisibleColor(const OMColor& color) {
    const bool indexed = bitsPerPixel() == 8;
    if (indexed && !color.isIndex()) {
        refuse("color.index == -1", "OMBitmap::setInvisibleColor - invisible color must be an "
                                    "index for 8-bit bitmaps!");
    } else if (!indexed && color.isIndex()) {
        refuse("color.index != -1", "OMBitmap::setInvisibleColor - invisible color must be an RGB "
                                    "for 16/24-bit bitmaps!");
    } else {
        invisible_ = color;
        mask_.clear();
    }
}

OMPixels OMBitmap::pixels() {
    return {surface_.row(0), surface_.stride(), surface_.bounds(), surface_.bytesPerPixel()};
}

const std::uint8_t* OMBitmap::maskRow(int y) {
    if (mask_.empty()) buildMask();
    return mask_.data() + maskStride_ * static_cast<std::size_t>(y);
}

std::uint32_t OMBitmap::invisiblePixel() const {
    switch (bitsPerPixel()) {
    case 8: return static_cast<std::uint32_t>(invisible_.index());
    case 16:
        return static_cast<std::uint32_t>(invisible_.red() >> 11 << 10 |
                                          invisible_.green() >> 11 << 5 | invisible_.blue() >> 11);
    default:
        return static_cast<std::uint32_t>(invisible_.red() >> 8 << 16 |
                                          invisible_.green() >> 8 << 8 | invisible_.blue() >> 8);
    }
}

void OMBitmap::buildMask() {
    mask_.assign(maskStride_ * static_cast<std::size_t>(height()), 0);
    const std::uint32_t wanted = invisiblePixel();
    const std::uint32_t counts = bitsPerPixel() == 16 ? 0x7FFF : 0xFFFFFF;
    const int bytes = surface_.bytesPerPixel();
    for (int y = 0; y < height(); ++y) {
        const std::uint8_t* at = surface_.row(y);
        std::uint8_t* bits = mask_.data() + maskStride_ * static_cast<std::size_t>(y);
        for (int x = 0; x < width(); ++x) {
            std::uint32_t pixel = 0;
            for (int byte = 0; byte < bytes; ++byte) pixel |= std::uint32_t{*at++} << (8 * byte);
            if ((pixel & counts) == wanted)
                bits[x / 8] = static_cast<std::uint8_t>(bits[x / 8] | 0x80 >> x % 8);
        }
    }
}
