#include "trinkets/windowfixture.h"

#include "aoimage.h"
#include "omao.h"

using namespace testing_support;
using platform::Rect;

namespace {

class PackTest : public WindowTest {
  protected:
    PackTest() {
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 300; ++x)
                *canvas.pixels().at(x, y) =
                    static_cast<std::uint8_t>(y == 0   ? '.'
                                              : y == 1 ? 'f'
                                                       : 'a' + (x + y) % 26);
    }
    OMMemCanvas canvas{300, 20, 8};
};

TEST_F(PackTest, TheResourceIsLaidOutAsItsReadersExpect) {
    const Bytes packed = AOPack(canvas, {0, 0, 4, 2}, '.');
    const int expected[] = {
        1, 0, 1,   0,   8,    0,    0, 0, 0, 0, // counts, rate, flag, reserved
        0, 0, 0,   0,   0,    0,    0, 0,       // frame offset, placement
        4, 0,                                   // entries
        0, 0, 0,   0,   0xFC, 0xFF, 0, 0,       // hold
        0, 0, 0,   0,   0,    0,    0, 0,       // frame 0
        0, 0, 0,   0,   0xFE, 0xFF, 0, 0,       // loop
        0, 0, 0,   0,   0xFF, 0xFF, 0, 0,       // end
        0, 0, 4,   0,   2,    0,                // frame header
        0, 4, 255, 'f', 4,                      // rows
    };
    ASSERT_EQ(packed.size(), std::size(expected));
    for (std::size_t i = 0; i < packed.size(); ++i)
        EXPECT_EQ(std::to_integer<int>(packed[i]), expected[i]) << i;
}

TEST_F(PackTest, WhatIsPackedIsShownAgain) {
    const std::pair<Rect, Rect> rows[] = {
        {{0, 0, 0, 0}, {0, 0, 300, 20}}, // empty: the whole canvas
        {{7, 0, 258, 9}, {7, 0, 258, 9}},
        {{290, 15, 310, 30}, {290, 15, 300, 20}},
        {{-5, -5, 6, 7}, {0, 0, 6, 7}},
    };
    for (const auto& [area, packed] : rows) {
        const auto animation =
            OMAnimation::createFromImage(AOPack(canvas, area, '.'), 0, 0, window);
        ASSERT_TRUE(animation);
        EXPECT_EQ(animation->state(), OMAnimation::State::Held);
        OMMemCanvas copy(300, 20, 8);
        animation->paintAt(copy, {0, 0});
        EXPECT_EQ(pixelsOf(copy, {0, 0, packed.width(), packed.height()}),
                  pixelsOf(canvas, packed));
    }
    EXPECT_TRUE(AOPack(canvas, {300, 0, 310, 10}, '.').empty());
    EXPECT_EQ(OMAnimation::createFromImage(Bytes(20), 0, 0, window), nullptr);
}

TEST_F(PackTest, DeepCanvasesAreRefused) {
    OMMemCanvas deep(10, 10, 24);
    EXPECT_TRUE(AOPack(deep, {}, 0).empty());
    EXPECT_EQ(machine.dialogs().boxes.at(0).text, "Can't pack from a 24-bit canvas.");
}

} // namespace
