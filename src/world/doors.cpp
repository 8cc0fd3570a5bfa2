#include "rules.h"

#include "shuffle.h"

#include "omformat.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <string>

namespace world {

namespace {

/// A gem of a pattern: which of the shuffled colours and which of the shuffled numbers.
struct PatternGem {
    std::size_t color = 0;
    std::size_t number = 0;
};

/// Gems beyond the door's patternItemCount are not used.
struct DoorPlan {
    int positions = 0;
    bool colorsOfDifferentPairs = false; ///< see shuffleApart
    std::array<PatternGem, kPatternItems> gems{};
};
constexpr std::array<DoorPlan, kDoors> kDoorPlans{{
    {39, false, {{{0, 0}, {0, 1}, {0, 2}, {0, 3}}}},
    {39, false, {{{0, 0}, {1, 1}, {2, 2}, {3, 3}}}},
    {39, true, {{{0, 0}, {0, 1}, {1, 0}, {1, 1}}}},
    {39, true, {{{0, 0}, {0, 1}, {1, 2}}}},
    {44, false, {{{0, 0}, {1, 1}, {0, 0}, {2, 2}}}},
}};
constexpr std::size_t kMostPositions = 44;

/// Of the colours, and of the numbers.
using GemOrder = Numbers<4>;
static_assert(kGemColors == 4 && kGemsOfAColor == 4);

/// Until the first two colours are neither blue and yellow nor green and red.
void shuffleApart(GemOrder& colors) {
    do shuffle(colors);
    while (colors[0] + colors[1] == kGemColors - 1);
}

void makePattern(Numbers<kPatternItems>& pattern, int door, GemOrder& colors, GemOrder& numbers) {
    const DoorPlan& plan = kDoorPlans[static_cast<std::size_t>(door)];
    shuffle(numbers);
    if (plan.colorsOfDifferentPairs)
        shuffleApart(colors);
    else
        shuffle(colors);
    for (std::size_t i = 0; i < static_cast<std::size_t>(patternItemCount(door)); ++i)
        pattern[i] = gem(colors[plan.gems[i].color], numbers[plan.gems[i].number]);
}

void makeMissingSlots(Numbers<kMissingSlots>& slots, int door) {
    std::array<std::int32_t, kMostPositions> storage;
    const std::span all = std::span(storage).first(
        static_cast<std::size_t>(kDoorPlans[static_cast<std::size_t>(door)].positions));
    std::iota(all.begin(), all.end(), 1);
    const auto drawn = all.first(slots.size());
    do shuffle(all);
    while (!isVaried(drawn, patternItemCount(door)));
    std::ranges::copy(drawn, slots.begin());
}

template <class Entries, class Text>
std::string joined(const Entries& entries, Text text) {
    std::string all;
    for (const std::int32_t entry : entries) all += (all.empty() ? "" : ", ") + text(entry);
    return all;
}

} // namespace

void makeDoors(PlayerRecord& record) {
    GemOrder colors{0, 1, 2, 3};
    GemOrder numbers{0, 1, 2, 3};
    for (int door = 0; door < kDoors; ++door) {
        makePattern(record.pattern[static_cast<std::size_t>(door)], door, colors, numbers);
        makeMissingSlots(record.missingSlots[static_cast<std::size_t>(door)], door);
    }
}

void reportDoors(const PlayerRecord& record, const Report& report) {
    report("\n\nOHUB Pattern");
    for (std::size_t door = 0; door < kDoors; ++door) {
        const std::string pattern = joined(record.pattern[door], itemName);
        const std::string slots = joined(record.missingSlots[door],
                                         [](std::int32_t slot) { return std::to_string(slot); });
        report(OMFormat("\tDoor %d\tPattern: %s\n\t\t\tEmpty Slots: %s", static_cast<int>(door) + 1,
                        pattern.c_str(), slots.c_str()));
    }
    report("");
}

bool isVaried(std::span<const std::int32_t> slots, int patternCount) {
    const auto gap = [&](std::size_t i) {
        return std::abs((slots[i] - slots[i - 1]) % patternCount);
    };
    bool oddSeen = false;
    bool secondSeen = false;
    bool gapDiffers = false;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (oddSeen || slots[i] % 2 == 0)
            secondSeen = true;
        else
            oddSeen = true;
        if (i >= 2 && gap(i) != gap(1)) gapDiffers = true;
    }
    return oddSeen && secondSeen && gapDiffers;
}

} // namespace world
