// On drivers of SDL without a loudspeaker, which play in real time, and without a screen. Those
// have no cursors, so that SdlDisplay also runs on a real one.
#include "../platform/temporaryfolder.h"

#include "platform/cursor.h"
#include "platform/host/visit/virtualclock.h"
#include "platform/sdl/sdlmoviespeaker.h"
#include "platform/sdl/sdlplatform.h"
#include "platform/sdl/sdlwaveout.h"

#include <SDL.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace platform {
namespace {

class SdlSoundTest : public testing::Test {
  protected:
    ~SdlSoundTest() override {
        device_.close();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    bool open(const char* driver, int rate) {
        SDL_setenv("SDL_AUDIODRIVER", driver, 1);
        return device_.open(rate);
    }
    bool isDoneAfter(std::uint32_t ms) {
        clock_.sleep(ms);
        device_.poll();
        return buffer_.done;
    }

    VirtualClock clock_;
    SdlSound sound_{clock_};
    SdlWaveOut device_{sound_};
    const std::vector<std::uint8_t> data_ = std::vector<std::uint8_t>(20'000);
    WaveBuffer buffer_{.data = data_};
};

TEST_F(SdlSoundTest, WithoutADeviceTheClockPlaysAtRatesThatDevicesPlay) {
    for (const int rate : {0, -1, WaveOut::kMinRate - 1, WaveOut::kMaxRate + 1, 0x7FFFFFFF})
        EXPECT_FALSE(open("no such driver", rate) || device_.isOpen()) << rate;
    for (const int rate : {WaveOut::kMaxRate, WaveOut::kMinRate})
        EXPECT_TRUE(open("no such driver", rate));
    EXPECT_NE(device_.whySilent(), "");
    device_.write(buffer_);
    EXPECT_FALSE(isDoneAfter(19'999));
    EXPECT_TRUE(isDoneAfter(1));
}

TEST_F(SdlSoundTest, WhatADeviceLeavesWhenItGoesTheClockPlays) {
    SDL_setenv("SDL_DISKAUDIOFILE", "/dev/full", 1); // nothing can be written there
    ASSERT_TRUE(open("disk", 10'000));
    if (!device_.whySilent().empty()) GTEST_SKIP() << "SDL has no driver that writes files here";
    device_.write(buffer_);
    for (int i = 0; i < 500 && device_.whySilent().empty(); ++i) {
        SDL_Delay(10);
        EXPECT_FALSE(isDoneAfter(0));
    }
    EXPECT_EQ(device_.whySilent(), "the sound device has gone") << "the second one in a row, too";
    EXPECT_TRUE(isDoneAfter(2000));
}

TEST_F(SdlSoundTest, TheSpeakerOfMoviesPlaysItsQueueUnlessItIsPaused) {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    SdlMovieSpeaker speaker(sound_); // the clock stands still: the device plays
    ASSERT_TRUE(speaker.open({22050, 16, 2}));
    speaker.pause();
    speaker.write(data_);
    std::size_t queued = speaker.bytesQueued();
    SDL_Delay(60);
    EXPECT_TRUE(queued > data_.size() / 2 && speaker.bytesQueued() == queued);
    speaker.restart();
    sound_.hold(true); // as while the program is held
    queued = speaker.bytesQueued();
    SDL_Delay(60);
    EXPECT_EQ(speaker.bytesQueued(), queued);
    sound_.hold(false);
    for (int i = 0; i < 100 && speaker.bytesQueued() > 0; ++i) SDL_Delay(10);
    EXPECT_EQ(speaker.bytesQueued(), 0u);
    speaker.pause();
    speaker.write(data_);
    speaker.drop();
    EXPECT_EQ(speaker.bytesQueued(), 0u);
    speaker.close();
}

using Kinds = std::multiset<Message::Kind>;

std::unique_ptr<Platform> start(const SdlOptions& options = {}) {
    SDL_setenv("SDL_VIDEODRIVER", "dummy", 0);
    auto made = makeSdlPlatform(options);
    auto* ready = std::get_if<std::unique_ptr<Platform>>(&made);
    return ready ? std::move(*ready) : nullptr;
}

SDL_Window* windowNamed(const std::string& title) {
    for (Uint32 id = 1; id < 100; ++id)
        if (SDL_Window* window = SDL_GetWindowFromID(id);
            window && SDL_GetWindowTitle(window) == title)
            return window;
    return nullptr;
}

/// The kinds of the messages for the program after events of these types, of a window.
Kinds after(Platform& machine, Uint32 window, const std::vector<Uint32>& types, Uint8 what = 0) {
    for (const Uint32 type : types) {
        SDL_Event event{};
        event.type = type;
        event.window.windowID = window; // in the same place for all
        if (type == SDL_WINDOWEVENT) event.window.event = what;
        if (type == SDL_MOUSEBUTTONDOWN) event.button.button = event.button.clicks = 1;
        if (type == SDL_TEXTINPUT) event.text.text[0] = 'a';
        SDL_PushEvent(&event);
    }
    Kinds kinds;
    for (Message message; machine.events().take(message);) kinds.insert(message.kind);
    return kinds;
}

void press(SDL_Keycode key, int modifiers = KMOD_NONE) {
    SDL_Event event{};
    event.key = {.type = SDL_KEYDOWN, .keysym = {.sym = key, .mod = Uint16(modifiers)}};
    SDL_PushEvent(&event);
}

TEST(SdlDisplay, CursorsOfPicturesAndOfThePlatformAreShownWhileTheyLive) {
    const auto machine = start();
    if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
    Display& display = machine->display();
    EXPECT_TRUE(display.makeCursor(-1)) << "or what looks like it";
    for (const CursorImage& wrong : {CursorImage{2, 2, {}, {1, 2, 3}}, {2, 1, {5, 0}, {1, 2}}})
        EXPECT_FALSE(display.makeCursor(7, wrong))
            << "pixels are missing, or the hot spot is outside";
    auto picture = display.makeCursor(5, {2, 1, {1, 0}, {0xFF00FF00, 0}});
    if (!picture) GTEST_SKIP() << "SDL has no cursors of pictures here";
    display.setCursor(*picture);
    SDL_Cursor* const shown = SDL_GetCursor();
    picture.reset();
    EXPECT_NE(SDL_GetCursor(), shown) << "a shown cursor that is gone is not shown on";
}

TEST(SdlDisplay, KeysOfTheFullScreenAreTheWindowsOwnAndTheChoiceIsKept) {
    const TemporaryFolder home;
    home.make("settings.ini", "colour=red\n fullscreen = 1\nsomething\n");
    for (const bool fullAtFirst : {true, false}) {
        const auto machine =
            start({.host = {.home = home.path()}, .game = {.identifier = "a", .title = "Pond"}});
        if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
        machine->keepSettings(machine->files().fullPath(home.path("settings.ini")));
        machine->mainLoopBegins();
        machine->display().setTitle("17");
        SDL_Window* const window = windowNamed("Pond");
        ASSERT_TRUE(window);
        const auto isFullAfter = [&](SDL_Keycode key, int modifiers = KMOD_NONE) {
            if (key != SDLK_UNKNOWN) press(key, modifiers);
            EXPECT_EQ(after(*machine, 0, {}).count(Message::Kind::Key), 0u);
            return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN) != 0;
        };
        EXPECT_EQ(isFullAfter(SDLK_UNKNOWN), fullAtFirst);
        EXPECT_EQ(isFullAfter(SDLK_RETURN, KMOD_LALT), !fullAtFirst);
        EXPECT_FALSE(isFullAfter(fullAtFirst ? SDLK_UNKNOWN : SDLK_F11));
        EXPECT_EQ(home.contents("settings.ini"), "colour=red\nsomething\nfullscreen=0\n");
    }
}

/// A game with two objects, which remembers the lines that it was to run.
struct Game final : Inspection {
    std::optional<std::string> value(std::string_view) const override { return {}; }
    std::optional<std::string> property(std::string_view, std::string_view) const override {
        return {};
    }
    std::vector<InspectedVariable> variables() const override {
        return {{"boat", "RAnimation", ""}, {"n", "number", "1"}, {"sign", "RText", ""}};
    }
    std::vector<InspectedProperty> properties(std::string_view variable) const override {
        asked = variable;
        return {};
    }
    std::string run(std::string_view line) override {
        lines += std::string(line) + '/';
        return "done";
    }
    std::string lines;
    mutable std::string asked;
};

TEST(SdlDesk, TheConsoleHasTheKeysAndItsPartOfTheMouseWhileItIsOpen) {
    for (const bool seated : {false, true}) {
        const auto machine = start({.author = seated, .screen = {640, 480, 8}});
        if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
        Game game;
        machine->author().setInspection(&game);
        after(*machine, 0, {});
        const auto type = [](const char* letters) {
            SDL_Event event{};
            event.type = SDL_TEXTINPUT;
            SDL_strlcpy(event.text.text, letters, sizeof event.text.text);
            SDL_PushEvent(&event);
        };
        const auto mouse = [](Uint32 what, int y) {
            SDL_Event event{};
            event.type = what;
            if (what == SDL_MOUSEMOTION)
                event.motion.y = y;
            else
                event.button = {.type = what, .button = 1, .clicks = 1, .y = y};
            SDL_PushEvent(&event);
        };
        const auto heard = [&] {
            const auto count = after(*machine, 0, {}).size();
            machine->passEnded();
            return count;
        };
        press(SDLK_F2, KMOD_LSHIFT);
        EXPECT_EQ(heard(), seated ? 0u : 1u) << "scripts hear it unless there is an author";
        if (!seated) continue;
        type("x=\xC3\xA3");
        press(SDLK_RETURN);
        machine->events().discardInput(); // of scenes that change
        press(SDLK_UP);
        type("1");
        press(SDLK_RETURN);
        press(SDLK_TAB);
        heard(); // the variables are looked up
        type("rt");
        press(SDLK_RETURN);
        EXPECT_EQ(heard(), 0u);
        EXPECT_EQ(game.lines, "x=\xE3/x=\xE3"
                              "1/")
            << "each once";
        EXPECT_EQ(game.asked, "sign");
        const int inside = 470, outside = 10;
        mouse(SDL_MOUSEBUTTONDOWN, inside);
        mouse(SDL_MOUSEMOTION, outside);
        mouse(SDL_MOUSEBUTTONUP, outside);
        mouse(SDL_MOUSEMOTION, inside);
        EXPECT_EQ(heard(), 0u) << "a press inside, with all of it";
        mouse(SDL_MOUSEBUTTONDOWN, outside);
        mouse(SDL_MOUSEMOTION, inside);
        mouse(SDL_MOUSEBUTTONUP, inside);
        EXPECT_EQ(heard(), 3u) << "what the game holds goes on";
        press(SDLK_ESCAPE);
        type("a");
        EXPECT_EQ(heard(), 1u) << "the letter behind its end";
        machine->author().setInspection(nullptr);
    }
}

TEST(SdlKiosk, OnlyTheKeyLeavesAndAGameThatWasPlayedBeginsAgain) {
    for (const char* wrong : {"Q", "Shift-F9", "Alt-F4", "Ctrl-Alt-F3", "Ctrl-Ctrl-Q", "Ctrl-"})
        EXPECT_FALSE(parseLeavingKey(wrong)) << wrong;
    EXPECT_EQ(parseLeavingKey("Alt-Ctrl-Q"), LeavingKey{});
    const auto machine = start({.kiosk = LeavingKey{}, .screen = {640, 480, 8}});
    if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
    const auto heard = [&](SDL_Keycode key, int modifiers) {
        press(key, modifiers);
        return after(*machine, 0, {SDL_QUIT});
    };
    EXPECT_FALSE(machine->beginsAgain()) << "its main loop did not begin";
    machine->mainLoopBegins();
    for (const int modifiers : {int{KMOD_LALT}, int{KMOD_LGUI}, int{KMOD_LSHIFT}})
        EXPECT_TRUE(heard(SDLK_F4, modifiers).empty());
    EXPECT_TRUE(heard(SDLK_F11, KMOD_NONE).empty());
    EXPECT_FALSE(machine->beginsAgain()) << "it ended at once";
    machine->mainLoopBegins();
    EXPECT_EQ(heard(SDLK_q, KMOD_LCTRL), Kinds{Message::Kind::Key}) << "the game's own end";
    EXPECT_TRUE(machine->beginsAgain());
    machine->mainLoopBegins();
    EXPECT_EQ(heard(SDLK_q, KMOD_RCTRL | KMOD_LALT), Kinds{Message::Kind::Quit});
    EXPECT_FALSE(machine->beginsAgain());
}

TEST(SdlEvents, KeysOfAnAuthorLoadAgainAndAreNotTheGames) {
    const TemporaryFolder game;
    for (const bool isAuthor : {true, false}) {
        SdlOptions options{.author = isAuthor};
        if (isAuthor) options.workshop = WorkshopOptions{.game = game.path()};
        const auto machine = start(options);
        if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
        std::string loads;
        machine->author().setReload(
            [&](const Reload& wanted) { loads += wanted.keepsVariables ? "kept " : "anew "; });
        std::size_t heard = 0;
        for (const int modifiers : {0, int{KMOD_LSHIFT}, KMOD_RSHIFT | KMOD_RCTRL}) {
            press(SDLK_F3, modifiers);
            heard += after(*machine, 0, {}).count(Message::Kind::Key);
            machine->passEnded();
        }
        EXPECT_EQ(loads, isAuthor ? "anew kept " : "");
        EXPECT_EQ(heard, isAuthor ? 1u : 3u);
        machine->author().setReload(nullptr);
    }
}

/// What the debug window does, as far as it matters here.
struct Owner final : TextWindowOwner {
    void resized() override { ++resizes; }
    void damaged() override { ++damages; }
    void closed() override { window.reset(); }
    std::unique_ptr<TextWindow> window;
    int resizes = 0, damages = 0;
};

TEST(SdlTextWindow, ShowsLinesAndTellsWhatAPersonDoesToIt) {
    const auto machine = start();
    if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
    machine->display().setTitle("main");
    machine->mainLoopBegins();
    Owner owner;
    owner.window = machine->openTextWindow({"Class", "text \xE9", {20, 30, 140, 90}}, owner);
    SDL_Window* const text = windowNamed("text \xC3\xA9");
    ASSERT_TRUE(owner.window && text && windowNamed("main"));
    const Uint32 main = SDL_GetWindowID(windowNamed("main")), other = SDL_GetWindowID(text);
    after(*machine, 0, {});
    EXPECT_EQ(owner.window->rectangle(), (Rect{20, 30, 140, 90}));
    EXPECT_NE(SDL_GetWindowFlags(text) & SDL_WINDOW_ALWAYS_ON_TOP, 0u);
    owner.window->move({5, 6});
    EXPECT_EQ(owner.window->rectangle(), (Rect{5, 6, 125, 66}));
    const int line = owner.window->lineHeight();
    const auto isBlack = [&](int x, int y) {
        const SDL_Surface* surface = SDL_GetWindowSurface(text);
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + y * surface->pitch;
        return row[x * surface->format->BytesPerPixel] == 0;
    };
    owner.window->show(std::vector<std::string>{"HH", "", "H"}, 1);
    EXPECT_TRUE(isBlack(0, 5) && isBlack(6, 5) && !isBlack(5, 5)) << "stems of two letters";
    EXPECT_TRUE(!isBlack(0, line + 5) && isBlack(0, 2 * line + 5) && !isBlack(119, 59));
    owner.resizes = owner.damages = 0;
    SDL_SetWindowSize(text, 200, 100);
    EXPECT_TRUE(after(*machine, other, {SDL_WINDOWEVENT, SDL_MOUSEBUTTONDOWN, SDL_TEXTINPUT},
                      SDL_WINDOWEVENT_EXPOSED)
                    .empty());
    EXPECT_TRUE(owner.resizes == 1 && owner.damages >= 1);
    EXPECT_EQ(owner.window->rectangle().height(), 100);
    const Kinds quit{Message::Kind::Quit};
    EXPECT_EQ(after(*machine, main, {SDL_WINDOWEVENT}, SDL_WINDOWEVENT_CLOSE), quit)
        << "SDL sends no quit with two windows";
    EXPECT_NE(after(*machine, other, {SDL_WINDOWEVENT, SDL_TEXTINPUT}, SDL_WINDOWEVENT_CLOSE),
              quit);
    EXPECT_FALSE(owner.window || windowNamed("text \xC3\xA9"));
    EXPECT_EQ(after(*machine, main, {SDL_MOUSEBUTTONDOWN, SDL_TEXTINPUT}),
              (Kinds{Message::Kind::MouseDown, Message::Kind::Key}));
    EXPECT_EQ(after(*machine, main, {SDL_WINDOWEVENT, SDL_QUIT}, SDL_WINDOWEVENT_CLOSE), quit)
        << "it sends both with one";
}

} // namespace
} // namespace platform
