#include "sounds/soundbuilder.h"

#include "refusal.h"
#include "sounds/gamesound.h"
#include "sounds/resampler.h"
#include "sounds/soundfile.h"

#include <algorithm>
#include <cmath>

namespace rsc {

namespace {

/// The nearest of the steps of a sample that has `full` of them on either side of silence.
long nearestStep(float value, float full) {
    if (std::isnan(value)) return 0;
    return std::lround(std::clamp(value * full, -full, full - 1));
}

/// The mean of all channels.
std::vector<float> mixDown(const SoundSamples& sound) {
    const auto channels = static_cast<std::size_t>(sound.channels);
    std::vector<float> mono;
    mono.reserve(sound.values.size() / channels);
    for (std::size_t at = 0; at + channels <= sound.values.size(); at += channels) {
        float sum = 0;
        for (std::size_t i = 0; i < channels; ++i) sum += sound.values[at + i];
        mono.push_back(sum / static_cast<float>(channels));
    }
    return mono;
}

Bytes convert(ByteSpan file, std::optional<int> wanted) {
    const SoundSamples sound = readSoundFile(file);
    const bool isGameRate =
        std::ranges::find(formats::sound::kRates, sound.rate) != formats::sound::kRates.end();
    const int rate = wanted.value_or(isGameRate ? sound.rate : kUsualSoundRate);
    std::vector<float> mono = mixDown(sound);
    if (rate != sound.rate) mono = resample(mono, sound.rate, rate);
    Bytes samples(mono.size());
    std::ranges::transform(mono, samples.begin(), toSample8);
    if (samples.empty()) throw Refusal("the sound is too short: no sample is left of it");
    return formats::sound::writeRiff(samples, rate);
}

} // namespace

Bytes buildSound(ByteSpan file, std::optional<int> rate) {
    const SoundReport report = examineSound(file);
    refuseCutOff(report.facts);
    if (report.isReady() &&
        rate.value_or(report.facts.header.sampleRate) == report.facts.header.sampleRate)
        return {file.begin(), file.end()};
    return convert(file, rate);
}

std::uint8_t toSample8(float value) {
    return static_cast<std::uint8_t>(nearestStep(value, 128) + 128);
}

std::int16_t toSample16(float value) {
    return static_cast<std::int16_t>(nearestStep(value, 32768));
}

} // namespace rsc
