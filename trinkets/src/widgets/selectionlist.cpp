#include "selectionlist.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char kSpace = ' ';

} // namespace

std::string SelectionList::current() const {
    return entries_.empty() ? std::string() : entry(highlighted_);
}

// Names

/// In front of its twin, where there is one.
int SelectionList::placeOf(std::string_view name) const {
    return static_cast<int>(std::ranges::lower_bound(entries_, name) - entries_.begin());
}

int SelectionList::find(std::string_view beginning, int except) const {
    for (int i = placeOf(beginning); i < count() && entry(i).starts_with(beginning); ++i)
        if (i != except) return i;
    return -1;
}

void SelectionList::insertAt(int place, std::string_view name) {
    entries_.emplace(entries_.begin() + place, name);
}

void SelectionList::removeAt(int place) { entries_.erase(entries_.begin() + place); }

bool SelectionList::insert(std::string_view name) {
    name = name.substr(0, kMaxLength);
    if (isFull() || name.empty()) return false;
    const int place = placeOf(name);
    insertAt(place, name);
    if (mode_ == Mode::Browsing) {
        valid_ = true;
        return true;
    }
    if (place <= highlighted_) ++highlighted_; // what is being typed stays the current one
    if (isNew()) setEntry(typed_);
    centre();
    return true;
}

void SelectionList::remove() {
    if (entries_.empty()) return;
    removedOld_ = !isNew();
    if (removedOld_) removed_ = current();
    removeAt(highlighted_);
    mode_ = Mode::Browsing;
    if (highlighted_ >= count()) highlighted_ = std::max(highlighted_ - 1, 0);
    centre();
    firstVisible_ = std::min(firstVisible_, lastFirstLine()); // no lines stay blank
    typed_.clear();
    valid_ = !entries_.empty();
}

// Typing

SelectionList::Typed SelectionList::type(char character) {
    if (!canType()) return Typed::TooLong;
    const bool startsWord = typed_.empty() || typed_.back() == kSpace;
    if (character == kSpace && startsWord)
        return typed_.empty() ? Typed::LeadingSpace : Typed::SecondSpace;
    typed_ += startsWord ? formats::upperLatin1(character) : formats::lowerLatin1(character);
    if (!isNew()) return matchOrInsert();
    setEntry(typed_);
    return Typed::Taken;
}

SelectionList::Typed SelectionList::matchOrInsert() {
    if (const int match = find(typed_); match >= 0) {
        mode_ = Mode::Matching;
        highlighted_ = match;
    } else if (!isFull()) {
        mode_ = Mode::New;
        highlighted_ = placeOf(typed_);
        insertAt(highlighted_, typed_);
    } else {
        typed_.pop_back();
        return Typed::ListFull;
    }
    centre();
    valid_ = true;
    return Typed::Taken;
}

/// Gives the name that is typed its text, and the place that it has with that.
void SelectionList::setEntry(const std::string& name) {
    removeAt(highlighted_);
    highlighted_ = placeOf(name);
    const bool twin = highlighted_ < count() && entry(highlighted_) == name;
    insertAt(highlighted_, name);
    valid_ = !twin && !name.empty();
    centre();
}

void SelectionList::takeBack() {
    if (!canTakeBack()) return;
    typed_.pop_back();
    if (isNew()) {
        takeBackNew();
        return;
    }
    if (typed_.empty()) {
        mode_ = Mode::Browsing;
        return;
    }
    highlighted_ = std::max(find(typed_), 0);
    centre();
    valid_ = !entries_.empty();
}

void SelectionList::takeBackNew() {
    if (typed_.empty()) {
        removeAt(highlighted_);
        mode_ = Mode::Browsing;
        firstVisible_ = highlighted_ = 0;
        valid_ = !entries_.empty();
        return;
    }
    const int other = mode_ == Mode::New ? find(typed_, highlighted_) : -1;
    if (other < 0) {
        setEntry(typed_);
        return;
    }
    removeAt(highlighted_);
    mode_ = Mode::Matching;
    highlighted_ = other > highlighted_ ? other - 1 : other;
    centre();
    valid_ = true;
}

bool SelectionList::startNew() {
    if (isNew()) return true;
    if (isFull()) return false;
    mode_ = Mode::Editing;
    insertAt(0, typed_);
    highlighted_ = 0;
    setEntry(typed_);
    return true;
}

// Looking through the names

int SelectionList::lastFirstLine() const { return std::max(count() - visibleLines_, 0); }

void SelectionList::centre() {
    if (highlighted_ >= firstVisible_ && highlighted_ < firstVisible_ + visibleLines_) return;
    firstVisible_ = std::clamp(highlighted_ - visibleLines_ / 2, 0, lastFirstLine());
}

void SelectionList::browse() {
    mode_ = Mode::Browsing;
    typed_.clear();
}

bool SelectionList::canMove(int lines) const {
    const int target = highlighted_ + lines;
    return isBrowsable() && target >= 0 && target < count();
}

bool SelectionList::canScroll(int lines) const {
    return isBrowsable() && (lines < 0 ? firstVisible_ > 0 : firstVisible_ < lastFirstLine());
}

void SelectionList::move(int lines) {
    if (!canMove(lines)) return;
    highlighted_ += lines;
    centre();
    browse();
}

void SelectionList::scroll(int lines) {
    if (!canScroll(lines)) return;
    firstVisible_ = std::clamp(firstVisible_ + lines, 0, lastFirstLine());
    highlighted_ = std::clamp(highlighted_, firstVisible_, firstVisible_ + visibleLines_ - 1);
    browse();
}

bool SelectionList::highlight(std::string_view beginning) {
    const int match = find(beginning);
    highlight(std::max(match, 0));
    return match >= 0;
}

void SelectionList::highlight(int index) {
    if (!isBrowsable()) return;
    highlighted_ = index;
    centre();
    browse();
}

void SelectionList::setVisibleLines(int lines) {
    visibleLines_ = std::clamp(lines, 1, kMaxEntries);
    firstVisible_ = std::min(firstVisible_, lastFirstLine());
    centre();
}
