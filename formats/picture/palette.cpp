#include "formats/picture/palette.h"

namespace formats::picture {

std::optional<Palette> readPalette(ByteSpan bytes) {
    if (bytes.size() < kPaletteSize) return std::nullopt;
    Palette palette;
    std::size_t at = 0;
    for (Colour& colour : palette)
        for (std::uint8_t* component : {&colour.red, &colour.green, &colour.blue}) {
            *component = bytes[at];
            at += 2;
        }
    return palette;
}

Bytes writePalette(const Palette& palette) {
    ByteWriter out;
    for (const Colour& colour : palette) out.u16(colour.red).u16(colour.green).u16(colour.blue);
    return out.take();
}

} // namespace formats::picture
