// The board of the pentomino game without its pictures: which cells pieces cover, and which they
// are to cover.
#pragma once

#include "pentominoshapes.h"

#include <cstddef>
#include <string_view>
#include <vector>

struct PentominoCell {
    int column = 0; ///< from 0
    int row = 0;
    friend bool operator==(const PentominoCell&, const PentominoCell&) = default;
};

class PentominoBoard {
  public:
    static constexpr int kDefaultSide = 20; ///< cells
    static constexpr int kLongestSide = 1000;

    PentominoBoard() { clear(); }

    [[nodiscard]] int columns() const { return columns_; }
    [[nodiscard]] int rows() const { return rows_; }
    /// From 1 to kLongestSide. Nothing is covered, or to be covered, afterwards.
    void resize(int columns, int rows);

    [[nodiscard]] bool contains(const PentominoShape& shape, PentominoCell at) const;
    // Of shapes that the board contains.
    [[nodiscard]] bool isFree(const PentominoShape& shape, PentominoCell at) const;
    void cover(const PentominoShape& shape, PentominoCell at) { mark(shape, at, true); }
    void uncover(const PentominoShape& shape, PentominoCell at) { mark(shape, at, false); }

    /// The first cells of a row, as characters: '-' is not to be covered. Row and length must fit.
    void setTarget(int row, std::string_view cells);
    [[nodiscard]] bool isTarget(PentominoCell cell) const { return target_[index(cell)] != kFree; }
    /// Whether the cells covered are those that are to be, character by character.
    [[nodiscard]] bool isSolved() const { return covered_ == target_; }

  private:
    static constexpr char kFree = '-';
    static constexpr char kCovered = 'X';

    void clear();
    void mark(const PentominoShape& shape, PentominoCell at, bool covered);
    [[nodiscard]] std::size_t index(PentominoCell cell) const {
        return static_cast<std::size_t>(cell.row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(cell.column);
    }
    template <class Visit>
    static bool everyCell(const PentominoShape& shape, PentominoCell at, Visit visit);

    int columns_ = kDefaultSide;
    int rows_ = kDefaultSide;
    std::vector<char> covered_; ///< row after row
    std::vector<char> target_;
};
