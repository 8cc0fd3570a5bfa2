#include "rsellist.h"

#include "ommemcanvas.h"
#include "omsarea.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "omttfont.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRSelListVocabulary[] = {
    oms::readOnly<&RSelList::canAddChar>("canAddChar", "a character can be typed"),
    oms::readOnly<&RSelList::canDeleteChar>("canDeleteChar", "there is a typed character"),
    oms::readOnly<&RSelList::canMoveHighlightDown>("canMoveHighlightDown"),
    oms::readOnly<&RSelList::canMoveHighlightUp>("canMoveHighlightUp"),
    oms::readOnly<&RSelList::canScrollListDown>("canScrollListDown"),
    oms::readOnly<&RSelList::canScrollListUp>("canScrollListUp"),
    oms::data<&RSelList::currentEntry, &RSelList::setCurrentEntry>(
        "currentEntry", "the highlighted name; writing highlights the first that begins so"),
    oms::readOnly<&RSelList::deletedEntry>("deletedEntry", "what deleteEntry took out last"),
    oms::readOnly<&RSelList::entryIsNew>("entryIsNew", "a new name is being typed"),
    oms::readOnly<&RSelList::entryIsValid>("entryIsValid", "the current name may be used"),
    oms::data<&RSelList::highlightedBackgroundColor, &RSelList::setHighlightedBackgroundColor>(
        "highlightedBackgroundColor", "palette index"),
    oms::data<&RSelList::listBackgroundColor, &RSelList::setListBackgroundColor>(
        "listBackgroundColor", "palette index"),
    oms::readOnly<&RSelList::listIsFull>("listIsFull", "there are 99 names"),
    oms::data<&RSelList::matchedTextColor, &RSelList::setMatchedTextColor>("matchedTextColor",
                                                                           "palette index"),
    oms::data<&RSelList::normalTextColor, &RSelList::setNormalTextColor>("normalTextColor",
                                                                         "palette index"),
    oms::readOnly<&RSelList::notifyDeleted>("notifyDeleted", "deleteEntry took out an old name"),
    oms::data<&RSelList::selectedTextColor, &RSelList::setSelectedTextColor>("selectedTextColor",
                                                                             "palette index"),
    oms::data<&RSelList::textFont, &RSelList::setTextFont>("textFont", "TrueType face"),
    oms::writeOnly<&RSelList::setTextFontID>("textFontID", "id of a bitmap font").of("font"),
    oms::data<&RSelList::textSize, &RSelList::setTextSize>("textSize", "pixels"),
    oms::data<&RSelList::textStyle, &RSelList::setTextStyle>(
        "textStyle", "1 bold, 2 italic, 4 underlined, or their sum"),
    oms::data<&RSelList::visibleLines, &RSelList::setVisibleLines>("visibleLines"),
    oms::method<&RSelList::addChar>("addChar", "character"),
    oms::method<&RSelList::addListEntry>("addListEntry", "name"),
    oms::method<&RSelList::deleteChar>("deleteChar"),
    oms::method<&RSelList::deleteEntry>("deleteEntry"),
    oms::method<&RSelList::moveHighlightDown>("moveHighlightDown"),
    oms::method<&RSelList::moveHighlightUp>("moveHighlightUp"),
    oms::method<&RSelList::scrollListLineDown>("scrollListLineDown"),
    oms::method<&RSelList::scrollListLineUp>("scrollListLineUp"),
    oms::method<&RSelList::scrollListPageDown>("scrollListPageDown"),
    oms::method<&RSelList::scrollListPageUp>("scrollListPageUp"),
    oms::method<&RSelList::startNewEntry>("startNewEntry"),
    oms::event("entrySelected", "a visible name was double-clicked"),
    oms::event("listFull", "there is no room for another name"),
};

constexpr int kTextLeft = 10; ///< pixels from the box's left edge
constexpr char kFirstCharacter = ' ';

} // namespace

const OMSClass RSelList::kClass{"RSelList", &OMTrinket::kClass, kRSelListVocabulary,
                                &OMSArea::create<RSelList>, OMSArea::kArguments};

RSelList::RSelList(OMTrinketWindow& window, const Rect& box)
    : OMSCopied(window, UpdateStyle::Regions, box), size_(OMTTFont::kDefaultSize) {
    setMovable(false);
}

RSelList::~RSelList() = default;

// Font and colours

int RSelList::lineHeight() const { return std::max(font_.font().lineHeight(), 1); }

void RSelList::setFont(OMFontUse font) {
    font_.use(std::move(font));
    refresh();
}

void RSelList::chooseFace() {
    if (!face_.empty() && font_.useTrueType(face_, style_, size_)) refresh();
}

void RSelList::setTextFont(const std::string& face) {
    face_ = face;
    if (face_.empty())
        setFont({});
    else
        chooseFace();
}

void RSelList::setTextFontID(int id) {
    if (!font_.useNFNT(id)) return;
    face_.clear();
    refresh();
}

void RSelList::setTextSize(int pixels) {
    size_ = pixels;
    chooseFace();
}

void RSelList::setTextStyle(int bits) {
    style_ = bits;
    chooseFace();
}

void RSelList::setColor(OMColor& color, int index) {
    color.set(index);
    refresh();
}

// Names

/// A beginning that no name has is not drawn yet: the script is about to try another.
void RSelList::setCurrentEntry(const std::string& beginning) {
    if (list_.highlight(std::string_view(beginning))) refresh();
}

void RSelList::setVisibleLines(int lines) {
    list_.setVisibleLines(lines);
    refresh();
}

void RSelList::addChar(const std::string& character) {
    const bool isCharacter =
        character.size() == 1 && static_cast<unsigned char>(character.front()) >= kFirstCharacter;
    const auto code =
        isCharacter ? list_.type(character.front()) : SelectionList::Typed::NoCharacter;
    setResult(static_cast<int>(code));
    if (code == SelectionList::Typed::Taken) refresh();
}

void RSelList::addListEntry(const std::string& name) {
    if (list_.isFull()) {
        fireEvent("listFull");
        return;
    }
    list_.insert(name);
    refresh();
}

void RSelList::deleteChar() {
    list_.takeBack();
    refresh();
}

void RSelList::deleteEntry() {
    list_.remove();
    refresh();
}

void RSelList::move(int lines) {
    list_.move(lines);
    refresh();
}

void RSelList::scroll(int lines) {
    list_.scroll(lines);
    refresh();
}

void RSelList::startNewEntry() {
    if (list_.startNew())
        refresh();
    else
        fireEvent("listFull");
}

// Mouse

std::optional<int> RSelList::entryAt(Point point) const {
    const int line = (point.y - boundingRectangle().top - font_.font().descent()) / lineHeight();
    const int entry = list_.firstVisible() + line;
    const bool there = line >= 0 && line < list_.visibleLines() && entry < list_.count();
    return there ? std::optional(entry) : std::nullopt;
}

std::vector<Rect> RSelList::clickPlaces() const {
    const Rect box = boundingRectangle();
    const int first = box.top + font_.font().descent();
    const int lines = std::min(list_.visibleLines(), list_.count() - list_.firstVisible());
    std::vector<Rect> places;
    for (int line = 0; line < lines; ++line)
        places.push_back(platform::intersection(
            {box.left, first + line * lineHeight(), box.right, first + (line + 1) * lineHeight()},
            box));
    return places;
}

bool RSelList::pick(Point point) {
    const std::optional<int> entry = list_.isNew() ? std::nullopt : entryAt(point);
    if (!entry) return false;
    list_.highlight(*entry);
    refresh();
    return true;
}

void RSelList::onMouseDown(Point point) {
    pick(point);
    OMTrinket::onMouseDown(point);
}

void RSelList::onDoubleClick(Point point) {
    OMTrinket::onDoubleClick(point);
    if (pick(point)) fireEvent("entrySelected");
}

// Drawing

void RSelList::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    OMRegion part = clip;
    part.intersect(boundingRectangle());
    if (part.isEmpty()) return;
    canvas.setColor(listBackground_);
    canvas.fillRegion(part);
    const OMTextScope scope(canvas, &font_.font(), part);
    const int lines = std::min(list_.visibleLines(), list_.count() - list_.firstVisible());
    for (int line = 0; line < lines; ++line) paintLine(canvas, part, line);
}

void RSelList::paintLine(OMMemCanvas& canvas, const OMRegion& clip, int line) {
    const Rect box = boundingRectangle();
    const int entry = list_.firstVisible() + line;
    const int baseline = box.top + (line + 1) * lineHeight();
    const std::string& name = list_.entry(entry);
    const bool highlighted = entry == list_.highlighted();
    if (highlighted) {
        const int bottom = baseline + font_.font().descent();
        OMRegion bar = clip;
        bar.intersect({box.left, bottom - lineHeight(), box.right, bottom});
        canvas.setColor(highlightedBackground_);
        canvas.fillRegion(bar);
    }
    canvas.setTextColor(!highlighted ? normalText_ : list_.isNew() ? matchedText_ : selectedText_);
    canvas.drawText(box.left + kTextLeft, baseline, name);
    if (!highlighted || list_.mode() != SelectionList::Mode::Matching) return;
    canvas.setTextColor(matchedText_);
    canvas.drawText(box.left + kTextLeft, baseline, list_.typed());
}
