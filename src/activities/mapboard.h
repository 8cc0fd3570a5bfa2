// The board of the map game without its pictures: the terrain, the moves that are queued, and the
// walk that they make.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A place on the board by column and row, counted from the left upper corner. It may lie off the
/// board.
struct MapCell {
    int x = 0;
    int y = 0;
    friend bool operator==(const MapCell&, const MapCell&) = default;
};

struct MapMove {
    int direction; ///< 0 to 7
    int length;    ///< in cells; a move without length is passed over
};

/// The size and the terrain. Without columns or rows every cell is off the board.
class MapBoard {
  public:
    static constexpr int kMostAside = 1000; ///< columns, rows
    static constexpr int kMostCells = 250'000;

    [[nodiscard]] int columns() const { return columns_; }
    [[nodiscard]] int rows() const { return rows_; }
    // Kept to the limits above. Another number makes all of the board open ground.
    void setColumns(int columns);
    void setRows(int rows);

    /// Row by row. What is missing is open ground, what is too much counts for nothing.
    void setTerrain(std::string_view terrain);
    [[nodiscard]] bool contains(MapCell cell) const;
    /// The trap, 1 to 9, on a cell of the board; 0 on open ground.
    [[nodiscard]] int trapAt(MapCell cell) const;

  private:
    int columns_ = 0;
    int rows_ = 0;
    std::string terrain_; ///< a character for each cell
};

/// The queue of moves, and a walk through it from a cell on. A walk takes its moves out of the
/// queue by its own place in it; the queue stays.
class MapWalk {
  public:
    static constexpr int kDirections = 8;

    [[nodiscard]] static bool isDirection(int number) {
        return number >= 0 && number < kDirections;
    }

    /// Its direction must be one.
    void add(MapMove move) { moves_.push_back(move); }
    /// The move that is being made is none of the queue any more, and stays.
    void clear();
    [[nodiscard]] std::size_t queued() const { return moves_.size(); }

    /// From the first move on, none of which is taken yet.
    void begin(MapCell start);
    /// Forgets the current move.
    void stop() { left_ = 0; }
    /// Makes the next move the current one; none when all were taken.
    std::optional<MapMove> takeMove();
    /// The current move has cells left.
    [[nodiscard]] bool isMoving() const { return left_ > 0; }
    /// One cell in the direction of the current move.
    void step();

    [[nodiscard]] MapCell cell() const { return cell_; }
    /// Of the current move, or the last one.
    [[nodiscard]] int direction() const { return direction_; }

  private:
    std::vector<MapMove> moves_;
    std::size_t next_ = 0;
    int direction_ = 0;
    int left_ = 0;
    MapCell cell_;
};
