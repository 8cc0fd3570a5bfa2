#include "world/rules.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

using testing::SizeIs;
using world::Numbers;
using world::PlayerRecord;

namespace {

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

class NewGameTest : public testing::Test {
  protected:
    PlayerRecord player;
    std::vector<std::string> lines;
    world::Report report = [this](std::string_view line) { lines.emplace_back(line); };
};

TEST_F(NewGameTest, DoorsFollowTheirRulesInEveryGame) {
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

TEST_F(NewGameTest, ReportsTheDoorsAndTheFirstItems) {
    world::newGame(player, report);
    const auto said = std::exchange(lines, {});
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

/// Sets numbers of a record by their places; those of activities count from the activity's first.
struct Numbered {
    PlayerRecord record;

    void set(std::size_t from, std::size_t count) {
        std::ranges::fill(record.numbers().subspan(from, count), 0);
    }
    void setActivities(std::size_t from, std::size_t count, std::size_t activities = 10) {
        for (std::size_t i = 0; i < activities; ++i) set(165 + 58 * i + from, count);
    }
    void setLevels(std::size_t from, std::size_t count) {
        for (const std::size_t base : {93, 104, 143, 154}) set(base + from, count);
    }
    /// By the rules of a new game, with what chance made of the doors and queues.
    void startGame(const PlayerRecord& chance) {
        record.missingSlots = chance.missingSlots;
        record.pattern = chance.pattern;
        record.currentLocation = 12;
        set(60, 12);
        setLevels(6, 1);
        set(115, 28);
        for (const auto& [from, count] : {std::pair(1, 20), {28, 5}, {41, 1}, {46, 12}})
            setActivities(static_cast<std::size_t>(from), static_cast<std::size_t>(count));
        for (const std::size_t from : {21, 26}) setActivities(from, 1, 8);
        for (std::size_t i = 0; i < 8; ++i) record.activities[i].queue = chance.activities[i].queue;
    }
};

// Every number of the record is out of range or unlikely, and all that a game keeps is kept.
TEST_F(NewGameTest, AGameEndsWhatBelongsToItAndANewPlayerKnowsNothing) {
    for (const int number :
         {7, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        std::ranges::fill(player.numbers(), number);
        Numbered game{player};
        world::newGame(player, report);
        game.startGame(player);
        EXPECT_TRUE(std::ranges::equal(player.numbers(), game.record.numbers())) << number;
        EXPECT_EQ(player.pattern[3][3], number);

        std::ranges::fill(player.numbers(), number);
        Numbered start{player};
        start.setLevels(0, 11);
        start.setActivities(0, 58);
        for (const std::size_t base : {93, 104, 143, 154})
            for (const std::size_t one : {base, base + 5}) start.record.numbers()[one] = 1;
        for (auto& activity : start.record.activities)
            activity.autoLeveling = activity.currentLevel = 1;
        world::resetNewPlayer(player, report);
        start.startGame(player);
        EXPECT_TRUE(std::ranges::equal(player.numbers(), start.record.numbers())) << number;
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
