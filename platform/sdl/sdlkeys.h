// SDL's keys as the program's. Characters come as text, so that the keyboard layout, dead keys and
// input methods work; everything else comes as key presses.
#pragma once

#include "platform/events.h"

#include <SDL.h>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// None for a key that arrives as text or means nothing to the program.
[[nodiscard]] std::optional<KeyPress> keyPressOf(const SDL_Keysym& key);

/// What a key is by itself, whatever is held with it: a `Key`, or the character on it, of letters
/// the small one; 0 for neither.
[[nodiscard]] std::uint16_t keyOf(SDL_Keycode key);

/// One key press for each character of the text that Latin-1 has.
[[nodiscard]] std::vector<KeyPress> keyPressesOf(std::string_view utf8);

} // namespace platform
