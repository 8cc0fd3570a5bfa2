#include "platform/headless/timelineevents.h"

#include "platform/host/machine/hostmachine.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace platform {

TimelineEvents::TimelineEvents(const Timeline& timeline, std::optional<std::uint32_t> untilMs,
                               VirtualClock& clock, HeadlessDisplay& display, HeadlessDesk& desk,
                               std::ostream& notes)
    : TimedEvents(clock, display), clock_(clock), display_(display), desk_(desk), notes_(notes),
      untilMs_(untilMs) {
    for (const TimelineEvent& event : timeline)
        if (!std::holds_alternative<TimelineAnswer>(event.what)) add(event);
}

bool TimelineEvents::take(Message& message) {
    if (terminationRequested() && !std::exchange(terminated_, true)) {
        message = {.kind = Message::Kind::Quit, .timeMs = clock_.milliseconds()};
        return quit("quit");
    }
    const bool ends = isUntilDue();
    if (takeDue(message, ends ? *untilMs_ : clock_.loopMs()))
        return message.kind != Message::Kind::Quit || quit("quit");
    if (!ends) return false;
    message = {.kind = Message::Kind::Quit};
    deliver(message, *std::exchange(untilMs_, std::nullopt));
    return quit("until");
}

bool TimelineEvents::isUntilDue() const {
    return untilMs_ && clock_.loopHasBegun() && *untilMs_ <= clock_.loopMs();
}

bool TimelineEvents::quitWaits() { return TimedEvents::quitWaits() || terminationRequested(); }

/// A line that is to be run wants the pass to end.
bool TimelineEvents::wait(Message& message) {
    constexpr std::uint32_t kNever = 0xFFFFFFFF;
    display_.flush();
    while (!take(message)) {
        if (!clock_.loopHasBegun() || (!nextMs() && !untilMs_) || desk_.hasLines()) return false;
        clock_.moveToLoopMs(std::min(nextMs().value_or(kNever), untilMs_.value_or(kNever)));
    }
    return true;
}

void TimelineEvents::end() {
    const auto now = static_cast<std::uint32_t>(clock_.loopMs());
    untilMs_ = std::min(untilMs_.value_or(now), now);
}

void TimelineEvents::meet(const TimelineEvent& event) {
    if (const auto* screenshot = std::get_if<TimelineScreenshot>(&event.what)) {
        if (!display_.saveScreenshot(screenshot->file))
            notes_ << "screenshot " << screenshot->file << " cannot be written" << std::endl;
    } else if (const auto* expected = std::get_if<TimelineExpectation>(&event.what)) {
        desk_.check(*expected);
    }
    if (const auto* run = std::get_if<TimelineRun>(&event.what)) desk_.runLater(run->line);
}

bool TimelineEvents::quit(std::string_view cause) {
    if (quitCause_.empty()) quitCause_ = cause;
    return true;
}

} // namespace platform
