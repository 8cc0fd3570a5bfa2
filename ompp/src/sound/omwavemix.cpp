#include "omwavemix.h"

#include <algorithm>

namespace OMWaveMix {

namespace {

constexpr int kFull = 100;

std::uint8_t clipped(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

/// Calls `mix` with every index and sample, as the table makes it.
template <class Mix>
void forEach(Samples samples, const VolumeTable* table, Mix mix) {
    const std::size_t count = samples.size();
    if (table) {
        for (std::size_t i = 0; i < count; ++i) mix(i, (*table)[samples[i]]);
    } else {
        for (std::size_t i = 0; i < count; ++i) mix(i, samples[i]);
    }
}

} // namespace

VolumeTable makeVolumeTable(int volume) {
    VolumeTable table{};
    for (int i = 0; i < static_cast<int>(table.size()); ++i) {
        const int scaled = (i - kSilence) * volume / kFull; // toward zero
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(scaled + kSilence);
    }
    return table;
}

void copy(Target target, Samples samples, const VolumeTable* table) {
    std::uint8_t* out = target.data();
    forEach(samples, table, [out](std::size_t i, std::uint8_t sample) { out[i] = sample; });
}

void add(Target target, Samples samples, const VolumeTable* table) {
    std::uint8_t* out = target.data();
    forEach(samples, table, [out](std::size_t i, std::uint8_t sample) {
        out[i] = clipped(out[i] + sample - kSilence);
    });
}

void subtract(Target target, Samples samples, const VolumeTable* table) {
    std::uint8_t* out = target.data();
    forEach(samples, table, [out](std::size_t i, std::uint8_t sample) {
        out[i] = clipped(out[i] - sample + kSilence);
    });
}

void change(Target target, Samples samples, const VolumeTable& from, const VolumeTable& to) {
    std::uint8_t* out = target.data();
    for (std::size_t i = 0; i < samples.size(); ++i)
        out[i] = clipped(out[i] + to[samples[i]] - from[samples[i]]);
}

void accumulate(Sums sums, Samples samples, const VolumeTable* table) {
    std::int16_t* out = sums.data();
    forEach(samples, table, [out](std::size_t i, std::uint8_t sample) {
        out[i] = static_cast<std::int16_t>(out[i] + sample - kSilence);
    });
}

void clip(Target target, std::span<const std::int16_t> sums) {
    std::uint8_t* out = target.data();
    for (std::size_t i = 0; i < sums.size(); ++i) out[i] = clipped(sums[i] + kSilence);
}

} // namespace OMWaveMix
