// A sound together with the stream that it is read from.
#pragma once

#include "omistream.h"
#include "omwavesound.h"

#include <memory>
#include <utility>

class RStreamSound {
  private:
    std::unique_ptr<OMIStream> stream_; ///< goes after the sound

  public:
    explicit RStreamSound(std::unique_ptr<OMIStream> stream)
        : stream_(std::move(stream)), sound(*stream_, true) {}

    OMWaveSound sound;
};
