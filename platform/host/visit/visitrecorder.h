// Stands between a machine with a person in front of it and the program, and writes down what comes
// from outside, so that the visit can be played again to the same pixels.
//
// The program sees a clock that stands still during a turn of the main loop, as the virtual clock
// of a visit that is played does, and moves on between two turns by the time that has passed. What
// a person does reaches it between two turns, too. So the times of the turns and the events are all
// that a visit is.
#pragma once

#include "platform/dialogs.h"
#include "platform/host/game/hostdesk.h"
#include "platform/host/visit/timedevents.h"
#include "platform/host/visit/virtualclock.h"
#include "platform/host/visit/visitwriter.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// A virtual clock that goes by a real one.
class RecordedClock final : public VirtualClock {
  public:
    /// The real clock must outlive it.
    explicit RecordedClock(Clock& real) : real_(real) { ignoreBusyTime(); }

    void sleep(std::uint32_t ms) override;
    /// As beginLoop; what has passed until now does not count.
    void beginMainLoop();
    /// Moves on to the real time, by at least a millisecond, so that no two turns have the same
    /// time. Gives by how much.
    std::uint32_t catchUp();

  private:
    Clock& real_;
    std::uint32_t lastMs_ = 0;  ///< of the real clock, when it was last looked at
    std::int64_t behindMs_ = 0; ///< how much real time has passed more than was counted
};

/// What a person does, as it is written down.
class RecordedEvents final : public TimedEvents {
  public:
    /// `person` is what the machine takes in. All must outlive the queue.
    RecordedEvents(VisitWriter& visit, Events& person, RecordedClock& clock, HostDisplay& display,
                   HostDesk& desk)
        : TimedEvents(clock, display), visit_(visit), person_(person), clock_(clock),
          display_(display), desk_(desk) {
        loseInputInBoxes();
    }
    /// Before a box is shown: whether the window was closed already, so that it is not.
    [[nodiscard]] bool closesBox() {
        boxOpens();
        return quitIsDue();
    }

    bool take(Message& message) override { return takeDue(message, clock_.loopMs()); }
    bool wait(Message& message) override;
    void discardInput() override;
    void captureMouse(bool captured) override;

    /// Takes over what has happened by now; to be called when the clock has moved on.
    void gather();
    /// A picture of the screen is taken when the program has come so far.
    void wantPicture();
    /// The line is run then.
    void wantLine(std::string_view line) { wanted_.push_back(TimelineRun{std::string(line)}); }

  protected:
    void meet(const TimelineEvent& event) override;
    [[nodiscard]] bool standsStill() const override { return desk_.hasLines(); }

  private:
    void record(const Message& message);
    /// Written down, and in the queue, as of now.
    template <class What>
    void put(const What& what);
    void savePicture(const std::string& name) const;

    VisitWriter& visit_;
    Events& person_;
    RecordedClock& clock_;
    HostDisplay& display_;
    HostDesk& desk_;
    Point pointer_{};
    std::vector<std::variant<TimelineScreenshot, TimelineRun>> wanted_;
    int pictures_ = 0;
};

/// Boxes that a person answers.
class RecordedDialogs final : public Dialogs {
  public:
    /// All must outlive the dialogs.
    RecordedDialogs(VisitWriter& visit, Dialogs& person, Events& machine, const VirtualClock& clock,
                    RecordedEvents& events)
        : visit_(visit), person_(person), machine_(machine), clock_(clock), events_(events) {}

    Button messageBox(std::string_view text, std::string_view caption,
                      std::uint32_t style) override;
    WarningAnswer warning(const WarningRequest& request) override;
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override;

  private:
    void record(std::string_view button, bool checked = false);
    void recordClosing();

    VisitWriter& visit_;
    Dialogs& person_;
    Events& machine_; ///< knows whether the window was closed
    const VirtualClock& clock_;
    RecordedEvents& events_;
};

class VisitRecorder {
  public:
    /// What a machine gives the program; all must outlive the recorder.
    VisitRecorder(VisitWriter& visit, Clock& clock, Events& events, Dialogs& dialogs,
                  HostDisplay& display, HostDesk& desk)
        : visit_(visit), clock_(clock), events_(visit, events, clock_, display, desk),
          dialogs_(visit, dialogs, events, clock_, events_) {}

    [[nodiscard]] Clock& clock() { return clock_; }
    [[nodiscard]] RecordedEvents& events() { return events_; }
    [[nodiscard]] Dialogs& dialogs() { return dialogs_; }

    void mainLoopBegins() { clock_.beginMainLoop(); }
    void passEnded();

  private:
    VisitWriter& visit_;
    RecordedClock clock_;
    RecordedEvents events_;
    RecordedDialogs dialogs_;
};

} // namespace platform
