// What tests of canvases stand on: a process with a small screen, and single pixels.
#pragma once

#include "memoryfiles.h"

#include "omapp.h"
#include "omdebug.h"
#include "ommemcanvas.h"
#include "omplatform.h"

#include <cstring>

namespace testing_support {

/// A process with a screen of `depth` bits and an application.
struct Process {
    explicit Process(int depth) : machine({64, 48, depth}) {
        OMSetPlatform(&machine);
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { messages.emplace_back(failure.message); });
        app.emplace(OMApp::DisplayMode::PopUp, OMColor(), platform::Rect{0, 0, 64, 48}, depth);
        display.presented.clear();
    }
    ~Process() {
        OMDebug::setCheckListener(nullptr);
        app.reset();
        OMSetPlatform(nullptr);
    }
    Process& operator=(Process&&) = delete;

    std::vector<std::string> takeMessages() { return std::exchange(messages, {}); }

    std::vector<std::string> messages;
    MemoryPlatform machine;
    MemoryDisplay& display = machine.display();
    std::optional<OMApp> app;
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
