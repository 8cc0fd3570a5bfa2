// The rules of levels, of the items that are shared out, and of new games: long plays against a
// model, and numbers that are out of range.
#include "world/rules.h"

#include "omformat.h"
#include "omrandom.h"

#include <gmock/gmock.h>

#include <limits>
#include <numeric>
#include <set>

using testing::ElementsAre;
using namespace world;

namespace {

constexpr int kActivity = 6; // OWS2
constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();

int below(int count) { return static_cast<int>(OMRandomBelow(static_cast<std::uint32_t>(count))); }
bool same(const PlayerRecord& a, const PlayerRecord& b) {
    return std::ranges::equal(a.numbers(), b.numbers());
}

using Lines = std::vector<std::string>;

class RulesTest : public testing::Test {
  protected:
    Lines level(const Thresholds& thresholds = {}, int location = kActivity) {
        autoLevel(player, location, thresholds, report);
        return std::exchange(lines, {});
    }
    Lines distribute(int hub) {
        player.currentLocation = hub;
        distributeItems(player, report);
        return std::exchange(lines, {});
    }
    /// Guesses in the four activities from `first` on: correct ones, and all.
    void guessed(std::size_t first, const std::array<std::pair<int, int>, 4>& guesses) {
        for (std::size_t i = 0; i < 4; ++i)
            std::tie(player.activities[first + i].correctSinceDistribution,
                     player.activities[first + i].guessesSinceDistribution) = guesses[i];
    }

    PlayerRecord player;
    ActivityRecord& activity = player.activities[kActivity - 1];
    Lines lines;
    Report report = [this](std::string_view line) { lines.emplace_back(line); };
};

TEST_F(RulesTest, LongPlaysFollowTheRulesOfLevels) {
    OMSeedRandom(7);
    activity.autoLeveling = activity.currentLevel = 1;
    PlayerRecord wanted = player;
    ActivityRecord& model = wanted.activities[kActivity - 1];
    std::vector<bool> newest; // guesses since the last decision, the newest first
    Thresholds limit;
    int skill = 50;
    for (int step = 0; step < 100'000; ++step) {
        SCOPED_TRACE(step);
        if (below(40) == 0) {
            limit = {below(14) - 1, below(14) - 1, below(14) - 1, below(25) - 1};
            skill = below(101);
            model.autoLeveling = activity.autoLeveling = below(5);
        }
        const int correct = below(100) < skill;
        recordGuess(activity, correct);
        const auto at = std::size_t(model.currentLevel - 1);
        model.correctSinceDistribution += correct;
        model.totalCorrect[at] += correct;
        ++model.guessesSinceDistribution;
        ++model.totalGuesses[at];
        newest.insert(newest.begin(), correct);
        newest.resize(std::min<std::size_t>(newest.size(), 20));
        if (below(3) == 0) {
            const int held = int(newest.size());
            int tries = 0, right = 0, points = 0;
            for (; tries < std::min(held, limit.y) && right < limit.b; ++tries)
                if (newest[std::size_t(tries)]) {
                    ++right;
                    points += tries + 1 == held || newest[std::size_t(tries) + 1];
                }
            const bool up = right == limit.b && points >= limit.a;
            std::string told; // but for the sentences, which are those of a script
            if (up || (tries == limit.y && right < limit.x)) {
                model.color[at] = up ? 1 : 2;
                if (model.autoLeveling)
                    model.currentLevel = std::clamp(model.currentLevel + (up ? 1 : -1), 1, 4);
                newest.clear();
                told = up ? OMFormat("\tpoint count: %d, A: %d\tcorrect count: %d, B: %d", points,
                                     limit.a, right, limit.b)
                          : OMFormat("\tcorrect count: %d, X: %d\ttry count: %d, Y: %d", right,
                                     limit.x, tries, limit.y);
            }
            const Lines said = level(limit);
            ASSERT_EQ(said.empty() ? "" : said.at(2), told);
        }
        model.resultCount = int(newest.size());
        model.results.fill(0);
        std::copy(newest.rbegin(), newest.rend(), model.results.begin());
        ASSERT_TRUE(same(player, wanted));
    }
}

TEST_F(RulesTest, NumbersOutOfRangeReachNothingElse) {
    for (const int place : {location::kCHUB, 0, -1, 11, 46, kMost}) level({}, place);
    for (const int wrong : {0, 5, -1, 21, kMost, kLeast})
        for (const bool isLevel : {true, false}) {
            if (!isLevel && (wrong == 0 || wrong == 5)) continue;
            activity = {.correctSinceDistribution = kMost,
                        .guessesSinceDistribution = kMost - 1,
                        .currentLevel = isLevel ? wrong : 1,
                        .resultCount = isLevel ? 0 : wrong,
                        .totalGuesses = {kMost}};
            PlayerRecord wanted = player;
            ++wanted.activities[kActivity - 1].guessesSinceDistribution;
            wanted.activities[kActivity - 1].totalCorrect[0] = isLevel ? 0 : 6;
            for (int i = 0; i < 6; ++i) recordGuess(activity, true);
            EXPECT_EQ(level().size(), isLevel ? 4u : 0u);
            EXPECT_TRUE(same(player, wanted)) << wrong;
        }
}

// The counts of each row are at an edge of the table of shares.
TEST_F(RulesTest, SharesFollowTheRatios) {
    const struct {
        std::array<std::pair<int, int>, 4> guesses;
        std::string_view chosen; ///< category and distribution
        std::array<int, 4> shares;
    } rows[] = {
        {{{{1, 4}, {0, 9}, {1, 4}, {250, 1000}}}, "1A", {3, 3, 3, 3}},
        {{{{251, 1000}, {0, 1}, {0, 1}, {0, 1}}}, "2B", {2, 4, 3, 3}},
        {{{{0, 1}, {99, 1000}, {0, 1}, {251, 1000}}}, "2B", {4, 3, 3, 2}},
        {{{{251, 1000}, {1, 10}, {0, 1}, {0, 1}}}, "2C", {2, 2, 4, 4}},
        {{{{9, 10}, {6, 10}, {5, 10}, {5, 10}}}, "2C", {2, 2, 4, 4}}, // 0.6 - 0.5 is below 0.1
        {{{{499, 1000}, {0, 1}, {0, 1}, {499, 1000}}}, "2C", {2, 4, 4, 2}},
        {{{{1, 2}, {499, 1000}, {0, 1}, {1, 2}}}, "3D", {2, 3, 5, 2}},
        {{{{}, {}, {2, 4}, {}}}, "3E", {2, 2, 6, 2}},
        {{{{12, 22}, {12, 22}, {1, 22}, {}}}, "3E", {2, 2, 6, 2}},
    };
    player.missingSlots[0].fill(1);
    player.pattern[0].fill(13);
    for (const std::size_t first : {0u, 4u})
        for (const auto& [guesses, chosen, shares] : rows) {
            guessed(first, guesses);
            const Lines said = distribute(first ? location::kOHUB : location::kCHUB);
            ASSERT_EQ(said.size(), 11u);
            EXPECT_EQ(said[5].substr(19) + said[6].substr(23), chosen);
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_EQ(std::ranges::count_if(player.activities[first + i].queue, isItem),
                          shares[i])
                    << chosen << i;
        }
}

TEST_F(RulesTest, TheGemsOfTheDoorGoOutInOrder) {
    player.hubs[1].rounds = 3;
    player.pattern[3] = {20, 21, 22, 99};
    std::iota(player.missingSlots[3].begin(), player.missingSlots[3].end(), 28);
    guessed(4, {{{3, 4}, {7, 7}, {0, 2}, {29, 100}}});
    player.activities[5].queue.fill(1);
    PlayerRecord wanted = player;
    const Lines said = distribute(location::kOHUB);
    EXPECT_EQ(said[1] + said[4] + said[8], "\tOWS1: Total guesses: 4 Correct guesses: 3 (75%)"
                                           "\tOWS4: Total guesses: 100 Correct guesses: 29 (29%)"
                                           "\tOWS4 gets 3 items");
    wanted.currentLocation = location::kOHUB;
    const Numbers<6> queues[] = {{22, 20}, {21, 22}, {20, 21, 22, 20, 21}, {22, 20, 21}};
    for (std::size_t i = 0; i < 4; ++i) wanted.activities[4 + i].queue = queues[i];
    for (std::size_t i = 4; i < 8; ++i)
        wanted.activities[i].correctSinceDistribution =
            wanted.activities[i].guessesSinceDistribution = 0;
    EXPECT_TRUE(same(player, wanted));
    player.activities[6].queue[5] = 28;
    removeNextFromQueue(player.activities[6]);
    EXPECT_THAT(player.activities[6].queue, ElementsAre(21, 22, 20, 21, 28, 0));
}

TEST_F(RulesTest, NothingHappensWithoutAHubOrItsDoor) {
    constexpr int kHub = location::kOHUB;
    const std::tuple<int, int, int> rows[] = {// place, door, slot
                                              {0, 0, 1},     {1, 0, 1},        {12, 0, 1},
                                              {18, 0, 1},    {-15, 0, 1},      {kHub, -1, 1},
                                              {kHub, 5, 1},  {kHub, kMost, 1}, {kHub, 0, 0},
                                              {kHub, 0, -1}, {kHub, 0, kLeast}};
    player.missingSlots[0].fill(1);
    for (const auto& [place, door, slot] : rows) {
        player.hubs[1].rounds = door;
        player.missingSlots[0][11] = slot;
        player.currentLocation = place;
        const PlayerRecord before = player;
        EXPECT_TRUE(distribute(place).empty() && same(player, before)) << place << door << slot;
    }
    player.missingSlots[0][11] = kMost;
    guessed(4, {{{kLeast, 1}, {kLeast, -1}, {5, -3}, {0, kLeast}}});
    EXPECT_EQ(distribute(kHub).at(1),
              "\tOWS1: Total guesses: 1 Correct guesses: -2147483648 (-2147483648%)");
}

TEST_F(RulesTest, DoorsFollowTheirRulesInEveryGame) {
    // Each gem by the order in which its colour and its number first appear.
    constexpr std::string_view kShapes[] = {"00010203", "00112233", "00011011", "000112",
                                            "00110022"};
    std::set<int> gems[5], slots[5], glyphs;
    for (int game = 0; game < 10'000; ++game) {
        newGame(player, {});
        for (std::size_t door = 0; door < 5; ++door) {
            const auto& items = player.pattern[door];
            std::vector<int> seen[2];
            std::string shape;
            for (std::size_t i = 0; i < (door == 3 ? 3u : 4u); ++i) {
                ASSERT_TRUE(items[i] >= 13 && items[i] <= 28) << items[i];
                for (const int one : {0, 1}) {
                    const int part = one ? (items[i] - 13) % 4 : (items[i] - 13) / 4;
                    const auto found = std::ranges::find(seen[one], part) - seen[one].begin();
                    if (found == std::ssize(seen[one])) seen[one].push_back(part);
                    shape += std::to_string(found);
                }
            }
            ASSERT_EQ(shape, kShapes[door]);
            ASSERT_TRUE(door != 3 || items[3] == 0);
            ASSERT_FALSE((door == 2 || door == 3) && seen[0][0] + seen[0][1] == 3);
            gems[door].insert(items[0]);
            const auto& missing = player.missingSlots[door];
            ASSERT_EQ(std::set<int>(missing.begin(), missing.end()).size(), 12u);
            ASSERT_TRUE(isVaried(missing, door == 3 ? 3 : 4)) << door;
            slots[door].insert(missing.begin(), missing.end());
        }
        ASSERT_EQ(player.activities[7].queue[2], // the last gem that the first door misses
                  player.pattern[0][std::size_t(player.missingSlots[0][11] - 1) % 4]);
        glyphs.insert(player.activities[0].queue[0]);
    }
    EXPECT_TRUE(glyphs.size() == 12 && *glyphs.begin() == 1 && *glyphs.rbegin() == 12);
    for (std::size_t door = 0; door < 5; ++door) { // any gem can be the first, any position empty
        EXPECT_EQ(gems[door].size(), 16u);
        EXPECT_EQ(slots[door].size(), door == 4 ? 44u : 39u);
        EXPECT_TRUE(*slots[door].begin() == 1 && *slots[door].rbegin() == (door == 4 ? 44 : 39));
    }
}

// Every number of the record is out of range: so many are kept, the others are a new one's.
TEST_F(RulesTest, AGameEndsWhatBelongsToItAndANewPlayerKnowsNothing) {
    for (const bool isNew : {false, true})
        for (const int number : {-1, kLeast, kMost}) {
            std::ranges::fill(player.numbers(), number);
            isNew ? resetNewPlayer(player, report) : newGame(player, report);
            EXPECT_EQ(std::ranges::count(player.numbers(), number), isNew ? 1 : 225);
            EXPECT_EQ(player.pattern[3][3], number);
            const ActivityRecord& one = player.activities[8];
            const std::array kept{one.autoLeveling,
                                  one.currentLevel,
                                  one.dataset[3],
                                  one.color[3],
                                  one.totalCorrect[3],
                                  one.totalGuesses[3],
                                  one.correctSinceDistribution,
                                  one.guessesSinceDistribution};
            EXPECT_EQ(std::ranges::count(kept, number), isNew ? 0 : 8);
            EXPECT_EQ(player.currentLocation, 12);
            player.missingSlots = {};
            player.pattern = {};
            for (ActivityRecord& each : player.activities) each.queue = {};
            EXPECT_EQ(std::ranges::count(player.numbers(), 0), isNew ? 716 : 520);
            EXPECT_EQ(std::ranges::count(player.numbers(), 1), isNew ? 28 : 0);
        }
}

// Chance hardly ever draws such slots.
TEST(DoorsTest, SlotsAreDrawnAgainUnlessTheyAreVaried) {
    const std::tuple<std::vector<std::int32_t>, int, bool> rows[] = {
        {{2, 4, 8, 12, 10, 6, 30}, 4, false},
        {{2, 4, 8, 12, 10, 6, 31}, 4, true}, // all even
        {{1, 6, 11, 16, 21, 20, 15}, 4, false},
        {{1, 6, 11, 16, 21, 20, 17}, 4, true}, // 1 on or back
        {{1, 5, 9, 37, 33, 13, 17}, 4, false},
        {{1, 5, 9, 37, 33, 13, 17}, 3, true}};
    for (const auto& [slots, count, varied] : rows)
        EXPECT_EQ(isVaried(slots, count), varied) << testing::PrintToString(slots);
}

} // namespace
