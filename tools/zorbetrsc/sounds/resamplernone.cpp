// Stands in for the change of rates where libsamplerate was not found.
#include "sounds/resampler.h"

#include "refusal.h"

namespace rsc {

bool canResample() { return false; }

std::vector<float> resample(const std::vector<float>&, int from, int to) {
    throw Refusal(
        "the sound has " + std::to_string(from) + " samples a second and is to have " +
        std::to_string(to) +
        ", and this program was built without libsamplerate (package libsamplerate0-dev): "
        "install it and build anew, or export the sound with 22050 or 11025 samples a "
        "second");
}

} // namespace rsc
