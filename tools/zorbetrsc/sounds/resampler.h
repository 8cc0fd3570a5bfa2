// Sounds at another rate. The work is done by the library libsamplerate; a build without it can
// only say so.
#pragma once

#include <vector>

namespace rsc {

/// Whether this build can do it at all.
[[nodiscard]] bool canResample();

/// Mono samples of the rate `from` at the rate `to`, as long as before; the same input gives the
/// same samples. Refused when the library is missing, or the rates lie too far apart.
[[nodiscard]] std::vector<float> resample(const std::vector<float>& samples, int from, int to);

} // namespace rsc
