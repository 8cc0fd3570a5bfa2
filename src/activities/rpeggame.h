// The peg game: fifteen holes in a triangle (pegboard.h). The player drags a peg over another one
// into an empty hole, and the one that was jumped over goes. The game is over when no jump is left.
//
//     g=RPegGame z      the depth of the pegs at rest
#pragma once

#include "omscrptb.h"
#include "pegboard.h"

#include "platform/geometry.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class OMAnimation;

class RPegGame final : public OMScriptableObject {
  public:
    static const OMSClass kClass;

    static constexpr int kNoGraphic = -1;

    explicit RPegGame(int restingZ);
    ~RPegGame() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    // For scripts.

    /// Picture of the pegs that are made from now on.
    [[nodiscard]] int pegID() const { return pegId_; }
    void setPegID(int id) { pegId_ = id; }
    /// Depth of a peg while it is held.
    [[nodiscard]] int pegMovingZ() const { return movingZ_; }
    void setPegMovingZ(int z) { movingZ_ = z; }
    // Of the hole whose number is the next argument. Empty, and without effect, for none.
    [[nodiscard]] std::string pegX() const;
    void setPegX(int x);
    [[nodiscard]] std::string pegY() const;
    void setPegY(int y);
    /// With so many pegs at most the game is solved when it is over.
    [[nodiscard]] int pegsLeftForSolved() const { return leftForSolved_; }
    void setPegsLeftForSolved(int pegs) { leftForSolved_ = pegs; }

    /// A peg in every empty hole.
    void fill();
    /// Of a hole, or of one by chance. A number that is none removes nothing, and `reset` empties
    /// the first hole from then on.
    void removePeg(std::optional<int> hole);
    /// A peg in every hole but the one that was emptied last.
    void reset();

  private:
    void onRetire() override;
    class Peg;

    [[nodiscard]] std::unique_ptr<Peg>& pegIn(int hole);
    [[nodiscard]] platform::Point& placeOf(int hole);
    /// False without its picture.
    bool makePeg(int hole);
    void takePeg(int hole);
    void putInPlace(Peg& peg);
    void moveHole(int platform::Point::*axis, int value);
    [[nodiscard]] std::optional<int> holeUnder(const Peg& peg);

    // The player.
    /// Those that it may jump to.
    [[nodiscard]] std::vector<platform::Rect> placesFor(const Peg& peg) const;
    void pegHeld(Peg& peg);
    void pegDropped(Peg& peg);
    [[nodiscard]] bool jump(const Peg& peg);

    int restingZ_;
    int movingZ_;
    int pegId_ = kNoGraphic;
    int leftForSolved_ = PegBoard::kHoles;
    int startHole_ = 1; ///< the one that `reset` empties
    PegBoard board_;
    platform::Point pegSize_{}; ///< width and height, of the first peg made
    std::array<platform::Point, PegBoard::kHoles> places_{};
    std::array<std::unique_ptr<Peg>, PegBoard::kHoles> pegs_; ///< by hole
};
