// The author's desk where nobody sits: warnings are written to standard error, and what the
// timeline expects is looked up and told in the report, a line each:
//
//     MS  expect  met  WHAT
//     MS  expect  failed  WHAT  WAS
//
// So are the lines that it has run:
//
//     MS  run  LINE  RESULT
#pragma once

#include "platform/headless/notices.h"
#include "platform/host/game/hostdesk.h"
#include "platform/host/visit/timeline.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace platform {

class HeadlessDesk final : public HostDesk {
  public:
    /// What is referred to must outlive the desk.
    HeadlessDesk(const std::string& profile, Notices& notices, std::ostream& notes)
        : HostDesk(profile), notices_(notices), notes_(notes) {}

    void warn(std::string_view text) override;
    void say(std::string_view line) override { said_.add(line); }

    void boxShown(std::string_view text) { boxes_.add(text); }
    void check(const TimelineExpectation& expected);

  protected:
    void lineHasRun(std::string_view line, std::string_view result) override {
        notices_.line("run", {line, result});
    }

  private:
    /// Texts that came, and how many of them were expected or passed over.
    class Texts {
      public:
        void add(std::string_view text);
        /// Whether it came behind the last one that was expected.
        [[nodiscard]] bool take(std::string_view text);
        /// What came behind that.
        [[nodiscard]] std::string rest() const;

      private:
        std::vector<std::string> texts_;
        std::size_t next_ = 0;
    };

    Notices& notices_;
    std::ostream& notes_;
    Texts said_;
    Texts boxes_;
    std::string firstWarning_;
};

} // namespace platform
