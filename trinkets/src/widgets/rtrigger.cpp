#include "rtrigger.h"

#include "omeffectsounds.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>

using platform::Point;

namespace {

constexpr OMSEntry kRTriggerVocabulary[] = {
    oms::data<&RTrigger::framePixelDelta, &RTrigger::setFramePixelDelta>(
        "framePixelDelta", "pixels of the pointer for each frame"),
    oms::data<&RTrigger::sfxID, &RTrigger::setSfxID>("sfxID",
                                                     "sound of a drag, played once; -1: none")
        .of("sound"),
    oms::data<&RTrigger::userData, &RTrigger::setUserData>("userData", "free value for scripts"),
    oms::event("clicked", "released on the frame that it was pressed on"),
    oms::event("fired", "released on another frame"),
};

} // namespace

const OMSClass RTrigger::kClass{"RTrigger", &OMAnimation::kClass, kRTriggerVocabulary,
                                &RTrigger::createFromScript, OMAnimation::kArguments};

RTrigger::RTrigger(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
    : OMSCopied(window, std::move(image), id, x, y) {
    setMovable(false);
    pause();
}

RTrigger::RTrigger(const RTrigger& other)
    : OMSCopied(other), framePixelDelta_(other.framePixelDelta_), sfxId_(other.sfxId_),
      userData_(other.userData_) {}

std::unique_ptr<OMScriptableObject> RTrigger::createFromScript() {
    return AOImage::canLocate() ? createFromArguments<RTrigger>() : nullptr;
}

std::optional<std::vector<platform::Rect>> RTrigger::dropPlaces() const {
    std::vector<platform::Rect> places;
    const platform::Rect here = boundingRectangle();
    const int first = turning_ ? startFrame_ : frameNumber();
    for (int frame = 1; framePixelDelta_ != 0 && frame <= frameCount(); ++frame)
        places.push_back(platform::shifted(here, (frame - first) * framePixelDelta_, 0));
    return places;
}

// Dragging

void RTrigger::onMouseDown(Point point) {
    OMAnimation::onMouseDown(point);
    if (!window()) return;
    startFrame_ = frameNumber();
    startX_ = point.x;
    soundPlayed_ = false;
    turning_ = true;
    setMouseCapture(true);
    window()->showCursor(grabCursor());
}

/// The ends of the sequence stop it, however fast the pointer passes them.
void RTrigger::onMouseMove(Point point) {
    OMAnimation::onMouseMove(point);
    if (!turning_ || !window()) return;
    const int frames = framePixelDelta_ == 0 ? 0 : (point.x - startX_) / framePixelDelta_;
    const int wanted = std::clamp(startFrame_ + frames, 1, std::max(frameCount(), 1));
    if (wanted != frameNumber()) setFrameNumber(wanted);
    playSound();
}

void RTrigger::playSound() {
    if (soundPlayed_ || sfxId_ == kNoSound) return;
    soundPlayed_ = true;
    OMEffectSounds::playIfAny(sfxId_, "soundURLEx == NULL",
                              "Extended Sound URL is not installed in RTrigger");
}

void RTrigger::onMouseUp(Point point) {
    OMAnimation::onMouseUp(point);
    if (!turning_) return;
    turning_ = false;
    fireEvent(frameNumber() == startFrame_ ? "clicked" : "fired");
    letGo();
}

void RTrigger::onReleaseLost() {
    if (!turning_) return;
    turning_ = false;
    letGo();
}

void RTrigger::letGo() {
    setMouseCapture(false);
    setCursor();
}
