// The application's window on the screen, and canvases made of surfaces: the screen in exclusive
// mode, what is behind it, and its loss.
#include "canvasfixture.h"

#include "omwndcanvas.h"

#include <gtest/gtest.h>

using platform::Rect;
using testing_support::pixelAt;
using testing_support::Process;

namespace {

using Messages = std::vector<std::string>;
using Mode = OMApp::DisplayMode;

void fill(OMCanvas& canvas, int index) {
    canvas.setColor(OMColor(index));
    canvas.fillRect(canvas.bounds());
}

int shownPixel(Process& process) { return process.display.shown().row(5)[7]; }

TEST(OMApp, CoversTheDesktopUnlessItIsOverlappedOrOfSurfaces) {
    Process process(16);
    const Rect all{0, 0, 64, 48};
    const auto expect = [&](Mode mode, const Rect& covered, int depth = 16) {
        process.display.presented.clear();
        {
            const OMApp app(mode, OMColor(), {10, 20, 30, 40}, 8);
            EXPECT_EQ(process.display.presented.boundingBox(), covered);
            EXPECT_EQ(process.display.mode().depth, depth);
        }
        EXPECT_EQ(process.display.mode(), (platform::ScreenMode{64, 48, 16}));
    };
    OMApp::useDirectDraw();
    OMApp::useGDI();
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMApp::useDirectDraw - cannot useDirectDraw after an OMApp has been "
                        "instantiated!",
                        "OMApp::useGDI - cannot useGDI after an OMApp has been instantiated!"}));
    process.app.reset();
    expect(Mode::Overlapped, {10, 20, 30, 40});
    for (const Mode mode : {Mode::Captioned, Mode::PopUp, Mode::PopUpMinimise, Mode::FullScreen})
        expect(mode, all);
    OMApp::useDirectDraw();
    expect(Mode::PopUp, {0, 0, 20, 20}); // at the upper left
    expect(Mode::Captioned, all);
    expect(Mode::FullScreen, {0, 0, 20, 20}, 8); // which is the screen then
    process.restart(Mode::PopUp, 8);
    EXPECT_TRUE(OMApp::usingDirectDraw());
    EXPECT_EQ(OMMemCanvas(4, 4, 8).depth(), 16);
    process.display.refusesExclusive = true;
    process.restart(Mode::FullScreen, 8);
    EXPECT_FALSE(OMApp::usingDirectDraw());
    EXPECT_EQ(process.takeMessages(),
              (Messages{"OMCanvas::OMCanvas - DirectDraw canvases must be the same bit depth as "
                        "the display!",
                        "OMApp::OMApp - DirectDraw failed to initialize!"}));
}

TEST(OMWndCanvas, FlipsInExclusiveModeAndGivesBackWhatWasShown) {
    Process process(8);
    {
        OMWndCanvas window({0, 0, 64, 48});
        OMMemCanvas back(64, 48, 8, OMMemCanvas::Kind::Flippable);
        EXPECT_FALSE(window.attachToFlipChain(back));
        window.detachFromFlipChain(back);
        EXPECT_FALSE(window.flip());
        Messages texts;
        for (const char* operation : {"attachToFlipChain", "detachFromFlipChain", "flip"})
            texts.push_back(std::string("OMWndCanvas::") + operation +
                            " - must be in exclusive mode to use flipping!");
        EXPECT_EQ(process.takeMessages(), texts);
    }
    process.app.reset();
    OMApp::useDirectDraw();
    process.restart(Mode::FullScreen, 8);
    OMWndCanvas window({0, 0, 64, 48});
    OMMemCanvas fixed(64, 48, 8);
    EXPECT_FALSE(window.attachToFlipChain(fixed));
    OMMemCanvas back(64, 48, 8, OMMemCanvas::Kind::Flippable);
    fill(window, 11);
    ASSERT_TRUE(window.attachToFlipChain(back));
    fill(back, 12);
    EXPECT_EQ(shownPixel(process), 11);
    process.display.busyFlips = 3;
    EXPECT_TRUE(window.flip());
    EXPECT_EQ(shownPixel(process), 12);
    EXPECT_EQ(pixelAt(window, 7, 5), 12u);
    EXPECT_EQ(pixelAt(back, 7, 5), 11u);
    process.display.setInForeground(false);
    EXPECT_FALSE(window.flip());
    fill(window, 13);
    EXPECT_EQ(shownPixel(process), 12) << "nothing is presented";
    process.display.setInForeground(true);
    EXPECT_TRUE(OMWndCanvas::restore());
    EXPECT_FALSE(OMWndCanvas::restore()) << "only once";
    fill(back, 14);
    window.detachFromFlipChain(back);
    EXPECT_EQ(pixelAt(back, 7, 5), 14u) << "keeps its picture";
    EXPECT_FALSE(window.flip());
    EXPECT_EQ(process.takeMessages(), Messages(2, "OMWndCanvas::flip - flip failed!"));
    OMMemCanvas large(100, 100, 8, OMMemCanvas::Kind::Flippable);
    ASSERT_TRUE(window.attachToFlipChain(large));
    fill(large, 9); // only where the screen is
    EXPECT_TRUE(window.flip());
    EXPECT_EQ(shownPixel(process), 9);
    window.detachFromFlipChain(large);
}

} // namespace
