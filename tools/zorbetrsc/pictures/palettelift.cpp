#include "pictures/palettelift.h"

#include "formats/movie/moviepalette.h"
#include "formats/picture/palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace rsc {

namespace {

using platform::Rgb;

constexpr double kFull = 65535.0; ///< largest 16-bit component
constexpr int kStep = 256;        ///< 16-bit value of an 8-bit step

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
            const double lifted =
                std::min(largest * kStep / kFull + formats::picture::kLift, 1.0) * kFull / kStep;
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

using formats::fromMovieComponent;
using platform::Rgb;

struct MovieColour {
    Rgb stored; ///< as readers spread it
    Rgb shown;
};

/// All 262,144 colours that a file can store.
std::vector<MovieColour> allColours() {
    constexpr std::uint8_t kLevels = 64;
    std::vector<MovieColour> colours;
    colours.reserve(std::size_t{kLevels} * kLevels * kLevels);
    for (std::uint8_t red = 0; red < kLevels; ++red) {
        for (std::uint8_t green = 0; green < kLevels; ++green) {
            for (std::uint8_t blue = 0; blue < kLevels; ++blue) {
                const Rgb stored{fromMovieComponent(red), fromMovieComponent(green),
                                 fromMovieComponent(blue)};
                colours.push_back({stored, liftColour(stored)});
            }
        }
    }
    return colours;
}

} // namespace

Rgb liftColour(Rgb stored) {
    const auto wide = [](std::uint8_t component) {
        return static_cast<std::uint16_t>(component * kStep);
    };
    const auto shown =
        formats::picture::lift({wide(stored.red), wide(stored.green), wide(stored.blue)});
    return fromComponents({shown.red / kStep, shown.green / kStep, shown.blue / kStep});
}

Rgb colourToStore(Rgb wanted) {
    // several stored colours may look alike: what is stored depends on the look alone
    const Rgb shown = liftColour(InverseSearch(raiseDark(wanted)).best());
    return InverseSearch(shown).best();
}

Rgb movieColourToStore(Rgb wanted) {
    static const std::vector<MovieColour> kAll = allColours();
    const Rgb reachable = liftColour(colourToStore(wanted));
    Rgb best;
    int bestDistance = std::numeric_limits<int>::max();
    for (const MovieColour& colour : kAll) {
        const int distance = colourDistance(reachable, colour.shown);
        if (distance >= bestDistance) continue;
        bestDistance = distance;
        best = colour.stored;
    }
    return best;
}

} // namespace rsc
