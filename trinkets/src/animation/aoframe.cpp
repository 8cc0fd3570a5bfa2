#include "aoframe.h"

#include "ommemcanvas.h"

#include <algorithm>
#include <cstring>
#include <utility>

using platform::Point;
using platform::Rect;

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

namespace {

/// `area` (canvas pixels) is not empty and lies inside the pixels and the frame's bounds, whose
/// upper left corner is `corner`.
AOLines AOLinesOf(const OMPixels& pixels, const platform::Rect& area, platform::Point corner,
                  const AOTurn& turn, int width, int height) {
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

// Most segments are short, so that neither calls nor loops over their pixels pay: bytes are written
// in pieces that may overlap, with few branches that depend on the length.

struct Wide {
    std::uint64_t low;
    std::uint64_t high;
};

constexpr std::size_t kWide = sizeof(Wide);
constexpr std::size_t kWorthACall = 2 * kWide; ///< from here on the library copies faster

template <class Piece>
void copyTwice(std::uint8_t* to, const std::uint8_t* from, std::size_t count) {
    constexpr std::size_t kSize = sizeof(Piece);
    Piece first;
    Piece last;
    std::memcpy(&first, from, kSize);
    std::memcpy(&last, from + count - kSize, kSize);
    std::memcpy(to, &first, kSize);
    std::memcpy(to + count - kSize, &last, kSize);
}

void copyBytes(std::uint8_t* to, const std::uint8_t* from, std::size_t count) {
    if (count >= kWorthACall) {
        std::memcpy(to, from, count);
    } else if (count >= kWide) {
        const std::size_t last = count - kWide;
        for (std::size_t at = 0; at < last; at += kWide) std::memcpy(to + at, from + at, kWide);
        std::memcpy(to + last, from + last, kWide);
    } else if (count >= sizeof(std::uint64_t)) {
        copyTwice<std::uint64_t>(to, from, count);
    } else if (count >= sizeof(std::uint32_t)) {
        copyTwice<std::uint32_t>(to, from, count);
    } else {
        for (std::size_t i = 0; i < count; ++i) to[i] = from[i];
    }
}

template <class Piece>
void blendPiece(std::uint8_t* to, const std::uint8_t* pixels, const std::uint8_t* keep) {
    Piece below;
    Piece above;
    Piece mask;
    std::memcpy(&below, to, sizeof(Piece));
    std::memcpy(&above, pixels, sizeof(Piece));
    std::memcpy(&mask, keep, sizeof(Piece));
    if constexpr (std::is_same_v<Piece, Wide>)
        below = {(below.low & mask.low) | above.low, (below.high & mask.high) | above.high};
    else
        below = static_cast<Piece>((below & mask) | above);
    std::memcpy(to, &below, sizeof(Piece));
}

/// Blending the same bytes twice changes nothing, so the last piece may overlap the one before.
template <class Piece>
void blendPieces(std::uint8_t* to, const std::uint8_t* pixels, const std::uint8_t* keep,
                 std::size_t count) {
    constexpr std::size_t kTwo = 2 * sizeof(Piece);
    std::size_t at = 0;
    for (; at + kTwo <= count; at += kTwo) {
        blendPiece<Piece>(to + at, pixels + at, keep + at);
        blendPiece<Piece>(to + at + sizeof(Piece), pixels + at + sizeof(Piece),
                          keep + at + sizeof(Piece));
    }
    if (at == count) return;
    const std::size_t last = count - sizeof(Piece);
    if (at < last) blendPiece<Piece>(to + at, pixels + at, keep + at);
    blendPiece<Piece>(to + last, pixels + last, keep + last);
}

void blendBytes(std::uint8_t* to, const std::uint8_t* pixels, const std::uint8_t* keep,
                std::size_t count) {
    if (count >= kWide)
        blendPieces<Wide>(to, pixels, keep, count);
    else if (count >= sizeof(std::uint32_t))
        blendPieces<std::uint32_t>(to, pixels, keep, count);
    else
        blendPieces<std::uint8_t>(to, pixels, keep, count);
}

/// Writes pixels side by side, as a surface's row has them.
template <int kBytes>
struct StraightWriter {
    explicit StraightWriter(std::ptrdiff_t) {}
    [[nodiscard]] static std::ptrdiff_t step() { return kBytes; }

    static void fill(std::uint8_t* to, const std::uint8_t* pixel, int count) {
        if constexpr (kBytes == 1)
            std::memset(to, *pixel, static_cast<std::size_t>(count));
        else
            for (int i = 0; i < count; ++i) std::memcpy(to + i * kBytes, pixel, kBytes);
    }
    static void copy(std::uint8_t* to, const std::uint8_t* from, int count) {
        copyBytes(to, from, static_cast<std::size_t>(count) * kBytes);
    }
    static void blend(std::uint8_t* to, const std::uint8_t* from, const std::uint8_t* keep,
                      int count) {
        blendBytes(to, from, keep, static_cast<std::size_t>(count) * kBytes);
    }
};

/// Writes pixels that lie in any other way.
template <int kBytes>
class SteppingWriter {
  public:
    explicit SteppingWriter(std::ptrdiff_t step) : step_(step) {}
    [[nodiscard]] std::ptrdiff_t step() const { return step_; }

    void fill(std::uint8_t* to, const std::uint8_t* pixel, int count) const {
        for (; count > 0; --count, to += step_) std::memcpy(to, pixel, kBytes);
    }
    void copy(std::uint8_t* to, const std::uint8_t* from, int count) const {
        for (; count > 0; --count, to += step_, from += kBytes) std::memcpy(to, from, kBytes);
    }
    void blend(std::uint8_t* to, const std::uint8_t* from, const std::uint8_t* keep,
               int count) const {
        for (; count > 0; --count, to += step_, from += kBytes, keep += kBytes)
            if (*keep == 0) std::memcpy(to, from, kBytes);
    }

  private:
    std::ptrdiff_t step_;
};

} // namespace

Rect AOBounds(AOSize size, Point at, int direction) {
    const AOTurn* turn = AOTurnOf(direction);
    if (turn && turn->swapAxes) std::swap(size.width, size.height);
    return {at.x, at.y, at.x + size.width, at.y + size.height};
}

// Drawing

void AOFrame::draw(OMMemCanvas& canvas, const OMRegion& clip, Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    const OMPixels pixels = canvas.pixels();
    if (!turn || pixels.bytesPerPixel != bytesPerPixel_) return;
    const OMRegion region = canvas.clipped(bounds(at, direction), &clip);
    if (region.isEmpty()) return;
    for (const Rect area : region.rectangles()) {
        const AOLines lines = AOLinesOf(pixels, area, at, *turn, size_.width, size_.height);
        switch (bytesPerPixel_) {
        case 1: drawLines<1>(lines); break;
        case 2: drawLines<2>(lines); break;
        case 3: drawLines<3>(lines); break;
        default: drawLines<4>(lines); break;
        }
    }
    canvas.changed(region);
}

void AOFrame::drawWholeRows(const AOLines& lines) const {
    const auto pixel = static_cast<std::size_t>(bytesPerPixel_);
    const std::size_t width = static_cast<std::size_t>(size_.width) * pixel;
    const std::size_t count = static_cast<std::size_t>(lines.count) * pixel;
    const std::uint8_t* from = bytes_.data() + static_cast<std::size_t>(lines.first) * width +
                               static_cast<std::size_t>(lines.skip) * pixel;
    std::uint8_t* to = lines.at;
    for (int row = lines.first; row < lines.end; ++row, from += width, to += lines.nextRow)
        std::memcpy(to, from, count);
}

template <int kBytes>
void AOFrame::drawLines(const AOLines& lines) const {
    if (isWhole_ && lines.step == kBytes)
        drawWholeRows(lines);
    else if (lines.step == kBytes)
        drawSegments<kBytes>(lines, StraightWriter<kBytes>(lines.step));
    else
        drawSegments<kBytes>(lines, SteppingWriter<kBytes>(lines.step));
}

template <int kBytes, class Writer>
void AOFrame::drawSegments(AOLines lines, Writer writer) const {
    const std::uint8_t* const bytes = bytes_.data();
    for (const Segment& segment : segments(lines.first, lines.end)) {
        // Where the segment begins in the part of its row that is drawn.
        const int place = segment.column - lines.skip;
        int left = 0; // pixels of the segment that are left out at its start
        int count = segment.length;
        if (place < 0 || place + count > lines.count) {
            left = std::max(-place, 0);
            count = std::min(count, lines.count - place) - left;
            if (count <= 0) continue;
        }
        std::uint8_t* to =
            lines.at + (segment.row - lines.first) * lines.nextRow + (place + left) * writer.step();
        const std::uint8_t* pixels = bytes + segment.pixels + left * kBytes;
        if (segment.kind == Kind::Copy)
            writer.copy(to, pixels, count);
        else if (segment.kind == Kind::Masked)
            writer.blend(to, pixels, pixels + segment.length * kBytes, count);
        else
            writer.fill(to, bytes + segment.pixels, count);
    }
}

std::span<const AOFrame::Segment> AOFrame::segments(int firstRow, int endRow) const {
    const int rows = std::max(static_cast<int>(rowStarts_.size()) - 1, 0);
    if (firstRow >= std::min(endRow, rows)) return {};
    const std::size_t first = rowStarts_[static_cast<std::size_t>(firstRow)];
    const std::size_t end = rowStarts_[static_cast<std::size_t>(std::min(endRow, rows))];
    return std::span(segments_).subspan(first, end - first);
}

// Hit test

bool AOFrame::hit(Point point, Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    if (!turn) return isOpaque(-at.x, -at.y);
    int along = point.x - at.x;
    int across = point.y - at.y;
    if (turn->swapAxes) std::swap(along, across);
    return isOpaque(turn->mirrorColumns ? size_.width - 1 - along : along,
                    turn->mirrorRows ? size_.height - 1 - across : across);
}

bool AOFrame::isOpaque(int column, int row) const {
    if (row < 0 || column < 0 || row >= size_.height) return false;
    for (const Segment& segment : segments(row, row + 1)) {
        const int place = column - segment.column;
        if (place < 0) return false;
        if (place >= segment.length) continue;
        if (segment.kind != Kind::Masked) return true;
        const std::size_t mask =
            segment.pixels + static_cast<std::size_t>((segment.length + place) * bytesPerPixel_);
        return bytes_[mask] == 0;
    }
    return false;
}

// Frames that are kept

const AOFrame* AOFrameCache::find(int number) const {
    const auto at = static_cast<std::size_t>(number);
    return at < frames_.size() ? frames_[at].get() : nullptr;
}

const AOFrame& AOFrameCache::keep(int number, AOFrame frame) {
    const auto at = static_cast<std::size_t>(number);
    if (frames_.size() <= at) frames_.resize(at + 1);
    if (bytes_ + frame.memory() > kMostBytes) {
        for (std::unique_ptr<AOFrame>& kept : frames_) kept.reset();
        bytes_ = 0;
    }
    bytes_ += frame.memory();
    frames_[at] = std::make_unique<AOFrame>(std::move(frame));
    return *frames_[at];
}
