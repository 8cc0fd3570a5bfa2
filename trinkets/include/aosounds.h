// What animations need of the sound engine. Without one, the sound entries of sequences are passed.
#pragma once

#include "ominstalled.h"
#include "omlink.h"

class OMAnimation;

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
    virtual Start play(OMAnimation& animation, int id, OMLink done) = 0;
    /// Ends all sounds of an animation; their `done` links are not called any more.
    virtual void stop(OMAnimation& animation) = 0;
    /// Holds what is heard of an animation where it is, and lets it go on.
    virtual void pause(OMAnimation& animation) = 0;
    virtual void resume(OMAnimation& animation) = 0;
    /// The animation goes, which must not play any sound then.
    virtual void forget(OMAnimation& animation) = 0;
};
