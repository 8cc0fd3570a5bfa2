// What changed of a picture, on a grid of blocks, and few rectangles that cover it.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

class ChangedBlocks {
  public:
    /// A picture of that size, in blocks of the other; those at its right and bottom may be
    /// smaller.
    ChangedBlocks(int width, int height, int blockWidth, int blockHeight);

    [[nodiscard]] int columns() const { return columns_; }
    void mark(int column, int row) { block(column, row) = 1; }
    void markAll();
    /// Rectangles that were collected and not taken count as changed again.
    void putBack();

    /// The next rectangle, in pixels. Without any it collects those of the blocks marked since;
    /// none when there are no more.
    [[nodiscard]] std::optional<Rect> take();

    [[nodiscard]] std::size_t memory() const { return marks_.size(); }

  private:
    [[nodiscard]] std::uint8_t& block(int column, int row) {
        return marks_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                      static_cast<std::size_t>(column)];
    }
    void collect();
    void collectRow(int row);
    void add(const Rect& run);

    int width_;
    int height_;
    int blockWidth_;
    int blockHeight_;
    int columns_;
    int rows_;
    std::vector<std::uint8_t> marks_;
    std::vector<Rect> rects_;           ///< in blocks, in the order of their first rows
    std::size_t taken_ = 0;             ///< of rects_
    std::vector<std::size_t> open_;     ///< those that reach the row before, from left to right
    std::vector<std::size_t> nextOpen_; ///< those that reach the current row
};

} // namespace platform
