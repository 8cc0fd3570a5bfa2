// The board of the peg game against a model: which jumps there are, and whether one is left.
#include "activities/pegboard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr int kHoles = 15;

/// Lines and columns are counted from 0.
int lineOf(int hole) {
    int line = 0;
    while (hole > (line + 1) * (line + 2) / 2) ++line;
    return line;
}
int columnOf(int hole) { return hole - 1 - lineOf(hole) * (lineOf(hole) + 1) / 2; }

/// The hole that is jumped over: two steps lead along a line, a column, or the third direction.
int between(int from, int to) {
    const int lines = lineOf(to) - lineOf(from);
    const int columns = columnOf(to) - columnOf(from);
    const auto isWay = [](int steps) { return steps == 0 || steps == 2 || steps == -2; };
    if (from == to || !isWay(lines) || !isWay(columns) || lines * columns < 0) return 0;
    const int line = lineOf(from) + lines / 2;
    return 1 + line * (line + 1) / 2 + columnOf(from) + columns / 2;
}

TEST(PegBoardTest, AJumpGoesTwoStepsOverAPegIntoAnEmptyHole) {
    std::minstd_rand random(7);
    int ways = 0;
    for (int game = 0; game < 2000; ++game) {
        PegBoard board;
        std::vector<bool> pegs(kHoles + 1);
        const unsigned density = random() % 9 + 1;
        for (int hole = 1; hole <= kHoles; ++hole) {
            pegs[hole] = random() % 10 < density;
            board.setPeg(hole, pegs[hole]);
        }
        bool any = false;
        for (int from = 1; from <= kHoles; ++from)
            for (int to = 1; to <= kHoles; ++to) {
                const int over = between(from, to);
                if (game == 0 && over) ++ways;
                const bool legal = over && pegs[from] && pegs[over] && !pegs[to];
                any = any || legal;
                const auto jump = board.legalJump(from, to);
                ASSERT_EQ(jump ? jump->over : 0, legal ? over : 0) << from << " to " << to;
            }
        ASSERT_EQ(board.hasLegalJump(), any);
        ASSERT_EQ(board.pegCount(), std::ranges::count(pegs, true));
    }
    EXPECT_EQ(ways, 36);
}

} // namespace
