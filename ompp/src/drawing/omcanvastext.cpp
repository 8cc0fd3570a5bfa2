// Text on canvases of any depth: the ink of each character gets the text colour.

#include "omcanvas.h"

#include "omfont.h"
#include "ompixelmask.h"

#include <cstdlib>

using platform::Rect;

namespace {

constexpr int kFarthest = 1 << 28; ///< pixels; text that begins farther away is not seen

/// The part of a character in `clip`.
void inkGlyph(const OMPixels& pixels, const OMGlyph& glyph, const Rect& box, const Rect& part,
              std::uint32_t value) {
    const int across = glyph.firstBit + part.left - box.left;
    const std::uint8_t* row =
        glyph.bits + glyph.stride * static_cast<std::size_t>(part.top - box.top);
    ompixels::ink(pixels, part, {row + across / 8, glyph.stride, across % 8}, value);
}

} // namespace

OMFont& OMCanvas::font() {
    if (font_) return *font_;
    if (!systemFont_) systemFont_ = std::make_unique<OMSysFont>();
    return *systemFont_;
}

void OMCanvas::drawText(int x, int baseline, std::string_view text) {
    if (std::abs(std::int64_t{x}) > kFarthest || std::abs(std::int64_t{baseline}) > kFarthest)
        return;
    const OMFont& drawn = font();
    const OMRegion clip = clipped(bounds());
    const auto rectangles = clip.rectangles();
    const OMPixels to = pixels();
    const std::uint32_t value = pixelValue(textColor_);
    Rect touched{};
    int pen = x;
    for (const char c : text) {
        const OMGlyph glyph = drawn.glyph(static_cast<unsigned char>(c));
        const Rect box{pen + glyph.left, baseline - glyph.top, pen + glyph.left + glyph.width,
                       baseline - glyph.top + glyph.height};
        pen += glyph.advance;
        for (const Rect& rectangle : rectangles) {
            const Rect part = platform::intersection(box, rectangle);
            if (part.empty()) continue;
            inkGlyph(to, glyph, box, part, value);
            touched = platform::hull(touched, part);
        }
        if (pen > kFarthest) break;
    }
    if (touched.empty()) return;
    OMRegion shown(touched);
    shown.intersect(clip);
    changed(shown);
}
