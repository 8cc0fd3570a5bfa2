#include "platform/sdl/sdlwindow.h"

#include <algorithm>
#include <cstdint>
#include <langinfo.h>
#include <locale.h>
#include <string_view>
#include <vector>

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

/// Whether the environment's locale is installed and knows all letters.
bool localeHasUtf8() {
    const locale_t locale = ::newlocale(LC_ALL_MASK, "", nullptr);
    if (!locale) return false;
    const bool has = std::string_view(::nl_langinfo_l(CODESET, locale)) == "UTF-8";
    ::freelocale(locale);
    return has;
}

} // namespace

SdlSession::SdlSession(const GameInfo& game) {
    constexpr int kUnlessGiven = 0;
    if (!localeHasUtf8()) SDL_setenv("LC_ALL", "C.UTF-8", 1); // boxes would lose their letters
    if (!game.title.empty()) {
        SDL_SetHint(SDL_HINT_APP_NAME, game.title.c_str());
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, game.title.c_str());
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, game.title.c_str());
    }
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_ROLE, "game");
    if (!game.identifier.empty()) { // what a desktop entry finds its windows by
        SDL_setenv("SDL_VIDEO_X11_WMCLASS", game.identifier.c_str(), kUnlessGiven);
        SDL_setenv("SDL_VIDEO_WAYLAND_WMCLASS", game.identifier.c_str(), kUnlessGiven);
    }
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

void setSdlIcon(SDL_Window* window, const Picture& icon) {
    std::vector<std::uint32_t> pixels = icon.pixels; // a surface wants to be able to write
    const auto surface = makeSdlSurface(pixels, icon.width, icon.height);
    if (surface) SDL_SetWindowIcon(window, surface.get());
}

SdlHandle<SDL_Surface> makeSdlSurface(std::vector<std::uint32_t>& pixels, int width, int height) {
    constexpr int kBits = 32;
    constexpr int kBytes = 4;
    return SdlHandle<SDL_Surface>(SDL_CreateRGBSurfaceWithFormatFrom(
        pixels.data(), width, height, kBits, width * kBytes, SDL_PIXELFORMAT_ARGB8888));
}

SdlHandle<SDL_Texture> makeSdlTexture(SDL_Renderer* renderer, int width, int height) {
    return SdlHandle<SDL_Texture>(SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888,
                                                    SDL_TEXTUREACCESS_STREAMING, width, height));
}

} // namespace platform
