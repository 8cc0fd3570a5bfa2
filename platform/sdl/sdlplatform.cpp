#include "platform/sdl/sdlplatform.h"

#include "formats/base/latin1.h"
#include "platform/host/faces/hosttypefaces.h"
#include "platform/host/files/hostfiles.h"
#include "platform/host/files/secondwall.h"
#include "platform/host/files/userfolders.h"
#include "platform/host/game/playersettings.h"
#include "platform/host/machine/hostmachine.h"
#include "platform/host/movies/hostmovie.h"
#include "platform/host/screen/png.h"
#include "platform/host/screen/pointers.h"
#include "platform/host/speech/hostspeech.h"
#include "platform/host/speech/spokenboxes.h"
#include "platform/sdl/recordedmachine.h"
#include "platform/sdl/sdlcomfort.h"
#include "platform/sdl/sdldesk.h"
#include "platform/sdl/sdldialogs.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"
#include "platform/sdl/sdlkiosk.h"
#include "platform/sdl/sdlmoviespeaker.h"
#include "platform/sdl/sdlsound.h"
#include "platform/sdl/sdltextwindow.h"
#include "platform/sdl/sdlwaveout.h"
#include "platform/sdl/sdlwindow.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr std::uint32_t kRestMs = 1;
constexpr int kMostIconSide = 1024; // pixels

// What is kept among the player's settings.
constexpr std::string_view kFullScreen = "fullscreen";
constexpr std::string_view kPlaysByKeys = "keys";
constexpr std::string_view kSpeaksTexts = "speech";
constexpr std::string_view kPointer = "pointer";
constexpr std::string_view kDoubleClick = "double-click";
constexpr std::string_view kCalm = "calm";
constexpr std::string_view kOn = "1";
constexpr std::string_view kOff = "0";

/// How far apart the presses of a double click may be, in milliseconds: as the system has it, slow,
/// and very slow.
constexpr std::optional<std::uint32_t> kDoubleClicks[] = {std::nullopt, 900, 1500};

/// SDL falls back to drivers that nobody sees anything of. They are good for who names them.
bool isSeen(const char* driver) {
    constexpr std::string_view kUnseen[] = {"offscreen", "dummy", "evdev"};
    if (std::ranges::find(kUnseen, driver) == std::end(kUnseen)) return true;
    const char* named = SDL_GetHint(SDL_HINT_VIDEODRIVER);
    return named && std::string_view(named).find(driver) != std::string_view::npos;
}

class SdlClock final : public Clock {
  public:
    /// It is that of the events, too: what the program was held for is left out.
    SdlClock(SdlDisplay& display, const SdlEvents& events) : display_(display), events_(events) {}

    [[nodiscard]] std::uint32_t milliseconds() const override {
        return SDL_GetTicks() - events_.heldMs();
    }
    [[nodiscard]] std::int64_t calendarSeconds() const override { return std::time(nullptr); }
    /// What was presented before is seen meanwhile.
    void sleep(std::uint32_t ms) override {
        display_.flush();
        for (; display_.isBehind() && ms > SdlDisplay::kBehindMs; ms -= SdlDisplay::kBehindMs) {
            SDL_Delay(SdlDisplay::kBehindMs);
            display_.flush();
        }
        SDL_Delay(ms);
    }

  private:
    SdlDisplay& display_;
    const SdlEvents& events_;
};

class SdlPlatform final : public Platform {
  public:
    SdlPlatform(std::unique_ptr<SdlSession> session, SdlWindow window, const SdlOptions& options)
        : trusted_(options.host.trusted), comfort_(options.comfort), session_(std::move(session)),
          display_(std::move(window), options.screen, options.game.title, options.author),
          events_(display_, textWindows_), clock_(display_, events_),
          desk_(display_, events_, options), files_(options.host),
          modules_(files_, options.host.components, options.resources, options.versionStrings),
          spokenBoxes_(speech_, options.buttons, options.language),
          dialogs_(display_, events_, files_, spokenBoxes_, options.buttons),
          comfortPanel_(display_, events_, sound_, spokenBoxes_, options.buttons) {
        setIcon(options.game.icon);
        events_.setPlaysByKeys(options.playsByKeys);
        if (options.kiosk) {
            kiosk_.emplace(display_.window(), *options.kiosk);
            events_.setKiosk(&*kiosk_);
            display_.setFullScreen(true);
        }
        if (options.speaksTexts) speakTexts();
        applyComfort();
        offerComfort();
        if (options.visit) {
            recorded_.emplace(*options.visit, clock_, events_, dialogs_, display_, desk_, sound_,
                              files_);
            pictures_ = nearestFolder(options.visit->folder(), ".");
        }
        if (options.workshop) packer_ = options.workshop->packer.string();
    }

    [[nodiscard]] Clock& clock() override {
        if (recorded_) return recorded_->clock();
        return clock_;
    }
    [[nodiscard]] Display& display() override { return display_; }
    [[nodiscard]] Events& events() override {
        if (recorded_) return recorded_->events();
        return events_;
    }
    [[nodiscard]] Dialogs& dialogs() override {
        if (recorded_) return recorded_->dialogs();
        return dialogs_;
    }
    [[nodiscard]] Files& files() override { return files_; }
    [[nodiscard]] Modules& modules() override { return modules_; }
    [[nodiscard]] WaveOut& waveOut() override {
        if (recorded_) return recorded_->waveOut();
        return waveOut_;
    }
    [[nodiscard]] Typefaces& typefaces() override { return typefaces_; }
    [[nodiscard]] Movies& movies() override {
        if (recorded_) return recorded_->movies();
        return movies_;
    }
    [[nodiscard]] Machine& machine() override { return machine_; }
    [[nodiscard]] Speech& speech() override { return speech_; }
    [[nodiscard]] AuthorDesk& author() override { return desk_; }

    [[nodiscard]] std::unique_ptr<TextWindow> openTextWindow(const TextWindowRequest& request,
                                                             TextWindowOwner& owner) override {
        return textWindows_.open(request, owner);
    }

    void keepSettings(std::string_view path) override {
        settings_.open(path);
        const std::string kept = settings_.value(kFullScreen);
        if (!kept.empty() && !kiosk_) display_.setFullScreen(kept == kOn);
        display_.setFullScreenLink([this](bool on) { keep(kFullScreen, "of a full screen", on); });
        applyComfort();
        if (settings_.value(kPlaysByKeys) == kOn) events_.setPlaysByKeys(true);
        events_.setPlaysByKeysLink(
            [this](bool on) { keep(kPlaysByKeys, "to play with keys", on); });
        if (settings_.value(kSpeaksTexts) == kOn) speakTexts();
        events_.setSpeaksTextsLink([this](bool on) { keep(kSpeaksTexts, "to hear texts", on); });
    }
    void complain(std::string_view text) override { say(formats::utf8FromLatin1(text)); }
    void tellPlayer(std::string_view text, std::string_view caption) override {
        dialogs_.messageBox(text, caption, boxstyle::kOk | boxstyle::kIconStop);
    }
    [[nodiscard]] std::unique_ptr<File> openLog(std::string_view name, OpenMode mode) override {
        return openUserLog(std::string(name), mode);
    }

    void closeIn() override {
        if (trusted_ || std::exchange(isClosedIn_, true)) return;
        std::vector<std::string> writable = files_.writableFolders();
        writable.push_back(userStateFolder());
        if (!pictures_.empty()) writable.push_back(pictures_);
        raiseSecondWall(writable, {packer_});
    }
    void mainLoopBegins() override {
        display_.showWindow();
        if (kiosk_) kiosk_->gameBegins();
        if (recorded_) recorded_->mainLoopBegins();
    }
    void passEnded() override {
        desk_.passEnded();
        if (kiosk_) kiosk_->passEnded();
        display_.flush();
        if (!events_.messageWasTaken()) SDL_Delay(kRestMs);
        if (recorded_) recorded_->passEnded();
    }
    [[nodiscard]] bool beginsAgain() override {
        if (!kiosk_) return false;
        events_.beginAgain();
        return kiosk_->gameBeginsAgain() && !terminationRequested();
    }
    /// Nothing is recorded here; but SDL would wait for a sound device that hangs.
    void programEnds(int exitCode) override {
        if (sound_.hangs()) terminate(exitCode);
    }
    [[noreturn]] void terminate(int exitCode) override {
        std::cout.flush();
        std::fflush(stdout); // not all: a device that hangs may hold a stream of its own
        std::_Exit(exitCode);
    }

  private:
    static void say(const std::string& utf8) { std::fprintf(stderr, "zorbet: %s\n", utf8.c_str()); }

    /// Boxes of the start are spoken before the program is told.
    void speakTexts() {
        speech_.setOn(true);
        events_.setSpeaksTexts(true);
    }

    void keep(std::string_view setting, const char* choice, bool on) {
        keep(setting, choice, on ? kOn : kOff);
    }
    void keep(std::string_view setting, const char* choice, std::string_view value) {
        if (!settings_.set(setting, value))
            complain(std::string("The choice ") + choice +
                     " could not be kept in the game's data folder; see whether it can be written "
                     "to");
    }

    /// A number among the player's settings; none when it is not there or out of the range.
    [[nodiscard]] std::optional<std::uint32_t> number(std::string_view setting, std::uint32_t least,
                                                      std::uint32_t most) const {
        const std::string text = settings_.value(setting);
        std::uint32_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool isNumber = error == std::errc() && end == text.data() + text.size();
        return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
    }

    [[nodiscard]] std::uint32_t pointerScale() const {
        return comfort_.pointer.value_or(number(kPointer, 1, kMostPointerScale).value_or(1));
    }
    [[nodiscard]] bool isCalm() const { return comfort_.calm || settings_.value(kCalm) == kOn; }
    [[nodiscard]] std::optional<std::uint32_t> doubleClickMs() const {
        if (comfort_.doubleClickMs) return comfort_.doubleClickMs;
        return number(kDoubleClick, kLeastDoubleClickMs, kMostDoubleClickMs);
    }

    void applyComfort() {
        display_.pointer().setScale(static_cast<int>(pointerScale()));
        SdlEvents::setDoubleClick(doubleClickMs());
        display_.setCalm(isCalm());
    }

    /// The rows of the panel. What is chosen there goes before what was told at the start.
    void offerComfort() {
        comfortPanel_.add(
            "Play with keys alone", [this] { return events_.playsByKeys(); },
            [this](bool on) { events_.choosePlaysByKeys(on); });
        comfortPanel_.add(
            "Hear the texts", [this] { return events_.speaksTexts(); },
            [this](bool on) {
                if (on) speech_.setOn(true); // the program is told later, and ends it itself
                events_.chooseSpeaksTexts(on);
            });
        comfortPanel_.add(
            "Mouse pointer", {"1\xD7", "2\xD7", "3\xD7"},
            [this] { return std::size_t{pointerScale() - 1}; },
            [this](std::size_t index) { choosePointer(static_cast<std::uint32_t>(index) + 1); });
        comfortPanel_.add(
            "Double click", {"Normal", "Slow", "Very slow"}, [this] { return doubleClickChoice(); },
            [this](std::size_t index) { chooseDoubleClick(kDoubleClicks[index]); });
        comfortPanel_.add(
            "Less flashing", [this] { return isCalm(); }, [this](bool on) { chooseCalm(on); });
        if (!kiosk_)
            comfortPanel_.add(
                "Full screen", [this] { return display_.isFullScreen(); },
                [this](bool on) {
                    if (on != display_.isFullScreen()) display_.toggleFullScreen();
                });
    }

    void choosePointer(std::uint32_t scale) {
        comfort_.pointer.reset();
        keep(kPointer, "of a pointer", std::to_string(scale));
        if (pointerScale() != scale) comfort_.pointer = scale;
        applyComfort();
    }

    void chooseCalm(bool on) {
        comfort_.calm = false;
        keep(kCalm, "to see no flashing", on);
        comfort_.calm = on; // also where nothing can be kept
        applyComfort();
    }

    /// The slowest that is no slower than what is in effect.
    [[nodiscard]] std::size_t doubleClickChoice() const {
        const auto above = std::ranges::upper_bound(kDoubleClicks, doubleClickMs());
        return static_cast<std::size_t>(above - std::begin(kDoubleClicks)) - 1;
    }
    void chooseDoubleClick(std::optional<std::uint32_t> ms) {
        comfort_.doubleClickMs.reset();
        keep(kDoubleClick, "of a double click", ms ? std::to_string(*ms) : std::string());
        if (doubleClickMs() != ms) comfort_.doubleClickMs = ms;
        applyComfort();
    }

    /// The game's own, else the program's.
    void setIcon(const std::string& gameIcon) {
        const auto picture = gameIcon.empty() ? std::nullopt : readPng(gameIcon, kMostIconSide);
        if (picture) return setSdlIcon(display_.window(), *picture);
        if (!gameIcon.empty())
            say(gameIcon + ": not shown as the game's icon, as it is no PNG picture of at most "
                           "1024 x 1024 pixels");
        if (const auto icon = modules_.resource(kIconType, kAppIcon))
            setSdlIcon(display_.window(), *icon);
    }

    bool trusted_;
    bool isClosedIn_ = false;
    Comfort comfort_;
    std::string packer_;                  ///< which the author's desk runs; or empty
    std::unique_ptr<SdlSession> session_; ///< ends last
    SdlDisplay display_;
    SdlTextWindows textWindows_;
    std::optional<SdlKiosk> kiosk_; ///< only the key of the administrator leaves
    SdlEvents events_;
    SdlClock clock_;
    SdlDesk desk_;
    HostFiles files_;
    PlayerSettings settings_{files_};
    HostModules modules_;
    HostTypefaces typefaces_{files_};
    SdlSound sound_{clock_};
    SdlMovieSpeakers movieSpeakers_{sound_};
    HostMovies movies_{files_, clock_, movieSpeakers_};
    HostMachine machine_;
    HostSpeech speech_;
    SpokenBoxes spokenBoxes_;
    SdlDialogs dialogs_;
    SdlComfort comfortPanel_;
    SdlWaveOut waveOut_{sound_};
    std::optional<RecordedMachine> recorded_; ///< while a visit is recorded
    std::string pictures_;                    ///< folder for those of the visit, or empty
};

} // namespace

std::variant<std::unique_ptr<Platform>, std::string> makeSdlPlatform(const SdlOptions& options) {
    if (options.screen.width < 1 || options.screen.height < 1) return "the screen has no size";
    if (options.kiosk) SdlKiosk::prepare();
    auto session = std::make_unique<SdlSession>(options.game);
    if (!session->started()) return SDL_GetError();
    if (!isSeen(SDL_GetCurrentVideoDriver()))
        return "there is no screen: neither DISPLAY nor WAYLAND_DISPLAY leads to one";
    std::optional<SdlWindow> window = openSdlWindow(options.screen);
    if (!window) return SDL_GetError();
    SDL_StartTextInput();
    return std::make_unique<SdlPlatform>(std::move(session), *std::move(window), options);
}

} // namespace platform
