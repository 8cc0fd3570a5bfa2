// The pointer of the mouse as the desktop shows it: which cursor, and how large.
#pragma once

#include "platform/cursor.h"

#include <memory>

namespace platform {

class SdlCursor;

class SdlPointer {
  public:
    SdlPointer();
    ~SdlPointer();
    SdlPointer& operator=(SdlPointer&&) = delete;

    /// One of the desktop's own, see Display::makeCursor. Cursors must not outlive the pointer.
    [[nodiscard]] std::unique_ptr<Cursor> make(int id);
    /// Null when there can be none.
    [[nodiscard]] std::unique_ptr<Cursor> make(int id, const CursorImage& image);

    /// One that was made here.
    void show(const Cursor& cursor);
    /// The arrow is shown in place of the program's cursor until it is uncovered, and is seen in
    /// any case.
    void cover();
    void uncover();
    /// So many times as large as they are, 1 to kMostPointerScale; 1 at first.
    void setScale(int times);

  private:
    friend class SdlCursor;
    void forget(const SdlCursor& cursor);
    void update();

    int scale_ = 1;
    std::unique_ptr<SdlCursor> arrow_; ///< of this scale, once it was shown
    SdlCursor* shown_ = nullptr;       ///< the program's; null: the arrow
    bool isCovered_ = false;
    int wasVisible_ = 1; ///< when it was covered
};

} // namespace platform
