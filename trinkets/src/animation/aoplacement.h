// Where the rows of a turned frame lie on the pixels of a canvas.
#pragma once

#include "aoframe.h"
#include "omcanvas.h"

#include <cstddef>
#include <cstdint>

/// The part of a frame that a rectangle shows: the same columns of each of its rows.
struct AOLines {
    int first;              ///< row
    int end;                ///< behind the last row
    int skip;               ///< columns left out at the start of each row
    int count;              ///< columns shown; skip + count is at most the width
    std::uint8_t* at;       ///< where the first row's first column goes
    std::ptrdiff_t step;    ///< bytes from column to column
    std::ptrdiff_t nextRow; ///< bytes from row to row
};

/// `area` (canvas pixels) is not empty and lies inside the pixels and the frame's bounds, whose
/// upper left corner is `corner`.
[[nodiscard]] inline AOLines AOLinesOf(const OMPixels& pixels, const platform::Rect& area,
                                       platform::Point corner, const AOTurn& turn, int width,
                                       int height) {
    const auto stride = static_cast<std::ptrdiff_t>(pixels.stride);
    const std::ptrdiff_t pixel = pixels.bytesPerPixel;
    // "Along" is the way that the columns of a row take on the canvas, "across" that of the rows.
    const int left = area.left - corner.x;
    const int right = area.right - corner.x;
    const int top = area.top - corner.y;
    const int bottom = area.bottom - corner.y;
    const int along = turn.swapAxes ? top : left;
    const int alongEnd = turn.swapAxes ? bottom : right;
    const int across = turn.swapAxes ? left : top;
    const int acrossEnd = turn.swapAxes ? right : bottom;
    const std::ptrdiff_t alongStep = turn.swapAxes ? stride : pixel;
    const std::ptrdiff_t acrossStep = turn.swapAxes ? pixel : stride;

    AOLines lines{};
    lines.first = turn.mirrorRows ? height - acrossEnd : across;
    lines.end = turn.mirrorRows ? height - across : acrossEnd;
    lines.skip = turn.mirrorColumns ? width - alongEnd : along;
    lines.count = alongEnd - along;
    lines.step = turn.mirrorColumns ? -alongStep : alongStep;
    lines.nextRow = turn.mirrorRows ? -acrossStep : acrossStep;
    lines.at = pixels.at(area.left, area.top);
    if (turn.mirrorColumns) lines.at += (lines.count - 1) * alongStep;
    if (turn.mirrorRows) lines.at += (acrossEnd - across - 1) * acrossStep;
    return lines;
}
