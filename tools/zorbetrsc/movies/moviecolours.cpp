#include "movies/moviecolours.h"

#include "pictures/palettelift.h"

#include "formats/movie/moviepalette.h"

#include <limits>
#include <vector>

namespace rsc {

namespace {

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
