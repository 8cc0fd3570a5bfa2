#include "omcursorimage.h"

#include "dib.h"
#include "formats/base/bytes.h"

#include <algorithm>
#include <array>

using platform::CursorImage;

namespace {

using Bytes = std::span<const std::byte>;

constexpr int kCursorFile = 2; ///< icons are 1
constexpr int kUsualSide = 32; ///< pixels
constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::uint32_t kColourBits = 0x00FFFFFF;
constexpr int kMaskDepth = 1;

/// A picture that is all there; its parts point into the resource.
struct Picture {
    int width = 0;
    int height = 0;
    int depth = 0;
    platform::Point hotSpot{};
    Bytes table;
    Bytes colours;
    Bytes mask;

    [[nodiscard]] bool hasUsualSize() const { return width == kUsualSide && height == kUsualSide; }
};

std::size_t strideOf(int width, int depth) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(depth) + 31) / 32 * 4;
}

bool isSide(int side) { return side >= 1 && side <= CursorImage::kMaxSide; }

/// Entries of the colour table; deep pictures may bring one that is passed over.
std::optional<std::size_t> tableEntries(int depth, std::uint32_t used) {
    switch (depth) {
    case 1:
    case 4:
    case 8: {
        const std::uint32_t all = 1U << depth;
        if (used > all) return std::nullopt;
        return used == 0 ? all : used;
    }
    case 24:
    case 32: return used;
    default: return std::nullopt;
    }
}

std::optional<Picture> readPicture(Bytes bytes, platform::Point hotSpot) {
    formats::ByteReader reader(bytes);
    if (reader.u32() != dib::kInfoHeader) return std::nullopt;
    Picture picture;
    picture.width = reader.i32();
    const int bothHeights = reader.i32();
    picture.height = bothHeights / 2;
    reader.skip(2); // planes
    picture.depth = reader.u16();
    const std::uint32_t compression = reader.u32();
    reader.skip(12); // size of the pixels, pixels a metre
    const auto entries = tableEntries(picture.depth, reader.u32());
    reader.skip(4); // important colours
    if (!reader.ok() || !entries || compression != dib::kUncompressed || bothHeights % 2 != 0 ||
        !isSide(picture.width) || !isSide(picture.height))
        return std::nullopt;
    const auto rows = static_cast<std::size_t>(picture.height);
    picture.table = reader.bytes(*entries * dib::kTableEntry);
    picture.colours = reader.bytes(rows * strideOf(picture.width, picture.depth));
    picture.mask = reader.bytes(rows * strideOf(picture.width, kMaskDepth));
    if (!reader.ok()) return std::nullopt;
    picture.hotSpot = platform::nearestInside(hotSpot, {0, 0, picture.width, picture.height});
    return picture;
}

/// The one that is used. Only headers are looked at, for a directory may name as many large
/// pictures as it likes.
std::optional<Picture> findPicture(Bytes resource) {
    formats::ByteReader directory(resource);
    if (directory.u16() != 0 || directory.u16() != kCursorFile) return std::nullopt;
    std::optional<Picture> first;
    for (int count = directory.u16(); count > 0; --count) {
        directory.skip(4); // sides, which the picture says itself, and colours
        const int x = directory.u16();
        const int y = directory.u16();
        const std::size_t size = directory.u32();
        const std::size_t offset = directory.u32();
        if (!directory.ok()) break;
        if (offset > resource.size() || size > resource.size() - offset) continue;
        const auto picture = readPicture(resource.subspan(offset, size), {x, y});
        if (picture && picture->hasUsualSize()) return picture;
        if (!first) first = picture;
    }
    return first;
}

std::uint32_t numberAt(Bytes row, std::size_t at, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= std::to_integer<std::uint32_t>(row[at + i]) << 8 * i;
    return value;
}

/// Pixels of less than a byte begin at its highest bits.
std::uint32_t valueAt(Bytes row, int x, int depth) {
    const auto column = static_cast<std::size_t>(x);
    const auto bits = static_cast<std::size_t>(depth);
    if (depth >= 8) return numberAt(row, column * (bits / 8), bits / 8);
    const std::size_t place = column * bits;
    const auto byte = std::to_integer<std::uint32_t>(row[place / 8]);
    return byte >> (8 - bits - place % 8) & ((1U << bits) - 1);
}

Bytes rowOf(Bytes rows, const Picture& picture, int depth, int y) {
    const std::size_t stride = strideOf(picture.width, depth);
    return rows.subspan(static_cast<std::size_t>(picture.height - 1 - y) * stride, stride);
}

/// Index to colour; what a short table leaves out is black.
std::array<std::uint32_t, 256> tableOf(const Picture& picture) {
    std::array<std::uint32_t, 256> table{};
    if (picture.depth > 8) return table;
    for (std::size_t i = 0; i < picture.table.size() / dib::kTableEntry; ++i)
        table[i] = numberAt(picture.table, i * dib::kTableEntry, 3);
    return table;
}

/// `pixels` are colours with the alpha of the picture.
void applyMask(const Picture& picture, std::vector<std::uint32_t>& pixels) {
    auto pixel = pixels.begin();
    for (int y = 0; y < picture.height; ++y) {
        const Bytes mask = rowOf(picture.mask, picture, kMaskDepth, y);
        for (int x = 0; x < picture.width; ++x, ++pixel) {
            const std::uint32_t colour = *pixel & kColourBits;
            if (valueAt(mask, x, kMaskDepth) == 0)
                *pixel = colour | kOpaque;
            else
                *pixel = colour == 0 ? 0 : kOpaque;
        }
    }
}

void applyAlpha(std::vector<std::uint32_t>& pixels) {
    constexpr std::uint32_t kHalf = 0x80000000;
    for (std::uint32_t& pixel : pixels) pixel = pixel >= kHalf ? pixel | kOpaque : 0;
}

CursorImage imageOf(const Picture& picture) {
    CursorImage image{picture.width, picture.height, picture.hotSpot, {}};
    image.pixels.reserve(static_cast<std::size_t>(picture.width) *
                         static_cast<std::size_t>(picture.height));
    const std::array<std::uint32_t, 256> table = tableOf(picture);
    for (int y = 0; y < picture.height; ++y) {
        const Bytes row = rowOf(picture.colours, picture, picture.depth, y);
        for (int x = 0; x < picture.width; ++x) {
            const std::uint32_t value = valueAt(row, x, picture.depth);
            image.pixels.push_back(picture.depth <= 8 ? table[value] : value);
        }
    }
    const bool hasAlpha = std::any_of(image.pixels.begin(), image.pixels.end(),
                                      [](std::uint32_t pixel) { return pixel > kColourBits; });
    if (hasAlpha)
        applyAlpha(image.pixels);
    else
        applyMask(picture, image.pixels);
    return image;
}

} // namespace

std::optional<CursorImage> OMReadCursorImage(Bytes resource) {
    const std::optional<Picture> picture = findPicture(resource);
    if (!picture) return std::nullopt;
    return imageOf(*picture);
}
