// What tests of trinkets stand on: an application and a window on a machine in memory, plain
// coloured trinkets, and the resources of aseqbuilder.h and memorystream.h.
#pragma once

#include "ompp/frameworkfixture.h"
#include "ompp/memorystream.h"
#include "trinkets/aseqbuilder.h"

#include "omtrinketwindow.h"

namespace testing_support {

/// A trinket of one colour that remembers how much of it was painted.
class Tile : public OMTrinket {
  public:
    Tile(OMTrinketWindow& window, const platform::Rect& bounds, int color,
         UpdateStyle style = UpdateStyle::Regions)
        : OMTrinket(window, style, bounds), color_(color) {
        takeClass(kClass);
    }
    void paint(OMMemCanvas& canvas, const OMRegion& clip) override {
        OMRegion shown = clip;
        shown.intersect(boundingRectangle());
        painted += shown.pixelCount();
        canvas.setColor(OMColor(color_));
        canvas.fillRegion(shown);
    }
    void step(std::uint32_t clock) override {
        if (onStep) onStep(clock);
    }

    [[nodiscard]] int color() const { return color_; }

    std::size_t painted = 0; ///< pixels
    std::function<void(std::uint32_t)> onStep;

  private:
    int color_;
};

/// The colour indices of a canvas's rectangle as text, row by row; 0 becomes ".".
inline std::string pixelsOf(OMCanvas& canvas, const platform::Rect& area) {
    const OMPixels pixels = canvas.pixels();
    std::string text;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const std::uint8_t pixel = *pixels.at(x, y);
            text += pixel == 0 ? '.' : static_cast<char>(pixel);
        }
        text += '/';
    }
    return text;
}

class WindowTest : public OMAppTest {
  protected:
    /// One idle cycle, a millisecond later.
    void cycle() {
        machine.clock().now += 1;
        window.idle();
    }
    int backPixel(int x, int y) { return *window.backBuffer().pixels().at(x, y); }
    int screenPixel(int x, int y) { return *window.canvas().pixels().at(x, y); }

    /// Pixels that a cycle shows and composes.
    std::pair<std::uint64_t, std::size_t> workOfCycle() {
        OMRegion composed;
        window.hooks().beforeTrinkets = [&] { composed = window.dirtyRegion(); };
        const std::uint64_t before = window.canvas().changedPixels();
        cycle();
        window.hooks().beforeTrinkets = nullptr;
        return {window.canvas().changedPixels() - before, composed.pixelCount()};
    }

    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
};

} // namespace testing_support
