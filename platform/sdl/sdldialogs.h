// Boxes in the window, see boxpanel.h; files are chosen in a window of the desktop's. Who asks for
// the end of the program, by the window's close button or a signal, closes a box, and no further
// one is shown: it is answered as if it were closed. The quit message stays for the program.
#pragma once

#include "platform/dialogs.h"
#include "platform/host/files/hostfiles.h"
#include "platform/host/screen/boxbuttons.h"
#include "platform/host/screen/boxpanel.h"
#include "platform/host/speech/spokenboxes.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"

#include <string>
#include <utility>

namespace platform {

class SdlDialogs final : public Dialogs {
  public:
    /// All that is referred to must outlive the dialogs. `labels` stand on the buttons, and above
    /// boxes whose caption is among the words.
    SdlDialogs(SdlDisplay& display, SdlEvents& events, HostFiles& files, SpokenBoxes& spoken,
               ButtonLabels labels)
        : display_(display), events_(events), files_(files), spoken_(spoken),
          labels_(std::move(labels)) {}

    Button messageBox(std::string_view text, std::string_view caption,
                      std::uint32_t style) override;
    WarningAnswer warning(const WarningRequest& request) override;
    std::string openFile(std::string_view title, std::string_view pattern,
                         std::size_t limit) override;

  private:
    struct Answer {
        int button; ///< index
        bool checked;
    };

    /// With words in place of labels on the buttons, and of the caption.
    Answer show(BoxContents contents);
    void waitForAnswer(BoxPanel& panel);

    SdlDisplay& display_;
    SdlEvents& events_;
    HostFiles& files_;
    SpokenBoxes& spoken_;
    ButtonLabels labels_;
};

} // namespace platform
