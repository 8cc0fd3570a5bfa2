#include "progress/rlaptrapspeech.h"

#include "omeffectsounds.h"

#include <utility>

void LapTrapSpeech::say(int sound) {
    if (sound == OMEffectSounds::kNoSound) return;
    waiting_.push_back(sound);
    if (!handle_) next();
}

void LapTrapSpeech::next() {
    while (!waiting_.empty()) {
        const int sound = waiting_.front();
        waiting_.pop_front();
        OMEffectSounds* sounds = OMEffectSounds::require(
            "soundURLEx == NULL", "Extended Sound URL is not installed in RLapTrap");
        if (!sounds) continue;
        const auto handle = std::make_shared<int>(OMEffectSounds::kNotPlaying);
        handle_ = handle;
        *handle = sounds->playEffect(sound, [this, which = std::weak_ptr(handle)] {
            // Of a speech that was stopped, nothing is left.
            if (which.expired()) return;
            handle_.reset();
            next();
        });
        if (handle_ != handle) return; // it has ended already
        if (*handle != OMEffectSounds::kNotPlaying) return;
        handle_.reset();
    }
}

void LapTrapSpeech::stop() {
    waiting_.clear();
    if (!handle_) return;
    const int handle = *std::exchange(handle_, nullptr);
    if (OMEffectSounds* sounds = OMEffectSounds::current()) sounds->endEffect(handle);
}
