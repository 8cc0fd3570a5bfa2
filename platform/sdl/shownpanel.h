// A panel that waits for an answer covers the screen, and the pointer is seen in it.
#pragma once

#include "platform/host/screen/screenpanel.h"
#include "platform/sdl/sdldisplay.h"

namespace platform {

class ShownPanel {
  public:
    /// Both must outlive it.
    ShownPanel(SdlDisplay& display, const ScreenPanel& panel) : display_(display) {
        display_.pointer().cover();
        display_.lay(SdlDisplay::Layer::Box, &panel);
        SDL_FlashWindow(display_.window(), SDL_FLASH_UNTIL_FOCUSED);
    }
    ~ShownPanel() {
        display_.lay(SdlDisplay::Layer::Box, nullptr);
        display_.pointer().uncover();
    }
    ShownPanel& operator=(ShownPanel&&) = delete;

  private:
    SdlDisplay& display_;
};

} // namespace platform
