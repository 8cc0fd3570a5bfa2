// Texts of settings: sections in brackets, lines "key=value", comments behind ";" or "#" at the
// beginning of a line. Blanks around names and values do not count, nor do empty lines.
#pragma once

#include <string_view>
#include <vector>

namespace platform {

struct IniEntry {
    int line = 0;             ///< from 1
    std::string_view section; ///< without its brackets; empty before the first one
    std::string_view key;
    std::string_view value;
};

/// The entries in their order, as views of `text`. A line without "=" is an entry without a key,
/// its value is the whole line. A byte order mark at the beginning is skipped.
[[nodiscard]] std::vector<IniEntry> readIniText(std::string_view text);

/// Compares names of sections and keys, in which the case of ASCII letters does not matter.
[[nodiscard]] bool sameIniName(std::string_view a, std::string_view b);

} // namespace platform
