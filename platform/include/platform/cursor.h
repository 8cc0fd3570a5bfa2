// Mouse cursors: the platform's own, by number, and pictures of the program.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform {

/// What a cursor looks like.
struct CursorImage {
    static constexpr int kMaxSide = 256; ///< pixels

    int width = 0;
    int height = 0;
    Point hotSpot{};                   ///< the pixel that points; inside the picture
    std::vector<std::uint32_t> pixels; ///< 0xAARRGGBB, alpha 0 or 255; top row first

    /// Sides of 1 to kMaxSide, and as many pixels as they say.
    [[nodiscard]] bool isWhole() const {
        return width >= 1 && width <= kMaxSide && height >= 1 && height <= kMaxSide &&
               pixels.size() == static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
};

/// A cursor that its display can show. It must not outlive the display; one that is destroyed while
/// it is shown gives way to the arrow, with the next Display::setCursor at the latest.
class Cursor {
  public:
    explicit Cursor(int id) : id_(id) {}
    virtual ~Cursor() = default;
    Cursor& operator=(Cursor&&) = delete;

    /// The number it was made with.
    [[nodiscard]] int id() const { return id_; }

  private:
    int id_;
};

} // namespace platform
