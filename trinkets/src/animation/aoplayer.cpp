#include "aoplayer.h"

#include "formats/animation/animation.h"

#include "platform/clock.h"

#include <functional>

namespace {

/// On a clock that wraps.
bool isBefore(std::uint32_t a, std::uint32_t b) { return static_cast<std::int32_t>(a - b) < 0; }

} // namespace

AOPlayer::AOPlayer(const AOPlayer& other)
    : sequences_(other.sequences_), playLinks_(other.playLinks_), sequence_(other.sequence_),
      position_(other.position_), shown_(other.shown_), current_(other.shown_),
      state_(other.awaitedSound_ != kNoSound ? State::Resumed : other.state_), dueMs_(other.dueMs_),
      framesPerSecond_(other.framesPerSecond_), repeatCount_(other.repeatCount_),
      stopPosition_(other.stopPosition_), soundOn_(other.soundOn_), soundSync_(other.soundSync_),
      catchUp_(other.catchUp_) {
    all_.append(this);
}

void AOPlayer::playAnew(const AOSequences& sequences, int framesPerSecond) {
    voice_.silence();
    pendingFinish_ = false;
    sequences_ = AOSequences(sequences);
    sequence_ = 0;
    framesPerSecond_ = framesPerSecond;
    restart();
}

void AOPlayer::leave() {
    voice_.leave();
    all_.remove(this);
    stop();
    playLinks_ = {};
}

// States

void AOPlayer::enter(State state) {
    state_ = state;
    awaitedSound_ = kNoSound;
}

void AOPlayer::play() {
    if (state_ == State::Playing) return;
    enter(State::Playing);
    dueMs_.reset();
}

void AOPlayer::forever() {
    setRepeatCount(kLoopForever);
    play();
}

// Positions

int AOPlayer::sequenceLength() const { return static_cast<int>(entries().size()) - 1; }

AOEntry AOPlayer::at(int position) const {
    if (position < 0 || position > sequenceLength()) return {0, 0, AOEntry::kEnd, 0};
    return entries()[static_cast<std::size_t>(position)];
}

int AOPlayer::framesUpTo(int position) const {
    const AOSequence& all = entries();
    const auto end = all.begin() + std::min<std::ptrdiff_t>(position + 1, std::ssize(all));
    return static_cast<int>(std::count_if(all.begin(), end, std::mem_fn(&AOEntry::isFrame)));
}

void AOPlayer::setSequence(int index, bool startAgain) {
    if (!sequences_.has(index)) return;
    sequence_ = index;
    if (startAgain)
        restart();
    else
        setPosition(position_);
}

void AOPlayer::setPosition(int position) { goTo(std::clamp(position, 0, sequenceLength())); }

void AOPlayer::setFrameNumber(int number) {
    if (number < 1) return;
    for (int i = 0; i < sequenceLength(); ++i)
        if (at(i).isFrame() && --number == 0) return goTo(i);
}

void AOPlayer::restart() {
    rewind();
    enter(at(0).code == AOEntry::kHold ? State::Held : State::Playing);
}

/// To the start, behind a hold there: it was obeyed by not playing yet.
void AOPlayer::rewind() {
    goTo(0);
    if (at(0).code == AOEntry::kHold) position_ = 1;
}

void AOPlayer::goTo(int position) {
    ++jumps_;
    position_ = position;
    dueMs_.reset();
    for (int entry = position; entry < sequenceLength(); ++entry)
        if (at(entry).isFrame()) return show(entry);
    current_ = shown_ = position;
}

void AOPlayer::show(int position) {
    showEntry(at(position));
    current_ = shown_ = position;
}

// Stepping

void AOPlayer::playStep(std::uint32_t clock) {
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

bool AOPlayer::runEntry(std::uint32_t clock) {
    const AOEntry entry = at(position_);
    const unsigned before = jumps_;
    current_ = position_;
    if (entry.isFrame())
        runFrame(entry, clock);
    else if (entry.code <= AOEntry::kFirstMarker)
        runMarker(entry.code);
    else if (entry.code == AOEntry::kSound)
        runSound(entry.argument);
    else if (entry.code == AOEntry::kHold && repeatCount_ == 0)
        runHold();
    else if (entry.code == AOEntry::kEnd && repeatCount_ == 0)
        return runEnd();
    else if (entry.code == AOEntry::kEnd || entry.code == AOEntry::kLoop)
        return runLoop();
    if (jumps_ != before) return false;
    ++position_;
    passStop();
    return !entry.isFrame();
}

void AOPlayer::runFrame(const AOEntry& entry, std::uint32_t clock) {
    show(position_);
    const int ms = framesPerSecond_ > 0 ? platform::kMsPerSecond / framesPerSecond_
                                        : std::max<int>(entry.argument, 0);
    dueMs_ = (catchUp_ && dueMs_ ? *dueMs_ : clock) + static_cast<std::uint32_t>(ms);
    frameShown();
}

void AOPlayer::runMarker(int code) {
    const auto marker = playLinks_.marker;
    marker(code);
    markerReached();
}

/// With sound synchronisation the animation holds until this very sound has ended.
void AOPlayer::runSound(int id) {
    if (!soundOn_ || !voice_.canPlay(id)) return;
    const unsigned sound = ++lastSound_;
    if (soundSync_) {
        state_ = State::Held;
        awaitedSound_ = sound;
    }
    const bool plays = voice_.play(id, [this, sound] { soundEnded(sound); });
    if (!plays && awaitedSound_ == sound) enter(State::Playing);
}

void AOPlayer::runHold() {
    state_ = State::Held;
    finish();
}

bool AOPlayer::runEnd() {
    state_ = State::Stopped;
    vanish();
    rewind();
    finish();
    return false;
}

bool AOPlayer::runLoop() {
    if (repeatCount_ == 1) {
        repeatCount_ = 0;
        // On the last frame.
        position_ = std::max(position_ - 1, 0);
        while (position_ > 0 && !at(position_).isFrame()) --position_;
        runHold();
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

/// Tells when playback has come to the stop position.
void AOPlayer::passStop() {
    if (stopPosition_ == kNoStop || position_ != stopPosition_) return;
    stopPosition_ = kNoStop;
    const OMLink stopAt = playLinks_.stopAt;
    stopAt();
}

void AOPlayer::finish() {
    pendingFinish_ = soundSync_ && voice_.isHeard();
    if (!pendingFinish_) tellFinished();
}

// Sounds

void AOPlayer::setSoundOn(bool on) {
    soundOn_ = on;
    if (on || !voice_.isHeard()) return;
    voice_.silence();
    if (awaitedSound_ != kNoSound) resume();
    soundsSilent();
}

void AOPlayer::soundEnded(unsigned sound) {
    if (awaitedSound_ == sound) resume();
    if (!voice_.isHeard()) soundsSilent();
}

/// All sounds have ended or were stopped.
void AOPlayer::soundsSilent() {
    const bool playsAgain = state_ == State::Playing || state_ == State::Resumed;
    if (std::exchange(pendingFinish_, false) && !playsAgain) finish();
    const OMLink done = playLinks_.allSoundsDone;
    done();
}

std::optional<AOPlayer::NextSound> AOPlayer::nextSound(int position) {
    for (int i = 0; i < sequenceLength(); ++i)
        if (const AOEntry entry = at(i); i > position && entry.code == AOEntry::kSound)
            return NextSound{&voice_.record(entry.argument), entry.argument, framesUpTo(i), i};
    return std::nullopt;
}

// Editing

int AOPlayer::addSequence(AOSequence entries) {
    sequences_.add(std::move(entries));
    return sequenceCount() - 1;
}

void AOPlayer::deleteSequence(int index) {
    if (index == kCurrent) index = sequence_;
    if (!sequences_.remove(index) || index > sequence_) return;
    if (index < sequence_) {
        --sequence_;
        return;
    }
    sequence_ = std::clamp(sequence_, 0, std::max(sequenceCount() - 1, 0));
    goTo(0);
}

std::optional<AOEntry> AOPlayer::entryAt(int position) const {
    if (!sequences_.hasEntry(sequence_, position, true)) return std::nullopt;
    return at(position);
}

void AOPlayer::replaceEntry(const AOEntry& entry, int position) {
    if (position == kCurrent) position = current_;
    if (!sequences_.replace(sequence_, position, entry)) return;
    // All who use that sequence show the new frame at once.
    const AOSequence& changed = entries();
    OMListLocator<AOPlayer> locator(all_);
    while (AOPlayer* player = locator.next()) player->entryReplaced(changed, position);
}

void AOPlayer::entryReplaced(const AOSequence& changed, int position) {
    if (&entries() != &changed || position != shown_ || !at(position).isFrame()) return;
    const int current = current_;
    show(position);
    current_ = current;
}

AOEntry AOPlayer::currentEntry() const { return at(current_); }

void AOPlayer::setCurrentEntry(const AOEntry& entry) {
    if (current_ >= sequenceLength()) return;
    AOSequence& own = sequences_.own(sequence_);
    own[static_cast<std::size_t>(current_)] = entry;
    entryReplaced(own, current_);
}

/// The entry that playback goes on with: in a step the one behind the entry that runs.
int AOPlayer::nextPosition() const {
    return stepping_ && position_ == current_ ? position_ + 1 : position_;
}

void AOPlayer::insertEntry(const AOEntry& entry, int position) {
    if (!sequences_.insert(sequence_, position, entry)) return;
    // An entry in front of the next one is played; the frame shown stays.
    if (position < nextPosition()) ++position_;
    if (position <= shown_) ++shown_;
    if (position <= current_) ++current_;
}

void AOPlayer::deletePosition(int position) {
    if (position == kCurrent) position = current_;
    if (!sequences_.erase(sequence_, position)) return;
    if (position == shown_) {
        const int next = nextPosition() - (position < nextPosition() ? 1 : 0);
        goTo(position);
        position_ = std::max(position_, next);
        return;
    }
    // In a step, what comes next must not be taken for the entry that is gone.
    if (position == position_) ++jumps_;
    if (position < position_) --position_;
    if (position < shown_) --shown_;
    if (position < current_) --current_;
}
