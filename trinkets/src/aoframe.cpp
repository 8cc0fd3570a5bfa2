#include "aoframe.h"

#include "aorow.h"
#include "ommemcanvas.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

namespace {

/// From a frame's rows to the pixels of a canvas. "Along" is the way that the columns of a row lie
/// on the canvas, "across" the way from row to row; both are counted from the corner of the bounds.
class Placement {
  public:
    Placement(const OMPixels& pixels, Point at, const AOTurn& turn, int width, int height)
        : pixels_(pixels), at_(at), turn_(turn), width_(width), height_(height) {}

    /// The rows of the frame that `area` (canvas pixels) shows, half-open.
    struct Rows {
        int first;
        int end;
    };
    [[nodiscard]] Rows rowsOf(const Rect& area) const {
        const Rows across = acrossOf(area);
        if (!turn_.mirrorRows) return across;
        return {height_ - across.end, height_ - across.first};
    }

    /// Draws the part of a row that lies in `area`; false when there is none.
    bool drawRow(std::span<const std::uint8_t> data, int row, const Rect& area,
                 aorow::RowEnd& end) const {
        const Rows rows = rowsOf(area);
        if (row < rows.first || row >= rows.end) return false;
        const int from = turn_.swapAxes ? area.top - at_.y : area.left - at_.x;
        const int to = turn_.swapAxes ? area.bottom - at_.y : area.right - at_.x;
        const int across = turn_.mirrorRows ? height_ - 1 - row : row;
        const int skip = turn_.mirrorColumns ? width_ - to : from;
        const std::ptrdiff_t step =
            turn_.swapAxes ? static_cast<std::ptrdiff_t>(pixels_.stride) : 1;
        const bool back = turn_.mirrorColumns;
        end = aorow::drawRow(data, width_, skip,
                             aorow::PixelLine{pixelAt(back ? to - 1 : from, across),
                                              back ? -step : step, to - from});
        return true;
    }

  private:
    [[nodiscard]] Rows acrossOf(const Rect& area) const {
        if (turn_.swapAxes) return {area.left - at_.x, area.right - at_.x};
        return {area.top - at_.y, area.bottom - at_.y};
    }
    [[nodiscard]] std::uint8_t* pixelAt(int along, int across) const {
        return turn_.swapAxes ? pixels_.at(at_.x + across, at_.y + along)
                              : pixels_.at(at_.x + along, at_.y + across);
    }

    const OMPixels& pixels_;
    Point at_;
    AOTurn turn_;
    int width_;
    int height_;
};

} // namespace

Rect AOFrame::bounds(Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    const bool swap = turn && turn->swapAxes;
    return {at.x, at.y, at.x + (swap ? height_ : width_), at.y + (swap ? width_ : height_)};
}

void AOFrame::draw(OMMemCanvas& canvas, const OMRegion& clip, Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    if (!turn || canvas.depth() != 8) return;
    const OMRegion region = canvas.clipped(bounds(at, direction), &clip);
    if (region.isEmpty()) return;
    const OMPixels pixels = canvas.pixels();
    const Placement placement(pixels, at, *turn, width_, height_);
    const Placement::Rows shown = placement.rowsOf(region.boundingBox());
    std::span<const std::uint8_t> data = rows_;
    for (int row = 0; row < shown.end && !data.empty(); ++row) {
        aorow::RowEnd end;
        bool walked = false;
        if (row >= shown.first)
            for (const Rect area : region.rectangles())
                walked |= placement.drawRow(data, row, area, end);
        if (!walked) end = aorow::skipRow(data, width_);
        data = data.subspan(end.bytes);
    }
    canvas.changed(region);
}

bool AOFrame::hit(Point point, Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    if (!turn) return isOpaque(-at.x, -at.y);
    int along = point.x - at.x;
    int across = point.y - at.y;
    if (turn->swapAxes) std::swap(along, across);
    return isOpaque(turn->mirrorColumns ? width_ - 1 - along : along,
                    turn->mirrorRows ? height_ - 1 - across : across);
}

bool AOFrame::isOpaque(int column, int row) const {
    if (column < 0 || column >= width_ || row < 0 || row >= height_) return false;
    std::span<const std::uint8_t> data = rows_;
    for (; row > 0 && !data.empty(); --row) data = data.subspan(aorow::skipRow(data, width_).bytes);
    return aorow::hitRow(data, width_, column);
}
