// The pieces of the pentomino game in all their views, and what scripts do with them and the board.
#include "pentominofixture.h"

#include "scene/aobackground.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Strings = std::vector<std::string>;

namespace {

TEST(PentominoShapesTest, TwelvePiecesInEightViews) {
    std::set<Cells> all;
    for (int piece = 1; piece <= 12; ++piece) {
        for (int view = 0; view < kViews; ++view) {
            SCOPED_TRACE(testing::Message() << "piece " << piece << " view " << view);
            const Cells cells = cellsOf(piece, view);
            const PentominoShape& shape = pentominoShape(piece, view);
            for (int row = 0; row < 5; ++row)
                for (int column = 0; column < 5; ++column)
                    EXPECT_EQ(shape.has(row, column), cells.contains({column, row}));
            EXPECT_EQ(Cell(shape.width, shape.height), sizeOf(cells));
            EXPECT_EQ(cellsOf(piece, pentominoTurned(view)), turned(cells)) << "as it is seen";
            EXPECT_EQ(cellsOf(piece, pentominoFlipped(view)), mirrored(cells));
            EXPECT_EQ(cells.size(), 5u);
            all.insert(cells);
        }
    }
    EXPECT_EQ(all.size(), 63u) << "as many fixed pentominoes as there are";
}

TEST_F(PentominoTest, EachViewIsSeenAndStandsInTheHome) {
    for (int piece = 1; piece <= 12; ++piece) {
        addPiece(piece);
        EXPECT_EQ(viewOf(piece), 0);
        for (int view = 0; view < kViews; ++view) {
            SCOPED_TRACE(testing::Message() << "piece " << piece << " view " << view);
            setView(piece, view);
            const Cells cells = cellsOf(piece, view);
            const auto [width, height] = sizeOf(cells);
            const Point place = placeAtHome(piece, view);
            EXPECT_EQ(pieceOf(piece).boundingRectangle(),
                      (Rect{place.x, place.y, place.x + width * kCellSize,
                            place.y + height * kCellSize}));
            machine.clock().now += 200; // it stands
            window.idle();
            for (int x = 0; x < width; ++x)
                for (int y = 0; y < height; ++y) {
                    const int seen = *window.backBuffer().pixels().at(place.x + x * kCellSize + 10,
                                                                      place.y + y * kCellSize + 10);
                    EXPECT_EQ(seen, cells.contains({x, y}) ? 'A' + piece - 1 : 0);
                }
        }
        setView(piece, 8);
        setView(piece, -1);
        EXPECT_EQ(viewOf(piece), 7);
    }
    game->setPieceHomeBox(12, 10, 20, 43, 90); // 33 wide, the piece 20 x 100
    EXPECT_EQ(placeOf(pieceOf(12)), "16,-10");
    setView(12, 0);
    EXPECT_EQ(placeOf(pieceOf(12)), "-23,70") << "halves are rounded toward zero";
    EXPECT_EQ(pieceOf(12).z(), 4);
    game->setZ(8);
    EXPECT_EQ(pieceOf(12).z(), 9);
}

TEST_F(PentominoTest, NewSizesEmptyTheBoard) {
    game = make<RPentominoGame>("0 0 0");
    EXPECT_EQ(get(*game, "cellsH") + "x" + get(*game, "cellsV"), "20x20");
    EXPECT_TRUE(game->boundingRectangle().empty());
    start();
    addPiece(2);
    addPiece(4);
    dragToCell(2, 3, 1);
    play(*game, "setSolutionString", "1 X");
    const std::string place = placeOf(pieceOf(2));
    set(*game, "cellsH", kColumns);
    dragToCell(4, 5, 3);
    EXPECT_EQ(cellOf(4), "5,3") << "in the corner of the cross";
    dragToCell(4, 3, 2);
    EXPECT_TRUE(isHome(4));
    for (const char* side : {"cellsH", "cellsV"}) {
        set(*game, side, 9);
        EXPECT_EQ(placeOf(pieceOf(2)), place);
        dragToCell(4, 3, 2);
        EXPECT_EQ(cellOf(4), "3,2") << "nothing is covered";
        game->setPieceCellXY(2, 0, 3);
        EXPECT_EQ(cellOf(2), "0,3");
        game->setPieceCellXY(2, 3, 1);
        EXPECT_TRUE(isHome(2)) << "what left has uncovered nothing of the other";
        game->reset();
        game->setPieceCellXY(2, 3, 1);
    }
    EXPECT_EQ(game->boundingRectangle(), (Rect{100, 60, 280, 240}));
    set(*game, "cellsH", 2'000'000);
    set(*game, "cellsV", 2'000'000);
    set(*game, "cellWidth", 2'000'000);
    set(*game, "cellHeight", -5);
    EXPECT_EQ(game->boundingRectangle(), (Rect{100, 60, 1'000'100, 60}));
    EXPECT_EQ(get(*game, "cellsH") + " " + get(*game, "cellsV"), "1000 1000");
    EXPECT_EQ(cellOf(2), ",") << "without a height";
}

TEST_F(PentominoTest, WhatIsRefused) {
    addPiece(2); // 3 x 3
    addPiece(12);
    const std::string number = "RPentominoGame: invalid piece number";
    const std::string place = "RPentominoGame: invalid (X,Y) for piece 2";
    struct Row {
        const char* what;
        const char* words;
        std::string text;
    };
    const Row methods[] = {
        {"setPieceCellXY", "0 1 1", number},
        {"setPieceCellXY", "13 1 1", number},
        {"setPieceCellXY", "3 1 1", "RPentominoGame: no piece for piece number 3"},
        {"setPieceCellXY", "2 -1 0", place},
        {"setPieceCellXY", "2 0 -1", place},
        {"setPieceCellXY", "2 8 0", place},
        {"setPieceCellXY", "2 0 4", place},
        {"setPieceCellXY", "2 2147483647 0", place},
        {"setPieceCellXY", "2 7 3", ""},
        {"setPieceHomeBox", "0 1 2 3 4", number},
        {"setPieceHomeBox", "13 1 2 3 4", number},
        {"setPieceHomeBox", "1 1 2 3 4", ""},
        {"setSolutionString", "0 X", "RPentominoGame: invalid row number"},
        {"setSolutionString", "7 X", "RPentominoGame: invalid row number"},
        {"setSolutionString", "6 XXXXXXXXXX", ""},
        {"setSolutionString", "6 XXXXXXXXXXX", "RPentominoGame: solution string too long"},
    };
    for (const Row& row : methods) {
        play(*game, row.what, row.words);
        EXPECT_EQ(takeBoxes(kAlert), row.text.empty() ? Strings{} : Strings{row.text})
            << row.what << " " << row.words;
    }
    EXPECT_EQ(cellOf(2), "7,3");
    for (const int value : {0, -4}) {
        set(*game, "cellsH", value);
        set(*game, "cellsV", value);
        EXPECT_EQ(takeBoxes(kAlert), (Strings{"RPentominoGame: cellsH must be greater than 0",
                                              "RPentominoGame: cellsV must be greater than 0"}));
    }
    for (const char* property :
         {"pieceCellX", "pieceCellY", "pieceGraphicID", "pieceIsAnchored", "pieceView"})
        for (const char* wrong : {"0", "13", "-1", ""}) {
            set(*game, property, 1, wrong);
            EXPECT_EQ(takeBoxes(kAlert), Strings{number}) << property;
            EXPECT_EQ(get(*game, property, wrong), "");
            EXPECT_EQ(takeBoxes(kAlert), Strings{}) << "reading is no mistake";
        }
    EXPECT_EQ(get(*game, "pieceGraphicID", "3") + get(*game, "pieceView", "3") +
                  get(*game, "pieceCellX", "3"),
              "-10");
    EXPECT_EQ(cellOf(2), "7,3");
    set(*game, "cellsV", 7);
    game->setPieceCellXY(2, 7, 3);
    // Where it does not fit it goes home; the same by its column and its row.
    game->setPieceCellXY(12, 0, 1);
    set(*game, "pieceCellX", 5, "2");
    set(*game, "pieceCellY", 4, "2");
    EXPECT_EQ(cellOf(2), "5,4");
    set(*game, "pieceCellX", 8, "2");
    EXPECT_EQ(takeBoxes(kAlert), Strings{place});
    set(*game, "pieceCellX", 1, "2");
    set(*game, "pieceCellY", 0, "2");
    EXPECT_TRUE(isHome(2));
    set(*game, "pieceCellY", 3, "2");
    EXPECT_TRUE(isHome(2)) << "it has no column";
}

TEST_F(PentominoTest, ScriptsTurnPiecesOnTheBoard) {
    addPiece(12);
    addPiece(4);
    addPiece(2);
    game->setPieceCellXY(12, 0, 0);
    setView(12, 1);
    EXPECT_EQ(cellOf(12), "0,0");
    game->setPieceCellXY(4, 1, 0);
    EXPECT_EQ(cellOf(4), "1,0") << "where the piece lay before";
    setView(12, 2);
    EXPECT_TRUE(isHome(12)) << "it does not fit";
    game->setPieceCellXY(12, 9, 0);
    EXPECT_EQ(takeBoxes(kAlert), Strings{"RPentominoGame: invalid (X,Y) for piece 12"});
    setView(12, 3);
    game->setPieceCellXY(12, 9, 1);
    setView(12, 0);
    EXPECT_TRUE(isHome(12)) << "it would lie beyond the board";
    game->setPieceHomeBox(4, 0, 300, 100, 400);
    game->setPieceCellXY(2, 0, 0);
    EXPECT_EQ(cellOf(2), "0,0") << "all cells are free again";

    // A new piece takes the slot, and nothing of the old one stays.
    set(*game, "pieceGraphicID", kMissing, "2");
    EXPECT_EQ(cellOf(2), "0,0");
    set(*game, "pieceGraphicID", kPiecePictures + 5, "2");
    EXPECT_EQ(get(*game, "pieceGraphicID", "2"), "105");
    EXPECT_EQ(placeOf(pieceOf(5)), "0,0") << "where the resource places it";
    game->setPieceCellXY(4, 0, 0);
    EXPECT_EQ(cellOf(4), "0,0");
    set(*game, "piecesVisible", 0);
    addPiece(3);
    EXPECT_FALSE(pieceOf(3).isVisible() || pieceOf(4).isVisible());
    set(*game, "piecesVisible", 5);
    EXPECT_TRUE(pieceOf(3).isVisible() && pieceOf(4).isVisible());
    EXPECT_EQ(get(*game, "piecesVisible"), "1");

    // The board takes along what lies on it.
    game->offset(30, 7);
    EXPECT_EQ(placeOf(pieceOf(4)), "130,67");
    EXPECT_EQ(cellOf(4), "0,0");
    EXPECT_TRUE(isHome(3));
}

TEST_F(PentominoTest, ItIsSolvedWhenThePatternIsCovered) {
    addPiece(4);
    addPiece(2);
    EXPECT_EQ(takeHeard(), Strings{});
    play(*game, "setSolutionString", "1 XX");
    play(*game, "setSolutionString", "2 XXXXXXXXXX");
    play(*game, "setSolutionString", "2 XXX-------");
    game->setPieceCellXY(4, 1, 0);
    EXPECT_EQ(takeHeard(), Strings{});
    game->setPieceCellXY(2, 5, 2);
    game->setPieceCellXY(4, 0, 0);
    EXPECT_EQ(takeHeard(), Strings{}) << "another piece is too much";
    game->reset();
    EXPECT_EQ(takeHeard(), Strings{}) << "nobody puts a piece down";
    game->setPieceCellXY(4, 0, 0);
    EXPECT_EQ(takeHeard(), Strings{"solved"});
    setView(4, 8);
    EXPECT_EQ(takeHeard(), Strings{"solved"});
    play(*game, "setSolutionString", "1 Xx");
    setView(4, 0);
    EXPECT_EQ(takeHeard(), Strings{}) << "only X is covered by a piece";
}

TEST_F(PentominoTest, ThePatternIsSeenAndStamped) {
    AseqBuilder scenery;
    scenery.block(640, 480, 's').sequence({entry(0, 50)});
    window.setBackground(std::make_unique<AOBackground>(640, 480, scenery.image()));
    const auto pixel = [this](int column, int row, int line) {
        window.idle();
        return static_cast<char>(*window.backBuffer().pixels().at(
            game->x() + column * kCellSize + 3, game->y() + row * kCellSize + line));
    };
    const auto cells = [&] {
        std::string seen;
        for (const Cell& cell : {Cell{0, 0}, {1, 0}, {2, 0}, {0, 1}})
            seen += pixel(cell.first, cell.second, 5);
        return seen;
    };
    play(*game, "setSolutionString", "1 X-?");
    game->stamp();
    EXPECT_EQ(cells(), "ssss") << "there is no box";
    EXPECT_EQ(window.stampCount(), 0u);
    set(*game, "solutionBoxGraphicID", kMissing);
    EXPECT_EQ(get(*game, "solutionBoxGraphicID"), "-1");
    set(*game, "solutionBoxGraphicID", kBox);
    EXPECT_EQ(cells(), "bsbs");
    EXPECT_EQ(pixel(0, 0, 10), 's') << "through its hole";
    game->stamp();
    play(*game, "setSolutionString", "1 -X");
    EXPECT_EQ(cells(), "bbbs");
    game->offset(0, kCellSize); // the stamp stays
    EXPECT_EQ(cells(), "sbbs");
    game->offset(0, -kCellSize);
    game->setVisible(false);
    EXPECT_EQ(cells(), "bsbs");
    game->unstamp();
    EXPECT_EQ(cells(), "ssss") << "the scenery is what it was";
    game->unstamp();
    game->setVisible(true);
    EXPECT_EQ(cells(), "sbbs");
    set(*game, "cellsV", 3);
    EXPECT_EQ(cells(), "ssss") << "no pattern any more";
    play(*game, "setSolutionString", "2 X");
    EXPECT_EQ(cells(), "sssb");
    set(*game, "cellHeight", 40);
    EXPECT_EQ(pixel(0, 2, 5), 'b');
    game->stamp();
    game.reset();
    window.idle();
    EXPECT_EQ(*window.backBuffer().pixels().at(103, 105), 'b') << "it stays without the game";
}

TEST_F(PentominoTest, SoundsAndCursors) {
    for (const char* cursor : {"pieceGrabAOCursorID", "pieceSpotAOCursorID"})
        EXPECT_EQ(get(*game, cursor), "-1");
    addPiece(2);
    const auto cursors = [this](int piece) {
        return std::pair(pieceOf(piece).cursor(), pieceOf(piece).grabCursor());
    };
    EXPECT_EQ(cursors(2), std::pair(OMTrinket::defaultCursor, OMTrinket::defaultGrabCursor));
    set(*game, "pieceGrabAOCursorID", 7);
    EXPECT_EQ(cursors(2), std::pair(OMTrinket::defaultCursor, 7));
    set(*game, "pieceSpotAOCursorID", 6);
    addPiece(4);
    EXPECT_EQ(cursors(2), std::pair(6, 7));
    EXPECT_EQ(cursors(4), std::pair(6, 7));
    set(*game, "pieceGrabAOCursorID", 65535);
    EXPECT_EQ(cursors(4), std::pair(6, OMTrinket::defaultGrabCursor)) << "ids have 16 bits";
    OMTrinketWindow::setCursorLocator(nullptr);
    set(*game, "pieceSpotAOCursorID", 5);
    EXPECT_EQ(cursors(4), std::pair(6, OMTrinket::defaultGrabCursor));
    EXPECT_EQ(takeFailures(), Strings(2, "Cursor URL is not installed in RPentominoGame"));

    uninstallSounds();
    set(*game, "pieceSnappedSoundID", -1);
    dragToCell(4, 0, 0);
    EXPECT_EQ(takeFailures(), Strings{"Extended Sound URL is not installed in RPentominoGame"});
    EXPECT_EQ(cellOf(4), "0,0");
}

} // namespace
