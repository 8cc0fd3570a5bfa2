#include "ompixelrows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <vector>

using platform::Rect;
using platform::Rgb;

namespace ompixels {

std::uint32_t packed(Rgb color, int depth) {
    if (depth == 16)
        return static_cast<std::uint32_t>(color.red >> 3 << 10 | color.green >> 3 << 5 |
                                          color.blue >> 3);
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

namespace {

Rgb unpacked(std::uint32_t pixel, int depth) {
    if (depth != 16)
        return {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
                static_cast<std::uint8_t>(pixel)};
    // The upper bits fill the lower ones too, so that white stays white.
    const auto widened = [](std::uint32_t five) {
        return static_cast<std::uint8_t>((five & 31) << 3 | (five & 31) >> 2);
    };
    return {widened(pixel >> 10), widened(pixel >> 5), widened(pixel)};
}

template <int kBytes>
void load(std::span<std::uint32_t> pixels, const std::uint8_t* from) {
    for (std::uint32_t& pixel : pixels) {
        pixel = 0;
        for (int byte = 0; byte < kBytes; ++byte) pixel |= std::uint32_t{*from++} << (8 * byte);
    }
}

template <int kBytes>
void store(std::span<const std::uint32_t> pixels, std::uint8_t* to) {
    for (const std::uint32_t pixel : pixels)
        for (int byte = 0; byte < kBytes; ++byte)
            *to++ = static_cast<std::uint8_t>(pixel >> (8 * byte));
}

/// Depths deeper than 8 bits.
void load(int depth, std::span<std::uint32_t> pixels, const std::uint8_t* from) {
    if (depth == 16) load<2>(pixels, from);
    if (depth == 24) load<3>(pixels, from);
    if (depth == 32) load<4>(pixels, from);
}

void store(int depth, std::span<const std::uint32_t> pixels, std::uint8_t* to) {
    if (depth == 16) store<2>(pixels, to);
    if (depth == 24) store<3>(pixels, to);
    if (depth == 32) store<4>(pixels, to);
}

/// Turns rows of one depth into rows of another, deeper than 8 bits.
class RowConverter {
  public:
    RowConverter(int from, const OMDevicePalette& palette, int to, int width)
        : from_(from), to_(to), pixels_(static_cast<std::size_t>(width)),
          row_(pixels_.size() * static_cast<std::size_t>(to / 8)) {
        std::transform(palette.begin(), palette.end(), table_.begin(),
                       [to](Rgb color) { return packed(color, to); });
    }

    /// Valid until the next call. `count` is at most the converter's width.
    const std::uint8_t* convert(const std::uint8_t* row, int count) {
        const auto pixels = std::span(pixels_).first(static_cast<std::size_t>(count));
        if (from_ == 8) {
            for (std::uint32_t& pixel : pixels) pixel = table_[*row++];
        } else {
            load(from_, pixels, row);
            for (std::uint32_t& pixel : pixels) pixel = packed(unpacked(pixel, from_), to_);
        }
        store(to_, pixels, row_.data());
        return row_.data();
    }

  private:
    int from_;
    int to_;
    std::array<std::uint32_t, platform::kPaletteSize> table_;
    std::vector<std::uint32_t> pixels_;
    std::vector<std::uint8_t> row_;
};

std::size_t rowBytes(const OMPixels& pixels, const Rect& area) {
    return static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(pixels.bytesPerPixel);
}

/// Whether the bytes from the first to the last pixel of the two areas meet.
bool shareMemory(const OMPixels& a, const Rect& areaOfA, const OMPixels& b, const Rect& areaOfB) {
    const auto begin = [](const OMPixels& pixels, const Rect& area) {
        return pixels.at(area.left, area.top);
    };
    const auto end = [](const OMPixels& pixels, const Rect& area) {
        return pixels.at(area.right - 1, area.bottom - 1) + pixels.bytesPerPixel;
    };
    const std::less<const std::uint8_t*> before;
    return before(begin(a, areaOfA), end(b, areaOfB)) && before(begin(b, areaOfB), end(a, areaOfA));
}

/// A copy of an area of pixels, kept in `memory`.
OMPixels copyOf(const OMPixels& pixels, const Rect& area, std::vector<std::uint8_t>& memory) {
    const std::size_t stride = rowBytes(pixels, area);
    memory.resize(stride * static_cast<std::size_t>(area.height()));
    const OMPixels copy{memory.data(), stride, area, pixels.bytesPerPixel};
    for (int y = area.top; y < area.bottom; ++y)
        std::memcpy(copy.at(area.left, y), pixels.at(area.left, y), stride);
    return copy;
}

/// Copies the pixels for which `isWanted` holds, told their place in the row.
template <class IsWanted>
void copySome(const Row& row, IsWanted isWanted) {
    const auto bytes = static_cast<std::size_t>(row.bytes);
    for (int x = 0; x < row.width; ++x) {
        const std::size_t at = static_cast<std::size_t>(x) * bytes;
        if (isWanted(x)) std::memcpy(row.to + at, row.from + at, bytes);
    }
}

} // namespace

void fill(const OMPixels& pixels, const Rect& area, std::uint32_t value) {
    const std::size_t bytes = rowBytes(pixels, area);
    std::uint8_t* first = pixels.at(area.left, area.top);
    if (pixels.bytesPerPixel == 1) {
        for (int y = area.top; y < area.bottom; ++y)
            std::memset(pixels.at(area.left, y), static_cast<int>(value), bytes);
        return;
    }
    const std::vector<std::uint32_t> row(static_cast<std::size_t>(area.width()), value);
    store(pixels.bytesPerPixel * 8, row, first);
    for (int y = area.top + 1; y < area.bottom; ++y)
        std::memcpy(pixels.at(area.left, y), first, bytes);
}

void combine(const Row& row, OMRasterOp operation) {
    const auto bytes = static_cast<std::size_t>(row.width) * static_cast<std::size_t>(row.bytes);
    switch (operation) {
    case OMRasterOp::SrcCopyKeyed: // without a key colour
    case OMRasterOp::SrcCopy: std::memcpy(row.to, row.from, bytes); return;
    case OMRasterOp::SrcInvert:
        for (std::size_t i = 0; i < bytes; ++i) row.to[i] ^= row.from[i];
        return;
    case OMRasterOp::SrcAnd:
        for (std::size_t i = 0; i < bytes; ++i) row.to[i] &= row.from[i];
        return;
    }
}

void copyUnlessKey(const Row& row, std::uint32_t key) {
    copySome(row, [&](int x) {
        std::uint32_t pixel = 0;
        for (int byte = 0; byte < row.originalBytes; ++byte)
            pixel |= std::uint32_t{row.original[x * row.originalBytes + byte]} << (8 * byte);
        return pixel != key;
    });
}

void copyUnmasked(const Row& row, const std::uint8_t* mask) {
    copySome(row, [&](int x) {
        const int column = row.sourceX + x;
        return (mask[column / 8] & 0x80 >> column % 8) == 0;
    });
}

void copy(const OMPixels& to, int depth, Source source, const OMRegion& region, int dx, int dy,
          const std::function<void(const Row&)>& write) {
    const Rect box = region.boundingBox();
    const Rect sourceBox = platform::shifted(box, dx, dy);
    std::vector<std::uint8_t> memory;
    if (shareMemory(source.pixels, sourceBox, to, box))
        source.pixels = copyOf(source.pixels, sourceBox, memory);
    std::optional<RowConverter> converter;
    if (depth != source.depth) converter.emplace(source.depth, source.palette, depth, box.width());
    Row row{};
    row.bytes = to.bytesPerPixel;
    row.originalBytes = source.pixels.bytesPerPixel;
    for (const Rect& part : region.rectangles()) {
        row.width = part.width();
        row.sourceX = part.left + dx;
        for (int y = part.top; y < part.bottom; ++y) {
            row.sourceY = y + dy;
            row.to = to.at(part.left, y);
            row.original = source.pixels.at(row.sourceX, row.sourceY);
            row.from = converter ? converter->convert(row.original, row.width) : row.original;
            write(row);
        }
    }
}

} // namespace ompixels
