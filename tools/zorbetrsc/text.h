// Words: numbers out of those that people wrote, and how they are shown.
#pragma once

#include "formats/base/scanner.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace rsc {

using formats::inQuotes;

/// The whole word as a decimal number with an optional "-"; none when it is anything else or does
/// not fit.
[[nodiscard]] inline std::optional<int> parseNumber(std::string_view word) {
    int value = 0;
    const char* end = word.data() + word.size();
    const auto [last, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || last != end) return std::nullopt;
    return value;
}

/// With "?" for every character that a message should not hold: names in libraries may be anything.
[[nodiscard]] inline std::string printable(std::string_view text) {
    std::string shown(text);
    for (char& c : shown)
        if (c < ' ' || c > '~') c = '?';
    return shown;
}

/// "1 frame", "2 frames".
[[nodiscard]] inline std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace rsc
