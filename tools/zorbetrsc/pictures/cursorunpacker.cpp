#include "pictures/cursorunpacker.h"

#include "pictures/cursor.h"
#include "pictures/writepng.h"
#include "refusal.h"

namespace rsc {

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
