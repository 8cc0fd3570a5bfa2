// Colours that artists see, as they are stored, and pictures in them.
#include "pictures/palette.h"

#include "pictures/palettelift.h"
#include "tooltest.h"

#include <png.h>

#include <random>

namespace platform {
void PrintTo(const Rgb& colour, std::ostream* out) {
    *out << "(" << int{colour.red} << ", " << int{colour.green} << ", " << int{colour.blue} << ")";
}
} // namespace platform

namespace {

using namespace testfiles;
using platform::Rgb;
using rsc::Palette;
using rsc::PaletteMaker;
using rsc::Picture;

Picture truecolour(std::size_t width, const Pixels& pixels) {
    return Picture::fromPng(png(width, pixels));
}

TEST(PaletteLift, RaisesTheValueAndKeepsTheHue) {
    const std::pair<Rgb, Rgb> rows[] = {
        {{100, 50, 25}, {133, 66, 33}}, // times (100 + 33.28) / 100
        {{0, 0, 0}, {33, 33, 33}},          {{1, 0, 0}, {34, 0, 0}},
        {{240, 120, 0}, {255, 127, 0}},     // capped
        {{222, 222, 222}, {254, 254, 254}}, // never pure white
        {{255, 255, 255}, {254, 254, 254}},
    };
    for (const auto& [stored, shown] : rows) EXPECT_EQ(rsc::liftColour(stored), shown);
    EXPECT_EQ(rsc::liftColour(rsc::colourToStore({20, 20, 20})), (Rgb{33, 33, 33}));
    EXPECT_EQ(rsc::liftColour(rsc::colourToStore({20, 0, 0})), (Rgb{34, 0, 0}));
}

TEST(PaletteLift, StoresWhatComesOutAsTheArtistsColour) {
    std::mt19937 random(3);
    const auto component = [&] { return static_cast<std::uint8_t>(random()); };
    for (int i = 0; i < 3000; ++i) {
        const Rgb wanted{component(), component(), component()};
        const Rgb stored = rsc::colourToStore(wanted);
        const Rgb shown = rsc::liftColour(stored);
        EXPECT_EQ(rsc::colourToStore(shown), stored) << "the same again for what it shows";
        const Rgb reachable = rsc::liftColour(wanted);
        EXPECT_EQ(rsc::liftColour(rsc::colourToStore(reachable)), reachable);
        // lifting small numbers spreads them, so that dark colours are shown a step or two off
        const int largest = std::max({wanted.red, wanted.green, wanted.blue});
        const int most = largest >= 90 ? 1 : largest >= 60 ? 2 : 255;
        EXPECT_LE(rsc::componentDistance(shown, wanted), most) << testing::PrintToString(wanted);
    }
}

TEST(Palette, KeepsFixedColoursAndMapsToTheNearestShownOne) {
    const auto picture = indexedPng(1, {10}, Pixels(256, {{200, 100, 40}}));
    const Palette indexed = Palette::fromIndexed(Picture::fromPng(picture));
    for (const std::size_t fixed : {0, 1, 9, 246, 255})
        EXPECT_EQ(indexed.shown()[fixed], platform::staticPalette()[fixed]) << fixed;
    for (const std::size_t game : {10, 245})
        EXPECT_LE(rsc::componentDistance(indexed.shown()[game], {200, 100, 40}), 1) << game;
    const Bytes resource = indexed.resource();
    const Rgb stored = rsc::colourToStore({200, 100, 40});
    EXPECT_EQ(Bytes(resource.begin() + 10 * 6, resource.begin() + 11 * 6),
              (Bytes{stored.red, 0, stored.green, 0, stored.blue, 0}));
    EXPECT_EQ(resource.at(255 * 6), 255) << "white";

    rsc::Colours wanted{};
    wanted[10] = {200, 0, 0};
    wanted[245] = {0, 0, 200};
    const Palette palette = Palette::fromColours(wanted);
    const std::pair<Rgb, int> rows[] = {
        {{210, 10, 5}, 10}, {{10, 10, 190}, 245},   {{0, 0, 0}, Palette::kBlack},
        {{10, 10, 10}, 0},  {{255, 255, 255}, 255}, {{33, 33, 33}, 11}, // unused: a dark grey
        {{255, 0, 0}, 10},                                              // 249 is not for pictures
    };
    for (const auto& [colour, index] : rows)
        EXPECT_EQ(palette.nearest(colour), index) << testing::PrintToString(colour);
}

TEST(PaletteMaker, KeepsFewColoursAsTheyAre) {
    PaletteMaker maker;
    maker.add(truecolour(3, {{{0, 0, 0}},
                             {{255, 255, 255}}, // fixed
                             {{200, 100, 40}},
                             {{90, 80, 170}, 128},
                             {{90, 200, 170}, 127}, // transparent
                             {{5, 5, 5}}}));        // too dark
    const Palette palette = maker.make();
    EXPECT_LE(rsc::componentDistance(palette.shown()[10], {90, 80, 170}), 1);
    EXPECT_LE(rsc::componentDistance(palette.shown()[11], {200, 100, 40}), 1);
    EXPECT_EQ(palette.shown()[12], (Rgb{33, 33, 33})) << "nothing else took an entry";
}

TEST(PaletteMaker, ReducesManyColoursAlwaysInTheSameWay) {
    Pixels pixels;
    for (unsigned i = 0; i < 64 * 64; ++i)
        pixels.push_back(
            {{static_cast<std::uint8_t>(i % 64 * 4), static_cast<std::uint8_t>(i / 64 * 4),
              static_cast<std::uint8_t>(128 + i % 7 * 10)}});
    PaletteMaker maker;
    maker.add(truecolour(64, pixels));
    std::optional<Palette> palette;
    const std::string refusal = refusalOf([&] { return palette = maker.make(); });
    if (refusal.find("built without libimagequant") != std::string::npos) GTEST_SKIP() << refusal;
    ASSERT_EQ(refusal, "");
    EXPECT_EQ(maker.make().resource(), palette->resource());
    std::set<std::uint8_t> used;
    double error = 0;
    for (const rsc::Pixel& pixel : pixels) {
        const std::uint8_t index = palette->nearest(pixel.colour);
        used.insert(index);
        error += rsc::colourDistance(pixel.colour, palette->shown()[index]);
    }
    EXPECT_GT(used.size(), 200U);
    EXPECT_LT(error / static_cast<double>(pixels.size()), 200.0);
}

TEST(Picture, ReadsFewAndManyBitsAPixelAndRefusesDamage) {
    const auto two = indexedPng(3, {0, 2, 1}, {{{9, 8, 7}}, {{1, 1, 1}, 0}, {{2, 2, 2}}});
    const Picture indexed = Picture::fromPng(two); // bits a pixel in the file
    EXPECT_EQ(indexed.index(1), 2);
    EXPECT_FALSE(indexed.pixel(2).opaque());
    const auto refusal = [](const Bytes& file) {
        return refusalOf([&] { return Picture::fromPng(file); });
    };
    for (long size = 0; size < std::ssize(two); ++size)
        EXPECT_NE(refusal({two.begin(), two.begin() + size}), "") << size;
    EXPECT_NE(refusal(changed(two, 16, 0x7F)), "") << "the width";

    const std::uint16_t grey[] = {0x8080, 0xFFFF, 0x1234, 0x0000};
    png_image image{
        .version = PNG_IMAGE_VERSION, .width = 2, .height = 1, .format = PNG_FORMAT_LINEAR_Y_ALPHA};
    Bytes file(1000);
    png_alloc_size_t size = file.size();
    ASSERT_TRUE(png_image_write_to_memory(&image, file.data(), &size, 0, grey, 0, nullptr));
    const Picture deep = Picture::fromPng(file);
    EXPECT_EQ(deep.pixel(0).colour.red, deep.pixel(0).colour.blue);
    EXPECT_TRUE(deep.pixel(0).opaque() && !deep.pixel(1).opaque());
}

} // namespace
