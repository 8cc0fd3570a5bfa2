// SDL's handles with their owners, and the window that the screen is shown in.
#pragma once

#include "platform/display.h"
#include "platform/host/game/gameinfo.h"
#include "platform/host/screen/png.h"

#include <SDL.h>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace platform {

struct SdlDeleter {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
    void operator()(SDL_Cursor* cursor) const { SDL_FreeCursor(cursor); }
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
template <class Handle>
using SdlHandle = std::unique_ptr<Handle, SdlDeleter>;

/// SDL itself, from before the window until after it.
class SdlSession {
  public:
    /// The desktop and the sound server know the program by the game's title and identifier.
    explicit SdlSession(const GameInfo& game);
    ~SdlSession() { SDL_Quit(); }
    SdlSession& operator=(SdlSession&&) = delete;

    [[nodiscard]] bool started() const { return started_; }

  private:
    bool started_;
};

/// Members in the order of their making.
struct SdlWindow {
    SdlHandle<SDL_Window> window;
    SdlHandle<SDL_Renderer> renderer;
    SdlHandle<SDL_Texture> texture; ///< as large as the screen
};

/// A hidden, resizable window, as large as an integer multiple of the screen can be on the desktop.
/// None on failure; SDL_GetError() tells why.
[[nodiscard]] std::optional<SdlWindow> openSdlWindow(const ScreenMode& mode);

/// Gives the window an icon (see HostModules); without effect when the bytes are none.
void setSdlIcon(SDL_Window* window, std::span<const std::byte> icon);
void setSdlIcon(SDL_Window* window, const Picture& icon);

/// What shows pixels 0xAARRGGBB, top row first, which must outlive it. Null on failure.
[[nodiscard]] SdlHandle<SDL_Surface> makeSdlSurface(std::vector<std::uint32_t>& pixels, int width,
                                                    int height);

/// A texture of `width` by `height` pixels 0xFFRRGGBB, made to be written often. Null on failure.
[[nodiscard]] SdlHandle<SDL_Texture> makeSdlTexture(SDL_Renderer* renderer, int width, int height);

} // namespace platform
