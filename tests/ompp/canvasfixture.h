// What tests of canvases stand on: a process with a small screen, and single pixels.
#pragma once

#include "frameworkfixture.h"

#include "ommemcanvas.h"

#include <cstring>

namespace testing_support {

/// A process with a screen of `depth` bits and an application.
struct Process : Framework {
    explicit Process(int depth)
        : Framework({64, 48, depth}), app(OMApp::DisplayMode::PopUp, {}, {0, 0, 64, 48}, depth) {}
    OMApp app;
};

inline std::uint32_t pixelAt(OMCanvas& canvas, int x, int y) {
    const OMPixels pixels = canvas.pixels();
    std::uint32_t value = 0;
    std::memcpy(&value, pixels.at(x, y), static_cast<std::size_t>(pixels.bytesPerPixel));
    return value;
}

inline void setPixel(OMCanvas& canvas, int x, int y, std::uint32_t value) {
    const OMPixels pixels = canvas.pixels();
    std::memcpy(pixels.at(x, y), &value, static_cast<std::size_t>(pixels.bytesPerPixel));
}

} // namespace testing_support
