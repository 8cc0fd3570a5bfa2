// The game's window on a screen of 16, 24 or 32 bits.
#include "scenes/efwindow.h"

#include "trinkets/windowfixture.h"

#include "aodeep.h"
#include "ranimation.h"

#include <map>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using platform::Rgb;

namespace {

constexpr Rgb kRed{0xF8, 0, 0};
constexpr Rgb kBlue{0, 0, 0xF8};

/// All colours are the same.
Bytes palette(Rgb color) {
    Bytes bytes(kRrgbSize);
    for (std::size_t at = 0; at < bytes.size(); at += 6) {
        bytes[at] = static_cast<std::byte>(color.red);
        bytes[at + 2] = static_cast<std::byte>(color.green);
        bytes[at + 4] = static_cast<std::byte>(color.blue);
    }
    return bytes;
}

class DeepScreenTest : public FrameworkTest, public testing::WithParamInterface<int> {
  protected:
    struct Screen {
        explicit Screen(int depth) {
            OMApp::useDirectDraw();
            app.emplace(OMApp::DisplayMode::FullScreen, OMColor(), Rect{0, 0, 640, 480}, depth);
        }
        ~Screen() {
            app.reset();
            OMApp::useGDI();
            AOPaletteRecord::setCurrent(nullptr);
        }
        std::optional<OMApp> app;
    };

    DeepScreenTest() {
        AseqBuilder picture;
        picture.block(640, 480, 'p').sequence({{0, 0, 0, 0}});
        resource = picture.build();
        EffectsWindow::setBackgroundLocator(
            [this](int) { return std::make_unique<MemoryStream>(resource); });
        EffectsWindow::setPaletteLocator([](int id) -> std::unique_ptr<OMIStream> {
            if (id > 1) return nullptr;
            return std::make_unique<MemoryStream>(palette(id == 0 ? kRed : kBlue));
        });
    }
    ~DeepScreenTest() override {
        EffectsWindow::setBackgroundLocator(nullptr);
        EffectsWindow::setPaletteLocator(nullptr);
    }
    Rgb shown(int x, int y) {
        window.idle();
        const OMPixels pixels = window.canvas().pixels();
        const std::uint8_t* at = pixels.at(x, y);
        if (pixels.bytesPerPixel > 2) return {at[2], at[1], at[0]};
        const int word = at[0] | at[1] << 8;
        return {static_cast<std::uint8_t>((word >> 10 & 31) << 3),
                static_cast<std::uint8_t>((word >> 5 & 31) << 3),
                static_cast<std::uint8_t>((word & 31) << 3)};
    }
    std::unique_ptr<RAnimation> animation(int x) {
        AseqBuilder builder;
        builder.block(10, 10, 'a').sequence({{0, 0, -4, 0}, {0, 0, 0, 0}});
        return std::make_unique<RAnimation>(window, builder.image(), 1, x, 0);
    }

    Bytes resource;
    Screen screen{GetParam()};
    EffectsWindow window{{0, 0}, "Game"};
};
INSTANTIATE_TEST_SUITE_P(Depths, DeepScreenTest, testing::Values(16, 24, 32));

TEST_P(DeepScreenTest, APictureHasTheColoursThatAreInstalledWithIt) {
    for (const int id : {0, 1, 0}) {
        EXPECT_TRUE(window.restorePalette(1, id));
        EXPECT_EQ(shown(300, 200), id == 0 ? kRed : kBlue);
        EXPECT_EQ(window.background()->picture()->depth(), GetParam());
    }
    EXPECT_TRUE(window.restorePalette(1, 99)); // has none: those before stay
    EXPECT_EQ(shown(300, 200), kRed);
    EXPECT_TRUE(failures.empty()) << failures.front();
}

TEST_P(DeepScreenTest, WhatIsFrozenOrPaintedIntoThePictureStays) {
    window.restorePalette(1, 0);
    OMDevicePalette blue;
    blue.fill(kBlue);
    for (const bool freezes : {false, true}) {
        window.restorePalette(1, 99); // its colours are still to come
        auto sprite = animation(0);
        sprite->setPalette(std::make_shared<AOPaletteRecord>(blue));
        window.idle();
        if (freezes)
            window.freezeScreen();
        else
            sprite->paintIntoBackground(50, 60);
        sprite.reset();
        window.setPalette(OMPaletteFromDevice(OMDefaultPalette()), false);
        window.invalidateAll();
        EXPECT_EQ(freezes ? shown(5, 5) : shown(55, 65), kBlue);
        EXPECT_EQ(shown(300, 200), kRed);
        window.restorePalette(1, 0);
    }
}

TEST_P(DeepScreenTest, NewAnimationsHaveTheNewColours) {
    window.restorePalette(1, 0);
    const auto before = animation(0);
    window.restorePalette(1, 1);
    const auto after = animation(20);
    EXPECT_EQ(shown(5, 5), kRed);
    EXPECT_EQ(shown(25, 5), kBlue);
    EXPECT_EQ(shown(45, 5), kBlue);
}

} // namespace
