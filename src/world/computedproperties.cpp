#include "computedproperties.h"

#include "omsarguments.h"

#include <algorithm>
#include <optional>

namespace world {

namespace {

/// A number of the record that the arguments name; null when they name none.
using Field = std::int32_t* (*)(PlayerRecord&);

int nextNumber() { return OMSArguments::global().nextInteger(); }

int nextLocation(const PlayerRecord& record) {
    return locationOf(record, OMSArguments::global().next());
}

int nextLevel(int current) {
    const std::string text = OMSArguments::global().next();
    return text.empty() ? current : OMSToInteger(text);
}

/// `first` is the number of the first one in scripts.
std::int32_t* pick(std::span<std::int32_t> numbers, std::int64_t number, int first) {
    const std::int64_t index = number - first;
    if (index < 0 || index >= std::ssize(numbers)) return nullptr;
    return &numbers[static_cast<std::size_t>(index)];
}

/// What level records and activity records have in common.
struct Leveled {
    std::int32_t& autoLeveling;
    Numbers<kLevels>& dataset;
    std::int32_t& currentLevel;
    Numbers<kLevels>& color;
    std::int32_t& visited;
};

template <class Record>
Leveled leveled(Record& record) {
    return {record.autoLeveling, record.dataset, record.currentLevel, record.color, record.visited};
}

std::optional<Leveled> leveledAt(PlayerRecord& record, int location) {
    if (LevelRecord* level = record.level(location)) return leveled(*level);
    if (ActivityRecord* activity = record.activity(location)) return leveled(*activity);
    return std::nullopt;
}

// ---------------------------------------------------------------------------- fields

std::int32_t* backpackItem(PlayerRecord& record) { return pick(record.backpack, nextNumber(), 0); }

std::int32_t* missingItemSlot(PlayerRecord& record) {
    const int door = record.currentDoor();
    if (door < 0) return nullptr;
    return pick(record.missingSlots[static_cast<std::size_t>(door)], nextNumber(), 1);
}

std::int32_t* patternItem(PlayerRecord& record) {
    const int door = record.currentDoor();
    if (door < 0) return nullptr;
    const std::span<std::int32_t> pattern = record.pattern[static_cast<std::size_t>(door)];
    return pick(pattern.first(static_cast<std::size_t>(patternItemCount(door))), nextNumber(), 1);
}

std::int32_t* autoLeveling(PlayerRecord& record) {
    const auto found = leveledAt(record, nextLocation(record));
    return found ? &found->autoLeveling : nullptr;
}

std::int32_t* dataset(PlayerRecord& record) {
    const auto found = leveledAt(record, nextLocation(record));
    return found ? pick(found->dataset, nextLevel(found->currentLevel), 1) : nullptr;
}

std::int32_t* currentLevel(PlayerRecord& record) {
    const auto found = leveledAt(record, nextLocation(record));
    return found ? &found->currentLevel : nullptr;
}

std::int32_t* itemSlot(PlayerRecord& record) {
    const int number = nextNumber();
    return pick(record.items(nextLocation(record)), number, 1);
}

std::int32_t* levelColor(PlayerRecord& record) {
    const std::string level = OMSArguments::global().next();
    const auto found = leveledAt(record, nextLocation(record));
    if (!found) return nullptr;
    return pick(found->color, level.empty() ? found->currentLevel : OMSToInteger(level), 1);
}

std::int32_t* visited(PlayerRecord& record) {
    const int location = nextLocation(record);
    if (HubRecord* hub = record.hub(location)) return &hub->visited;
    const auto found = leveledAt(record, location);
    return found ? &found->visited : nullptr;
}

std::int32_t* hubRounds(PlayerRecord& record) {
    HubRecord* hub = record.hub(nextLocation(record));
    return hub ? &hub->rounds : nullptr;
}

std::int32_t* levelEntryCount(PlayerRecord& record) {
    ActivityRecord* activity = record.activity(nextLocation(record));
    return activity ? pick(activity->entryCount, activity->currentLevel, 1) : nullptr;
}

std::int32_t* nextQueued(PlayerRecord& record) {
    ActivityRecord* activity = record.activity(nextLocation(record));
    return activity ? &activity->queue.front() : nullptr;
}

template <Numbers<kLevels> ActivityRecord::*Totals>
std::int32_t* total(PlayerRecord& record) {
    ActivityRecord* activity = record.activity(nextLocation(record));
    return activity ? pick(activity->*Totals, nextLevel(activity->currentLevel), 1) : nullptr;
}

constexpr Field totalCorrect = total<&ActivityRecord::totalCorrect>;
constexpr Field totalGuesses = total<&ActivityRecord::totalGuesses>;

// ---------------------------------------------------------------------------- reading, writing

template <Field Find>
std::string read(PlayerRecord& record) {
    const std::int32_t* field = Find(record);
    return field ? std::to_string(*field) : std::string();
}

template <Field Find>
std::string readOrZero(PlayerRecord& record) {
    const std::int32_t* field = Find(record);
    return std::to_string(field ? *field : 0);
}

/// Stored is what a `Stored` can hold of the number.
template <Field Find, class Stored = std::int32_t>
void write(PlayerRecord& record, std::string_view text) {
    if (std::int32_t* field = Find(record)) *field = static_cast<Stored>(OMSToInteger(text));
}

std::string readLocation(PlayerRecord& record) {
    return std::string(locationName(record.currentLocation));
}

void writeLocation(PlayerRecord& record, std::string_view name) {
    record.currentLocation = locationNamed(name);
}

std::string readPatternItemCount(PlayerRecord& record) {
    const int door = record.currentDoor();
    return door < 0 ? std::string() : std::to_string(patternItemCount(door));
}

std::string readItemsPresentCount(PlayerRecord& record) {
    const std::span<const std::int32_t> items = record.items(nextLocation(record));
    if (items.empty()) return {};
    return std::to_string(std::ssize(items) - std::ranges::count(items, kNoItem));
}

/// The results of one level say nothing about another.
void writeCurrentLevel(PlayerRecord& record, std::string_view text) {
    const int location = nextLocation(record);
    const auto found = leveledAt(record, location);
    if (!found) return;
    const std::int32_t level = static_cast<std::uint8_t>(OMSToInteger(text));
    ActivityRecord* activity = record.activity(location);
    if (activity && level != activity->currentLevel) forgetResults(*activity);
    found->currentLevel = level;
}

constexpr ComputedProperty kProperties[] = {
    {"backpackItemPresent", read<backpackItem>, nullptr},
    {"currentLocation", readLocation, writeLocation},
    {"missingItemSlot", read<missingItemSlot>, nullptr},
    {"patternItem", read<patternItem>, nullptr},
    {"patternItemCount", readPatternItemCount, nullptr},
    {"isAutoLevelingEnabled", read<autoLeveling>, write<autoLeveling>},
    {"currentDataset", read<dataset>, write<dataset>},
    {"currentLevel", read<currentLevel>, writeCurrentLevel},
    {"itemPresent", readOrZero<itemSlot>, nullptr},
    {"itemsPresentCount", readItemsPresentCount, nullptr},
    {"levelColor", read<levelColor>, nullptr},
    {"visitedCount", read<visited>, write<visited>},
    {"hubRoundsCompleted", read<hubRounds>, write<hubRounds, std::uint8_t>},
    {"wsCurrentLevelEntryCount", read<levelEntryCount>, write<levelEntryCount>},
    {"wsNextItemInQueue", read<nextQueued>, nullptr},
    {"wsTotalCorrectGuessCount", read<totalCorrect>, write<totalCorrect, std::int16_t>},
    {"wsTotalGuessCount", read<totalGuesses>, write<totalGuesses, std::int16_t>},
};

} // namespace

std::span<const ComputedProperty> computedProperties() { return kProperties; }

int locationOf(const PlayerRecord& record, std::string_view name) {
    return name.empty() ? record.currentLocation : locationNamed(name);
}

} // namespace world
