#include "omsound.h"

#include "omdebug.h"

#include <algorithm>

namespace {

/// Through a copy: the sound, and its link with it, may be destroyed meanwhile.
void call(OMLink link) { link(); }

} // namespace

OMSound::OMSound() { OMDebug::requireApp("OMSound"); }

void OMSound::setVolume(int volume) { volume_ = std::clamp(volume, 0, kFullVolume); }

void OMSound::setPlayCount(int count) {
    if (OMDebug::check(count == kOMSoundPlayForever || count > 0,
                       "count == kOMSoundPlayForever || count > 0",
                       "OMSound::setPlayCount - count must be kOMSoundPlayForever or greater than "
                       "0!"))
        playCount_ = count;
}

void OMSound::notifyStarted() {
    startedNotified_ = true;
    call(startedLink_);
}

void OMSound::notifyFinished() {
    startedNotified_ = false;
    call(finishedLink_);
}

void OMSound::notifyPaused() { call(pausedLink_); }

void OMSound::notifyResumed() { call(resumedLink_); }
