// Colours that artists see, as they are stored, and pictures in them.
#include "pictures/palettelift.h"
#include "tooltest.h"

#include <random>

namespace {

using namespace testfiles;
using platform::Rgb;
using rsc::Picture;

TEST(PaletteLift, RaisesTheValueKeepsTheHueAndIsTurnedRound) {
    const std::pair<Rgb, Rgb> rows[] = {
        {{100, 50, 25}, {133, 66, 33}}, // times (100 + 33.28) / 100
        {{0, 0, 0}, {33, 33, 33}},          {{1, 0, 0}, {34, 0, 0}},
        {{240, 120, 0}, {255, 127, 0}},     // capped
        {{222, 222, 222}, {254, 254, 254}}, // never pure white
        {{255, 255, 255}, {254, 254, 254}},
    };
    for (const auto& [stored, shown] : rows)
        EXPECT_TRUE(rsc::liftColour(stored) == shown) << int{stored.red};
    EXPECT_TRUE(rsc::liftColour(rsc::colourToStore({20, 20, 20})) == (Rgb{33, 33, 33}));
    EXPECT_TRUE(rsc::liftColour(rsc::colourToStore({20, 0, 0})) == (Rgb{34, 0, 0}));
    std::mt19937 random(3);
    const auto component = [&] { return static_cast<std::uint8_t>(random()); };
    for (int i = 0; i < 3000; ++i) {
        const Rgb wanted{component(), component(), component()};
        const Rgb shown = rsc::liftColour(rsc::colourToStore(wanted));
        const Rgb reachable = rsc::liftColour(wanted);
        EXPECT_TRUE(rsc::liftColour(rsc::colourToStore(reachable)) == reachable) << i;
        // lifting small numbers spreads them, so that dark colours are shown a step or two off
        const int largest = std::max({wanted.red, wanted.green, wanted.blue});
        const int most = largest >= 90 ? 1 : largest >= 60 ? 2 : 255;
        EXPECT_LE(rsc::componentDistance(shown, wanted), most) << i;
    }
}

TEST(Picture, ReadsFewAndManyBitsAPixelAndRefusesDamage) {
    const auto two = indexedPng(3, {0, 2, 1}, {{{9, 8, 7}}, {{1, 1, 1}, 0}, {{2, 2, 2}}});
    const Picture indexed = Picture::fromPng(two); // bits a pixel in the file
    EXPECT_TRUE(indexed.index(1) == 2 && !indexed.pixel(2).opaque());
    std::vector<Bytes> damaged{changed(two, 16, 0x7F)}; // its width
    for (long size = 0; size < std::ssize(two); ++size)
        damaged.emplace_back(two.begin(), two.begin() + size);
    for (const Bytes& file : damaged)
        EXPECT_NE(refusalOf([&] { return Picture::fromPng(file); }), "") << file.size();
    // Grey and alpha of 16 bits each.
    const Picture deep = Picture::fromPng(
        bytesOf("89504E470D0A1A0A(3)0D49484452(3)02(3)011004(3)0EBB6B42(3)114"
                "944415478DA636868F8FF5FC884810100136203452EA2B8C1(4)49454E44AE426082"));
    EXPECT_TRUE(deep.pixel(0).opaque() && !deep.pixel(1).opaque());
    EXPECT_EQ(deep.pixel(0).colour.red, deep.pixel(0).colour.blue);
}

} // namespace
