#include "rules.h"

namespace world {

namespace {

void clearGame(HubRecord& hub) { hub = HubRecord(); }

void clearGame(ActivityRecord& activity) {
    activity.visited = 0;
    forgetResults(activity);
    activity.entryCount.fill(0);
    activity.queue.fill(kNoItem);
    activity.items.fill(kNoItem);
}

void clearGame(PlayerRecord& record) {
    for (auto* levels : {&record.boards, &record.maps})
        for (LevelRecord& level : *levels) level.visited = 0;
    for (HubRecord& hub : record.hubs) clearGame(hub);
    for (ActivityRecord& activity : record.activities) clearGame(activity);
    record.backpack.fill(kNoItem);
}

template <class Record>
void startLearning(Record& record) {
    record.autoLeveling = 1;
    record.currentLevel = 1;
    record.dataset.fill(0);
    record.color.fill(static_cast<std::int32_t>(LevelColor::None));
}

void startCounting(ActivityRecord& record) {
    record.correctSinceDistribution = 0;
    record.guessesSinceDistribution = 0;
    record.totalCorrect.fill(0);
    record.totalGuesses.fill(0);
}

} // namespace

void newGame(PlayerRecord& record, const Report& report) {
    clearGame(record);
    makeDoors(record);
    reportDoors(record, report);
    for (const int hub : {location::kCHUB, location::kOHUB}) {
        record.currentLocation = hub;
        distributeItems(record, report);
    }
    record.currentLocation = location::kCBA1;
}

void resetNewPlayer(PlayerRecord& record, const Report& report) {
    for (auto* levels : {&record.boards, &record.maps})
        for (LevelRecord& level : *levels) startLearning(level);
    for (ActivityRecord& activity : record.activities) {
        startLearning(activity);
        startCounting(activity);
    }
    // the rest, recent results and backpack among it, is what a new game clears anyway
    newGame(record, report);
}

} // namespace world
