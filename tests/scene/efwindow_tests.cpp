// The window of the game: damaged resources, and what only native code does. Scripts show the rest.
#include "formats/picture/palette.h"
#include "scene/efwindow.h"

#include "trinkets/windowfixture.h"

#include "omcursor.h"
#include "omtcrsr.h"

#include <map>

using namespace testing_support;

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

TEST_F(EffectsWindowTest, CursorsThatAnObjectManagesComeAndGoBehindTheWaitCursor) {
    OMTCursor cursor(kOMCursorText);
    machine.clock().now = 0;
    window.startTransition();
    cursor.install(window);
    cursor.set(kOMCursorCross);
    EXPECT_EQ(machine.display().cursor, kOMCursorWait);
    window.endTransition(false);
    EXPECT_EQ(machine.display().cursor, kOMCursorCross);
    const std::string log = files.text("zorbelog.txt");
    EXPECT_NE(log.find("\nStarting Transition, current ms: 0\n"), std::string::npos);
    EXPECT_NE(log.find("Ending Transition, current ms: 0\n\n"), std::string::npos);
    window.startTransition();
    cursor.uninstall();
    EXPECT_EQ(machine.display().cursor, kOMCursorWait);
    window.endTransition(true);
    EXPECT_EQ(machine.display().cursor, OMTrinket::defaultCursor);
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
