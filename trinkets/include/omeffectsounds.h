// What objects on the screen need of the game's sounds: a click, a rattle, played once by its
// number.
#pragma once

#include "omlink.h"

class OMEffectSounds {
  public:
    static constexpr int kNotPlaying = -1; ///< instead of a handle

    OMEffectSounds() = default;
    virtual ~OMEffectSounds() = default;
    OMEffectSounds(const OMEffectSounds&) = delete;
    OMEffectSounds& operator=(const OMEffectSounds&) = delete;

    /// Plays the sound resource `id` once. `done` is called when it has ended or was ended; never
    /// for a sound that cannot be played, which gives kNotPlaying.
    virtual int playEffect(int id, OMLink done) = 0;
    /// Ends a sound; one that has ended does nothing.
    virtual void endEffect(int handle) = 0;

    /// Null while there are none. Not owned.
    [[nodiscard]] static OMEffectSounds* current() { return current_; }
    static void setCurrent(OMEffectSounds* sounds) { current_ = sounds; }

  private:
    static inline OMEffectSounds* current_ = nullptr;
};
