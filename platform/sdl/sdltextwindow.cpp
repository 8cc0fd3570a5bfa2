#include "platform/sdl/sdltextwindow.h"

#include "formats/base/latin1.h"
#include "platform/host/faces/textfont.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform {

namespace {

constexpr std::uint8_t kPaper = 0; // colour numbers of what is drawn
constexpr std::uint8_t kInk = 1;
constexpr SDL_Color kColours[] = {{255, 255, 255, SDL_ALPHA_OPAQUE}, {0, 0, 0, SDL_ALPHA_OPAQUE}};

struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

Surface drawn(std::span<const std::string> lines, int width, int height) {
    Surface picture(width, height, 8);
    static_assert(kPaper == 0, "surfaces start with 0");
    int top = 0;
    for (const std::string& line : lines) {
        textfont::draw(picture, top, line, kInk);
        top += textfont::kLineHeight;
        if (top >= height) break;
    }
    return picture;
}

/// Copies the picture into `target`, whatever the form of its pixels.
void copy(Surface& picture, SDL_Surface* target) {
    const std::unique_ptr<SDL_Surface, SurfaceDeleter> source(SDL_CreateRGBSurfaceWithFormatFrom(
        picture.row(0), picture.width(), picture.height(), picture.depth(),
        static_cast<int>(picture.stride()), SDL_PIXELFORMAT_INDEX8));
    if (!source) return;
    SDL_SetPaletteColors(source->format->palette, kColours, 0, std::size(kColours));
    SDL_BlitSurface(source.get(), nullptr, target, nullptr);
}

} // namespace

// ---------------------------------------------------------------------------- all of them

std::unique_ptr<TextWindow> SdlTextWindows::open(const TextWindowRequest& request,
                                                 TextWindowOwner& owner) {
    const Rect& place = request.rectangle;
    SDL_SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "1");
    SdlHandle<SDL_Window> window(SDL_CreateWindow(
        formats::utf8FromLatin1(request.title).c_str(), place.left, place.top, place.width(),
        place.height(), SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALWAYS_ON_TOP));
    SDL_SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "0");
    if (!window) return nullptr;
    return std::make_unique<SdlTextWindow>(*this, std::move(window), owner);
}

void SdlTextWindows::handle(const SDL_WindowEvent& event) {
    const auto found = std::ranges::find(windows_, event.windowID, &SdlTextWindow::id);
    if (found == windows_.end()) return;
    TextWindowOwner& owner = (*found)->owner();
    switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED: owner.resized(); break;
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_RESTORED: owner.damaged(); break;
    case SDL_WINDOWEVENT_CLOSE: owner.closed(); break;
    default: break;
    }
}

// ---------------------------------------------------------------------------- one window

SdlTextWindow::SdlTextWindow(SdlTextWindows& all, SdlHandle<SDL_Window> window,
                             TextWindowOwner& owner)
    : all_(all), window_(std::move(window)), owner_(owner) {
    all_.windows_.push_back(this);
}

SdlTextWindow::~SdlTextWindow() { std::erase(all_.windows_, this); }

int SdlTextWindow::lineHeight() const { return textfont::kLineHeight; }

Rect SdlTextWindow::rectangle() const {
    Rect place;
    int width = 0;
    int height = 0;
    SDL_GetWindowPosition(window_.get(), &place.left, &place.top);
    SDL_GetWindowSize(window_.get(), &width, &height);
    place.right = place.left + width;
    place.bottom = place.top + height;
    return place;
}

bool SdlTextWindow::isMinimised() const {
    return (SDL_GetWindowFlags(window_.get()) & SDL_WINDOW_MINIMIZED) != 0;
}

void SdlTextWindow::move(Point corner) { SDL_SetWindowPosition(window_.get(), corner.x, corner.y); }

void SdlTextWindow::show(std::span<const std::string> lines, std::size_t) {
    SDL_Surface* target = SDL_GetWindowSurface(window_.get());
    if (!target || target->w < 1 || target->h < 1) return;
    Surface picture = drawn(lines, target->w, target->h);
    copy(picture, target);
    SDL_UpdateWindowSurface(window_.get());
}

} // namespace platform
