#include "rules.h"

#include "omformat.h"
#include "omrandom.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

namespace world {

namespace {

constexpr int kHubActivities = 4;
constexpr int kSharedItems = 12;
using SharedItems = Numbers<kSharedItems>;

struct Contender {
    std::string name;
    ActivityRecord* record = nullptr;
    double ratio = 0; ///< of correct guesses, 1 is best
};
using Contenders = std::array<Contender, kHubActivities>;

/// How many items each activity gets, the one with the lowest ratio first.
struct Distribution {
    int category = 0;
    char name = 'A';
    std::array<int, kHubActivities> shares{};
};
constexpr Distribution kDistributionA{1, 'A', {3, 3, 3, 3}};
constexpr Distribution kDistributionB{2, 'B', {4, 3, 3, 2}};
constexpr Distribution kDistributionC{2, 'C', {4, 4, 2, 2}};
constexpr Distribution kDistributionD{3, 'D', {5, 3, 2, 2}};
constexpr Distribution kDistributionE{3, 'E', {6, 2, 2, 2}};

/// The first activity of a hub; the others follow it.
int firstActivity(int hub) {
    switch (hub) {
    case location::kCHUB: return 1;
    case location::kOHUB: return 1 + kHubActivities;
    default: return kNowhere;
    }
}

SharedItems randomGlyphs() {
    SharedItems glyphs;
    for (std::int32_t& glyph : glyphs) glyph = 1 + static_cast<int>(OMRandomBelow(kGlyphs));
    return glyphs;
}

std::optional<SharedItems> gemsOfCurrentDoor(const PlayerRecord& record) {
    static_assert(kMissingSlots == kSharedItems);
    if (record.currentDoor() < 0) return std::nullopt;
    const auto door = static_cast<std::size_t>(record.currentDoor());
    const int count = patternItemCount(record.currentDoor());
    SharedItems gems;
    for (std::size_t i = 0; i < gems.size(); ++i) {
        const std::int32_t slot = record.missingSlots[door][i];
        if (slot < 1) return std::nullopt;
        gems[i] = record.pattern[door][static_cast<std::size_t>((slot - 1) % count)];
    }
    return gems;
}

std::optional<SharedItems> itemsToShare(const PlayerRecord& record) {
    if (record.currentLocation == location::kCHUB) return randomGlyphs();
    return gemsOfCurrentDoor(record);
}

double successRatio(const ActivityRecord& record) {
    if (record.guessesSinceDistribution == 0) return 1.0;
    return static_cast<double>(record.correctSinceDistribution) / record.guessesSinceDistribution;
}

/// In whole numbers, so that 29 of 100 are not 28.9999 percent. Those of a changed file can be far
/// from each other.
int successPercent(const ActivityRecord& record) {
    if (record.guessesSinceDistribution == 0) return 100;
    using Limits = std::numeric_limits<int>;
    const std::int64_t percent =
        std::int64_t{100} * record.correctSinceDistribution / record.guessesSinceDistribution;
    return static_cast<int>(std::clamp<std::int64_t>(percent, Limits::min(), Limits::max()));
}

Contenders contenders(PlayerRecord& record, int firstLocation, const Report& report) {
    Contenders all;
    int location = firstLocation;
    for (Contender& contender : all) {
        contender.name = locationName(location);
        contender.record = record.activity(location);
        contender.ratio = successRatio(*contender.record);
        report(OMFormat("\t%s: Total guesses: %d Correct guesses: %d (%d%%)",
                        contender.name.c_str(), contender.record->guessesSinceDistribution,
                        contender.record->correctSinceDistribution,
                        successPercent(*contender.record)));
        ++location;
    }
    std::ranges::stable_sort(all, {}, &Contender::ratio);
    return all;
}

/// 6 of 10 are a tenth better than 5 of 10, though not quite so in binary.
bool isBetterBy(double limit, const Contender& better, const Contender& worse) {
    constexpr double kRounding = 1e-12;
    return better.ratio - worse.ratio >= limit - kRounding;
}

const Distribution& chooseDistribution(const Contenders& sorted) {
    const auto& [worst, second, third, best] = sorted;
    if (!isBetterBy(0.251, best, worst)) return kDistributionA;
    if (!isBetterBy(0.5, best, worst))
        return isBetterBy(0.1, third, second) ? kDistributionC : kDistributionB;
    return isBetterBy(0.5, second, worst) ? kDistributionE : kDistributionD;
}

/// Begins a new count of guesses with the given items, at most kQueueItems.
void startRound(ActivityRecord& record, std::span<const std::int32_t> items) {
    record.correctSinceDistribution = 0;
    record.guessesSinceDistribution = 0;
    record.queue.fill(kNoItem);
    std::ranges::copy(items, record.queue.begin());
}

} // namespace

void distributeItems(PlayerRecord& record, const Report& report) {
    const int first = firstActivity(record.currentLocation);
    if (first == kNowhere) return;
    const auto items = itemsToShare(record);
    if (!items) return;

    report(OMFormat("Distributing items for %s",
                    std::string(locationName(record.currentLocation)).c_str()));
    const Contenders sorted = contenders(record, first, report);
    const Distribution& chosen = chooseDistribution(sorted);
    report(OMFormat("\tSelected category %d", chosen.category));
    report(OMFormat("\tSelected distribution %c", chosen.name));

    std::span<const std::int32_t> left = *items;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const auto share = static_cast<std::size_t>(chosen.shares[i]);
        startRound(*sorted[i].record, left.first(share));
        left = left.subspan(share);
        report(OMFormat("\t%s gets %d items", sorted[i].name.c_str(), chosen.shares[i]));
    }
}

void removeNextFromQueue(ActivityRecord& record) {
    std::ranges::copy(std::span(record.queue).subspan(1), record.queue.begin());
    record.queue.back() = kNoItem;
}

} // namespace world
