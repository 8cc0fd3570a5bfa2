#include "pictures/gamecursor.h"

#include "pictures/cursor.h"

#include "omcursorimage.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::uint8_t kPngStart[] = {0x89, 'P', 'N', 'G'};
constexpr std::uint8_t kIconStart[] = {0, 0, 1, 0};

template <std::size_t Size>
bool startsWith(ByteSpan bytes, const std::uint8_t (&start)[Size]) {
    return bytes.size() >= Size && std::ranges::equal(bytes.first(Size), start);
}

bool hasPackedPicture(ByteSpan resource) {
    const CursorFile file = readCursorFile(resource);
    return std::ranges::any_of(
        file.entries, [](const CursorEntry& entry) { return startsWith(entry.image, kPngStart); });
}

std::string faultOf(ByteSpan resource) {
    if (startsWith(resource, kPngStart)) return "it is a PNG picture, no cursor file";
    if (startsWith(resource, kIconStart)) return "it is an icon (.ico), no cursor (.cur)";
    if (!isCursorFile(resource)) return "it is no cursor file (.cur)";
    try {
        if (hasPackedPicture(resource)) return "its pictures are packed as PNG";
    } catch (const Refusal& refusal) {
        return refusal.what();
    }
    return "none of its pictures is whole, not compressed, of 1, 4, 8, 24 or 32 bits a pixel and "
           "of "
           "at most 256x256 pixels";
}

} // namespace

std::string whyArrow(ByteSpan resource) {
    return OMReadCursorImage(std::as_bytes(resource)) ? std::string() : faultOf(resource);
}

} // namespace rsc
