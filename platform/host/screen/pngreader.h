// PNG files as pictures for the desktop.
#pragma once

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

} // namespace platform
