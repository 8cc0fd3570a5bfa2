// One layer of a character: an animated object that stands on its first frame until it is played.
//
// Its frames go on while its sounds are heard: the mouth moves while it talks. What is played has
// ended when both are over; an end of the sequence leaves it seen until then.
#pragma once

#include "omlink.h"

#include <memory>

class OMAnimation;

class RCharacterLayer {
  public:
    /// Not null.
    explicit RCharacterLayer(std::unique_ptr<OMAnimation> animation);
    ~RCharacterLayer();
    RCharacterLayer& operator=(RCharacterLayer&&) = delete;

    [[nodiscard]] OMAnimation& animation() { return *animation_; }

    /// From the first frame of a sequence (from 0) on; `repeat` as OMAnimation::setRepeatCount.
    /// `ended` is called once, at the end; the layer may go in it.
    void play(int sequence, int repeat, OMLink ended);
    /// Falls silent and goes back to the first frame. The link is not called any more.
    void rest();
    /// With its sounds. Without effect unless it plays, or did when it was paused.
    void pause();
    void resume();

  private:
    [[nodiscard]] bool isHeard();
    void sequenceEnded();
    void soundsEnded();

    std::unique_ptr<OMAnimation> animation_;
    OMLink ended_;
    bool plays_ = false; ///< its sequence has not ended
    bool paused_ = false;
};
