// The window of the game: missing and damaged resources. Scripts show the rest.
#include "formats/picture/palette.h"
#include "scene/efwindow.h"

#include "trinkets/windowfixture.h"

using namespace testing_support;

namespace {

using EffectsWindowTest = OMAppTest;

TEST_F(EffectsWindowTest, WhatIsMissingOrDamagedLeavesTheRestAsItWas) {
    std::map<int, Bytes> pictures;
    std::map<int, Bytes> palettes;
    const auto from = [](std::map<int, Bytes>& all) {
        return [&all](int id) -> std::unique_ptr<OMIStream> {
            return all.contains(id) ? std::make_unique<MemoryStream>(all[id]) : nullptr;
        };
    };
    const auto isLogged = [this](const char* text) {
        return files.text("zorbelog.txt").find(text) != std::string::npos;
    };
    EffectsWindow window{{0, 0}, "Game"};
    window.setBackgroundLocator(from(pictures));
    window.setPaletteLocator(from(palettes));
    AseqBuilder picture;
    pictures[1] = picture.block(640, 480, 'p').sequence({{0, 0, -1, 0}, {0, 0, 0, 0}}).build();
    palettes[1] = Bytes(formats::picture::kPaletteSize, std::byte{0x40});
    window.setPaletteFilter([](OMPalette& colors) { colors[60] = {0, 0x7700, 0}; });
    window.restorePalette(1, 1);
    window.idle();
    pictures[3] = Bytes(20);
    EXPECT_FALSE(window.restorePalette(9, 1) || window.restorePalette(3, 1));
    EXPECT_TRUE(isLogged("Background 3 cannot be used"));
    window.idle();
    EXPECT_EQ(*window.canvas().pixels().at(0, 0), 'p');
    EXPECT_TRUE(takeFailures().empty());

    const auto& shown = machine.display().palette();
    int blue = 0x40;
    for (const std::size_t size : {0u, 1u, 1535u, 1536u, 1537u, 70001u}) {
        SCOPED_TRACE(size);
        const bool isWhole = size >= 1536;
        if (isWhole) blue = static_cast<int>(size % 100);
        palettes[3] = Bytes(size, static_cast<std::byte>(size % 100));
        EXPECT_TRUE(window.restorePalette(1, 3)) << "the picture is there in any case";
        EXPECT_EQ(takeFailures(), isWhole ? Strings{} : Strings{"no palette"});
        EXPECT_EQ(shown[50].blue, blue);
        EXPECT_EQ(shown[60], (platform::Rgb{0, 0x77, 0}));
        for (const std::size_t fixed : {9, 246})
            EXPECT_EQ(shown[fixed], platform::staticPalette()[fixed]);
    }
    EXPECT_TRUE(isLogged("Palette 3 cannot be used: it is cut short, to 1535 bytes of 1536"));

    window.setPaletteLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    window.setBackgroundLocator(nullptr);
    EXPECT_FALSE(window.restorePalette(1, 1));
    EXPECT_EQ(takeFailures(), (Strings{"Palette URL is not installed in EffectsWindow",
                                       "Background URL is not installed in EffectsWindow"}));
}

} // namespace
