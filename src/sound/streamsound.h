// A sound together with the stream that it is read from.
#pragma once

#include "ominstalled.h"
#include "omistream.h"
#include "omlink.h"
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

/// Where actions and the background music find their sounds, while it lives.
class RSoundStreams : public OMInstalled<RSoundStreams> {
  public:
    using Source = OMLinkTo<std::unique_ptr<OMIStream>(int id, int bufferMode)>;

    explicit RSoundStreams(Source source) : source_(std::move(source)) {}

    /// Null when there is no such sound, and after a failed check of that message when nothing is
    /// installed.
    [[nodiscard]] static std::unique_ptr<RStreamSound>
    load(int id, int bufferMode, std::string_view message,
         OMDebug::Place place = OMDebug::Place::here()) {
        const RSoundStreams* streams = require("streamURL == NULL", message, place);
        auto stream = streams ? streams->source_(id, bufferMode) : nullptr;
        return stream ? std::make_unique<RStreamSound>(std::move(stream)) : nullptr;
    }

  private:
    Source source_;
};
