#include "computedproperties.h"

#include <algorithm>

namespace world {

namespace {

/// A number of the record that the words name; null when they name none.
using Field = std::int32_t* (*)(PlayerRecord&, OMSArguments&);

int nextLocation(const PlayerRecord& record, OMSArguments& words) {
    return locationOf(record, words.next());
}

int nextLevel(int current, OMSArguments& words) {
    const std::string text = words.next();
    return text.empty() ? current : OMSToInteger(text);
}

/// `first` is the number of the first one in scripts.
std::int32_t* pick(std::span<std::int32_t> numbers, std::int64_t number, int first) {
    const std::int64_t index = number - first;
    if (index < 0 || index >= std::ssize(numbers)) return nullptr;
    return &numbers[static_cast<std::size_t>(index)];
}

// ---------------------------------------------------------------------------- fields

std::int32_t* backpackItem(PlayerRecord& record, OMSArguments& words) {
    return pick(record.backpack, words.nextInteger(), 0);
}

std::int32_t* missingItemSlot(PlayerRecord& record, OMSArguments& words) {
    const int door = record.currentDoor();
    if (door < 0) return nullptr;
    return pick(record.missingSlots[static_cast<std::size_t>(door)], words.nextInteger(), 1);
}

std::int32_t* patternItem(PlayerRecord& record, OMSArguments& words) {
    const int door = record.currentDoor();
    if (door < 0) return nullptr;
    const std::span<std::int32_t> pattern = record.pattern[static_cast<std::size_t>(door)];
    return pick(pattern.first(static_cast<std::size_t>(patternItemCount(door))),
                words.nextInteger(), 1);
}

std::int32_t* autoLeveling(PlayerRecord& record, OMSArguments& words) {
    const auto found = record.leveled(nextLocation(record, words));
    return found ? &found->autoLeveling : nullptr;
}

std::int32_t* dataset(PlayerRecord& record, OMSArguments& words) {
    const auto found = record.leveled(nextLocation(record, words));
    return found ? ofLevel(found->dataset, nextLevel(found->currentLevel, words)) : nullptr;
}

std::int32_t* currentLevel(PlayerRecord& record, OMSArguments& words) {
    const auto found = record.leveled(nextLocation(record, words));
    return found ? &found->currentLevel : nullptr;
}

std::int32_t* itemSlot(PlayerRecord& record, OMSArguments& words) {
    const int number = words.nextInteger();
    return pick(record.items(nextLocation(record, words)), number, 1);
}

std::int32_t* levelColor(PlayerRecord& record, OMSArguments& words) {
    const std::string level = words.next();
    const auto found = record.leveled(nextLocation(record, words));
    if (!found) return nullptr;
    return ofLevel(found->color, level.empty() ? found->currentLevel : OMSToInteger(level));
}

std::int32_t* visited(PlayerRecord& record, OMSArguments& words) {
    return record.visited(nextLocation(record, words));
}

std::int32_t* hubRounds(PlayerRecord& record, OMSArguments& words) {
    HubRecord* hub = record.hub(nextLocation(record, words));
    return hub ? &hub->rounds : nullptr;
}

std::int32_t* levelEntryCount(PlayerRecord& record, OMSArguments& words) {
    ActivityRecord* activity = record.activity(nextLocation(record, words));
    return activity ? ofLevel(activity->entryCount, activity->currentLevel) : nullptr;
}

std::int32_t* nextQueued(PlayerRecord& record, OMSArguments& words) {
    ActivityRecord* activity = record.activity(nextLocation(record, words));
    return activity ? &activity->queue.front() : nullptr;
}

template <Numbers<kLevels> ActivityRecord::*Totals>
std::int32_t* total(PlayerRecord& record, OMSArguments& words) {
    ActivityRecord* activity = record.activity(nextLocation(record, words));
    return activity ? ofLevel(activity->*Totals, nextLevel(activity->currentLevel, words))
                    : nullptr;
}

constexpr Field totalCorrect = total<&ActivityRecord::totalCorrect>;
constexpr Field totalGuesses = total<&ActivityRecord::totalGuesses>;

// ---------------------------------------------------------------------------- reading, writing

template <Field Find>
std::string read(PlayerRecord& record, OMSArguments& words) {
    const std::int32_t* field = Find(record, words);
    return field ? std::to_string(*field) : std::string();
}

template <Field Find>
std::string readOrZero(PlayerRecord& record, OMSArguments& words) {
    const std::int32_t* field = Find(record, words);
    return std::to_string(field ? *field : 0);
}

/// Stored is what a `Stored` can hold of the number.
template <Field Find, class Stored = std::int32_t>
void write(PlayerRecord& record, OMSArguments& words, std::string_view text) {
    if (std::int32_t* field = Find(record, words)) *field = static_cast<Stored>(OMSToInteger(text));
}

std::string readLocation(PlayerRecord& record, OMSArguments&) {
    return std::string(locationName(record.currentLocation));
}

void writeLocation(PlayerRecord& record, OMSArguments&, std::string_view name) {
    record.currentLocation = locationNamed(name);
}

std::string readPatternItemCount(PlayerRecord& record, OMSArguments&) {
    const int door = record.currentDoor();
    return door < 0 ? std::string() : std::to_string(patternItemCount(door));
}

std::string readItemsPresentCount(PlayerRecord& record, OMSArguments& words) {
    const std::span<const std::int32_t> items = record.items(nextLocation(record, words));
    if (items.empty()) return {};
    return std::to_string(std::ssize(items) - std::ranges::count(items, kNoItem));
}

void writeCurrentLevel(PlayerRecord& record, OMSArguments& words, std::string_view text) {
    record.setCurrentLevel(nextLocation(record, words), OMSToInteger(text));
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
