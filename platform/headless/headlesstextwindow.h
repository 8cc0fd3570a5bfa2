// A text window that nobody looks at, resizes or closes. Each new line is told in the report:
//
//     MS  debug  TEXT
#pragma once

#include "platform/headless/report.h"
#include "platform/textwindow.h"

namespace platform {

class HeadlessTextWindow final : public TextWindow {
  public:
    /// The report must outlive the window.
    HeadlessTextWindow(const TextWindowRequest& request, Report& report)
        : rectangle_(request.rectangle), report_(report) {}

    [[nodiscard]] int lineHeight() const override;
    [[nodiscard]] Rect rectangle() const override { return rectangle_; }
    [[nodiscard]] bool isMinimised() const override { return false; }
    void move(Point corner) override;
    void show(std::span<const std::string> lines, std::size_t fresh) override;

  private:
    Rect rectangle_;
    Report& report_;
};

} // namespace platform
