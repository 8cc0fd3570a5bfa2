// What animations need of the sound engine. It is installed by the engine; without one, the sound
// entries of sequences are passed.
#pragma once

#include "omlink.h"

class OMAnimation;

class AOSounds {
  public:
    virtual ~AOSounds() = default;

    /// Plays the sound resource `id` for an animation and calls `done` once, when it has ended.
    /// False, and `done` never called, when it cannot be played.
    virtual bool play(OMAnimation& animation, int id, OMLink done) = 0;
    /// Ends all sounds of an animation; their `done` links are not called any more.
    virtual void stop(OMAnimation& animation) = 0;
};
