// Input that was written down beforehand. Screenshots and expectations stand in the same queue and
// are taken when the program reaches them.
#pragma once

#include "platform/headless/headlessdesk.h"
#include "platform/headless/headlessdisplay.h"
#include "platform/host/visit/timedevents.h"

#include <iosfwd>
#include <optional>
#include <string_view>

namespace platform {

class TimelineEvents final : public TimedEvents {
  public:
    /// `untilMs` is the time of an additional quit. What is referred to must outlive the queue.
    TimelineEvents(const Timeline& timeline, std::optional<std::uint32_t> untilMs,
                   VirtualClock& clock, HeadlessDisplay& display, HeadlessDesk& desk,
                   std::ostream& notes);

    bool take(Message& message) override;
    bool wait(Message& message) override;
    [[nodiscard]] bool quitWaits() override;

    /// Nothing that is known comes any more: a quit now, if none was to come before.
    void end();

    /// What the first quit message that was taken came from: "until" or "quit"; empty before.
    [[nodiscard]] std::string_view quitCause() const { return quitCause_; }

  protected:
    void meet(const TimelineEvent& event) override;
    [[nodiscard]] bool standsStill() const override { return desk_.hasLines(); }

  private:
    [[nodiscard]] bool isUntilDue() const;
    /// The message that is taken is a quit.
    bool quit(std::string_view cause);

    VirtualClock& clock_;
    HeadlessDisplay& display_;
    HeadlessDesk& desk_;
    std::ostream& notes_;
    std::optional<std::uint32_t> untilMs_;
    bool terminated_ = false; ///< the host asked for the end, and the program was told
    std::string_view quitCause_;
};

} // namespace platform
