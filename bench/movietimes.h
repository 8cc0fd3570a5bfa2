// What the program takes to play a movie of which every frame changes nearly everything.
#pragma once

#include "gameprocess.h"

inline constexpr int kMovieFrames = 75;
inline constexpr int kMovieFrameTime = 6666; ///< hundredths of a millisecond: 15 frames a second

[[nodiscard]] ProcessTimes measureMovie(int repetitions);
