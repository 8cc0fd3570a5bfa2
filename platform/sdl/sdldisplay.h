// The screen in a real window. What is presented is gathered and drawn by `flush`, once a pass.
#pragma once

#include "platform/host/screen/hostdisplay.h"
#include "platform/host/screen/screenpanel.h"
#include "platform/sdl/sdlpointer.h"
#include "platform/sdl/sdlwindow.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {

class SdlDisplay final : public HostDisplay {
  public:
    /// From flush to flush, at most, while the display is behind.
    static constexpr std::uint32_t kBehindMs = 20;

    /// The window is complete. Its title is the game's, UTF-8; with `author`, and without a title,
    /// what the program sets as its title is seen too.
    SdlDisplay(SdlWindow window, const ScreenMode& mode, std::string gameTitle, bool author);

    void present(const Rect& area) override;
    void setTitle(std::string_view title) override;
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id) override;
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id, const CursorImage& image) override;
    void setCursor(const Cursor& cursor) override;
    void showCursor(bool on) override;

    /// Brings the window up to date, if anything changed since the last time.
    void flush();
    /// Whether the window takes the whole monitor. Until a person has chosen, it does in exclusive
    /// mode.
    void setFullScreen(bool on);
    /// A person wants the other one; `setFullScreenLink` is told.
    void toggleFullScreen();
    [[nodiscard]] bool isFullScreen() const { return wantsFullScreen(); }
    void setFullScreenLink(std::function<void(bool)> link) { fullScreenLink_ = std::move(link); }

    /// What can lie over the screen, one of each; later ones above those before.
    enum class Layer : std::uint8_t { Console, Box };
    /// Draws the panel over the screen, or as it is by now; null takes it away. It must outlive
    /// that.
    void lay(Layer layer, const ScreenPanel* panel);

    /// Where a point of the window, as SDL counts them, lies on the screen.
    [[nodiscard]] Point screenPoint(Point inWindow) const;

    [[nodiscard]] SdlPointer& pointer() { return pointer_; }

    /// Makes the window visible, if it is not yet.
    void showWindow();
    /// The window must be drawn again although nothing changed.
    void windowDamaged() { windowIsCurrent_ = false; }
    /// The graphics device forgot the picture, with `deviceLost` the texture itself too.
    void textureLost(bool deviceLost);

    [[nodiscard]] SDL_Window* window() const { return window_.window.get(); }

  protected:
    void shownChanged(const Rect& part) override;
    void modeChanged() override;

  private:
    void markStale(const Rect& part);
    void updateTexture();
    void drawPanels();
    /// Calls `read(y, colours)` for each row of the texture's part, which must lie inside.
    template <class Read>
    void writeTexture(const Rect& part, Read read);
    void chooseScaling();
    void applyFullScreen();
    [[nodiscard]] bool wantsFullScreen() const { return chosenFullScreen_.value_or(isExclusive()); }

    SdlWindow window_;
    SdlPointer pointer_;
    std::string gameTitle_;
    bool author_;
    std::optional<bool> chosenFullScreen_;
    std::function<void(bool)> fullScreenLink_;
    Rect stale_{}; ///< part of the texture that is older than the screen
    struct Laid {
        const ScreenPanel* panel = nullptr;
        Rect place{}; ///< where it was drawn
    };
    std::array<Laid, 2> layers_;   ///< by Layer
    bool windowIsCurrent_ = false; ///< the window shows the texture
    bool windowIsShown_ = false;
};

} // namespace platform
