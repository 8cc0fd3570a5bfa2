// A piece of the pentomino game: an animation with a frame for each way in which it can lie, which
// the player drags.
#pragma once

#include "omao.h"
#include "pentominoboard.h"

class PentominoPiece;

/// Who hears what the player does with a piece. The piece may be destroyed in each.
class PentominoPlayer {
  public:
    virtual void piecePickedUp(PentominoPiece& piece) = 0;
    virtual void pieceDragged(PentominoPiece& piece) = 0;
    virtual void pieceDropped(PentominoPiece& piece) = 0;
    /// Where it would lie on free cells, on what turns it, and at home.
    [[nodiscard]] virtual std::vector<platform::Rect>
    piecePlaces(const PentominoPiece& piece) const = 0;

  protected:
    ~PentominoPlayer() = default;
};

class PentominoPiece final : public OMAnimation {
  public:
    /// At its embedded place. `number` counts from 1.
    PentominoPiece(PentominoPlayer& player, int number, OMTrinketWindow& window,
                   std::shared_ptr<AOImage> image, int id);

    [[nodiscard]] const PentominoShape& shape() const { return pentominoShape(number_, view_); }
    [[nodiscard]] int view() const { return view_; }
    /// One of the existing views.
    void setView(int view);

    /// Where it covers the board, if it does.
    std::optional<PentominoCell> covers;

    [[nodiscard]] HandUse handUse() const override {
        return isMovable() ? HandUse::Drag : HandUse::None;
    }
    [[nodiscard]] std::optional<std::vector<platform::Rect>> dropPlaces() const override {
        return player_.piecePlaces(*this);
    }
    void onBeginDrag(platform::Point point) override;
    void dragBy(int& dx, int& dy) override;
    void onDrop(platform::Point point) override;
    void onReleaseLost() override;

  private:
    void letGo();

    PentominoPlayer& player_;
    int number_;
    int view_ = 0;
    bool held_ = false;
};
