// How long run-length sprites take to draw, beside the colour-key blits of SDL2 on the same
// pictures, and how long a screen of indices takes to become colours.
#pragma once

#include "cputime.h"

#include <string>
#include <vector>

inline constexpr int kSpriteSide = 128; ///< pixels

struct SpriteCase {
    std::string name;
    bool longRuns;       ///< else every pixel by chance
    double transparency; ///< part of the pixels
    bool clipped;        ///< the left half lies outside
};

[[nodiscard]] std::vector<SpriteCase> spriteCases();

/// Nanoseconds for one sprite.
struct SpriteTimes {
    Samples ours;
    Samples plain; ///< SDL's colour-key blit
    Samples rle;   ///< the same, run-length accelerated
    Samples copy;  ///< memcpy of as many rows and columns
};

/// Throws when the three do not draw the same.
[[nodiscard]] SpriteTimes measureSprites(const SpriteCase& what, int repetitions);

/// Nanoseconds for 640 x 480 pixels of 8 bits made into 32.
struct ExpansionTimes {
    Samples ours;
    Samples sdl;
};

/// Throws when the results differ.
[[nodiscard]] ExpansionTimes measureExpansion(int repetitions);
