// Palettes of any length, loaded by the game's window on screens of 8 bits and deeper.
#include "scenes/efwindow.h"

#include "trinkets/windowfixture.h"

#include "aodeep.h"

using namespace testing_support;
using platform::Rgb;

namespace {

constexpr std::size_t kEntry = 6; ///< bytes of a colour

class HostilePaletteTest : public FrameworkTest, public testing::WithParamInterface<int> {
  protected:
    HostilePaletteTest() {
        if (GetParam() > 8) OMApp::useDirectDraw();
        app.emplace(GetParam() > 8 ? OMApp::DisplayMode::FullScreen : OMApp::DisplayMode::PopUp,
                    OMColor(), platform::Rect{0, 0, 640, 480}, GetParam());
        window.emplace(platform::Point{0, 0}, "Game");
        AseqBuilder builder;
        builder.block(640, 480, 100).sequence({{0, 0, 0, 0}});
        EffectsWindow::setBackgroundLocator(
            [data = builder.build()](int) { return std::make_unique<MemoryStream>(data); });
        EffectsWindow::setPaletteLocator(
            [this](int) { return std::make_unique<MemoryStream>(resource); });
    }
    ~HostilePaletteTest() override {
        EffectsWindow::setBackgroundLocator(nullptr);
        EffectsWindow::setPaletteLocator(nullptr);
        window.reset();
        app.reset();
        OMApp::useGDI();
        AOPaletteRecord::setCurrent(nullptr);
    }

    /// The failed checks of the loading; the first colours of the resource are all `color`, as many
    /// as there are bytes for.
    std::vector<std::string> load(std::size_t size, Rgb color) {
        const std::uint8_t words[kEntry] = {color.red, 0xA5, color.green, 0xFF, color.blue, 0};
        resource.clear();
        for (std::size_t i = 0; i < size; ++i) resource.push_back(std::byte{words[i % kEntry]});
        EXPECT_TRUE(window->restorePalette(1, 1)) << "the picture is there in any case";
        window->idle();
        return takeFailures();
    }
    /// Entry 100, which the picture is made of.
    Rgb installed() { return window->canvas().devicePalette()[100]; }
    /// What the screen shows of it.
    std::uint32_t shown() {
        const OMPixels pixels = window->canvas().pixels();
        std::uint32_t value = 0;
        for (int i = 0; i < pixels.bytesPerPixel; ++i)
            value |= std::uint32_t{pixels.at(320, 240)[i]} << 8 * i;
        return value;
    }
    std::uint32_t pixelOf(Rgb color) {
        if (GetParam() == 8) return 100;
        if (GetParam() == 16)
            return static_cast<std::uint32_t>(color.red / 8 * 1024 + color.green / 8 * 32 +
                                              color.blue / 8);
        return static_cast<std::uint32_t>(color.red * 65536 + color.green * 256 + color.blue);
    }

    Bytes resource;
    std::optional<OMApp> app;
    std::optional<EffectsWindow> window;
};
INSTANTIATE_TEST_SUITE_P(Depths, HostilePaletteTest, testing::Values(8, 16, 24, 32));

TEST_P(HostilePaletteTest, ShortOnesFailAndLeaveTheColoursLongOnesDoNot) {
    const Rgb first{0x40, 0x88, 0x10};
    ASSERT_TRUE(load(kRrgbSize, first).empty());
    ASSERT_EQ(installed(), first);
    for (const std::size_t size : {0u, 1u, 6u, 600u, 768u, 1530u, 1535u}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(load(size, {0xF8, 0, 0}), std::vector<std::string>{"no palette"});
        EXPECT_EQ(installed(), first);
        EXPECT_EQ(shown(), pixelOf(first));
    }
    for (const std::size_t size : {1536u, 1537u, 1542u, 70000u}) {
        SCOPED_TRACE(size);
        const Rgb color{0xF8, static_cast<std::uint8_t>(size % 7 * 8), 8};
        EXPECT_TRUE(load(size, color).empty());
        EXPECT_EQ(installed(), color);
        EXPECT_EQ(shown(), pixelOf(color));
        EXPECT_EQ(window->canvas().devicePalette()[9], platform::staticPalette()[9]);
        EXPECT_EQ(window->canvas().devicePalette()[246], platform::staticPalette()[246]);
    }
}

TEST_P(HostilePaletteTest, AShortOneAtFirstLeavesTheWindowToTheNext) {
    EXPECT_EQ(load(1535, {0xF8, 0, 0}), std::vector<std::string>{"no palette"});
    EXPECT_EQ(AOPaletteRecord::current(), nullptr) << "nothing is shown in colours never loaded";
    const Rgb color{0x40, 0x88, 0x10};
    EXPECT_TRUE(load(1536, color).empty());
    EXPECT_EQ(installed(), color);
    EXPECT_EQ(shown(), pixelOf(color));
}

} // namespace
