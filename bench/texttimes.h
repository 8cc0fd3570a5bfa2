// How long text in a bitmap font takes to draw, beside SDL2 blitting the characters that SDL2_ttf
// has rendered of the same font file, and how long fonts take to open.
#pragma once

#include "cputime.h"

#include <cstddef>
#include <string>

/// Nanoseconds for one character, of those that have ink.
struct TextTimes {
    Samples ours;
    Samples plain; ///< SDL's colour-key blit of every character
    Samples rle;   ///< the same, run-length accelerated
};

/// `font` is a BDF file. Throws when they do not draw the same.
[[nodiscard]] TextTimes measureText(const std::string& font, int repetitions);

inline constexpr std::size_t kFontOpenings = 1000;

/// Nanoseconds for kFontOpenings.
struct FontTimes {
    Samples reading; ///< a font made of its resource anew each time
    Samples sharing; ///< a use of one that is used already, and its end; each is written to the log
};
[[nodiscard]] FontTimes measureFonts(const std::string& font, int repetitions);
