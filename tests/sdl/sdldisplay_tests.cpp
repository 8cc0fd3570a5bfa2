// Cursors and full screen of the window. SDL's driver without a screen has no cursors, so these
// also run on a real one.
#include "platform/sdl/sdlplatform.h"

#include "../platform/temporaryfolder.h"

#include "platform/cursor.h"
#include "platform/display.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <variant>

namespace platform {
namespace {

TEST(SdlDisplay, CursorsOfPicturesAndOfThePlatformAreShownWhileTheyLive) {
    SDL_setenv("SDL_VIDEODRIVER", "dummy", 0);
    auto made = makeSdlPlatform({});
    auto* ready = std::get_if<std::unique_ptr<Platform>>(&made);
    if (!ready) GTEST_SKIP() << "SDL has no driver without a screen here";
    Display& display = (*ready)->display();

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
    SDL_setenv("SDL_VIDEODRIVER", "dummy", 0);
    const TemporaryFolder home;
    home.make("settings.ini", "colour=red\n fullscreen = 1\nsomething\n");
    const auto press = [](SDL_Keycode key, SDL_Keymod modifiers) {
        SDL_Event event{};
        event.key = {.type = SDL_KEYDOWN, .keysym = {.sym = key, .mod = Uint16(modifiers)}};
        SDL_PushEvent(&event);
    };
    for (const bool fullAtFirst : {true, false}) {
        auto made = makeSdlPlatform(
            {.host = {.home = home.path()}, .game = {.identifier = "a", .title = "Pond"}});
        auto* ready = std::get_if<std::unique_ptr<Platform>>(&made);
        if (!ready) GTEST_SKIP() << "SDL has no driver without a screen here";
        Platform& machine = **ready;
        machine.keepSettings(machine.files().fullPath(home.path("settings.ini")));
        machine.mainLoopBegins();
        machine.display().setTitle("17");
        SDL_Window* window = SDL_GetWindowFromID(1);
        for (Uint32 id = 2; !window && id < 100; ++id) window = SDL_GetWindowFromID(id);
        ASSERT_TRUE(window);
        EXPECT_STREQ(SDL_GetWindowTitle(window), "Pond");
        const auto isFull = [&] {
            return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN) != 0;
        };
        EXPECT_EQ(isFull(), fullAtFirst);
        Message message;
        press(SDLK_RETURN, KMOD_LALT);
        while (machine.events().take(message)) EXPECT_NE(message.kind, Message::Kind::Key);
        EXPECT_EQ(isFull(), !fullAtFirst);
        if (!fullAtFirst) press(SDLK_F11, KMOD_NONE);
        while (machine.events().take(message)) EXPECT_NE(message.kind, Message::Kind::Key);
        EXPECT_FALSE(isFull());
        EXPECT_EQ(home.contents("settings.ini"), "colour=red\nsomething\nfullscreen=0\n");
    }
}

} // namespace
} // namespace platform
