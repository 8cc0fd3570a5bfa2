#include "pictures/cursorunpacker.h"

#include "pictures/cursor.h"
#include "pictures/writepng.h"

namespace rsc {

std::optional<UnpackedResource> unpackCursor(ByteSpan resource, int id, const std::string& name) {
    const CursorFile cursor = readCursorFile(resource);
    if (cursor.entries.size() != 1) return std::nullopt;
    const CursorEntry& entry = cursor.entries.front();
    const auto pixels = cursorPixels(entry);
    if (!pixels) return std::nullopt;
    const std::string file = name + ".png";
    UnpackedResource result;
    result.lines = "    cursor " + std::to_string(id) + " " + file + " " +
                   std::to_string(entry.hotSpot.x) + " " + std::to_string(entry.hotSpot.y) + "\n";
    result.files.push_back({file, writeTruecolourPng(entry.width, entry.height, *pixels)});
    try {
        const Picture picture = Picture::fromPng(result.files.front().data);
        result.packed = buildCursor(picture, entry.hotSpot);
        return result;
    } catch (const Refusal&) { // what only other tools make
        return std::nullopt;
    }
}

} // namespace rsc
