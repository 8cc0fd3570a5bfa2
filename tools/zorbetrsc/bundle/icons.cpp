#include "bundle/icons.h"

#include <algorithm>
#include <vector>

namespace rsc {

namespace {

/// A pixel of the icon is the mean of the square of the picture that it shows. The square is
/// sampled on a grid, the same number of samples for each pixel, so that the result is the same on
/// every machine.
constexpr int kSamples = 8; ///< in each direction

class Scaled {
  public:
    Scaled(const Picture& picture, int side)
        : picture_(picture), side_(side), longer_(std::max(picture.width(), picture.height())) {}

    [[nodiscard]] Pixel pixel(int x, int y) const {
        int red = 0;
        int green = 0;
        int blue = 0;
        int alpha = 0;
        for (int i = 0; i < kSamples * kSamples; ++i) {
            const Pixel from = sample(x * kSamples + i % kSamples, y * kSamples + i / kSamples);
            red += from.colour.red * from.alpha;
            green += from.colour.green * from.alpha;
            blue += from.colour.blue * from.alpha;
            alpha += from.alpha;
        }
        if (alpha == 0) return {{}, 0};
        const auto mean = [&](int sum) { return static_cast<std::uint8_t>(sum / alpha); };
        return {{mean(red), mean(green), mean(blue)},
                static_cast<std::uint8_t>(alpha / (kSamples * kSamples))};
    }

  private:
    /// Of a grid over the square that has the picture in its middle.
    [[nodiscard]] Pixel sample(int column, int row) const {
        const int x = column * longer_ / (side_ * kSamples) - (longer_ - picture_.width()) / 2;
        const int y = row * longer_ / (side_ * kSamples) - (longer_ - picture_.height()) / 2;
        if (x < 0 || y < 0 || x >= picture_.width() || y >= picture_.height()) return {{}, 0};
        return picture_.pixel(static_cast<std::size_t>(y) *
                                  static_cast<std::size_t>(picture_.width()) +
                              static_cast<std::size_t>(x));
    }

    const Picture& picture_;
    int side_;
    int longer_; ///< side of the picture
};

} // namespace

Bytes makeIcon(const Picture& picture, int side) {
    const Scaled scaled(picture, side);
    std::vector<Pixel> pixels;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) pixels.push_back(scaled.pixel(x, y));
    return writeTruecolourPng(side, side, pixels);
}

} // namespace rsc
