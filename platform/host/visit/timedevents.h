// Input that carries its times: an event becomes a message when its time has come, however long the
// program takes to fetch it. What else stands in the queue is met when the program reaches it.
#pragma once

#include "platform/events.h"
#include "platform/host/screen/hostdisplay.h"
#include "platform/host/visit/timeline.h"
#include "platform/host/visit/virtualclock.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

namespace platform {

class TimedEvents : public Events {
  public:
    void discardInput() override;
    bool releaseWasDropped() override { return std::exchange(releaseDropped_, false); }
    [[nodiscard]] bool quitWaits() override { return closed_; }
    void captureMouse(bool captured) override { captured_ = captured; }

    /// A person answers boxes, or did when the visit was recorded: as a box opens, input that waits
    /// is lost.
    void loseInputInBoxes() { losesInputInBoxes_ = true; }
    void boxOpens();

    /// The window is closed now, while a box is open: the next message is a quit.
    void closeWindow();

  protected:
    /// Both must outlive the queue.
    TimedEvents(VirtualClock& clock, HostDisplay& display) : clock_(clock), display_(display) {}

    /// Behind all that are there; not earlier than they are.
    void add(TimelineEvent event) { waiting_.push_back(std::move(event)); }
    /// The time of the next one, in that of the main loop; none when nothing waits.
    [[nodiscard]] std::optional<std::uint32_t> nextMs() const;
    /// Goes through what is due until `ms` of the main loop, up to the next message.
    bool takeDue(Message& message, std::uint64_t ms);
    /// For the program, of an event at that time of the main loop, which is due.
    void deliver(Message& message, std::uint32_t timeMs);
    /// Whether the window was closed, and the program has not come to that yet.
    [[nodiscard]] bool quitIsDue() const;
    /// Something that is no message, at its time.
    virtual void meet(const TimelineEvent& event) = 0;
    /// Whether what follows has to wait for the end of this pass, as behind a line that is to be
    /// run.
    [[nodiscard]] virtual bool standsStill() const = 0;

  private:
    void dropDueInput();

    VirtualClock& clock_;
    HostDisplay& display_;
    bool losesInputInBoxes_ = false;
    std::deque<TimelineEvent> waiting_;
    bool captured_ = false;
    bool buttonDown_ = false; ///< as far as the program knows
    bool releaseDropped_ = false;
    bool closed_ = false;
};

} // namespace platform
