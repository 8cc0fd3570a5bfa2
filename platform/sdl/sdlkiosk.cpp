#include "platform/sdl/sdlkiosk.h"

#include "platform/sdl/sdlkeys.h"

namespace platform {

namespace {

constexpr std::uint32_t kSoonestEndMs = 10'000; ///< of a game that nobody has touched
constexpr std::uint32_t kAwayMs = 300'000;      ///< without input, and nobody is there

constexpr int kDesktopModifiers = KMOD_LALT | KMOD_GUI; ///< the right Alt key writes letters

/// The keys of the window itself and of authors, and whatever begins with Alt or the desktop's own
/// key. Ctrl+Q is the game's: when it ends by that, it begins again.
bool leadsOut(const SDL_Keysym& key) {
    if ((key.mod & kDesktopModifiers) != 0 || key.sym == SDLK_LGUI || key.sym == SDLK_RGUI)
        return true;
    if (key.sym == SDLK_F11) return true;
    if ((key.mod & KMOD_ALT) != 0 && (key.sym == SDLK_RETURN || key.sym == SDLK_KP_ENTER))
        return true;
    return (key.mod & KMOD_SHIFT) != 0 && key.sym >= SDLK_F1 && key.sym <= SDLK_F4;
}

} // namespace

void SdlKiosk::prepare() {
    SDL_SetHint(SDL_HINT_GRAB_KEYBOARD, "1");
    SDL_SetHint(SDL_HINT_ALLOW_ALT_TAB_WHILE_GRABBED, "0");
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
}

SdlKiosk::SdlKiosk(SDL_Window* window, const LeavingKey& leaving)
    : window_(window), leaving_(leaving) {
    SDL_SetWindowKeyboardGrab(window, SDL_TRUE);
    SDL_SetWindowMouseGrab(window, SDL_TRUE); // there may be other monitors
}

SdlKiosk::Verdict SdlKiosk::judge(const SDL_Event& event) {
    switch (event.type) {
    case SDL_KEYDOWN: return judgeKey(event.key);
    case SDL_MOUSEBUTTONDOWN:
        noteInput();
        isPlayed_ = true;
        return Verdict::GoesOn;
    case SDL_MOUSEMOTION: noteInput(); return Verdict::GoesOn;
    case SDL_TEXTINPUT:
        return (SDL_GetModState() & kDesktopModifiers) != 0 ? Verdict::Nothing : Verdict::GoesOn;
    case SDL_QUIT: return Verdict::Nothing;
    case SDL_WINDOWEVENT: return judgeWindow(event.window);
    default: return Verdict::GoesOn;
    }
}

SdlKiosk::Verdict SdlKiosk::judgeKey(const SDL_KeyboardEvent& event) {
    noteInput();
    if (isLeavingKey(event.keysym)) {
        left_ = true;
        return Verdict::Leave;
    }
    if (leadsOut(event.keysym)) return Verdict::Nothing;
    isPlayed_ = true;
    return Verdict::GoesOn;
}

/// What hides the window or puts it behind others is taken back.
SdlKiosk::Verdict SdlKiosk::judgeWindow(const SDL_WindowEvent& event) {
    if (event.windowID != SDL_GetWindowID(window_)) return Verdict::GoesOn;
    switch (event.event) {
    case SDL_WINDOWEVENT_CLOSE: return Verdict::Nothing;
    case SDL_WINDOWEVENT_MINIMIZED: SDL_RestoreWindow(window_); [[fallthrough]];
    case SDL_WINDOWEVENT_FOCUS_LOST: SDL_RaiseWindow(window_); return Verdict::GoesOn;
    default: return Verdict::GoesOn;
    }
}

bool SdlKiosk::isLeavingKey(const SDL_Keysym& key) const {
    const LeavingKey pressed{.code = keyOf(key.sym),
                             .control = (key.mod & KMOD_CTRL) != 0,
                             .alt = (key.mod & KMOD_ALT) != 0,
                             .shift = (key.mod & KMOD_SHIFT) != 0};
    return pressed.code != 0 && pressed == leaving_;
}

void SdlKiosk::noteInput() {
    lastInputMs_ = SDL_GetTicks();
    if (SDL_IsScreenSaverEnabled() == SDL_TRUE) SDL_DisableScreenSaver();
}

void SdlKiosk::gameBegins() {
    gameRuns_ = true;
    isPlayed_ = false;
    begunMs_ = SDL_GetTicks();
}

bool SdlKiosk::gameBeginsAgain() {
    if (!std::exchange(gameRuns_, false) || left_) return false;
    return isPlayed_ || SDL_GetTicks() - begunMs_ >= kSoonestEndMs;
}

void SdlKiosk::passEnded() {
    const bool isAway = SDL_GetTicks() - lastInputMs_ >= kAwayMs;
    if (isAway && SDL_IsScreenSaverEnabled() == SDL_FALSE) SDL_EnableScreenSaver();
}

} // namespace platform
