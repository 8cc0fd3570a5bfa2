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

struct PlainBackground : OMTBackground {
    OMRegion paint(OMMemCanvas&, const OMRegion& dirty) override { return dirty; }
};

// Mouse

struct MouseTest : InputTest {
    MouseTest() {
        for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"})
            tile->attachHandler(event, [this, event] { note(event); });
        window.input().defaults().mouseDown = [this](Point) { note("default down"); };
        window.input().defaults().mouseUp = [this](Point) { note("default up"); };
        window.input().defaults().mouseMove = [this](Point) { note("default move"); };
        window.input().defaults().doubleClick = [this](Point) { note("default double"); };
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
    tile->setMouseCapture(false, true);
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    window.mouseMove({51, 51});
    EXPECT_EQ(take(), (Texts{"default move", "flyOff"}));
    tile->setMouseCapture(true, true); // and the fly-over goes on
    window.mouseMove({15, 15});
    EXPECT_EQ(take(), Texts{"flyOn"});
}

TEST_F(MouseTest, MasksSilenceWhatTheyName) {
    tile->setEventMask(OMTrinket::kNoFlyOn | OMTrinket::kNoFlyOff | OMTrinket::kIgnoreDoubleClick |
                       OMTrinket::kIgnoreMouseMove);
    window.mouseMove({15, 15});
    EXPECT_EQ(window.input().flyOverTrinket(), tile.get());
    window.doubleClick({15, 15});
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    window.mouseDown({15, 15});
    window.mouseMove({18, 18});
    EXPECT_EQ(tile->x(), 10);
    tile->setEventMask(OMTrinket::kIgnoreMouseUp);
    window.mouseUp({18, 18});
    EXPECT_EQ(window.input().mouseTarget(), nullptr); // no button holds it any more
    EXPECT_EQ(take(),
              (Texts{"default move", "default double", "mouseDown", "default move", "default up"}));
    window.setDefaultEventMask(OMTrinket::kIgnoreKeys);
    EXPECT_EQ(Tile(window, {0, 0, 1, 1}, 1).eventMask(), OMTrinket::kIgnoreKeys);
}

TEST_F(MouseTest, TheBackgroundHearsWhatNoTrinketTakesUnlessItIsDeaf) {
    window.setBackground(std::make_unique<PlainBackground>());
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
    window.input().setDisabled(true);
    all();
    EXPECT_EQ(kinds, "");
    EXPECT_EQ(take(), Texts{});
    window.input().setDisabled(false);
    all();
    EXPECT_EQ(kinds, "12340");
}

TEST_F(MouseTest, WhoeverIsCalledMayDestroyAnything) {
    std::unique_ptr<Tile> below; // hit when the tile is gone
    std::unique_ptr<Tile> beside;
    std::unique_ptr<Tile> late;
    const std::pair<const char*, std::function<void()>> deeds[] = {
        {"itself", [&] { tile.reset(); }},
        {"the one under the pointer", [&] { below.reset(); }},
        {"its neighbour", [&] { beside.reset(); }},
        {"the scene",
         [&] {
             below.reset(), beside.reset(), tile.reset(), late.reset();
             window.setBackground(std::make_unique<PlainBackground>());
             late = std::make_unique<Tile>(window, Rect{5, 5, 60, 60}, 14);
         }},
        {"nothing, but takes the mouse", [&] { beside->setMouseCapture(true); }},
    };
    constexpr int kCalls = 14; // of the tile's links and handlers
    for (const auto& [what, deed] : deeds)
        for (int fatal = 1; fatal <= kCalls; ++fatal) {
            SCOPED_TRACE(what + std::string(" in call ") + std::to_string(fatal));
            late.reset();
            window.setBackground(std::make_unique<PlainBackground>());
            below = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 11);
            beside = std::make_unique<Tile>(window, Rect{20, 10, 30, 20}, 12);
            tile = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
            int calls = 0;
            const auto call = [&calls, fatal, &act = deed] {
                if (++calls == fatal) act();
            };
            using Links = OMTrinket::Links;
            Links& links = tile->links();
            for (const auto link : {&Links::mouseDown, &Links::mouseUp, &Links::mouseMove,
                                    &Links::doubleClick, &Links::beginDrag, &Links::drop})
                links.*link = [call](Point) { call(); };
            links.drag = [call](int, int) { call(); };
            links.flyOn = links.flyOff = call;
            for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"})
                tile->attachHandler(event, call);
            window.mouseMove({15, 15});
            window.doubleClick({15, 15});
            window.mouseUp({15, 15});
            window.mouseDown({15, 15});
            window.mouseMove({16, 16});
            window.mouseUp({16, 16});
            window.mouseMove({25, 15});
            window.mouseMove({70, 70});
            cycle();
            EXPECT_GE(calls, fatal);
            const OMTrinket* target = window.input().mouseTarget();
            EXPECT_TRUE(!target || target == beside.get());
            if (beside) beside->setMouseCapture(false);
        }
    for (auto* one : {&below, &beside, &tile, &late}) one->reset();
    EXPECT_EQ(window.trinketCount(), 0u);
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    EXPECT_EQ(window.input().flyOverTrinket(), nullptr);
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
    EXPECT_EQ(window.input().mouseTarget(), &other);
    other.setMouseCapture(false);
    window.mouseUp({18, 15});
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    EXPECT_EQ(take(), (Texts{"mouseDown", "default up", "flyOn"}));
    window.mouseDown({15, 15}); // and the next press is a new one
    window.mouseMove({16, 15});
    EXPECT_EQ(tile->x(), 11);
    window.mouseUp({16, 15});
    tile->links().mouseDown = [&](Point) { other.setMouseCapture(true); };
    tile->links().beginDrag = [](Point) { ADD_FAILURE(); };
    window.mouseDown({15, 15});
    EXPECT_EQ(tile->mouseState(), MouseState::Idle) << "a press that hands the mouse on";
    EXPECT_EQ(window.input().mouseTarget(), &other);
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
    window.input().defaults().key = [&](const platform::KeyPress&) { heard += "default "; };
    window.key({'a'});
    window.input().setFocus(*tile);
    window.key({'b'});
    tile->setEventMask(OMTrinket::kIgnoreKeys);
    window.key({'c'});
    window.input().setFocus(other);
    EXPECT_EQ(heard, "default bdefault lost ");
    window.input().setFocus(*tile);
    tile.reset();
    EXPECT_EQ(window.input().focus(), nullptr);
}

// Dragging

struct DragTest : InputTest {
    DragTest() { tile.setCorral({10, 10, 60, 60}); }
    Tile tile{window, {20, 20, 30, 30}, 10};
};

TEST_F(DragTest, InACorralThatIsTooSmallATrinketStandsAtItsStart) {
    tile.setCorral({10, 10, 15, 60});
    window.mouseDown({25, 25});
    for (const int x : {26, 90, 12, -40, 25}) {
        window.mouseMove({x, 30});
        EXPECT_EQ((Point{tile.x(), tile.y()}), (Point{10, 25})) << x;
    }
}

TEST_F(DragTest, DropsSnapToTheNearestLineOfTheGrid) {
    const struct {
        int x;
        OMTrinket::SnapGrid grid;
        int expected;
    } rows[] = {
        {24, {10, 0, {0, 0}}, 20},  {26, {10, 0, {0, 0}}, 30},
        {25, {10, 0, {0, 0}}, 20}, // half-way: the lower one
        {25, {10, 0, {3, 0}}, 23},  {-15, {10, 0, {0, 0}}, -20},
        {25, {-10, 0, {0, 0}}, 20}, {25, {0, 7, {0, 0}}, 25},
    };
    for (const auto& row : rows) {
        tile.place(row.x, 21);
        tile.setSnapGrid(row.grid);
        tile.onDrop({});
        EXPECT_EQ((Point{tile.x(), tile.y()}), (Point{row.expected, 21})) << row.x;
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
