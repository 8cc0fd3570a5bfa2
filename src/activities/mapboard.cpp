#include "mapboard.h"

#include <algorithm>
#include <array>

namespace {

constexpr char kOpenGround = '0';

/// The way of one step, by direction.
constexpr std::array<MapCell, MapWalk::kDirections> kSteps{
    {{0, -1}, {0, 1}, {1, 0}, {-1, 0}, {1, -1}, {-1, -1}, {1, 1}, {-1, 1}}};

/// What a side may have beside `other` ones.
int side(int wanted, int other) {
    const int most = std::min(MapBoard::kMostAside, MapBoard::kMostCells / std::max(other, 1));
    return std::clamp(wanted, 0, most);
}

} // namespace

// The board

void MapBoard::setColumns(int columns) {
    columns = side(columns, rows_);
    if (columns == columns_) return;
    columns_ = columns;
    setTerrain({});
}

void MapBoard::setRows(int rows) {
    rows = side(rows, columns_);
    if (rows == rows_) return;
    rows_ = rows;
    setTerrain({});
}

void MapBoard::setTerrain(std::string_view terrain) {
    const auto cells = static_cast<std::size_t>(columns_ * rows_);
    terrain_ = terrain.substr(0, cells);
    terrain_.resize(cells, kOpenGround);
}

bool MapBoard::contains(MapCell cell) const {
    return cell.x >= 0 && cell.x < columns_ && cell.y >= 0 && cell.y < rows_;
}

int MapBoard::trapAt(MapCell cell) const {
    const char ground = terrain_[static_cast<std::size_t>(cell.x + cell.y * columns_)];
    return ground > kOpenGround && ground <= '9' ? ground - kOpenGround : 0;
}

// The walk

void MapWalk::clear() {
    moves_.clear();
    next_ = 0;
}

void MapWalk::begin(MapCell start) {
    next_ = 0;
    left_ = 0;
    cell_ = start;
}

std::optional<MapMove> MapWalk::takeMove() {
    if (next_ == moves_.size()) return std::nullopt;
    const MapMove move = moves_[next_++];
    direction_ = move.direction;
    left_ = std::max(move.length, 0);
    return move;
}

void MapWalk::step() {
    const MapCell way = kSteps[static_cast<std::size_t>(direction_)];
    cell_.x += way.x;
    cell_.y += way.y;
    --left_;
}
