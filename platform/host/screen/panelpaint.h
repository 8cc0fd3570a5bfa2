// What panels over the screen are drawn with: areas, and texts in the font of the system. Colours
// are those of the panel's palette. All places are in the panel's picture; what lies outside of it
// is left out. Texts are Latin-1.
#pragma once

#include "platform/display.h"
#include "platform/host/faces/systemfont.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::paint {

inline constexpr int kLine = systemfont::kHeight + systemfont::kLeading; ///< pixels, of a text

[[nodiscard]] std::array<Rgb, kPaletteSize> paletteOf(std::span<const Rgb> colours);

/// Pixels.
[[nodiscard]] int widthOf(std::string_view text);
/// The lines of a text, none wider than `width` pixels but for single letters. Paragraphs are
/// broken at blanks, and in a word only when that is too long for a line.
[[nodiscard]] std::vector<std::string> brokenText(std::string text, int width);

void fill(Surface& picture, const Rect& area, std::uint8_t colour);
/// With a border inside the area.
void frame(Surface& picture, const Rect& area, int border, std::uint8_t edge, std::uint8_t face);
/// `at` is the upper left corner of the line; what lies outside of the area is left out.
void write(Surface& picture, const Rect& area, Point at, std::string_view text,
           std::uint8_t colour);
/// `times` as large, 1 to kMostPointerScale, with the slanted edges made finer.
void writeLarge(Surface& picture, const Rect& area, Point at, std::string_view text,
                std::uint8_t colour, int times);
void writeCentred(Surface& picture, const Rect& area, std::string_view text, std::uint8_t colour);

/// A mark as wide as `area`: which part is seen of something that has `all` rows.
void scrollMark(Surface& picture, const Rect& area, int first, int visible, int all,
                std::uint8_t back, std::uint8_t mark);

[[nodiscard]] bool contains(const Rect& area, Point point);

} // namespace platform::paint
