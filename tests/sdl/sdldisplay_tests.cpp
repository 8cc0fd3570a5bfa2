// Cursors of the window. SDL's driver without a screen has none, so these also run on a real one.
#include "platform/sdl/sdlplatform.h"

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

} // namespace
} // namespace platform
