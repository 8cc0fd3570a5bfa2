#include "finish.h"

#include "fixedmath.h"

#include <algorithm>
#include <cstdlib>

using namespace fixedmath;

namespace {

constexpr int kSilence = 128;
constexpr std::size_t kEdge = kSampleRate / 200; ///< 5 ms, over which both ends are faded
constexpr int kEchoesHeard = 5;                  ///< after the last note, when there is no loop

/// Every sample gets a part of what sounded `delay` samples before it. Going through a loop twice
/// brings its end into its beginning.
void addEcho(std::vector<std::int64_t>& samples, std::size_t delay, int percent, bool loop) {
    const std::vector<std::int64_t> dry = samples;
    const std::size_t size = samples.size();
    for (int pass = loop ? 2 : 1; pass > 0; --pass)
        for (std::size_t i = 0; i < size; ++i) {
            if (i < delay && !loop) continue;
            const std::size_t before = (i + size - delay % size) % size;
            samples[i] = dry[i] + samples[before] * percent / 100;
        }
}

/// Two filters of the first order, one after the other. A loop is run through twice as well.
void softenHighs(std::vector<std::int64_t>& samples, int hz, bool loop) {
    // 1 - e^-x for the step x of the cut-off frequency, x = 2 pi hz / rate, as a power of two.
    const std::int64_t octaves = kOctave * hz * 9065 / (std::int64_t{1000} * kSampleRate);
    const std::int64_t follow = kUnit - (power(-octaves) >> (kPowerBits - kUnitBits));
    constexpr int kGuardBits = 8;
    std::int64_t first = 0;
    std::int64_t second = 0;
    for (int pass = loop ? 2 : 1; pass > 0; --pass)
        for (std::int64_t& sample : samples) {
            first += scaled((sample << kGuardBits) - first, follow);
            second += scaled(first - second, follow);
            if (pass == 1) sample = second >> kGuardBits;
        }
}

void fadeEnds(std::vector<std::int64_t>& samples) {
    const std::size_t count = std::min(kEdge, samples.size() / 2);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t level =
            smoothRamp(static_cast<std::int64_t>(i), static_cast<std::int64_t>(count));
        samples[i] = scaled(samples[i], level);
        std::int64_t& last = samples[samples.size() - 1 - i];
        last = scaled(last, level);
    }
}

/// Straight up to a half, then more and more bent: 1.5 becomes 1. In kUnit.
std::int64_t softClip(std::int64_t value) {
    const std::int64_t size = std::abs(value);
    if (size <= kUnit / 2) return value;
    const std::int64_t over = std::min(size, kUnit * 3 / 2) - kUnit / 2;
    const std::int64_t bent = kUnit / 2 + over - scaled(over, over) / 2;
    return value < 0 ? -bent : bent;
}

} // namespace

std::vector<std::uint8_t> finishSamples(const Score& score, std::vector<std::int64_t> samples) {
    const bool loop = score.loop > 0;
    if (score.echo > 0) {
        const auto delay = static_cast<std::size_t>(score.echoMs * kSampleRate / 1000);
        if (!loop) samples.resize(samples.size() + delay * kEchoesHeard);
        addEcho(samples, delay, score.echo, loop);
    }
    softenHighs(samples, score.lowpassHz, loop);
    if (!loop) fadeEnds(samples);

    std::int64_t peak = 1;
    for (const std::int64_t sample : samples) peak = std::max<std::int64_t>(peak, std::abs(sample));
    std::vector<std::uint8_t> result;
    result.reserve(samples.size());
    for (const std::int64_t sample : samples) {
        const std::int64_t clipped = softClip(sample * (kUnit * 3 / 2) / peak);
        result.push_back(static_cast<std::uint8_t>(kSilence + scaled(clipped, score.peak)));
    }
    if (!loop)
        while (!result.empty() && result.back() == kSilence) result.pop_back();
    return result;
}
