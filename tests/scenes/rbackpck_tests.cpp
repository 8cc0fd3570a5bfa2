// The backpack: what it shows of the world's memory, what the player drags out of it, and what
// scripts put in and take out.
#include "backpack/rbackpck.h"

#include "ompp/curbuilder.h"
#include "src/gamefixture.h"

#include "omcursor.h"
#include "world/player.h"
#include "world/worldmemory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Strings = std::vector<std::string>;

namespace {

constexpr int kPanel = 500; ///< the picture, 176 x 170
constexpr Rect kPlace{200, 100, 376, 270};
constexpr Point kOnClose{285, 120};
constexpr std::uint32_t kTaskModal = 0x2000;
constexpr int kSlots = 12;

/// The resources of the items' animations, by item.
std::map<int, int> animations() {
    std::map<int, int> all{{1, 1013}};
    for (int glyph = 2; glyph <= 12; ++glyph) all[glyph] = 1000 + glyph;
    int gem = 13;
    for (int colour = 0; colour < 4; ++colour)
        for (int number = 0; number < 4; ++number) all[gem++] = 11000 + number * 4 + colour;
    return all;
}

class BackPackTest : public GameObjectTest {
  protected:
    BackPackTest() {
        addPicture(kPanel, kPlace.width(), kPlace.height(), 'p', 33, 44);
        for (const auto& [item, id] : animations()) addPicture(id, sizeOf(item).x, sizeOf(item).y);
        OMTrinketWindow::setCursorLocator([](int id) -> std::shared_ptr<const OMCursor> {
            if (id < 1) return OMCursor::load(id);
            return std::make_shared<const OMCursor>(id, buildCursor({CurPicture{}}));
        });
        memory.activatePlayer("Ana");
    }
    ~BackPackTest() override { OMTrinketWindow::setCursorLocator(nullptr); }

    /// No two items that are next to each other have the same; some are larger than a cell.
    static Point sizeOf(int item) { return {20 + item, 35 - item}; }
    auto& inWorld() { return memory.currentPlayer()->record().backpack; }
    void open(const std::string& words = "500 200 100 7") {
        pack = make<RBackPack>(words);
        for (const char* event : {"objectDropped", "closed"}) listen(*pack, event);
    }
    static Point middleOfCell(int slot) {
        return {kPlace.left + 16 + slot % 4 * 36 + 18, kPlace.top + 74 + slot / 4 * 28 + 14};
    }
    /// Where an item lies in a cell. Half pixels go to the left and up, but to the right and down
    /// for items larger than the cell.
    static Rect cellPlace(int item, int slot) {
        const Point size = sizeOf(item);
        const int left = kPlace.left + 16 + slot % 4 * 36 + (36 - size.x) / 2;
        const int top = kPlace.top + 74 + slot / 4 * 28 + (28 - size.y) / 2;
        return {left, top, left + size.x, top + size.y};
    }
    OMAnimation* thingIn(int slot) {
        auto* thing = dynamic_cast<OMAnimation*>(window.input().hitTest(middleOfCell(slot)));
        return thing && thing != pack.get() ? thing : nullptr;
    }
    std::optional<int> itemIn(int slot) {
        const OMAnimation* thing = thingIn(slot);
        if (!thing) return std::nullopt;
        for (const auto& [item, id] : animations())
            if (id == thing->resourceId()) return item;
        return -1;
    }
    /// All slots are seen as the world has them.
    void expectInStep() {
        for (int slot = 0; slot < kSlots; ++slot)
            ASSERT_EQ(itemIn(slot).value_or(0), inWorld()[static_cast<std::size_t>(slot)]) << slot;
    }
    void add(int item) { play(*pack, "addObject", std::to_string(item)); }
    void remove(int slot) { play(*pack, "removeObject", std::to_string(slot)); }
    Strings boxes() { return takeBoxes(kTaskModal); }
    std::string dropped() {
        std::string all;
        for (const char* field : {"Index", "X", "Y", "W", "H"})
            all += get(*pack, ("droppedObject" + std::string(field)).c_str()) + " ";
        return all;
    }
    /// By a pixel of it.
    void dragSlotTo(int slot, int left, int top) {
        const OMAnimation& thing = *thingIn(slot);
        const Point at = middleOfCell(slot);
        drag(at, {at.x + left - thing.x(), at.y + top - thing.y()});
    }

    world::WorldMemory memory{[] { return std::optional<std::string>(); },
                              [](const std::string&) {}};
    std::unique_ptr<RBackPack> pack;
};

TEST_F(BackPackTest, EveryItemInEverySlot) {
    int slot = 0;
    for (const auto& [item, id] : animations()) {
        SCOPED_TRACE(testing::Message() << "item " << item << " slot " << slot);
        inWorld().fill(0);
        inWorld()[static_cast<std::size_t>(slot)] = item;
        inWorld()[static_cast<std::size_t>((slot + 5) % kSlots)] = item;
        open();
        for (const int filled : {slot, (slot + 5) % kSlots}) {
            const OMAnimation* thing = thingIn(filled);
            ASSERT_TRUE(thing);
            EXPECT_EQ(thing->resourceId(), id);
            EXPECT_EQ(thing->boundingRectangle(), cellPlace(item, filled));
            EXPECT_EQ(thing->z(), 8);
            EXPECT_EQ(thing->cursor(), 29);
            EXPECT_EQ(thing->grabCursor(), 28);
        }
        EXPECT_EQ(window.trinketCount(), 4u) << "nothing else but the panel and its close button";
        slot = (slot + 1) % kSlots;
    }
    EXPECT_EQ(boxes(), Strings{});
}

TEST_F(BackPackTest, WhatItIsMadeWith) {
    open("500 11111 11111");
    EXPECT_EQ(placeOf(*pack), "33,44") << "its embedded place";
    open("500 -3 9 40");
    EXPECT_EQ(placeOf(*pack) + " " + std::to_string(pack->z()), "-3,9 40");
    EXPECT_EQ(dropped(), "-1 0 0 0 0 ");
    pack.reset();
    EXPECT_EQ(window.trinketCount(), 0u);
}

TEST_F(BackPackTest, InStepWithTheWorld) {
    open();
    std::minstd_rand random(11);
    for (int step = 0; step < 300 && !HasFatalFailure(); ++step) {
        if (random() % 5 < 3)
            add(static_cast<int>(random() % 28 + 1));
        else
            remove(static_cast<int>(random() % kSlots));
        expectInStep();
        if (step % 50 == 49) {
            open(); // another one shows the same
            expectInStep();
        }
    }
    for (const std::string& text : boxes())
        EXPECT_THAT(text, testing::AnyOf("RBackPack: Backpack is full.",
                                         testing::StartsWith("RBackPack: No object in slot ")));
}

TEST_F(BackPackTest, WhatIsRefused) {
    open();
    const auto refused = [this](const char* method, int value) {
        const auto before = inWorld();
        play(*pack, method, std::to_string(value));
        EXPECT_EQ(inWorld(), before);
        expectInStep();
        return boxes();
    };
    EXPECT_EQ(refused("addObject", 0), Strings{"RBackPack: object 0 animation not found."});
    EXPECT_EQ(refused("addObject", -1), Strings{"RBackPack: invalid object: -1"});
    EXPECT_EQ(refused("addObject", 29), Strings{"RBackPack: invalid object: 29"});
    pictures.erase(1005);
    EXPECT_EQ(refused("addObject", 5), Strings{"RBackPack: object 5 animation not found."});
    EXPECT_EQ(refused("removeObject", -1), Strings{"RBackPack: Invalid slot index: -1"});
    EXPECT_EQ(refused("removeObject", 12), Strings{"RBackPack: Invalid slot index: 12"});
    EXPECT_EQ(refused("removeObject", 3), Strings{"RBackPack: No object in slot 3"});
    for (int i = 0; i < kSlots; ++i) add(i + 13);
    EXPECT_EQ(boxes(), Strings{});
    EXPECT_EQ(refused("addObject", 2), Strings{"RBackPack: Backpack is full."});
    EXPECT_EQ(refused("addObject", 77), Strings{"RBackPack: invalid object: 77"});
    remove(7);
    add(2);
    EXPECT_EQ(itemIn(7), 2) << "the slot that is free";

    inWorld() = {30, 3};
    open(); // what the world has is shown as far as it goes
    EXPECT_EQ(boxes(), Strings{"RBackPack: invalid object: 30"});
    EXPECT_EQ(itemIn(1), 3);
}

TEST_F(BackPackTest, DraggingAThingOut) {
    inWorld()[2] = 4;
    inWorld()[7] = 20;
    open();
    const auto goesBack = [this] {
        return thingIn(2) && thingIn(2)->boundingRectangle() == cellPlace(4, 2);
    };
    const Point size = sizeOf(4);
    // Inside, and over an edge by one pixel.
    dragSlotTo(2, 210, 110);
    dragSlotTo(2, kPlace.right - 1, 150);
    dragSlotTo(2, kPlace.left - size.x + 1, 150);
    dragSlotTo(2, 300, kPlace.bottom - 1);
    dragSlotTo(2, 300, kPlace.top - size.y + 1);
    EXPECT_TRUE(goesBack());
    EXPECT_EQ(takeHeard(), Strings{});
    EXPECT_EQ(dropped(), "-1 0 0 0 0 ");
    for (const Point& beside : {Point{kPlace.right, 150},
                                {kPlace.left - size.x, 150},
                                {300, kPlace.bottom},
                                {300, kPlace.top - size.y}}) {
        dragSlotTo(2, beside.x, beside.y);
        EXPECT_EQ(takeHeard(), Strings{"objectDropped"});
        EXPECT_EQ(dropped(),
                  "2 " + std::to_string(beside.x) + " " + std::to_string(beside.y) + " 24 31 ");
        EXPECT_TRUE(goesBack());
    }
    // The button that is released elsewhere.
    window.mouseDown(middleOfCell(7));
    window.mouseMove({30, 300});
    window.mouseReleaseLost();
    window.idle();
    EXPECT_EQ(takeHeard(), Strings{"objectDropped"});
    EXPECT_EQ(get(*pack, "droppedObjectIndex"), "7");
    EXPECT_EQ(thingIn(7)->boundingRectangle(), cellPlace(20, 7));
    expectInStep();
}

TEST_F(BackPackTest, HandlersOfADrop) {
    inWorld()[2] = 4;
    open();
    pack->attachHandler("objectDropped", [this] { remove(2); });
    dragSlotTo(2, 500, 300);
    EXPECT_FALSE(thingIn(2));
    EXPECT_EQ(inWorld()[2], 0);
    EXPECT_EQ(window.trinketCount(), 2u);
    // Something else in its place stays there.
    add(4);
    pack->attachHandler("objectDropped", [this] {
        remove(0);
        add(9);
    });
    dragSlotTo(0, 500, 300);
    EXPECT_EQ(thingIn(0)->boundingRectangle(), cellPlace(9, 0));
    expectInStep();
    pack->attachHandler("objectDropped", [this] { pack.reset(); });
    dragSlotTo(0, 500, 300);
    EXPECT_EQ(window.trinketCount(), 0u);
    EXPECT_EQ(inWorld()[0], 9);
}

TEST_F(BackPackTest, ItMovesAsAWhole) {
    inWorld()[2] = 4;
    inWorld()[11] = 28;
    open();
    drag({205, 105}, {225, 95}); // by the panel
    EXPECT_EQ(placeOf(*pack), "220,90");
    pack->place(150, 93);
    pack->setZ(60);
    const auto at = [](Point point) { return Point{point.x - 50, point.y - 7}; };
    for (const auto& [slot, item] : {std::pair{2, 4}, {11, 28}}) {
        const OMTrinket* thing = window.input().hitTest(at(middleOfCell(slot)));
        const Rect place = cellPlace(item, slot);
        EXPECT_EQ(placeOf(*thing),
                  std::to_string(place.left - 50) + "," + std::to_string(place.top - 7));
        EXPECT_EQ(thing->z(), 61);
    }
    add(6);
    EXPECT_EQ(placeOf(*window.input().hitTest(at(middleOfCell(0)))),
              std::to_string(cellPlace(6, 0).left - 50) + "," +
                  std::to_string(cellPlace(6, 0).top - 7));
    click(kOnClose);
    EXPECT_EQ(takeHeard(), Strings{}) << "that is not where the button is now";
    click(at(kOnClose));
    EXPECT_EQ(takeHeard(), Strings{"closed"});
}

TEST_F(BackPackTest, ClosingAndOpeningAgain) {
    inWorld()[2] = 4;
    open();
    const auto closes = [this](Point at) {
        click(at);
        return !takeHeard().empty();
    };
    // To the pixel: from 80, 18 to 100, 48 of the panel.
    for (const Point& beside : {Point{279, 130}, {300, 130}, {290, 117}, {290, 148}})
        EXPECT_FALSE(closes(beside)) << beside.x << "," << beside.y;
    drag({290, 130}, {310, 130});
    drag({310, 130}, {290, 130});
    pack->place(kPlace.left, kPlace.top);
    window.mouseDown(kOnClose);
    pack->setVisible(false);
    window.mouseUp(kOnClose);
    pack->setVisible(true);
    window.mouseDown(kOnClose);
    window.mouseReleaseLost();
    window.idle();
    window.mouseUp(kOnClose);
    EXPECT_EQ(takeHeard(), Strings{}) << "let go beside it, hidden, and let go elsewhere";
    for (const Point& corner : {Point{280, 118}, {299, 147}}) {
        EXPECT_TRUE(closes(corner));
        EXPECT_FALSE(pack->isVisible());
        EXPECT_EQ(window.trinketCount(), 2u) << "the button is gone";
        EXPECT_FALSE(window.input().hitTest(middleOfCell(2)));
        EXPECT_FALSE(closes(corner));
        add(3); // is hidden, too
        EXPECT_FALSE(window.input().hitTest(middleOfCell(0)));
        pack->setVisible(true);
        expectInStep();
        remove(0);
    }
    pack->attachHandler("closed", [this] { pack.reset(); });
    click(kOnClose);
    EXPECT_EQ(window.trinketCount(), 0u);
    EXPECT_FALSE(window.input().mouseTarget());
}

TEST_F(BackPackTest, WhatIsNotInstalled) {
    inWorld()[2] = 4;
    OMTrinketWindow::setCursorLocator(nullptr);
    open();
    EXPECT_EQ(takeFailures(), Strings{"Cursor URL is not installed in RBackPack"});
    EXPECT_TRUE(thingIn(2));
    AOImage::setSourceLocator(nullptr);
    open();
    EXPECT_EQ(takeFailures(), Strings(2, "SourceURL is not installed in OMAnimation"))
        << "for the panel and for what is in it";
    EXPECT_EQ(boxes(), Strings{});
    EXPECT_EQ(placeOf(*pack) + " " + std::to_string(pack->z()), "200,100 7");
    click(kOnClose);
    EXPECT_EQ(takeHeard(), Strings{"closed"});

    installPictures();
    memory.shutDown();
    open(); // nobody plays
    add(3);
    EXPECT_EQ(itemIn(0), 3);
    remove(0);
    EXPECT_FALSE(itemIn(0));
}

} // namespace
