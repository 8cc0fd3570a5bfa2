// One frame of an animation, in the form that it is drawn from.
//
// The packed rows (formats/animation/row.h) are taken apart once. What is opaque of each row
// becomes segments, whose pixels are ready for the canvases of one depth, so that drawing is
// copying. Opaque pixels with short gaps between them are one segment with a mask: noise would
// otherwise fall apart into thousands of them. Long fills stay fills, and what is transparent takes
// no space.
//
// A direction is a turn of the frame inside its bounding rectangle: the columns or the rows are
// mirrored, then rows and columns may change places. The hit test goes the same way backwards, so
// that what is drawn is what is hit.
#pragma once

#include "omregion.h"

#include "platform/display.h"
#include "platform/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

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

/// The pixel of each colour index at some depth.
using AOPixelTable = std::array<std::uint32_t, platform::kPaletteSize>;
/// For canvases of 8 bits: each index is its own pixel.
inline constexpr AOPixelTable kAOIndexPixels = [] {
    AOPixelTable pixels{};
    for (std::uint32_t i = 0; i < pixels.size(); ++i) pixels[i] = i;
    return pixels;
}();

/// Pixels; at most 32767 each.
struct AOSize {
    int width = 0;
    int height = 0;
};

/// The rectangle that a frame covers when it is drawn with its corner at `at`.
[[nodiscard]] platform::Rect AOBounds(AOSize size, platform::Point at, int direction);

class AOFrame {
  public:
    /// A frame without pixels.
    AOFrame() = default;
    /// Takes the packed rows apart; those that are missing or cut short end transparent.
    /// 1 <= bytesPerPixel <= 4.
    AOFrame(AOSize size, std::span<const std::uint8_t> rows, const AOPixelTable& pixels,
            int bytesPerPixel);

    [[nodiscard]] AOSize size() const { return size_; }
    [[nodiscard]] platform::Rect bounds(platform::Point at, int direction) const {
        return AOBounds(size_, at, direction);
    }
    /// How much memory it takes, in bytes.
    [[nodiscard]] std::size_t memory() const;

    /// Draws the opaque pixels that lie in `clip`, with the upper left corner of the bounds at
    /// `at`. An unknown direction draws nothing, nor does a canvas of another depth show it.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at, int direction) const;

    /// Whether the frame drawn at `at` is opaque at `point`. An unknown direction asks for the
    /// window's corner, whatever the point.
    [[nodiscard]] bool hit(platform::Point point, platform::Point at, int direction) const;

  private:
    enum class Kind : std::uint8_t {
        Copy,
        Fill,  ///< one pixel stands for all
        Masked ///< the pixels, 0 where there are none, then as many bytes: 0xFF there, else 0
    };
    struct Segment {
        std::uint16_t row;
        std::uint16_t column;
        std::uint16_t length; ///< pixels
        Kind kind;
        std::size_t pixels; ///< offset in `bytes_`
    };
    class Unpacker;

    [[nodiscard]] bool hasWholeRows() const;
    void drawWholeRows(const AOLines& lines) const;
    template <int kBytes>
    void drawLines(const AOLines& lines) const;
    template <int kBytes, class Writer>
    void drawSegments(AOLines lines, Writer writer) const;
    [[nodiscard]] std::span<const Segment> segments(int firstRow, int endRow) const;
    [[nodiscard]] bool isOpaque(int column, int row) const;

    AOSize size_;
    int bytesPerPixel_ = 1;
    bool isWhole_ = false; ///< without a transparent pixel or a fill: `bytes_` is row by row
    std::vector<std::uint32_t> rowStarts_; ///< in `segments_`, of the rows that have data; the end
    std::vector<Segment> segments_;
    std::vector<std::uint8_t> bytes_;
};

/// Frames by number, each kept from its first use on, within bounds: a resource can claim many more
/// pixels than it has bytes.
class AOFrameCache {
  public:
    static constexpr std::size_t kMostBytes = std::size_t{1} << 27;

    AOFrameCache() = default;
    /// A copy keeps none yet.
    AOFrameCache(const AOFrameCache&) {}

    /// Null when it is not kept.
    [[nodiscard]] const AOFrame* find(int number) const;
    /// All others go when they would take more than kMostBytes together. 0 <= number < 32768.
    const AOFrame& keep(int number, AOFrame frame);

  private:
    std::vector<std::unique_ptr<AOFrame>> frames_;
    std::size_t bytes_ = 0;
};
