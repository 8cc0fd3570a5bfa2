#include "palettelift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace rsc {

namespace {

using platform::Rgb;

constexpr double kLift = 0.13;
constexpr double kFull = 65535.0; ///< largest 16-bit component
constexpr int kStep = 256;        ///< 16-bit value of an 8-bit step
constexpr int kNearlyWhite = 65280;
constexpr int kWhiteReplacement = 65024;
constexpr int kAboveBlack = 257;
constexpr int kBlackReplacement = 256;
constexpr double kSector = 60.0; ///< degrees

struct Hsv {
    double hue = 0; ///< degrees
    double saturation = 0;
    double value = 0;
};

Hsv toHsv(Rgb colour) {
    const double red = colour.red * kStep;
    const double green = colour.green * kStep;
    const double blue = colour.blue * kStep;
    const double largest = std::max({red, green, blue});
    const double range = largest - std::min({red, green, blue});
    if (range == 0) return {0, 0, largest / kFull};
    Hsv hsv{0, range / largest, largest / kFull};
    if (red == largest)
        hsv.hue = kSector * (green - blue) / range;
    else if (green == largest)
        hsv.hue = kSector * (2 + (blue - red) / range);
    else
        hsv.hue = kSector * (4 + (red - green) / range);
    if (hsv.hue < 0) hsv.hue += 6 * kSector;
    return hsv;
}

/// 16-bit red, green and blue.
std::array<int, 3> fromHsv(const Hsv& hsv) {
    const int sector = static_cast<int>(hsv.hue / kSector) % 6;
    const double part = hsv.hue / kSector - std::floor(hsv.hue / kSector);
    const auto component = [&](double share) {
        return static_cast<int>(kFull * hsv.value * (1 - hsv.saturation * share));
    };
    const int v = component(0);
    const int p = component(1);
    const int q = component(part);
    const int t = component(1 - part);
    switch (sector) {
    case 0: return {v, t, p};
    case 1: return {q, v, p};
    case 2: return {p, v, t};
    case 3: return {p, q, v};
    case 4: return {t, p, v};
    default: return {v, p, q};
    }
}

std::array<int, 3> components(Rgb colour) { return {colour.red, colour.green, colour.blue}; }

Rgb fromComponents(const std::array<int, 3>& c) {
    return {static_cast<std::uint8_t>(c[0]), static_cast<std::uint8_t>(c[1]),
            static_cast<std::uint8_t>(c[2])};
}

/// The same hue and saturation at the darkest value that can be shown.
Rgb raiseDark(Rgb colour) {
    std::array<int, 3> c = components(colour);
    const int largest = std::ranges::max(c);
    if (largest >= kDarkestValue) return colour;
    if (largest == 0) return {kDarkestValue, kDarkestValue, kDarkestValue};
    for (int& component : c) component = component * kDarkestValue / largest;
    return fromComponents(c);
}

/// Tries the stored colours around the exact inverse, for each possible largest component.
class InverseSearch {
  public:
    explicit InverseSearch(Rgb wanted) : wanted_(wanted), target_(components(wanted)) {
        top_ = static_cast<std::size_t>(std::ranges::max_element(target_) - target_.begin());
        others_ = {(top_ + 1) % 3, (top_ + 2) % 3};
    }

    Rgb best() {
        for (int largest = 0; largest <= 255; ++largest) {
            const double lifted = std::min(largest * kStep / kFull + kLift, 1.0) * kFull / kStep;
            const int miss = static_cast<int>(lifted) - target_[top_];
            // a lifted white is one step below white
            if ((std::abs(miss) - 1) * std::abs(miss) <= bestDistance_)
                tryLargest(largest, largest / lifted);
        }
        return best_;
    }

  private:
    void tryLargest(int largest, double scale) {
        const int first = static_cast<int>(std::lround(target_[others_[0]] * scale));
        const int second = static_cast<int>(std::lround(target_[others_[1]] * scale));
        std::array<int, 3> stored{};
        stored[top_] = largest;
        for (int i = -1; i <= 1; ++i) {
            for (int j = -1; j <= 1; ++j) {
                stored[others_[0]] = std::clamp(first + i, 0, largest);
                stored[others_[1]] = std::clamp(second + j, 0, largest);
                consider(fromComponents(stored));
            }
        }
    }

    void consider(Rgb stored) {
        const int distance = colourDistance(liftColour(stored), wanted_);
        if (distance >= bestDistance_) return;
        bestDistance_ = distance;
        best_ = stored;
    }

    Rgb wanted_;
    std::array<int, 3> target_;
    std::size_t top_ = 0; ///< component with the largest target
    std::array<std::size_t, 2> others_{};
    Rgb best_;
    int bestDistance_ = std::numeric_limits<int>::max();
};

} // namespace

Rgb liftColour(Rgb stored) {
    Hsv hsv = toHsv(stored);
    hsv.value = std::min(hsv.value + kLift, 1.0);
    std::array<int, 3> lifted = fromHsv(hsv);
    if (std::ranges::min(lifted) >= kNearlyWhite) lifted.fill(kWhiteReplacement);
    if (std::ranges::max(lifted) < kAboveBlack) lifted.fill(kBlackReplacement);
    for (int& component : lifted) component /= kStep;
    return fromComponents(lifted);
}

Rgb colourToStore(Rgb wanted) { return InverseSearch(raiseDark(wanted)).best(); }

int colourDistance(Rgb a, Rgb b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

} // namespace rsc
