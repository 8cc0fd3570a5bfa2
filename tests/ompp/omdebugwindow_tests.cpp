// The debug window: its lines, its size, its coming and going.
#include "frameworkfixture.h"

#include "omdebugwindow.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLine = 20;        // height of a line in memory
constexpr int kFullHeight = 400; // of the window when it is opened

class OMDebugWindowTest : public testing_support::OMAppTest {
  protected:
    testing_support::MemoryTextWindows::Window& native() { return *machine.textWindows.window; }
    void showNumbered(int count) {
        for (int i = 0; i < count; ++i) window.show(std::to_string(i));
    }
    OMDebugWindow window;
};

TEST_F(OMDebugWindowTest, OpensWithTheFirstLineAndAnewWhenItWasClosed) {
    window.move(7, 8);
    machine.textWindows.refused = true;
    window.show("lost");
    machine.textWindows.refused = false;
    EXPECT_EQ(window.position(), platform::Rect{}) << "not open yet";

    window.showText("if\nx>5 is true\n\n[interrupt]");
    window.showText("jumping\n");
    window.showText("");
    EXPECT_EQ(machine.textWindows.request.className, "OMDebugWindow");
    EXPECT_EQ(machine.textWindows.request.title, "OMDebug");
    EXPECT_THAT(native().shown, ElementsAre("if", "x>5 is true", "", "[interrupt]", "jumping"));
    EXPECT_EQ(native().fresh, 1u);
    EXPECT_EQ(native().paints, 5) << "each line is seen at once";
    EXPECT_EQ(window.position(), (platform::Rect{50, 50, 350, 450}));
    window.move(-10, 20);
    EXPECT_EQ(window.position(), (platform::Rect{-10, 20, 290, 420}));

    window.destroy();
    window.destroy();
    window.show("new");
    EXPECT_THAT(native().shown, ElementsAre("new"));
    native().owner.closed();
    EXPECT_EQ(machine.textWindows.window, nullptr);
    window.show("newest");
    EXPECT_THAT(native().shown, ElementsAre("newest"));
}

TEST_F(OMDebugWindowTest, KeepsTheNewestLinesThatItHasRoomFor) {
    showNumbered(kFullHeight / kLine);
    EXPECT_EQ(native().shown.front(), "0");
    window.show("next");
    EXPECT_EQ(native().shown.front(), "1");
    EXPECT_EQ(native().shown.back(), "next");

    native().resize(3 * kLine + kLine - 1);
    EXPECT_THAT(native().shown, ElementsAre("18", "19", "next"));
    EXPECT_EQ(native().fresh, 0u) << "lines that stayed are not new";
    native().resize(kFullHeight);
    window.show("5");
    EXPECT_THAT(native().shown, ElementsAre("18", "19", "next", "5")) << "what was dropped is gone";
    native().resize(kLine - 1);
    window.show("no room");
    EXPECT_THAT(native().shown, IsEmpty());
    native().resize(kLine);
    showNumbered(2);
    EXPECT_THAT(native().shown, ElementsAre("1"));
}

TEST_F(OMDebugWindowTest, AMinimisedWindowDrawsNothing) {
    window.show("before");
    native().minimised = true;
    window.show("meanwhile");
    native().owner.damaged();
    EXPECT_EQ(native().paints, 1);
    native().minimised = false;
    native().owner.damaged();
    EXPECT_THAT(native().shown, ElementsAre("before", "meanwhile"));
}

TEST_F(OMDebugWindowTest, NeedsAnApplicationToOpen) {
    window.show("with an application");
    app.reset();
    window.show("it is open already");
    EXPECT_THAT(native().shown, ElementsAre("with an application", "it is open already"));
    window.destroy();
    EXPECT_EXIT(window.show("text"), testing::ExitedWithCode(255),
                "OMDebugWindowCreate - must have an OMApp instance before using OMDebugWindow!");
}

} // namespace
