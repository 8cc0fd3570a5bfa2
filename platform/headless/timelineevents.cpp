#include "platform/headless/timelineevents.h"

#include "platform/host/machine/hostmachine.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace platform {

namespace {

bool isMouse(Message::Kind kind) {
    return kind == Message::Kind::MouseDown || kind == Message::Kind::MouseUp ||
           kind == Message::Kind::MouseMove || kind == Message::Kind::DoubleClick;
}

Rect boundsOf(const ScreenMode& mode) { return {0, 0, mode.width, mode.height}; }

} // namespace

TimelineEvents::TimelineEvents(const Timeline& timeline, std::optional<std::uint32_t> untilMs,
                               VirtualClock& clock, HeadlessDisplay& display, HeadlessDesk& desk,
                               std::ostream& notes)
    : waiting_(entriesOf(timeline, untilMs)), clock_(clock), display_(display), desk_(desk),
      notes_(notes) {}

std::deque<TimelineEvents::Entry> TimelineEvents::entriesOf(const Timeline& timeline,
                                                            std::optional<std::uint32_t> untilMs) {
    std::deque<Entry> entries;
    for (const TimelineEvent& event : timeline) {
        if (const auto* message = std::get_if<Message>(&event.what)) {
            entries.push_back({event.timeMs, *message});
        } else if (const auto* screenshot = std::get_if<TimelineScreenshot>(&event.what)) {
            entries.push_back({event.timeMs, *screenshot});
        } else if (const auto* expected = std::get_if<TimelineExpectation>(&event.what)) {
            entries.push_back({event.timeMs, *expected});
        } else if (const auto* run = std::get_if<TimelineRun>(&event.what)) {
            entries.push_back({event.timeMs, *run});
        }
    }
    if (untilMs) {
        const auto behind = std::ranges::upper_bound(entries, *untilMs, {}, &Entry::timeMs);
        entries.insert(behind, {*untilMs, Until{}});
    }
    return entries;
}

bool TimelineEvents::take(Message& message) {
    if (terminationRequested() && !std::exchange(terminated_, true)) {
        message = {.kind = Message::Kind::Quit, .timeMs = clock_.milliseconds()};
        deliverQuit("quit");
        return true;
    }
    while (clock_.loopHasBegun() && !waiting_.empty() && !desk_.hasLines() &&
           waiting_.front().timeMs <= clock_.loopMs()) {
        const Entry entry = std::move(waiting_.front());
        waiting_.pop_front();
        if (deliver(entry, message)) return true;
    }
    return false;
}

bool TimelineEvents::quitWaits() { return terminationRequested(); }

/// A line that is to be run wants the pass to end.
bool TimelineEvents::wait(Message& message) {
    while (!take(message)) {
        if (!clock_.loopHasBegun() || waiting_.empty() || desk_.hasLines()) return false;
        clock_.moveToLoopMs(waiting_.front().timeMs);
    }
    return true;
}

bool TimelineEvents::deliver(const Entry& entry, Message& message) {
    if (const auto* screenshot = std::get_if<TimelineScreenshot>(&entry.what)) {
        if (!display_.saveScreenshot(screenshot->file)) {
            notes_ << "screenshot " << screenshot->file << " cannot be written" << std::endl;
        }
        return false;
    }
    if (const auto* expected = std::get_if<TimelineExpectation>(&entry.what)) {
        desk_.check(*expected);
        return false;
    }
    if (const auto* run = std::get_if<TimelineRun>(&entry.what)) {
        desk_.runLater(run->line);
        return false;
    }
    if (const auto* given = std::get_if<Message>(&entry.what)) {
        message = *given;
    } else {
        message = {.kind = Message::Kind::Quit};
    }
    // The program's clock may have run for a while before the main loop began.
    const auto lateMs = static_cast<std::uint32_t>(clock_.loopMs() - entry.timeMs);
    message.timeMs = clock_.milliseconds() - lateMs;
    if (isMouse(message.kind) && !captured_) {
        message.position = nearestInside(message.position, boundsOf(display_.mode()));
    }
    buttonDown_ = message.isPress() || (buttonDown_ && message.kind != Message::Kind::MouseUp);
    if (message.kind == Message::Kind::Background) display_.setInForeground(false);
    if (message.kind == Message::Kind::Foreground) display_.setInForeground(true);
    if (message.kind == Message::Kind::Quit) {
        deliverQuit(std::holds_alternative<Until>(entry.what) ? "until" : "quit");
    }
    return true;
}

void TimelineEvents::deliverQuit(std::string_view cause) {
    if (quitCause_.empty()) quitCause_ = cause;
}

void TimelineEvents::discardInput() {
    const auto isDroppedInput = [this](const Entry& entry) {
        const auto* message = std::get_if<Message>(&entry.what);
        const bool dropped = message && entry.timeMs <= clock_.loopMs() &&
                             (isMouse(message->kind) || message->kind == Message::Kind::Key);
        if (dropped && message->kind == Message::Kind::MouseUp && buttonDown_) {
            buttonDown_ = false;
            releaseDropped_ = true;
        }
        return dropped;
    };
    if (clock_.loopHasBegun()) std::erase_if(waiting_, isDroppedInput);
    captured_ = false;
}

} // namespace platform
