#include "ombitmap.h"

#include "dib.h"
#include "formats/base/bytes.h"
#include "omdebug.h"
#include "omistream.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kFileHeader = 14;
constexpr const char* kUnknown = "OMBitmap::createInstance - unknown bitmap type!";

bool refuse(const char* condition, const char* message) {
    return OMDebug::check(false, condition, message);
}

/// The fields of the information header that matter.
struct Info {
    std::int32_t width = 0;
    std::int32_t height = 0; ///< negative: the highest row comes first
    int depth = 0;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0;

    [[nodiscard]] bool isUsable() const {
        const auto isSide = [](std::int64_t side) {
            return side >= 1 && side <= OMBitmap::kMaxSide;
        };
        const bool depthExists = depth == 8 || depth == 16 || depth == 24 || depth == 32;
        return depthExists && compression == dib::kUncompressed && isSide(width) &&
               isSide(std::abs(std::int64_t{height}));
    }
    [[nodiscard]] int rows() const { return std::abs(height); }
};

/// Leaves the reader behind the header; false when there is none.
bool readInfo(formats::ByteReader& reader, Info& info) {
    if (reader.text(2) == "BM")
        reader.seek(kFileHeader);
    else
        reader.seek(0);
    if (reader.u32() != dib::kInfoHeader) return false;
    info.width = reader.i32();
    info.height = reader.i32();
    reader.skip(2); // planes
    info.depth = reader.u16();
    info.compression = reader.u32();
    reader.skip(12); // size of the pixels, pixels a metre
    info.colours = reader.u32();
    reader.skip(4); // important colours
    return reader.ok();
}

/// The colour table of an 8-bit picture.
OMDevicePalette readTable(formats::ByteReader& reader) {
    OMDevicePalette palette = OMDefaultPalette();
    for (int i = 0; i < platform::kPaletteSize; ++i) {
        platform::Rgb colour;
        colour.blue = reader.u8();
        colour.green = reader.u8();
        colour.red = reader.u8();
        reader.skip(1);
        if (OMIsGameColor(i)) palette[static_cast<std::size_t>(i)] = colour;
    }
    return palette;
}

/// None, after a failed check, when the table is not what the depth wants. Others than 8-bit
/// pictures have none, except that 24-bit ones may bring one that is passed over.
bool readColours(formats::ByteReader& reader, const Info& info,
                 std::optional<OMDevicePalette>& palette) {
    if (info.depth == 8) {
        if (info.colours != 0 && info.colours != platform::kPaletteSize)
            return refuse("bmiHeader->biClrUsed != 256",
                          "OMBitmap::createInstance - 8 bit BMP's must have an OM palette!");
        palette = readTable(reader);
    } else if (info.depth == 24) {
        reader.skip(std::size_t{info.colours} * dib::kTableEntry);
    } else if (info.colours != 0) {
        return refuse("bmiHeader->biClrUsed != 0",
                      "OMBitmap::createInstance - 16/32 bit BMP's cannot have a palette!");
    }
    return true;
}

/// Rows are padded alike in the data and in surfaces.
bool readPixels(formats::ByteReader& reader, const Info& info, platform::Surface& surface) {
    for (int i = 0; i < info.rows(); ++i) {
        const auto row = reader.bytes(surface.stride());
        if (row.empty()) return false;
        std::memcpy(surface.row(info.height > 0 ? info.rows() - 1 - i : i), row.data(), row.size());
    }
    return true;
}

std::size_t strideOf(const Info& info) {
    return (static_cast<std::size_t>(info.width) * static_cast<std::size_t>(info.depth / 8) + 3) /
           4 * 4;
}

} // namespace

std::unique_ptr<OMBitmap> OMBitmap::createInstance(OMIStream& stream) {
    OMDebug::requireApp("OMBitmap");
    if (!OMDebug::check(stream.isWhole(), "!stream->isCached()",
                        "OMBitmap::OMBitmap - OMIStream source must be cached!"))
        return nullptr;
    formats::ByteReader reader(stream.readAll());
    Info info;
    if (!OMDebug::check(readInfo(reader, info) && info.isUsable(), "unknown", kUnknown))
        return nullptr;
    std::optional<OMDevicePalette> palette;
    if (!readColours(reader, info, palette)) return nullptr;
    const bool isThere =
        reader.ok() && reader.remaining() / strideOf(info) >= static_cast<std::size_t>(info.rows());
    if (!OMDebug::check(isThere, "unknown", kUnknown)) return nullptr;
    platform::Surface surface(info.width, info.rows(), info.depth);
    if (!OMDebug::check(readPixels(reader, info, surface), "unknown", kUnknown)) return nullptr;
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
