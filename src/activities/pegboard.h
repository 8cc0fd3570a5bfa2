// The board of the peg game without its pictures: fifteen holes in a triangle, the jumps from one
// to another over a third, and which holes have pegs.
//
//         1
//        2 3
//       4 5 6
//      7 8 9 10
//    11 12 13 14 15
#pragma once

#include <array>
#include <optional>

class PegBoard {
  public:
    static constexpr int kHoles = 15;

    /// Holes by their numbers, from 1.
    struct Jump {
        int from;
        int to;
        int over;
    };

    [[nodiscard]] static constexpr bool isHole(int number) {
        return number >= 1 && number <= kHoles;
    }

    // Of existing holes.
    [[nodiscard]] bool hasPeg(int hole) const { return pegs_[slot(hole)]; }
    void setPeg(int hole, bool there) { pegs_[slot(hole)] = there; }
    [[nodiscard]] int pegCount() const;
    /// The one that may be done now from one hole to another; none if none may.
    [[nodiscard]] std::optional<Jump> legalJump(int from, int to) const;
    [[nodiscard]] bool hasLegalJump() const;

  private:
    [[nodiscard]] static constexpr std::size_t slot(int hole) {
        return static_cast<std::size_t>(hole - 1);
    }
    [[nodiscard]] bool isLegal(const Jump& jump) const {
        return hasPeg(jump.from) && !hasPeg(jump.to) && hasPeg(jump.over);
    }

    std::array<bool, kHoles> pegs_{};
};
