// A colour: either an index into the palette or an RGB value.
#pragma once

#include "platform/display.h"

#include <array>
#include <cstdint>

class OMColor {
  public:
    static constexpr int kRgb = -1;  ///< index of a colour that is given as RGB
    static constexpr int kBlack = 0; ///< index of black in every palette

    /// Black, as RGB.
    constexpr OMColor() = default;
    /// Components 0 to 65535; an 8-bit component c is c * 256.
    constexpr OMColor(std::uint16_t red, std::uint16_t green, std::uint16_t blue)
        : red_(red), green_(green), blue_(blue) {}
    /// Palette index 0 to 255; any other leaves the colour black RGB after a failed check.
    explicit OMColor(int index);

    void set(int index);

    static constexpr OMColor fromRgb8(platform::Rgb rgb) {
        return {static_cast<std::uint16_t>(rgb.red * 256),
                static_cast<std::uint16_t>(rgb.green * 256),
                static_cast<std::uint16_t>(rgb.blue * 256)};
    }

    [[nodiscard]] constexpr std::uint16_t red() const { return red_; }
    [[nodiscard]] constexpr std::uint16_t green() const { return green_; }
    [[nodiscard]] constexpr std::uint16_t blue() const { return blue_; }
    [[nodiscard]] constexpr int index() const { return index_; }
    [[nodiscard]] constexpr bool isIndex() const { return index_ != kRgb; }

    /// The device's 8-bit components: the high byte of each.
    [[nodiscard]] constexpr platform::Rgb rgb8() const {
        return {static_cast<std::uint8_t>(red_ >> 8), static_cast<std::uint8_t>(green_ >> 8),
                static_cast<std::uint8_t>(blue_ >> 8)};
    }

    friend constexpr bool operator==(const OMColor&, const OMColor&) = default;

  private:
    std::uint16_t red_ = 0;
    std::uint16_t green_ = 0;
    std::uint16_t blue_ = 0;
    int index_ = kRgb;
};

/// The 256 colours of a palette.
using OMPalette = std::array<OMColor, platform::kPaletteSize>;
