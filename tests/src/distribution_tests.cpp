#include "world/rules.h"

#include "omrandom.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using world::Numbers;
using world::PlayerRecord;

namespace {

struct Guesses {
    int correct = 0;
    int all = 0;
};

class DistributionTest : public testing::Test {
  protected:
    /// Of the four activities from `first` on.
    void guessed(std::size_t first, const std::array<Guesses, 4>& guesses) {
        for (std::size_t i = 0; i < 4; ++i) {
            player.activities[first + i].correctSinceDistribution = guesses[i].correct;
            player.activities[first + i].guessesSinceDistribution = guesses[i].all;
        }
    }
    std::vector<std::string> distribute(int hub) {
        player.currentLocation = hub;
        world::distributeItems(player, report);
        return std::exchange(lines, {});
    }
    int queued(std::size_t activity) const {
        const auto& queue = player.activities[activity].queue;
        return static_cast<int>(std::ranges::count_if(queue, world::isItem));
    }

    PlayerRecord player;
    std::vector<std::string> lines;
    world::Report report = [this](std::string_view line) { lines.emplace_back(line); };
};

// The counts of each row are at an edge of the table of shares.
TEST_F(DistributionTest, SharesFollowTheRatios) {
    struct Row {
        std::array<Guesses, 4> guesses;
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
                EXPECT_EQ(queued(first + i), row.shares[i]) << row.chosen << " activity " << i;
        }
    }
}

TEST_F(DistributionTest, TheGemsOfTheDoorGoOutInOrder) {
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
    EXPECT_TRUE(std::ranges::equal(player.numbers(), expected.numbers()));

    auto& activity = player.activities[6];
    activity.queue[5] = 28;
    world::removeNextFromQueue(activity);
    EXPECT_THAT(activity.queue, ElementsAre(21, 22, 20, 21, 28, 0));
}

TEST_F(DistributionTest, TheFirstHubHasGlyphsByChance) {
    std::set<int> seen;
    for (int round = 0; round < 100; ++round) {
        distribute(world::location::kCHUB);
        for (std::size_t i = 0; i < 4; ++i)
            for (int item = 0; item < 3; ++item)
                seen.insert(player.activities[i].queue[static_cast<std::size_t>(item)]);
    }
    EXPECT_THAT(seen, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(DistributionTest, NothingHappensWithoutAHubOrItsDoor) {
    player.missingSlots[0].fill(1);
    const auto untouched = [&](int hub) {
        player.currentLocation = hub;
        const PlayerRecord before = player;
        EXPECT_THAT(distribute(hub), IsEmpty());
        return std::ranges::equal(player.numbers(), before.numbers());
    };
    for (const int place : {0, 1, 12, 18, 46, -15}) EXPECT_TRUE(untouched(place)) << place;
    for (const int door : {-1, 5, std::numeric_limits<int>::max()}) {
        player.hubs[1].rounds = door;
        EXPECT_TRUE(untouched(world::location::kOHUB)) << "door " << door;
    }
    player.hubs[1].rounds = 0;
    for (const int slot : {0, -1, std::numeric_limits<int>::min()}) {
        player.missingSlots[0][11] = slot;
        EXPECT_TRUE(untouched(world::location::kOHUB)) << "slot " << slot;
    }
    player.missingSlots[0][11] = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    guessed(4, {{{kLeast, 1}, {kLeast, -1}, {5, -3}, {0, kLeast}}});
    const auto said = distribute(world::location::kOHUB);
    EXPECT_THAT(said, testing::Contains("\tOWS1: Total guesses: 1 Correct guesses: -2147483648 "
                                        "(-2147483648%)"));
    EXPECT_THAT(said, testing::Contains("\tOWS2 gets 2 items"));
}

} // namespace
