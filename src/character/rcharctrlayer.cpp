#include "rcharctrlayer.h"

#include "omao.h"
#include "ommultitrinket.h"

#include <utility>

RCharacterLayer::RCharacterLayer(std::unique_ptr<OMAnimation> animation)
    : animation_(std::move(animation)) {
    animation_->setSoundSync(false);
    rest();
}

RCharacterLayer::~RCharacterLayer() = default;

void RCharacterLayer::play(int sequence, int repeat, OMLink ended) {
    rest();
    animation_->setSequence(sequence, true);
    animation_->setRepeatCount(repeat);
    animation_->play();
    animation_->playLinks().finished = [this] { sequenceEnded(); };
    animation_->playLinks().allSoundsDone = [this] { soundsEnded(); };
    ended_ = std::move(ended);
    plays_ = true;
}

void RCharacterLayer::rest() {
    animation_->playLinks() = {};
    ended_ = nullptr;
    plays_ = paused_ = false;
    animation_->stop();
    const bool soundOn = animation_->isSoundOn();
    animation_->setSoundOn(false); // ends those that are heard
    animation_->setSoundOn(soundOn);
    animation_->setPosition(0);
}

void RCharacterLayer::pause() {
    if (!plays_ && !ended_) return;
    paused_ = true;
    if (plays_) animation_->pause();
    animation_->voice().pause();
}

void RCharacterLayer::resume() {
    if (!std::exchange(paused_, false)) return;
    if (plays_) animation_->resume();
    animation_->voice().resume();
}

bool RCharacterLayer::isHeard() {
    for (auto sound = animation_->nextSound(-1); sound;
         sound = animation_->nextSound(sound->position))
        if (sound->record->plays > 0) return true;
    return false;
}

void RCharacterLayer::sequenceEnded() {
    plays_ = paused_ = false;
    if (isHeard()) {
        // The end of a sequence has hidden it.
        const OMMultiTrinket* character = animation_->group();
        animation_->setVisible(character && character->isVisible());
        return;
    }
    const OMLink ended = std::exchange(ended_, nullptr);
    ended();
}

void RCharacterLayer::soundsEnded() {
    if (plays_) return;
    const OMLink ended = std::exchange(ended_, nullptr);
    ended();
}
