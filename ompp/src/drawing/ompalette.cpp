#include "ompalette.h"

#include "formats/picture/palette.h"
#include "omdebug.h"

using platform::Rgb;

namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

/// The colour as a game entry: never the fixed black or white.
Rgb gameColor(const OMColor& color) {
    const Rgb rgb = color.rgb8();
    if (rgb == kBlack) return {1, 1, 1};
    if (rgb == kWhite) return {254, 254, 254};
    return rgb;
}

int squaredDistance(Rgb a, Rgb b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

} // namespace

const OMDevicePalette& OMDefaultPalette() { return platform::staticPalette(); }

OMDevicePalette OMGamePalette(const OMPalette& colors) {
    OMDevicePalette palette = OMDefaultPalette();
    for (std::size_t i = platform::kFirstFreeColour; i < platform::kFirstHighStaticColour; ++i)
        palette[i] = gameColor(colors[i]);
    return palette;
}

OMPalette OMPaletteFromDevice(const OMDevicePalette& palette) {
    OMPalette colors;
    for (std::size_t i = 0; i < palette.size(); ++i) colors[i] = OMColor::fromRgb8(palette[i]);
    return colors;
}

std::uint8_t OMNearestEntry(const OMDevicePalette& palette, Rgb color) {
    std::size_t nearest = 0;
    int least = squaredDistance(palette[0], color);
    for (std::size_t i = 1; i < palette.size() && least > 0; ++i) {
        const int distance = squaredDistance(palette[i], color);
        if (distance >= least) continue;
        nearest = i;
        least = distance;
    }
    return static_cast<std::uint8_t>(nearest);
}

std::optional<OMPalette> OMReadPalette(std::span<const std::byte> data) {
    const auto stored = formats::picture::readPalette(formats::asNumbers(data));
    if (!OMDebug::check(stored.has_value(), "!palette", "no palette")) return std::nullopt;
    OMPalette colors;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const auto& [red, green, blue] = (*stored)[i];
        colors[i] = OMColor::fromRgb8({red, green, blue});
    }
    return colors;
}
