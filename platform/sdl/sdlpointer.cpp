#include "platform/sdl/sdlpointer.h"

#include "platform/host/screen/pointers.h"
#include "platform/sdl/sdlwindow.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

namespace {

SDL_SystemCursor systemCursor(int id) {
    switch (id) {
    case -2: return SDL_SYSTEM_CURSOR_WAIT;
    case -3: return SDL_SYSTEM_CURSOR_IBEAM;
    case -4: return SDL_SYSTEM_CURSOR_CROSSHAIR;
    default: return SDL_SYSTEM_CURSOR_ARROW;
    }
}

SdlHandle<SDL_Cursor> colourCursor(CursorImage image) {
    const auto surface = makeSdlSurface(image.pixels, image.width, image.height);
    if (!surface) return {};
    return SdlHandle<SDL_Cursor>(
        SDL_CreateColorCursor(surface.get(), image.hotSpot.x, image.hotSpot.y));
}

} // namespace

/// The window system goes over to its default cursor by itself when the shown one is destroyed.
class SdlCursor final : public Cursor {
  public:
    /// Without a picture it is the desktop's own of this number.
    SdlCursor(SdlPointer& pointer, int id, std::optional<CursorImage> image)
        : Cursor(id), pointer_(pointer), image_(std::move(image)) {}
    ~SdlCursor() override { pointer_.forget(*this); }
    SdlCursor& operator=(SdlCursor&&) = delete;

    /// False when there can be no cursor of it.
    bool prepare(int scale) {
        if (handle_ && scale == scale_) return true;
        auto made = makeHandle(scale);
        if (!made) return false;
        shownBefore_ = std::exchange(handle_, std::move(made));
        scale_ = scale;
        return true;
    }
    /// As large as it was prepared; what was shown before goes only when this is seen.
    void show() {
        SDL_SetCursor(handle_ ? handle_.get() : SDL_GetDefaultCursor());
        shownBefore_.reset();
    }

  private:
    [[nodiscard]] SdlHandle<SDL_Cursor> makeHandle(int scale) const {
        if (!image_ && scale == 1)
            return SdlHandle<SDL_Cursor>(SDL_CreateSystemCursor(systemCursor(id())));
        return colourCursor(enlarged(image_ ? *image_ : ownPointer(id()), scale));
    }

    SdlPointer& pointer_;
    std::optional<CursorImage> image_;
    SdlHandle<SDL_Cursor> handle_;
    SdlHandle<SDL_Cursor> shownBefore_;
    int scale_ = 0; ///< of the handle
};

SdlPointer::SdlPointer() = default;

SdlPointer::~SdlPointer() = default;

std::unique_ptr<Cursor> SdlPointer::make(int id) {
    return std::make_unique<SdlCursor>(*this, id, std::nullopt);
}

std::unique_ptr<Cursor> SdlPointer::make(int id, const CursorImage& image) {
    if (!image.isWhole()) return nullptr;
    auto cursor = std::make_unique<SdlCursor>(*this, id, image);
    if (!cursor->prepare(scale_)) return nullptr;
    return cursor;
}

void SdlPointer::show(const Cursor& cursor) {
    // Its own display made it, and hands it out to be shown only.
    shown_ = const_cast<SdlCursor*>(static_cast<const SdlCursor*>(&cursor));
    update();
}

void SdlPointer::cover() {
    isCovered_ = true;
    wasVisible_ = SDL_ShowCursor(SDL_ENABLE);
    update();
}

void SdlPointer::uncover() {
    isCovered_ = false;
    update();
    SDL_ShowCursor(wasVisible_);
}

void SdlPointer::setScale(int times) {
    if (times == scale_) return;
    scale_ = times;
    update();
}

void SdlPointer::forget(const SdlCursor& cursor) {
    if (&cursor != shown_) return;
    shown_ = nullptr;
    update();
}

void SdlPointer::update() {
    SdlCursor* cursor = isCovered_ ? nullptr : shown_;
    if (!cursor) {
        constexpr int kArrow = -1;
        if (!arrow_) arrow_ = std::make_unique<SdlCursor>(*this, kArrow, std::nullopt);
        cursor = arrow_.get();
    }
    cursor->prepare(scale_);
    cursor->show();
}

} // namespace platform
