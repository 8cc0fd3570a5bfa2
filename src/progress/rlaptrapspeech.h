// What the progress screen says: sounds that follow each other.
#pragma once

#include <deque>
#include <memory>

class LapTrapSpeech {
  public:
    LapTrapSpeech() = default;
    ~LapTrapSpeech() { stop(); }
    LapTrapSpeech(const LapTrapSpeech&) = delete;
    LapTrapSpeech& operator=(const LapTrapSpeech&) = delete;

    /// When all that was to be said before has ended. OMEffectSounds::kNoSound is silent; without
    /// sounds a failed check, and no effect.
    void say(int sound);
    /// Ends the sound that plays; the others are not played.
    void stop();

  private:
    void next();

    std::deque<int> waiting_;
    std::shared_ptr<int> handle_; ///< of the sound that plays; null while none does
};
