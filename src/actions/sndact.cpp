#include "sndact.h"

#include "actionparameters.h"
#include "sound/streamsound.h"

SoundAction::SoundAction(int id, bool streamed, bool interruptible)
    : OMSCopied(interruptible), id_(id), streamed_(streamed) {}

SoundAction::SoundAction(const SoundAction& other)
    : OMSCopied(other), id_(other.id_), streamed_(other.streamed_) {}

std::unique_ptr<Action> SoundAction::create(ActionParameters& parameters) {
    const int id = parameters.integer("sound ID");
    const bool streamed = parameters.flag("streamed", false);
    return std::make_unique<SoundAction>(id, streamed, parameters.interruptible());
}

void SoundAction::begin() {
    if (id_ != kNoSound)
        sound_ = RSoundStreams::load(id_, streamed_ ? kOMIStreamBuffered : kOMIStreamCache,
                                     "Stream URL is not installed in SoundAction");
    if (!sound_) {
        finish();
        return;
    }
    sound_->sound.setFinishedLink(doneLink());
    if (!sound_->sound.play(true)) finish();
}

void SoundAction::end(End) { sound_.reset(); }
void SoundAction::hold() { sound_->sound.pause(); }
void SoundAction::goOn() { sound_->sound.resume(); }
