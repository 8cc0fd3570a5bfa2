// The colours of a movie. They have 6 bits a component in the file and are spread over 8 when they
// are read. Colours that a frame brings hold until another brings others; at first all are black.
//
//     1  bytes of the chunk, with this one, in units of 4
//     commands, until all 256 entries are told:
//         1ccccccc                     c + 1 entries stay
//         01cccccc first               c + 1 entries are those from `first` on before this chunk
//         00rrrrrr 00gggggg 00bbbbbb   the next entry
//     zeros up to the chunk's end
#pragma once

#include "formats/base/bytes.h"

#include <array>

namespace formats {

struct MovieColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const MovieColour&, const MovieColour&) = default;
};
/// Components of 8 bits.
using MoviePalette = std::array<MovieColour, 256>;

/// A component as the file stores it; the lowest two bits are lost.
[[nodiscard]] constexpr std::uint8_t toMovieComponent(std::uint8_t component) {
    return component >> 2;
}

/// A stored component as readers spread it.
[[nodiscard]] constexpr std::uint8_t fromMovieComponent(std::uint8_t stored) {
    return static_cast<std::uint8_t>(stored << 2 | stored >> 4);
}

/// All 256 entries, so that it does not matter which came before.
[[nodiscard]] Bytes makePaletteChunk(const MoviePalette& palette);
/// Reads on behind the chunk. False when it is damaged; the palette stays as it was then.
[[nodiscard]] bool readPaletteChunk(ByteReader& in, MoviePalette& palette);

} // namespace formats
