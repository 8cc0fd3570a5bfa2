#include "omcanvas.h"

#include "omdebug.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <vector>

using platform::Rect;
using platform::Rgb;

namespace {

// Pixels of 16 bits are 5-5-5, those of 24 and 32 bits 8-8-8, red at the top.

std::uint32_t packed(Rgb color, int depth) {
    if (depth == 16)
        return static_cast<std::uint32_t>(color.red >> 3 << 10 | color.green >> 3 << 5 |
                                          color.blue >> 3);
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

Rgb unpacked(std::uint32_t pixel, int depth) {
    if (depth != 16)
        return {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
                static_cast<std::uint8_t>(pixel)};
    // The upper bits fill the lower ones too, so that white stays white.
    const auto widened = [](std::uint32_t five) {
        return static_cast<std::uint8_t>((five & 31) << 3 | (five & 31) >> 2);
    };
    return {widened(pixel >> 10), widened(pixel >> 5), widened(pixel)};
}

template <int kBytes>
void load(std::span<std::uint32_t> pixels, const std::uint8_t* from) {
    for (std::uint32_t& pixel : pixels) {
        pixel = 0;
        for (int byte = 0; byte < kBytes; ++byte) pixel |= std::uint32_t{*from++} << (8 * byte);
    }
}

template <int kBytes>
void store(std::span<const std::uint32_t> pixels, std::uint8_t* to) {
    for (const std::uint32_t pixel : pixels)
        for (int byte = 0; byte < kBytes; ++byte)
            *to++ = static_cast<std::uint8_t>(pixel >> (8 * byte));
}

/// Depths deeper than 8 bits.
void load(int depth, std::span<std::uint32_t> pixels, const std::uint8_t* from) {
    if (depth == 16) load<2>(pixels, from);
    if (depth == 24) load<3>(pixels, from);
    if (depth == 32) load<4>(pixels, from);
}

void store(int depth, std::span<const std::uint32_t> pixels, std::uint8_t* to) {
    if (depth == 16) store<2>(pixels, to);
    if (depth == 24) store<3>(pixels, to);
    if (depth == 32) store<4>(pixels, to);
}

/// Turns rows of one depth into rows of another, deeper than 8 bits.
class RowConverter {
  public:
    RowConverter(int from, const OMDevicePalette& palette, int to, int width)
        : from_(from), to_(to), pixels_(static_cast<std::size_t>(width)),
          row_(pixels_.size() * static_cast<std::size_t>(to / 8)) {
        std::transform(palette.begin(), palette.end(), table_.begin(),
                       [to](Rgb color) { return packed(color, to); });
    }

    /// Valid until the next call. `count` is at most the converter's width.
    const std::uint8_t* convert(const std::uint8_t* row, int count) {
        const auto pixels = std::span(pixels_).first(static_cast<std::size_t>(count));
        if (from_ == 8) {
            for (std::uint32_t& pixel : pixels) pixel = table_[*row++];
        } else {
            load(from_, pixels, row);
            for (std::uint32_t& pixel : pixels) pixel = packed(unpacked(pixel, from_), to_);
        }
        store(to_, pixels, row_.data());
        return row_.data();
    }

  private:
    int from_;
    int to_;
    std::array<std::uint32_t, platform::kPaletteSize> table_;
    std::vector<std::uint32_t> pixels_;
    std::vector<std::uint8_t> row_;
};

void combine(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes, OMRasterOp operation) {
    switch (operation) {
    case OMRasterOp::SrcCopy: std::memcpy(to, from, bytes); return;
    case OMRasterOp::SrcInvert:
        for (std::size_t i = 0; i < bytes; ++i) to[i] ^= from[i];
        return;
    case OMRasterOp::SrcAnd:
        for (std::size_t i = 0; i < bytes; ++i) to[i] &= from[i];
        return;
    }
}

std::size_t rowBytes(const OMPixels& pixels, const Rect& area) {
    return static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(pixels.bytesPerPixel);
}

void fillPixels(const OMPixels& pixels, const Rect& area, std::uint32_t value) {
    const std::size_t bytes = rowBytes(pixels, area);
    std::uint8_t* first = pixels.at(area.left, area.top);
    if (pixels.bytesPerPixel == 1) {
        for (int y = area.top; y < area.bottom; ++y)
            std::memset(pixels.at(area.left, y), static_cast<int>(value), bytes);
        return;
    }
    const std::vector<std::uint32_t> row(static_cast<std::size_t>(area.width()), value);
    store(pixels.bytesPerPixel * 8, row, first);
    for (int y = area.top + 1; y < area.bottom; ++y)
        std::memcpy(pixels.at(area.left, y), first, bytes);
}

/// Whether the bytes from the first to the last pixel of the two areas meet.
bool shareMemory(const OMPixels& a, const Rect& areaOfA, const OMPixels& b, const Rect& areaOfB) {
    const auto begin = [](const OMPixels& pixels, const Rect& area) {
        return pixels.at(area.left, area.top);
    };
    const auto end = [](const OMPixels& pixels, const Rect& area) {
        return pixels.at(area.right - 1, area.bottom - 1) + pixels.bytesPerPixel;
    };
    const std::less<const std::uint8_t*> before;
    return before(begin(a, areaOfA), end(b, areaOfB)) && before(begin(b, areaOfB), end(a, areaOfA));
}

/// A copy of an area of pixels, kept in `memory`.
OMPixels copyOf(const OMPixels& pixels, const Rect& area, std::vector<std::uint8_t>& memory) {
    const std::size_t stride = rowBytes(pixels, area);
    memory.resize(stride * static_cast<std::size_t>(area.height()));
    const OMPixels copy{memory.data(), stride, area, pixels.bytesPerPixel};
    for (int y = area.top; y < area.bottom; ++y)
        std::memcpy(copy.at(area.left, y), pixels.at(area.left, y), stride);
    return copy;
}

Rect movedBy(const Rect& area, int dx, int dy) {
    return {area.left + dx, area.top + dy, area.right + dx, area.bottom + dy};
}

struct Span {
    std::int64_t from;
    std::int64_t to;
};

/// One axis of the clipping of a copy: the part of the destination that has pixels on both sides.
Span clippedTogether(int source, Span sourceLimits, int length, int destination,
                     Span destinationLimits) {
    const std::int64_t shift = std::int64_t{destination} - source;
    const std::int64_t end = std::int64_t{destination} + length;
    return {
        std::max({std::int64_t{destination}, sourceLimits.from + shift, destinationLimits.from}),
        std::min({end, sourceLimits.to + shift, destinationLimits.to})};
}

} // namespace

OMCanvas::OMCanvas(int depth) : depth_(depth), palette_(OMDefaultPalette()) {
    OMDebug::requireApp("OMCanvas");
    if (!OMDebug::check(depth == 8 || depth == 16 || depth == 24 || depth == 32,
                        "(depth != 8) && (depth != 16) && (depth != 24) && (depth != 32)",
                        "OMCanvas::OMCanvas - canvases can only be 8, 16, 24 or 32 bit!"))
        depth_ = 8;
}

std::uint32_t OMCanvas::pixelValue(const OMColor& color) const {
    if (depth_ == 8)
        return color.isIndex() ? static_cast<std::uint8_t>(color.index())
                               : OMNearestEntry(palette_, color.rgb8());
    if (!color.isIndex()) return packed(color.rgb8(), depth_);
    return packed(palette_[static_cast<std::uint8_t>(color.index())], depth_);
}

OMRegion OMCanvas::clipped(const Rect& area, const OMRegion* extraClip) const {
    OMRegion region(OMIntersection(area, visibleArea()));
    if (clip_) region.intersect(*clip_);
    if (extraClip) region.intersect(*extraClip);
    return region;
}

void OMCanvas::setPalette(const OMPalette& colors) {
    palette_ = OMGamePalette(colors);
    applyPalette();
}

OMColor OMCanvas::getPaletteEntry(int index) const {
    if (!OMDebug::check(index >= 0 && index < platform::kPaletteSize,
                        "(index < 0) || (index > 255)",
                        "OMCanvas::getPaletteEntry - index must be between 0 and 255!"))
        return {};
    return OMColor::fromRgb8(palette_[static_cast<std::size_t>(index)]);
}

void OMCanvas::blt(OMCanvas& source, int sourceX, int sourceY, int width, int height, int x, int y,
                   OMRasterOp operation, const OMRegion* extraClip) {
    if (!OMDebug::check(depth_ > 8 || source.depth_ == 8, "(depth == 8) && (source.depth > 8)",
                        "OMCanvas::blt - blt'ing from a 16/24/32 bit canvas\n"
                        "to an 8 bit canvas is not allowed!"))
        return;
    const Rect from = source.visibleArea();
    const Rect to = visibleArea();
    const Span across =
        clippedTogether(sourceX, {from.left, from.right}, width, x, {to.left, to.right});
    const Span down =
        clippedTogether(sourceY, {from.top, from.bottom}, height, y, {to.top, to.bottom});
    if (across.from >= across.to || down.from >= down.to) return;
    const bool clipping = clip_ || extraClip;
    if (!OMDebug::check(clipping || !isMemory() || !source.isMemory() || depth_ == source.depth_,
                        "depth != source.depth",
                        "OMCanvasDIBToDIB - memory canvases must be the same size for blt!"))
        return;
    const OMRegion region = clipped({static_cast<int>(across.from), static_cast<int>(down.from),
                                     static_cast<int>(across.to), static_cast<int>(down.to)},
                                    extraClip);
    if (region.isEmpty()) return;
    copyPixels(source, region, sourceX - x, sourceY - y, operation);
    changed(region);
}

void OMCanvas::copyPixels(OMCanvas& source, const OMRegion& region, int dx, int dy,
                          OMRasterOp operation) {
    const Rect box = region.boundingBox();
    const Rect sourceBox = movedBy(box, dx, dy);
    const OMPixels to = pixels();
    OMPixels from = source.pixels();
    std::vector<std::uint8_t> memory;
    if (shareMemory(from, sourceBox, to, box)) from = copyOf(from, sourceBox, memory);
    std::optional<RowConverter> converter;
    if (depth_ != source.depth_)
        converter.emplace(source.depth_, source.palette_, depth_, box.width());
    for (const Rect& part : region.rectangles()) {
        const std::size_t bytes = rowBytes(to, part);
        for (int y = part.top; y < part.bottom; ++y) {
            const std::uint8_t* row = from.at(part.left + dx, y + dy);
            if (converter) row = converter->convert(row, part.width());
            combine(to.at(part.left, y), row, bytes, operation);
        }
    }
}

void OMCanvas::fillRect(const Rect& area) { fillRegion(area); }

void OMCanvas::fillRegion(const OMRegion& region) {
    if (color_) fill(region, *color_);
}

void OMCanvas::frameRect(const Rect& area) { frameRegion(area); }

void OMCanvas::frameRegion(const OMRegion& region) {
    // What has all four neighbours in the region is no border.
    OMRegion inner = region;
    constexpr platform::Point kNeighbours[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (const platform::Point& step : kNeighbours) {
        OMRegion moved = region;
        moved.offset(step.x, step.y);
        inner.intersect(moved);
    }
    OMRegion border = region;
    border.subtract(inner);
    fill(border, frameColor_);
}

void OMCanvas::fill(const OMRegion& region, const OMColor& color) {
    const OMRegion area = clipped(region.boundingBox(), &region);
    if (area.isEmpty()) return;
    const OMPixels to = pixels();
    const std::uint32_t value = pixelValue(color);
    for (const Rect& part : area.rectangles()) fillPixels(to, part, value);
    changed(area);
}

void OMCanvas::changed(const OMRegion& region) {
    if (region.isEmpty()) return;
    changedPixels_ += region.pixelCount();
    show(region);
}
