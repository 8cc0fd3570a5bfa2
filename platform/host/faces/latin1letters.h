// The letters of Latin-1 beyond ASCII, taken apart: a letter of ASCII and what stands on or below
// it, for fonts that draw them so.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform::latin1letters {

inline constexpr char kCedilla = ',';

struct Parts {
    char letter; ///< of ASCII
    char mark;   ///< ` ' ^ ~ : for the dots, o for the ring, kCedilla
    bool small;
};

/// None for letters that are drawn on their own, and for what is no such letter.
[[nodiscard]] constexpr std::optional<Parts> partsOf(unsigned char code) {
    constexpr unsigned char kFirst = 0xC0;
    constexpr unsigned char kFirstSmall = 0xE0;
    constexpr unsigned char kSmallYDiaeresis = 0xFF; // has no capital
    constexpr int kToSmall = 0x20;
    constexpr char kOwn = '.';
    // From 0xC0 to 0xDF; from 0xE0 on the small letters follow in the same order.
    constexpr std::string_view kLetters = "AAAAAA.CEEEEIIII.NOOOOO..UUUUY..";
    constexpr std::string_view kMarks = "`'^~:o.,`'^:`'^:.~`'^~:..`'^:'..";
    if (code == kSmallYDiaeresis) return Parts{'y', ':', true};
    if (code < kFirst) return std::nullopt;
    const bool small = code >= kFirstSmall;
    const auto at = static_cast<std::size_t>(code - (small ? kFirstSmall : kFirst));
    if (kLetters[at] == kOwn) return std::nullopt;
    const int letter = kLetters[at] + (small ? kToSmall : 0);
    return Parts{static_cast<char>(letter), kMarks[at], small};
}

} // namespace platform::latin1letters
