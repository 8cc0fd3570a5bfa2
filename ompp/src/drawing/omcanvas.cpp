#include "omcanvas.h"

#include "ombitmap.h"
#include "omdebug.h"
#include "omfont.h"
#include "ompixelrows.h"
#include "omplatform.h"

#include <algorithm>
#include <limits>

using ompixels::Row;
using platform::Rect;

namespace {

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
    if (!surfaces_) return;
    const int screen = OMPlatform().display().screen().depth();
    if (!OMDebug::check(depth_ == screen, "depth != displayDepth",
                        "OMCanvas::OMCanvas - DirectDraw canvases must be the same bit depth as "
                        "the display!"))
        depth_ = screen;
}

OMCanvas::~OMCanvas() = default;

std::uint32_t OMCanvas::pixelValue(const OMColor& color) const {
    if (depth_ == 8)
        return color.isIndex() ? static_cast<std::uint8_t>(color.index())
                               : OMNearestEntry(palette_, color.rgb8());
    if (!color.isIndex()) return ompixels::packed(color.rgb8(), depth_);
    return ompixels::packed(palette_[static_cast<std::uint8_t>(color.index())], depth_);
}

OMRegion OMCanvas::clipped(const Rect& area, const OMRegion* extraClip) const {
    OMRegion region(platform::intersection(area, visibleArea()));
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
    const int dx = sourceX - x;
    const int dy = sourceY - y;
    const ompixels::Source origin{source.pixels(), source.depth_, source.palette_};
    if (operation == OMRasterOp::SrcCopyKeyed && source.keyColor_) {
        const std::uint32_t key = source.pixelValue(*source.keyColor_);
        ompixels::copy(pixels(), depth_, origin, region, dx, dy,
                       [&](const Row& row) { ompixels::copyUnlessKey(row, key); });
    } else {
        ompixels::copy(pixels(), depth_, origin, region, dx, dy,
                       [&](const Row& row) { ompixels::combine(row, operation); });
    }
    changed(region);
}

void OMCanvas::draw(int x, int y, OMBitmap& bitmap) {
    if (!OMDebug::check(depth_ > 8 || bitmap.bitsPerPixel() == 8,
                        "(depth == 8) && (bitmap->bitsPerPixel > 8)",
                        "OMCanvas::draw - 16/24/32 bit bitmaps cannot be drawn on 8 bit "
                        "canvases!"))
        return;
    const auto edge = [](int from, int length) {
        return static_cast<int>(
            std::min<std::int64_t>(std::int64_t{from} + length, std::numeric_limits<int>::max()));
    };
    const OMRegion region = clipped({x, y, edge(x, bitmap.width()), edge(y, bitmap.height())});
    if (region.isEmpty()) return;
    const OMDevicePalette* own = bitmap.devicePalette();
    const ompixels::Source origin{bitmap.pixels(), bitmap.bitsPerPixel(), own ? *own : palette_};
    ompixels::copy(pixels(), depth_, origin, region, -x, -y, [&](const Row& row) {
        if (transparentDrawing_)
            ompixels::copyUnmasked(row, bitmap.maskRow(row.sourceY));
        else
            ompixels::combine(row, OMRasterOp::SrcCopy);
    });
    changed(region);
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
    for (const Rect& part : area.rectangles()) ompixels::fill(to, part, value);
    changed(area);
}

void OMCanvas::changed(const OMRegion& region) {
    if (region.isEmpty()) return;
    changedPixels_ += region.pixelCount();
    show(region);
}
