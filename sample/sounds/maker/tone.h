// One note, sample by sample: a wavetable or filtered noise, at a pitch that moves, under an
// envelope.
#pragma once

#include "score.h"
#include "wavetable.h"

#include <cstdint>

/// The waveforms of an instrument.
struct Waves {
    explicit Waves(const Instrument& instrument)
        : wave(instrument.wave),
          strike(instrument.strike.empty() ? instrument.wave : instrument.strike) {}
    Wavetable wave;
    Wavetable strike;
};

class Tone {
  public:
    /// `length` in samples, without the release. `seed` makes noises differ.
    Tone(const Instrument& instrument, Waves& waves, const Note& note, std::int64_t length,
         std::uint32_t seed);

    /// Samples until it is silent.
    [[nodiscard]] std::int64_t duration() const { return length_ + release_; }
    /// The next sample, within about fixedmath::kUnit.
    std::int64_t next();

  private:
    std::int64_t step();
    [[nodiscard]] std::int64_t movedPitch() const;
    [[nodiscard]] std::int64_t level() const;
    std::int64_t toneAt(std::int64_t step);
    std::int64_t noiseAt(std::int64_t step);

    const Instrument& instrument_;
    const Note& note_;
    const Wavetable::Table& wave_;
    const Wavetable::Table& strike_;
    std::int64_t length_;
    std::int64_t release_;
    std::int64_t attack_;
    std::int64_t at_ = 0; ///< samples played
    std::int64_t pitch_;  ///< that step_ was computed from
    std::int64_t step_;
    std::uint32_t phase_ = 0;
    std::uint32_t random_;
    std::int64_t low_ = 0; ///< state of the noise's filter
    std::int64_t band_ = 0;
};
