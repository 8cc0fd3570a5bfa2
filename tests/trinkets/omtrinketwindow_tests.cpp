#include "trinkets/windowfixture.h"

#include <algorithm>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Attribute = OMTrinket::Attribute;

namespace {

struct TrinketWindowTest : WindowTest {};

// Order

TEST_F(TrinketWindowTest, LargerDepthsLieAboveAndAmongEqualOnesTheLaterTrinket) {
    Tile low(window, {0, 0, 20, 20}, 10);
    Tile first(window, {5, 0, 20, 20}, 11);
    Tile second(window, {10, 0, 20, 20}, 12);
    low.setZ(-5);
    cycle();
    EXPECT_EQ(screenPixel(2, 5), 10);
    EXPECT_EQ(screenPixel(7, 5), 11);
    EXPECT_EQ(screenPixel(12, 5), 12);
    EXPECT_EQ(window.hitTest({12, 5}), &second);

    first.setZ(3);
    cycle();
    EXPECT_EQ(screenPixel(12, 5), 11);
    EXPECT_EQ(window.hitTest({12, 5}), &first);
    second.setZ(3); // joins above those that are there
    cycle();
    EXPECT_EQ(screenPixel(12, 5), 12);
    low.setTopLayer(0);
    cycle();
    EXPECT_EQ(low.z(), 32765);
    EXPECT_EQ(screenPixel(12, 5), 10);
    EXPECT_EQ(low.indexInWindow(), 2);
}

TEST_F(TrinketWindowTest, WhatLiesBelowTheMinimumDepthIsNeitherDrawnNorHit) {
    Tile tile(window, {0, 0, 10, 10}, 10);
    tile.setZ(-32767);
    cycle();
    EXPECT_EQ(screenPixel(5, 5), 10);
    EXPECT_EQ(window.hitTest({5, 5}), &tile);
    tile.setZ(-32768);
    cycle();
    EXPECT_EQ(screenPixel(5, 5), 0);
    EXPECT_EQ(window.hitTest({5, 5}), nullptr);
    tile.setZ(50);
    window.setMinimumDepth(51);
    cycle();
    EXPECT_EQ(screenPixel(5, 5), 0);
    window.setMinimumDepth(50);
    cycle();
    EXPECT_EQ(screenPixel(5, 5), 10);
}

TEST_F(TrinketWindowTest, OnlyVisibleTouchyTrinketsThatHearTheMouseAreHit) {
    Tile below(window, {0, 0, 10, 10}, 10);
    Tile above(window, {0, 0, 10, 10}, 11);
    const auto hit = [&] { return window.hitTest({0, 9}); };
    EXPECT_EQ(hit(), &above);
    above.setTouchy(false);
    EXPECT_EQ(hit(), &below);
    above.setTouchy(true);
    above.setVisible(false);
    EXPECT_EQ(hit(), &below);
    above.setVisible(true);
    above.setEventMask(OMTrinket::kIgnoreMouseDown);
    EXPECT_EQ(hit(), &below);
    EXPECT_EQ(window.hitTest({10, 9}), nullptr);
}

// Redrawing

TEST_F(TrinketWindowTest, TheFirstCycleShowsTheWholeWindowAndLaterOnesWhatChanged) {
    Tile moving(window, {10, 10, 20, 20}, 10);
    Tile other(window, {50, 50, 60, 60}, 11);
    EXPECT_EQ(workOfCycle(), (Work{100 * 80, 100 * 80}));
    EXPECT_EQ(workOfCycle(), (Work{0, 0}));
    other.painted = 0;

    moving.place(30, 10); // 10 x 10 there and 10 x 10 here
    EXPECT_EQ(workOfCycle(), (Work{200, 200}));
    EXPECT_EQ(screenPixel(15, 15), 0);
    EXPECT_EQ(screenPixel(35, 15), 10);
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
    EXPECT_EQ(screenPixel(52, 52), 11);
}

TEST_F(TrinketWindowTest, ARectangleStyleTrinketRepaintsTheBoxOfItsOldAndNewPlace) {
    Tile tile(window, {10, 10, 20, 20}, 10, OMTrinket::UpdateStyle::Rectangle);
    cycle();
    tile.place(30, 10);
    EXPECT_EQ(workOfCycle(), (Work{300, 300}));
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

TEST_F(TrinketWindowTest, TheBackgroundPaintsUnderAllAndMayAskForMore) {
    struct Striped : OMTBackground {
        OMRegion paint(OMMemCanvas& canvas, const OMRegion& dirty) override {
            OMRegion rows(Rect{0, dirty.boundingBox().top, 100, dirty.boundingBox().bottom});
            canvas.setColor(OMColor(20));
            canvas.fillRegion(rows);
            return rows;
        }
    };
    Tile left(window, {0, 0, 10, 10}, 10);
    Tile right(window, {90, 0, 100, 10}, 11);
    window.setBackground(std::make_unique<Striped>());
    cycle();
    left.painted = right.painted = 0;
    left.offset(0, 1);
    EXPECT_EQ(workOfCycle(), (Work{1100, 1100}));
    EXPECT_EQ(right.painted, 100u); // the background had painted over it
    EXPECT_EQ(screenPixel(50, 0), 20);
    window.setBackgroundPainting(false);
    left.offset(20, 0);
    cycle();
    EXPECT_EQ(screenPixel(5, 5), 10); // nobody cleared it
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
    EXPECT_EQ(machine.display().title, "Test");
    Tile tile(window, {0, 0, 10, 10}, 10);
    for (int i = 0; i < 999; ++i) {
        if (i < 40) tile.offset(1, 0);
        cycle();
    }
    EXPECT_EQ(machine.display().title, "Test");
    cycle(); // shows nothing
    EXPECT_EQ(machine.display().title, "Test");
    tile.offset(1, 0);
    cycle();
    EXPECT_EQ(machine.display().title, "41");
}

TEST_F(TrinketWindowTest, TheFlashColoursWhatIsShownAndWaits) {
    Tile tile(window, {0, 0, 10, 10}, 10);
    cycle();
    window.setFlashDelay(10);
    tile.offset(5, 0);
    const std::uint32_t before = machine.clock().now;
    EXPECT_EQ(workOfCycle().shown, 300u); // 150 in the marker colour and again as they are
    EXPECT_EQ(machine.clock().now, before + 11);
    EXPECT_EQ(screenPixel(12, 5), 10);
    EXPECT_EQ(screenPixel(2, 5), 0);
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
    auto next = std::make_unique<Tile>(window, Rect{40, 0, 50, 10}, 12);
    std::unique_ptr<Tile> born;
    killer.onStep = [&](std::uint32_t) {
        victim.reset();
        next.reset();
        if (!born) born = std::make_unique<Tile>(window, Rect{60, 0, 70, 10}, 13);
        killer.setZ(killer.z() + 1);
    };
    cycle();
    cycle();
    EXPECT_EQ(window.trinketCount(), 2u);
    EXPECT_EQ(screenPixel(45, 5), 0);
    EXPECT_EQ(screenPixel(65, 5), 13);
}

TEST_F(TrinketWindowTest, TrinketsThatOvertakeEachOtherStepOnceACycle) {
    Tile first(window, {0, 0, 10, 10}, 10);
    Tile second(window, {20, 0, 30, 10}, 11);
    int top = 0;
    int steps = 0;
    for (Tile* tile : {&first, &second})
        tile->onStep = [&, tile](std::uint32_t) {
            if (++steps > 100) return; // or it would never end
            tile->setZ(++top);
        };
    cycle();
    EXPECT_EQ(steps, 2);
    cycle();
    EXPECT_EQ(steps, 4);
}

TEST(TrinketWindowLife, TrinketsMayOutliveTheirWindow) {
    struct Machine : ApplicationTest {
        void TestBody() override {}
    };
    Machine machine;
    auto window = std::make_unique<OMTrinketWindow>(Rect{0, 0, 100, 80}, nullptr, "");
    OMTrinketWindow second({0, 0, 10, 10}, nullptr, "");
    EXPECT_EQ(OMTrinketWindow::mainWindow(), window.get());
    Tile tile(*window, {0, 0, 10, 10}, 10);
    window->setFocus(tile);
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

TEST(TrinketWindowDeathTest, NeedsAnApplication) {
    EXPECT_DEATH(
        {
            MemoryPlatform machine;
            OMSetPlatform(&machine);
            OMTrinketWindow window({0, 0, 10, 10}, nullptr, "");
        },
        "OMApp::usingDirectDraw - must have an OMApp instance first!");
}

// Scripts

TEST_F(TrinketWindowTest, ScriptsReadAndWriteTheCommonVocabulary) {
    Tile tile(window, {1, 2, 11, 12}, 10);
    EXPECT_TRUE(tile.invoke("place", {"7", "8"}));
    EXPECT_TRUE(tile.invoke("offset", {"1", "-2"}));
    EXPECT_EQ(tile.getProperty("x"), "8");
    EXPECT_EQ(tile.getProperty("y"), "6");
    const std::pair<const char*, const char*> written[] = {
        {"x", "20"},      {"y", "30"},     {"z", "-4"},         {"visible", "0"},
        {"movable", "0"}, {"touchy", "0"}, {"tag", "any text"},
    };
    for (const auto& [name, value] : written) {
        EXPECT_TRUE(tile.setProperty(name, value)) << name;
        EXPECT_EQ(tile.getProperty(name), value) << name;
    }
    for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"})
        EXPECT_TRUE(tile.attachHandler(event, [] {})) << event;
}

} // namespace
