// A screen that nobody looks at, but from which screenshots can be taken.
#pragma once

#include "platform/clock.h"
#include "platform/headless/notices.h"
#include "platform/host/screen/hostdisplay.h"

#include <optional>
#include <string>

namespace platform {

class HeadlessDisplay final : public HostDisplay {
  public:
    /// Both must outlive it.
    HeadlessDisplay(const ScreenMode& mode, const Clock& clock, Notices& notices)
        : HostDisplay(mode), clock_(clock), notices_(notices) {}

    void setTitle(std::string_view title) override;
    void setCursor(const Cursor& cursor) override;
    void showCursor(bool on) override;

    /// What was presented before would be seen now.
    void flush() { calmDown(clock_.milliseconds()); }
    /// Writes what a person would see now as a PNG file, RGB when the display is calm; false when
    /// that fails.
    [[nodiscard]] bool saveScreenshot(const std::string& hostPath);

  private:
    const Clock& clock_;
    Notices& notices_;
    std::optional<std::string> title_; ///< the one reported last, as is the cursor
    std::optional<int> cursor_;
    bool cursorIsShown_ = true;
};

} // namespace platform
