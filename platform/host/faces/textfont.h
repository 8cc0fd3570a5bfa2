// The font of the program's text windows: every Latin-1 character in a cell of 6 by 12 pixels, the
// last column and the last row of which are space. Codes without a character are shown as a box.
#pragma once

#include "platform/display.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace platform::textfont {

inline constexpr int kGlyphWidth = 5;
inline constexpr int kGlyphHeight = 11;
inline constexpr int kCharacterWidth = 6; ///< from one character to the next
inline constexpr int kLineHeight = 12;    ///< from one line to the next

/// Rows from the top down, the leftmost pixel in bit 4.
using Glyph = std::array<std::uint8_t, kGlyphHeight>;

[[nodiscard]] Glyph glyph(unsigned char code);

/// Sets the pixels of a line of text to `colour`, from the left edge of an 8-bit surface on; `top`
/// is the line's first row. What lies beyond the surface is left out.
void draw(Surface& surface, int top, std::string_view text, std::uint8_t colour);

} // namespace platform::textfont
