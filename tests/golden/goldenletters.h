// The letters of the scenes: drawn once, made into bitmap fonts (`NFNT` resources) and into a face.
#pragma once

#include "goldenresources.h"

#include <string>
#include <vector>

namespace golden {

/// Lengths in pixels.
struct Character {
    int code;
    std::vector<std::string> rows; ///< from the top, "#" is ink; none: no picture
    int left;                      ///< from the pen to the picture
    int advance;
};

struct Letters {
    int ascent;
    int descent;
    int leading;
    int lastChar;                      ///< the one before it stands in for those that are missing
    std::vector<Character> characters; ///< by their codes
};

/// Among the letters: strike columns that begin at each of the eight bits of a byte, pictures of
/// one column and of more than sixteen, such as begin left of the pen, such as end right of the
/// next pen, and such as do not move the pen. A blank has no picture.
[[nodiscard]] Letters letters();

[[nodiscard]] Bytes bitmapFont(const Letters& letters, bool bigEndian);

struct Font {
    int id;
    Bytes resource;
};
/// The `NFNT` resources.
[[nodiscard]] std::vector<Font> fonts();

} // namespace golden
