// Fonts as pictures of their characters, one bit a pixel: what BDF files and faces are read into
// and font resources are made of. Places count in pixels from the pen, which stands on the
// baseline: x to the right, rows up from the baseline.
#pragma once

#include "formats/font/nfnt.h"

namespace rsc {

using formats::font::Glyph;

inline constexpr int kLatin1Codes = formats::font::kCodes;
/// Pixels of a side of the largest picture of a character that is read.
inline constexpr int kLargestGlyph = 1024;

/// The part of a picture that has ink, in its own columns and rows.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0; ///< outside, as bottom
    int bottom = 0;
};

/// None when the picture is blank.
[[nodiscard]] std::optional<InkBox> inkBox(const Glyph& glyph);

/// Every pixel gets a neighbour to its right, and the pen goes one pixel further.
void embolden(Glyph& glyph);

struct BitmapFont {
    int ascent = 0; ///< rows above the baseline
    int descent = 0;
    int leading = 0;             ///< rows between lines
    std::map<int, Glyph> glyphs; ///< by character code
    /// The character that the font itself shows for others that it has not; it need not exist.
    std::optional<int> defaultCode;
};

} // namespace rsc
