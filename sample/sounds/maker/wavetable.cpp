#include "wavetable.h"

#include "fixedmath.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr int kBits = 11;
constexpr std::size_t kEntries = std::size_t{1} << kBits;
constexpr int kRestBits = 32 - kBits;
/// Highest frequency as a phase step: four tenths of the sample rate.
constexpr std::int64_t kHighest = (std::int64_t{1} << 32) * 2 / 5;

} // namespace

Wavetable::Wavetable(std::vector<int> harmonics) : harmonics_(std::move(harmonics)), peak_(1) {
    for (const std::int64_t value : sum(harmonics_.size()))
        peak_ = std::max<std::int64_t>(peak_, std::abs(value));
}

std::vector<std::int64_t> Wavetable::sum(std::size_t harmonics) const {
    std::vector<std::int64_t> values(kEntries);
    for (std::size_t i = 0; i < kEntries; ++i)
        for (std::size_t h = 0; h < harmonics; ++h)
            values[i] += harmonics_[h] *
                         fixedmath::sine(static_cast<std::uint32_t>(((h + 1) * i) << kRestBits));
    return values;
}

const Wavetable::Table& Wavetable::tableFor(std::int64_t step) {
    const auto fitting = static_cast<std::size_t>(kHighest / std::max<std::int64_t>(step, 1));
    const std::size_t count = std::clamp<std::size_t>(fitting, 1, harmonics_.size());
    Table& table = tables_[count];
    if (table.empty())
        for (const std::int64_t value : sum(count))
            table.push_back(static_cast<std::int32_t>(value * fixedmath::kUnit / peak_));
    return table;
}

std::int64_t Wavetable::at(const Table& table, std::uint32_t phase) {
    const std::size_t index = phase >> kRestBits;
    const std::int64_t rest = phase & ((1U << kRestBits) - 1);
    const std::int64_t low = table[index];
    return low + ((table[(index + 1) % kEntries] - low) * rest >> kRestBits);
}
