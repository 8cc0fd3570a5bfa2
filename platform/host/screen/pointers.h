// Pointers of the mouse in other sizes than their own, for people who lose sight of small ones.
#pragma once

#include "platform/cursor.h"

namespace platform {

inline constexpr int kMostPointerScale = 3;

/// A picture of one of the machine's own cursors, see Display::makeCursor: the machine shows them
/// in one size only. Black and white.
[[nodiscard]] CursorImage ownPointer(int id);

/// `times` as large, 1 to kMostPointerScale; the hot spot is in the middle of its enlarged pixel.
/// Slanted edges become finer steps, and no colour is added. The picture must be whole.
[[nodiscard]] CursorImage enlarged(const CursorImage& image, int times);

} // namespace platform
