// The rules of levels, of the items that are shared out, and of new games: long plays against a
// model, and numbers that are out of range.
#include "world/rules.h"

#include "omformat.h"
#include "omrandom.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <numeric>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using world::ActivityRecord;
using world::Numbers;
using world::PlayerRecord;
using world::Thresholds;

namespace {

constexpr int kActivity = 6; // OWS2
constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();

int below(int count) { return static_cast<int>(OMRandomBelow(static_cast<std::uint32_t>(count))); }

bool same(const PlayerRecord& a, const PlayerRecord& b) {
    return std::ranges::equal(a.numbers(), b.numbers());
}

class RulesTest : public testing::Test {
  protected:
    std::vector<std::string> take() { return std::exchange(lines, {}); }
    std::vector<std::string> level(const Thresholds& thresholds = {}, int location = kActivity) {
        world::autoLevel(player, location, thresholds, report);
        return take();
    }
    std::vector<std::string> distribute(int hub) {
        player.currentLocation = hub;
        world::distributeItems(player, report);
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
    std::vector<std::string> lines;
    world::Report report = [this](std::string_view line) { lines.emplace_back(line); };
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
    int ups = 0;
    int downs = 0;
    for (int step = 0; step < 100'000; ++step) {
        if (below(40) == 0) {
            limit = {below(14) - 1, below(14) - 1, below(14) - 1, below(25) - 1};
            skill = below(101);
            model.autoLeveling = activity.autoLeveling = below(5);
        }
        const int correct = below(100) < skill;
        world::recordGuess(activity, correct);
        const auto at = static_cast<std::size_t>(model.currentLevel - 1);
        model.correctSinceDistribution += correct;
        model.totalCorrect[at] += correct;
        ++model.guessesSinceDistribution;
        ++model.totalGuesses[at];
        newest.insert(newest.begin(), correct);
        newest.resize(std::min<std::size_t>(newest.size(), 20));
        std::vector<std::string> told;
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
            const bool down = !up && tries == limit.y && right < limit.x;
            ups += up;
            downs += down;
            if (up || down) {
                model.color[at] = up ? 1 : 2;
                if (model.autoLeveling)
                    model.currentLevel = std::clamp(model.currentLevel + (up ? 1 : -1), 1, 4);
                newest.clear();
            }
            if (up)
                told = {"",
                        OMFormat("Auto-leveling has determined player can advance a level in OWS2. "
                                 " New level: %d",
                                 model.currentLevel),
                        OMFormat("\tpoint count: %d, A: %d\tcorrect count: %d, B: %d", points,
                                 limit.a, right, limit.b),
                        ""};
            if (down)
                told = {"",
                        OMFormat("Auto-leveling has determined player needs to go back a level in "
                                 "OWS2.  New level is %d.",
                                 model.currentLevel),
                        OMFormat("\tcorrect count: %d, X: %d\ttry count: %d, Y: %d", right, limit.x,
                                 tries, limit.y),
                        ""};
            ASSERT_EQ(level(limit), told) << "step " << step;
        }
        model.resultCount = static_cast<int>(newest.size());
        model.results.fill(0);
        std::copy(newest.rbegin(), newest.rend(), model.results.begin());
        ASSERT_TRUE(same(player, wanted)) << "step " << step;
    }
    EXPECT_THAT((std::vector{ups, downs}), Each(testing::Gt(300)));
}

TEST_F(RulesTest, LevelRecordsAlwaysAdvanceAndOtherPlacesStay) {
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
    EXPECT_TRUE(same(player, before));
}

TEST_F(RulesTest, NumbersOutOfRangeReachNothingElse) {
    for (const int wrong : {0, 5, -1, 60, kMost, kLeast}) {
        activity = {.autoLeveling = 0, .currentLevel = wrong};
        for (int i = 0; i < 6; ++i) world::recordGuess(activity, true);
        EXPECT_EQ(level().size(), 4u);
        ActivityRecord expected{.autoLeveling = 0, .currentLevel = wrong};
        expected.correctSinceDistribution = expected.guessesSinceDistribution = 6;
        PlayerRecord wanted;
        wanted.activities[kActivity - 1] = expected;
        EXPECT_TRUE(same(player, wanted)) << "level " << wrong;
    }
    for (const int wrong : {-1, 21, kMost, kLeast}) {
        activity = {.correctSinceDistribution = kMost,
                    .guessesSinceDistribution = kMost,
                    .currentLevel = 1,
                    .resultCount = wrong,
                    .totalGuesses = {kMost}};
        world::recordGuess(activity, true);
        EXPECT_THAT(level(), IsEmpty());
        EXPECT_EQ(activity.resultCount, wrong);
        EXPECT_THAT(activity.results, Each(0));
        EXPECT_EQ(activity.correctSinceDistribution, kMost);
        EXPECT_EQ(activity.guessesSinceDistribution, kMost);
        EXPECT_EQ(activity.totalGuesses[0], kMost);
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
        {{{{499, 1000}, {0, 1}, {499, 1000}, {499, 1000}}}, "2B", {3, 4, 3, 2}},
        {{{{499, 1000}, {0, 1}, {0, 1}, {499, 1000}}}, "2C", {2, 4, 4, 2}},
        {{{{1, 2}, {499, 1000}, {0, 1}, {1, 2}}}, "3D", {2, 3, 5, 2}},
        {{{{1, 2}, {1, 2}, {0, 1}, {1, 2}}}, "3E", {2, 2, 6, 2}},
        {{{{}, {}, {2, 4}, {}}}, "3E", {2, 2, 6, 2}},
        {{{{12, 22}, {12, 22}, {1, 22}, {}}}, "3E", {2, 2, 6, 2}},
    };
    for (const int hub : {world::location::kCHUB, world::location::kOHUB}) {
        const std::size_t first = hub == world::location::kCHUB ? 0 : 4;
        player.missingSlots[0].fill(1);
        player.pattern[0].fill(13);
        for (const Row& row : rows) {
            guessed(first, row.guesses);
            const auto said = distribute(hub);
            ASSERT_EQ(said.size(), 11u);
            EXPECT_EQ(said[5].substr(19) + said[6].substr(23), row.chosen);
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_EQ(std::ranges::count_if(player.activities[first + i].queue, world::isItem),
                          row.shares[i])
                    << row.chosen << " activity " << i;
        }
    }
}

TEST_F(RulesTest, TheGemsOfTheDoorGoOutInOrder) {
    player.hubs[1].rounds = 3;
    player.pattern[3] = {20, 21, 22, 99};
    std::iota(player.missingSlots[3].begin(), player.missingSlots[3].end(), 28);
    guessed(4, {{{3, 4}, {7, 7}, {0, 2}, {29, 100}}});
    player.activities[5].queue.fill(1);
    const PlayerRecord before = player;
    EXPECT_THAT(distribute(world::location::kOHUB),
                ElementsAre("Distributing items for OHUB",
                            "\tOWS1: Total guesses: 4 Correct guesses: 3 (75%)",
                            "\tOWS2: Total guesses: 7 Correct guesses: 7 (100%)",
                            "\tOWS3: Total guesses: 2 Correct guesses: 0 (0%)",
                            "\tOWS4: Total guesses: 100 Correct guesses: 29 (29%)",
                            "\tSelected category 3", "\tSelected distribution D",
                            "\tOWS3 gets 5 items", "\tOWS4 gets 3 items", "\tOWS1 gets 2 items",
                            "\tOWS2 gets 2 items"));
    PlayerRecord expected = before;
    expected.currentLocation = world::location::kOHUB;
    const Numbers<6> queues[] = {{22, 20}, {21, 22}, {20, 21, 22, 20, 21}, {22, 20, 21}};
    for (std::size_t i = 0; i < 4; ++i) {
        expected.activities[4 + i].queue = queues[i];
        expected.activities[4 + i].correctSinceDistribution = 0;
        expected.activities[4 + i].guessesSinceDistribution = 0;
    }
    EXPECT_TRUE(same(player, expected));

    auto& longest = player.activities[6];
    longest.queue[5] = 28;
    world::removeNextFromQueue(longest);
    EXPECT_THAT(longest.queue, ElementsAre(21, 22, 20, 21, 28, 0));
}

TEST_F(RulesTest, TheFirstHubHasGlyphsByChance) {
    std::set<int> seen;
    for (int round = 0; round < 100; ++round) {
        distribute(world::location::kCHUB);
        for (std::size_t i = 0; i < 4; ++i)
            for (int item = 0; item < 3; ++item)
                seen.insert(player.activities[i].queue[static_cast<std::size_t>(item)]);
    }
    EXPECT_THAT(seen, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(RulesTest, NothingHappensWithoutAHubOrItsDoor) {
    player.missingSlots[0].fill(1);
    const auto untouched = [&](int hub) {
        player.currentLocation = hub;
        const PlayerRecord before = player;
        EXPECT_THAT(distribute(hub), IsEmpty());
        return same(player, before);
    };
    for (const int place : {0, 1, 12, 18, 46, -15}) EXPECT_TRUE(untouched(place)) << place;
    for (const int door : {-1, 5, kMost}) {
        player.hubs[1].rounds = door;
        EXPECT_TRUE(untouched(world::location::kOHUB)) << "door " << door;
    }
    player.hubs[1].rounds = 0;
    for (const int slot : {0, -1, kLeast}) {
        player.missingSlots[0][11] = slot;
        EXPECT_TRUE(untouched(world::location::kOHUB)) << "slot " << slot;
    }
    player.missingSlots[0][11] = kMost;
    guessed(4, {{{kLeast, 1}, {kLeast, -1}, {5, -3}, {0, kLeast}}});
    const auto said = distribute(world::location::kOHUB);
    EXPECT_THAT(said, testing::Contains("\tOWS1: Total guesses: 1 Correct guesses: -2147483648 "
                                        "(-2147483648%)"));
    EXPECT_THAT(said, testing::Contains("\tOWS2 gets 2 items"));
}

// ---------------------------------------------------------------------------- games

/// Each gem by the order in which its colour and its number first appear: "00 01 ...".
std::string shapeOf(std::span<const std::int32_t> gems) {
    std::vector<int> colors;
    std::vector<int> numbers;
    const auto place = [](std::vector<int>& seen, int one) {
        const auto found = std::ranges::find(seen, one) - seen.begin();
        if (found == std::ssize(seen)) seen.push_back(one);
        return std::to_string(found);
    };
    std::string shape;
    for (const int item : gems) {
        EXPECT_TRUE(item >= 13 && item <= 28) << item;
        shape += place(colors, (item - 13) / 4) + place(numbers, (item - 13) % 4) + " ";
    }
    return shape;
}

bool isPatternOf(std::size_t door, const Numbers<4>& items) {
    constexpr std::string_view kShapes[] = {"00 01 02 03 ", "00 11 22 33 ", "00 01 10 11 ",
                                            "00 01 12 ", "00 11 00 22 "};
    const bool hasApart = door == 2 || door == 3;
    const bool areApart = (items[0] - 13) / 4 + (items[2] - 13) / 4 != 3;
    return shapeOf(std::span(items).first(door == 3 ? 3 : 4)) == kShapes[door] &&
           (!hasApart || areApart) && (door != 3 || items[3] == 0);
}

/// An odd one among them, and not always the same way from one to the next within the pattern.
bool areSlotsOf(std::size_t door, const Numbers<12>& slots) {
    std::set<int> gaps;
    for (std::size_t i = 1; i < slots.size(); ++i)
        gaps.insert(std::abs(slots[i] - slots[i - 1]) % (door == 3 ? 3 : 4));
    const auto [least, most] = std::ranges::minmax(slots);
    return least >= 1 && most <= (door == 4 ? 44 : 39) &&
           std::set<int>(slots.begin(), slots.end()).size() == slots.size() && gaps.size() > 1 &&
           std::ranges::any_of(slots, [](int slot) { return slot % 2 == 1; });
}

TEST_F(RulesTest, DoorsFollowTheirRulesInEveryGame) {
    std::array<std::set<int>, 5> gems;
    std::array<std::set<int>, 5> slots;
    for (int game = 0; game < 10'000; ++game) {
        world::newGame(player, {});
        for (std::size_t door = 0; door < 5; ++door) {
            const auto& pattern = player.pattern[door];
            const auto& missing = player.missingSlots[door];
            ASSERT_TRUE(isPatternOf(door, pattern)) << door;
            ASSERT_TRUE(areSlotsOf(door, missing)) << door;
            gems[door].insert(pattern[0]);
            slots[door].insert(missing.begin(), missing.end());
        }
    }
    for (std::size_t door = 0; door < 5; ++door) {
        EXPECT_THAT(gems[door], SizeIs(16)) << "any gem can be the first";
        EXPECT_THAT(slots[door], SizeIs(door == 4 ? 44 : 39)) << "any position can be empty";
    }
}

TEST_F(RulesTest, ReportsTheDoorsAndTheFirstItems) {
    world::newGame(player, report);
    const auto said = take();
    ASSERT_THAT(said, SizeIs(29));
    EXPECT_EQ(said[0], "\n\nOHUB Pattern");
    for (std::size_t door = 0; door < 5; ++door) {
        const auto& gems = player.pattern[door];
        std::string line = "\tDoor " + std::to_string(door + 1) + "\tPattern: ";
        line += world::itemName(gems[0]) + ", " + world::itemName(gems[1]) + ", " +
                world::itemName(gems[2]) + ", " +
                (door == 3 ? "No Item" : world::itemName(gems[3])) + "\n\t\t\tEmpty Slots: ";
        for (const int slot : player.missingSlots[door]) line += std::to_string(slot) + ", ";
        EXPECT_EQ(said[door + 1] + ", ", line);
    }
    EXPECT_EQ(said[28], "\tOWS4 gets 3 items");

    std::vector<int> queued;
    std::vector<int> wanted;
    for (std::size_t i = 4; i < 8; ++i)
        std::ranges::copy_n(player.activities[i].queue.begin(), 3, std::back_inserter(queued));
    for (const int slot : player.missingSlots[0])
        wanted.push_back(player.pattern[0][static_cast<std::size_t>(slot - 1) % 4]);
    EXPECT_EQ(queued, wanted) << "the gems that the first door misses";
}

/// By the rules of a new game, with what chance made of the doors and queues.
PlayerRecord afterNewGame(PlayerRecord record, const PlayerRecord& chance) {
    record.missingSlots = chance.missingSlots;
    record.pattern = chance.pattern;
    record.currentLocation = 12;
    record.backpack = {};
    record.hubs = {};
    for (auto* levels : {&record.boards, &record.maps})
        for (world::LevelRecord& each : *levels) each.visited = 0;
    for (std::size_t i = 0; i < 10; ++i) {
        ActivityRecord& each = record.activities[i];
        each.results = {};
        each.entryCount = {};
        each.resultCount = each.visited = 0;
        each.items = {};
        each.queue = i < 8 ? chance.activities[i].queue : Numbers<6>{};
        if (i < 8) each.correctSinceDistribution = each.guessesSinceDistribution = 0;
    }
    return record;
}

// Every number of the record is out of range or unlikely, and all that a game keeps is kept.
TEST_F(RulesTest, AGameEndsWhatBelongsToItAndANewPlayerKnowsNothing) {
    for (const int number : {7, -1, kLeast, kMost}) {
        std::ranges::fill(player.numbers(), number);
        PlayerRecord before = player;
        world::newGame(player, report);
        EXPECT_TRUE(same(player, afterNewGame(before, player))) << number;
        EXPECT_EQ(player.pattern[3][3], number);

        std::ranges::fill(player.numbers(), number);
        before = player;
        for (auto* levels : {&before.boards, &before.maps})
            levels->fill({.autoLeveling = 1, .currentLevel = 1});
        before.activities.fill({.autoLeveling = 1, .currentLevel = 1});
        world::resetNewPlayer(player, report);
        EXPECT_TRUE(same(player, afterNewGame(before, player))) << number;
    }
}

// Chance hardly ever draws such slots.
TEST(DoorsTest, SlotsAreDrawnAgainUnlessTheyAreVaried) {
    struct Row {
        std::vector<std::int32_t> slots;
        int patternCount;
        bool varied;
    };
    const Row rows[] = {
        {{2, 4, 8, 12, 10, 6, 30}, 4, false}, // all even
        {{2, 4, 8, 12, 10, 6, 31}, 4, true},
        {{1, 6, 11, 16, 21, 20, 15}, 4, false}, // always 1 on or 1 back
        {{1, 6, 11, 16, 21, 20, 17}, 4, true},
        {{1, 5, 9, 37, 33, 13, 17}, 4, false},
        {{1, 5, 9, 37, 33, 13, 17}, 3, true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(world::isVaried(row.slots, row.patternCount), row.varied)
            << testing::PrintToString(row.slots);
}

} // namespace
