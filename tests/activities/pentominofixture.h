// What tests of the pentomino game stand on: the pieces told once more, pictures of them, a board
// with tools and homes, and a hand that carries the pieces.
#pragma once

#include "ompp/curbuilder.h"
#include "src/gamefixture.h"

#include "activities/rpentgme.h"
#include "omcursor.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// The pieces, told once more: cells as coordinates, which are turned and mirrored.

using Cell = std::pair<int, int>; ///< x to the right, y down
using Cells = std::set<Cell>;

inline constexpr int kViews = 8;
inline constexpr const char* kDrawn[] = {"XX .X XX",  ".X XXX .X", "XX .XX ..X",  "XX XXX",
                                         ".X XXX X",  "X XXX X",   "..X ..X XXX", "XX .X .XX",
                                         "XXXX ...X", "..XX XXX",  "X XX X X",    "XXXXX"};

inline Cells read(const char* drawn) {
    Cells cells;
    int x = 0;
    int y = 0;
    for (; *drawn; ++drawn, ++x) {
        if (*drawn == 'X') cells.insert({x, y});
        if (*drawn != ' ') continue;
        x = -1;
        ++y;
    }
    return cells;
}
template <class Map>
inline Cells mapped(const Cells& cells, Map map) {
    Cells moved;
    for (const Cell& cell : cells) moved.insert(map(cell));
    int left = 9;
    int top = 9;
    for (const auto& [x, y] : moved) {
        left = std::min(left, x);
        top = std::min(top, y);
    }
    Cells shifted;
    for (const auto& [x, y] : moved) shifted.insert({x - left, y - top});
    return shifted;
}
inline Cells turned(const Cells& cells) { // clockwise, y pointing down
    return mapped(cells, [](Cell cell) { return Cell{-cell.second, cell.first}; });
}
inline Cells mirrored(const Cells& cells) {
    return mapped(cells, [](Cell cell) { return Cell{-cell.first, cell.second}; });
}
inline Cells cellsOf(int piece, int view) {
    Cells cells = read(kDrawn[piece - 1]);
    for (int i = 0; i < view % 4; ++i) cells = turned(cells);
    return view < 4 ? cells : mirrored(cells);
}
inline Cell sizeOf(const Cells& cells) {
    Cell size{0, 0};
    for (const auto& [x, y] : cells)
        size = {std::max(size.first, x + 1), std::max(size.second, y + 1)};
    return size;
}

// Pictures. Those of the pieces are 101 to 112.
inline constexpr int kPiecePictures = 100;
inline constexpr int kFlipper = 1; ///< 80 x 40
inline constexpr int kRotater = 2; ///< 80 x 40
inline constexpr int kBox = 3;     ///< 20 x 20, of the solution, with a hole
inline constexpr int kMissing = 99;

// The board, and the size of its cells.
inline constexpr int kColumns = 10;
inline constexpr int kRows = 6;
inline constexpr int kCellSize = 20;
inline constexpr platform::Point kBoard{100, 60};

// Sounds.
inline constexpr int kFlips = 21;
inline constexpr int kGoesHome = 22;
inline constexpr int kPickedUp = 23;
inline constexpr int kRotates = 24;
inline constexpr int kSnaps = 25;

inline constexpr std::uint32_t kAlert = 0x3000; ///< style of its boxes

/// The positions in the sequence show the views in this order.
inline AseqBuilder pieceArt(int piece) {
    AseqBuilder builder;
    AOSequence sequence;
    for (const int view : {0, 4, 6, 2, 1, 5, 7, 3}) {
        const Cells cells = cellsOf(piece, view);
        const auto [width, height] = sizeOf(cells);
        std::vector<std::string> rows(
            static_cast<std::size_t>(height * kCellSize),
            std::string(static_cast<std::size_t>(width * kCellSize), '.'));
        for (const auto& [x, y] : cells)
            for (int line = 0; line < kCellSize; ++line)
                rows[static_cast<std::size_t>(y * kCellSize + line)].replace(
                    static_cast<std::size_t>(x * kCellSize), kCellSize, kCellSize,
                    static_cast<char>('A' + piece - 1));
        sequence.push_back(entry(static_cast<int>(builder.frames.size()), 50));
        builder.frame(rows);
    }
    sequence.push_back(entry(AOEntry::kLoop));
    return builder.sequence(sequence);
}

/// A board of 10 x 6 cells of 20 pixels with tools at its right, and the homes of the pieces below.
class PentominoTest : public GameObjectTest {
  protected:
    PentominoTest() {
        for (int piece = 1; piece <= 12; ++piece)
            pictures[kPiecePictures + piece] = pieceArt(piece);
        addPicture(kFlipper, 80, 40, 'f', 520, 10);
        addPicture(kRotater, 80, 40, 'r', 520, 140);
        std::vector<std::string> box(20, std::string(20, 'b'));
        box[10] = std::string(20, '.');
        pictures[kBox] = AseqBuilder().frame(box).sequence({entry(0, 50)});
        OMTrinketWindow::setCursorLocator([](int id) -> std::shared_ptr<const OMCursor> {
            if (id < 1) return OMCursor::load(id);
            return std::make_shared<const OMCursor>(id, buildCursor({CurPicture{}}));
        });
        start();
    }
    ~PentominoTest() override { OMTrinketWindow::setCursorLocator(nullptr); }

    void start() {
        game = make<RPentominoGame>("100 60 3");
        set(*game, "cellsH", kColumns);
        set(*game, "cellsV", kRows);
        set(*game, "cellWidth", kCellSize);
        set(*game, "cellHeight", kCellSize);
        set(*game, "flipperGraphicID", kFlipper);
        set(*game, "rotaterGraphicID", kRotater);
        set(*game, "pieceFlippedSoundID", kFlips);
        set(*game, "pieceGoHomeSoundID", kGoesHome);
        set(*game, "piecePickedUpSoundID", kPickedUp);
        set(*game, "pieceRotatedSoundID", kRotates);
        set(*game, "pieceSnappedSoundID", kSnaps);
        for (const char* event : {"piecePickedUp", "solved"}) listen(*game, event);
    }
    static platform::Rect homeOf(int piece) {
        const int left = 20 + (piece - 1) % 6 * 100;
        const int top = 240 + (piece - 1) / 6 * 110;
        return {left, top, left + 100, top + 110};
    }
    void addPiece(int piece) {
        set(*game, "pieceGraphicID", kPiecePictures + piece, std::to_string(piece));
        const platform::Rect home = homeOf(piece);
        game->setPieceHomeBox(piece, home.left, home.top, home.right, home.bottom);
    }
    PentominoPiece& pieceOf(int piece) {
        OMTrinket* found = window.findTrinket([&](const OMTrinket& each) {
            const auto* animation = dynamic_cast<const PentominoPiece*>(&each);
            return animation && animation->resourceId() == kPiecePictures + piece;
        });
        if (!found) throw std::runtime_error("no such piece");
        return dynamic_cast<PentominoPiece&>(*found);
    }
    std::string cellOf(int piece) {
        const std::string number = std::to_string(piece);
        return get(*game, "pieceCellX", number) + "," + get(*game, "pieceCellY", number);
    }
    int viewOf(int piece) { return std::stoi(get(*game, "pieceView", std::to_string(piece))); }
    void setView(int piece, int view) { set(*game, "pieceView", view, std::to_string(piece)); }
    /// The left upper corner of a piece in its home.
    static platform::Point placeAtHome(int piece, int view) {
        const platform::Rect home = homeOf(piece);
        const auto [width, height] = sizeOf(cellsOf(piece, view));
        return {home.left + (100 - width * kCellSize) / 2, home.bottom - height * kCellSize};
    }
    bool isHome(int piece) {
        const platform::Point place = placeAtHome(piece, viewOf(piece));
        return pieceOf(piece).x() == place.x && pieceOf(piece).y() == place.y;
    }

    // With the mouse.

    void pickUp(int piece) {
        const auto [x, y] = *cellsOf(piece, viewOf(piece)).begin();
        const OMTrinket& trinket = pieceOf(piece);
        const platform::Point at{trinket.x() + x * kCellSize + 5, trinket.y() + y * kCellSize + 5};
        window.mouseMove(at);
        window.mouseDown(at);
    }
    /// Its left upper corner comes there.
    void carry(int piece, platform::Point to) {
        const OMTrinket& trinket = pieceOf(piece);
        const platform::Point mouse = window.input().lastMousePosition();
        window.mouseMove({mouse.x + to.x - trinket.x(), mouse.y + to.y - trinket.y()});
    }
    void carryToCell(int piece, int column, int row) {
        carry(piece, {kBoard.x + column * kCellSize, kBoard.y + row * kCellSize});
    }
    void letGo() { window.mouseUp(window.input().lastMousePosition()); }
    void dragToCell(int piece, int column, int row) {
        pickUp(piece);
        carryToCell(piece, column, row);
        letGo();
    }
    /// To a tool and away from it, with some steps on it.
    void visit(int piece, platform::Point tool) {
        carry(piece, tool);
        carry(piece, {tool.x + 3, tool.y + 1});
        carry(piece, {tool.x + 1, tool.y});
        carry(piece, kAside);
    }

    static constexpr platform::Point kAtFlipper{530, 30};
    static constexpr platform::Point kAtRotater{530, 140};
    static constexpr platform::Point kAside{400, 100};
    std::unique_ptr<RPentominoGame> game;
};

} // namespace testing_support
