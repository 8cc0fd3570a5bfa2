#include "tone.h"

#include "fixedmath.h"

#include <algorithm>

using namespace fixedmath;

namespace {

constexpr int kMinAttackMs = 2; ///< anything shorter clicks
constexpr int kMinReleaseMs = 8;
constexpr std::int64_t kPitchOfACent = kOctave / 1200;

constexpr std::int64_t samples(int ms) { return std::int64_t{ms} * kSampleRate / 1000; }

/// Sine of `tenths` of a hertz, `at` samples after its beginning.
std::int64_t slowSine(std::int64_t at, int tenths) {
    const std::int64_t turns = (at * tenths << 32) / (10 * kSampleRate);
    return sine(static_cast<std::uint32_t>(turns));
}

/// What is left of `kUnit` after `at` samples of a decay by half every `half` samples.
std::int64_t decayed(std::int64_t at, std::int64_t half) {
    return power(-at * kOctave / std::max<std::int64_t>(half, 1)) >> (kPowerBits - kUnitBits);
}

/// The highest step that a note may need: its wavetable is chosen by it.
std::int64_t highestStep(const Note& note) {
    return phaseStep(std::max(note.pitch, note.endPitch));
}

} // namespace

Tone::Tone(const Instrument& instrument, Waves& waves, const Note& note, std::int64_t length,
           std::uint32_t seed)
    : instrument_(instrument), note_(note), wave_(waves.wave.tableFor(highestStep(note))),
      strike_(waves.strike.tableFor(highestStep(note))), length_(length),
      release_(samples(std::max(instrument.releaseMs, kMinReleaseMs))),
      attack_(samples(std::max(instrument.attackMs, kMinAttackMs))), pitch_(note.pitch),
      step_(phaseStep(note.pitch)),
      random_((seed + static_cast<std::uint32_t>(length)) * 2654435761U | 1U) {}

std::int64_t Tone::movedPitch() const {
    std::int64_t pitch = note_.pitch;
    if (note_.endPitch != note_.pitch)
        pitch += scaled(note_.endPitch - note_.pitch,
                        smoothRamp(at_, std::max<std::int64_t>(length_, 1)));
    const Instrument& tone = instrument_;
    if (const std::int64_t slide = samples(tone.slideMs); at_ < slide)
        pitch += scaled(tone.slideCents * kPitchOfACent, kUnit - smoothRamp(at_, slide));
    if (const std::int64_t since = at_ - samples(tone.vibratoAfterMs);
        tone.vibratoCents > 0 && since > 0) {
        const std::int64_t depth = smoothRamp(since, kSampleRate / 4);
        pitch += scaled(scaled(tone.vibratoCents * kPitchOfACent, depth),
                        slowSine(since, tone.vibratoTenths));
    }
    return pitch;
}

std::int64_t Tone::step() {
    const std::int64_t pitch = movedPitch();
    if (pitch != pitch_) {
        pitch_ = pitch;
        step_ = phaseStep(pitch);
    }
    return step_;
}

std::int64_t Tone::level() const {
    const Instrument& tone = instrument_;
    std::int64_t level = smoothRamp(at_, attack_);
    if (tone.decayMs > 0 && at_ > attack_) {
        const std::int64_t rest = tone.sustain * kUnit / 100;
        level = rest + scaled(kUnit - rest, decayed(at_ - attack_, samples(tone.decayMs)));
    }
    if (tone.tremolo > 0) {
        const std::int64_t dip = (kUnit - slowSine(at_, tone.tremoloTenths)) / 2;
        level = scaled(level, kUnit - dip * tone.tremolo / 100);
    }
    if (at_ > length_) level = scaled(level, kUnit - smoothRamp(at_ - length_, release_));
    return level;
}

std::int64_t Tone::toneAt(std::int64_t step) {
    phase_ += static_cast<std::uint32_t>(step);
    const std::int64_t wave = Wavetable::at(wave_, phase_);
    if (instrument_.strike.empty()) return wave;
    const std::int64_t strike = Wavetable::at(strike_, phase_);
    return wave + scaled(strike - wave, decayed(at_, samples(instrument_.strikeMs)));
}

/// White noise through a filter that lets the surroundings of the pitch pass: the narrower, the
/// sharper it is. It is run twice a sample, which keeps it stable up to 7 kHz.
std::int64_t Tone::noiseAt(std::int64_t step) {
    constexpr std::int64_t kHighestStep = (std::int64_t{1} << 32) / 22050 * 7000;
    const auto quarter = static_cast<std::uint32_t>(std::min(step, kHighestStep) / 4);
    const std::int64_t follow = 2 * sine(quarter);
    const std::int64_t damping = 2 * kUnit / (instrument_.sharpness + 1);
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    const std::int64_t white = static_cast<std::int64_t>(random_ >> 16) - kUnit;
    for (int half = 0; half < 2; ++half) {
        low_ += scaled(band_, follow);
        band_ += scaled(white - low_ - scaled(band_, damping), follow);
    }
    return std::clamp(band_, -8 * kUnit, 8 * kUnit);
}

std::int64_t Tone::next() {
    const std::int64_t moved = step();
    const std::int64_t sample = instrument_.sharpness > 0 ? noiseAt(moved) : toneAt(moved);
    const std::int64_t result = scaled(sample, level());
    ++at_;
    return result;
}
