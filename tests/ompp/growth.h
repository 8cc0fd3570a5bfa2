// Tells work in proportion to its input from work in which every item looks at every other.
#pragma once

#include <algorithm>
#include <ctime>

namespace testing_support {

/// How much more of the processor's time `work` takes with four times `count`: about 4 when it is
/// in proportion, 16 when it grows with the square.
template <class Work>
double growthOfFour(int count, Work work) {
    const std::clock_t begin = std::clock();
    work(count);
    const std::clock_t middle = std::clock();
    work(4 * count);
    return static_cast<double>(std::clock() - middle) / std::max(1.0, 1.0 * (middle - begin));
}

inline constexpr double kInProportion = 10; ///< with room for a machine that does other things too

} // namespace testing_support
