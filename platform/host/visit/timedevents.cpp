#include "platform/host/visit/timedevents.h"

#include <algorithm>
#include <variant>

namespace platform {

namespace {

bool isMouse(Message::Kind kind) {
    return kind == Message::Kind::MouseDown || kind == Message::Kind::MouseUp ||
           kind == Message::Kind::MouseMove || kind == Message::Kind::DoubleClick;
}

Rect boundsOf(const ScreenMode& mode) { return {0, 0, mode.width, mode.height}; }

} // namespace

std::optional<std::uint32_t> TimedEvents::nextMs() const {
    if (waiting_.empty()) return std::nullopt;
    return waiting_.front().timeMs;
}

bool TimedEvents::takeDue(Message& message, std::uint64_t ms) {
    while (clock_.loopHasBegun() && !waiting_.empty() && waiting_.front().timeMs <= ms &&
           !standsStill()) {
        const TimelineEvent event = std::move(waiting_.front());
        waiting_.pop_front();
        if (const auto* given = std::get_if<Message>(&event.what)) {
            message = *given;
            deliver(message, event.timeMs);
            return true;
        }
        meet(event);
    }
    return false;
}

void TimedEvents::deliver(Message& message, std::uint32_t timeMs) {
    // The program's clock may have run for a while before the main loop began.
    const auto lateMs = static_cast<std::uint32_t>(clock_.loopMs() - timeMs);
    message.timeMs = clock_.milliseconds() - lateMs;
    if (isMouse(message.kind) && !captured_)
        message.position = nearestInside(message.position, boundsOf(display_.mode()));
    buttonDown_ = message.isPress() || (buttonDown_ && message.kind != Message::Kind::MouseUp);
    if (message.kind == Message::Kind::Background) display_.setInForeground(false);
    if (message.kind == Message::Kind::Foreground) display_.setInForeground(true);
}

void TimedEvents::closeWindow() {
    closed_ = true;
    const auto now = static_cast<std::uint32_t>(clock_.loopMs());
    waiting_.push_front({now, Message{.kind = Message::Kind::Quit}});
}

void TimedEvents::boxOpens() {
    if (losesInputInBoxes_) dropDueInput();
}

bool TimedEvents::quitIsDue() const {
    return std::ranges::any_of(waiting_, [this](const TimelineEvent& event) {
        const auto* message = std::get_if<Message>(&event.what);
        return message && message->kind == Message::Kind::Quit && event.timeMs <= clock_.loopMs();
    });
}

void TimedEvents::discardInput() {
    dropDueInput();
    captured_ = false;
}

void TimedEvents::dropDueInput() {
    const auto isDroppedInput = [this](const TimelineEvent& event) {
        const auto* message = std::get_if<Message>(&event.what);
        const bool dropped = message && event.timeMs <= clock_.loopMs() &&
                             (isMouse(message->kind) || message->kind == Message::Kind::Key);
        if (dropped && message->kind == Message::Kind::MouseUp && buttonDown_) {
            buttonDown_ = false;
            releaseDropped_ = true;
        }
        return dropped;
    };
    if (clock_.loopHasBegun()) std::erase_if(waiting_, isDroppedInput);
}

} // namespace platform
