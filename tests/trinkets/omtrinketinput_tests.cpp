// Mouse, keys and dragging in a trinket window.
#include "trinkets/windowfixture.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;
using MouseState = OMTrinket::MouseState;

namespace {

struct InputTest : WindowTest {
    void click(Point at) {
        window.mouseDown(at);
        window.mouseUp(at);
    }
};

// Mouse

struct MouseTest : InputTest {
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
    EXPECT_EQ(tile->mouseState(), MouseState::Idle) << "it is held no longer";
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

TEST_F(InputTest, KeysGoToTheFocusElseToTheDefault) {
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

struct DragTest : InputTest {
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
