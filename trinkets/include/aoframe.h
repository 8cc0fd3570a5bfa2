// One frame of an animation: rows of packed 8-bit pixels, drawn and hit-tested without being
// unpacked, in eight directions.
//
// A direction is a turn of the frame inside its bounding rectangle: the columns or the rows are
// mirrored, then rows and columns may change places. The hit test goes the same way backwards, so
// that what is drawn is what is hit.
#pragma once

#include "omregion.h"

#include "platform/geometry.h"

#include <array>
#include <cstdint>
#include <span>

class OMMemCanvas;
struct AOLines;

/// One of the eight draw directions.
struct AOTurn {
    bool mirrorColumns;
    bool mirrorRows;
    bool swapAxes;
};

inline constexpr std::array<AOTurn, 8> kAOTurns{{
    {false, false, false},
    {true, false, false},
    {false, true, false},
    {true, true, false},
    {false, true, true},
    {false, false, true},
    {true, true, true},
    {true, false, true},
}};

/// The turn of a draw direction; null for a number that is none.
[[nodiscard]] constexpr const AOTurn* AOTurnOf(int direction) {
    const bool known = direction >= 0 && direction < static_cast<int>(kAOTurns.size());
    return known ? &kAOTurns[static_cast<std::size_t>(direction)] : nullptr;
}

/// A view of a frame; the image that it came from keeps the data.
class AOFrame {
  public:
    /// A frame without pixels.
    AOFrame() = default;
    /// Width and height not below 0; `rows` holds the packed rows, each at its place in `starts`.
    /// Rows that are missing there are transparent. `whole`: none of the others is damaged.
    AOFrame(int width, int height, std::span<const std::uint8_t> rows,
            std::span<const std::uint32_t> starts, bool whole)
        : width_(width), height_(height), rows_(rows), starts_(starts), whole_(whole) {}

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    /// Rows that have data, at most the height.
    [[nodiscard]] int packedRows() const { return static_cast<int>(starts_.size()); }
    /// A packed row and what follows it; 0 <= index < packedRows().
    [[nodiscard]] std::span<const std::uint8_t> packedRow(int index) const {
        return rows_.subspan(starts_[static_cast<std::size_t>(index)]);
    }

    /// The rectangle that the frame covers when it is drawn at `at` (window pixels).
    [[nodiscard]] platform::Rect bounds(platform::Point at, int direction) const;

    /// Draws the opaque pixels that lie in `clip` on an 8-bit canvas, with the upper left corner of
    /// the bounds at `at`. An unknown direction draws nothing, nor does a deeper canvas show it;
    /// see AODeepFrame for those.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at, int direction) const;

    /// Whether the frame drawn at `at` is opaque at `point`. An unknown direction asks for the
    /// window's corner, whatever the point.
    [[nodiscard]] bool hit(platform::Point point, platform::Point at, int direction) const;

  private:
    void drawDamaged(std::span<const std::uint32_t> starts, const AOLines& lines) const;
    [[nodiscard]] bool isOpaque(int column, int row) const;

    int width_ = 0;
    int height_ = 0;
    std::span<const std::uint8_t> rows_;
    std::span<const std::uint32_t> starts_;
    bool whole_ = true;
};
