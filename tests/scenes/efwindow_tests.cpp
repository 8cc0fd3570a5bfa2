#include "scenes/efwindow.h"

#include "trinkets/windowfixture.h"

#include "omao.h"
#include "omcursor.h"
#include "omtcrsr.h"

#include <map>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

Bytes palette(std::uint8_t red) {
    Bytes bytes(kRrgbSize);
    for (std::size_t at = 0; at < bytes.size(); at += 6) bytes[at] = std::byte{red};
    return bytes;
}

class EffectsWindowTest : public ApplicationTest {
  protected:
    EffectsWindowTest() {
        EffectsWindow::setBackgroundLocator([this](int id) { return find(pictures, id); });
        EffectsWindow::setPaletteLocator([this](int id) { return find(palettes, id); });
        AseqBuilder picture;
        picture.block(640, 480, 'p').sequence({{0, 0, -1, 0}, {0, 0, 0, 0}});
        pictures[1] = picture.build();
        AseqBuilder small;
        small.x = 100;
        small.block(10, 10, 's').sequence({{5, 7, 0, 0}});
        pictures[2] = small.build();
        palettes[1] = palette(0x40);
    }
    ~EffectsWindowTest() override {
        EffectsWindow::setBackgroundLocator(nullptr);
        EffectsWindow::setPaletteLocator(nullptr);
        EffectsWindow::setPaletteFilter(nullptr);
    }

    static std::unique_ptr<OMIStream> find(const std::map<int, Bytes>& all, int id) {
        const auto found = all.find(id);
        return found == all.end() ? nullptr : std::make_unique<MemoryStream>(found->second);
    }
    char pixel(int x, int y) { return static_cast<char>(*window.canvas().pixels().at(x, y)); }
    void queueClick() {
        machine.events().queue.push_back({platform::Message::Kind::MouseDown, 0, {20, 20}, {}, 0});
    }

    std::map<int, Bytes> pictures;
    std::map<int, Bytes> palettes;
    EffectsWindow window{{0, 0}, "Game"};
};

TEST_F(EffectsWindowTest, WhileBlackNothingIsShownUntilTheDisplay) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    window.idle();
    ASSERT_EQ(pixel(15, 15), 't');
    window.canvas().setClipRegion(OMRegion(Rect{0, 0, 1, 1}));
    window.goToBlack();
    EXPECT_EQ(pixel(15, 15), 0);
    EXPECT_FALSE(window.isPresenting());
    tile.offset(5, 5);
    window.idle();
    EXPECT_EQ(pixel(20, 20), 0);
    queueClick();
    window.displayScreen();
    EXPECT_EQ(pixel(20, 20), 't');
    EXPECT_TRUE(machine.events().queue.empty());
}

TEST_F(EffectsWindowTest, TheQuickEndShowsOnlyWhatChanges) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    Tile other(window, {50, 50, 60, 60}, 'o');
    window.idle();
    window.goToBlack();
    other.offset(1, 0);
    window.idle();
    queueClick();
    window.endTransition(true);
    EXPECT_TRUE(machine.events().queue.empty());
    window.idle();
    EXPECT_EQ(pixel(15, 15), 0);
    EXPECT_EQ(pixel(55, 55), 'o');
}

TEST_F(EffectsWindowTest, TheBackgroundIsDeafWhileTheScreenIsBlack) {
    window.restorePalette(1, 1);
    int clicks = 0;
    window.background()->mouseDown = [&](Point) { ++clicks; };
    for (const bool quickly : {false, true}) {
        window.startTransition();
        window.mouseDown({5, 5});
        EXPECT_EQ(clicks, 0);
        window.endTransition(quickly);
        window.mouseDown({5, 5});
        EXPECT_EQ(std::exchange(clicks, 0), 1);
    }
}

TEST_F(EffectsWindowTest, ClicksOnABlackScreenReachNobodyEvenWhenTheLoopGoesOn) {
    window.restorePalette(1, 1);
    Tile held(window, {10, 10, 30, 30}, 't');
    int clicks = 0;
    int releases = 0;
    held.attachHandler("mouseDown", [&] { ++clicks; });
    held.attachHandler("dblClick", [&] { ++clicks; });
    held.attachHandler("mouseUp", [&] { ++releases; });
    window.defaults().mouseDown = [&](Point) { ++clicks; };
    const auto message = [&](platform::Message::Kind kind, Point at) {
        machine.events().queue.push_back({kind, 0, at, {}, 0});
        app.pass();
    };
    using Kind = platform::Message::Kind;
    message(Kind::MouseDown, {15, 15});
    EXPECT_EQ(std::exchange(clicks, 0), 1);
    window.goToBlack();
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
    EXPECT_EQ(window.lastMousePosition(), (Point{200, 200}));
    window.displayScreen();
    message(Kind::MouseDown, {15, 15});
    EXPECT_EQ(clicks, 1);
}

TEST_F(EffectsWindowTest, AReleaseThatATransitionDropsLetsGoOfWhatIsHeld) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    const auto loseRelease = [&] {
        machine.events().releaseDropped = true;
        window.displayScreen();
    };
    const auto expectFree = [&] {
        EXPECT_EQ(window.mouseTarget(), nullptr);
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
    EXPECT_EQ(window.mouseTarget(), &tile);
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
    int cursorThen = 0;
    window.setTransitionEnd([&] { cursorThen = machine.display().cursor; });
    window.endTransition(false);
    EXPECT_EQ(cursorThen, -2);
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

TEST_F(EffectsWindowTest, DoubleClicksCountAsPressesWhileDisabled) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    std::string heard;
    tile.attachHandler("dblClick", [&] { heard += "double "; });
    tile.attachHandler("mouseDown", [&] { heard += "down "; });
    window.doubleClick({15, 15});
    window.setDoubleClicksEnabled(false);
    window.doubleClick({15, 15});
    window.mouseUp({15, 15});
    window.setDoubleClicksEnabled(true);
    window.doubleClick({15, 15});
    EXPECT_EQ(heard, "double down double ");
}

// Background and palette

TEST_F(EffectsWindowTest, APictureLiesUnderTheTrinketsAtItsEmbeddedPlace) {
    Tile tile(window, {10, 10, 30, 30}, 't');
    EXPECT_TRUE(window.restorePalette(1, 1));
    window.idle();
    EXPECT_EQ(pixel(0, 0), 'p');
    EXPECT_EQ(pixel(639, 479), 'p');
    EXPECT_EQ(pixel(15, 15), 't');
    EXPECT_EQ(machine.display().palette()[50], (platform::Rgb{0x40, 0, 0}));
    const OMTBackground* first = window.background();

    EXPECT_TRUE(window.restorePalette(2, 99)); // has no palette of its own
    EXPECT_EQ(window.background(), first);
    window.idle();
    EXPECT_EQ(pixel(0, 0), 0);
    EXPECT_EQ(pixel(105, 7), 's');
    EXPECT_EQ(pixel(114, 16), 's');
    EXPECT_EQ(pixel(115, 17), 0);
    EXPECT_EQ(pixel(15, 15), 't');
    EXPECT_EQ(machine.display().palette()[50], (platform::Rgb{0x40, 0, 0}));
}

TEST_F(EffectsWindowTest, TheFilterMayChangeThePalette) {
    EffectsWindow::setPaletteFilter([](OMPalette& colors) { colors[60] = {0, 0x7700, 0}; });
    window.restorePalette(1, 1);
    EXPECT_EQ(machine.display().palette()[60], (platform::Rgb{0, 0x77, 0}));
    EXPECT_EQ(machine.display().palette()[61], (platform::Rgb{0x40, 0, 0}));
}

TEST_F(EffectsWindowTest, WhatIsMissingOrDamagedLeavesTheRestAsItWas) {
    window.restorePalette(1, 1);
    window.idle();
    pictures[3] = Bytes(20);
    palettes[3] = Bytes(100);
    EXPECT_FALSE(window.restorePalette(9, 1));
    EXPECT_FALSE(window.restorePalette(3, 1));
    EXPECT_NE(files.text("zorbelog.txt").find("Background 3 cannot be used"), std::string::npos);
    window.idle();
    EXPECT_EQ(pixel(0, 0), 'p');
    EXPECT_TRUE(takeFailures().empty());
    EXPECT_TRUE(window.restorePalette(1, 3));
    EXPECT_EQ(takeFailures().size(), 1u); // "no palette"
    EXPECT_EQ(machine.display().palette()[50], (platform::Rgb{0x40, 0, 0}));

    EffectsWindow::setPaletteLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    EXPECT_EQ(takeFailures(),
              std::vector<std::string>{"Palette URL is not installed in EffectsWindow"});
    EffectsWindow::setBackgroundLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    EXPECT_EQ(takeFailures(),
              std::vector<std::string>{"Background URL is not installed in EffectsWindow"});
}

TEST_F(EffectsWindowTest, AFrozenScreenOutlivesItsTrinkets) {
    window.freezeScreen(); // no background, nothing to freeze into
    window.restorePalette(1, 1);
    auto tile = std::make_unique<Tile>(window, Rect{10, 10, 30, 30}, 't');
    window.idle();
    window.freezeScreen();
    tile.reset();
    window.idle();
    EXPECT_EQ(pixel(15, 15), 't');
    EXPECT_EQ(pixel(5, 5), 'p');
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
