// The game's picture on a screen of 16, 24 or 32 bits; golden scenes show all else there.
#include "formats/picture/palette.h"
#include "scene/efwindow.h"

#include "trinkets/windowfixture.h"

#include "aodeep.h"
#include "ranimation.h"

using namespace testing_support;
using platform::Rgb;

namespace {

constexpr int kRed = 0;
constexpr int kBlue = 1;
constexpr int kNoPalette = 2;

/// All colours are the same.
Bytes palette(int id) {
    Bytes bytes(formats::picture::kPaletteSize);
    for (std::size_t at = id == kRed ? 0 : 4; at < bytes.size(); at += 6)
        bytes[at] = std::byte{0xF8};
    return bytes;
}

class DeepScreenTest : public FrameworkTest, public testing::WithParamInterface<int> {
  protected:
    DeepScreenTest() {
        OMApp::useDirectDraw();
        app.emplace(OMApp::DisplayMode::FullScreen, OMColor(), platform::Rect{0, 0, 640, 480},
                    GetParam());
        window.emplace(platform::Point{0, 0}, "Game");
        AseqBuilder picture;
        picture.block(640, 480, 'p').sequence({{0, 0, 0, 0}});
        window->setBackgroundLocator(
            [data = picture.build()](int) { return std::make_unique<MemoryStream>(data); });
        window->setPaletteLocator([](int id) -> std::unique_ptr<OMIStream> {
            if (id == kNoPalette) return nullptr;
            return std::make_unique<MemoryStream>(palette(id));
        });
    }
    ~DeepScreenTest() override {
        window.reset();
        app.reset();
        OMApp::useGDI();
    }
    /// What the pixel is: kRed, kBlue or anything else.
    int shown(int x, int y) {
        window->idle();
        const OMPixels pixels = window->canvas().pixels();
        std::uint32_t value = 0;
        for (int i = 0; i < pixels.bytesPerPixel; ++i)
            value |= std::uint32_t{pixels.at(x, y)[i]} << 8 * i;
        if (value == (GetParam() == 16 ? 31u << 10 : 0xF80000)) return kRed;
        return value == (GetParam() == 16 ? 31u : 0xF8) ? kBlue : -1;
    }

    std::optional<OMApp> app;
    std::optional<EffectsWindow> window;
};
INSTANTIATE_TEST_SUITE_P(Depths, DeepScreenTest, testing::Values(16, 24, 32));

TEST_P(DeepScreenTest, WhatIsFrozenOrPaintedIntoThePictureStays) {
    window->restorePalette(1, kRed);
    OMDevicePalette blue;
    blue.fill({0, 0, 0xF8});
    for (const bool freezes : {false, true}) {
        window->restorePalette(1, kNoPalette); // its colours are still to come
        AseqBuilder builder;
        builder.block(10, 10, 'a').sequence({{0, 0, -4, 0}, {0, 0, 0, 0}});
        auto sprite = std::make_unique<RAnimation>(*window, builder.image(), 1, 0, 0);
        sprite->setPalette(std::make_shared<AOPaletteRecord>(blue));
        window->idle();
        if (freezes)
            window->freezeScreen();
        else
            sprite->paintIntoBackground(50, 60);
        sprite.reset();
        window->setPalette(OMPaletteFromDevice(OMDefaultPalette()), false);
        window->invalidateAll();
        EXPECT_EQ(freezes ? shown(5, 5) : shown(55, 65), kBlue);
        EXPECT_EQ(shown(300, 200), kRed);
        window->restorePalette(1, kRed);
    }
    EXPECT_TRUE(failures.empty()) << failures.front();
}

} // namespace
