#include "rtext.h"

#include "ommemcanvas.h"
#include "omsarea.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "omttfont.h"
#include "textlayout.h"

#include <algorithm>

using platform::Rect;

namespace {

constexpr OMSEntry kVocabulary[] = {
    oms::data<&RText::colorIndex, &RText::setColorIndex>("colorIndex", "palette index, 0 to 255"),
    oms::readOnly<&RText::fontAscent>("fontAscent", "rows above the baseline"),
    oms::readOnly<&RText::fontDescent>("fontDescent", "rows below the baseline"),
    oms::readOnly<&RText::fontLeading>("fontLeading", "rows between two lines"),
    oms::data<&RText::text, &RText::setText>("text", "what is shown"),
    oms::data<&RText::textHeight, &RText::setTextHeight>("textHeight",
                                                         "of the box; -1 fits it to the text"),
    oms::data<&RText::textWidth, &RText::setTextWidth>("textWidth",
                                                       "of the box; -1 fits it to the text"),
    oms::data<&RText::userData, &RText::setUserData>("userData", "free value for scripts"),
    oms::data<&RText::wrap, &RText::setWrap>("wrap", "lines are broken at the width of the box"),
    oms::method<&RText::chooseFont>("setFont", "id | face size [style]"),
};

int length(int value) { return value < 0 ? RText::kFitting : std::min(value, RText::kFarthest); }

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

const OMSClass RText::kClass{"RText", &OMTrinket::kClass, kVocabulary,
                             &OMSArea::create<RText, OMSArea::Lengths::Any>};

RText::RText(OMTrinketWindow& window, const Rect& box)
    : OMTrinket(window, UpdateStyle::Regions, {box.left, box.top, box.left, box.top}),
      width_(length(box.width())), height_(length(box.height())) {
    layOut();
}

RText::RText(const RText& other)
    : OMTrinket(other), text_(other.text_), font_(other.font_), color_(other.color_),
      width_(other.width_), height_(other.height_), wrap_(other.wrap_), userData_(other.userData_) {
    layOut();
}

RText::~RText() = default;

std::unique_ptr<OMScriptableObject> RText::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RText(*this));
}

// Properties

void RText::changeColor(int index) {
    const int before = color_.index();
    color_.set(index);
    if (color_.index() != before) markWhole();
}

int RText::fontAscent() const { return font_.font().ascent(); }
int RText::fontDescent() const { return font_.font().descent(); }
int RText::fontLeading() const { return font_.font().leading(); }

void RText::setText(const std::string& text) {
    if (text == text_) return;
    text_ = text;
    layOut();
}

void RText::setTextHeight(int height) {
    height_ = length(height);
    layOut();
}

void RText::setTextWidth(int width) {
    width_ = length(width);
    layOut();
}

void RText::setWrap(bool wrap) {
    wrap_ = wrap;
    layOut();
}

// Font

void RText::chooseFont(const std::string& font, std::optional<int> size, std::optional<int> style) {
    const bool chosen =
        isNumber(font) && !size
            ? font_.useNFNT(OMSToInteger(font))
            : font_.useTrueType(font, style.value_or(0), size.value_or(OMTTFont::kDefaultSize));
    if (chosen) layOut();
}

void RText::setFont(OMFontUse font) {
    font_.use(std::move(font));
    layOut();
}

// Layout and drawing

void RText::layOut() {
    markChanged();
    const OMFont& drawn = font_.font();
    lines_ =
        OMLinesOf(text_, drawn, wrap_ && width_ != kFitting ? std::optional(width_) : std::nullopt);
    int widest = 0;
    inset_ = 0;
    for (const std::string_view line : lines_) {
        const Rect ink = drawn.textExtent(line);
        if (width_ == kFitting) inset_ = std::max(inset_, -ink.left);
        widest = std::max({widest, drawn.textWidth(line), ink.right});
    }
    const auto rows =
        static_cast<std::int64_t>(lines_.size()) * drawn.lineHeight() - drawn.leading();
    const int needed = static_cast<int>(std::clamp<std::int64_t>(rows, 0, kFarthest));
    const Rect r = boundingRectangle();
    setBounds({r.left, r.top, r.left + (width_ == kFitting ? inset_ + widest : width_),
               r.top + (height_ == kFitting ? needed : height_)});
    markWhole();
}

void RText::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    const Rect box = boundingRectangle();
    OMRegion part = clip;
    part.intersect(box);
    if (part.isEmpty()) return;
    OMFont& drawn = font_.font();
    const OMTextScope scope(canvas, &drawn, std::move(part));
    canvas.setTextColor(color_);
    int baseline = box.top + drawn.ascent();
    for (const std::string_view line : lines_) {
        if (baseline - drawn.ascent() >= box.bottom) break;
        canvas.drawText(box.left + inset_, baseline, line);
        baseline += drawn.lineHeight();
    }
}
