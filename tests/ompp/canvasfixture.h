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
class Process {
  public:
    explicit Process(int depth) : platform_({64, 48, depth}) {
        OMSetPlatform(&platform_);
        OMDebug::setCheckListener(
            [this](const OMDebug::Failure& failure) { messages.emplace_back(failure.message); });
        restart(OMApp::DisplayMode::PopUp, depth);
    }
    /// An application in another mode, on the whole screen.
    void restart(OMApp::DisplayMode mode, int depth) {
        end();
        app_.emplace(mode, OMColor(), platform::Rect{0, 0, 64, 48}, depth);
        display().presented.clear();
    }
    void end() { app_.reset(); }
    ~Process() {
        OMDebug::setCheckListener(nullptr);
        end();
        OMApp::useGDI();
        OMSetPlatform(nullptr);
    }
    Process& operator=(Process&&) = delete;

    MemoryDisplay& display() { return platform_.display(); }
    MemoryFiles& files() { return platform_.files(); }
    MemoryTypefaces& typefaces() { return platform_.typefaces(); }

    /// The failed checks since the last call.
    std::vector<std::string> takeMessages() { return std::exchange(messages, {}); }

    std::vector<std::string> messages;

  private:
    MemoryPlatform platform_;
    std::optional<OMApp> app_;
};

inline std::uint32_t pixelAt(OMCanvas& canvas, int x, int y) {
    const OMPixels pixels = canvas.pixels();
    const std::uint8_t* bytes = pixels.at(x, y);
    std::uint32_t value = 0;
    for (int i = 0; i < pixels.bytesPerPixel; ++i) value |= std::uint32_t{bytes[i]} << (8 * i);
    return value;
}

inline void setPixel(OMCanvas& canvas, int x, int y, std::uint32_t value) {
    const OMPixels pixels = canvas.pixels();
    for (int i = 0; i < pixels.bytesPerPixel; ++i)
        pixels.at(x, y)[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

} // namespace testing_support
