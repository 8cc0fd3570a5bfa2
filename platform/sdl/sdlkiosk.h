// What keeps a child in the game: of a window's events those that would lead out of it go no
// further, the window stays in front, and the keys that belong to the desktop come to it, as far as
// the window system gives them away. One key leaves; the machine's administrator ends the process.
#pragma once

#include "platform/host/visit/leavingkey.h"

#include <SDL.h>
#include <cstdint>
#include <utility>

namespace platform {

class SdlKiosk {
  public:
    /// What a window system must know before it is started.
    static void prepare();

    /// The window must outlive the kiosk.
    SdlKiosk(SDL_Window* window, const LeavingKey& leaving);

    /// What an event of any window is here. Leave: somebody who may has asked for the end.
    enum class Verdict : std::uint8_t { GoesOn, Nothing, Leave };
    [[nodiscard]] Verdict judge(const SDL_Event& event);

    /// The main loop of a game begins.
    void gameBegins();
    /// Whether the game, which has ended by itself, is to begin again. One that ended before
    /// anybody could do anything would do so for ever; one whose main loop did not begin, too.
    [[nodiscard]] bool gameBeginsAgain();

    /// Leaves the screen alone when nobody has played for a while.
    void passEnded();

  private:
    [[nodiscard]] bool isLeavingKey(const SDL_Keysym& key) const;
    [[nodiscard]] Verdict judgeKey(const SDL_KeyboardEvent& event);
    [[nodiscard]] Verdict judgeWindow(const SDL_WindowEvent& event);
    void noteInput();

    SDL_Window* window_;
    LeavingKey leaving_;
    bool left_ = false;
    bool gameRuns_ = false;         ///< its main loop has begun
    bool isPlayed_ = false;         ///< somebody has pressed something in it
    std::uint32_t begunMs_ = 0;     ///< its main loop
    std::uint32_t lastInputMs_ = 0; ///< by the clock of SDL
};

} // namespace platform
