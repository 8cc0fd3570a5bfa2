// Boxes answered by the timeline. An answer whose time has come waits for the next box; without one
// the box gets its default button, and an open-file dialog is cancelled.
#pragma once

#include "platform/dialogs.h"
#include "platform/headless/headlessdesk.h"
#include "platform/headless/notices.h"
#include "platform/host/files/hostfiles.h"
#include "platform/host/speech/spokenboxes.h"
#include "platform/host/visit/timedevents.h"
#include "platform/host/visit/timeline.h"
#include "platform/host/visit/virtualclock.h"

#include <deque>
#include <iosfwd>
#include <optional>
#include <span>

namespace platform {

class HeadlessDialogs final : public Dialogs {
  public:
    /// What is referred to must outlive the dialogs.
    HeadlessDialogs(const Timeline& timeline, const VirtualClock& clock, TimedEvents& events,
                    HostFiles& files, HeadlessDesk& desk, SpokenBoxes& spoken, Notices& notices,
                    std::ostream& notes);

    Button messageBox(std::string_view text, std::string_view caption,
                      std::uint32_t style) override;
    WarningAnswer warning(const WarningRequest& request) override;
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override;

  private:
    struct Waiting {
        std::uint32_t timeMs;
        TimelineAnswer answer;
    };

    /// Of a box that opens: uses the oldest answer up, if its time has come. With it the window may
    /// be closed.
    std::optional<TimelineAnswer> nextAnswer();
    /// Index of the button that `answer` names, 0 when there is no answer or no such button;
    /// `closing` when the window is closed.
    std::size_t choose(std::string_view caption, std::span<const std::string_view> buttons,
                       std::size_t closing, const std::optional<TimelineAnswer>& answer);
    std::string chosenFile(std::string_view title, std::size_t limit);

    std::deque<Waiting> waiting_;
    const VirtualClock& clock_;
    TimedEvents& events_;
    HostFiles& files_;
    HeadlessDesk& desk_;
    SpokenBoxes& spoken_;
    Notices& notices_;
    std::ostream& notes_;
};

} // namespace platform
