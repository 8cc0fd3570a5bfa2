#include "pictures/cursor.h"

#include "refusal.h"

#include <algorithm>

namespace rsc {

using formats::Bytes;
using formats::ByteSpan;
using formats::picture::HotSpot;

namespace {

constexpr std::uint8_t kPngStart[] = {0x89, 'P', 'N', 'G'};
constexpr std::uint8_t kIconStart[] = {0, 0, 1, 0};

template <std::size_t Size>
bool startsWith(ByteSpan bytes, const std::uint8_t (&start)[Size]) {
    return bytes.size() >= Size && std::ranges::equal(bytes.first(Size), start);
}

std::string faultOf(ByteSpan resource) {
    if (startsWith(resource, kPngStart)) return "it is a PNG picture, no cursor file";
    if (startsWith(resource, kIconStart)) return "it is an icon (.ico), no cursor (.cur)";
    if (!formats::picture::isCursorFile(resource)) return "it is no cursor file (.cur)";
    const auto file = formats::picture::readCursorFile(resource);
    if (!file.ok()) return file.refusal;
    for (const formats::picture::CursorEntry& entry : file.value.entries)
        if (startsWith(entry.image, kPngStart)) return "its pictures are packed as PNG";
    return "none of its pictures is whole, not compressed, of 1, 4, 8, 24 or 32 bits a pixel and "
           "of at most 256x256 pixels";
}

} // namespace

Bytes buildCursor(const Picture& picture, HotSpot hotSpot) {
    const std::string size =
        std::to_string(picture.width()) + "x" + std::to_string(picture.height());
    if (picture.width() > kLargestCursor || picture.height() > kLargestCursor)
        throw Refusal("the picture has " + size + " pixels, a cursor at most " +
                      std::to_string(kLargestCursor) + "x" + std::to_string(kLargestCursor));
    if (hotSpot.x >= picture.width() || hotSpot.y >= picture.height())
        throw Refusal("the hot spot " + std::to_string(hotSpot.x) + " " +
                      std::to_string(hotSpot.y) + " lies outside of the picture, which has " +
                      size + " pixels");
    formats::picture::Cursor cursor{picture.width(), picture.height(), hotSpot, {}};
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const Pixel pixel = picture.pixel(i);
        const auto& [red, green, blue] = pixel.colour;
        const std::uint32_t shown =
            std::uint32_t{0xFF} << 24 | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | blue;
        cursor.pixels.push_back(pixel.opaque() ? shown : 0);
    }
    return formats::picture::writeCursor(cursor);
}

std::string whyArrow(ByteSpan resource) {
    return formats::picture::readCursor(resource) ? std::string() : faultOf(resource);
}

std::optional<UnpackedResource> unpackCursor(formats::ByteSpan resource, int id,
                                             const std::string& name) {
    const auto cursor = valueOf(formats::picture::readCursorFile(resource));
    if (cursor.entries.size() != 1) return std::nullopt;
    const formats::picture::CursorEntry& entry = cursor.entries.front();
    const auto shown = valueOf(formats::picture::plainPixels(entry));
    if (!shown) return std::nullopt;
    std::vector<Pixel> pixels;
    for (const std::uint32_t pixel : *shown) {
        const auto byte = [&](int shift) { return static_cast<std::uint8_t>(pixel >> shift); };
        pixels.push_back({{byte(16), byte(8), byte(0)}, byte(24)});
    }
    const std::string file = name + ".png";
    UnpackedResource result;
    result.lines = "    cursor " + std::to_string(id) + " " + file + " " +
                   std::to_string(entry.hotSpot.x) + " " + std::to_string(entry.hotSpot.y) + "\n";
    result.files.push_back({file, writeTruecolourPng(entry.width, entry.height, pixels)});
    try {
        const Picture picture = Picture::fromPng(result.files.front().data);
        result.packed = buildCursor(picture, entry.hotSpot);
        return result;
    } catch (const Refusal&) { // what only other tools make
        return std::nullopt;
    }
}

} // namespace rsc
