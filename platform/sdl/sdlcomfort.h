// Opens the panel for what makes a game easier to play, see comfortpanel.h, when the person wants
// it (Shift+F7), and holds the program meanwhile: its clock and its sounds stand still, and input
// is the panel's. The same key closes it, and so does who asks for the end of the program.
#pragma once

#include "platform/host/screen/boxbuttons.h"
#include "platform/host/screen/comfortpanel.h"
#include "platform/host/speech/spokenboxes.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"
#include "platform/sdl/sdlsound.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

class SdlComfort {
  public:
    /// All that is referred to must outlive it. `labels` stand in the panel in place of words.
    SdlComfort(SdlDisplay& display, SdlEvents& events, SdlSound& sound, SpokenBoxes& spoken,
               ButtonLabels labels);
    ~SdlComfort() { events_.setComfortKey(nullptr); }
    SdlComfort& operator=(SdlComfort&&) = delete;

    /// Adds a row, with words for its label and for what can be chosen in it.
    void add(std::string_view label, const std::vector<std::string_view>& choices,
             std::function<std::size_t()> chosen, std::function<void(std::size_t)> choose);
    /// A row that is on or off.
    void add(std::string_view label, const std::function<bool()>& isOn,
             const std::function<void(bool)>& choose);

  private:
    void open();
    void waitForEnd(ComfortPanel& panel);
    void speak(const ComfortPanel& panel, bool opens);

    SdlDisplay& display_;
    SdlEvents& events_;
    SdlSound& sound_;
    SpokenBoxes& spoken_;
    ButtonLabels labels_;
    std::vector<ComfortSetting> settings_;
};

} // namespace platform
