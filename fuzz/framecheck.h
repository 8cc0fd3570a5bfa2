// Frames of animations, drawn on small canvases of all depths in all directions and compared with
// what their rows say, with the hit test, and with each other.
#pragma once

#include "fuzzmachine.h"
#include "pixelgrid.h"
#include "rowcheck.h"

#include "aodeep.h"
#include "aoimage.h"
#include "ommemcanvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace fuzzing {

inline constexpr int kDirections = 8;

/// Where and through what a frame is drawn.
struct FramePlace {
    platform::Point at;
    bool farCorner = false; ///< `at` is where the lower right corner goes
    OMRegion clip;
    int depth = 8; ///< besides 8 bits
};

/// Draws by `draw` on two different grounds: what comes out alike is drawn. kClear elsewhere.
template <class Draw>
std::vector<std::int64_t> drawnPixels(int width, int height, int depth, Draw draw) {
    OMMemCanvas canvas(width, height, depth);
    OMMemCanvas other(width, height, depth);
    fillNoise(canvas, 0);
    fillNoise(other, 1);
    const Pixels before = pixelsOf(canvas);
    draw(canvas);
    draw(other);
    const Pixels pixels = pixelsOf(canvas);
    const Pixels again = pixelsOf(other);
    std::vector<std::int64_t> drawn;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const bool opaque = pixels[i] == again[i];
        expect(opaque || pixels[i] == before[i], "what is not drawn stays");
        drawn.push_back(opaque ? std::int64_t{pixels[i]} : kClear);
    }
    return drawn;
}

class FrameCheck {
  public:
    static constexpr int kWidth = 24;
    static constexpr int kHeight = 16;

    FrameCheck(const AOImage& image, int number, const FramePlace& place)
        : image_(image), number_(number), frame_(image.frame(number)), place_(place),
          unread_(image.packedRows(number)) {
        for (std::size_t i = 0; i < colors_.size(); ++i)
            colors_[i] = {static_cast<std::uint8_t>(i * 5), static_cast<std::uint8_t>(255 - i),
                          static_cast<std::uint8_t>(i * 3)};
    }

    void run() {
        const OMMemCanvas sample(1, 1, place_.depth);
        const AOPixelTable table = AOPixelsOf(colors_, sample);
        std::optional<AOFrame> deep;
        if (place_.depth > 8) deep = image_.unpackedFrame(number_, table, place_.depth / 8);
        for (int direction = 0; direction < kDirections; ++direction) {
            const platform::Point at = corner(direction);
            const auto drawn = drawnPixels(kWidth, kHeight, 8, [&](OMMemCanvas& canvas) {
                frame_.draw(canvas, place_.clip, at, direction);
            });
            checkPixels(drawn, at, direction);
            if (!deep) continue;
            const auto deeply =
                drawnPixels(kWidth, kHeight, place_.depth, [&](OMMemCanvas& canvas) {
                    deep->draw(canvas, place_.clip, at, direction);
                });
            for (std::size_t i = 0; i < drawn.size(); ++i)
                expect(deeply[i] == (drawn[i] == kClear
                                         ? kClear
                                         : std::int64_t{table[static_cast<std::size_t>(drawn[i])]}),
                       "deep canvases show the same");
        }
    }

  private:
    static constexpr int kWidestPlain = 1024;

    [[nodiscard]] platform::Point corner(int direction) const {
        if (!place_.farCorner) return place_.at;
        const platform::Rect bounds = frame_.bounds({0, 0}, direction);
        return {place_.at.x - bounds.width(), place_.at.y - bounds.height()};
    }

    void checkPixels(const std::vector<std::int64_t>& drawn, platform::Point at, int direction) {
        for (int y = 0, i = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x, ++i) {
                const std::int64_t pixel = drawn[static_cast<std::size_t>(i)];
                const bool shown = place_.clip.contains(platform::Point{x, y});
                expect((pixel != kClear) == (shown && frame_.hit({x, y}, at, direction)),
                       "what is drawn is what is hit");
                if (frame_.size().width <= kWidestPlain)
                    expect(pixel == (shown ? source(x - at.x, y - at.y, direction) : kClear),
                           "a turned frame shows its pixels");
            }
    }

    /// The frame's pixel that is seen at x, y from its corner.
    int source(int x, int y, int direction) {
        const int right = frame_.size().width - 1;
        const int bottom = frame_.size().height - 1;
        switch (direction) {
        case 0: return pixel(x, y);
        case 1: return pixel(right - x, y);
        case 2: return pixel(x, bottom - y);
        case 3: return pixel(right - x, bottom - y);
        case 4: return pixel(y, bottom - x);
        case 5: return pixel(y, x);
        case 6: return pixel(right - y, bottom - x);
        default: return pixel(right - y, x);
        }
    }

    int pixel(int x, int y) {
        if (x < 0 || x >= frame_.size().width || y < 0 || y >= frame_.size().height) return kClear;
        while (static_cast<int>(rows_.size()) <= y && !unread_.empty()) {
            rows_.emplace_back(unread_, frame_.size().width);
            unread_ = unread_.subspan(rows_.back().bytes);
        }
        if (y >= static_cast<int>(rows_.size())) return kClear;
        return rows_[static_cast<std::size_t>(y)].pixels[static_cast<std::size_t>(x)];
    }

    const AOImage& image_;
    int number_;
    AOFrame frame_;
    const FramePlace& place_;
    OMDevicePalette colors_{};
    std::vector<PlainRow> rows_; ///< from the first one on, as far as they were looked at
    std::span<const std::uint8_t> unread_;
};

} // namespace fuzzing
