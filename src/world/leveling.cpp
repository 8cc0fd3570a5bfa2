#include "rules.h"

#include "omformat.h"

#include <algorithm>
#include <limits>
#include <string>

namespace world {

namespace {

void count(std::int32_t& counter) {
    if (counter < std::numeric_limits<std::int32_t>::max()) ++counter;
}

void countAtLevel(Numbers<kLevels>& counters, int level) {
    if (std::int32_t* counter = ofLevel(counters, level)) count(*counter);
}

/// The results that are in use, oldest first; none when their count is out of range.
std::span<const std::int32_t> heldResults(const ActivityRecord& record) {
    if (record.resultCount < 0 || record.resultCount > kRecentResults) return {};
    return std::span(record.results).first(static_cast<std::size_t>(record.resultCount));
}

void remember(ActivityRecord& record, bool correct) {
    if (record.resultCount < 0 || record.resultCount > kRecentResults) return;
    if (record.resultCount == kRecentResults) {
        std::ranges::copy(std::span(record.results).subspan(1), record.results.begin());
        --record.resultCount;
    }
    record.results[static_cast<std::size_t>(record.resultCount++)] = correct ? 1 : 0;
}

struct Performance {
    int tries = 0;
    int correct = 0;
    int points = 0; ///< correct results before which there is no wrong one
};

Performance recentPerformance(const ActivityRecord& record, const Thresholds& thresholds) {
    const auto results = heldResults(record);
    Performance seen;
    for (std::size_t i = results.size();
         i > 0 && seen.correct < thresholds.b && seen.tries < thresholds.y; --i) {
        ++seen.tries;
        if (results[i - 1] == 0) continue;
        ++seen.correct;
        if (i == 1 || results[i - 2] != 0) ++seen.points;
    }
    return seen;
}

/// The colour goes to the level that the player leaves. Without automatic levelling it is all that
/// changes.
template <class Record>
void changeLevel(Record& record, LevelColor color) {
    if (std::int32_t* levelColor = ofLevel(record.color, record.currentLevel))
        *levelColor = static_cast<std::int32_t>(color);
    if (record.autoLeveling == 0) return;
    if (color == LevelColor::Advanced && record.currentLevel < kLevels) ++record.currentLevel;
    if (color == LevelColor::WentBack && record.currentLevel > 1) --record.currentLevel;
}

void levelActivity(ActivityRecord& record, const std::string& name, const Thresholds& thresholds,
                   const Report& report) {
    const auto [a, b, x, y] = thresholds;
    const Performance seen = recentPerformance(record, thresholds);
    const bool advances = seen.correct == b && seen.points >= a;
    if (!advances && (seen.tries != y || seen.correct >= x)) return;
    changeLevel(record, advances ? LevelColor::Advanced : LevelColor::WentBack);
    forgetResults(record);
    report("");
    if (advances) {
        report(OMFormat("Auto-leveling has determined player can advance a level in %s.  "
                        "New level: %d",
                        name.c_str(), record.currentLevel));
        report(OMFormat("\tpoint count: %d, A: %d\tcorrect count: %d, B: %d", seen.points, a,
                        seen.correct, b));
    } else {
        report(OMFormat("Auto-leveling has determined player needs to go back a level in %s.  "
                        "New level is %d.",
                        name.c_str(), record.currentLevel));
        report(OMFormat("\tcorrect count: %d, X: %d\ttry count: %d, Y: %d", seen.correct, x,
                        seen.tries, y));
    }
    report("");
}

} // namespace

void recordGuess(ActivityRecord& record, bool correct) {
    if (correct) {
        count(record.correctSinceDistribution);
        countAtLevel(record.totalCorrect, record.currentLevel);
    }
    count(record.guessesSinceDistribution);
    countAtLevel(record.totalGuesses, record.currentLevel);
    remember(record, correct);
}

void autoLevel(PlayerRecord& record, int location, const Thresholds& thresholds,
               const Report& report) {
    if (LevelRecord* level = record.level(location))
        changeLevel(*level, LevelColor::Advanced);
    else if (ActivityRecord* activity = record.activity(location))
        levelActivity(*activity, std::string(locationName(location)), thresholds, report);
}

} // namespace world
