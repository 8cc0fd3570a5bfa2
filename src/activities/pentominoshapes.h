// The twelve pentominoes in all the ways in which they can lie.
#pragma once

#include <array>

/// One way in which a piece lies: its cells in the left upper corner of a grid of 5 x 5.
struct PentominoShape {
    static constexpr int kSide = 5;

    /// Row after row.
    std::array<bool, kSide * kSide> cells{};
    int width = 0; ///< cells
    int height = 0;

    [[nodiscard]] constexpr bool has(int row, int column) const {
        return cells[static_cast<std::size_t>(row * kSide + column)];
    }
};

inline constexpr int kPentominoes = 12;
inline constexpr int kPentominoViews = 8;

[[nodiscard]] constexpr bool isPentomino(int number) {
    return number >= 1 && number <= kPentominoes;
}
[[nodiscard]] constexpr bool isPentominoView(int view) {
    return view >= 0 && view < kPentominoViews;
}

/// Pieces count from 1. Views 1 to 3 are view 0 turned clockwise by so many quarters, 4 to 7 are 0
/// to 3 mirrored left to right.
[[nodiscard]] const PentominoShape& pentominoShape(int piece, int view);
/// The view after a quarter clockwise, as it is seen.
[[nodiscard]] int pentominoTurned(int view);
[[nodiscard]] int pentominoFlipped(int view);
