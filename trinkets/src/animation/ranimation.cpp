#include "ranimation.h"

#include "ommemcanvas.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRAnimationVocabulary[] = {
    oms::readOnly<&RAnimation::frameCount>("frameCount", "frames of the current sequence"),
    oms::data<&RAnimation::frameNotification, &RAnimation::setFrameNotification>(
        "frameNotification", "1: frameNotify is raised for every frame shown"),
    oms::data<&RAnimation::framesPerSecond, &RAnimation::setFramesPerSecond>(
        "framerate", "frames a second; 0: by the durations of the sequence"),
    oms::readOnly<&RAnimation::height>("height", "of the bounding rectangle"),
    oms::data<&RAnimation::repeatCount, &RAnimation::setRepeatCount>(
        "repeatCount", "n: n times, then hold; 0: as the sequence says; -1: without end"),
    oms::data<&RAnimation::isSoundSync, &RAnimation::setSoundSync>(
        "soundSync", "1: wait for the sounds of the sequence"),
    oms::data<&RAnimation::userData, &RAnimation::setUserData>("userData", "free text for scripts"),
    oms::readOnly<&RAnimation::width>("width", "of the bounding rectangle"),
    oms::method<&RAnimation::hide>("hide"),
    oms::method<&RAnimation::show>("show"),
    oms::method<&RAnimation::paintIntoBackground>("paint", "[x y]"),
    oms::method<&RAnimation::pause>("pause"),
    oms::lasting<&RAnimation::play>("play"),
    oms::lasting<&RAnimation::resumeForScript>("resume"),
    oms::method<&RAnimation::pause>("suspend"),
    oms::method<&RAnimation::replacePaletteEntry>("replacePaletteEntry", "old new"),
    oms::method<&RAnimation::setAOCursor>("setAOCursor", "[cursor [grab-cursor]]"),
    oms::event("frameNotify", "a frame was shown, while frameNotification is 1"),
};

} // namespace

const OMSClass RAnimation::kClass{
    "RAnimation", &OMAnimation::kClass, kRAnimationVocabulary,
    []() -> std::unique_ptr<OMScriptableObject> { return createFromArguments<RAnimation>(); },
    OMAnimation::kArguments};

RAnimation::RAnimation(const RAnimation& other)
    : OMSCopied(other), notifies_(other.notifies_), userData_(other.userData_) {}

void RAnimation::onRetire() {
    tellListeners(FrameNews::AnimationGoes);
    OMAnimation::onRetire();
}

int RAnimation::addFrameListener(OMLinkTo<void(FrameNews)> listener) {
    listeners_.push_back({++lastListener_, std::move(listener)});
    return lastListener_;
}

void RAnimation::removeFrameListener(int number) {
    std::erase_if(listeners_, [number](const Listener& each) { return each.number == number; });
}

/// Those that are there now; each may remove any.
void RAnimation::tellListeners(FrameNews news) {
    const int last = lastListener_;
    for (int told = 0; !isRetired();) {
        const auto next = std::ranges::upper_bound(listeners_, told, {}, &Listener::number);
        if (next == listeners_.end() || next->number > last) return;
        told = next->number;
        const auto link = next->link;
        link(news);
    }
}

void RAnimation::frameShown() {
    if (notifies_) fireEvent("frameNotify");
    tellListeners(FrameNews::Shown);
}

void RAnimation::resumeForScript() {
    resume();
    if (state() == State::Stopped) fireCompletion();
}

void RAnimation::paintIntoBackground(std::optional<int> x, std::optional<int> y) {
    if (!window()) return;
    const Rect own = boundingRectangle();
    const Point at{nearestPlace(x.value_or(own.left)), nearestPlace(y.value_or(own.top))};
    window()->paintIntoBackground({at.x, at.y, at.x + own.width(), at.y + own.height()},
                                  [this](OMMemCanvas& canvas, Point to) { paintAt(canvas, to); });
}

void RAnimation::replacePaletteEntry(int old, int replacement) {
    constexpr auto isIndex = [](int index) { return index >= 0 && index < platform::kPaletteSize; };
    if (!isIndex(old) || !isIndex(replacement)) return;
    replaceColorIndex(static_cast<std::uint8_t>(old), static_cast<std::uint8_t>(replacement));
}

void RAnimation::setAOCursor(std::optional<int> normal, std::optional<int> grab) {
    OMSetCursors(*this, normal, grab, "Cursor URL is not installed in RAnimation");
}
