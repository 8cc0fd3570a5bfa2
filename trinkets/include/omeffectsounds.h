// What objects on the screen need of the game's sounds: a click, a rattle, played once by its
// number.
#pragma once

#include "ominstalled.h"
#include "omlink.h"

class OMEffectSounds : public OMInstalled<OMEffectSounds> {
  public:
    static constexpr int kNoSound = -1;    ///< instead of an id
    static constexpr int kNotPlaying = -1; ///< instead of a handle

    virtual ~OMEffectSounds() = default;

    /// Plays the sound resource `id` once. `done` is called when it has ended or was ended; never
    /// for a sound that cannot be played, which gives kNotPlaying.
    virtual int playEffect(int id, OMLink done) = 0;
    /// Plays it where there is an id (not kNoSound); a failed check without sounds, and no effect.
    static void playIfAny(int id, std::string_view condition, std::string_view message,
                          OMDebug::Place place = OMDebug::Place::here()) {
        if (id == kNoSound) return;
        if (OMEffectSounds* sounds = require(condition, message, place))
            sounds->playEffect(id, nullptr);
    }
    /// Ends a sound; one that has ended does nothing.
    virtual void endEffect(int handle) = 0;
};
