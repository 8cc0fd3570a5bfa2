// The debug window: its lines, its size, its coming and going.
#include "frameworkfixture.h"

#include "omapp.h"
#include "omdebugwindow.h"

#include <gmock/gmock.h>
#include <optional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::MemoryTextWindows;

constexpr int kLine = 20;        // height of a line in memory
constexpr int kFullHeight = 400; // of the window when it is opened
constexpr int kFullLines = kFullHeight / kLine;

class OMDebugWindowTest : public testing_support::FrameworkTest {
  protected:
    OMDebugWindowTest() {
        app.emplace(OMApp::DisplayMode::PopUp, OMColor(), platform::Rect{0, 0, 640, 480}, 8);
    }

    MemoryTextWindows::Window& native() { return *machine.textWindows.window; }
    void showNumbered(int count) {
        for (int i = 0; i < count; ++i) window.show(std::to_string(i));
    }

    std::optional<OMApp> app;
    OMDebugWindow window;
};

TEST_F(OMDebugWindowTest, OpensWithTheFirstLine) {
    EXPECT_EQ(window.position(), platform::Rect{});
    window.move(7, 8);
    EXPECT_EQ(machine.textWindows.opened, 0) << "a question or a move opens nothing";

    window.show("one");
    window.show("");
    EXPECT_EQ(machine.textWindows.opened, 1);
    EXPECT_EQ(machine.textWindows.request.className, "OMDebugWindow");
    EXPECT_EQ(machine.textWindows.request.title, "OMDebug");
    EXPECT_EQ(window.position(), (platform::Rect{50, 50, 350, 450}));
    EXPECT_THAT(native().shown, ElementsAre("one", ""));
    EXPECT_EQ(native().fresh, 1u);
    EXPECT_EQ(native().paints, 2) << "each line is seen at once";
}

TEST_F(OMDebugWindowTest, TextsAreCutAtLineBreaks) {
    window.showText("if\nx>5 is true\n\n[interrupt]");
    window.showText("jumping\n");
    window.showText("");
    EXPECT_THAT(window.lines(), ElementsAre("if", "x>5 is true", "", "[interrupt]", "jumping"));
}

TEST_F(OMDebugWindowTest, AFullWindowDropsItsOldestLine) {
    showNumbered(kFullLines);
    EXPECT_EQ(native().shown.front(), "0");
    window.show("next");
    EXPECT_EQ(native().shown.size(), std::size_t{kFullLines});
    EXPECT_EQ(native().shown.front(), "1");
    EXPECT_EQ(native().shown.back(), "next");
}

TEST_F(OMDebugWindowTest, ASmallerWindowKeepsTheNewestLines) {
    showNumbered(5);
    native().resize(3 * kLine + kLine - 1);
    EXPECT_THAT(native().shown, ElementsAre("2", "3", "4"));
    EXPECT_EQ(native().fresh, 0u) << "lines that stayed are not new";

    native().resize(kFullHeight);
    EXPECT_THAT(native().shown, ElementsAre("2", "3", "4")) << "what was dropped is gone";
    window.show("5");
    EXPECT_THAT(native().shown, ElementsAre("2", "3", "4", "5"));

    native().resize(kLine - 1);
    EXPECT_THAT(native().shown, IsEmpty());
    window.show("no room");
    EXPECT_THAT(native().shown, IsEmpty());
    EXPECT_EQ(native().fresh, 0u);
    native().resize(kLine);
    window.show("room for one");
    window.show("and another");
    EXPECT_THAT(native().shown, ElementsAre("and another"));
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

TEST_F(OMDebugWindowTest, MovesWithItsSize) {
    window.show("line");
    window.move(-10, 20);
    EXPECT_EQ(window.position(), (platform::Rect{-10, 20, 290, 420}));
}

TEST_F(OMDebugWindowTest, DestroyedOrClosedItIsOpenedAnewAndEmpty) {
    window.show("old");
    window.destroy();
    EXPECT_EQ(machine.textWindows.window, nullptr);
    EXPECT_EQ(window.position(), platform::Rect{});
    window.destroy();

    window.show("new");
    EXPECT_THAT(native().shown, ElementsAre("new"));
    native().owner.closed();
    EXPECT_EQ(machine.textWindows.window, nullptr);
    window.show("newest");
    EXPECT_THAT(native().shown, ElementsAre("newest"));
    EXPECT_EQ(machine.textWindows.opened, 3);
}

TEST_F(OMDebugWindowTest, LinesAreLostWhereThereCanBeNoWindow) {
    machine.textWindows.refused = true;
    window.show("lost");
    EXPECT_THAT(window.lines(), IsEmpty());
    machine.textWindows.refused = false;
    window.show("seen");
    EXPECT_THAT(native().shown, ElementsAre("seen"));
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
