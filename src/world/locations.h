// The places of the game's world and the items that are found there, by number and by name.
#pragma once

#include <string>
#include <string_view>

namespace world {

inline constexpr int kNowhere = 0;
inline constexpr int kActivities = 10; ///< locations 1 to 10

/// The locations that have a record of another kind.
namespace location {
inline constexpr int kCBA1 = 12;
inline constexpr int kCBA2 = 13;
inline constexpr int kCHUB = 15;
inline constexpr int kOHUB = 16;
inline constexpr int kCMA = 18;
inline constexpr int kOMA = 19;
} // namespace location

[[nodiscard]] constexpr bool isActivity(int location) {
    return location >= 1 && location <= kActivities;
}

/// kNowhere for a name that is none. Upper and lower case differ.
[[nodiscard]] int locationNamed(std::string_view name);
/// Empty for a number that is none.
[[nodiscard]] std::string_view locationName(int location);

inline constexpr int kFirstItem = 1;
inline constexpr int kLastItem = 28;
inline constexpr int kGlyphs = 12; ///< items 1 to 12
inline constexpr int kGemColors = 4;
inline constexpr int kGemsOfAColor = 4;

[[nodiscard]] constexpr bool isItem(int item) { return item >= kFirstItem && item <= kLastItem; }
/// Colour and number count from 0.
[[nodiscard]] constexpr int gem(int color, int number) {
    return kGlyphs + 1 + kGemsOfAColor * color + number;
}
[[nodiscard]] std::string itemName(int item);

} // namespace world
