#include "rtext.h"

#include "omfont.h"
#include "omsarea.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>

using platform::Rect;

namespace {

constexpr OMSEntry kRTextVocabulary[] = {
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
    oms::method<&RText::chooseFont>("setFont", "font | face [size [style]]"),
};

int length(int value) { return value < 0 ? RText::kFitting : std::min(value, RText::kFarthest); }

} // namespace

const OMSClass RText::kClass{"RText", &OMTrinket::kClass, kRTextVocabulary,
                             &OMSArea::create<RText, OMSArea::Lengths::Any>, OMSArea::kArguments};

RText::RText(OMTrinketWindow& window, const Rect& box)
    : OMSCopied(window, UpdateStyle::Regions, {box.left, box.top, box.left, box.top}),
      width_(length(box.width())), height_(length(box.height())) {
    layOut();
}

RText::RText(const RText& other)
    : OMSCopied(other), block_(other.block_), width_(other.width_), height_(other.height_),
      wrap_(other.wrap_), userData_(other.userData_) {
    layOut();
}

RText::~RText() = default;

// Properties

void RText::setColorIndex(int index) {
    if (block_.setColorIndex(index)) markWhole();
}

int RText::fontAscent() const { return block_.font().ascent(); }
int RText::fontDescent() const { return block_.font().descent(); }
int RText::fontLeading() const { return block_.font().leading(); }

void RText::setText(const std::string& text) {
    if (block_.setText(text)) layOut();
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
    if (block_.chooseFont(font, size, style)) layOut();
}

void RText::setFont(OMFontUse font) {
    block_.setFont(std::move(font));
    layOut();
}

// Layout and drawing

void RText::layOut() {
    markChanged();
    block_.setWidth(wrap_ && width_ != kFitting ? std::optional(width_) : std::nullopt);
    const Rect& needed = block_.extent();
    const Rect r = boundingRectangle();
    setBounds({r.left, r.top, r.left + (width_ == kFitting ? needed.width() : width_),
               r.top + (height_ == kFitting ? needed.height() : height_)});
    markWhole();
}

/// A fitting box has all ink of its first characters.
void RText::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    const Rect box = boundingRectangle();
    block_.paint(canvas, clip, box, box.left - (width_ == kFitting ? block_.extent().left : 0));
}
