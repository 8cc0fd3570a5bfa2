// Two windows of the desktop and one queue of events, on SDL's driver without a screen. That one
// has no cursors, so that SdlDisplay also runs on a real one.
#include "../platform/temporaryfolder.h"

#include "platform/cursor.h"
#include "platform/sdl/sdlplatform.h"

#include <SDL.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace platform {
namespace {

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

void push(Uint32 type, Uint32 window, Uint8 what = 0) {
    SDL_Event event{};
    event.type = type;
    event.window.windowID = window; // in the same place for all
    if (type == SDL_WINDOWEVENT) event.window.event = what;
    if (type == SDL_MOUSEBUTTONDOWN) event.button.button = event.button.clicks = 1;
    if (type == SDL_TEXTINPUT) event.text.text[0] = 'a';
    SDL_PushEvent(&event);
}

/// The kinds of the messages for the program.
Kinds takeAll(Platform& machine) {
    Kinds kinds;
    for (Message message; machine.events().take(message);) kinds.insert(message.kind);
    return kinds;
}

TEST(SdlDisplay, CursorsOfPicturesAndOfThePlatformAreShownWhileTheyLive) {
    const auto machine = start();
    if (!machine) GTEST_SKIP() << "SDL has no driver without a screen here";
    Display& display = machine->display();
    const auto arrow = display.makeCursor(-1);
    ASSERT_TRUE(arrow) << "or what looks like it";
    display.setCursor(*arrow);
    EXPECT_FALSE(display.makeCursor(7, {2, 2, {}, {1, 2, 3}}));
    SDL_Cursor* const before = SDL_GetCursor();
    auto picture = display.makeCursor(5, {2, 1, {1, 0}, {0xFF00FF00, 0}});
    if (!picture) GTEST_SKIP() << "SDL has no cursors of pictures here";
    EXPECT_EQ(picture->id(), 5);
    display.setCursor(*picture);
    SDL_Cursor* const shown = SDL_GetCursor();
    EXPECT_NE(shown, before);
    picture.reset();
    EXPECT_NE(SDL_GetCursor(), shown) << "a shown cursor that is gone is not shown on";
    display.setCursor(*arrow);
    EXPECT_FALSE(display.makeCursor(6, {2, 1, {5, 0}, {1, 2}})) << "the hot spot is outside";
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
        const auto isFullAfter = [&](SDL_Keycode key, SDL_Keymod modifiers) {
            SDL_Event event{};
            event.key = {.type = SDL_KEYDOWN, .keysym = {.sym = key, .mod = Uint16(modifiers)}};
            if (key != SDLK_UNKNOWN) SDL_PushEvent(&event);
            EXPECT_EQ(takeAll(*machine).count(Message::Kind::Key), 0u);
            return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN) != 0;
        };
        EXPECT_EQ(isFullAfter(SDLK_UNKNOWN, KMOD_NONE), fullAtFirst);
        EXPECT_EQ(isFullAfter(SDLK_RETURN, KMOD_LALT), !fullAtFirst);
        EXPECT_FALSE(isFullAfter(fullAtFirst ? SDLK_UNKNOWN : SDLK_F11, KMOD_NONE));
        EXPECT_EQ(home.contents("settings.ini"), "colour=red\nsomething\nfullscreen=0\n");
    }
}

/// What the debug window does, as far as it matters here.
struct Owner final : TextWindowOwner {
    void resized() override { ++resizes; }
    void damaged() override { ++damages; }
    void closed() override {
        ++closes;
        window.reset();
    }
    std::unique_ptr<TextWindow> window;
    int resizes = 0, damages = 0, closes = 0;
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
    const Uint32 main = SDL_GetWindowID(windowNamed("main"));
    const Uint32 other = SDL_GetWindowID(text);
    takeAll(*machine);
    EXPECT_EQ(owner.window->rectangle(), (Rect{20, 30, 140, 90}));
    EXPECT_NE(SDL_GetWindowFlags(text) & SDL_WINDOW_ALWAYS_ON_TOP, 0u);
    EXPECT_FALSE(owner.window->isMinimised());
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
    owner.window->show({}, 0);
    EXPECT_FALSE(isBlack(0, 5));

    owner.resizes = owner.damages = 0;
    SDL_SetWindowSize(text, 200, 100);
    push(SDL_WINDOWEVENT, other, SDL_WINDOWEVENT_EXPOSED);
    for (const Uint32 type : {SDL_MOUSEBUTTONDOWN, SDL_TEXTINPUT}) push(type, other);
    EXPECT_TRUE(takeAll(*machine).empty()) << "no message for the program";
    EXPECT_EQ(owner.resizes, 1);
    EXPECT_GE(owner.damages, 1);
    EXPECT_EQ(owner.window->rectangle().height(), 100);
    push(SDL_WINDOWEVENT, main, SDL_WINDOWEVENT_CLOSE);
    EXPECT_EQ(takeAll(*machine), Kinds{Message::Kind::Quit})
        << "SDL sends no quit with two windows";

    owner.damages = 0;
    for (const Uint8 what : {SDL_WINDOWEVENT_CLOSE, SDL_WINDOWEVENT_EXPOSED}) // one comes too late
        push(SDL_WINDOWEVENT, other, what);
    push(SDL_TEXTINPUT, other);
    EXPECT_EQ(takeAll(*machine).count(Message::Kind::Quit), 0u);
    EXPECT_TRUE(owner.closes == 1 && owner.damages == 0 && !windowNamed("text \xC3\xA9"));
    for (const Uint32 type : {SDL_MOUSEBUTTONDOWN, SDL_TEXTINPUT}) push(type, main);
    EXPECT_EQ(takeAll(*machine), (Kinds{Message::Kind::MouseDown, Message::Kind::Key}));
    push(SDL_WINDOWEVENT, main, SDL_WINDOWEVENT_CLOSE);
    push(SDL_QUIT, 0);
    EXPECT_EQ(takeAll(*machine), Kinds{Message::Kind::Quit}) << "it sends both with one";
}

} // namespace
} // namespace platform
