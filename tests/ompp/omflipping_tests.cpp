// Canvases made of surfaces: the screen in exclusive mode, what is behind it, and its loss.
#include "canvasfixture.h"

#include "omwndcanvas.h"

#include <gtest/gtest.h>

using platform::Rect;
using testing_support::pixelAt;
using testing_support::Process;

namespace {

using Messages = std::vector<std::string>;

constexpr Rect kAll{0, 0, 64, 48};

void fill(OMCanvas& canvas, int index) {
    canvas.setColor(OMColor(index));
    canvas.fillRect(kAll);
}

int shownPixel(Process& process) { return process.display().shown().row(5)[7]; }

TEST(OMApp, SurfacesAreChosenBeforeItExists) {
    Process process(16);
    EXPECT_FALSE(OMApp::usingDirectDraw());
    OMApp::useDirectDraw();
    OMApp::useGDI();
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMApp::useDirectDraw - cannot useDirectDraw after an OMApp has been "
                        "instantiated!",
                        "OMApp::useGDI - cannot useGDI after an OMApp has been instantiated!"}));
    process.end();
    OMApp::useDirectDraw();
    process.restart(OMApp::DisplayMode::PopUp, 8);
    EXPECT_TRUE(OMApp::usingDirectDraw());
    const OMMemCanvas canvas(4, 4, 8);
    EXPECT_EQ(canvas.depth(), 16);
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMCanvas::OMCanvas - DirectDraw canvases must be the same bit depth as "
                        "the display!"}));
}

TEST(OMApp, ExclusiveModeHasItsOwnScreenAndGivesTheOldOneBack) {
    Process process(16);
    process.end();
    OMApp::useDirectDraw();
    process.restart(OMApp::DisplayMode::FullScreen, 8);
    EXPECT_TRUE(process.display().isExclusive());
    EXPECT_EQ(process.display().mode(), (platform::ScreenMode{64, 48, 8}));
    process.end();
    EXPECT_EQ(process.display().mode(), (platform::ScreenMode{64, 48, 16}));

    process.display().refusesExclusive = true;
    process.restart(OMApp::DisplayMode::FullScreen, 8);
    EXPECT_FALSE(OMApp::usingDirectDraw());
    EXPECT_EQ(OMApp::getApp()->displayMode(), OMApp::DisplayMode::PopUp);
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMApp::OMApp - DirectDraw failed to initialize!"}));
}

TEST(OMWndCanvas, FlipsOnlyInExclusiveMode) {
    Process process(8);
    OMWndCanvas window(kAll);
    OMMemCanvas back(64, 48, 8, OMMemCanvas::Kind::Flippable);
    EXPECT_FALSE(window.attachToFlipChain(back));
    window.detachFromFlipChain(back);
    EXPECT_FALSE(window.flip());
    EXPECT_EQ(
        process.takeMessages(),
        (Messages{"OMWndCanvas::attachToFlipChain - must be in exclusive mode to use flipping!",
                  "OMWndCanvas::detachFromFlipChain - must be in exclusive mode to use flipping!",
                  "OMWndCanvas::flip - must be in exclusive mode to use flipping!"}));
}

class FlippingTest : public ::testing::Test {
  protected:
    FlippingTest() {
        process.end();
        OMApp::useDirectDraw();
        process.restart(OMApp::DisplayMode::FullScreen, 8);
        window.emplace(kAll);
        back.emplace(64, 48, 8, OMMemCanvas::Kind::Flippable);
    }
    Process process{8};
    std::optional<OMWndCanvas> window;
    std::optional<OMMemCanvas> back;
};

TEST_F(FlippingTest, WhatWasShownComesBackBehindTheScreen) {
    fill(*window, 11);
    ASSERT_TRUE(window->attachToFlipChain(*back));
    EXPECT_EQ(window->backBuffers(), 1);
    fill(*back, 12);
    EXPECT_EQ(shownPixel(process), 11);
    process.display().busyFlips = 3;
    EXPECT_TRUE(window->flip());
    EXPECT_EQ(shownPixel(process), 12);
    EXPECT_EQ(pixelAt(*window, 7, 5), 12u);
    EXPECT_EQ(pixelAt(*back, 7, 5), 11u);
    window->flip();
    EXPECT_EQ(shownPixel(process), 11);

    window->detachFromFlipChain(*back);
    EXPECT_EQ(window->backBuffers(), 0);
    EXPECT_EQ(pixelAt(*back, 7, 5), 12u) << "keeps its picture";
    EXPECT_FALSE(window->flip());
    EXPECT_EQ(process.takeMessages(), (Messages{"OMWndCanvas::flip - flip failed!"}));
}

TEST_F(FlippingTest, FixedCanvasesAreNotAttached) {
    OMMemCanvas fixed(64, 48, 8);
    EXPECT_FALSE(window->attachToFlipChain(fixed));
    EXPECT_EQ(process.display().back(), nullptr);
}

TEST_F(FlippingTest, AnAttachedCanvasDrawsOnlyWhereTheScreenIs) {
    OMMemCanvas large(100, 100, 8, OMMemCanvas::Kind::Flippable);
    ASSERT_TRUE(window->attachToFlipChain(large));
    large.setColor(OMColor(9));
    large.fillRect(large.bounds());
    window->flip();
    EXPECT_EQ(process.display().shown().row(47)[63], 9);
    window->detachFromFlipChain(large);
    EXPECT_EQ(pixelAt(large, 99, 99), 0u);
}

TEST_F(FlippingTest, ALostScreenShowsNothingUntilItIsRestored) {
    ASSERT_TRUE(window->attachToFlipChain(*back));
    fill(*back, 12);
    window->flip();
    process.display().setInForeground(false);
    EXPECT_FALSE(OMWndCanvas::restore());
    fill(*window, 13);
    EXPECT_EQ(shownPixel(process), 12) << "nothing is presented";
    EXPECT_FALSE(window->flip());
    process.display().setInForeground(true);
    EXPECT_TRUE(OMWndCanvas::restore());
    EXPECT_FALSE(OMWndCanvas::restore()) << "only once";
    EXPECT_EQ(pixelAt(*back, 7, 5), 0u);
    fill(*back, 14);
    EXPECT_TRUE(window->flip());
    EXPECT_EQ(shownPixel(process), 14);
}

} // namespace
