#include "platform/sdl/sdldesk.h"

#include "formats/base/latin1.h"

#include <SDL.h>
#include <cstdio>

namespace platform {

namespace {

constexpr std::uint32_t kLookMs = 100; ///< from one look at the game to the next

} // namespace

SdlDesk::SdlDesk(SdlDisplay& display, SdlEvents& events, const SdlOptions& options)
    : HostDesk(options.profile), display_(display), events_(events) {
    if (!options.author) return;
    console_.emplace(display.shown().bounds());
    events.setConsole([this](const Message& message) { return takeInput(message); });
    if (!options.workshop) return;
    workshop_.emplace(*options.workshop, [this](const std::string& text, bool failed) {
        tell(formats::latin1FromUtf8(text).value_or(text), failed);
    });
    events.setReloadKey([this](bool keeps) { workshop_->askToLoad(keeps); });
}

SdlDesk::~SdlDesk() {
    events_.setConsole(nullptr);
    events_.setReloadKey(nullptr);
    display_.lay(SdlDisplay::Layer::Console, nullptr);
}

void SdlDesk::write(std::string_view text, ConsolePanel::Told kind) {
    if (!console_) return;
    std::fprintf(stderr, "%s\n", formats::utf8FromLatin1(text).c_str());
    console_->tell(kind, text);
}

void SdlDesk::warn(std::string_view text) { write(text, ConsolePanel::Told::Warning); }

void SdlDesk::tell(std::string_view text, bool failed) {
    write(text, failed ? ConsolePanel::Told::Warning : ConsolePanel::Told::Result);
    if (failed && console_) console_->openMessages();
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
    if (workshop_) workshop_->work();
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
