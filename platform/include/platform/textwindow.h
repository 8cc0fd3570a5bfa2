// A small window beside the program's own, for lines of text: black on white, one font. It keeps no
// text. Its owner says what to show, and is told when something happens to the window.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <span>
#include <string>

namespace platform {

struct TextWindowRequest {
    std::string className; ///< for desktops that tell windows apart by classes
    std::string title;     ///< Latin-1
    Rect rectangle;        ///< on the desktop, in its pixels, without the frame
};

class TextWindowOwner {
  public:
    virtual ~TextWindowOwner() = default;

    virtual void resized() = 0; ///< by a person; what the window shows must be shown again
    virtual void damaged() = 0; ///< what the window shows must be shown again
    virtual void closed() = 0;  ///< by a person; the owner destroys the window within this call
};

class TextWindow {
  public:
    virtual ~TextWindow() = default;

    /// Height of the font and the space between two lines, in pixels; at least 1.
    [[nodiscard]] virtual int lineHeight() const = 0;
    /// Where the window is now, without its frame.
    [[nodiscard]] virtual Rect rectangle() const = 0;
    [[nodiscard]] virtual bool isMinimised() const = 0;

    /// Puts the top left corner there; the size stays.
    virtual void move(Point corner) = 0;

    /// Shows these lines (Latin-1) and nothing else, at once, from the top down. The last `fresh`
    /// of them were not there the last time.
    virtual void show(std::span<const std::string> lines, std::size_t fresh) = 0;
};

} // namespace platform
