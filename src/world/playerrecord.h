// The numbers of one player: where they are, what they carry, and what they have done everywhere.
// Laid out as the data file has them, 2,980 bytes of 32-bit numbers.
//
// A record may come from a file that somebody has changed, so a number in it is only an index after
// it was compared with what is there: `level` and the functions below do that.
#pragma once

#include "locations.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>

namespace world {

inline constexpr int kLevels = 4; ///< numbered from 1
inline constexpr int kDoors = 5;  ///< of the second hub, numbered from 0
inline constexpr int kMissingSlots = 12;
inline constexpr int kPatternItems = 4; ///< stored for each door
inline constexpr int kBackpackSlots = 12;
inline constexpr int kHubItems = 12;
inline constexpr int kActivityItems = 6;
inline constexpr int kQueueItems = 6;
inline constexpr int kRecentResults = 20;
inline constexpr int kNoItem = 0; ///< in any slot

/// What became of a level.
enum class LevelColor : std::int32_t { None = 0, Advanced = 1, WentBack = 2 };

template <std::size_t Count>
using Numbers = std::array<std::int32_t, Count>;

struct LevelRecord {
    std::int32_t autoLeveling = 0; ///< flag
    Numbers<kLevels> dataset{};
    std::int32_t currentLevel = 0;
    std::int32_t visited = 0;
    Numbers<kLevels> color{}; ///< LevelColor
};

struct HubRecord {
    std::int32_t rounds = 0; ///< completed; in the second hub also the door that is next
    Numbers<kHubItems> items{};
    std::int32_t visited = 0;
};

struct ActivityRecord {
    std::int32_t autoLeveling = 0;     ///< flag
    Numbers<kRecentResults> results{}; ///< oldest first, 1 correct
    std::int32_t correctSinceDistribution = 0;
    Numbers<kLevels> dataset{};
    std::int32_t guessesSinceDistribution = 0;
    std::int32_t currentLevel = 0;
    Numbers<kLevels> entryCount{};
    std::int32_t resultCount = 0; ///< of the results that are in use
    Numbers<kLevels> totalCorrect{};
    Numbers<kLevels> totalGuesses{};
    std::int32_t visited = 0;
    Numbers<kLevels> color{};     ///< LevelColor
    Numbers<kQueueItems> queue{}; ///< head first
    Numbers<kActivityItems> items{};
};

/// The number of a level; null for a level that is none.
[[nodiscard]] inline std::int32_t* ofLevel(Numbers<kLevels>& numbers, std::int64_t level) {
    return level >= 1 && level <= kLevels ? &numbers[static_cast<std::size_t>(level - 1)] : nullptr;
}

/// What level records and activity records have in common.
struct Leveled {
    std::int32_t& autoLeveling;
    Numbers<kLevels>& dataset;
    std::int32_t& currentLevel;
    Numbers<kLevels>& color;
    std::int32_t& visited;
};

struct PlayerRecord {
    std::array<Numbers<kMissingSlots>, kDoors> missingSlots{};
    Numbers<kBackpackSlots> backpack{};
    std::array<Numbers<kPatternItems>, kDoors> pattern{};
    std::int32_t currentLocation = 0;
    std::array<LevelRecord, 2> boards{}; ///< CBA1, CBA2
    std::array<HubRecord, 2> hubs{};     ///< CHUB, OHUB
    std::array<LevelRecord, 2> maps{};   ///< CMA, OMA
    std::array<ActivityRecord, kActivities> activities{};

    /// All numbers in the file's order.
    [[nodiscard]] std::span<std::int32_t> numbers();
    [[nodiscard]] std::span<const std::int32_t> numbers() const;

    // The record of a location; null for one that has none of the kind.
    [[nodiscard]] LevelRecord* level(int location);
    [[nodiscard]] HubRecord* hub(int location);
    [[nodiscard]] ActivityRecord* activity(int location);
    [[nodiscard]] std::optional<Leveled> leveled(int location);
    /// Of any record.
    [[nodiscard]] std::int32_t* visited(int location);
    /// The item slots of a hub or an activity; empty for others.
    [[nodiscard]] std::span<std::int32_t> items(int location);

    /// The next door of the second hub; -1 when its number is none.
    [[nodiscard]] int currentDoor() const;

    /// Eight bits of the level. Another one than the present one forgets the results of an
    /// activity. Nothing happens at a location without levels.
    void setCurrentLevel(int location, int level);
};

inline constexpr std::size_t kRecordSize = 2980; ///< bytes
inline constexpr std::size_t kRecordNumbers = kRecordSize / sizeof(std::int32_t);
static_assert(sizeof(PlayerRecord) == kRecordSize && std::is_trivially_copyable_v<PlayerRecord>);

/// The results that count for leveling.
inline void forgetResults(ActivityRecord& activity) {
    activity.results.fill(0);
    activity.resultCount = 0;
}

/// Puts an item into the first empty slot. Nothing happens when there is none, or the number is no
/// item.
void addItem(std::span<std::int32_t> slots, int item);
/// Empties the first slot that holds the item. Nothing happens when none does, or the number is no
/// item.
void removeItem(std::span<std::int32_t> slots, int item);

/// How many gems the pattern of a door repeats.
[[nodiscard]] int patternItemCount(int door);

} // namespace world
