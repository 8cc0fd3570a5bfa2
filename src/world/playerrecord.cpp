#include "playerrecord.h"

#include <algorithm>

namespace world {

namespace {

constexpr Numbers<kDoors> kPatternItemCounts{4, 4, 4, 3, 4};

/// Of the first slot that holds `from`.
void replaceFirst(std::span<std::int32_t> slots, int from, int to) {
    const auto slot = std::ranges::find(slots, from);
    if (slot != slots.end()) *slot = to;
}

template <class Record>
Leveled leveledOf(Record& record) {
    return {record.autoLeveling, record.dataset, record.currentLevel, record.color, record.visited};
}

} // namespace

std::span<std::int32_t> PlayerRecord::numbers() {
    return {reinterpret_cast<std::int32_t*>(this), kRecordNumbers};
}

std::span<const std::int32_t> PlayerRecord::numbers() const {
    return {reinterpret_cast<const std::int32_t*>(this), kRecordNumbers};
}

LevelRecord* PlayerRecord::level(int location) {
    switch (location) {
    case location::kCBA1: return &boards[0];
    case location::kCBA2: return &boards[1];
    case location::kCMA: return &maps[0];
    case location::kOMA: return &maps[1];
    default: return nullptr;
    }
}

HubRecord* PlayerRecord::hub(int location) {
    if (location == location::kCHUB) return &hubs[0];
    return location == location::kOHUB ? &hubs[1] : nullptr;
}

ActivityRecord* PlayerRecord::activity(int location) {
    return isActivity(location) ? &activities[static_cast<std::size_t>(location - 1)] : nullptr;
}

std::optional<Leveled> PlayerRecord::leveled(int location) {
    if (LevelRecord* record = level(location)) return leveledOf(*record);
    if (ActivityRecord* record = activity(location)) return leveledOf(*record);
    return std::nullopt;
}

std::int32_t* PlayerRecord::visited(int location) {
    if (HubRecord* record = hub(location)) return &record->visited;
    const auto record = leveled(location);
    return record ? &record->visited : nullptr;
}

std::span<std::int32_t> PlayerRecord::items(int location) {
    if (HubRecord* record = hub(location)) return record->items;
    if (ActivityRecord* record = activity(location)) return record->items;
    return {};
}

int PlayerRecord::currentDoor() const {
    const std::int32_t door = hubs[1].rounds;
    return door >= 0 && door < kDoors ? door : -1;
}

/// The results of one level say nothing about another.
void PlayerRecord::setCurrentLevel(int location, int level) {
    const auto record = leveled(location);
    if (!record) return;
    const std::int32_t kept = static_cast<std::uint8_t>(level);
    ActivityRecord* results = activity(location);
    if (results && kept != record->currentLevel) forgetResults(*results);
    record->currentLevel = kept;
}

void addItem(std::span<std::int32_t> slots, int item) {
    if (isItem(item)) replaceFirst(slots, kNoItem, item);
}

void removeItem(std::span<std::int32_t> slots, int item) {
    if (isItem(item)) replaceFirst(slots, item, kNoItem);
}

int patternItemCount(int door) { return kPatternItemCounts.at(static_cast<std::size_t>(door)); }

} // namespace world
