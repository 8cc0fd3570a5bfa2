#include "platform/sdl/sdldesk.h"

#include "formats/base/latin1.h"

#include <SDL.h>
#include <cstdio>

namespace platform {

namespace {

constexpr std::uint32_t kLookMs = 100; ///< from one look at the game to the next

} // namespace

SdlDesk::SdlDesk(SdlDisplay& display, SdlEvents& events, bool isSeated, const std::string& profile)
    : HostDesk(profile), display_(display), events_(events) {
    if (!isSeated) return;
    console_.emplace(display.shown().bounds());
    events.setConsole([this](const Message& message) { return takeInput(message); });
}

SdlDesk::~SdlDesk() {
    events_.setConsole(nullptr);
    display_.lay(SdlDisplay::Layer::Console, nullptr);
}

void SdlDesk::warn(std::string_view text) {
    if (!console_) return;
    std::fprintf(stderr, "%s\n", formats::utf8FromLatin1(text).c_str());
    console_->tell(ConsolePanel::Told::Warning, text);
}

void SdlDesk::say(std::string_view line) {
    if (console_) console_->tell(ConsolePanel::Told::Said, line);
}

void SdlDesk::lineRuns(std::string_view line) {
    if (console_) console_->tell(ConsolePanel::Told::Run, "> " + std::string(line));
}

void SdlDesk::lineHasRun(std::string_view, std::string_view result) {
    if (!console_) return;
    console_->tell(ConsolePanel::Told::Result, result);
    looksAtOnce_ = true;
}

bool SdlDesk::takeInput(const Message& message) {
    const bool isKey = message.kind == Message::Kind::Command && message.command == kConsoleCommand;
    if (isKey)
        console_->toggle();
    else if (!console_->take(message))
        return false;
    if (const auto line = console_->takeLine()) lineLink_(*line);
    looksAtOnce_ = true;
    return true;
}

void SdlDesk::passEnded() {
    runLines();
    if (!console_) return;
    console_->fit(display_.shown().bounds());
    const std::uint32_t now = SDL_GetTicks();
    if (console_->isOpen() && (looksAtOnce_ || now - lookedMs_ >= kLookMs)) {
        console_->look(game());
        lookedMs_ = now;
        looksAtOnce_ = false;
    }
    if (console_->draw())
        display_.lay(SdlDisplay::Layer::Console, console_->isOpen() ? &*console_ : nullptr);
}

} // namespace platform
