#include "access/keyplayer.h"

#include "omplatform.h"
#include "omticks.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

using platform::Key;
using platform::KeyPress;
using platform::Message;
using platform::Point;
using platform::Rect;

namespace {

constexpr std::uint32_t kPulseMs = 600;  ///< of each look of the mark
constexpr std::uint32_t kSearchMs = 100; ///< between two looks for targets while there are none
constexpr int kSmallStep = 8;            ///< of what is carried with Control held; pixels
constexpr int kSamePlace = 8;            ///< places that are nearer are one; pixels
constexpr int kBackgroundInset = 6;      ///< of the mark, from the window's edges

// As the script tick: the mark goes by what is there when a pass ends.
constexpr std::uint32_t kPriority = OMTask::kWithScripts;

bool isKey(const KeyPress& press, Key key) { return press.code == static_cast<int>(key); }

/// Without the blank, which clicks.
bool isTyped(const KeyPress& press) {
    return (press.code > ' ' && press.code <= 0xFF && !press.control) ||
           isKey(press, Key::Backspace);
}

bool isClick(const KeyPress& press) {
    return isKey(press, Key::Enter) || (press.code == ' ' && !press.control);
}

std::optional<OMDirection> directionOf(const KeyPress& press) {
    if (isKey(press, Key::Left)) return OMDirection::Left;
    if (isKey(press, Key::Up)) return OMDirection::Up;
    if (isKey(press, Key::Right)) return OMDirection::Right;
    if (isKey(press, Key::Down)) return OMDirection::Down;
    return std::nullopt;
}

Point smallStep(OMDirection direction) {
    switch (direction) {
    case OMDirection::Left: return {-kSmallStep, 0};
    case OMDirection::Up: return {0, -kSmallStep};
    case OMDirection::Right: return {kSmallStep, 0};
    case OMDirection::Down: break;
    }
    return {0, kSmallStep};
}

std::vector<Rect> placesOf(const std::vector<OMKeyTarget>& targets) {
    std::vector<Rect> places;
    for (const OMKeyTarget& each : targets) places.push_back(each.place);
    return places;
}

/// Whether two places are one to a person.
bool isSamePlace(const Rect& a, const Rect& b) {
    return std::abs(a.left - b.left) < kSamePlace && std::abs(a.top - b.top) < kSamePlace;
}

/// Where it lies when it is carried there: it stays in its corral.
Rect reachable(const OMTrinket& trinket, const Rect& place) {
    if (!trinket.isCorralled()) return place;
    const Rect own = trinket.boundingRectangle();
    const Rect& corral = trinket.corral();
    const Point middle = OMMiddle(place);
    const int x = std::clamp(middle.x - own.width() / 2, corral.left,
                             std::max(corral.left, corral.right - own.width()));
    const int y = std::clamp(middle.y - own.height() / 2, corral.top,
                             std::max(corral.top, corral.bottom - own.height()));
    return {x, y, x + own.width(), y + own.height()};
}

/// The number that comes so many after `from` in a ring.
std::size_t inRing(std::size_t from, int step, std::size_t count) {
    return step > 0 ? (from + 1) % count : (from + count - 1) % count;
}

} // namespace

KeyPlayer::KeyPlayer(OMApp& app, OMTrinketWindow& window, OMLinkTo<bool()> hearsBackground)
    : app_(app), window_(window), hearsBackground_(std::move(hearsBackground)), hand_(app, window),
      task_([this] { step(); }, kPriority) {
    app.setMessageFilter([this](const Message& message) { return take(message); });
}

KeyPlayer::~KeyPlayer() {
    app_.setMessageFilter(nullptr);
    OMPlatform().display().setMark(std::nullopt);
}

// ---------------------------------------------------------------------------- messages and keys

bool KeyPlayer::take(const Message& message) {
    switch (message.kind) {
    case Message::Kind::KeysOn:
    case Message::Kind::KeysOff: setOn(message.kind == Message::Kind::KeysOn); return true;
    case Message::Kind::Key: return on_ && isPlayable() && takeKey(message.key);
    case Message::Kind::MouseMove: hand_.mouseMoved(message.position); return false;
    // The button is down already.
    case Message::Kind::MouseDown:
    case Message::Kind::DoubleClick: return hand_.isPressed() || hand_.isBusy();
    case Message::Kind::MouseUp:
        hand_.mouseReleased();
        carried_.reset();
        return false;
    default: return false;
    }
}

void KeyPlayer::setOn(bool on) {
    on_ = on;
    typing_ = true;
    lastPlace_ = {};
}

bool KeyPlayer::takeKey(const KeyPress& key) {
    if (carried_) return takeCarryKey(key);
    if (hasListener()) {
        if (isKey(key, Key::Tab) && typing_) {
            typing_ = false;
            if (!marked_) begin();
            return true;
        }
        if (isTyped(key)) typing_ = true;
        if (typing_) return false;
    }
    return takeMarkKey(key);
}

bool KeyPlayer::takeMarkKey(const KeyPress& key) {
    const auto direction = directionOf(key);
    const bool isTab = isKey(key, Key::Tab);
    if (!direction && !isTab && !isClick(key)) return false;
    if (!isOnTarget()) markNearest();
    if (!marked_) return false;
    isChosen_ = true;
    if (isTab)
        markNext(key.shift ? -1 : 1);
    else if (direction)
        markTowards(*direction);
    else if (hand_.isBusy())
        return true; // one click after the other
    else if (auto* trinket = static_cast<OMTrinket*>(marked_->trinket.object());
             trinket && OMIsDragged(*trinket))
        takeUp(*trinket);
    else if (key.control)
        hand_.clickTwice();
    else
        hand_.click();
    return true;
}

bool KeyPlayer::takeCarryKey(const KeyPress& key) {
    auto* trinket = static_cast<OMTrinket*>(carried_->trinket.object());
    const auto direction = directionOf(key);
    if (!trinket || isClick(key)) {
        letGo();
    } else if (isKey(key, Key::Esc)) {
        hand_.moveTo(carried_->grip);
        letGo();
        wasPutBack_ = true;
    } else if (direction && key.control) {
        const Point step = smallStep(*direction);
        carryTo(reachable(*trinket, platform::shifted(carried_->place, step.x, step.y)));
    } else if (direction) {
        const std::vector<Rect> all = places(*trinket);
        if (const auto next = OMNearestTowards(all, carried_->place, *direction))
            carryTo(all[*next]);
    } else if (isKey(key, Key::Tab)) {
        const std::vector<Rect> all = places(*trinket);
        const std::vector<std::size_t> order = OMReadingOrder(all);
        const auto here = OMNearest(all, carried_->place);
        const auto at = static_cast<std::size_t>(std::ranges::find(order, *here) - order.begin());
        carryTo(all[order[inRing(at, key.shift ? -1 : 1, order.size())]]);
    } else {
        return false;
    }
    return true;
}

std::optional<KeyPlayer::Attention> KeyPlayer::attention() const {
    if (carried_)
        return Attention{static_cast<OMTrinket*>(carried_->trinket.object()), 0, carried_->place,
                         true, true};
    if (!marked_ || (!marked_->trinket && !marked_->isBackground)) return std::nullopt;
    return Attention{static_cast<OMTrinket*>(marked_->trinket.object()), marked_->part,
                     marked_->place, false, isChosen_};
}

// ---------------------------------------------------------------------------- every pass

bool KeyPlayer::isPlayable() const {
    return window_.isPresenting() && !window_.isResting() && app_.isRunning() && !app_.isLeaving();
}

bool KeyPlayer::hasListener() const {
    const OMTrinketInput& input = window_.input();
    return input.focus() || window_.input().defaults().key;
}

void KeyPlayer::step() {
    if (!on_ || !isPlayable()) {
        if (carried_) letGo();
        marked_.reset();
        lastPlace_ = {};
        typing_ = true;
    } else if (carried_) {
        stepCarried();
    } else {
        stepMark();
    }
    hand_.step();
    showMark();
}

/// The mark goes with what it is on, and where that is not any more, to what is nearest.
void KeyPlayer::stepMark() {
    const bool listens = hasListener();
    if (listens && !std::exchange(hadListener_, listens)) typing_ = true;
    hadListener_ = listens;
    if (listens && typing_) {
        marked_.reset();
        return;
    }
    // What the hand posts goes before the machine's messages, which want every other pass at least.
    if (hand_.isBusy() || std::exchange(hasFollowed_, false) || isOnTarget()) return;
    if (marked_) {
        auto* trinket = static_cast<OMTrinket*>(marked_->trinket.object());
        const bool isGone = !trinket && !marked_->isBackground;
        const auto target = isGone ? std::optional<OMKeyTarget>()
                                   : OMFindKeyTarget(window_, trinket, marked_->part);
        hasFollowed_ = target.has_value();
        if (target) return mark(*target);
        marked_.reset();
    }
    isChosen_ = false;
    const std::uint32_t now = OMMilliseconds();
    if (now - lookedMs_ < kSearchMs) return;
    lookedMs_ = now;
    markNearest();
}

/// Whoever has let it go, the button is up then.
void KeyPlayer::stepCarried() {
    if (hand_.isBusy()) return;
    const auto* trinket = static_cast<OMTrinket*>(carried_->trinket.object());
    if (!trinket || !window_.input().mouseTarget()) return letGo();
    if (trinket->isMovable()) carried_->place = trinket->boundingRectangle();
}

void KeyPlayer::showMark() {
    std::optional<Rect> place;
    if (carried_)
        place = carried_->place;
    else if (marked_)
        place = marked_->place;
    std::optional<platform::Mark> mark;
    if (place)
        mark = {platform::shifted(*place, window_.rectangle().left, window_.rectangle().top),
                OMMilliseconds() / kPulseMs % 2 == 0};
    OMPlatform().display().setMark(mark);
}

// ---------------------------------------------------------------------------- the mark

std::vector<OMKeyTarget> KeyPlayer::targets() const {
    return OMFindKeyTargets(window_, hearsBackground_());
}

/// Whether a press reaches what is marked; its place is brought up to date then.
bool KeyPlayer::isOnTarget() {
    if (!marked_) return false;
    auto* trinket = static_cast<OMTrinket*>(marked_->trinket.object());
    if (!trinket && !marked_->isBackground) return false;
    if (!OMReaches(window_, {trinket, marked_->part, marked_->place, marked_->point})) return false;
    if (!trinket) return hearsBackground_();
    const std::vector<Rect> parts = trinket->clickPlaces();
    if (marked_->part >= parts.size()) return false;
    marked_->place = platform::intersection(parts[marked_->part], window_.backBuffer().bounds());
    lastPlace_ = marked_->place;
    return OMContains(marked_->place, marked_->point);
}

void KeyPlayer::mark(const OMKeyTarget& target) {
    Rect place = target.place;
    if (!target.trinket)
        place = {place.left + kBackgroundInset, place.top + kBackgroundInset,
                 place.right - kBackgroundInset, place.bottom - kBackgroundInset};
    marked_.emplace(
        Marked{OMSWatch(target.trinket), !target.trinket, target.part, place, place, target.point});
    lastPlace_ = place;
    hand_.moveTo(target.point);
}

/// To the first one where a scene begins.
void KeyPlayer::markNearest() {
    const std::vector<OMKeyTarget> all = targets();
    if (all.empty()) return marked_.reset();
    std::vector<Rect> places = placesOf(all);
    if (places.size() > 1 && !all.back().trinket) places.pop_back();
    mark(all[lastPlace_.empty() ? 0 : *OMNearest(places, lastPlace_)]);
}

void KeyPlayer::begin() {
    lastPlace_ = {};
    markNearest();
}

/// What lights up under the pointer is often larger then, and must not change its turn by that.
void KeyPlayer::markNext(int step) {
    const std::vector<OMKeyTarget> all = targets();
    if (all.empty()) return marked_.reset();
    const auto here = std::ranges::find_if(all, [this](const OMKeyTarget& each) {
        return each.trinket == marked_->trinket.object() && each.part == marked_->part;
    });
    const auto at = here == all.end() ? 0 : static_cast<std::size_t>(here - all.begin());
    std::vector<Rect> places = placesOf(all);
    if (here != all.end()) places[at] = marked_->found;
    if (!all.back().trinket) places.pop_back();
    std::vector<std::size_t> order = OMReadingOrder(places);
    if (!all.back().trinket) order.push_back(places.size());
    const auto turn = static_cast<std::size_t>(std::ranges::find(order, at) - order.begin());
    mark(all[order[inRing(turn, step, order.size())]]);
}

void KeyPlayer::markTowards(OMDirection direction) {
    const std::vector<OMKeyTarget> all = targets();
    std::vector<Rect> places = placesOf(all);
    if (!all.empty() && !all.back().trinket) places.pop_back();
    if (const auto next = OMNearestTowards(places, marked_->place, direction)) mark(all[*next]);
}

// ---------------------------------------------------------------------------- what is carried

void KeyPlayer::takeUp(OMTrinket& trinket) {
    const Rect place = trinket.boundingRectangle();
    wasPutBack_ = false;
    carried_.emplace(Carried{OMSWatch(&trinket), place, marked_->point, place});
    hand_.press();
}

std::vector<Rect> KeyPlayer::places(const OMTrinket& trinket) const {
    std::vector<Rect> all = OMFindDropPlaces(window_, trinket);
    for (Rect& place : all) place = reachable(trinket, place);
    const Rect home = reachable(trinket, carried_->home);
    if (std::ranges::none_of(all, [&](const Rect& each) { return isSamePlace(each, home); }))
        all.push_back(home);
    return all;
}

/// What follows the pointer goes as far as that does.
void KeyPlayer::carryTo(const Rect& place) {
    const Rect& from = carried_->place;
    const Point pointer = hand_.pointer();
    hand_.moveTo({pointer.x + (place.left + place.right - from.left - from.right) / 2,
                  pointer.y + (place.top + place.bottom - from.top - from.bottom) / 2});
    carried_->place = place;
}

void KeyPlayer::letGo() {
    hand_.release();
    lastPlace_ = carried_->place;
    carried_.reset();
}
