// A person's mouse, keyboard and window as the program's messages. Times are those of SDL's clock
// without those in which the program was held, which is the program's clock too. What happens to
// text windows goes to them and is no message; but the program is in the foreground while any of
// its windows is.
#pragma once

#include "platform/events.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlkiosk.h"
#include "platform/sdl/sdltextwindow.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <utility>

namespace platform {

/// Shift+F2, for the console.
inline constexpr int kConsoleCommand = -1;
/// Shift+F7, for the panel of what makes a game easier to play.
inline constexpr int kComfortCommand = -2;

class SdlEvents final : public Events {
  public:
    /// Both must outlive the queue.
    SdlEvents(SdlDisplay& display, SdlTextWindows& textWindows)
        : display_(display), textWindows_(textWindows) {}

    bool take(Message& message) override;
    bool wait(Message& message) override;
    void discardInput() override;
    bool releaseWasDropped() override { return std::exchange(releaseDropped_, false); }
    void captureMouse(bool captured) override;
    [[nodiscard]] bool quitWaits() override;

    /// Told when a person wants a picture of the visit, which is recorded.
    void setPictureLink(std::function<void()> link) { pictureLink_ = std::move(link); }
    /// Is offered each message first, in their order, and tells whether it was for the console
    /// alone; kConsoleCommand is. Null: there is none, and its key is the program's.
    void setConsole(std::function<bool(const Message&)> takes) { console_ = std::move(takes); }

    /// Was a message taken since the last call?
    [[nodiscard]] bool messageWasTaken();

    /// Shift+F3 is no key of the program from now on, but calls this; with Ctrl with true.
    void setReloadKey(std::function<void(bool)> reload) { reload_ = std::move(reload); }

    /// Who judges all that happens first; must outlive the queue. Null: all of it goes on.
    void setKiosk(SdlKiosk* kiosk) { kiosk_ = kiosk; }
    /// Whether nothing may lead out of the game.
    [[nodiscard]] bool isKiosk() const { return kiosk_ != nullptr; }
    /// The game begins again: what was meant for the one that has ended is dropped.
    void beginAgain();
    /// Two presses within this time are a double click, and they may lie the farther apart the
    /// longer it is; none: as the system has it.
    static void setDoubleClick(std::optional<std::uint32_t> ms);

    /// Shift+F7 is no key of the program from now on, but calls this, in its turn among the
    /// messages.
    void setComfortKey(std::function<void()> open) { comfort_ = std::move(open); }
    /// Takes it out of its turn: whether it was pressed.
    bool takeComfortKey();
    /// The program has stood still for so long: this is no time of the messages that come.
    void wasHeld(std::uint32_t ms) { heldMs_ += ms; }
    [[nodiscard]] std::uint32_t heldMs() const { return heldMs_; }

    /// Whether the person plays with keys alone, which the program is told; off at first.
    void setPlaysByKeys(bool on);
    [[nodiscard]] bool playsByKeys() const { return playsByKeys_; }
    /// The person chooses it; `setPlaysByKeysLink` is told.
    void choosePlaysByKeys(bool on);
    /// Told when the person chooses it, or ends it (Shift+F5).
    void setPlaysByKeysLink(std::function<void(bool)> link) { keysLink_ = std::move(link); }

    /// Whether the person hears texts, which the program is told; not at first.
    void setSpeaksTexts(bool on);
    [[nodiscard]] bool speaksTexts() const { return speaksTexts_; }
    /// The person chooses it; `setSpeaksTextsLink` is told.
    void chooseSpeaksTexts(bool on);
    /// Told when the person chooses it, or ends it (Shift+F6).
    void setSpeaksTextsLink(std::function<void(bool)> link) { speechLink_ = std::move(link); }

    /// Turns what has happened by now into messages.
    void collect();
    /// The oldest mouse or key message, out of its turn; waits a moment when there is none. The
    /// others stay for the program.
    [[nodiscard]] std::optional<Message> waitForInput();
    /// Drops mouse and key messages; the capture stays.
    void dropInput();
    /// A release that was dropped, and that the program waits for, comes after all.
    void returnRelease();

  private:
    bool hasForProgram();
    void waitForEvent();
    void translate(const SDL_Event& event);
    bool translateOwnKey(const SDL_KeyboardEvent& event);
    void translateOther(const SDL_Event& event);
    void translateWindow(const SDL_WindowEvent& event);
    void translateButton(const SDL_MouseButtonEvent& event);
    void translateMotion(const SDL_MouseMotionEvent& event);
    void translateText(const SDL_TextInputEvent& event);
    void focusChanged(std::uint32_t timeMs);
    /// Its time is that of SDL.
    void push(Message message);
    void pushMouse(Message::Kind kind, Point position, std::uint32_t timeMs);

    SdlDisplay& display_;
    SdlTextWindows& textWindows_;
    SdlKiosk* kiosk_ = nullptr;
    std::function<void()> pictureLink_;
    std::function<bool(const Message&)> console_;
    std::function<void(bool)> reload_;
    std::function<void()> comfort_;
    std::uint32_t heldMs_ = 0;
    bool playsByKeys_ = false;
    std::function<void(bool)> keysLink_;
    bool speaksTexts_ = false;
    std::function<void(bool)> speechLink_;
    std::deque<Message> pending_; ///< translated, not yet taken
    bool terminated_ = false;     ///< the host asked for the end, and the program was told
    bool captured_ = false;
    bool buttonDown_ = false; ///< as far as the program knows
    bool releaseDropped_ = false;
    bool inForeground_ = true;
    bool messageWasTaken_ = false;
};

} // namespace platform
