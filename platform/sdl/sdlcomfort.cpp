#include "platform/sdl/sdlcomfort.h"

#include "platform/sdl/shownpanel.h"

namespace platform {

namespace {

// Words for the title and the button.
constexpr std::string_view kComfortTitle = "How do you want to play?";
constexpr std::string_view kComfortButton = "Back to the game";

/// The program stands still.
class HeldProgram {
  public:
    HeldProgram(SdlEvents& events, SdlSound& sound) : events_(events), sound_(sound) {
        sound_.hold(true);
    }
    ~HeldProgram() {
        sound_.hold(false);
        events_.wasHeld(SDL_GetTicks() - begunMs_);
    }
    HeldProgram& operator=(HeldProgram&&) = delete;

  private:
    SdlEvents& events_;
    SdlSound& sound_;
    std::uint32_t begunMs_ = SDL_GetTicks();
};

} // namespace

SdlComfort::SdlComfort(SdlDisplay& display, SdlEvents& events, SdlSound& sound, SpokenBoxes& spoken,
                       ButtonLabels labels)
    : display_(display), events_(events), sound_(sound), spoken_(spoken),
      labels_(std::move(labels)) {
    events_.setComfortKey([this] { open(); });
}

void SdlComfort::add(std::string_view label, const std::vector<std::string_view>& choices,
                     std::function<std::size_t()> chosen, std::function<void(std::size_t)> choose) {
    ComfortSetting setting{labelOf(labels_, label), {}, std::move(chosen), std::move(choose)};
    for (const std::string_view choice : choices)
        setting.choices.push_back(labelOf(labels_, choice));
    settings_.push_back(std::move(setting));
}

void SdlComfort::add(std::string_view label, const std::function<bool()>& isOn,
                     const std::function<void(bool)>& choose) {
    add(
        label, {buttonText(Button::No), buttonText(Button::Yes)},
        [isOn] { return std::size_t{isOn()}; }, [choose](std::size_t k) { choose(k == 1); });
}

/// What happens in the panel is not meant for the program, but for a button that it knows to be
/// down.
void SdlComfort::open() {
    const HeldProgram held(events_, sound_);
    ComfortPanel panel(labelOf(labels_, kComfortTitle), settings_, labelOf(labels_, kComfortButton),
                       display_.shown().bounds());
    speak(panel, true);
    waitForEnd(panel);
    if (events_.speaksTexts()) spoken_.boxCloses();
    events_.dropInput();
    events_.returnRelease();
}

void SdlComfort::waitForEnd(ComfortPanel& panel) {
    const ShownPanel shown(display_, panel);
    std::string spoken = panel.focusText();
    while (!panel.isClosed()) {
        display_.flush();
        if (const auto input = events_.waitForInput()) panel.handle(*input);
        if (events_.takeComfortKey() || events_.quitWaits()) panel.close();
        panel.draw(); // keys may have changed it, too
        display_.lay(SdlDisplay::Layer::Box, &panel);
        if (spoken == panel.focusText()) continue;
        spoken = panel.focusText();
        speak(panel, false);
    }
}

void SdlComfort::speak(const ComfortPanel& panel, bool opens) {
    if (!events_.speaksTexts()) return;
    const std::string focus = panel.focusText();
    if (opens) {
        const std::string_view next[] = {focus};
        spoken_.boxOpens(panel.title(), next);
    } else {
        spoken_.movedTo(focus);
    }
}

} // namespace platform
