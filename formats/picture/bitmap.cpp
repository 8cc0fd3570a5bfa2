#include "formats/picture/bitmap.h"

#include "formats/picture/dib.h"

#include <cstdlib>

namespace formats::picture {

namespace {

constexpr std::size_t kFileHeader = 14;

bool isSide(std::int64_t side) { return side >= 1 && side <= kLargestBitmapSide; }

bool isUsable(const DibHeader& header) {
    const int depth = header.depth;
    const bool depthExists = depth == 8 || depth == 16 || depth == 24 || depth == 32;
    return depthExists && header.compression == kUncompressed && isSide(header.width) &&
           isSide(std::abs(std::int64_t{header.height}));
}

Palette readTable(ByteReader& reader) {
    Palette palette;
    for (Colour& colour : palette) {
        colour.blue = reader.u8();
        colour.green = reader.u8();
        colour.red = reader.u8();
        reader.skip(1);
    }
    return palette;
}

BitmapFault read(ByteReader& reader, Bitmap& bitmap) {
    reader.seek(reader.text(2) == "BM" ? kFileHeader : 0);
    const auto header = readDibHeader(reader);
    if (!header || !isUsable(*header)) return BitmapFault::Unknown;
    bitmap.width = header->width;
    bitmap.height = std::abs(header->height);
    bitmap.depth = header->depth;
    bitmap.highestFirst = header->height < 0;
    if (bitmap.depth == 8) {
        if (header->colours != 0 && header->colours != std::tuple_size_v<Palette>)
            return BitmapFault::PaletteSize;
        bitmap.palette = readTable(reader);
    } else if (bitmap.depth == 24) {
        reader.skip(std::size_t{header->colours} * kTableEntry);
    } else if (header->colours != 0) {
        return BitmapFault::UnwantedPalette;
    }
    bitmap.rows = asNumbers(reader.bytes(dibRowSize(bitmap.width, bitmap.depth) *
                                         static_cast<std::size_t>(bitmap.height)));
    return reader.ok() ? BitmapFault::None : BitmapFault::Unknown;
}

} // namespace

ByteSpan Bitmap::row(int y) const {
    const std::size_t size = dibRowSize(width, depth);
    return rows.subspan(static_cast<std::size_t>(highestFirst ? y : height - 1 - y) * size, size);
}

std::optional<Bitmap> readBitmap(ByteSpan bytes, BitmapFault& fault) {
    ByteReader reader(bytes);
    Bitmap bitmap;
    fault = read(reader, bitmap);
    if (fault != BitmapFault::None) return std::nullopt;
    return bitmap;
}

} // namespace formats::picture
