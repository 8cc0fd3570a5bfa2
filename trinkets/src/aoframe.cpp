#include "aoframe.h"

#include "aoplacement.h"
#include "aorow.h"
#include "ommemcanvas.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

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
    for (const Rect area : region.rectangles()) {
        const AOLines lines = AOLinesOf(pixels, area, at, *turn, width_, height_);
        const int count = std::min(lines.end, packedRows()) - lines.first;
        if (count <= 0) continue;
        const auto starts =
            starts_.subspan(static_cast<std::size_t>(lines.first), static_cast<std::size_t>(count));
        if (whole_)
            aorow::drawWholeRows(rows_.data(), starts,
                                 {width_, lines.skip, lines.count, lines.step, lines.nextRow},
                                 lines.at);
        else
            drawDamaged(starts, lines);
    }
    canvas.changed(region);
}

void AOFrame::drawDamaged(std::span<const std::uint32_t> starts, const AOLines& lines) const {
    std::uint8_t* at = lines.at;
    for (const std::uint32_t start : starts) {
        aorow::drawRow(rows_.subspan(start), width_, lines.skip,
                       aorow::PixelLine{at, lines.step, lines.count});
        at += lines.nextRow;
    }
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
    if (row < 0 || row >= packedRows()) return false;
    return aorow::hitRow(packedRow(row), width_, column);
}
