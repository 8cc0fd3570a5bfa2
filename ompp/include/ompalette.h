// What palettes have in common: which of the 256 entries belong to the platform, and how the 236
// between them are taken over from a game's palette.
#pragma once

#include "omcolor.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

/// A palette as the device knows it: 8 bits a component.
using OMDevicePalette = std::array<platform::Rgb, platform::kPaletteSize>;

/// The platform's twenty colours at entries 0 to 9 and 246 to 255, black between them.
[[nodiscard]] const OMDevicePalette& OMDefaultPalette();

/// The device palette that `colors` becomes: entries 10 to 245 by the high byte of each component,
/// the others from the default palette. Pure black becomes (1, 1, 1) and pure white
/// (254, 254, 254), so that the game's colours never merge with the fixed black and white.
[[nodiscard]] OMDevicePalette OMGamePalette(const OMPalette& colors);

/// The colours of a device palette, all as RGB.
[[nodiscard]] OMPalette OMPaletteFromDevice(const OMDevicePalette& palette);

/// The entry nearest to `color`, the lowest of several.
[[nodiscard]] std::uint8_t OMNearestEntry(const OMDevicePalette& palette, platform::Rgb color);

/// Reads an `RRGB` resource (formats/picture/palette.h); none after a failed check when it is too
/// short.
[[nodiscard]] std::optional<OMPalette> OMReadPalette(std::span<const std::byte> data);
