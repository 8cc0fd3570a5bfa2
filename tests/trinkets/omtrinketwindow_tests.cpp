#include "trinkets/windowfixture.h"

#include <algorithm>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

struct TrinketWindowTest : WindowTest {};

// Order

TEST_F(TrinketWindowTest, TheLaterOfTwoAtTheSameDepthLiesAbove) {
    Tile first(window, {0, 0, 20, 20}, 11);
    Tile second(window, {0, 0, 20, 20}, 12);
    const auto top = [&] { return window.input().hitTest({12, 5}); };
    EXPECT_EQ(top(), &second);
    first.setZ(3);
    EXPECT_EQ(top(), &first);
    second.setZ(3); // joins above those that are there
    EXPECT_EQ(top(), &second);
    first.setTopLayer(0);
    EXPECT_EQ(top(), &first);
    EXPECT_EQ(first.z(), 32765);
    EXPECT_EQ(first.indexInWindow(), 1);
    window.setMinimumDepth(32766);
    EXPECT_EQ(top(), nullptr);
    window.setMinimumDepth(3);
    first.setZ(2);
    EXPECT_EQ(top(), &second);
    second.setTouchy(false);
    EXPECT_EQ(top(), nullptr);
    second.setTouchy(true);
    second.setEventMask(OMTrinket::kIgnoreMouseDown);
    EXPECT_EQ(top(), nullptr);
}

TEST_F(TrinketWindowTest, TheFirstCycleShowsTheWholeWindowAndLaterOnesWhatChanged) {
    Tile moving(window, {10, 10, 20, 20}, 10);
    Tile other(window, {50, 50, 60, 60}, 11);
    EXPECT_EQ(workOfCycle(), (Work{100 * 80, 100 * 80}));
    EXPECT_EQ(workOfCycle(), (Work{0, 0}));
    other.painted = 0;

    moving.place(30, 10); // 10 x 10 there and 10 x 10 here
    EXPECT_EQ(workOfCycle(), (Work{200, 200}));
    moving.offset(2, 0);
    EXPECT_EQ(workOfCycle(), (Work{120, 120}));
    moving.setX(31); // and on, before it was painted there
    moving.setX(33);
    EXPECT_EQ(workOfCycle(), (Work{110, 110}));
    moving.setX(33);
    EXPECT_EQ(workOfCycle(), (Work{0, 0}));
    EXPECT_EQ(other.painted, 0u);

    moving.place(45, 45); // covers a quarter of the other, which is above
    cycle();
    EXPECT_EQ(other.painted, 25u);

    Tile box(window, {10, 10, 20, 20}, 10, OMTrinket::UpdateStyle::Rectangle);
    cycle();
    box.place(30, 10);
    EXPECT_EQ(workOfCycle(), (Work{300, 300})) << "both places and what lies between";
}

TEST_F(TrinketWindowTest, HidingShowingAndDestroyingRepaintWhatWasCovered) {
    Tile below(window, {10, 10, 40, 40}, 10);
    auto above = std::make_unique<Tile>(window, Rect{20, 20, 30, 30}, 11);
    cycle();
    above->setVisible(false);
    EXPECT_EQ(workOfCycle(), (Work{100, 100}));
    EXPECT_EQ(screenPixel(25, 25), 10);
    above->place(22, 20); // unseen
    EXPECT_EQ(workOfCycle(), (Work{0, 0}));
    above->setVisible(true);
    EXPECT_EQ(workOfCycle(), (Work{100, 100}));
    EXPECT_EQ(screenPixel(31, 25), 11);
    above->place(60, 20);
    above.reset(); // leaves where it was last painted, not where it would have gone
    EXPECT_EQ(workOfCycle(), (Work{100, 100}));
    EXPECT_EQ(screenPixel(31, 25), 10);
}

TEST_F(TrinketWindowTest, TrinketsOutsideOfTheWindowCostNothingAndFarPlacesAreLimited) {
    cycle();
    Tile tile(window, {200, 200, 210, 210}, 10);
    EXPECT_EQ(workOfCycle(), (Work{0, 0}));
    Tile placed(window, {0, 0, 10, 10}, 11);
    placed.place(95, 0); // before it was ever seen
    EXPECT_EQ(workOfCycle(), (Work{50, 50}));
    tile.place(95, 75);
    EXPECT_EQ(workOfCycle(), (Work{25, 25}));
    tile.place(2147483647, -2147483647 - 1);
    tile.offset(2147483647, -2147483647 - 1);
    EXPECT_EQ(tile.x(), OMTrinket::kFarthest);
    EXPECT_EQ(tile.y(), -OMTrinket::kFarthest);
    EXPECT_EQ(workOfCycle(), (Work{25, 25}));
}

TEST_F(TrinketWindowTest, WhilePresentingIsOffChangesAreComposedAndShownLater) {
    Tile tile(window, {0, 0, 10, 10}, 10);
    window.setPresenting(false);
    EXPECT_EQ(workOfCycle().shown, 0u);
    EXPECT_EQ(backPixel(5, 5), 10);
    tile.offset(5, 0);
    cycle();
    window.setPresentAlways(true);
    tile.offset(0, 5);
    EXPECT_EQ(workOfCycle().shown, 8000u);
    window.setPresentAlways(false);
    tile.offset(10, 0);
    EXPECT_EQ(workOfCycle().shown, 0u);
    window.setPresenting(true);
    EXPECT_EQ(workOfCycle().shown, 200u);
}

TEST_F(TrinketWindowTest, HooksRunAtTheirPointsOfTheCycle) {
    std::string order;
    const auto note = [&](const char* text) { return [&order, text] { order += text; }; };
    Tile tile(window, {0, 0, 10, 10}, 10);
    tile.onStep = [&](std::uint32_t) { order += "step "; };
    window.hooks().first = note("first ");
    window.hooks().beforeAnimation = note("before ");
    window.hooks().afterAnimation = note("after ");
    window.hooks().beforeTrinkets = note("trinkets ");
    window.hooks().afterTrinkets = note("painted ");
    window.hooks().afterPresent = note("shown ");
    window.hooks().last = note("last");
    cycle();
    EXPECT_EQ(order, "first before step after trinkets painted shown last");
    order.clear();
    cycle();
    EXPECT_EQ(order, "first before step after last");
}

TEST_F(TrinketWindowTest, FramesAreCountedOnceASecondInTheTitle) {
    Tile tile(window, {0, 0, 10, 10}, 10);
    for (int i = 0; i < 1000; ++i) {
        if (i < 40) tile.offset(1, 0);
        cycle();
    }
    EXPECT_EQ(machine.display().title, "Test") << "the last cycle has shown nothing";
    tile.offset(1, 0);
    cycle();
    EXPECT_EQ(machine.display().title, "41");
}

TEST_F(TrinketWindowTest, ANewPaletteBlackensTheWindowOnlyWhenColoursChange) {
    Tile tile(window, {0, 0, 100, 80}, 10);
    OMPalette colors{};
    colors[100] = {0x1200, 0x3400, 0x5600};
    window.setPalette(colors, false);
    cycle();
    ASSERT_EQ(screenPixel(5, 5), 10);
    colors[100] = {0x12FF, 0x3400, 0x5600}; // the same high bytes
    colors[3] = {0x7700, 0, 0};             // not the game's
    window.setPalette(colors, true);
    EXPECT_EQ(screenPixel(5, 5), 10);
    colors[245] = {0x0100, 0x0200, 0};
    window.setPalette(colors, true);
    EXPECT_EQ(screenPixel(5, 5), 0);
    EXPECT_EQ(machine.display().palette()[100], (platform::Rgb{0x12, 0x34, 0x56}));
    EXPECT_EQ(window.backBuffer().getPaletteEntry(245).green(), 0x0200);
    EXPECT_EQ(machine.display().palette()[3], platform::staticPalette()[3]);
}

TEST_F(TrinketWindowTest, TheClockStandsStillForPauses) {
    machine.clock().now = 5000;
    window.resetClock();
    machine.clock().now = 5300;
    EXPECT_EQ(window.clock(), 300u);
    window.addPauseTime(100); // no pause
    EXPECT_EQ(window.clock(), 300u);
    window.beginPause();
    window.addPauseTime(100);
    window.endPause();
    EXPECT_EQ(window.clock(), 200u);
    window.resetClock();
    EXPECT_EQ(window.clock(), 0u);
    std::uint32_t told = 1;
    Tile tile(window, {0, 0, 1, 1}, 10);
    tile.onStep = [&](std::uint32_t clock) { told = clock; };
    machine.clock().now += 7;
    window.idle();
    EXPECT_EQ(told, 7u);
}

TEST_F(TrinketWindowTest, StepsMayDestroyAddAndSortTrinkets) {
    auto victim = std::make_unique<Tile>(window, Rect{0, 0, 10, 10}, 10);
    Tile killer(window, {20, 0, 30, 10}, 11);
    Tile other(window, {20, 0, 30, 10}, 14);
    auto next = std::make_unique<Tile>(window, Rect{40, 0, 50, 10}, 12);
    std::unique_ptr<Tile> born;
    int top = 0;
    int steps = 0;
    killer.onStep = [&](std::uint32_t) {
        victim.reset();
        next.reset();
        if (!born) born = std::make_unique<Tile>(window, Rect{60, 0, 70, 10}, 13);
        if (++steps < 100) killer.setZ(++top); // or it might never end
    };
    other.onStep = [&](std::uint32_t) {
        if (++steps < 100) other.setZ(++top);
    };
    cycle();
    cycle();
    EXPECT_EQ(steps, 4) << "each once a cycle, though they overtake each other";
    EXPECT_EQ(window.trinketCount(), 3u);
    EXPECT_EQ(screenPixel(45, 5), 0);
    EXPECT_EQ(screenPixel(65, 5), 13);
}

TEST(TrinketWindowLife, TrinketsMayOutliveTheirWindow) {
    struct Machine : OMAppTest {
        void TestBody() override {}
    };
    Machine machine;
    auto window = std::make_unique<OMTrinketWindow>(Rect{0, 0, 100, 80}, nullptr, "");
    OMTrinketWindow second({0, 0, 10, 10}, nullptr, "");
    EXPECT_EQ(OMTrinketWindow::mainWindow(), window.get());
    Tile tile(*window, {0, 0, 10, 10}, 10);
    window->input().setFocus(tile);
    window.reset();
    EXPECT_EQ(OMTrinketWindow::mainWindow(), nullptr);
    tile.place(5, 5);
    tile.setZ(3);
    tile.setVisible(false);
    tile.setMouseCapture(true);
    tile.setMouseCapture(false);
    EXPECT_EQ(tile.indexInWindow(), -1);
    EXPECT_FALSE(tile.isShown());
}

} // namespace
