// Plays the sequences of an animation.
//
// In each step whose time has come it runs the entries of the current sequence from the current
// position on until a frame was shown, or until it holds. Handlers are called in the middle of that
// and may end the player or send it elsewhere; what they asked for then counts. Who shows the
// frames derives from it.
#pragma once

#include "aosequences.h"
#include "aosounds.h"
#include "omlink.h"
#include "omlist.h"

#include <algorithm>
#include <cstdint>
#include <optional>

class OMScriptableObject;

class AOPlayer {
  public:
    static constexpr int kLoopForever = -1; ///< repeat count
    static constexpr int kNoStop = -1;      ///< stop position
    static constexpr int kCurrent = -1;     ///< the current sequence or entry, where edited

    enum class State : std::uint8_t {
        Stopped = 0,
        Playing = 1,
        Held = 2,    ///< by a hold code, a pause, the end of the repeats, or until a sound ends
        Resumed = 3, ///< plays on in the next step, which sets the time anew
    };

    /// What the owner wants to hear of.
    struct PlayLinks {
        OMLink looped;
        OMLink finished; ///< at a hold or at the end, before the event "paused"
        OMLink allSoundsDone;
        OMLinkTo<void(int code)> marker; ///< before the event "special"
        OMLink stopAt;
    };

    /// That of an animation, for the words of scripts.
    [[nodiscard]] static AOPlayer& of(OMScriptableObject& animation);

    // Queries.

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] int sequenceCount() const { return sequences_.count(); }
    [[nodiscard]] int sequenceIndex() const { return sequence_; } ///< from 0
    [[nodiscard]] int position() const { return position_; }      ///< the entry that comes next
    [[nodiscard]] int shownPosition() const { return shown_; }
    /// Entries before the terminating one.
    [[nodiscard]] int sequenceLength() const;
    /// Frame entries of the current sequence.
    [[nodiscard]] int frameCount() const { return framesUpTo(sequenceLength()); }
    [[nodiscard]] int repeatCount() const { return repeatCount_; }
    [[nodiscard]] int framesPerSecond() const { return framesPerSecond_; }
    [[nodiscard]] bool isSoundOn() const { return soundOn_; }
    [[nodiscard]] bool isSoundSync() const { return soundSync_; }
    [[nodiscard]] PlayLinks& playLinks() { return playLinks_; }
    [[nodiscard]] AOVoice& voice() { return voice_; }

    // Playing.

    void play();
    void pause() {
        if (state_ != State::Stopped) enter(State::Held);
    }
    void resume() {
        if (state_ == State::Held) enter(State::Resumed);
    }
    void stop() { enter(State::Stopped); }
    void forever();
    /// n > 0: n times in all, then hold on the last frame; 0: until the sequence ends itself.
    void setRepeatCount(int count) { repeatCount_ = count; }
    /// 0: each frame entry carries its duration. Negative rates count as 0.
    void setFramesPerSecond(int rate) { framesPerSecond_ = std::max(rate, 0); }
    void setSoundOn(bool on);
    void setSoundSync(bool on) { soundSync_ = on; }
    void setCatchUp(bool on) { catchUp_ = on; }
    /// A sequence that does not exist fails a check and changes nothing. Without `restart` the
    /// position stays as far as the new sequence goes.
    void setSequence(int index, bool restart);
    /// Goes to an entry and shows the first frame from there on.
    void setPosition(int position);
    /// The stopAt link is called once, when playback has come to that position.
    void setStopPosition(int position) { stopPosition_ = position; }

    // By numbers from 1, as scripts do.

    [[nodiscard]] int frameNumber() const { return framesUpTo(shown_); }
    void setFrameNumber(int number);
    [[nodiscard]] int sequenceNumber() const { return sequence_ + 1; }
    void setSequenceNumber(int number) { setSequence(std::max(number, 0) - 1, true); }

    // Editing, see AOSequences. Playback goes on with the entry that was next before; when the
    // entry of the frame shown is deleted, the next frame behind it is shown.

    /// Returns the index.
    int addSequence(AOSequence entries);
    /// Instead of the current sequence the one that takes its place is shown, or the last one.
    void deleteSequence(int index = kCurrent);
    void replaceEntry(const AOEntry& entry, int position = kCurrent);
    void deletePosition(int position = kCurrent);
    /// Before the entry at `position`, which may be the end.
    void insertEntry(const AOEntry& entry, int position);
    [[nodiscard]] std::optional<AOEntry> entryAt(int position) const;
    /// The one being run, else the one shown.
    [[nodiscard]] AOEntry currentEntry() const;
    /// In an own copy of the sequence.
    void setCurrentEntry(const AOEntry& entry);

    struct NextSound {
        AOSoundRecord* record; ///< lives as long as the player
        int id;
        int frame; ///< number of the frame it follows, from 1; 0 before the first one
        int position;
    };
    /// The first sound entry of the sequence behind `position` (-1: from its start on).
    [[nodiscard]] std::optional<NextSound> nextSound(int position);

  protected:
    /// Its heir calls `playAnew` before anything else, and `leave` at its end.
    AOPlayer() { all_.append(this); }
    AOPlayer(const AOPlayer& other);
    ~AOPlayer() = default;

    /// Other sequences, from their start on. Sounds of the old ones end.
    void playAnew(const AOSequences& sequences, int framesPerSecond);
    void playStep(std::uint32_t clock);
    /// Is silent, plays no more, and tells nobody.
    void leave();

    /// A frame entry is to be seen from now on.
    virtual void showEntry(const AOEntry& entry) = 0;
    /// Called in a step after each frame entry that was shown. The player may end in it, as in all
    /// that follow.
    virtual void frameShown() {}
    virtual void markerReached() = 0;
    /// Nothing is to be seen: a sequence has come to its end.
    virtual void vanish() = 0;
    /// Tells of a hold or an end, in place of the link `finished`.
    virtual void tellFinished() = 0;

  private:
    [[nodiscard]] const AOSequence& entries() const { return sequences_[sequence_]; }
    /// The end for a position that does not exist.
    [[nodiscard]] AOEntry at(int position) const;
    [[nodiscard]] int framesUpTo(int position) const;
    void entryReplaced(const AOSequence& entries, int position);
    [[nodiscard]] int nextPosition() const;

    void enter(State state);
    void restart();
    void rewind();
    void goTo(int position);
    void show(int position);

    /// Tells whether the step goes on with the next one.
    bool runEntry(std::uint32_t clock);
    void runFrame(const AOEntry& entry, std::uint32_t clock);
    void runMarker(int code);
    void runSound(int id);
    void runHold();
    bool runEnd();
    bool runLoop();
    void passStop();

    void soundEnded(unsigned sound);
    void soundsSilent();
    void finish();

    static inline OMList<AOPlayer> all_; ///< in the order of their making

    AOSequences sequences_;
    AOVoice voice_;
    PlayLinks playLinks_;

    int sequence_ = 0;
    int position_ = 0;
    int shown_ = 0;         ///< position of the frame that is shown
    int current_ = 0;       ///< the entry that scripts see: the one being run, else the one shown
    unsigned jumps_ = 0;    ///< counts changes of position from outside of a step
    bool stepping_ = false; ///< a handler may have the player step again
    bool lapped_ = false;   ///< went back to the start in this step, without a frame since

    State state_ = State::Playing;
    std::optional<std::uint32_t> dueMs_; ///< on the clock of the steps
    int framesPerSecond_ = 0;
    int repeatCount_ = 0;
    int stopPosition_ = kNoStop;
    bool soundOn_ = true;
    bool soundSync_ = true; ///< hold while a sound of the sequence plays
    bool catchUp_ = true;   ///< late frames follow each other faster, so that no time is lost

    static constexpr unsigned kNoSound = 0;
    unsigned lastSound_ = kNoSound;    ///< sounds are numbered as they start
    unsigned awaitedSound_ = kNoSound; ///< held until it ends
    bool pendingFinish_ = false;
};
