// Text windows as windows of the desktop, drawn with the program's own font. The events of all
// windows come through one queue; SdlTextWindows passes on to each window what belongs to it.
#pragma once

#include "platform/sdl/sdlwindow.h"
#include "platform/textwindow.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace platform {

class SdlTextWindow;

class SdlTextWindows {
  public:
    SdlTextWindows() = default;
    SdlTextWindows& operator=(SdlTextWindows&&) = delete;

    /// Null when the desktop has no window for it. The windows must be gone before this object.
    /// SDL knows one class of windows a program only, so the request's own is not used.
    [[nodiscard]] std::unique_ptr<TextWindow> open(const TextWindowRequest& request,
                                                   TextWindowOwner& owner);

    /// Tells the window that the event belongs to, if there still is such a window. Its owner may
    /// destroy it, and open others, meanwhile.
    void handle(const SDL_WindowEvent& event);

  private:
    friend class SdlTextWindow;
    std::vector<SdlTextWindow*> windows_;
};

class SdlTextWindow final : public TextWindow {
  public:
    /// All must outlive the window.
    SdlTextWindow(SdlTextWindows& all, SdlHandle<SDL_Window> window, TextWindowOwner& owner);
    ~SdlTextWindow() override;
    SdlTextWindow& operator=(SdlTextWindow&&) = delete;

    [[nodiscard]] int lineHeight() const override;
    [[nodiscard]] Rect rectangle() const override;
    [[nodiscard]] bool isMinimised() const override;
    void move(Point corner) override;
    void show(std::span<const std::string> lines, std::size_t fresh) override;

    [[nodiscard]] std::uint32_t id() const { return SDL_GetWindowID(window_.get()); }
    [[nodiscard]] TextWindowOwner& owner() const { return owner_; }

  private:
    SdlTextWindows& all_;
    SdlHandle<SDL_Window> window_;
    TextWindowOwner& owner_;
};

} // namespace platform
