#include "platform/host/movies/changedblocks.h"

#include <algorithm>

namespace platform {

ChangedBlocks::ChangedBlocks(int width, int height, int blockWidth, int blockHeight)
    : width_(width), height_(height), blockWidth_(blockWidth), blockHeight_(blockHeight),
      columns_((width + blockWidth - 1) / blockWidth),
      rows_((height + blockHeight - 1) / blockHeight),
      marks_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {}

void ChangedBlocks::markAll() { std::ranges::fill(marks_, std::uint8_t{1}); }

void ChangedBlocks::putBack() {
    for (; taken_ < rects_.size(); ++taken_) {
        const Rect& rect = rects_[taken_];
        for (int row = rect.top; row < rect.bottom; ++row)
            for (int column = rect.left; column < rect.right; ++column) mark(column, row);
    }
}

std::optional<Rect> ChangedBlocks::take() {
    if (taken_ == rects_.size()) collect();
    if (taken_ == rects_.size()) return std::nullopt;
    const Rect& blocks = rects_[taken_++];
    const Rect pixels{blocks.left * blockWidth_, blocks.top * blockHeight_,
                      blocks.right * blockWidth_, blocks.bottom * blockHeight_};
    return intersection(pixels, {0, 0, width_, height_});
}

void ChangedBlocks::collect() {
    rects_.clear();
    open_.clear();
    taken_ = 0;
    for (int row = 0; row < rows_; ++row) collectRow(row);
    std::ranges::fill(marks_, std::uint8_t{0});
}

void ChangedBlocks::collectRow(int row) {
    nextOpen_.clear();
    for (int column = 0; column < columns_;) {
        if (!block(column, row)) {
            ++column;
            continue;
        }
        const int left = column;
        while (column < columns_ && block(column, row)) ++column;
        add({left, row, column, row + 1});
    }
    std::swap(open_, nextOpen_);
}

/// Makes an equal run in the row before longer, or begins a rectangle.
void ChangedBlocks::add(const Rect& run) {
    const auto above = std::ranges::lower_bound(
        open_, run.left, {}, [this](std::size_t index) { return rects_[index].left; });
    if (above != open_.end() && rects_[*above].left == run.left &&
        rects_[*above].right == run.right) {
        rects_[*above].bottom = run.bottom;
        nextOpen_.push_back(*above);
        return;
    }
    nextOpen_.push_back(rects_.size());
    rects_.push_back(run);
}

} // namespace platform
