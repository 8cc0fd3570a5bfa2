// The peg game: which jumps there are, whole games played with the mouse, and what scripts set up.
#include "activities/rpeggame.h"

#include "src/gamefixture.h"

#include "omrandom.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <random>
#include <set>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Strings = std::vector<std::string>;

namespace {

// The triangle, told once more: a hole is a line and a column, each counted from 0.

struct Hole {
    int line;
    int column;
};
std::optional<int> numberOf(Hole hole) {
    if (hole.line < 0 || hole.line > 4 || hole.column < 0 || hole.column > hole.line)
        return std::nullopt;
    return 1 + hole.line * (hole.line + 1) / 2 + hole.column;
}
std::vector<Hole> allHoles() {
    std::vector<Hole> all;
    for (int line = 0; line < 5; ++line)
        for (int column = 0; column <= line; ++column) all.push_back({line, column});
    return all;
}
Hole hole(int number) { return allHoles().at(static_cast<std::size_t>(number - 1)); }

/// A hole has neighbours in six directions; the one over which it is two steps from one to another.
std::optional<int> between(int from, int to) {
    constexpr Hole kSteps[] = {{0, 1}, {0, -1}, {1, 0}, {-1, 0}, {1, 1}, {-1, -1}};
    const Hole a = hole(from);
    for (const Hole& step : kSteps)
        if (numberOf({a.line + 2 * step.line, a.column + 2 * step.column}) == to)
            return numberOf({a.line + step.line, a.column + step.column});
    return std::nullopt;
}

constexpr int kHoles = 15;
using Pegs = std::vector<bool>; ///< by number

bool isLegal(const Pegs& pegs, int from, int to) {
    const auto over = between(from, to);
    return over && pegs[from] && pegs[*over] && !pegs[to];
}
template <class Visit>
void everyPair(Visit visit) {
    for (int from = 1; from <= kHoles; ++from)
        for (int to = 1; to <= kHoles; ++to) visit(from, to);
}
bool anyIsLegal(const Pegs& pegs) {
    static const auto ways = [] {
        std::vector<std::pair<int, int>> all;
        everyPair([&](int from, int to) {
            if (between(from, to)) all.emplace_back(from, to);
        });
        return all;
    }();
    return std::ranges::any_of(
        ways, [&](const auto& way) { return isLegal(pegs, way.first, way.second); });
}

TEST(PegBoardTest, AJumpGoesTwoStepsOverAPegIntoAnEmptyHole) {
    int legal = 0;
    for (int over = 1; over <= kHoles; ++over) {
        everyPair([&](int from, int to) {
            for (int state = 0; state < 8; ++state) {
                Pegs pegs(kHoles + 1);
                pegs[from] = (state & 1) != 0;
                pegs[over] = (state & 2) != 0;
                pegs[to] = (state & 4) != 0;
                PegBoard board;
                for (int i = 1; i <= kHoles; ++i) board.setPeg(i, pegs[i]);
                const auto jump = board.legalJump(from, to);
                ASSERT_EQ(jump.has_value(), isLegal(pegs, from, to))
                    << from << " to " << to << ", also " << over << ", state " << state;
                if (jump) {
                    ASSERT_EQ(jump->over, over);
                    ++legal;
                }
                ASSERT_EQ(board.pegCount(), std::ranges::count(pegs, true));
            }
        });
    }
    EXPECT_EQ(legal, 36);
}

TEST(PegBoardTest, WhetherAJumpIsLeft) {
    std::minstd_rand random(7);
    for (int i = 0; i < 2000; ++i) {
        PegBoard board;
        Pegs pegs(kHoles + 1);
        const unsigned density = random() % 9 + 1;
        for (int hole = 1; hole <= kHoles; ++hole) {
            pegs[hole] = random() % 10 < density;
            board.setPeg(hole, pegs[hole]);
        }
        ASSERT_EQ(board.hasLegalJump(), anyIsLegal(pegs)) << i;
    }
}

struct Move {
    int from;
    int to;
};

/// Moves from a position to one where no more can be done and so many pegs are left.
bool findGame(Pegs& pegs, int left, std::set<Pegs>& known, std::vector<Move>& moves) {
    if (!known.insert(pegs).second) return false;
    bool over = true;
    bool found = false;
    everyPair([&](int from, int to) {
        if (found || !isLegal(pegs, from, to)) return;
        over = false;
        Pegs after = pegs;
        after[from] = after[static_cast<std::size_t>(*between(from, to))] = false;
        after[to] = true;
        moves.push_back({from, to});
        found = findGame(after, left, known, moves);
        if (!found) moves.pop_back();
    });
    return found || (over && std::ranges::count(pegs, true) == left);
}
std::vector<Move> gameFrom(int empty, int left) {
    Pegs pegs(kHoles + 1, true);
    pegs[0] = pegs[empty] = false;
    std::set<Pegs> known;
    std::vector<Move> moves;
    if (!findGame(pegs, left, known, moves)) throw std::runtime_error("there is no such game");
    return moves;
}

constexpr int kPeg = 7; ///< the picture, 20 x 16

class PegGameTest : public GameObjectTest {
  protected:
    PegGameTest() {
        addPicture(kPeg, 20, 16);
        start();
    }
    void start() {
        game = make<RPegGame>("5");
        set(*game, "pegID", kPeg);
        for (int i = 1; i <= kHoles; ++i) {
            set(*game, "pegX", placeIn(i).x, std::to_string(i));
            set(*game, "pegY", placeIn(i).y, std::to_string(i));
        }
        for (const char* event : {"solved", "noMoreMoves"}) listen(*game, event);
    }
    static Point placeIn(int number) {
        const Hole at = hole(number);
        return {300 + 40 * at.column - 20 * at.line, 50 + 40 * at.line};
    }
    static Point middleOf(int number) {
        const Point place = placeIn(number);
        return {place.x + 10, place.y + 8};
    }
    OMTrinket* pegIn(int number) { return window.input().hitTest(middleOf(number)); }
    void jump(int from, int to) { drag(middleOf(from), middleOf(to)); }
    /// Holes without a peg. All pegs there are lie in a hole, at rest.
    std::vector<int> empty() {
        std::vector<int> none;
        for (int i = 1; i <= kHoles; ++i) {
            const OMTrinket* peg = pegIn(i);
            if (!peg) {
                none.push_back(i);
                continue;
            }
            EXPECT_EQ(peg->x(), placeIn(i).x);
            EXPECT_EQ(peg->y(), placeIn(i).y);
            EXPECT_EQ(peg->z(), 5);
        }
        EXPECT_EQ(window.trinketCount(), kHoles - none.size());
        return none;
    }
    void call(const char* method, const std::string& words = {}) { play(*game, method, words); }

    using Holes = std::vector<int>;
    std::unique_ptr<RPegGame> game;
};

TEST_F(PegGameTest, WholeGames) {
    struct Row {
        int start;
        int left;
        int mostForSolved;
        const char* end;
    };
    const Row rows[] = {
        {1, 1, 1, "solved"},      {5, 2, 1, "noMoreMoves"},  {13, 2, 2, "solved"},
        {4, 3, 2, "noMoreMoves"}, {1, 4, -1, "noMoreMoves"}, {2, 5, PegBoard::kHoles, "solved"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        set(*game, "pegsLeftForSolved", row.mostForSolved);
        call("removePeg", std::to_string(row.start));
        call("reset");
        std::size_t pegs = 14;
        for (const Move& move : gameFrom(row.start, row.left)) {
            EXPECT_EQ(takeHeard(), Strings{});
            jump(move.from, move.to);
            EXPECT_FALSE(pegIn(move.from));
            EXPECT_TRUE(pegIn(move.to));
            ASSERT_EQ(window.trinketCount(), --pegs);
        }
        EXPECT_EQ(takeHeard(), Strings{row.end});
        EXPECT_EQ(empty().size(), static_cast<std::size_t>(kHoles - row.left));
        drag(middleOf(empty().front()), {5, 5}); // nothing is there
        EXPECT_EQ(takeHeard(), Strings{});
    }
}

TEST_F(PegGameTest, WhatIsNoJumpGoesBack) {
    EXPECT_EQ(get(*game, "pegsLeftForSolved"), "15");
    call("reset");
    EXPECT_EQ(empty(), Holes{1});
    for (int from = 2; from <= kHoles; ++from) {
        if (between(from, 1)) continue;
        jump(from, 1); // too far, or only one step
        EXPECT_EQ(empty(), Holes{1}) << from;
    }
    jump(6, 3); // there is a peg
    jump(6, 6);
    drag(middleOf(6), {500, 400});
    // Beside the hole: from left, right, above and below.
    const Point hole = placeIn(1);
    const Point peg = placeIn(6);
    const auto dragTo = [&](int x, int y) {
        drag(middleOf(6), {x + middleOf(6).x - peg.x, y + middleOf(6).y - peg.y});
    };
    for (const Point& way : {Point{-20, 0}, {20, 0}, {0, -16}, {0, 16}})
        dragTo(hole.x + way.x, hole.y + way.y);
    EXPECT_EQ(empty(), Holes{1});
    EXPECT_EQ(takeHeard(), Strings{});
    dragTo(hole.x + 19, hole.y - 15); // over its corner, by a pixel
    EXPECT_EQ(empty(), (Holes{3, 6}));
}

TEST_F(PegGameTest, TheFirstHoleThatIsTouchedCounts) {
    call("reset");
    jump(6, 1); // 3 and 6 are empty
    const Point three = placeIn(3);
    const Point six = placeIn(6);
    // The peg of 13 would jump into 6 over 9, and touches 3 as well.
    set(*game, "pegX", three.x + 10, "6");
    set(*game, "pegY", three.y + 10, "6");
    drag(middleOf(13), {three.x + 15, three.y + 13});
    EXPECT_EQ(empty(), (Holes{3, 6}));
    set(*game, "pegX", six.x, "6");
    set(*game, "pegY", six.y, "6");
    jump(13, 6);
    EXPECT_EQ(empty(), (Holes{3, 9, 13}));
}

TEST_F(PegGameTest, RemovingAndFilling) {
    const auto emptyAfter = [this](const char* method, const std::string& words = {}) {
        call(method, words);
        return empty();
    };
    EXPECT_EQ(empty().size(), 15u) << "a new game has no pegs";
    EXPECT_EQ(emptyAfter("removePeg", "3").size(), 15u);
    EXPECT_EQ(emptyAfter("fill"), Holes{});
    EXPECT_EQ(emptyAfter("removePeg", "5"), Holes{5});
    EXPECT_EQ(emptyAfter("removePeg", "5"), Holes{5});
    EXPECT_EQ(emptyAfter("removePeg", "15"), (Holes{5, 15}));
    EXPECT_EQ(emptyAfter("reset"), Holes{15}) << "the one that was emptied last";
    for (const char* wrong : {"0", "16", "-1", "none"}) {
        call("fill");
        call("removePeg", "8");
        EXPECT_EQ(emptyAfter("removePeg", wrong), Holes{8}) << wrong;
        EXPECT_EQ(emptyAfter("reset"), Holes{1}) << wrong;
    }
}

TEST_F(PegGameTest, AHoleByChance) {
    OMSeedRandom(1);
    std::set<int> emptied;
    for (int i = 0; i < 300; ++i) {
        call("fill");
        if (i % 2 == 0)
            call("removePeg");
        else
            game->invoke("removePeg", {""});
        const Holes removed = empty();
        ASSERT_EQ(removed.size(), 1u);
        emptied.insert(removed[0]);
        call("reset");
        ASSERT_EQ(empty(), removed);
    }
    EXPECT_EQ(emptied.size(), 15u);
}

TEST_F(PegGameTest, HoldingAPeg) {
    EXPECT_EQ(get(*game, "pegMovingZ"), "5");
    call("reset");
    set(*game, "pegMovingZ", 90);
    OMTrinket& peg = *pegIn(6);
    window.mouseDown(middleOf(6));
    EXPECT_EQ(peg.z(), 90);
    set(*game, "pegX", 700, "6");
    set(*game, "pegX", 701, "10");
    EXPECT_EQ(peg.x(), placeIn(6).x) << "one that is held stays under the pointer";
    window.mouseMove(middleOf(1));
    EXPECT_EQ(peg.z(), 90);
    window.mouseReleaseLost();
    window.idle();
    set(*game, "pegX", placeIn(6).x, "6");
    set(*game, "pegX", placeIn(10).x, "10");
    EXPECT_EQ(empty(), (Holes{3, 6})) << "letting go elsewhere is a drop";
    EXPECT_EQ(peg.z(), 5);
    window.mouseDown(middleOf(1));
    EXPECT_EQ(peg.z(), 90);
    call("removePeg", "1"); // while it is held
    window.mouseMove({5, 5});
    window.mouseUp({5, 5});
    EXPECT_EQ(empty(), (Holes{1, 3, 6}));
}

TEST_F(PegGameTest, HandlersThatDestroyAndBeginAnew) {
    const auto lastJump = [this] {
        call("fill");
        for (int i = kHoles; i >= 1; --i)
            if (i != 6 && i != 3) call("removePeg", std::to_string(i));
        jump(6, 1);
    };
    game->attachHandler("solved", [this] {
        heard.emplace_back("anew");
        call("reset"); // takes the peg that is being dropped
    });
    lastJump();
    EXPECT_EQ(takeHeard(), Strings{"anew"});
    EXPECT_EQ(empty(), Holes{1});
    for (const char* event : {"solved", "noMoreMoves"}) {
        start();
        set(*game, "pegsLeftForSolved", event == std::string("solved") ? 1 : 0);
        game->attachHandler(event, [this] { game.reset(); });
        lastJump();
        EXPECT_FALSE(game);
        EXPECT_EQ(window.trinketCount(), 0u);
    }
}

TEST_F(PegGameTest, PicturesAndPlaces) {
    for (const char* index : {"0", "16", "-3", ""}) {
        set(*game, "pegX", 77, index);
        set(*game, "pegY", 77, index);
        EXPECT_EQ(get(*game, "pegX", index) + get(*game, "pegY", index), "") << index;
    }
    for (int i = 1; i <= kHoles; ++i)
        EXPECT_EQ(get(*game, "pegX", std::to_string(i)), std::to_string(placeIn(i).x));

    set(*game, "pegID", RPegGame::kNoGraphic);
    call("fill");
    set(*game, "pegID", 99);
    call("reset");
    EXPECT_EQ(window.trinketCount(), 0u);
    AOImage::setSourceLocator(nullptr);
    set(*game, "pegID", kPeg);
    takeFailures();
    call("fill");
    EXPECT_EQ(takeFailures(), Strings{"SourceURL is not installed in OMAnimation"}) << "once";
    EXPECT_EQ(window.trinketCount(), 0u);

    installPictures();
    call("fill");
    call("removePeg", "13");
    // A larger peg lies in a hole of the size of the first one.
    addPicture(8, 60, 16);
    set(*game, "pegID", 8);
    call("fill");
    call("removePeg", "6");
    drag(middleOf(13), {middleOf(6).x + 19, middleOf(6).y});
    EXPECT_EQ(window.trinketCount(), 13u);
    ASSERT_TRUE(pegIn(6));
    EXPECT_EQ(pegIn(6)->boundingRectangle().width(), 60);
}

} // namespace
