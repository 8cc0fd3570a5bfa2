// What flashes is held still: counted in what a person would see, by the second.
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"
#include "platform/host/screen/pixels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sstream>

namespace platform {
namespace {

/// Of grey.
double luminance(std::uint32_t colour) { return std::pow((colour & 0xFF) / 255.0, 2.2); }

/// Most flashes in any second of a screen whose `side` pixels go to and fro 10 times a second.
int mostFlashes(bool calm, int side, bool byPalette, int depth) {
    TemporaryFolder folder;
    std::ostringstream ignored;
    HeadlessPlatform machine({.host = {folder.path(), "", folder.path("home")},
                              .calm = calm,
                              .screen = {640, 480, depth},
                              .report = &ignored});
    auto& display = dynamic_cast<HeadlessDisplay&>(machine.display());
    const auto seen = [&] {
        std::uint32_t colour = 0;
        display.flush();
        ColourReader(display.seen(), display.palette()).read(9, 9, std::span(&colour, 1));
        return colour;
    };
    const auto show = [&](bool bright) {
        const auto grey = static_cast<std::uint8_t>(bright ? 0xFF : 0x20);
        if (byPalette) return display.setPalette(20, std::vector<Rgb>{{grey, grey, grey}});
        for (int y = 0; y < side; ++y)
            std::fill_n(display.screen().row(y), side * depth / 8, bright ? 0xFF : 0);
        display.present({0, 0, side, side});
    };
    if (byPalette)
        for (int y = 0; y < 480; ++y) std::fill_n(display.screen().row(y), 640, 20);
    display.present({0, 0, 640, 480});
    std::vector<int> changesMs;
    double before = luminance(seen());
    for (int ms = 0; ms < 2600; ms += 50, machine.clock().sleep(50)) {
        show(ms / 50 % 2 == 0);
        const double now = luminance(seen());
        if (std::abs(now - before) >= 0.1) changesMs.push_back(ms);
        before = now;
    }
    show(true);
    machine.clock().sleep(1000);
    EXPECT_EQ(seen() & 0xFFFFFF, 0xFFFFFFU) << "all is seen a second later";
    std::ptrdiff_t most = 0;
    for (auto first = changesMs.begin(); first != changesMs.end(); ++first)
        most = std::max(most, std::lower_bound(first, changesMs.end(), *first + 1000) - first);
    return static_cast<int>(most / 2);
}

TEST(CalmPicture, FlashesThreeTimesASecondAtMost) {
    EXPECT_EQ(mostFlashes(false, 640, true, 8), 10);
    EXPECT_EQ(mostFlashes(true, 640, true, 8), 3) << "by its palette";
    EXPECT_EQ(mostFlashes(true, 240, false, 16), 3);
    EXPECT_EQ(mostFlashes(true, 120, false, 8), 10) << "small enough";
}

} // namespace
} // namespace platform
