#include "textblock.h"

#include "ommemcanvas.h"
#include "omsarguments.h"
#include "omtrinket.h"
#include "omttfont.h"
#include "textlayout.h"

#include <algorithm>
#include <cstdint>

using platform::Rect;

namespace {

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

TextBlock::TextBlock(const char* missing) : font_(missing) { layOut(); }

TextBlock::TextBlock(const TextBlock& other)
    : text_(other.text_), font_(other.font_), color_(other.color_), width_(other.width_) {
    layOut();
}

TextBlock::~TextBlock() = default;

bool TextBlock::setText(const std::string& text) {
    if (text == text_) return false;
    text_ = text;
    layOut();
    return true;
}

bool TextBlock::setColorIndex(int index) {
    const int before = color_.index();
    color_.set(index);
    return color_.index() != before;
}

void TextBlock::setWidth(std::optional<int> width) {
    if (width == width_) return;
    width_ = width;
    layOut();
}

void TextBlock::setFont(OMFontUse font) {
    font_.use(std::move(font));
    layOut();
}

bool TextBlock::chooseFont(const std::string& font, std::optional<int> size,
                           std::optional<int> style) {
    const bool chosen =
        isNumber(font) && !size
            ? font_.useNFNT(OMSToInteger(font))
            : font_.useTrueType(font, style.value_or(0), size.value_or(OMTTFont::kDefaultSize));
    if (chosen) layOut();
    return chosen;
}

void TextBlock::layOut() {
    const OMFont& drawn = font_.font();
    lines_ = OMLinesOf(text_, drawn, width_);
    extent_ = {};
    for (const std::string_view line : lines_) {
        const Rect ink = drawn.textExtent(line);
        extent_.left = std::min(extent_.left, ink.left);
        extent_.right = std::max({extent_.right, drawn.textWidth(line), ink.right});
    }
    const auto rows =
        static_cast<std::int64_t>(lines_.size()) * drawn.lineHeight() - drawn.leading();
    extent_.bottom = static_cast<int>(std::clamp<std::int64_t>(rows, 0, OMTrinket::kFarthest));
}

void TextBlock::paint(OMMemCanvas& canvas, const OMRegion& clip, const Rect& box, int left) const {
    OMRegion part = clip;
    part.intersect(box);
    if (part.isEmpty()) return;
    OMFont& drawn = font_.font();
    const OMTextScope scope(canvas, &drawn, std::move(part));
    canvas.setTextColor(color_);
    int baseline = box.top + drawn.ascent();
    for (const std::string_view line : lines_) {
        if (baseline - drawn.ascent() >= box.bottom) break;
        canvas.drawText(left, baseline, line);
        baseline += drawn.lineHeight();
    }
}
