// Pixels of every depth turned into plain colours, for what leaves the program: the real window and
// screenshots.
#pragma once

#include "platform/display.h"

#include <array>
#include <cstdint>
#include <span>

namespace platform {

/// Writes the colours of row `y` from column `left` on into `colours`, as 0xFFRRGGBB; the row has
/// that many pixels. `palette` is used by 8-bit surfaces.
void readColours(const Surface& surface, int y, int left,
                 const std::array<Rgb, kPaletteSize>& palette, std::span<std::uint32_t> colours);

} // namespace platform
