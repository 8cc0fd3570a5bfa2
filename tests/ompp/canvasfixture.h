// What tests of canvases stand on: a process with a small screen, and single pixels.
#pragma once

#include "memoryfiles.h"

#include "omapp.h"
#include "omdebug.h"
#include "ommemcanvas.h"
#include "omplatform.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// A process with a screen of `depth` bits and an application.
struct Process {
    explicit Process(int depth) : machine({64, 48, depth}) {
        OMSetPlatform(&machine);
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { messages.emplace_back(failure.message); });
        restart(OMApp::DisplayMode::PopUp, depth);
    }
    /// An application in another mode, on the whole screen.
    void restart(OMApp::DisplayMode mode, int depth) {
        app.reset();
        app.emplace(mode, OMColor(), platform::Rect{0, 0, 64, 48}, depth);
        display.presented.clear();
    }
    ~Process() {
        OMDebug::setCheckListener(nullptr);
        app.reset();
        OMApp::useGDI();
        OMSetPlatform(nullptr);
    }
    Process& operator=(Process&&) = delete;

    /// The failed checks since the last call.
    std::vector<std::string> takeMessages() { return std::exchange(messages, {}); }

    std::vector<std::string> messages;
    MemoryPlatform machine;
    MemoryDisplay& display = machine.display();
    std::optional<OMApp> app;
};

inline std::uint32_t pixelAt(OMCanvas& canvas, int x, int y) {
    const OMPixels pixels = canvas.pixels();
    std::uint32_t value = 0;
    for (int i = pixels.bytesPerPixel - 1; i >= 0; --i) value = value << 8 | pixels.at(x, y)[i];
    return value;
}

inline void setPixel(OMCanvas& canvas, int x, int y, std::uint32_t value) {
    const OMPixels pixels = canvas.pixels();
    for (int i = 0; i < pixels.bytesPerPixel; ++i, value >>= 8)
        pixels.at(x, y)[i] = static_cast<std::uint8_t>(value);
}

} // namespace testing_support
