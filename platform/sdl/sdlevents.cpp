#include "platform/sdl/sdlevents.h"

#include "platform/host/machine/hostmachine.h"
#include "platform/sdl/sdlkeys.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform {

namespace {

constexpr int kPatienceMs = 200; ///< of a wait for events

// What the system's double clicks are where it does not tell, in milliseconds and pixels.
constexpr std::uint32_t kUsualDoubleClickMs = 500;
constexpr std::uint32_t kUsualRadius = 32;

bool isInput(const Message& message) {
    switch (message.kind) {
    case Message::Kind::MouseDown:
    case Message::Kind::MouseUp:
    case Message::Kind::MouseMove:
    case Message::Kind::DoubleClick:
    case Message::Kind::Key: return true;
    default: return false;
    }
}

bool isComfortKey(const Message& message) {
    return message.kind == Message::Kind::Command && message.command == kComfortCommand;
}

/// F11 and Alt+Enter are the window's own.
bool isFullScreenKey(const SDL_Keysym& key) {
    const bool enter = key.sym == SDLK_RETURN || key.sym == SDLK_KP_ENTER;
    return key.sym == SDLK_F11 || (enter && (key.mod & KMOD_ALT) != 0);
}

/// The window that an event belongs to; 0 for none.
std::uint32_t windowOf(const SDL_Event& event) {
    switch (event.type) {
    case SDL_WINDOWEVENT: return event.window.windowID;
    case SDL_KEYDOWN:
    case SDL_KEYUP: return event.key.windowID;
    case SDL_TEXTINPUT: return event.text.windowID;
    case SDL_MOUSEMOTION: return event.motion.windowID;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: return event.button.windowID;
    default: return 0;
    }
}

} // namespace

bool SdlEvents::take(Message& message) {
    SDL_Event event;
    while (!hasForProgram() && SDL_PollEvent(&event) != 0) translate(event);
    if (terminationRequested() && !std::exchange(terminated_, true))
        push({.kind = Message::Kind::Quit, .timeMs = SDL_GetTicks()});
    if (pending_.empty()) return false;
    message = pending_.front();
    pending_.pop_front();
    messageWasTaken_ = true;
    buttonDown_ = message.isPress() || (buttonDown_ && message.kind != Message::Kind::MouseUp);
    return true;
}

/// Whether any message is left when those next in turn that are the console's, or the key of the
/// panel, are with whom they are for.
bool SdlEvents::hasForProgram() {
    while (!pending_.empty()) {
        if (isComfortKey(pending_.front())) {
            pending_.pop_front();
            comfort_();
        } else if (console_ && console_(pending_.front())) {
            pending_.pop_front();
        } else {
            return true;
        }
    }
    return false;
}

bool SdlEvents::takeComfortKey() { return std::erase_if(pending_, isComfortKey) > 0; }

void SdlEvents::push(Message message) {
    message.timeMs -= heldMs_;
    pending_.push_back(message);
}

/// A signal from the host wakes nobody.
void SdlEvents::waitForEvent() {
    SDL_WaitEventTimeout(nullptr, display_.isBehind() ? int{SdlDisplay::kBehindMs} : kPatienceMs);
}

bool SdlEvents::wait(Message& message) {
    while (!take(message)) {
        display_.flush();
        waitForEvent();
    }
    return true;
}

void SdlEvents::setPlaysByKeys(bool on) {
    if (on == playsByKeys_) return;
    playsByKeys_ = on;
    push({.kind = on ? Message::Kind::KeysOn : Message::Kind::KeysOff, .timeMs = SDL_GetTicks()});
}

void SdlEvents::choosePlaysByKeys(bool on) {
    setPlaysByKeys(on);
    if (keysLink_) keysLink_(on);
}

void SdlEvents::beginAgain() {
    collect();
    discardInput();
    pending_.clear();
    buttonDown_ = releaseDropped_ = false;
    if (std::exchange(playsByKeys_, false)) setPlaysByKeys(true);
    if (std::exchange(speaksTexts_, false)) setSpeaksTexts(true);
}

void SdlEvents::setSpeaksTexts(bool on) {
    if (on == speaksTexts_) return;
    speaksTexts_ = on;
    push({.kind = on ? Message::Kind::SpeechOn : Message::Kind::SpeechOff,
          .timeMs = SDL_GetTicks()});
}

void SdlEvents::chooseSpeaksTexts(bool on) {
    setSpeaksTexts(on);
    if (speechLink_) speechLink_(on);
}

void SdlEvents::setDoubleClick(std::optional<std::uint32_t> ms) {
    const std::uint32_t radius = std::max(kUsualRadius, ms.value_or(kUsualDoubleClickMs) *
                                                            kUsualRadius / kUsualDoubleClickMs);
    SDL_SetHint(SDL_HINT_MOUSE_DOUBLE_CLICK_TIME, ms ? std::to_string(*ms).c_str() : nullptr);
    SDL_SetHint(SDL_HINT_MOUSE_DOUBLE_CLICK_RADIUS, std::to_string(radius).c_str());
}

void SdlEvents::collect() {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) translate(event);
}

std::optional<Message> SdlEvents::waitForInput() {
    collect();
    const auto input = std::ranges::find_if(pending_, isInput);
    if (input == pending_.end()) {
        if (!quitWaits()) waitForEvent();
        return std::nullopt;
    }
    const Message oldest = *input;
    pending_.erase(input);
    return oldest;
}

bool SdlEvents::quitWaits() {
    return terminationRequested() ||
           std::ranges::find(pending_, Message::Kind::Quit, &Message::kind) != pending_.end();
}

/// What is typed into the console is not the program's.
void SdlEvents::discardInput() {
    if (console_) {
        collect();
        std::erase_if(pending_, console_);
    }
    dropInput();
    captureMouse(false);
}

void SdlEvents::dropInput() {
    SDL_PumpEvents();
    SDL_FlushEvents(SDL_KEYDOWN, SDL_TEXTINPUT);
    SDL_FlushEvents(SDL_MOUSEMOTION, SDL_MOUSEWHEEL);
    std::erase_if(pending_, isInput);
    if (buttonDown_ && (SDL_GetMouseState(nullptr, nullptr) & SDL_BUTTON_LMASK) == 0) {
        buttonDown_ = false;
        releaseDropped_ = true;
    }
}

void SdlEvents::returnRelease() {
    if (!releaseWasDropped()) return;
    int x = 0;
    int y = 0;
    SDL_GetMouseState(&x, &y);
    pushMouse(Message::Kind::MouseUp, display_.screenPoint({x, y}), SDL_GetTicks());
}

void SdlEvents::captureMouse(bool captured) {
    captured_ = captured;
    SDL_CaptureMouse(captured ? SDL_TRUE : SDL_FALSE);
}

bool SdlEvents::messageWasTaken() { return std::exchange(messageWasTaken_, false); }

void SdlEvents::translate(const SDL_Event& event) {
    const std::uint32_t timeMs = event.common.timestamp;
    const auto verdict = kiosk_ ? kiosk_->judge(event) : SdlKiosk::Verdict::GoesOn;
    if (verdict == SdlKiosk::Verdict::Leave) push({.kind = Message::Kind::Quit, .timeMs = timeMs});
    if (verdict != SdlKiosk::Verdict::GoesOn) return;
    const std::uint32_t window = windowOf(event);
    if (window != 0 && window != SDL_GetWindowID(display_.window())) {
        translateOther(event);
        return;
    }
    switch (event.type) {
    case SDL_QUIT: push({.kind = Message::Kind::Quit, .timeMs = timeMs}); break;
    case SDL_WINDOWEVENT: translateWindow(event.window); break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: translateButton(event.button); break;
    case SDL_MOUSEMOTION: translateMotion(event.motion); break;
    case SDL_TEXTINPUT: translateText(event.text); break;
    case SDL_KEYDOWN:
        if (translateOwnKey(event.key)) break;
        if (const auto press = keyPressOf(event.key.keysym))
            push({.kind = Message::Kind::Key, .timeMs = timeMs, .key = *press});
        break;
    case SDL_RENDER_TARGETS_RESET: display_.textureLost(false); break;
    case SDL_RENDER_DEVICE_RESET: display_.textureLost(true); break;
    default: break;
    }
}

/// Keys that are the window's, or commands: windows here have no menu of their own.
bool SdlEvents::translateOwnKey(const SDL_KeyboardEvent& event) {
    const bool isFirst = event.repeat == 0;
    const auto command = [&](int number) {
        push({.kind = Message::Kind::Command, .timeMs = event.timestamp, .command = number});
        return true;
    };
    if (isFullScreenKey(event.keysym)) {
        if (isFirst) display_.toggleFullScreen();
        return true;
    }
    if ((event.keysym.mod & KMOD_SHIFT) == 0) return false;
    switch (event.keysym.sym) {
    case SDLK_F1: return command(kAboutCommand);
    case SDLK_F2: return console_ && (!isFirst || command(kConsoleCommand));
    case SDLK_F3:
        if (reload_ && isFirst) reload_((event.keysym.mod & KMOD_CTRL) != 0);
        return reload_ != nullptr;
    case SDLK_F4:
        if (pictureLink_ && isFirst) pictureLink_();
        return pictureLink_ != nullptr;
    case SDLK_F5:
        if (isFirst) choosePlaysByKeys(!playsByKeys_);
        return true;
    case SDLK_F6:
        if (isFirst) chooseSpeaksTexts(!speaksTexts_);
        return true;
    case SDLK_F7: return comfort_ && (!isFirst || command(kComfortCommand));
    default: return false;
    }
}

/// The window may be gone by now.
void SdlEvents::translateOther(const SDL_Event& event) {
    if (event.type != SDL_WINDOWEVENT) return;
    const std::uint8_t what = event.window.event;
    if (what == SDL_WINDOWEVENT_FOCUS_LOST || what == SDL_WINDOWEVENT_FOCUS_GAINED) {
        focusChanged(event.common.timestamp);
        return;
    }
    textWindows_.handle(event.window);
}

void SdlEvents::translateWindow(const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_EXPOSED:
        display_.windowDamaged();
        push({.kind = Message::Kind::Expose, .timeMs = event.timestamp});
        break;
    case SDL_WINDOWEVENT_SIZE_CHANGED: display_.windowDamaged(); break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
    case SDL_WINDOWEVENT_FOCUS_GAINED: focusChanged(event.timestamp); break;
    case SDL_WINDOWEVENT_CLOSE:
        SDL_FlushEvent(SDL_QUIT); // comes as well, but only when there is no other window
        push({.kind = Message::Kind::Quit, .timeMs = event.timestamp});
        break;
    default: break;
    }
}

/// Asks how things stand by now, so that focus that went to a box of our own and came back is no
/// news for the program.
void SdlEvents::focusChanged(std::uint32_t timeMs) {
    SDL_PumpEvents();
    const bool focused = SDL_GetKeyboardFocus() != nullptr;
    if (focused == inForeground_) return;
    inForeground_ = focused;
    display_.setInForeground(focused);
    push({.kind = focused ? Message::Kind::Foreground : Message::Kind::Background,
          .timeMs = timeMs});
}

void SdlEvents::translateButton(const SDL_MouseButtonEvent& event) {
    if (event.button != SDL_BUTTON_LEFT) return;
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    // Of several quick clicks every second one completes a double click.
    const bool second = down && event.clicks % 2 == 0 && event.clicks > 0;
    const auto kind = second ? Message::Kind::DoubleClick
                      : down ? Message::Kind::MouseDown
                             : Message::Kind::MouseUp;
    pushMouse(kind, {event.x, event.y}, event.timestamp);
}

void SdlEvents::translateMotion(const SDL_MouseMotionEvent& event) {
    pushMouse(Message::Kind::MouseMove, {event.x, event.y}, event.timestamp);
}

void SdlEvents::translateText(const SDL_TextInputEvent& event) {
    for (const KeyPress& press : keyPressesOf(event.text)) {
        push({.kind = Message::Kind::Key, .timeMs = event.timestamp, .key = press});
    }
}

void SdlEvents::pushMouse(Message::Kind kind, Point position, std::uint32_t timeMs) {
    if (!captured_) {
        const ScreenMode mode = display_.mode();
        position = nearestInside(position, {0, 0, mode.width, mode.height});
    }
    push({.kind = kind, .timeMs = timeMs, .position = position});
}

} // namespace platform
