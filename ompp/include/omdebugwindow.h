// The debug window: a small window above all others that shows the last lines of what scripts tell
// their authors. It holds as many lines as fit into it and drops the oldest one for a new one.
//
// The native window is opened for the first line. When a person closes it the lines are gone with
// it, and the next line opens another one.
#pragma once

#include "platform/textwindow.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class OMDebugWindow : private platform::TextWindowOwner {
  public:
    OMDebugWindow() = default;
    ~OMDebugWindow() override = default;
    OMDebugWindow& operator=(OMDebugWindow&&) = delete;

    /// Adds one line. Fatal when it is the first one and there is no application; lost when the
    /// machine gives no window.
    void show(std::string_view line);
    /// Adds each line of a text; a line break at its end does not begin another one.
    void showText(std::string_view text);

    /// Left, top, width and height of the window on the desktop; empty at 0, 0 without a window.
    [[nodiscard]] platform::Rect position() const;
    /// Puts the top left corner there and keeps the size; nothing happens without a window.
    void move(int x, int y);
    void destroy();

    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  private:
    void resized() override;
    void damaged() override { paint(0); }
    void closed() override { destroy(); }

    bool open();
    [[nodiscard]] std::size_t capacity() const;
    /// Drops the oldest lines that are more than `count`.
    void keepNewest(std::size_t count);
    void paint(std::size_t fresh);

    std::unique_ptr<platform::TextWindow> window_; ///< none until the first line
    std::vector<std::string> lines_;               ///< the oldest first
};
