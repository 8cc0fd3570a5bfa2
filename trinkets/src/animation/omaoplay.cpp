// How an animation plays: its states, its steps through a sequence, and its sounds.

#include "omao.h"

#include "aosounds.h"
#include "formats/animation/animation.h"

#include "platform/clock.h"

#include <algorithm>

namespace {

/// On a clock that wraps.
bool isBefore(std::uint32_t a, std::uint32_t b) { return static_cast<std::int32_t>(a - b) < 0; }

} // namespace

// States

void OMAnimation::play() {
    if (state_ == State::Playing) return;
    state_ = State::Playing;
    dueMs_.reset();
    awaitedSound_ = kNoSound;
}

void OMAnimation::pause() {
    if (state_ == State::Stopped) return;
    state_ = State::Held;
    awaitedSound_ = kNoSound;
}

void OMAnimation::resume() {
    if (state_ != State::Held) return;
    state_ = State::Resumed;
    awaitedSound_ = kNoSound;
}

void OMAnimation::stop() {
    state_ = State::Stopped;
    awaitedSound_ = kNoSound;
}

void OMAnimation::endPlayback() {
    stop();
    fireCompletion();
}

void OMAnimation::forever() {
    setRepeatCount(kLoopForever);
    play();
}

void OMAnimation::setFramesPerSecond(int rate) { framesPerSecond_ = std::max(rate, 0); }

// Stepping

void OMAnimation::step(std::uint32_t clock) {
    if (stepping_) return;
    if (state_ == State::Resumed) {
        state_ = State::Playing;
        dueMs_ = clock;
    }
    if (state_ != State::Playing || (dueMs_ && isBefore(clock, *dueMs_))) return;
    stepping_ = true;
    lapped_ = false;
    while (state_ == State::Playing && runEntry(clock)) {
    }
    stepping_ = false;
    current_ = shown_;
}

bool OMAnimation::runEntry(std::uint32_t clock) {
    const AOEntry entry = at(position_);
    current_ = position_;
    if (entry.isFrame()) return runFrame(entry, clock);
    if (entry.code <= AOEntry::kFirstMarker) return runMarker(entry);
    switch (entry.code) {
    case AOEntry::kSound: return runSound(entry);
    case AOEntry::kHold: return runHold();
    case AOEntry::kEnd: return repeatCount_ == 0 ? runEnd() : runLoop();
    case AOEntry::kLoop: return runLoop();
    default: return advance();
    }
}

std::uint32_t OMAnimation::durationMs(const AOEntry& entry) const {
    if (framesPerSecond_ > 0)
        return static_cast<std::uint32_t>(platform::kMsPerSecond / framesPerSecond_);
    return static_cast<std::uint32_t>(std::max<int>(entry.argument, 0));
}

bool OMAnimation::runFrame(const AOEntry& entry, std::uint32_t clock) {
    show(position_);
    dueMs_ = (catchUp_ && dueMs_ ? *dueMs_ : clock) + durationMs(entry);
    const unsigned before = jumps_;
    frameShown();
    if (jumps_ == before) advance();
    return false;
}

bool OMAnimation::runSound(const AOEntry& entry) {
    const unsigned before = jumps_;
    startSound(entry.argument);
    return jumps_ == before && advance();
}

bool OMAnimation::runHold() {
    if (repeatCount_ == 0) {
        state_ = State::Held;
        const unsigned before = jumps_;
        finish();
        if (jumps_ != before) return false;
    }
    return advance();
}

bool OMAnimation::runEnd() {
    state_ = State::Stopped;
    setVisible(false);
    rewind();
    finish();
    return false;
}

bool OMAnimation::runLoop() {
    if (repeatCount_ == 1) {
        repeatCount_ = 0;
        holdOnLastFrame();
        finish();
        return false;
    }
    position_ = 0;
    if (repeatCount_ > 0) --repeatCount_;
    // A sequence without frames would go round for ever.
    const bool goesOn = !std::exchange(lapped_, true);
    const OMLink looped = playLinks_.looped;
    looped();
    passStop();
    return goesOn;
}

void OMAnimation::holdOnLastFrame() {
    state_ = State::Held;
    int last = position_ - 1;
    while (last > 0 && !at(last).isFrame()) --last;
    position_ = std::max(last, 0);
}

bool OMAnimation::runMarker(const AOEntry& entry) {
    const unsigned before = jumps_;
    const auto marker = playLinks_.marker;
    marker(entry.code);
    fireEvent("special");
    return jumps_ == before && advance();
}

/// To the next entry, and on.
bool OMAnimation::advance() {
    ++position_;
    passStop();
    return true;
}

/// Tells when playback has come to the stop position.
void OMAnimation::passStop() {
    if (stopPosition_ == kNoStop || position_ != stopPosition_) return;
    stopPosition_ = kNoStop;
    const OMLink stopAt = playLinks_.stopAt;
    stopAt();
}

void OMAnimation::finish() {
    if (soundSync_ && playingSounds_ > 0) {
        pendingFinish_ = true;
        return;
    }
    pendingFinish_ = false;
    // A handler may have it played again and wait for that.
    const OMLink completion = takeCompletion();
    const OMLink finished = playLinks_.finished;
    finished();
    fireEvent("paused");
    completion();
}

// Sounds

void OMAnimation::silence() {
    if (playingSounds_ == 0) return;
    if (AOSounds* sounds = AOSounds::current()) sounds->stop(*this);
    playingSounds_ = 0;
    for (auto& [id, record] : soundRecords_) record.plays = 0;
}

void OMAnimation::setSoundOn(bool on) {
    soundOn_ = on;
    if (on || playingSounds_ == 0) return;
    silence();
    if (awaitedSound_ != kNoSound) resume();
    soundsSilent();
}

/// With sound synchronisation the animation holds until this very sound has ended.
void OMAnimation::startSound(int id) {
    AOSounds* sounds = AOSounds::current();
    if (!soundOn_ || !sounds) return;
    AOSoundRecord& record = soundRecord(id);
    if (record.isMissing) return;
    const unsigned sound = ++lastSound_;
    ++playingSounds_;
    if (soundSync_) {
        state_ = State::Held;
        awaitedSound_ = sound;
    }
    ++record.plays;
    const AOSounds::Start start =
        sounds->play(*this, id, whileActive([this, sound, &record] { soundEnded(sound, record); }));
    // A box that tells of a missing sound may end a drag, whose handlers may do anything.
    if (isRetired() || start == AOSounds::Start::Plays) return;
    --record.plays;
    --playingSounds_;
    record.isMissing = start == AOSounds::Start::Never;
    if (awaitedSound_ != sound) return;
    awaitedSound_ = kNoSound;
    state_ = State::Playing;
}

AOSoundRecord& OMAnimation::soundRecord(int id) {
    return soundRecords_.try_emplace(id, AOSoundRecord{.id = id}).first->second;
}

void OMAnimation::soundEnded(unsigned sound, AOSoundRecord& record) {
    if (record.plays > 0) --record.plays;
    if (awaitedSound_ == sound) resume();
    if (playingSounds_ > 0 && --playingSounds_ == 0) soundsSilent();
}

/// All sounds have ended or were stopped.
void OMAnimation::soundsSilent() {
    const bool playsAgain = state_ == State::Playing || state_ == State::Resumed;
    if (std::exchange(pendingFinish_, false) && !playsAgain) finish();
    const OMLink done = playLinks_.allSoundsDone;
    done();
}
