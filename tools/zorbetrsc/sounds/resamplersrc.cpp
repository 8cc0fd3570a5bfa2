#include "sounds/resampler.h"

#include "refusal.h"

#include <samplerate.h>

#include <cmath>

namespace rsc {

namespace {

constexpr double kMostSamples = 1 << 27; ///< half a gigabyte

} // namespace

bool canResample() { return true; }

std::vector<float> resample(const std::vector<float>& samples, int from, int to) {
    const double ratio = static_cast<double>(to) / from;
    if (from < 1 || src_is_valid_ratio(ratio) == 0)
        throw Refusal("the sound has " + std::to_string(from) +
                      " samples a second, which cannot be brought to " + std::to_string(to) +
                      ": export it with a usual rate, such as 44100");
    const double exact = static_cast<double>(samples.size()) * ratio;
    if (exact > kMostSamples) throw Refusal("the sound is too long: cut it into several");
    const auto length = static_cast<std::size_t>(std::lround(exact));
    std::vector<float> result(length); // the filter may give a few less
    SRC_DATA work{};
    work.data_in = samples.data();
    work.input_frames = static_cast<long>(samples.size());
    work.data_out = result.data();
    work.output_frames = static_cast<long>(length);
    work.src_ratio = ratio;
    const int error = src_simple(&work, SRC_SINC_BEST_QUALITY, 1);
    if (error != 0)
        throw Refusal("the sound cannot be brought to another rate: " +
                      std::string(src_strerror(error)));
    return result;
}

} // namespace rsc
