#include "formats/movie/moviepalette.h"

namespace formats {

namespace {

constexpr std::size_t kPaletteUnit = 4;
constexpr std::uint8_t kKeep = 0x80;
constexpr std::uint8_t kCopy = 0x40;
constexpr std::uint8_t kComponent = 0x3F;

} // namespace

Bytes makePaletteChunk(const MoviePalette& palette) {
    ByteWriter out;
    out.u8(0);
    for (const MovieColour& colour : palette)
        for (const std::uint8_t component : {colour.red, colour.green, colour.blue})
            out.u8(toMovieComponent(component));
    out.padTo(kPaletteUnit);
    Bytes chunk = out.take();
    chunk[0] = static_cast<std::uint8_t>(chunk.size() / kPaletteUnit);
    return chunk;
}

bool readPaletteChunk(ByteReader& in, MoviePalette& palette) {
    const std::size_t start = in.position();
    const std::size_t end = start + kPaletteUnit * in.u8();
    MoviePalette now = palette;
    const auto component = [&] { return fromMovieComponent(in.u8() & kComponent); };
    for (std::size_t entry = 0; entry < now.size() && in.ok();) {
        const std::uint8_t command = in.u8();
        if (command & kKeep) {
            entry += (command & ~kKeep & 0xFFU) + 1;
        } else if (command & kCopy) {
            std::size_t from = in.u8();
            const std::size_t stop = from + (command & kComponent) + 1;
            if (stop > palette.size()) return false;
            while (from < stop && entry < now.size()) now[entry++] = palette[from++];
        } else {
            const std::uint8_t red = fromMovieComponent(command);
            const std::uint8_t green = component();
            now[entry++] = {red, green, component()};
        }
    }
    if (!in.ok() || end == start) return false;
    in.seek(end);
    if (!in.ok()) return false;
    palette = now;
    return true;
}

} // namespace formats
