// The sounds of animations: what they need of the sound engine, and what is heard of each of them.
// Without an engine, the sound entries of sequences are passed.
#pragma once

#include "ominstalled.h"
#include "omlink.h"

#include <unordered_map>

class AOVoice;

class AOSounds : public OMInstalled<AOSounds> {
  public:
    enum class Start {
        Plays,
        NotNow, ///< the next time it may
        Never,  ///< there is no such sound
    };

    virtual ~AOSounds() = default;

    /// Plays the sound resource `id` for an animation. `done` is called once, when it has ended,
    /// and never unless it plays.
    virtual Start play(AOVoice& voice, int id, OMLink done) = 0;
    /// Ends all sounds of an animation; their `done` links are not called any more.
    virtual void stop(AOVoice& voice) = 0;
    /// Holds what is heard of an animation where it is, and lets it go on.
    virtual void pause(AOVoice& voice) = 0;
    virtual void resume(AOVoice& voice) = 0;
    /// The animation goes, which must not play any sound then.
    virtual void forget(AOVoice& voice) = 0;
};

/// How often an animation plays a sound at the moment.
struct AOSoundRecord {
    int id = 0; ///< of the sound resource
    int plays = 0;
    bool isMissing = false; ///< there is no such sound; a loop would complain in every round
};

/// What is heard of one animation.
class AOVoice {
  public:
    AOVoice() = default;
    AOVoice(const AOVoice&) = delete;

    [[nodiscard]] bool isHeard() const { return playing_ > 0; }
    /// Lives as long as the voice.
    [[nodiscard]] AOSoundRecord& record(int id) {
        return records_.try_emplace(id, AOSoundRecord{.id = id}).first->second;
    }
    [[nodiscard]] bool canPlay(int id) { return AOSounds::current() && !record(id).isMissing; }

    /// `ended` is called once, when the sound has ended by itself, which may be at once. False when
    /// it does not play. Only what canPlay.
    bool play(int id, OMLink ended) {
        AOSoundRecord& its = record(id);
        ++playing_;
        ++its.plays;
        const auto start = AOSounds::current()->play(*this, id, [this, &its, ended] {
            endOne(its);
            ended();
        });
        // A box that tells of a missing sound may end a drag, whose handlers may do anything.
        if (hasLeft_) leave();
        if (hasLeft_ || start == AOSounds::Start::Plays) return true;
        endOne(its);
        its.isMissing = start == AOSounds::Start::Never;
        return false;
    }
    void pause() { tell(&AOSounds::pause); }
    void resume() { tell(&AOSounds::resume); }
    void silence() {
        if (playing_ == 0) return;
        tell(&AOSounds::stop);
        playing_ = 0;
        for (auto& [id, record] : records_) record.plays = 0;
    }
    /// For good.
    void leave() {
        hasLeft_ = true;
        if (records_.empty()) return;
        tell(&AOSounds::stop);
        tell(&AOSounds::forget);
    }

  private:
    void tell(void (AOSounds::*what)(AOVoice&)) {
        if (AOSounds* sounds = AOSounds::current()) (sounds->*what)(*this);
    }
    /// Handlers may have silenced all meanwhile.
    void endOne(AOSoundRecord& record) {
        if (record.plays > 0) --record.plays;
        if (playing_ > 0) --playing_;
    }

    int playing_ = 0;
    bool hasLeft_ = false;
    std::unordered_map<int, AOSoundRecord> records_; ///< by sound id
};
