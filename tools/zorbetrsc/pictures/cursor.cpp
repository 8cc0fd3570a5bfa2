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

} // namespace rsc
