// A text window that nobody looks at, resizes or closes. Each new line is told in the report:
//
//     MS  debug  TEXT
#pragma once

#include "platform/headless/notices.h"
#include "platform/textwindow.h"

namespace platform {

class HeadlessTextWindow final : public TextWindow {
  public:
    /// The report must outlive the window.
    HeadlessTextWindow(const TextWindowRequest& request, Notices& notices)
        : rectangle_(request.rectangle), notices_(notices) {}

    [[nodiscard]] int lineHeight() const override;
    [[nodiscard]] Rect rectangle() const override { return rectangle_; }
    [[nodiscard]] bool isMinimised() const override { return false; }
    void move(Point corner) override;
    void show(std::span<const std::string> lines, std::size_t fresh) override;

  private:
    Rect rectangle_;
    Notices& notices_;
};

} // namespace platform
