// The key by which a kiosk is left: one that nobody presses by accident.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

struct LeavingKey {
    std::uint16_t code = 'q'; ///< a `Key`, or a Latin-1 character, of letters the small one
    bool control = true;
    bool alt = true;
    bool shift = false;

    bool operator==(const LeavingKey&) const = default;
};

/// "Ctrl-Alt-Q", "Alt-Shift-F12": a name as in input files, with Ctrl-, Alt- and Shift- before it,
/// each at most once, Ctrl- or Alt- at least. UTF-8. None for everything else, and for keys that
/// window systems keep for themselves (Alt-Tab, Alt-F4, Ctrl-Alt-F1, ...) and would not hand on.
[[nodiscard]] std::optional<LeavingKey> parseLeavingKey(std::string_view text);

} // namespace platform
