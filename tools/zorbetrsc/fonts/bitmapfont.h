// Fonts as pictures of their characters, one bit a pixel: what BDF files and faces are read into
// and font resources are made of. Places count in pixels from the pen, which stands on the
// baseline: x to the right, rows up from the baseline.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

namespace rsc {

inline constexpr int kLatin1Codes = 256;
/// Pixels of a side of the largest picture of a character that is read.
inline constexpr int kLargestGlyph = 1024;

struct Glyph {
    int advance = 0; ///< how far the pen goes on
    int left = 0;    ///< from the pen to the left edge of the picture
    int top = 0;     ///< the row above which the picture ends; its first row is top - 1
    int width = 0;
    int height = 0;
    std::vector<bool> ink; ///< row by row from the top left

    [[nodiscard]] std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
    friend bool operator==(const Glyph&, const Glyph&) = default;
};

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

/// Columns from the pen.
struct Extent {
    int left = 0;
    int right = 0; ///< outside
};

/// Of all the pictures laid upon each other and of the pen.
[[nodiscard]] Extent horizontalExtent(const std::map<int, Glyph>& glyphs);

struct BitmapFont {
    int ascent = 0; ///< rows above the baseline
    int descent = 0;
    int leading = 0;             ///< rows between lines
    std::map<int, Glyph> glyphs; ///< by character code
    /// The character that the font itself shows for others that it has not; it need not exist.
    std::optional<int> defaultCode;
};

} // namespace rsc
