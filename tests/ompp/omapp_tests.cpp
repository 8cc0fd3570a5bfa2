// The main window of an application: where it stands on the screen.
#include "omapp.h"

#include "frameworkfixture.h"

using platform::Rect;
using testing_support::FrameworkTest;

namespace {

using Mode = OMApp::DisplayMode;

class MainWindowTest : public FrameworkTest {
  protected:
    ~MainWindowTest() override { OMApp::useGDI(); }
    Rect covered(Mode mode) {
        machine.display().presented.clear();
        const OMApp app(mode, OMColor(), {10, 20, 110, 70}, 8);
        return machine.display().presented.boundingBox();
    }
};

TEST_F(MainWindowTest, CoversTheDesktopUnlessItIsOverlappedOrOfSurfaces) {
    constexpr Rect kDesktop{0, 0, 640, 480};
    EXPECT_EQ(covered(Mode::Overlapped), (Rect{10, 20, 110, 70}));
    for (const Mode mode : {Mode::Captioned, Mode::PopUp, Mode::PopUpMinimise})
        EXPECT_EQ(covered(mode), kDesktop);
    OMApp::useDirectDraw();
    EXPECT_EQ(covered(Mode::PopUp), (Rect{0, 0, 100, 50})) << "at the upper left";
    EXPECT_EQ(covered(Mode::Captioned), kDesktop);
    EXPECT_EQ(covered(Mode::FullScreen), (Rect{0, 0, 100, 50})) << "which is the screen then";
    EXPECT_EQ(takeFailures(), std::vector<std::string>{});
}

} // namespace
