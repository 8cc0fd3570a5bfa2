// The program's icon.
#pragma once

#include <cstddef>
#include <span>

/// A BMP file of 8 bits a pixel; index 0 is transparent. Lives as long as the program.
[[nodiscard]] std::span<const std::byte> RProgramIcon();
