#include "platform/sdl/sdlwindow.h"

#include <algorithm>

namespace platform {

namespace {

constexpr int kFramePixels = 40; // what the frame of a window may add to its height

int startScale(const ScreenMode& mode) {
    SDL_Rect desktop{};
    if (SDL_GetDisplayUsableBounds(0, &desktop) != 0) return 1;
    return std::max(1, std::min(desktop.w / mode.width, (desktop.h - kFramePixels) / mode.height));
}

SdlHandle<SDL_Renderer> makeRenderer(SDL_Window* window, const ScreenMode& mode) {
    SdlHandle<SDL_Renderer> renderer(SDL_CreateRenderer(window, -1, 0));
    // The logical size keeps the aspect, with black bars, and maps the mouse back to screen pixels.
    if (renderer && SDL_RenderSetLogicalSize(renderer.get(), mode.width, mode.height) != 0) {
        renderer.reset();
    }
    return renderer;
}

} // namespace

SdlSession::SdlSession() {
    SDL_SetHint(SDL_HINT_APP_NAME, "zorbet");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    started_ = SDL_Init(SDL_INIT_VIDEO) == 0;
}

std::optional<SdlWindow> openSdlWindow(const ScreenMode& mode) {
    const int scale = startScale(mode);
    SdlWindow made;
    made.window.reset(SDL_CreateWindow(
        "", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, mode.width * scale, mode.height * scale,
        SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI));
    if (!made.window) return std::nullopt;
    made.renderer = makeRenderer(made.window.get(), mode);
    if (!made.renderer) return std::nullopt;
    made.texture = makeSdlTexture(made.renderer.get(), mode.width, mode.height);
    if (!made.texture) return std::nullopt;
    return made;
}

void setSdlIcon(SDL_Window* window, std::span<const std::byte> icon) {
    SDL_RWops* source = SDL_RWFromConstMem(icon.data(), static_cast<int>(icon.size()));
    const SdlHandle<SDL_Surface> picture(source ? SDL_LoadBMP_RW(source, 1) : nullptr);
    if (!picture) return;
    SDL_SetColorKey(picture.get(), SDL_TRUE, 0);
    SDL_SetWindowIcon(window, picture.get());
}

SdlHandle<SDL_Texture> makeSdlTexture(SDL_Renderer* renderer, int width, int height) {
    return SdlHandle<SDL_Texture>(SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888,
                                                    SDL_TEXTUREACCESS_STREAMING, width, height));
}

} // namespace platform
