// Groups of trinkets.
#include "ommultitrinket.h"

#include "trinkets/windowfixture.h"

#include <functional>
#include <utility>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

/// A group that declares what scripts see.
struct Group : OMMultiTrinket {
    explicit Group(OMTrinketWindow& window) : OMMultiTrinket(window) { takeClass(kClass); }
};

struct GroupTest : WindowTest {
    GroupTest() {
        group->setZ(50);
        group->add(*a, 7);
        group->add(*b, 8, 2);
    }
    void drag(Point from, Point to) {
        window.mouseDown(from);
        window.mouseMove(to);
    }

    std::unique_ptr<Tile> a = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
    std::unique_ptr<Tile> b = std::make_unique<Tile>(window, Rect{30, 30, 45, 40}, 11);
    std::unique_ptr<Group> group = std::make_unique<Group>(window);
};

TEST_F(GroupTest, ItIsWhereItsVisibleMembersAre) {
    b->place(50, 5);
    EXPECT_EQ(group->boundingRectangle(), (Rect{10, 5, 65, 20}));
    b->setVisible(false);
    EXPECT_EQ(group->boundingRectangle(), (Rect{10, 10, 20, 20}));
    group->setVisible(false);
    EXPECT_EQ(group->boundingRectangle(), (Rect{10, 5, 65, 20})) << "a hidden one keeps its place";
    group->setVisible(true);
    group->remove(*a);
    EXPECT_EQ(group->member(7), nullptr);
    EXPECT_EQ(group->member(8), b.get());
    EXPECT_EQ(group->boundingRectangle(), (Rect{50, 5, 65, 15}));
    b.reset();
    group->offset(3, 4);
    EXPECT_EQ(group->boundingRectangle(), (Rect{53, 9, 53, 9}));
}

TEST_F(GroupTest, AGroupInAGroup) {
    Group outer(window);
    auto empty = std::make_unique<Group>(window);
    outer.add(*group, 0);
    outer.add(*empty, 1);
    EXPECT_EQ(outer.boundingRectangle(), (Rect{10, 10, 45, 40})) << "an empty member has no place";
    EXPECT_EQ(window.input().hitTest({12, 12}), a.get()) << "not the group that it is in";
    outer.setZ(70);
    EXPECT_EQ(window.input().hitTest({12, 12}), a.get());
    empty.reset();
    outer.offset(5, 5);
    group.reset();
    EXPECT_EQ(outer.boundingRectangle(), (Rect{15, 15, 15, 15})) << "where the last member was";
}

TEST_F(GroupTest, MembersFollowInAllAttributes) {
    group->place(20, 15);
    EXPECT_EQ(a->boundingRectangle(), (Rect{20, 15, 30, 25}));
    EXPECT_EQ(b->boundingRectangle(), (Rect{40, 35, 55, 45}));
    EXPECT_EQ(std::pair(a->z(), b->z()), std::pair(50, 52));
    a->setZ(60);
    group->setZ(60);
    EXPECT_EQ(std::pair(a->z(), b->z()), std::pair(60, 62));
    EXPECT_EQ(window.input().hitTest({22, 17}), a.get()) << "before the group";
    group->setZ(2147483647);
    EXPECT_EQ(b->z(), 2147483647);
    group->setMovable(false);
    group->setTouchy(false);
    group->setVisible(false);
    group->setCursors(-3, -4);
    for (const Tile* tile : {a.get(), b.get()}) {
        EXPECT_FALSE(tile->isMovable() || tile->isTouchy() || tile->isVisible());
        EXPECT_EQ(std::pair(tile->cursor(), tile->grabCursor()), std::pair(-3, -4));
    }
    Tile late(window, {0, 0, 5, 5}, 12);
    group->add(late, 9, -1);
    EXPECT_FALSE(late.isMovable() || late.isTouchy() || late.isVisible());
    EXPECT_EQ(late.z(), 2147483646);
    group->showMember(late, false);
    EXPECT_EQ(group->boundingRectangle(), (Rect{20, 15, 55, 45})) << "without it";
    group->setVisible(true);
    EXPECT_TRUE(a->isVisible() && !late.isVisible());
    group->showMember(late, true);
    EXPECT_TRUE(late.isVisible());
}

TEST_F(GroupTest, ATrinketIsInOneGroupAndNoGroupIsInItself) {
    Group other(window);
    EXPECT_TRUE(other.add(*a, 1));
    EXPECT_EQ(group->memberCount(), 1u);
    EXPECT_FALSE(group->add(*group, 1));
    EXPECT_TRUE(group->add(other, 1));
    EXPECT_FALSE(other.add(*group, 1));
    group->offset(1, 0);
    EXPECT_EQ(a->x(), 11); // a member of a member
    OMTrinketWindow second({0, 0, 10, 10}, nullptr, "");
    Tile stranger(second, {0, 0, 1, 1}, 1);
    EXPECT_FALSE(group->add(stranger, 1));
}

// Dragging

TEST_F(GroupTest, DraggingAMemberDragsAllOfThem) {
    int dragged = 0;
    group->links().drag = [&](int dx, int) { dragged += dx; };
    drag({35, 35}, {40, 36});
    EXPECT_EQ(a->boundingRectangle(), (Rect{15, 11, 25, 21}));
    EXPECT_EQ(b->boundingRectangle(), (Rect{35, 31, 50, 41}));
    EXPECT_EQ(dragged, 5);
    group.reset(); // in the midst of it
    window.mouseMove({50, 36});
    EXPECT_EQ(a->x(), 15);
}

TEST_F(GroupTest, DropsSnapAsOne) {
    group->setSnapGrid({16, 0, {0, 0}});
    int drops = 0;
    group->links().drop = [&](Point) { ++drops; };
    drag({35, 35}, {35, 37});
    window.mouseUp({35, 37});
    EXPECT_EQ(a->boundingRectangle(), (Rect{16, 12, 26, 22}));
    EXPECT_EQ(b->boundingRectangle(), (Rect{36, 32, 51, 42}));
    EXPECT_EQ(drops, 1);
}

// Events

struct GroupEventTest : GroupTest {
    GroupEventTest() {
        for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"})
            group->attachHandler(event, [this, event] { heard.emplace_back(event); });
        group->links().mouseDown = [this](Point) { heard.emplace_back("link down"); };
        a->links().mouseDown = [this](Point) { heard.emplace_back("own link"); };
        a->attachHandler("mouseDown", [this] { heard.emplace_back("own event"); });
    }
    using Texts = std::vector<std::string>;
    Texts everything() {
        window.mouseMove({15, 15});
        window.mouseDown({15, 15});
        window.mouseUp({15, 15});
        window.doubleClick({15, 15});
        window.mouseMove({70, 70});
        return std::exchange(heard, {});
    }
    Texts heard;
};

TEST_F(GroupEventTest, WhatAMemberHearsOfTheMouseBecomesAnEventOfTheGroup) {
    const std::pair<std::uint32_t, const char*> rows[] = {
        {0, ""},
        {OMTrinket::kIgnoreMouseDown, "mouseDown"},
        {OMTrinket::kIgnoreMouseUp, "mouseUp"},
        {OMTrinket::kIgnoreDoubleClick, "dblClick"},
        {OMTrinket::kNoFlyOn, "flyOn"},
        {OMTrinket::kNoFlyOff, "flyOff"},
    };
    for (const auto& [mask, silent] : rows) {
        group->setEventMask(mask);
        Texts expected{"flyOn",   "mouseDown", "link down", "own event",
                       "mouseUp", "dblClick",  "flyOff"};
        std::erase(expected, silent);
        EXPECT_EQ(everything(), expected);
    }
    group->remove(*a);
    EXPECT_EQ(everything(), (Texts{"own link", "own event"}));
}

TEST_F(GroupEventTest, AGroupAboveItsMembersIsHitWhereTheyAre) {
    group->remove(*a);
    group->add(*a, 7, -1);
    EXPECT_EQ(window.input().hitTest({15, 15}), group.get());
    EXPECT_EQ(window.input().hitTest({35, 35}), b.get());
    EXPECT_EQ(window.input().hitTest({25, 25}), nullptr) << "between them";
    drag({15, 15}, {16, 15});
    EXPECT_EQ(b->x(), 31);
}

TEST_F(GroupEventTest, HandlersMayDestroyGroupAndMembers) {
    const std::function<void()> deeds[] = {
        [&] { group.reset(); },      [&] { a.reset(); },
        [&] { b.reset(); },          [&] { a.reset(), b.reset(), group.reset(); },
        [&] { group->removeAll(); },
    };
    for (const char* event : {"mouseDown", "mouseUp", "dblClick", "flyOn", "flyOff"}) {
        for (const auto& deed : deeds) {
            a = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
            b = std::make_unique<Tile>(window, Rect{30, 30, 45, 40}, 11);
            group = std::make_unique<Group>(window);
            group->add(*a, 0);
            group->add(*b, 1);
            int calls = 0;
            group->attachHandler(event, [&, deed] {
                ++calls;
                const auto kept = deed; // the handler goes with the group
                kept();
            });
            everything();
            EXPECT_EQ(calls, 1) << event;
            cycle();
        }
    }
    group.reset();
    a.reset();
    b.reset();
    EXPECT_EQ(window.trinketCount(), 0u);
}

TEST_F(GroupEventTest, WhatAMemberThatGoesHasOfTheMouseItsGroupKeeps) {
    group->setCursors(-3, -4);
    window.mouseMove({15, 15});
    a.reset();
    EXPECT_EQ(machine.display().cursor, OMTrinket::defaultCursor) << "the other one is elsewhere";
    window.mouseMove({60, 60});
    EXPECT_EQ(std::exchange(heard, {}), (Texts{"flyOn", "flyOff"}));

    a = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
    group->add(*a, 0);
    group->setSnapGrid({16, 0, {0, 0}});
    drag({15, 15}, {16, 15});
    a.reset();
    window.mouseMove({26, 15});
    EXPECT_EQ(b->x(), 41);
    window.mouseUp({26, 15});
    EXPECT_EQ(b->x(), 48) << "dropped";
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    EXPECT_EQ(std::exchange(heard, {}), (Texts{"mouseDown", "link down", "mouseUp"}));

    b->setMouseCapture(true);
    b.reset();
    EXPECT_EQ(window.input().mouseTarget(), nullptr) << "nobody would give it back";
}

TEST_F(GroupEventTest, AMemberMayGoInItsOwnHandlers) {
    const struct {
        const char* event; ///< in whose handler it goes
        bool movable;
        int x; ///< of the other one at the end
        Texts heard;
    } rows[] = {
        {"mouseDown", true, 35, {"flyOn", "mouseDown", "link down", "mouseUp", "flyOff"}},
        {"mouseDown", false, 30, {"flyOn", "mouseDown", "link down", "flyOff"}},
        {"mouseUp",
         true,
         35,
         {"flyOn", "mouseDown", "link down", "own event", "mouseUp", "flyOff"}},
        {"dblClick", true, 30, {"flyOn", "dblClick", "flyOff"}},
        {"flyOff", true, 30, {"flyOn", "flyOff"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.event);
        a = std::make_unique<Tile>(window, Rect{10, 10, 20, 20}, 10);
        b = std::make_unique<Tile>(window, Rect{30, 30, 45, 40}, 11);
        group->add(*a, 0);
        group->add(*b, 1);
        group->setMovable(row.movable);
        a->attachHandler("mouseDown", [this] { heard.emplace_back("own event"); });
        a->attachHandler(row.event, [this] { a.reset(); });
        window.mouseMove({15, 15});
        if (row.event == std::string("dblClick")) window.doubleClick({15, 15});
        if (row.event != std::string("dblClick") && row.event != std::string("flyOff"))
            window.mouseDown({15, 15});
        window.mouseMove({20, 15});
        window.mouseUp({20, 15});
        window.mouseMove({70, 70});
        EXPECT_EQ(window.input().mouseTarget(), nullptr);
        EXPECT_EQ(b->x(), row.x);
        EXPECT_EQ(std::exchange(heard, {}), row.heard);
    }
}

TEST_F(GroupTest, ACopyHasThePlaceButNotTheMembers) {
    const auto copy = group->duplicate();
    const auto& other = dynamic_cast<OMMultiTrinket&>(*copy);
    EXPECT_EQ(other.memberCount(), 0u);
    EXPECT_EQ(other.boundingRectangle(), (Rect{10, 10, 10, 10}));
    EXPECT_EQ(other.z(), 50);
}

} // namespace
