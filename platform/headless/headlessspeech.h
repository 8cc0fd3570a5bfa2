// A voice that nobody hears: what it speaks is a line of the report.
#pragma once

#include "platform/headless/notices.h"
#include "platform/speech.h"

namespace platform {

class HeadlessSpeech final : public Speech {
  public:
    /// The notices must outlive it.
    explicit HeadlessSpeech(Notices& notices) : notices_(notices) {}

    void hush() override {}
    [[nodiscard]] Voice voice() const override { return Voice::Ready; }

  protected:
    void say(std::string_view text, std::string_view, Turn) override {
        notices_.line("spoken", {text});
    }

  private:
    Notices& notices_;
};

} // namespace platform
