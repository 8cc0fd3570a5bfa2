// The stock font of the system: what text is set in where nobody names a font. Proportional, every
// Latin-1 character; codes without a character are shown as a hollow box.
#pragma once

#include <array>
#include <cstdint>

namespace platform::systemfont {

// In rows: from the top of a line to its baseline, from there to its bottom, and from there to the
// next line.
inline constexpr int kAscent = 12;
inline constexpr int kDescent = 3;
inline constexpr int kLeading = 1;
inline constexpr int kHeight = kAscent + kDescent;
inline constexpr int kMaxWidth = 16; ///< of any glyph, in pixels

struct Glyph {
    int width = 0;   ///< columns with ink, 0 for blanks
    int advance = 0; ///< pixels from this character's pen to the next one's
    int left = 0;    ///< pixels from the pen to the first column, never negative
    /// From the top of the ascent down, the leftmost column in bit 15.
    std::array<std::uint16_t, kHeight> rows{};

    bool operator==(const Glyph&) const = default;
};

/// The glyph lives as long as the program.
[[nodiscard]] const Glyph& glyph(unsigned char code);

} // namespace platform::systemfont
