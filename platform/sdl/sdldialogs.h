// Boxes of the desktop. SDL's message box has no check box, so that of a warning is a third button,
// "[ ] label" or "[x] label", which toggles the mark and shows the box again. An end
// request (SIGTERM) that comes while a box is open becomes a quit message once it is answered.
#pragma once

#include "platform/dialogs.h"
#include "platform/host/boxbuttons.h"
#include "platform/host/hostfiles.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace platform {

class SdlDialogs final : public Dialogs {
  public:
    /// All that is referred to must outlive the dialogs. `labels` stand on the buttons, and above
    /// boxes whose caption is among the words.
    SdlDialogs(SdlDisplay& display, SdlEvents& events, HostFiles& files, ButtonLabels labels)
        : display_(display), events_(events), files_(files), labels_(std::move(labels)) {}

    Button messageBox(std::string_view text, std::string_view caption,
                      std::uint32_t style) override;
    WarningAnswer warning(const WarningRequest& request) override;
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override;

  private:
    struct Box {
        SDL_MessageBoxFlags flags;
        std::string_view caption;
        std::string_view text;
        std::vector<std::string> buttons; ///< words from left to right, the first is the default
        int closing;                      ///< index of the button that closing the box means
    };

    /// Index of the button pressed. What happened to the window meanwhile is no input.
    int show(const Box& box);

    SdlDisplay& display_;
    SdlEvents& events_;
    HostFiles& files_;
    ButtonLabels labels_;
};

} // namespace platform
