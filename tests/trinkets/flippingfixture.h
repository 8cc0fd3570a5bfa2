// What tests of a window on surfaces stand on: a screen of its own size that is this program's
// alone, and what a picture of all trinkets must look like.
#pragma once

#include "trinkets/windowfixture.h"

namespace testing_support {

constexpr int kFlippingWidth = 100;
constexpr int kFlippingHeight = 80;

/// An application on surfaces, in mode `mode`, on a screen of `depth` bits.
class SurfaceTest : public FrameworkTest {
  protected:
    explicit SurfaceTest(OMApp::DisplayMode mode = OMApp::DisplayMode::FullScreen, int depth = 8) {
        OMApp::useDirectDraw();
        app.emplace(mode, OMColor(), platform::Rect{0, 0, kFlippingWidth, kFlippingHeight}, depth);
    }
    ~SurfaceTest() override {
        window.reset();
        app.reset();
        OMApp::useGDI();
    }
    void open(OMTrinketWindow::Showing showing) {
        window.emplace(platform::Rect{0, 0, kFlippingWidth, kFlippingHeight}, nullptr, "Test",
                       showing);
    }
    void cycle() {
        machine.clock().now += 1;
        window->idle();
    }
    /// What a person sees.
    int seenPixel(int x, int y) { return machine.display().shown().row(y)[x]; }

    std::optional<OMApp> app;
    std::optional<OMTrinketWindow> window;
};

} // namespace testing_support
