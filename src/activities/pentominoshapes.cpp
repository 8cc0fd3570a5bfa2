#include "pentominoshapes.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr int kSide = PentominoShape::kSide;
constexpr int kQuarters = 4;

/// View 0 of each; a stroke ends a row.
constexpr std::string_view kPieces[kPentominoes] = {
    "##/ #/##",   //
    " #/###/ #",  //
    "##/ ##/  #", //
    "##/###",     //
    " #/###/#",   //
    "#/###/#",    //
    "  #/  #/###",
    "##/ #/ ##", //
    "####/   #", //
    "  ##/###",  //
    "#/##/#/#",  //
    "#####",
};

constexpr void set(PentominoShape& shape, int row, int column) {
    shape.cells[static_cast<std::size_t>(row * kSide + column)] = true;
    shape.height = std::max(shape.height, row + 1);
    shape.width = std::max(shape.width, column + 1);
}

constexpr PentominoShape read(std::string_view rows) {
    PentominoShape shape;
    int row = 0;
    int column = 0;
    for (const char cell : rows) {
        if (cell == '#') set(shape, row, column);
        ++column;
        if (cell != '/') continue;
        ++row;
        column = 0;
    }
    return shape;
}

/// A shape whose cell (row, column) is where `from` has the cell that `source` tells.
template <class Source>
constexpr PentominoShape moved(const PentominoShape& from, int height, int width, Source source) {
    PentominoShape shape;
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column)
            if (source(from, row, column)) set(shape, row, column);
    return shape;
}

constexpr PentominoShape turned(const PentominoShape& shape) {
    return moved(shape, shape.width, shape.height,
                 [](const PentominoShape& from, int row, int column) {
                     return from.has(from.height - 1 - column, row);
                 });
}

constexpr PentominoShape mirrored(const PentominoShape& shape) {
    return moved(shape, shape.height, shape.width,
                 [](const PentominoShape& from, int row, int column) {
                     return from.has(row, from.width - 1 - column);
                 });
}

using Views = std::array<PentominoShape, kPentominoViews>;

constexpr std::array<Views, kPentominoes> makeAll() {
    std::array<Views, kPentominoes> all;
    for (std::size_t piece = 0; piece < all.size(); ++piece) {
        PentominoShape shape = read(kPieces[piece]);
        for (std::size_t view = 0; view < kQuarters; ++view) {
            all[piece][view] = shape;
            all[piece][view + kQuarters] = mirrored(shape);
            shape = turned(shape);
        }
    }
    return all;
}

constexpr std::array<Views, kPentominoes> kAll = makeAll();

} // namespace

const PentominoShape& pentominoShape(int piece, int view) {
    return kAll[static_cast<std::size_t>(piece - 1)][static_cast<std::size_t>(view)];
}

int pentominoTurned(int view) {
    // What is mirrored goes through its views the other way round.
    const int step = view < kQuarters ? 1 : kQuarters - 1;
    return view / kQuarters * kQuarters + (view + step) % kQuarters;
}

int pentominoFlipped(int view) { return (view + kQuarters) % kPentominoViews; }
