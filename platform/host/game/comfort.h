// What makes a game easier to see, to bear and to click for one person, whatever the game is.
#pragma once

#include <cstdint>
#include <optional>

namespace platform {

inline constexpr std::uint32_t kLeastDoubleClickMs = 200;
inline constexpr std::uint32_t kMostDoubleClickMs = 2000;

/// What is not told stays as the player chose it before, or as the machine has it.
struct Comfort {
    std::optional<std::uint32_t> pointer;       ///< so many times as large, 1 to kMostPointerScale
    std::optional<std::uint32_t> doubleClickMs; ///< from the first press to the second, at most
    bool calm = false;                          ///< what flashes is held still, see CalmPicture
};

} // namespace platform
