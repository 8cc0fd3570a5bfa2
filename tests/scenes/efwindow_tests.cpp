#include "formats/picture/palette.h"
#include "scene/efwindow.h"

#include "trinkets/windowfixture.h"

#include "omao.h"
#include "omcursor.h"
#include "omtcrsr.h"

#include <map>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

using Strings = std::vector<std::string>;

Bytes redPalette(std::uint8_t red) {
    Bytes bytes(formats::picture::kPaletteSize);
    for (std::size_t at = 0; at < bytes.size(); at += 6) bytes[at] = std::byte{red};
    return bytes;
}

class EffectsWindowTest : public OMAppTest {
  protected:
    EffectsWindowTest() {
        window.setBackgroundLocator([this](int id) { return find(pictures, id); });
        window.setPaletteLocator([this](int id) { return find(palettes, id); });
        AseqBuilder picture;
        picture.block(640, 480, 'p').sequence({{0, 0, -1, 0}, {0, 0, 0, 0}});
        pictures[1] = pictures[2] = picture.build();
        palettes[1] = redPalette(0x40);
    }

    static std::unique_ptr<OMIStream> find(const std::map<int, Bytes>& all, int id) {
        const auto found = all.find(id);
        return found == all.end() ? nullptr : std::make_unique<MemoryStream>(found->second);
    }
    char pixel(int x, int y) { return static_cast<char>(*window.canvas().pixels().at(x, y)); }

    std::map<int, Bytes> pictures;
    std::map<int, Bytes> palettes;
    EffectsWindow window{{0, 0}, "Game"};
};

TEST_F(EffectsWindowTest, ClicksOnABlackScreenReachNobodyEvenWhenTheLoopGoesOn) {
    window.restorePalette(1, 1);
    Tile held(window, {10, 10, 30, 30}, 't');
    int clicks = 0;
    int releases = 0;
    held.attachHandler("mouseDown", [&] { ++clicks; });
    held.attachHandler("dblClick", [&] { ++clicks; });
    held.attachHandler("mouseUp", [&] { ++releases; });
    window.input().defaults().mouseDown = window.background()->mouseDown = [&](Point) { ++clicks; };
    const auto message = [&](platform::Message::Kind kind, Point at) {
        machine.events().queue.push_back({kind, 0, at, {}, 0});
        app->pass();
    };
    using Kind = platform::Message::Kind;
    message(Kind::MouseDown, {15, 15});
    EXPECT_EQ(std::exchange(clicks, 0), 1);
    window.startTransition();
    message(Kind::MouseUp, {15, 15}); // what is held is let go
    EXPECT_EQ(releases, 1);
    int told = 0;
    window.hooks().input = [&](OMTrinketWindow::Input) { ++told; };
    for (const Point at : {Point{15, 15}, Point{200, 200}}) {
        message(Kind::MouseDown, at);
        message(Kind::MouseUp, at);
        message(Kind::DoubleClick, at);
        message(Kind::MouseUp, at);
    }
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(told, 8) << "the hook hears of all input";
    EXPECT_EQ(window.input().lastMousePosition(), (Point{200, 200}));
    machine.events().queue.push_back({Kind::MouseDown, 0, {15, 15}, {}, 0});
    window.endTransition(true);
    EXPECT_TRUE(machine.events().queue.empty()) << "a click in the dark";
    for (const Point at : {Point{15, 15}, Point{200, 200}}) {
        message(Kind::MouseDown, at);
        EXPECT_EQ(std::exchange(clicks, 0), 1);
        message(Kind::MouseUp, at);
    }
}

TEST_F(EffectsWindowTest, AReleaseThatATransitionDropsLetsGoOfWhatIsHeld) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    const auto loseRelease = [&] {
        machine.events().releaseDropped = true;
        window.displayScreen();
    };
    const auto expectFree = [&] {
        EXPECT_EQ(window.input().mouseTarget(), nullptr);
        EXPECT_EQ(tile.mouseState(), OMTrinket::MouseState::Idle);
        window.mouseMove({60, 60});
        EXPECT_EQ(tile.x(), 10);
    };
    window.mouseDown({20, 20}); // between press and release
    loseRelease();
    expectFree();
    tile.links().mouseDown = [&](Point) { loseRelease(); }; // in the handler of the press
    window.mouseDown({20, 20});
    expectFree();
    tile.links().mouseDown = nullptr;
    tile.links().beginDrag = [&](Point) { OMApp::getApp()->alert("a box"); };
    machine.events().releaseDropped = true;
    window.mouseDown({20, 20});
    expectFree();
    tile.links().beginDrag = nullptr;
    window.mouseDown({20, 20}); // the next press holds it again
    EXPECT_EQ(window.input().mouseTarget(), &tile);
}

TEST_F(EffectsWindowTest, ATransitionInTheMiddleOfAStepDoesNotStepAgain) {
    AseqBuilder builder;
    builder.block(4, 4, 'a').block(4, 4, 'b');
    builder.sequence({{0, 0, 0, 100}, {0, 0, -600, 0}, {0, 0, 1, 100}, {0, 0, -2, 0}});
    OMAnimation animation(window, builder.image(), 1, 0, 0);
    int markers = 0;
    animation.playLinks().marker = [&](int) {
        ++markers;
        window.startTransition();
        window.endTransition(false);
    };
    window.idle();
    machine.clock().now += 1000; // late, so that frames follow each other at once
    window.idle();
    EXPECT_EQ(markers, 1);
    EXPECT_EQ(animation.frameNumber(), 2);
}

TEST_F(EffectsWindowTest, TransitionsShowOneWaitCursorAndPutTheOldOneBack) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    tile.setCursors(-3, -4);
    window.mouseMove({15, 15});
    machine.clock().now = 1234;
    window.startTransition();
    window.startTransition();
    EXPECT_EQ(machine.display().cursor, -2);
    window.mouseMove({50, 50});
    EXPECT_EQ(machine.display().cursor, -2);
    window.endTransition(false);
    EXPECT_EQ(machine.display().cursor, -3);
    const std::string log = files.text("zorbelog.txt");
    EXPECT_NE(log.find("\nStarting Transition, current ms: 1234\n"), std::string::npos);
    EXPECT_NE(log.find("Ending Transition, current ms: 1234\n\n"), std::string::npos);
    window.mouseMove({15, 15});
    window.mouseMove({50, 50});
    EXPECT_EQ(machine.display().cursor, OMTrinket::defaultCursor);
}

TEST_F(EffectsWindowTest, CursorsThatAnObjectManagesComeAndGoBehindTheWaitCursor) {
    OMTCursor cursor(kOMCursorText);
    window.startTransition();
    cursor.install(window);
    cursor.set(kOMCursorCross);
    EXPECT_EQ(machine.display().cursor, kOMCursorWait);
    window.endTransition(false);
    EXPECT_EQ(machine.display().cursor, kOMCursorCross);
    window.startTransition();
    cursor.uninstall();
    EXPECT_EQ(machine.display().cursor, kOMCursorWait);
    window.endTransition(true);
    EXPECT_EQ(machine.display().cursor, OMTrinket::defaultCursor);
}

TEST_F(EffectsWindowTest, ADisplayInsideTheCycleOfADisplayDoesNotNest) {
    int depth = 0;
    int deepest = 0;
    window.hooks().first = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth < 5) window.displayScreen();
        --depth;
    };
    window.displayScreen();
    EXPECT_EQ(deepest, 1);
}

TEST_F(EffectsWindowTest, WhatIsMissingOrDamagedLeavesTheRestAsItWas) {
    constexpr platform::Rgb kFiltered{0, 0x77, 0};
    window.setPaletteFilter([](OMPalette& colors) { colors[60] = {0, 0x7700, 0}; });
    window.restorePalette(1, 1);
    window.idle();
    pictures[3] = Bytes(20);
    EXPECT_FALSE(window.restorePalette(9, 1));
    EXPECT_FALSE(window.restorePalette(3, 1));
    EXPECT_NE(files.text("zorbelog.txt").find("Background 3 cannot be used"), std::string::npos);
    window.idle();
    EXPECT_EQ(pixel(0, 0), 'p');
    EXPECT_TRUE(takeFailures().empty());

    const auto& shown = machine.display().palette();
    for (const std::size_t size : {0u, 1u, 6u, 768u, 1535u}) {
        palettes[3] = Bytes(size, std::byte{0xF8});
        EXPECT_TRUE(window.restorePalette(1, 3)) << "the picture is there in any case";
        EXPECT_EQ(takeFailures(), Strings{"no palette"}) << size;
        EXPECT_EQ(shown[50], (platform::Rgb{0x40, 0, 0})) << size;
    }
    EXPECT_NE(files.text("zorbelog.txt").find("Palette 3 cannot be used"), std::string::npos);
    for (const std::size_t size : {1536u, 1537u, 70001u}) {
        palettes[3] = Bytes(size, static_cast<std::byte>(size % 100));
        EXPECT_TRUE(window.restorePalette(1, 3));
        EXPECT_EQ(takeFailures(), Strings{});
        EXPECT_EQ(shown[50].blue, size % 100);
        EXPECT_EQ(shown[60], kFiltered);
        for (const std::size_t fixed : {9, 246})
            EXPECT_EQ(shown[fixed], platform::staticPalette()[fixed]);
    }

    window.setPaletteLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    window.setBackgroundLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    EXPECT_EQ(takeFailures(), (Strings{"Palette URL is not installed in EffectsWindow",
                                       "Background URL is not installed in EffectsWindow"}));
}

TEST_F(EffectsWindowTest, StampsBecomePartOfAFrozenScreenAndGoWithTheirPicture) {
    window.restorePalette(1, 1);
    Tile tile(window, {10, 10, 30, 30}, 't');
    const auto stamp = [&] {
        return window.stamp(tile, {50, 50, 60, 60}, [](OMMemCanvas& canvas, Point at) {
            canvas.setColor(OMColor('x'));
            canvas.fillRect({at.x, at.y, at.x + 10, at.y + 10});
        });
    };
    ASSERT_TRUE(stamp());
    window.idle();
    EXPECT_EQ(pixel(55, 55), 'x');
    window.freezeScreen();
    EXPECT_FALSE(window.unstamp(tile));
    ASSERT_TRUE(stamp());
    window.restorePalette(1, 1);
    EXPECT_FALSE(window.unstamp(tile));
    window.idle();
    EXPECT_EQ(pixel(55, 55), 'p');
}

TEST_F(EffectsWindowTest, ACopyOfAnObjectIsAttachedWithThePicture) {
    struct Exit : OMScriptableObject {
        explicit Exit(int& count) : alive(count) { ++alive; }
        Exit(const Exit& other) : OMScriptableObject(other), alive(other.alive) { ++alive; }
        ~Exit() override { --alive; }
        std::unique_ptr<OMScriptableObject> duplicate() override {
            return std::make_unique<Exit>(*this);
        }
        int& alive;
    };
    int alive = 0;
    Exit original(alive);
    EXPECT_FALSE(window.restorePalette(9, 1, original));
    EXPECT_EQ(alive, 1);
    EXPECT_TRUE(window.restorePalette(1, 1, original));
    EXPECT_TRUE(window.restorePalette(2, 1, original));
    EXPECT_EQ(alive, 2);
    auto& background = dynamic_cast<AOBackground&>(*window.background());
    EXPECT_NE(background.attached(), nullptr);
    background.attach(nullptr);
    EXPECT_EQ(alive, 1);
}

} // namespace
