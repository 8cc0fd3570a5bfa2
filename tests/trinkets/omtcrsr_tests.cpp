// The cursors of a trinket window: those of trinkets, and those that an object manages.
#include "ompp/curbuilder.h"
#include "trinkets/windowfixture.h"

#include "omcursor.h"
#include "omtcrsr.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

using Texts = std::vector<std::string>;

/// One tile at 10, 10 with cursor -3, and a locator that has the platform's cursors and 1 to 9.
class WindowCursorTest : public WindowTest {
  protected:
    WindowCursorTest() {
        OMTrinketWindow::setCursorLocator([](int id) -> std::shared_ptr<const OMCursor> {
            if (id < 1) return OMCursor::load(id);
            if (id > 9) return nullptr;
            return std::make_shared<const OMCursor>(id, buildCursor({CurPicture{}}));
        });
        tile.setCursors(kOMCursorText, kOMCursorCross);
    }
    ~WindowCursorTest() override { OMTrinketWindow::setCursorLocator(nullptr); }

    int shown() { return machine.display().cursor; }
    void pass(std::uint32_t ms) {
        machine.clock().now += ms;
        app->tasks().runAll();
    }
    std::pair<int, int> cursorsOfTile() { return {tile.cursor(), tile.grabCursor()}; }

    static constexpr Point kOnTile{15, 15};
    static constexpr Point kBeside{50, 50};
    Tile tile{window, {10, 10, 20, 20}, 10};
};

TEST_F(WindowCursorTest, NewCursorsOfATrinketAreSeenAtOnce) {
    const auto set = [this](std::optional<int> normal, std::optional<int> grab) {
        OMSetCursors(tile, normal, grab, "no locator");
        return shown();
    };
    window.mouseMove(kOnTile);
    EXPECT_EQ(shown(), kOMCursorText);
    EXPECT_EQ(set(kOMCursorWait, 2), kOMCursorWait);
    window.mouseDown(kOnTile);
    EXPECT_EQ(shown(), 2);
    EXPECT_EQ(set(3, 4), 4) << "it is held";
    window.mouseUp(kOnTile);
    EXPECT_EQ(shown(), 3);
    set(5, {});
    EXPECT_EQ(cursorsOfTile(), std::pair(5, 5));
    EXPECT_EQ(set(77, 6), kOMCursorArrow) << "there is no such cursor";
    EXPECT_EQ(cursorsOfTile(), std::pair(kOMCursorArrow, 6));
    set({}, {});
    EXPECT_EQ(cursorsOfTile(), std::pair(OMTrinket::defaultCursor, OMTrinket::defaultGrabCursor));

    window.input().setCursorManagement(false);
    EXPECT_EQ(set(7, 8), kOMCursorArrow);
    window.input().setCursorManagement(true);
    window.mouseMove(kBeside);
    EXPECT_EQ(set(9, 9), OMTrinket::defaultCursor) << "the pointer is elsewhere";
    OMTrinketWindow::setCursorLocator(nullptr);
    set(1, 1);
    EXPECT_EQ(takeFailures(), Texts{"no locator"});
    EXPECT_EQ(cursorsOfTile(), std::pair(9, 9));
}

// Cursors that an object manages

struct Follower final : OMTCursor {
    explicit Follower(int id) : OMTCursor(id) {}
    void moved(Point point) override { points.push_back(point); }
    std::vector<Point> points;
};

TEST_F(WindowCursorTest, ACurrentCursorTakesThePlaceOfThoseOfTrinkets) {
    Follower first(1);
    Follower second(2);
    first.install(window);
    window.mouseMove(kOnTile);
    EXPECT_EQ(shown(), 1);
    first.set(kOMCursorWait);
    EXPECT_EQ(shown(), kOMCursorWait);
    EXPECT_EQ(first.points, std::vector<Point>{kOnTile});

    second.install(window);
    EXPECT_TRUE(second.imCurrent() && !first.imCurrent());
    EXPECT_EQ(shown(), 2);
    window.mouseMove({16, 15});
    EXPECT_EQ(first.points.size(), 1u);
    EXPECT_EQ(second.points.size(), 1u);
    second.uninstall();
    EXPECT_EQ(shown(), kOMCursorText) << "that of the trinket under the pointer";
    window.mouseDown(kOnTile);
    first.install(window);
    EXPECT_EQ(shown(), kOMCursorWait) << "as it was set last";
    first.uninstall();
    EXPECT_EQ(shown(), kOMCursorCross) << "the trinket is held";
    EXPECT_TRUE(failures.empty());
}

TEST_F(WindowCursorTest, OnlyACurrentCursorIsSetAndUninstalled) {
    Follower cursor(1);
    cursor.set(2);
    cursor.uninstall();
    EXPECT_EQ(takeFailures(),
              (Texts{"Setting non-current cursor", "Uninstalling non-current cursor"}));
    EXPECT_EQ(cursor.id(), 1);

    cursor.install(window);
    window.cursorMove() = {};
    cursor.set(2);
    EXPECT_EQ(shown(), 1);
    EXPECT_EQ(takeFailures(), Texts{"CursorMove link not set for current OMTCursor"});
    cursor.uninstall();
    EXPECT_FALSE(cursor.imCurrent());
    EXPECT_EQ(takeFailures(), Texts{"CursorMove link not set for current OMTCursor"});
}

TEST_F(WindowCursorTest, CursorAndWindowMayEndInAnyOrder) {
    {
        Follower cursor(1);
        cursor.install(window);
    }
    window.mouseMove(kOnTile);
    EXPECT_EQ(shown(), kOMCursorText);

    OMAnimCursor row({1, 2}, 100);
    {
        OMTrinketWindow other({0, 0, 20, 20}, nullptr, "");
        row.install(other);
        row.install(window);
        EXPECT_EQ(other.managedCursor(), nullptr);
        row.install(other);
    }
    EXPECT_FALSE(row.imCurrent());
    EXPECT_EQ(app->tasks().count(), 0u);
    pass(100);
    EXPECT_TRUE(failures.empty());
}

TEST_F(WindowCursorTest, ARowOfCursorsIsShownOverAndOver) {
    OMAnimCursor row({1, 2, 3}, 100);
    row.install(window);
    std::vector<int> seen{shown()};
    for (const std::uint32_t ms : {99, 1, 100, 150, 49, 1, 400}) {
        pass(ms);
        seen.push_back(shown());
    }
    EXPECT_EQ(seen, (std::vector<int>{1, 1, 2, 3, 1, 1, 2, 3})) << "late pictures are passed over";
    row.uninstall();
    pass(100);
    EXPECT_EQ(shown(), OMTrinket::defaultCursor);
}

} // namespace
