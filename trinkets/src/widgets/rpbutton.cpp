#include "rpbutton.h"

#include "omeffectsounds.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>

using platform::Point;

namespace {

constexpr OMSEntry kRPButtonVocabulary[] = {
    oms::data<&RPButton::isEnabled, &RPButton::setEnabled>("enabled", "can be pressed"),
    oms::data<&RPButton::clickSoundID, &RPButton::setClickSoundID>("clickSoundID",
                                                                   "sound of a press; -1: none")
        .of("sound"),
    oms::data<&RPButton::playDelay, &RPButton::setPlayDelay>(
        "playDelay", "ms that it looks pressed when a script presses it"),
    oms::method<&RPButton::press>("press"),
    oms::method<&RPButton::press>(OMScriptableObject::kDefaultMethod),
    oms::event("hit", "it was clicked, and its click sound has ended"),
};

constexpr int kUp = 1; ///< frames
constexpr int kPressed = 2;

} // namespace

const OMSClass RPButton::kClass{"RPButton", &OMAnimation::kClass, kRPButtonVocabulary,
                                &RPButton::createFromScript, OMAnimation::kArguments};

RPButton::RPButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
    : OMSCopied(window, std::move(image), id, x, y), clickHandle_(OMEffectSounds::kNotPlaying) {
    setMovable(false);
    pause();
    setFrameNumber(kUp);
}

RPButton::RPButton(const RPButton& other)
    : OMSCopied(other), enabled_(other.enabled_), clickSoundId_(other.clickSoundId_),
      playDelayMs_(other.playDelayMs_), hitLink_(other.hitLink_),
      clickHandle_(OMEffectSounds::kNotPlaying) {
    setFrameNumber(kUp);
}

void RPButton::onRetire() {
    endClick();
    hitPending_ = tracking_ = false;
    pressedMs_.reset();
    OMAnimation::onRetire();
}

std::unique_ptr<OMScriptableObject> RPButton::createFromScript() {
    if (!AOImage::canLocate("Source URL has to be installed in OMAnimation", "!url"))
        return nullptr;
    std::unique_ptr<RPButton> button = createFromArguments<RPButton>();
    if (button) button->window()->input().updateFlyOver();
    return button;
}

void RPButton::look(bool pressed) {
    looksPressed_ = pressed;
    const int number = pressed ? kPressed : kUp;
    if (frameNumber() != number) setFrameNumber(number);
}

// By the mouse

void RPButton::onMouseDown(Point point) {
    OMAnimation::onMouseDown(point);
    if (!enabled_ || !window()) return;
    tracking_ = true;
    pressedMs_.reset();
    setMouseCapture(true);
    track(point);
}

void RPButton::onMouseMove(Point point) {
    OMAnimation::onMouseMove(point);
    if (tracking_ && window()) track(point);
}

void RPButton::track(Point point) {
    if (!containsPoint(point)) {
        setCursor();
        look(false);
        return;
    }
    window()->showCursor(grabCursor());
    const bool goesDown = !looksPressed_;
    look(true);
    if (goesDown) playClick();
}

void RPButton::onMouseUp(Point point) {
    OMAnimation::onMouseUp(point);
    if (!tracking_) return;
    letGo();
    // Meanwhile it may have been disabled or hidden, or the next scene may be on its way.
    if (!enabled_ || !isShown() || !window()->isPresenting() || !containsPoint(point)) return;
    if (clickHandle_ != OMEffectSounds::kNotPlaying)
        hitPending_ = true;
    else
        hit();
}

void RPButton::onReleaseLost() {
    if (tracking_) letGo();
}

void RPButton::letGo() {
    tracking_ = false;
    look(false);
    setMouseCapture(false);
    setCursor();
}

void RPButton::hit() {
    const OMLink link = hitLink_;
    if (link)
        link();
    else
        fireEvent("hit");
}

// By a script

void RPButton::press() {
    if (!window() || tracking_) return;
    pressedMs_ = window()->clock();
    look(true);
    playClick();
}

void RPButton::step(std::uint32_t clock) {
    OMAnimation::step(clock);
    // The sound that a hit waited for was ended, and there is no other.
    if (hitPending_ && clickHandle_ == OMEffectSounds::kNotPlaying) {
        hitPending_ = false;
        hit();
    }
    if (!pressedMs_) return;
    if (clock - *pressedMs_ <= static_cast<std::uint32_t>(std::max(playDelayMs_, 0))) return;
    pressedMs_.reset();
    look(false);
}

// Click sound

void RPButton::playClick() {
    endClick();
    if (clickSoundId_ == kNoSound) return;
    OMEffectSounds* sounds =
        OMEffectSounds::require("!url", "Sound URL has to be installed in OMAnimation");
    if (!sounds) return;
    clickHandle_ = sounds->playEffect(clickSoundId_,
                                      whileActive([this, click = click_] { clickEnded(click); }));
}

/// The end of a sound that is ended is not heard of.
void RPButton::endClick() {
    ++click_;
    const int handle = std::exchange(clickHandle_, OMEffectSounds::kNotPlaying);
    if (handle != OMEffectSounds::kNotPlaying && OMEffectSounds::current())
        OMEffectSounds::current()->endEffect(handle);
}

void RPButton::clickEnded(unsigned click) {
    if (click != click_) return;
    clickHandle_ = OMEffectSounds::kNotPlaying;
    if (std::exchange(hitPending_, false)) hit();
}
