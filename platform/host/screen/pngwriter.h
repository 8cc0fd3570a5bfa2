// Screenshots: a surface as a PNG file.
#pragma once

#include "platform/display.h"

#include <array>
#include <string>

namespace platform {

/// Writes an indexed picture with all 256 palette entries when the surface has 8 bits, else RGB.
/// `hostPath` is a name of the host. False when the file cannot be written; nothing is left then.
[[nodiscard]] bool writePng(const std::string& hostPath, const Surface& surface,
                            const std::array<Rgb, kPaletteSize>& palette);

} // namespace platform
