// Pixels of every depth turned into plain colours, for what leaves the program: the real window and
// screenshots.
#pragma once

#include "platform/display.h"

#include <array>
#include <cstdint>
#include <span>

namespace platform {

/// Reads the colours of a surface, as 0xFFRRGGBB. Made anew for every reading of one or many rows:
/// it takes the palette's colours when it is made.
class ColourReader {
  public:
    /// `palette` is used by 8-bit surfaces. The surface must outlive the reader.
    ColourReader(const Surface& surface, const std::array<Rgb, kPaletteSize>& palette);

    /// Writes the colours of row `y` from column `left` on into `colours`; the row has that many
    /// pixels.
    void read(int y, int left, std::span<std::uint32_t> colours) const;

  private:
    const Surface& surface_;
    std::array<std::uint32_t, kPaletteSize> colours_; ///< of the palette
};

} // namespace platform
