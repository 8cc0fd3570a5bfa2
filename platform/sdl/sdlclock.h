// The clock of a machine with a person in front of it. It can stand still while the program is
// held.
#pragma once

#include "platform/clock.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"

#include <SDL.h>
#include <ctime>

namespace platform {

class SdlClock final : public Clock {
  public:
    /// Both must outlive the clock, which is that of the events, too.
    SdlClock(SdlDisplay& display, const SdlEvents& events) : display_(display), events_(events) {}

    [[nodiscard]] std::uint32_t milliseconds() const override {
        return SDL_GetTicks() - events_.heldMs();
    }
    [[nodiscard]] std::int64_t calendarSeconds() const override { return std::time(nullptr); }
    /// What was presented before is seen meanwhile.
    void sleep(std::uint32_t ms) override {
        display_.flush();
        SDL_Delay(ms);
    }

  private:
    SdlDisplay& display_;
    const SdlEvents& events_;
};

} // namespace platform
