// The pentomino game: the player drags up to twelve pieces onto a board of cells, turns and mirrors
// them by two tools, and has solved it when exactly the cells of a pattern are covered.
//
//     g=RPentominoGame left top z
//
// The pieces lie one above the board's depth. Pieces count from 1 to 12, cells from 0.
#pragma once

#include "omid.h"
#include "omtrinket.h"
#include "pentominoboard.h"
#include "pentominopiece.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class RPentominoGame final : public OMTrinket, private PentominoPlayer {
  public:
    static const OMSClass kClass;

    static constexpr int kNone = -1; ///< instead of the id of a graphic, a sound or a cursor
    static constexpr int kLargestCell = 1000; ///< pixels

    RPentominoGame(OMTrinketWindow& window, platform::Point corner);
    ~RPentominoGame() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    // For scripts. What is refused is told in the alert box.

    [[nodiscard]] int cellsH() const { return board_.columns(); }
    void setCellsH(int columns);
    [[nodiscard]] int cellsV() const { return board_.rows(); }
    void setCellsV(int rows);
    [[nodiscard]] int cellWidth() const { return cellSize_.x; }
    void setCellWidth(int pixels) { setCellSize(&platform::Point::x, pixels); }
    [[nodiscard]] int cellHeight() const { return cellSize_.y; }
    void setCellHeight(int pixels) { setCellSize(&platform::Point::y, pixels); }

    [[nodiscard]] int flipperGraphicID() const { return idOf(flipper_.get()); }
    void setFlipperGraphicID(int id) { replaceTool(flipper_, id); }
    [[nodiscard]] int rotaterGraphicID() const { return idOf(rotater_.get()); }
    void setRotaterGraphicID(int id) { replaceTool(rotater_, id); }
    [[nodiscard]] int solutionBoxGraphicID() const;
    void setSolutionBoxGraphicID(int id);

    // Of the piece whose number is the next argument. Read with a number that is none, they are
    // empty.
    [[nodiscard]] std::string pieceCellX() { return pieceCell(&PentominoCell::column); }
    void setPieceCellX(int column) { movePieceCell(&PentominoCell::column, column); }
    [[nodiscard]] std::string pieceCellY() { return pieceCell(&PentominoCell::row); }
    void setPieceCellY(int row) { movePieceCell(&PentominoCell::row, row); }
    [[nodiscard]] std::string pieceGraphicID() const;
    void setPieceGraphicID(int id);
    [[nodiscard]] std::string pieceIsAnchored() const;
    void setPieceIsAnchored(bool anchored);
    [[nodiscard]] std::string pieceView() const;
    void setPieceView(int view);

    [[nodiscard]] int pieceFlippedSoundID() const { return sounds_.flipped; }
    void setPieceFlippedSoundID(int id) { sounds_.flipped = OMNarrowId(id); }
    [[nodiscard]] int pieceGoHomeSoundID() const { return sounds_.goHome; }
    void setPieceGoHomeSoundID(int id) { sounds_.goHome = OMNarrowId(id); }
    [[nodiscard]] int piecePickedUpSoundID() const { return sounds_.pickedUp; }
    void setPiecePickedUpSoundID(int id) { sounds_.pickedUp = OMNarrowId(id); }
    [[nodiscard]] int pieceRotatedSoundID() const { return sounds_.rotated; }
    void setPieceRotatedSoundID(int id) { sounds_.rotated = OMNarrowId(id); }
    [[nodiscard]] int pieceSnappedSoundID() const { return sounds_.snapped; }
    void setPieceSnappedSoundID(int id) { sounds_.snapped = OMNarrowId(id); }

    [[nodiscard]] int pieceGrabAOCursorID() const { return grabCursorId_; }
    void setPieceGrabAOCursorID(int id);
    [[nodiscard]] int pieceSpotAOCursorID() const { return spotCursorId_; }
    void setPieceSpotAOCursorID(int id);
    [[nodiscard]] bool piecesVisible() const { return piecesVisible_; }
    void setPiecesVisible(bool visible);

    /// Pieces on the board go home, but for those that are anchored.
    void reset();
    void setPieceCellXY(int piece, int column, int row);
    void setPieceHomeBox(int piece, int left, int top, int right, int bottom);
    void setSolutionString(int row, const std::string& cells);
    /// Leaves the boxes of the pattern in the background picture.
    void stamp();
    void unstamp();

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    /// Pieces on it move along.
    void setAttribute(Attribute which, int value, int second = 0) override;

  private:
    void onRetire() override;
    class SolutionBox;

    struct Slot {
        std::unique_ptr<PentominoPiece> piece; ///< or null
        platform::Rect home{};
    };
    struct Sounds {
        std::int16_t flipped = kNone;
        std::int16_t goHome = kNone;
        std::int16_t pickedUp = kNone;
        std::int16_t rotated = kNone;
        std::int16_t snapped = kNone;
    };

    void piecePickedUp(PentominoPiece& piece) override;
    void pieceDragged(PentominoPiece& piece) override;
    void pieceDropped(PentominoPiece& piece) override;
    [[nodiscard]] std::vector<platform::Rect>
    piecePlaces(const PentominoPiece& piece) const override;

    // Slots by the number of the piece.
    [[nodiscard]] Slot& slot(int piece) { return slots_[static_cast<std::size_t>(piece - 1)]; }
    [[nodiscard]] Slot& slotOf(const PentominoPiece& piece);
    [[nodiscard]] const Slot& slotOf(const PentominoPiece& piece) const;
    /// The next argument as the number of a piece.
    [[nodiscard]] const Slot* nextSlot() const;
    /// With a warning for a number that is none.
    [[nodiscard]] Slot* slotFor(int piece);
    [[nodiscard]] Slot* nextSlotFor();

    // Pieces and the board.
    [[nodiscard]] std::optional<PentominoCell> cellUnder(const PentominoPiece& piece) const;
    void lift(PentominoPiece& piece);
    /// False when the handler of "solved" has destroyed the game.
    bool put(PentominoPiece& piece, PentominoCell at);
    void putOrSendHome(PentominoPiece& piece, std::optional<PentominoCell> at);
    /// Its corner when it lies at home.
    [[nodiscard]] platform::Point homeOf(const PentominoPiece& piece) const;
    void sendHome(PentominoPiece& piece);
    void turn(PentominoPiece& piece, int view, int sound);

    [[nodiscard]] std::string pieceCell(int PentominoCell::*axis) const;
    void movePieceCell(int PentominoCell::*axis, int value);
    void setCellSize(int platform::Point::*axis, int pixels);
    void resize(int columns, int rows);
    void spanCells();
    void redraw();
    void paintBoxes(OMMemCanvas& canvas, const OMRegion& clip, platform::Point corner);
    [[nodiscard]] static int idOf(const OMAnimation* graphic);
    void replaceTool(std::unique_ptr<OMAnimation>& tool, int id);
    void giveCursors(PentominoPiece& piece) const;
    static void playSound(int id);

    PentominoBoard board_;
    platform::Point cellSize_{}; ///< pixels
    std::array<Slot, kPentominoes> slots_;
    std::unique_ptr<OMAnimation> flipper_;
    std::unique_ptr<OMAnimation> rotater_;
    std::unique_ptr<SolutionBox> solutionBox_;
    OMSWatch onTool_; ///< the piece that was turned and has not left the tools yet
    bool piecesVisible_ = true;
    Sounds sounds_;
    std::int16_t grabCursorId_ = kNone;
    std::int16_t spotCursorId_ = kNone;
};
