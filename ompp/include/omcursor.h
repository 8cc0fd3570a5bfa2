// A mouse cursor: one of the platform's own, with a negative number, or the picture of a `CURSOR`
// resource, with the number of the resource. Such a resource is what a .cur file holds, see
// formats/picture/cursor.h.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace platform {
class Cursor;
}

// The platform's own.
inline constexpr int kOMCursorArrow = -1;
inline constexpr int kOMCursorWait = -2;
inline constexpr int kOMCursorText = -3; ///< the text beam
inline constexpr int kOMCursorCross = -4;

inline constexpr int kOMCursorMaxId = 32767;

class OMCursor {
  public:
    /// Numbers from 0 on are those of resources, which the resource manager finds. A resource that
    /// is not there or damaged gives the arrow, and so does, after a failed check, a number below
    /// that of the cross.
    explicit OMCursor(int id);
    /// Out of the bytes of a resource; the arrow when they are no cursor.
    OMCursor(int id, std::span<const std::byte> resource);
    ~OMCursor();
    OMCursor& operator=(OMCursor&&) = delete;

    /// By number, for those who share it.
    [[nodiscard]] static std::shared_ptr<const OMCursor> load(int id) {
        return std::make_shared<const OMCursor>(id);
    }

    /// kOMCursorArrow when the cursor that was wanted could not be made.
    [[nodiscard]] int id() const;
    /// For the display.
    [[nodiscard]] const platform::Cursor& handle() const { return *handle_; }

  private:
    void makeFrom(int id, std::span<const std::byte> resource);

    std::unique_ptr<platform::Cursor> handle_; ///< never null
};
