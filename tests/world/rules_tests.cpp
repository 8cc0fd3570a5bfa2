// The rules of levels, of the items that are shared out, and of new games: long plays against a
// model, and numbers that are out of range.
#include "world/rules.h"

#include "omrandom.h"

#include <gmock/gmock.h>

#include <limits>
#include <numeric>
#include <set>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
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
    Lines take() { return std::exchange(lines, {}); }
    Lines level(const Thresholds& thresholds = {}, int location = kActivity) {
        autoLevel(player, location, thresholds, report);
        return take();
    }
    Lines distribute(int hub) {
        player.currentLocation = hub;
        distributeItems(player, report);
        return take();
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

// ---------------------------------------------------------------------------- levels

TEST_F(RulesTest, LongPlaysFollowTheRulesOfLevels) {
    OMSeedRandom(7);
    activity.autoLeveling = activity.currentLevel = 1;
    PlayerRecord wanted = player;
    ActivityRecord& model = wanted.activities[kActivity - 1];
    std::vector<bool> newest; // guesses since the last decision, the newest first
    Thresholds limit;
    int skill = 50;
    std::array<int, 2> changes{};
    const auto text = [](int number) { return std::to_string(number); };
    for (int step = 0; step < 100'000; ++step) {
        if (below(40) == 0) {
            limit = {below(14) - 1, below(14) - 1, below(14) - 1, below(25) - 1};
            skill = below(101);
            model.autoLeveling = activity.autoLeveling = below(5);
        }
        const int correct = below(100) < skill;
        recordGuess(activity, correct);
        const auto at = static_cast<std::size_t>(model.currentLevel - 1);
        model.correctSinceDistribution += correct;
        model.totalCorrect[at] += correct;
        ++model.guessesSinceDistribution;
        ++model.totalGuesses[at];
        newest.insert(newest.begin(), correct);
        newest.resize(std::min<std::size_t>(newest.size(), 20));
        if (below(3) == 0) {
            const int held = static_cast<int>(newest.size());
            int tries = 0;
            int right = 0;
            int points = 0;
            for (; tries < std::min(held, limit.y) && right < limit.b; ++tries)
                if (newest[static_cast<std::size_t>(tries)]) {
                    ++right;
                    if (tries + 1 == held || newest[static_cast<std::size_t>(tries) + 1]) ++points;
                }
            const bool up = right == limit.b && points >= limit.a;
            Lines told;
            if (up || (tries == limit.y && right < limit.x)) {
                ++changes[up];
                model.color[at] = up ? 1 : 2;
                if (model.autoLeveling)
                    model.currentLevel = std::clamp(model.currentLevel + (up ? 1 : -1), 1, 4);
                newest.clear();
                const std::string now = text(model.currentLevel);
                const std::string who = "Auto-leveling has determined player ";
                told = {"",
                        up ? who + "can advance a level in OWS2.  New level: " + now
                           : who + "needs to go back a level in OWS2.  New level is " + now + ".",
                        up ? "\tpoint count: " + text(points) + ", A: " + text(limit.a) +
                                 "\tcorrect count: " + text(right) + ", B: " + text(limit.b)
                           : "\tcorrect count: " + text(right) + ", X: " + text(limit.x) +
                                 "\ttry count: " + text(tries) + ", Y: " + text(limit.y),
                        ""};
            }
            ASSERT_EQ(level(limit), told) << "step " << step;
        }
        model.resultCount = static_cast<int>(newest.size());
        model.results.fill(0);
        std::copy(newest.rbegin(), newest.rend(), model.results.begin());
        ASSERT_TRUE(same(player, wanted)) << "step " << step;
    }
    EXPECT_THAT(changes, Each(testing::Gt(300)));
}

TEST_F(RulesTest, LevelRecordsAlwaysAdvanceAndOtherPlacesStay) {
    LevelRecord& map = *player.level(location::kOMA);
    map.autoLeveling = map.currentLevel = 1;
    for (int i = 0; i < 5; ++i) EXPECT_THAT(level({}, location::kOMA), IsEmpty());
    EXPECT_EQ(map.currentLevel, 4);
    EXPECT_THAT(map.color, Each(1));
    map = {.autoLeveling = 0, .currentLevel = 1};
    level({}, location::kOMA);
    EXPECT_EQ(map.currentLevel, 1);
    EXPECT_THAT(map.color, ElementsAre(1, 0, 0, 0));
    const PlayerRecord before = player;
    for (const int place : {location::kCHUB, 0, -1, 11, 46, kMost}) level({}, place);
    EXPECT_TRUE(same(player, before));
}

TEST_F(RulesTest, NumbersOutOfRangeReachNothingElse) {
    for (const int wrong : {0, 5, -1, 60, kMost, kLeast}) {
        activity = {.autoLeveling = 0, .currentLevel = wrong};
        for (int i = 0; i < 6; ++i) recordGuess(activity, true);
        EXPECT_EQ(level().size(), 4u);
        PlayerRecord wanted;
        ActivityRecord& counted = wanted.activities[kActivity - 1];
        counted = {.autoLeveling = 0, .currentLevel = wrong};
        counted.correctSinceDistribution = counted.guessesSinceDistribution = 6;
        EXPECT_TRUE(same(player, wanted)) << "level " << wrong;
    }
    for (const int wrong : {-1, 21, kMost, kLeast}) {
        activity = {.correctSinceDistribution = kMost,
                    .guessesSinceDistribution = kMost,
                    .currentLevel = 1,
                    .resultCount = wrong,
                    .totalGuesses = {kMost}};
        PlayerRecord wanted = player;
        wanted.activities[kActivity - 1].totalCorrect[0] = 1;
        recordGuess(activity, true);
        EXPECT_THAT(level(), IsEmpty());
        EXPECT_TRUE(same(player, wanted)) << "count " << wrong;
    }
}

// ---------------------------------------------------------------------------- items

// The counts of each row are at an edge of the table of shares.
TEST_F(RulesTest, SharesFollowTheRatios) {
    struct Row {
        std::array<std::pair<int, int>, 4> guesses;
        std::string_view chosen; ///< category and distribution
        std::array<int, 4> shares;
    };
    const Row rows[] = {
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
    std::set<int> glyphs; ///< in the first hub
    OMSeedRandom(1);
    for (const std::size_t first : {0u, 4u}) {
        player.missingSlots[0].fill(1);
        player.pattern[0].fill(13);
        for (const Row& row : rows) {
            guessed(first, row.guesses);
            const Lines said = distribute(first ? location::kOHUB : location::kCHUB);
            ASSERT_EQ(said.size(), 11u);
            EXPECT_EQ(said[5].substr(19) + said[6].substr(23), row.chosen);
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_EQ(std::ranges::count_if(player.activities[first + i].queue, isItem),
                          row.shares[i])
                    << row.chosen << " activity " << i;
            for (const ActivityRecord& each : std::span(player.activities).first(4))
                glyphs.insert(each.queue.begin(), each.queue.begin() + 2);
        }
    }
    EXPECT_THAT(glyphs, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12)) << "by chance";
}

TEST_F(RulesTest, TheGemsOfTheDoorGoOutInOrder) {
    player.hubs[1].rounds = 3;
    player.pattern[3] = {20, 21, 22, 99};
    std::iota(player.missingSlots[3].begin(), player.missingSlots[3].end(), 28);
    guessed(4, {{{3, 4}, {7, 7}, {0, 2}, {29, 100}}});
    player.activities[5].queue.fill(1);
    PlayerRecord wanted = player;
    EXPECT_THAT(distribute(location::kOHUB),
                ElementsAre("Distributing items for OHUB",
                            "\tOWS1: Total guesses: 4 Correct guesses: 3 (75%)",
                            "\tOWS2: Total guesses: 7 Correct guesses: 7 (100%)",
                            "\tOWS3: Total guesses: 2 Correct guesses: 0 (0%)",
                            "\tOWS4: Total guesses: 100 Correct guesses: 29 (29%)",
                            "\tSelected category 3", "\tSelected distribution D",
                            "\tOWS3 gets 5 items", "\tOWS4 gets 3 items", "\tOWS1 gets 2 items",
                            "\tOWS2 gets 2 items"));
    wanted.currentLocation = location::kOHUB;
    const Numbers<6> queues[] = {{22, 20}, {21, 22}, {20, 21, 22, 20, 21}, {22, 20, 21}};
    for (std::size_t i = 0; i < 4; ++i) {
        ActivityRecord& each = wanted.activities[4 + i];
        each.queue = queues[i];
        each.correctSinceDistribution = each.guessesSinceDistribution = 0;
    }
    EXPECT_TRUE(same(player, wanted));

    auto& longest = player.activities[6];
    longest.queue[5] = 28;
    removeNextFromQueue(longest);
    EXPECT_THAT(longest.queue, ElementsAre(21, 22, 20, 21, 28, 0));
}

TEST_F(RulesTest, NothingHappensWithoutAHubOrItsDoor) {
    player.missingSlots[0].fill(1);
    const auto untouched = [&](int hub) {
        player.currentLocation = hub;
        const PlayerRecord before = player;
        return distribute(hub).empty() && same(player, before);
    };
    for (const int place : {0, 1, 12, 18, 46, -15}) EXPECT_TRUE(untouched(place)) << place;
    for (const int door : {-1, 5, kMost}) {
        player.hubs[1].rounds = door;
        EXPECT_TRUE(untouched(location::kOHUB)) << "door " << door;
    }
    player.hubs[1].rounds = 0;
    for (const int slot : {0, -1, kLeast}) {
        player.missingSlots[0][11] = slot;
        EXPECT_TRUE(untouched(location::kOHUB)) << "slot " << slot;
    }
    player.missingSlots[0][11] = kMost;
    guessed(4, {{{kLeast, 1}, {kLeast, -1}, {5, -3}, {0, kLeast}}});
    EXPECT_THAT(distribute(location::kOHUB),
                testing::IsSupersetOf({"\tOWS1: Total guesses: 1 Correct guesses: -2147483648 "
                                       "(-2147483648%)",
                                       "\tOWS2 gets 2 items"}));
}

// ---------------------------------------------------------------------------- games

/// Each gem by the order in which its colour and its number first appear: "00 01 ".
std::string shapeOf(const Numbers<4>& gems, std::size_t count) {
    std::vector<int> seen[2];
    std::string shape;
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_TRUE(gems[i] >= 13 && gems[i] <= 28) << gems[i];
        for (const bool isNumber : {false, true}) {
            const int one = isNumber ? (gems[i] - 13) % 4 : (gems[i] - 13) / 4;
            const auto found = std::ranges::find(seen[isNumber], one) - seen[isNumber].begin();
            if (found == std::ssize(seen[isNumber])) seen[isNumber].push_back(one);
            shape += std::to_string(found);
        }
        shape += ' ';
    }
    return shape;
}

TEST_F(RulesTest, DoorsFollowTheirRulesInEveryGame) {
    constexpr std::string_view kShapes[] = {"00 01 02 03 ", "00 11 22 33 ", "00 01 10 11 ",
                                            "00 01 12 ", "00 11 00 22 "};
    std::set<int> gems[5];
    std::set<int> slots[5];
    for (int game = 0; game < 10'000; ++game) {
        newGame(player, {});
        for (std::size_t door = 0; door < 5; ++door) {
            SCOPED_TRACE(door);
            const auto& items = player.pattern[door];
            ASSERT_EQ(shapeOf(items, door == 3 ? 3 : 4), kShapes[door]);
            ASSERT_TRUE(door != 3 || items[3] == 0);
            const bool hasApart = door == 2 || door == 3;
            ASSERT_FALSE(hasApart && (items[0] - 13) / 4 + (items[2] - 13) / 4 == 3);
            gems[door].insert(items[0]);
            // Among the slots is an odd one, and they are not always the same way apart.
            const auto& missing = player.missingSlots[door];
            std::set<int> gaps;
            for (std::size_t i = 1; i < 12; ++i)
                gaps.insert(std::abs(missing[i] - missing[i - 1]) % (door == 3 ? 3 : 4));
            ASSERT_EQ(std::set<int>(missing.begin(), missing.end()).size(), 12u);
            ASSERT_TRUE(gaps.size() > 1 &&
                        std::ranges::any_of(missing, [](int slot) { return slot % 2 == 1; }));
            slots[door].insert(missing.begin(), missing.end());
        }
    }
    for (std::size_t door = 0; door < 5; ++door) {
        EXPECT_EQ(gems[door].size(), 16u) << "any gem can be the first";
        std::set<int> all; // any position can be empty
        for (int slot = 1; slot <= (door == 4 ? 44 : 39); ++slot) all.insert(slot);
        EXPECT_EQ(slots[door], all);
    }
}

TEST_F(RulesTest, ReportsTheDoorsAndTheFirstItems) {
    newGame(player, report);
    const Lines said = take();
    ASSERT_EQ(said.size(), 29u);
    EXPECT_EQ(said[0], "\n\nOHUB Pattern");
    for (std::size_t door = 0; door < 5; ++door) {
        std::string line = "\tDoor " + std::to_string(door + 1) + "\tPattern: ";
        for (std::size_t i = 0; i < 4; ++i)
            line += (i ? ", " : "") +
                    (door == 3 && i == 3 ? "No Item" : itemName(player.pattern[door][i]));
        line += "\n\t\t\tEmpty Slots: ";
        for (const int slot : player.missingSlots[door]) line += std::to_string(slot) + ", ";
        EXPECT_EQ(said[door + 1] + ", ", line);
    }
    EXPECT_EQ(said[28], "\tOWS4 gets 3 items");
    for (std::size_t i = 0; i < 12; ++i) // the gems that the first door misses
        EXPECT_EQ(player.activities[4 + i / 3].queue[i % 3],
                  player.pattern[0][static_cast<std::size_t>(player.missingSlots[0][i] - 1) % 4]);
}

// Every number of the record is out of range or unlikely, and all that a game keeps is kept.
TEST_F(RulesTest, AGameEndsWhatBelongsToItAndANewPlayerKnowsNothing) {
    for (const int number : {7, -1, kLeast, kMost})
        for (const bool isNew : {false, true}) {
            SCOPED_TRACE(number);
            std::ranges::fill(player.numbers(), number);
            PlayerRecord wanted = player;
            isNew ? resetNewPlayer(player, report) : newGame(player, report);
            EXPECT_EQ(player.pattern[3][3], number);
            wanted.missingSlots = player.missingSlots;
            wanted.pattern = player.pattern;
            wanted.currentLocation = 12;
            wanted.backpack = {};
            wanted.hubs = {};
            for (auto* levels : {&wanted.boards, &wanted.maps})
                for (LevelRecord& each : *levels) {
                    if (isNew) each = {.autoLeveling = 1, .currentLevel = 1};
                    each.visited = 0;
                }
            for (std::size_t i = 0; i < 10; ++i) {
                ActivityRecord& each = wanted.activities[i];
                if (isNew) each = {.autoLeveling = 1, .currentLevel = 1};
                each.results = {};
                each.entryCount = {};
                each.resultCount = each.visited = 0;
                each.items = {};
                each.queue = i < 8 ? player.activities[i].queue : Numbers<6>{};
                if (i < 8) each.correctSinceDistribution = each.guessesSinceDistribution = 0;
            }
            EXPECT_TRUE(same(player, wanted));
        }
}

// Chance hardly ever draws such slots.
TEST(DoorsTest, SlotsAreDrawnAgainUnlessTheyAreVaried) {
    struct Row {
        std::vector<std::int32_t> slots;
        int patternCount;
        bool varied;
    };
    for (const Row& row :
         {Row{{2, 4, 8, 12, 10, 6, 30}, 4, false}, // all even
          Row{{2, 4, 8, 12, 10, 6, 31}, 4, true},
          Row{{1, 6, 11, 16, 21, 20, 15}, 4, false}, // always 1 on or 1 back
          Row{{1, 6, 11, 16, 21, 20, 17}, 4, true}, Row{{1, 5, 9, 37, 33, 13, 17}, 4, false},
          Row{{1, 5, 9, 37, 33, 13, 17}, 3, true}})
        EXPECT_EQ(isVaried(row.slots, row.patternCount), row.varied)
            << testing::PrintToString(row.slots);
}

} // namespace
