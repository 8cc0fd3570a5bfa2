// A screen that nobody looks at, but from which screenshots can be taken.
#pragma once

#include "platform/headless/notices.h"
#include "platform/host/screen/hostdisplay.h"

#include <optional>
#include <string>

namespace platform {

class HeadlessDisplay final : public HostDisplay {
  public:
    HeadlessDisplay(const ScreenMode& mode, Notices& notices)
        : HostDisplay(mode), notices_(notices) {}

    void setTitle(std::string_view title) override;
    void setCursor(const Cursor& cursor) override;
    void showCursor(bool on) override;

    /// Writes what a person would see now as a PNG file; false when that fails.
    [[nodiscard]] bool saveScreenshot(const std::string& hostPath) const;

  private:
    Notices& notices_;
    std::optional<std::string> title_; ///< the one reported last, as is the cursor
    std::optional<int> cursor_;
    bool cursorIsShown_ = true;
};

} // namespace platform
