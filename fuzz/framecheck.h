// Frames of animations, drawn on small canvases of all depths in all directions and compared with
// what their rows say, with the hit test, and with each other.
#pragma once

#include "fuzzmachine.h"
#include "pixelgrid.h"

#include "aodeep.h"
#include "aoimage.h"
#include "aorow.h"
#include "ommemcanvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace fuzzing {

inline constexpr int kClear = -1;
inline constexpr int kDirections = 8;

/// A row unpacked in the plainest way: a colour index or kClear a pixel.
struct PlainRow {
    std::vector<int> pixels;
    std::size_t bytes = 0; ///< of the data that it takes

    PlainRow(std::span<const std::uint8_t> data, int width)
        : pixels(static_cast<std::size_t>(width), kClear) {
        for (std::size_t x = 0; x < pixels.size() && bytes < data.size();) {
            const int token = data[bytes++];
            const std::size_t left = data.size() - bytes;
            if (token > aorow::kLongestRun && token != aorow::kFillToken) return;
            const std::size_t wanted = token == aorow::kFillToken ? 2 : token == 0 ? 1 : token;
            const auto given = data.subspan(bytes, std::min(wanted, left));
            bytes += given.size();
            const bool literal = token != 0 && token != aorow::kFillToken;
            if (given.empty() || (!literal && given.size() < wanted)) return;
            const std::size_t length = literal ? given.size() : given.back();
            if (length == 0) return;
            for (std::size_t i = 0; i < length && x < pixels.size(); ++i, ++x)
                pixels[x] = literal ? given[i] : token == 0 ? kClear : given.front();
        }
    }
};

/// How the rows of a frame are unpacked, by all functions that do.
inline void checkRows(std::span<const std::uint8_t> rows, AOSize size) {
    constexpr int kMostRows = 48;
    constexpr int kMostPixels = 1 << 13; // in few of the widest rows
    constexpr std::uint8_t kKeys[] = {5, 250};
    const int enough = kMostPixels / std::max(size.width, 1) + 1;
    for (int row = 0; row < std::min({size.height, kMostRows, enough}); ++row) {
        const PlainRow plain(rows, size.width);
        expect(aorow::skipRow(rows, size.width).bytes == plain.bytes, "rows are walked alike");
        for (const std::uint8_t key : kKeys) {
            std::vector<std::uint8_t> pixels(plain.pixels.size());
            expect(aorow::decodeRow(rows, pixels, key).bytes == plain.bytes,
                   "rows are decoded alike");
            for (std::size_t x = 0; x < pixels.size(); ++x)
                expect(pixels[x] == (plain.pixels[x] == kClear ? key : plain.pixels[x]),
                       "a row has the pixels of its runs");
        }
        rows = rows.subspan(plain.bytes);
    }
}

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
