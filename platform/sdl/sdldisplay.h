// The screen in a real window. What is presented is gathered and drawn by `flush`, once a pass.
#pragma once

#include "platform/host/hostdisplay.h"
#include "platform/sdl/sdlwindow.h"

#include <memory>

namespace platform {

class SdlDisplay final : public HostDisplay {
  public:
    /// The window is complete.
    SdlDisplay(SdlWindow window, const ScreenMode& mode);

    void present(const Rect& area) override;
    void setTitle(std::string_view title) override;
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id) override;
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id, const CursorImage& image) override;
    void setCursor(const Cursor& cursor) override;
    void showCursor(bool on) override;

    /// Brings the window up to date, if anything changed since the last time.
    void flush();
    /// Makes the window visible, if it is not yet.
    void showWindow();
    /// The window must be drawn again although nothing changed.
    void windowDamaged() { windowIsCurrent_ = false; }
    /// The graphics device forgot the picture, with `deviceLost` the texture itself too.
    void textureLost(bool deviceLost);

    [[nodiscard]] SDL_Window* window() const { return window_.window.get(); }
    [[nodiscard]] bool windowIsShown() const { return windowIsShown_; }

  protected:
    void shownChanged(const Rect& part) override;
    void modeChanged() override;

  private:
    void markStale(const Rect& part);
    void updateTexture();
    void chooseScaling();

    SdlWindow window_;
    Rect stale_{};                 ///< part of the texture that is older than the screen
    bool windowIsCurrent_ = false; ///< the window shows the texture
    bool windowIsShown_ = false;
};

} // namespace platform
