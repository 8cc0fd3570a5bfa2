// PNG files: pictures for the desktop, and screenshots.
#pragma once

#include "platform/display.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels; ///< 0xAARRGGBB, top row first
};

/// None when there is no PNG, or one with a side of more than `mostSide` pixels.
[[nodiscard]] std::optional<Picture> readPng(const std::string& hostPath, int mostSide);

/// Opaque. False when the file cannot be written.
[[nodiscard]] bool writePng(const std::string& hostPath, const Picture& picture);

/// Writes an indexed picture with all 256 palette entries when the surface has 8 bits, else RGB.
/// `hostPath` is a name of the host. False when the file cannot be written; nothing is left then.
[[nodiscard]] bool writePng(const std::string& hostPath, const Surface& surface,
                            const std::array<Rgb, kPaletteSize>& palette);

} // namespace platform
