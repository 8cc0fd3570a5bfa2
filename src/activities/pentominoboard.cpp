#include "pentominoboard.h"

#include <algorithm>

void PentominoBoard::clear() {
    const std::size_t cells = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
    covered_.assign(cells, kFree);
    target_.assign(cells, kFree);
}

void PentominoBoard::resize(int columns, int rows) {
    columns_ = columns;
    rows_ = rows;
    clear();
}

bool PentominoBoard::contains(const PentominoShape& shape, PentominoCell at) const {
    return at.column >= 0 && at.row >= 0 && at.column <= columns_ - shape.width &&
           at.row <= rows_ - shape.height;
}

/// Whether `visit` says yes to all cells of the shape.
template <class Visit>
bool PentominoBoard::everyCell(const PentominoShape& shape, PentominoCell at, Visit visit) {
    for (int row = 0; row < shape.height; ++row)
        for (int column = 0; column < shape.width; ++column)
            if (shape.has(row, column) && !visit(PentominoCell{at.column + column, at.row + row}))
                return false;
    return true;
}

bool PentominoBoard::isFree(const PentominoShape& shape, PentominoCell at) const {
    return everyCell(shape, at,
                     [this](PentominoCell cell) { return covered_[index(cell)] == kFree; });
}

void PentominoBoard::mark(const PentominoShape& shape, PentominoCell at, bool covered) {
    everyCell(shape, at, [&](PentominoCell cell) {
        covered_[index(cell)] = covered ? kCovered : kFree;
        return true;
    });
}

void PentominoBoard::setTarget(int row, std::string_view cells) {
    std::ranges::copy(cells, target_.begin() + static_cast<std::ptrdiff_t>(index({0, row})));
}
