#include "formats/picture/palette.h"

#include <algorithm>
#include <cmath>

namespace formats::picture {

namespace {

constexpr double kFullComponent = 65535;
constexpr std::uint16_t kNearlyWhite = 65280;
constexpr std::uint16_t kWhiteReplacement = 65024;
constexpr std::uint16_t kNearlyBlack = 257;
constexpr std::uint16_t kBlackReplacement = 256;

struct Hsv {
    double hue = 0; ///< degrees
    double saturation = 0;
    double value = 0;
};

Hsv toHsv(const WideColour& colour) {
    const double red = colour.red;
    const double green = colour.green;
    const double blue = colour.blue;
    const double largest = std::max({red, green, blue});
    const double spread = largest - std::min({red, green, blue});
    Hsv hsv;
    hsv.value = largest / kFullComponent;
    if (spread == 0) return hsv;
    hsv.saturation = spread / largest;
    if (red == largest)
        hsv.hue = 60 * ((green - blue) / spread);
    else if (green == largest)
        hsv.hue = 60 * (2 + (blue - red) / spread);
    else
        hsv.hue = 60 * (4 + (red - green) / spread);
    if (hsv.hue < 0) hsv.hue += 360;
    return hsv;
}

WideColour toColour(const Hsv& hsv) {
    const auto component = [](double part) {
        return static_cast<std::uint16_t>(kFullComponent * part);
    };
    const double sector = hsv.hue / 60;
    const double fraction = sector - std::floor(sector);
    const auto v = component(hsv.value);
    const auto p = component(hsv.value * (1 - hsv.saturation));
    const auto q = component(hsv.value * (1 - hsv.saturation * fraction));
    const auto t = component(hsv.value * (1 - hsv.saturation * (1 - fraction)));
    switch (static_cast<int>(sector) % 6) {
    case 0: return {v, t, p};
    case 1: return {q, v, p};
    case 2: return {p, v, t};
    case 3: return {p, q, v};
    case 4: return {t, p, v};
    default: return {v, p, q};
    }
}

} // namespace

std::optional<Palette> readPalette(ByteSpan bytes) {
    if (bytes.size() < kPaletteSize) return std::nullopt;
    Palette palette;
    std::size_t at = 0;
    for (Colour& colour : palette)
        for (std::uint8_t* component : {&colour.red, &colour.green, &colour.blue}) {
            *component = bytes[at];
            at += 2;
        }
    return palette;
}

Bytes writePalette(const Palette& palette) {
    ByteWriter out;
    for (const Colour& colour : palette) out.u16(colour.red).u16(colour.green).u16(colour.blue);
    return out.take();
}

WideColour lift(const WideColour& stored) {
    Hsv hsv = toHsv(stored);
    hsv.value = std::min(hsv.value + kLift, 1.0);
    const WideColour result = toColour(hsv);
    const auto smallest = std::min({result.red, result.green, result.blue});
    const auto largest = std::max({result.red, result.green, result.blue});
    if (smallest >= kNearlyWhite) return {kWhiteReplacement, kWhiteReplacement, kWhiteReplacement};
    if (largest < kNearlyBlack) return {kBlackReplacement, kBlackReplacement, kBlackReplacement};
    return result;
}

} // namespace formats::picture
