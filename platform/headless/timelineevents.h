// Input that was written down beforehand: an event becomes a message when its time has come,
// however long the program takes to fetch it. Screenshots and expectations stand in the same queue
// and are taken when the program reaches them. What follows a line that is to be run waits for
// that.
#pragma once

#include "platform/events.h"
#include "platform/headless/headlessdesk.h"
#include "platform/headless/headlessdisplay.h"
#include "platform/headless/timeline.h"
#include "platform/headless/virtualclock.h"

#include <deque>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <utility>

namespace platform {

class TimelineEvents final : public Events {
  public:
    /// `untilMs` is the time of an additional quit. What is referred to must outlive the queue.
    TimelineEvents(const Timeline& timeline, std::optional<std::uint32_t> untilMs,
                   VirtualClock& clock, HeadlessDisplay& display, HeadlessDesk& desk,
                   std::ostream& notes);

    bool take(Message& message) override;
    bool wait(Message& message) override;
    void discardInput() override;
    bool releaseWasDropped() override { return std::exchange(releaseDropped_, false); }
    [[nodiscard]] bool quitWaits() override;
    void captureMouse(bool captured) override { captured_ = captured; }

    /// What the first quit message that was taken came from: "until" or "quit"; empty before.
    [[nodiscard]] std::string_view quitCause() const { return quitCause_; }

  private:
    struct Until {};
    struct Entry {
        std::uint32_t timeMs;
        std::variant<Message, TimelineScreenshot, TimelineExpectation, TimelineRun, Until> what;
    };

    static std::deque<Entry> entriesOf(const Timeline& timeline,
                                       std::optional<std::uint32_t> untilMs);

    /// True when the entry is a message for the program.
    bool deliver(const Entry& entry, Message& message);
    void deliverQuit(std::string_view cause);

    std::deque<Entry> waiting_;
    bool terminated_ = false; ///< the host asked for the end, and the program was told
    VirtualClock& clock_;
    HeadlessDisplay& display_;
    HeadlessDesk& desk_;
    std::ostream& notes_;
    bool captured_ = false;
    bool buttonDown_ = false; ///< as far as the program knows
    bool releaseDropped_ = false;
    std::string_view quitCause_;
};

} // namespace platform
