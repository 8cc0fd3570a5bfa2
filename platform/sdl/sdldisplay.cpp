#include "platform/sdl/sdldisplay.h"

#include "formats/base/latin1.h"
#include "platform/host/screen/pixels.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace platform {

SdlDisplay::SdlDisplay(SdlWindow window, const ScreenMode& mode, std::string gameTitle, bool author)
    : HostDisplay(mode), window_(std::move(window)), gameTitle_(std::move(gameTitle)),
      author_(author), stale_(shown().bounds()) {
    SDL_SetWindowTitle(this->window(), gameTitle_.c_str());
}

void SdlDisplay::present(const Rect& area) {
    HostDisplay::present(area);
    showWindow();
}

void SdlDisplay::shownChanged(const Rect& part) { markStale(part); }

/// A new screen needs a texture of its size. Without one the window stays as it is.
void SdlDisplay::modeChanged() {
    SDL_Renderer* renderer = window_.renderer.get();
    SDL_RenderSetLogicalSize(renderer, shown().width(), shown().height());
    if (auto texture = makeSdlTexture(renderer, shown().width(), shown().height()))
        window_.texture = std::move(texture);
    applyFullScreen();
    stale_ = {};
}

void SdlDisplay::setTitle(std::string_view title) {
    const std::string text = formats::utf8FromLatin1(title);
    if (gameTitle_.empty())
        SDL_SetWindowTitle(window(), text.c_str());
    else if (author_)
        SDL_SetWindowTitle(window(), (gameTitle_ + " - " + text).c_str());
}

void SdlDisplay::setFullScreen(bool on) {
    chosenFullScreen_ = on;
    applyFullScreen();
}

void SdlDisplay::toggleFullScreen() {
    setFullScreen(!wantsFullScreen());
    if (fullScreenLink_) fullScreenLink_(wantsFullScreen());
}

void SdlDisplay::applyFullScreen() {
    SDL_SetWindowFullscreen(window(), wantsFullScreen() ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    windowIsCurrent_ = false;
}

Point SdlDisplay::screenPoint(Point inWindow) const {
    float x = 0;
    float y = 0;
    SDL_RenderWindowToLogical(window_.renderer.get(), inWindow.x, inWindow.y, &x, &y);
    return {static_cast<int>(x), static_cast<int>(y)};
}

std::unique_ptr<Cursor> SdlDisplay::makeCursor(int id) { return pointer_.make(id); }

std::unique_ptr<Cursor> SdlDisplay::makeCursor(int id, const CursorImage& image) {
    return pointer_.make(id, image);
}

void SdlDisplay::setCursor(const Cursor& cursor) { pointer_.show(cursor); }

void SdlDisplay::showCursor(bool on) { SDL_ShowCursor(on ? SDL_ENABLE : SDL_DISABLE); }

void SdlDisplay::flush() {
    markStale(calmDown(SDL_GetTicks()));
    if (!stale_.empty()) updateTexture();
    if (windowIsCurrent_ || !windowIsShown_) return;
    chooseScaling();
    SDL_Renderer* renderer = window_.renderer.get();
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, SDL_ALPHA_OPAQUE);
    SDL_RenderClear(renderer);
    SDL_RenderCopy(renderer, window_.texture.get(), nullptr, nullptr);
    SDL_RenderPresent(renderer);
    windowIsCurrent_ = true;
}

void SdlDisplay::showWindow() {
    if (windowIsShown_) return;
    windowIsShown_ = true;
    SDL_ShowWindow(window());
}

void SdlDisplay::textureLost(bool deviceLost) {
    if (deviceLost) {
        window_.texture = makeSdlTexture(window_.renderer.get(), shown().width(), shown().height());
    }
    markStale(shown().bounds());
}

void SdlDisplay::markStale(const Rect& part) { stale_ = hull(stale_, part); }

template <class Read>
void SdlDisplay::writeTexture(const Rect& area, Read read) {
    const SDL_Rect part{area.left, area.top, area.width(), area.height()};
    void* pixels = nullptr;
    int pitch = 0;
    if (SDL_LockTexture(window_.texture.get(), &part, &pixels, &pitch) != 0) return;
    auto* row = static_cast<std::byte*>(pixels);
    for (int y = area.top; y < area.bottom; ++y, row += pitch)
        read(y, std::span(static_cast<std::uint32_t*>(static_cast<void*>(row)),
                          static_cast<std::size_t>(part.w)));
    SDL_UnlockTexture(window_.texture.get());
}

void SdlDisplay::updateTexture() {
    const ColourReader reader(seen(), palette());
    writeTexture(stale_, [&](int y, std::span<std::uint32_t> colours) {
        reader.read(y, stale_.left, colours);
    });
    stale_ = {};
    windowIsCurrent_ = false;
    drawPanels();
}

void SdlDisplay::drawPanels() {
    for (const Laid& laid : layers_) {
        const Rect part = intersection(laid.place, shown().bounds());
        if (!laid.panel || part.empty()) continue;
        const ColourReader reader(laid.panel->picture(), laid.panel->palette());
        writeTexture(part, [&](int y, std::span<std::uint32_t> colours) {
            reader.read(y - laid.place.top, part.left - laid.place.left, colours);
        });
    }
}

void SdlDisplay::lay(Layer layer, const ScreenPanel* panel) {
    Laid& laid = layers_[static_cast<std::size_t>(layer)];
    if (!panel && !laid.panel) return;
    markStale(intersection(laid.place, shown().bounds()));
    laid = {panel, panel ? panel->place() : Rect()};
    markStale(intersection(laid.place, shown().bounds()));
    showWindow();
}

/// Crisp pixels at integer multiples of the screen, smooth ones at other sizes, where crisp pixels
/// would differ in size.
void SdlDisplay::chooseScaling() {
    int width = 0;
    int height = 0;
    SDL_GetRendererOutputSize(window_.renderer.get(), &width, &height);
    const Surface& seen = shown();
    const bool byWidth = width * seen.height() <= height * seen.width();
    const bool whole = byWidth ? width % seen.width() == 0 : height % seen.height() == 0;
    SDL_SetTextureScaleMode(window_.texture.get(),
                            whole ? SDL_ScaleModeNearest : SDL_ScaleModeLinear);
}

} // namespace platform
