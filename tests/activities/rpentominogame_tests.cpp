// The pentomino game, played with the mouse.
#include "pentominofixture.h"

#include <array>
#include <bit>
#include <functional>

using namespace testing_support;
using platform::Point;
using Strings = std::vector<std::string>;

namespace {

/// Where a piece goes, in a rectangle of 10 x 6 that all of them fill.
struct Placement {
    int piece;
    int view;
    int column;
    int row;
    std::uint64_t cells;
};
constexpr int kCells = kColumns * kRows;

class Tiling {
  public:
    Tiling() {
        for (int piece = 1; piece <= 12; ++piece) {
            std::set<Cells> known;
            for (int view = 0; view < kViews; ++view)
                if (const Cells cells = cellsOf(piece, view); known.insert(cells).second)
                    place(piece, view, cells);
        }
    }
    std::vector<Placement> find() {
        if (!fill(0, 0)) throw std::runtime_error("no tiling");
        return chosen_;
    }

  private:
    void place(int piece, int view, const Cells& cells) {
        const auto [width, height] = sizeOf(cells);
        for (int column = 0; column + width <= kColumns; ++column)
            for (int row = 0; row + height <= kRows; ++row) {
                std::uint64_t mask = 0;
                for (const auto& [x, y] : cells)
                    mask |= std::uint64_t{1} << ((column + x) * kRows + row + y);
                byFirst_[static_cast<std::size_t>(std::countr_zero(mask))].push_back(
                    {piece, view, column, row, mask});
            }
    }
    bool fill(std::uint64_t covered, int used) {
        const auto first = static_cast<std::size_t>(std::countr_one(covered));
        if (first == kCells) return true;
        for (const Placement& next : byFirst_[first]) {
            if ((used & 1 << next.piece) != 0 || (covered & next.cells) != 0) continue;
            chosen_.push_back(next);
            if (fill(covered | next.cells, used | 1 << next.piece)) return true;
            chosen_.pop_back();
        }
        return false;
    }

    std::array<std::vector<Placement>, kCells> byFirst_;
    std::vector<Placement> chosen_;
};

TEST_F(PentominoTest, ARectangleIsSolvedWithTheMouse) {
    for (int row = 1; row <= kRows; ++row)
        play(*game, "setSolutionString", std::to_string(row) + " XXXXXXXXXX");
    for (int piece = 1; piece <= 12; ++piece) addPiece(piece);
    std::vector<Placement> tiling = Tiling().find();
    ASSERT_EQ(tiling.size(), 12u);
    std::rotate(tiling.begin(), tiling.begin() + 5, tiling.end());
    for (const Placement& goal : tiling) {
        SCOPED_TRACE(testing::Message() << "piece " << goal.piece << " view " << goal.view);
        std::vector<int> sounds{kPickedUp};
        pickUp(goal.piece);
        if (goal.view >= 4) {
            visit(goal.piece, kAtFlipper);
            sounds.push_back(kFlips);
        }
        while (viewOf(goal.piece) != goal.view && sounds.size() < 9) {
            visit(goal.piece, kAtRotater);
            sounds.push_back(kRotates);
        }
        EXPECT_EQ(takeHeard(), Strings{"piecePickedUp"}) << "and not solved before";
        carryToCell(goal.piece, goal.column, goal.row);
        letGo();
        sounds.push_back(kSnaps);
        EXPECT_EQ(takePlayed(), sounds);
        EXPECT_EQ(cellOf(goal.piece), std::to_string(goal.column) + "," + std::to_string(goal.row));
    }
    EXPECT_EQ(takeHeard(), Strings{"solved"});
    const Placement& last = tiling.back();
    dragToCell(last.piece, last.column, last.row);
    EXPECT_EQ(takeHeard(), (Strings{"piecePickedUp", "solved"})) << "again";
}

TEST_F(PentominoTest, SnappingToTheNearestCell) {
    // By the size of cells: from where on a piece comes to a column. The first is reached from
    // beside the board, by one pixel more where the half of a cell is no whole number.
    struct Row {
        int size;
        int from[3];
        int end; ///< where it does not fit any more: five cells in ten
    };
    const Row rows[] = {{20, {-10, 10, 30}, 110}, {21, {-11, 11, 32}, 116}, {1, {-1, 1, 2}, 6}};
    set(*game, "cellsV", kColumns);
    for (const bool vertical : {false, true})
        for (const Row& row : rows) {
            addPiece(12);
            setView(12, vertical ? 1 : 0);
            set(*game, vertical ? "cellHeight" : "cellWidth", row.size);
            const auto drop = [&](int offset) {
                pickUp(12);
                carry(12, {kBoard.x + (vertical ? 0 : offset), kBoard.y + (vertical ? offset : 0)});
                letGo();
                return get(*game, vertical ? "pieceCellY" : "pieceCellX", "12");
            };
            for (int i = 0; i < 3; ++i) {
                SCOPED_TRACE(testing::Message() << "size " << row.size << " cell " << i);
                EXPECT_EQ(drop(row.from[i]), std::to_string(i));
                EXPECT_EQ((vertical ? pieceOf(12).y() - kBoard.y : pieceOf(12).x() - kBoard.x),
                          i * row.size);
                EXPECT_EQ(drop(row.from[i] - 1), i == 0 ? "" : std::to_string(i - 1));
                EXPECT_EQ(isHome(12), i == 0);
            }
            EXPECT_EQ(drop(row.end - 1), "5");
            EXPECT_EQ(drop(row.end), "");
            EXPECT_TRUE(isHome(12));
        }
}

TEST_F(PentominoTest, PiecesThatOverlapGoHome) {
    for (const int piece : {2, 4, 12}) addPiece(piece);
    dragToCell(2, 0, 0); // a cross
    dragToCell(4, 1, 1); // its first cell is the cross's middle
    EXPECT_TRUE(isHome(4));
    EXPECT_EQ(takePlayed(), (std::vector{kPickedUp, kSnaps, kPickedUp, kGoesHome}));
    dragToCell(4, 2, 2); // into the corner of its grid
    EXPECT_EQ(cellOf(4), "2,2");
    dragToCell(4, 2, 1);
    EXPECT_EQ(cellOf(4), ",") << "its second cell is free, the first one is not";
    dragToCell(2, 1, 0);
    EXPECT_EQ(cellOf(2), "1,0") << "one cell on, over cells that were its own";
    dragToCell(12, 0, 1);
    EXPECT_EQ(cellOf(12), ",");
    dragToCell(12, 0, 3);
    EXPECT_EQ(cellOf(12), "0,3") << "what was lifted has left nothing";
}

TEST_F(PentominoTest, AnchoredPiecesAndReset) {
    for (const int piece : {2, 4, 9, 12}) addPiece(piece);
    dragToCell(2, 0, 0);
    dragToCell(4, 4, 0);
    dragToCell(12, 0, 4);
    set(*game, "pieceIsAnchored", 7, "2");
    EXPECT_EQ(get(*game, "pieceIsAnchored", "2") + get(*game, "pieceIsAnchored", "4"), "10");
    takeHeard();
    dragToCell(2, 5, 3);
    EXPECT_EQ(cellOf(2), "0,0");
    EXPECT_EQ(takeHeard(), Strings{});
    set(*game, "cellHeight", 1); // by its place, 12 lies within the board no longer
    game->reset();
    set(*game, "cellHeight", kCellSize);
    EXPECT_EQ(cellOf(2) + " " + cellOf(4) + " " + cellOf(12), "0,0 , ,");
    EXPECT_TRUE(isHome(4) && isHome(12));
    dragToCell(9, 0, 0);
    EXPECT_EQ(cellOf(9), ",") << "the anchored one covers its cells still";
    dragToCell(9, 0, 4);
    EXPECT_EQ(cellOf(9), "0,4") << "those of the others are free";
    set(*game, "pieceIsAnchored", 0, "2");
    game->reset();
    EXPECT_EQ(cellOf(2), ",");
}

TEST_F(PentominoTest, OnceAVisit) {
    addPiece(4);
    addPiece(10);
    constexpr int kTurned[] = {1, 2, 3, 0, 7, 4, 5, 6};
    constexpr int kFlipped[] = {4, 5, 6, 7, 0, 1, 2, 3};
    for (int view = 0; view < kViews; ++view) {
        setView(4, view);
        pickUp(4);
        visit(4, kAtRotater);
        EXPECT_EQ(viewOf(4), kTurned[view]);
        visit(4, kAtRotater);
        EXPECT_EQ(viewOf(4), kTurned[kTurned[view]]);
        letGo();
        setView(4, view);
        pickUp(4);
        visit(4, kAtFlipper);
        EXPECT_EQ(viewOf(4), kFlipped[view]);
        carry(4, kAtFlipper);
        carry(4, kAtRotater);
        EXPECT_EQ(viewOf(4), view) << "from one tool to the other";
        carry(4, kAtFlipper);
        EXPECT_EQ(viewOf(4), view);
        carry(4, kAside);
        letGo();
        EXPECT_TRUE(isHome(4));
    }
    setView(4, 0);
    takePlayed();
    // On both the flipper counts. What was left on a tool holds the next piece up until it is off.
    set(*game, "rotaterGraphicID", kMissing);
    set(*game, "rotaterGraphicID", -1);
    EXPECT_EQ(get(*game, "rotaterGraphicID"), "2");
    addPicture(5, 80, 40, 'r', 520, 60);
    set(*game, "rotaterGraphicID", 5);
    pickUp(4);
    carry(4, {545, 45});
    EXPECT_EQ(viewOf(4), 4);
    letGo();
    pickUp(10);
    carry(10, {530, 30});
    carry(10, kAside);
    carry(10, {530, 80});
    letGo();
    EXPECT_EQ(viewOf(10), 1);
    EXPECT_EQ(takePlayed(),
              (std::vector{kPickedUp, kFlips, kGoesHome, kPickedUp, kRotates, kGoesHome}));
    EXPECT_FALSE(window.input().hitTest({525, 20})) << "tools are not clicked";
}

TEST_F(PentominoTest, APieceThatIsPutAwayWhileItIsHeld) {
    addPiece(2);
    addPiece(12);
    pickUp(2);
    carryToCell(2, 6, 2);
    game->setPieceCellXY(2, 0, 0);
    carryToCell(2, 3, 2);
    letGo();
    EXPECT_EQ(cellOf(2), "3,2");
    dragToCell(12, 0, 1);
    EXPECT_EQ(cellOf(12), "0,1") << "the cells where it was put are free";
    dragToCell(12, 0, 5);
    pickUp(2);
    game->setPieceCellXY(2, 0, 0);
    visit(2, kAtRotater);
    game->reset();
    carryToCell(2, 0, 0);
    window.mouseReleaseLost(); // a drop, too
    window.idle();
    EXPECT_EQ(cellOf(2), "0,0");
    EXPECT_EQ(cellOf(12), ",") << "sent home by reset";
    window.mouseMove({400, 400});
    EXPECT_EQ(cellOf(2), "0,0");
}

TEST_F(PentominoTest, HandlersThatDestroy) {
    const std::function<void()> ways[] = {
        [this] { dragToCell(4, 0, 0); },
        [this] { play(*game, "setPieceCellXY", "4 0 0"); },
        [this] { set(*game, "pieceCellX", 0, "4"); },
    };
    for (const auto& way : ways) {
        if (!game) start();
        addPiece(4);
        game->setPieceCellXY(4, 1, 0);
        play(*game, "setSolutionString", "1 XX");
        play(*game, "setSolutionString", "2 XXX");
        takePlayed();
        game->attachHandler("solved", [this] { game.reset(); });
        way();
        EXPECT_FALSE(game);
        EXPECT_EQ(window.trinketCount(), 0u);
        EXPECT_FALSE(window.input().mouseTarget());
        EXPECT_FALSE(std::ranges::count(takePlayed(), kSnaps));
    }
    start();
    addPiece(4);
    game->attachHandler("piecePickedUp", [this] { game.reset(); });
    pickUp(4);
    window.mouseMove({3, 3});
    window.mouseUp({3, 3});
    EXPECT_EQ(window.trinketCount(), 0u);
    // Only the piece goes, or another comes in its place.
    start();
    addPiece(4);
    game->attachHandler("piecePickedUp", [this] { addPiece(4); });
    dragToCell(4, 0, 0);
    EXPECT_TRUE(isHome(4));
    game->attachHandler("piecePickedUp", [] {});
    play(*game, "setSolutionString", "1 XX");
    play(*game, "setSolutionString", "2 XXX");
    game->attachHandler("solved", [this] { addPiece(4); });
    dragToCell(4, 0, 0);
    EXPECT_TRUE(isHome(4));
    game->setPieceCellXY(4, 1, 0);
    EXPECT_EQ(cellOf(4), "1,0");
}

} // namespace
