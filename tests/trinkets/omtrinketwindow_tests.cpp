#include "trinkets/windowfixture.h"

#include <algorithm>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Attribute = OMTrinket::Attribute;
using MouseState = OMTrinket::MouseState;

namespace {

struct TrinketWindowTest : WindowTest {
    void click(Point at) {
        window.mouseDown(at);
        window.mouseUp(at);
    }
};

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

// Mouse

struct MouseTest : TrinketWindowTest {
    MouseTest() {
        for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"})
            tile->attachHandler(event, [this, event] { note(event); });
        window.defaults().mouseDown = [this](Point) { note("default down"); };
        window.defaults().mouseUp = [this](Point) { note("default up"); };
        window.defaults().mouseMove = [this](Point) { note("default move"); };
        window.defaults().doubleClick = [this](Point) { note("default double"); };
    }
    void note(const std::string& text) { heard.push_back(text); }
    std::vector<std::string> take() { return std::exchange(heard, {}); }
    using Texts = std::vector<std::string>;

    std::unique_ptr<Tile> tile = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
    Texts heard;
};

TEST_F(MouseTest, AMovableTrinketIsHeldDraggedAndDropped) {
    tile->setCursors(-3, -4);
    window.mouseMove({15, 15});
    EXPECT_EQ(machine.display().cursor, -3);
    window.mouseDown({15, 15});
    EXPECT_EQ(machine.display().cursor, -4);
    EXPECT_EQ(tile->mouseState(), MouseState::Held);
    window.mouseMove({18, 14});
    EXPECT_EQ(tile->boundingRectangle(), (Rect{13, 9, 23, 19}));
    window.mouseUp({18, 14});
    EXPECT_EQ(machine.display().cursor, -3);
    EXPECT_EQ(tile->mouseState(), MouseState::Idle);
    window.mouseMove({50, 50});
    EXPECT_EQ(machine.display().cursor, OMTrinket::defaultCursor);
    EXPECT_EQ(tile->x(), 13);
    EXPECT_EQ(take(),
              (Texts{"default move", "flyOn", "mouseDown", "mouseUp", "default move", "flyOff"}));
}

TEST_F(MouseTest, AnImmovableTrinketGetsTheReleaseOnlyWhenItCapturedTheMouse) {
    tile->setMovable(false);
    click({15, 15});
    EXPECT_EQ(take(), (Texts{"mouseDown", "default up", "flyOn"}));

    tile->links().mouseDown = [&](Point) { tile->setMouseCapture(true); };
    window.mouseDown({15, 15});
    window.mouseMove({50, 50});
    EXPECT_EQ(tile->x(), 10);
    window.mouseUp({50, 50});
    EXPECT_EQ(tile->mouseState(), MouseState::Captured); // until it lets go
    EXPECT_EQ(take(), (Texts{"mouseDown", "mouseUp"}));
    tile->setMouseCapture(false);
    EXPECT_EQ(window.mouseTarget(), nullptr);
    window.mouseMove({51, 51});
    EXPECT_EQ(take(), (Texts{"default move", "flyOff"}));
}

TEST_F(MouseTest, TheFlyOverGoesOnDuringACaptureThatAsksForIt) {
    Tile other(window, {50, 50, 60, 60}, 11);
    std::string flown;
    other.links().flyOn = [&] { flown += "on "; };
    other.links().flyOff = [&] { flown += "off "; };
    for (const bool flying : {false, true}) {
        tile->setMovable(false);
        tile->setMouseCapture(true, flying);
        window.mouseMove({55, 55});
        window.mouseMove({5, 5});
        tile->setMouseCapture(false);
        EXPECT_EQ(flown, flying ? "on off " : "");
    }
}

TEST_F(MouseTest, MasksSilenceWhatTheyName) {
    tile->setEventMask(OMTrinket::kNoFlyOn | OMTrinket::kNoFlyOff | OMTrinket::kIgnoreDoubleClick |
                       OMTrinket::kIgnoreMouseMove);
    window.mouseMove({15, 15});
    EXPECT_EQ(window.flyOverTrinket(), tile.get());
    window.doubleClick({15, 15});
    EXPECT_EQ(window.mouseTarget(), nullptr);
    window.mouseDown({15, 15});
    window.mouseMove({18, 18});
    EXPECT_EQ(tile->x(), 10);
    tile->setEventMask(OMTrinket::kIgnoreMouseUp);
    window.mouseUp({18, 18});
    EXPECT_EQ(window.mouseTarget(), nullptr); // no button holds it any more
    EXPECT_EQ(take(),
              (Texts{"default move", "default double", "mouseDown", "default move", "default up"}));
    window.setDefaultEventMask(OMTrinket::kIgnoreKeys);
    EXPECT_EQ(Tile(window, {0, 0, 1, 1}, 1).eventMask(), OMTrinket::kIgnoreKeys);
}

TEST_F(MouseTest, TheBackgroundHearsWhatNoTrinketTakesUnlessItIsDeaf) {
    struct Plain : OMTBackground {
        OMRegion paint(OMMemCanvas&, const OMRegion&) override { return {}; }
    };
    window.setBackground(std::make_unique<Plain>());
    OMTBackground& background = *window.background();
    const auto all = [&] {
        click({50, 50});
        window.mouseMove({51, 51});
        window.doubleClick({51, 51});
        return take();
    };
    const Texts defaults{"default down", "default up", "default move", "default double"};
    EXPECT_EQ(all(), defaults);
    background.mouseDown = [&](Point) { note("down"); };
    background.mouseUp = [&](Point) { note("up"); };
    background.mouseMove = [&](Point) { note("move"); };
    background.doubleClick = [&](Point) { note("double"); };
    EXPECT_EQ(all(), (Texts{"down", "up", "move", "double"}));
    window.mouseDown({150, 50}); // outside of the window
    EXPECT_EQ(take(), (Texts{"default down"}));
    background.setEventMask(OMTBackground::kIgnoreMouseDown | OMTBackground::kIgnoreMouseUp |
                            OMTBackground::kIgnoreMouseMove | OMTBackground::kIgnoreDoubleClick);
    EXPECT_EQ(all(), defaults);
}

TEST_F(MouseTest, DisabledInputReachesNobodyAndTheHookIsToldOfTheRest) {
    std::string kinds;
    window.hooks().input = [&](OMTrinketWindow::Input kind) {
        kinds += std::to_string(static_cast<int>(kind));
    };
    const auto all = [&] {
        click({15, 15});
        window.mouseMove({15, 15});
        window.doubleClick({15, 15});
        window.key({});
    };
    window.setInputDisabled(true);
    all();
    EXPECT_EQ(kinds, "");
    EXPECT_EQ(take(), Texts{});
    window.setInputDisabled(false);
    all();
    EXPECT_EQ(kinds, "12340");
}

TEST_F(MouseTest, HandlersMayDestroyTheirTrinketAnywhere) {
    using Arm = std::function<void(OMTrinket::Links&, std::function<void()>)>;
    const auto mouse = [](OMTrinket::MouseLink OMTrinket::Links::*link) {
        return Arm([link](OMTrinket::Links& links, std::function<void()> kill) {
            links.*link = [kill](Point) { kill(); };
        });
    };
    const Arm arms[] = {
        mouse(&OMTrinket::Links::mouseDown),
        mouse(&OMTrinket::Links::mouseUp),
        mouse(&OMTrinket::Links::mouseMove),
        mouse(&OMTrinket::Links::doubleClick),
        mouse(&OMTrinket::Links::beginDrag),
        mouse(&OMTrinket::Links::drop),
        [](OMTrinket::Links& links, std::function<void()> kill) { links.flyOn = kill; },
        [](OMTrinket::Links& links, std::function<void()> kill) { links.flyOff = kill; },
        [](OMTrinket::Links& links, std::function<void()> kill) {
            links.drag = [kill](int, int) { kill(); };
        },
    };
    const auto everything = [&] {
        window.mouseMove({15, 15});
        window.doubleClick({15, 15});
        window.mouseDown({15, 15});
        window.mouseMove({16, 16});
        window.mouseUp({16, 16});
        window.mouseMove({70, 70});
        cycle();
    };
    for (const Arm& arm : arms) {
        tile = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
        arm(tile->links(), [&] { tile.reset(); });
        everything();
        EXPECT_EQ(tile, nullptr);
        EXPECT_EQ(window.mouseTarget(), nullptr);
        EXPECT_EQ(window.flyOverTrinket(), nullptr);
        EXPECT_EQ(screenPixel(15, 15), 0);
    }
    for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"}) {
        tile = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
        tile->attachHandler(event, [&] { tile.reset(); });
        everything();
        EXPECT_EQ(tile, nullptr) << event;
        EXPECT_EQ(window.mouseTarget(), nullptr) << event;
    }
}

TEST_F(MouseTest, HandlersMayDestroyAllThatIsAroundThem) {
    struct Plain : OMTBackground {
        OMRegion paint(OMMemCanvas&, const OMRegion& dirty) override { return dirty; }
    };
    std::unique_ptr<Tile> below; // hit when the tile is gone
    std::unique_ptr<Tile> beside;
    std::unique_ptr<Tile> late;
    const std::pair<const char*, std::function<void()>> deeds[] = {
        {"the one under the pointer", [&] { below.reset(); }},
        {"its neighbour", [&] { beside.reset(); }},
        {"all", [&] { below.reset(), beside.reset(), tile.reset(), late.reset(); }},
        {"the scene",
         [&] {
             below.reset(), beside.reset(), tile.reset(), late.reset();
             window.setBackground(std::make_unique<Plain>());
             late = std::make_unique<Tile>(window, Rect{5, 5, 60, 60}, 14);
         }},
        {"nothing, but hides all",
         [&] {
             for (const auto& one : {&below, &beside, &tile})
                 if (*one) (*one)->setVisible(false);
         }},
        {"nothing, but takes the mouse",
         [&] {
             if (beside) beside->setMouseCapture(true);
         }},
    };
    for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"}) {
        for (const auto& [what, deed] : deeds) {
            late.reset();
            window.setBackground(std::make_unique<Plain>());
            window.background()->mouseUp = [&](Point) { beside.reset(); };
            below = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 11);
            beside = std::make_unique<Tile>(window, Rect{20, 10, 30, 20}, 12);
            tile = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
            int calls = 0;
            tile->attachHandler(event, [&calls, &act = deed] { ++calls, act(); });
            window.mouseMove({15, 15});
            window.doubleClick({15, 15});
            window.mouseUp({15, 15});
            window.mouseDown({15, 15});
            window.mouseMove({16, 16});
            window.mouseUp({16, 16});
            window.mouseMove({25, 15});
            window.mouseMove({70, 70});
            cycle();
            EXPECT_GE(calls, 1) << event << ": " << what;
            const OMTrinket* target = window.mouseTarget();
            EXPECT_TRUE(!target || target == beside.get()) << event << ": " << what;
            if (beside) beside->setMouseCapture(false);
        }
    }
    for (auto* one : {&below, &beside, &tile, &late}) one->reset();
    EXPECT_EQ(window.trinketCount(), 0u);
    EXPECT_EQ(window.mouseTarget(), nullptr);
    EXPECT_EQ(window.flyOverTrinket(), nullptr);
}

TEST_F(MouseTest, ACaptureTakesTheMouseFromWhoeverHasItAndGivesItBackOnce) {
    Tile other(window, {50, 50, 60, 60}, 11);
    window.mouseDown({15, 15});
    other.setMouseCapture(true);
    window.mouseMove({18, 15});
    EXPECT_EQ(tile->x(), 10);
    EXPECT_EQ(other.x(), 53) << "a captured one that is movable follows";
    tile->setMouseCapture(false); // is not the target
    EXPECT_EQ(window.mouseTarget(), &other);
    other.setMouseCapture(false);
    window.mouseUp({18, 15});
    EXPECT_EQ(window.mouseTarget(), nullptr);
    EXPECT_EQ(take(), (Texts{"mouseDown", "default up", "flyOn"}));
    window.mouseDown({15, 15}); // and the next press is a new one
    window.mouseMove({16, 15});
    EXPECT_EQ(tile->x(), 11);
}

TEST_F(MouseTest, LeavingOneTrinketMayDestroyTheNext) {
    auto next = std::make_unique<Tile>(window, Rect{50, 50, 60, 60}, 11);
    window.mouseMove({15, 15});
    tile->links().flyOff = [&] { next.reset(); };
    window.mouseMove({55, 55});
    EXPECT_EQ(window.flyOverTrinket(), nullptr);
}

TEST_F(MouseTest, APressThatHandsTheMouseOnDragsNothing) {
    Tile other(window, {50, 50, 60, 60}, 11);
    tile->links().mouseDown = [&](Point) { other.setMouseCapture(true); };
    window.mouseDown({15, 15});
    EXPECT_EQ(tile->mouseState(), MouseState::Idle);
    EXPECT_EQ(window.mouseTarget(), &other);
}

// Keys

TEST_F(TrinketWindowTest, KeysGoToTheFocusElseToTheDefault) {
    std::string heard;
    auto tile = std::make_unique<Tile>(window, Rect{0, 0, 10, 10}, 10);
    Tile other(window, {0, 0, 10, 10}, 11);
    tile->links().key = [&](const platform::KeyPress& press) {
        heard += static_cast<char>(press.code);
    };
    tile->links().focusLost = [&] { heard += "lost "; };
    window.defaults().key = [&](const platform::KeyPress&) { heard += "default "; };
    window.key({'a'});
    window.setFocus(*tile);
    EXPECT_TRUE(window.isFocus(*tile));
    window.key({'b'});
    tile->setEventMask(OMTrinket::kIgnoreKeys);
    window.key({'c'});
    window.setFocus(other);
    EXPECT_EQ(heard, "default bdefault lost ");
    window.setFocus(*tile);
    tile.reset();
    EXPECT_EQ(window.focus(), nullptr);
}

// Dragging

struct DragTest : TrinketWindowTest {
    DragTest() { tile.setCorral({10, 10, 60, 60}); }
    Tile tile{window, {20, 20, 30, 30}, 10};
};

TEST_F(DragTest, BeyondTheCorralATrinketWaitsForThePointerToComeBack) {
    struct Step {
        Point pointer;
        Point expected;
    };
    const Step steps[] = {
        {{65, 25}, {50, 20}},                       // 10 pixels too far
        {{56, 25}, {50, 20}},                       // back, but not enough
        {{55, 25}, {50, 20}},                       // now the virtual place fits
        {{54, 25}, {49, 20}}, {{-5, -5}, {10, 10}}, // both axes at once
        {{25, 10}, {20, 10}}, {{25, 15}, {20, 10}}, {{25, 16}, {20, 11}},
    };
    window.mouseDown({25, 25});
    for (const Step& step : steps) {
        window.mouseMove(step.pointer);
        EXPECT_EQ((Point{tile.x(), tile.y()}), step.expected)
            << step.pointer.x << " " << step.pointer.y;
    }
    window.mouseMove({25, 5});
    window.mouseUp({25, 5}); // forgets what is owed
    window.mouseDown({25, 15});
    window.mouseMove({25, 16});
    EXPECT_EQ(tile.y(), 11);
}

TEST_F(DragTest, InACorralThatIsTooSmallATrinketStandsAtItsStart) {
    tile.setCorral({10, 10, 15, 60});
    window.mouseDown({25, 25});
    for (const int x : {26, 90, 12, -40, 25}) {
        window.mouseMove({x, 30});
        EXPECT_EQ((Point{tile.x(), tile.y()}), (Point{10, 25})) << x;
    }
}

TEST_F(DragTest, WithoutCorralTrinketsGoAnywhere) {
    window.mouseDown({25, 25});
    tile.setCorralled(false);
    window.mouseMove({95, 25});
    EXPECT_EQ(tile.x(), 90);
    tile.setCorralled(true);
    OMTrinket::setCorralNormalization(false);
    window.mouseMove({5, 25});
    OMTrinket::setCorralNormalization(true);
    EXPECT_EQ(tile.x(), 0);
}

TEST_F(DragTest, TheOwnerIsToldHowFarItReallyMoved) {
    std::vector<Point> moves;
    tile.links().drag = [&](int dx, int dy) { moves.push_back({dx, dy}); };
    window.mouseDown({25, 25});
    window.mouseMove({65, 26});
    EXPECT_EQ(moves, (std::vector<Point>{{30, 1}}));
}

TEST_F(DragTest, DropsSnapToTheNearestLineOfTheGrid) {
    struct Row {
        int x;
        OMTrinket::SnapGrid grid;
        int expected;
    };
    const Row rows[] = {
        {24, {10, 0, {0, 0}}, 20},   {26, {10, 0, {0, 0}}, 30},
        {25, {10, 0, {0, 0}}, 20}, // half-way: the lower one
        {25, {10, 0, {3, 0}}, 23},   {-15, {10, 0, {0, 0}}, -20},
        {-14, {10, 0, {0, 0}}, -10}, {25, {-10, 0, {0, 0}}, 20},
        {25, {0, 7, {0, 0}}, 25},
    };
    for (const Row& row : rows) {
        tile.place(row.x, 21);
        tile.setSnapGrid(row.grid);
        tile.onDrop({});
        EXPECT_EQ(tile.x(), row.expected) << row.x;
        EXPECT_EQ(tile.y(), 21) << row.x;
    }
}

TEST_F(DragTest, DropsSnapOnlyWhereTheDragBoundsAreMet) {
    tile.setSnapGrid({10, 10, {0, 0}});
    tile.place(23, 23);
    tile.setDragBounds({50, 50, 60, 60});
    tile.onDrop({});
    EXPECT_EQ(tile.x(), 23);
    tile.offset(-3, 0); // the bounds go along
    EXPECT_EQ(tile.dragBounds(), (Rect{47, 50, 57, 60}));
    tile.setDragBounds({29, 29, 31, 31});
    tile.onDrop({});
    EXPECT_EQ((Point{tile.x(), tile.y()}), (Point{20, 20}));
    tile.place(23, 23);
    tile.setMovable(false);
    tile.onDrop({});
    EXPECT_EQ(tile.x(), 23);
}

} // namespace
