// Two windows of the desktop and one queue of events, on SDL's driver without a screen.
#include "platform/sdl/sdlplatform.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace platform {
namespace {

using Kind = Message::Kind;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kBlack = 0x000000;

/// What the debug window does, as far as it matters here.
struct Owner final : TextWindowOwner {
    std::unique_ptr<TextWindow> window;
    int resizes = 0;
    int damages = 0;
    int closes = 0;

    void resized() override { ++resizes; }
    void damaged() override { ++damages; }
    void closed() override {
        ++closes;
        window.reset();
    }
};

class SdlTextWindowTest : public testing::Test {
  protected:
    SdlTextWindowTest() {
        SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
        auto made = makeSdlPlatform({});
        if (auto* ready = std::get_if<std::unique_ptr<Platform>>(&made))
            machine_ = std::move(*ready);
    }
    void SetUp() override {
        if (!machine_) GTEST_SKIP() << "SDL has no driver without a screen here";
        machine_->display().setTitle("main");
        machine_->mainLoopBegins();
        owner_.window = machine_->openTextWindow({"Class", "text \xE9", {20, 30, 140, 90}}, owner_);
        ASSERT_TRUE(owner_.window);
        main_ = windowNamed("main");
        text_ = windowNamed("text \xC3\xA9");
        ASSERT_TRUE(main_ && text_);
        takeAll();
        owner_.resizes = owner_.damages = 0;
    }

    static SDL_Window* windowNamed(const std::string& title) {
        for (std::uint32_t id = 1; id < 100; ++id) {
            SDL_Window* window = SDL_GetWindowFromID(id);
            if (window && SDL_GetWindowTitle(window) == title) return window;
        }
        return nullptr;
    }

    /// The messages for the program.
    std::vector<Message> takeAll() {
        std::vector<Message> messages;
        Message message;
        while (machine_->events().take(message)) messages.push_back(message);
        return messages;
    }
    int quits() {
        int count = 0;
        for (const Message& message : takeAll()) count += message.kind == Kind::Quit;
        return count;
    }

    static void push(SDL_Window* window, SDL_WindowEventID what) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.windowID = SDL_GetWindowID(window);
        event.window.event = static_cast<Uint8>(what);
        SDL_PushEvent(&event);
    }
    static void pushInput(std::uint32_t id) {
        SDL_Event event{};
        event.type = SDL_MOUSEBUTTONDOWN;
        event.button.windowID = id;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.clicks = 1;
        SDL_PushEvent(&event);
        event = {};
        event.type = SDL_TEXTINPUT;
        event.text.windowID = id;
        event.text.text[0] = 'a';
        SDL_PushEvent(&event);
    }

    std::uint32_t pixel(int x, int y) {
        const SDL_Surface* surface = SDL_GetWindowSurface(text_);
        const auto* row = static_cast<const std::uint8_t*>(surface->pixels) + y * surface->pitch;
        std::array<std::uint8_t, 3> rgb{};
        std::uint32_t value = 0;
        std::memcpy(&value, row + x * surface->format->BytesPerPixel,
                    surface->format->BytesPerPixel);
        SDL_GetRGB(value, surface->format, &rgb[0], &rgb[1], &rgb[2]);
        return static_cast<std::uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]);
    }

    std::unique_ptr<Platform> machine_;
    Owner owner_; // its window goes before the machine
    SDL_Window* main_ = nullptr;
    SDL_Window* text_ = nullptr;
};

TEST_F(SdlTextWindowTest, StandsWhereItWasAskedForAndTellsWhatAPersonDoesToIt) {
    EXPECT_EQ(owner_.window->rectangle(), (Rect{20, 30, 140, 90}));
    EXPECT_NE(SDL_GetWindowFlags(text_) & SDL_WINDOW_ALWAYS_ON_TOP, 0u);
    EXPECT_FALSE(owner_.window->isMinimised());
    owner_.window->move({5, 6});
    EXPECT_EQ(owner_.window->rectangle(), (Rect{5, 6, 125, 66}));
    SDL_SetWindowSize(text_, 200, 100);
    push(text_, SDL_WINDOWEVENT_EXPOSED);
    EXPECT_TRUE(takeAll().empty()) << "no message for the program";
    EXPECT_EQ(owner_.resizes, 1);
    EXPECT_GE(owner_.damages, 1);
    EXPECT_EQ(owner_.window->rectangle().height(), 100);
}

TEST_F(SdlTextWindowTest, ShowsBlackLinesOnWhite) {
    const std::vector<std::string> lines{"HH", "", "H"};
    owner_.window->show(lines, 1);
    const int line = owner_.window->lineHeight();
    EXPECT_EQ(pixel(0, 5), kBlack) << "the left stem of the first letter";
    EXPECT_EQ(pixel(6, 5), kBlack) << "of the second one";
    EXPECT_EQ(pixel(5, 5), kWhite) << "the space between them";
    EXPECT_EQ(pixel(0, line + 5), kWhite);
    EXPECT_EQ(pixel(0, 2 * line + 5), kBlack);
    EXPECT_EQ(pixel(119, 59), kWhite);
    owner_.window->show({}, 0);
    EXPECT_EQ(pixel(0, 5), kWhite);
}

TEST_F(SdlTextWindowTest, ItsInputIsNotTheProgramsNorIsThatOfAClosedWindow) {
    const std::uint32_t id = SDL_GetWindowID(text_);
    pushInput(id);
    EXPECT_TRUE(takeAll().empty());

    push(text_, SDL_WINDOWEVENT_CLOSE);
    push(text_, SDL_WINDOWEVENT_EXPOSED); // comes too late
    pushInput(id);
    EXPECT_EQ(quits(), 0);
    EXPECT_EQ(owner_.closes, 1);
    EXPECT_EQ(windowNamed("text \xC3\xA9"), nullptr);

    pushInput(SDL_GetWindowID(main_));
    EXPECT_EQ(takeAll().size(), 2u);
}

TEST_F(SdlTextWindowTest, ClosingTheMainWindowEndsTheProgramOnce) {
    push(main_, SDL_WINDOWEVENT_CLOSE);
    EXPECT_EQ(quits(), 1) << "with a text window open SDL sends no quit";
    owner_.window.reset();
    push(main_, SDL_WINDOWEVENT_CLOSE);
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    SDL_PushEvent(&quit);
    EXPECT_EQ(quits(), 1) << "without one it sends both";
}

} // namespace
} // namespace platform
