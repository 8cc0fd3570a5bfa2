#include "world/rules.h"

#include "omrandom.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using world::ActivityRecord;
using world::Numbers;
using world::PlayerRecord;
using world::Thresholds;

namespace {

constexpr int kActivity = 6; // OWS2
constexpr auto kMost = std::numeric_limits<std::int32_t>::max();

int below(int count) { return static_cast<int>(OMRandomBelow(static_cast<std::uint32_t>(count))); }

class LevelingTest : public testing::Test {
  protected:
    LevelingTest() { activity.autoLeveling = activity.currentLevel = 1; }
    void guess(std::string_view guesses) {
        for (const char one : guesses) world::recordGuess(activity, one == '+');
    }
    std::vector<std::string> level(const Thresholds& thresholds = {}, int location = kActivity) {
        world::autoLevel(player, location, thresholds, report);
        return std::exchange(lines, {});
    }

    PlayerRecord player;
    ActivityRecord& activity = player.activities[kActivity - 1];
    std::vector<std::string> lines;
    world::Report report = [this](std::string_view line) { lines.emplace_back(line); };
};

TEST_F(LevelingTest, AdvancesAndGoesBackWithAReport) {
    guess("+++++");
    EXPECT_THAT(level(), IsEmpty());
    guess("+");
    EXPECT_THAT(level(),
                ElementsAre("",
                            "Auto-leveling has determined player can advance a level in OWS2.  New "
                            "level: 2",
                            "\tpoint count: 6, A: 5\tcorrect count: 6, B: 6", ""));
    EXPECT_EQ(activity.resultCount, 0);
    EXPECT_THAT(activity.results, Each(0));

    guess("+-+-+-+-+-");
    EXPECT_THAT(level(), IsEmpty()) << "5 correct of 10 are enough to stay";
    guess("-----");
    EXPECT_THAT(
        level(),
        ElementsAre("",
                    "Auto-leveling has determined player needs to go back a level in OWS2.  "
                    "New level is 1.",
                    "\tcorrect count: 2, X: 4\ttry count: 10, Y: 10", ""));
    EXPECT_THAT(activity.color, ElementsAre(1, 2, 0, 0));
    EXPECT_THAT(activity.totalCorrect, ElementsAre(6, 5, 0, 0));
    EXPECT_THAT(activity.totalGuesses, ElementsAre(6, 15, 0, 0));
}

// A player as the rules tell it: all guesses since the last decision, the newest first.
struct Model {
    std::vector<bool> newest;
    int level = 1;
    Numbers<4> color{};

    int correctIn(int tries) const {
        return static_cast<int>(std::count(newest.begin(), newest.begin() + tries, true));
    }
    int held() const { return std::min<int>(static_cast<int>(newest.size()), 20); }
    int pointsIn(int tries) const {
        int points = 0;
        for (int i = 0; i < tries; ++i) {
            const bool follows = i + 1 == held() || newest[static_cast<std::size_t>(i) + 1];
            if (newest[static_cast<std::size_t>(i)] && follows) ++points;
        }
        return points;
    }
    void move(int by, bool enabled) {
        color[static_cast<std::size_t>(level - 1)] = by > 0 ? 1 : 2;
        if (enabled) level = std::clamp(level + by, 1, 4);
        newest.clear();
    }
    /// How many levels it goes up or down.
    int decide(const Thresholds& limit, bool enabled) {
        int tries = 0;
        while (tries < std::min(held(), limit.y) && correctIn(tries) < limit.b) ++tries;
        const bool up = correctIn(tries) == limit.b && pointsIn(tries) >= limit.a;
        const bool down = !up && tries == limit.y && correctIn(tries) < limit.x;
        if (up) move(1, enabled);
        if (down) move(-1, enabled);
        return up - down;
    }
};

TEST_F(LevelingTest, LongPlaysFollowTheRules) {
    OMSeedRandom(7);
    Model model;
    Thresholds thresholds;
    int skill = 50;
    std::array<int, 3> decisions{};
    for (int step = 0; step < 200'000; ++step) {
        if (below(40) == 0) {
            thresholds = {below(14) - 1, below(14) - 1, below(14) - 1, below(25) - 1};
            skill = below(101);
            activity.autoLeveling = below(5);
        }
        const bool correct = below(100) < skill;
        world::recordGuess(activity, correct);
        model.newest.insert(model.newest.begin(), correct);
        if (below(3) != 0) continue;
        const int decision = model.decide(thresholds, activity.autoLeveling != 0);
        ++decisions[static_cast<std::size_t>(decision + 1)];
        ASSERT_EQ(level(thresholds).size(), decision == 0 ? 0u : 4u) << "step " << step;
        ASSERT_EQ(activity.currentLevel, model.level) << "step " << step;
        ASSERT_EQ(activity.color, model.color) << "step " << step;
        ASSERT_EQ(activity.resultCount, model.held()) << "step " << step;
        for (int i = 0; i < model.held(); ++i)
            ASSERT_EQ(activity.results[static_cast<std::size_t>(model.held() - 1 - i)],
                      model.newest[static_cast<std::size_t>(i)]);
    }
    EXPECT_THAT(decisions, Each(testing::Gt(1000)));
}

TEST_F(LevelingTest, LevelRecordsAlwaysAdvanceAndOtherPlacesStay) {
    world::LevelRecord& map = *player.level(world::location::kOMA);
    map.autoLeveling = map.currentLevel = 1;
    for (int i = 0; i < 5; ++i) EXPECT_THAT(level({}, world::location::kOMA), IsEmpty());
    EXPECT_EQ(map.currentLevel, 4);
    EXPECT_THAT(map.color, Each(1));
    map.autoLeveling = 0;
    map.currentLevel = 1;
    map.color.fill(0);
    level({}, world::location::kOMA);
    EXPECT_EQ(map.currentLevel, 1);
    EXPECT_THAT(map.color, ElementsAre(1, 0, 0, 0));

    const PlayerRecord before = player;
    for (const int place : {world::location::kCHUB, 0, -1, 11, 46, kMost}) level({}, place);
    EXPECT_TRUE(std::ranges::equal(player.numbers(), before.numbers()));
}

TEST_F(LevelingTest, NumbersOutOfRangeReachNothingElse) {
    for (const int wrong : {0, 5, -1, 60, kMost, -kMost - 1}) {
        activity = {.autoLeveling = 0, .currentLevel = wrong};
        guess("++++++");
        EXPECT_EQ(level().size(), 4u);
        ActivityRecord expected{.autoLeveling = 0, .currentLevel = wrong};
        expected.correctSinceDistribution = expected.guessesSinceDistribution = 6;
        PlayerRecord wanted;
        wanted.activities[kActivity - 1] = expected;
        EXPECT_TRUE(std::ranges::equal(player.numbers(), wanted.numbers())) << "level " << wrong;
    }
    for (const int wrong : {-1, 21, kMost, -kMost - 1}) {
        activity = {.correctSinceDistribution = kMost,
                    .guessesSinceDistribution = kMost,
                    .currentLevel = 1,
                    .resultCount = wrong,
                    .totalGuesses = {kMost}};
        guess("+");
        EXPECT_THAT(level(), IsEmpty());
        EXPECT_EQ(activity.resultCount, wrong);
        EXPECT_THAT(activity.results, Each(0));
        EXPECT_EQ(activity.correctSinceDistribution, kMost);
        EXPECT_EQ(activity.guessesSinceDistribution, kMost);
        EXPECT_EQ(activity.totalGuesses[0], kMost);
    }
}

} // namespace
