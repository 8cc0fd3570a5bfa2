// A screen that nobody looks at, but from which screenshots can be taken.
#pragma once

#include "platform/display.h"
#include "platform/headless/report.h"
#include "platform/host/shownscreen.h"

#include <optional>
#include <string>

namespace platform {

class HeadlessDisplay final : public Display {
  public:
    HeadlessDisplay(const ScreenMode& mode, Report& report) : screen_(mode), report_(report) {}

    [[nodiscard]] ScreenMode mode() const override { return screen_.mode(); }
    [[nodiscard]] Surface& screen() override { return screen_.drawn(); }
    void present(const Rect& area) override { screen_.present(area); }
    void setPalette(int first, std::span<const Rgb> colours) override;
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const override;
    void setTitle(std::string_view title) override;
    void setCursor(int id) override;

    /// Writes what a person would see now as a PNG file; false when that fails.
    [[nodiscard]] bool saveScreenshot(const std::string& hostPath) const;

  private:
    ShownScreen screen_;
    Report& report_;
    std::optional<std::string> title_; ///< the one reported last, as is the cursor
    std::optional<int> cursor_;
};

} // namespace platform
