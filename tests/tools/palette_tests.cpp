#include "pictures/palette.h"

#include "pictures/palettelift.h"
#include "pictures/picture.h"
#include "testfiles.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace platform {
void PrintTo(const Rgb& colour, std::ostream* out) {
    *out << "(" << int{colour.red} << ", " << int{colour.green} << ", " << int{colour.blue} << ")";
}
} // namespace platform

namespace {

using platform::Rgb;
using rsc::Palette;
using rsc::PaletteMaker;
using rsc::Picture;
using testfiles::Rgba;

Rgb randomColour(std::mt19937& random) {
    return {static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random()),
            static_cast<std::uint8_t>(random())};
}

TEST(PaletteLift, RaisesTheValueAndKeepsTheHue) {
    const std::pair<Rgb, Rgb> cases[] = {
        {{100, 50, 25}, {133, 66, 33}}, // times (100 + 33.28) / 100
        {{0, 0, 0}, {33, 33, 33}},          {{1, 0, 0}, {34, 0, 0}},
        {{240, 120, 0}, {255, 127, 0}},     // capped
        {{222, 222, 222}, {254, 254, 254}}, // never pure white
        {{255, 255, 255}, {254, 254, 254}},
    };
    for (const auto& [stored, shown] : cases) EXPECT_EQ(rsc::liftColour(stored), shown);
    EXPECT_EQ(rsc::liftColour(rsc::colourToStore({20, 20, 20})), (Rgb{33, 33, 33}));
    EXPECT_EQ(rsc::liftColour(rsc::colourToStore({20, 0, 0})), (Rgb{34, 0, 0}));
}

TEST(PaletteLift, StoresWhatComesOutAsTheArtistsColour) {
    std::mt19937 random(3);
    for (int i = 0; i < 3000; ++i) {
        const Rgb wanted = randomColour(random);
        const Rgb stored = rsc::colourToStore(wanted);
        const Rgb shown = rsc::liftColour(stored);
        EXPECT_EQ(rsc::colourToStore(shown), stored) << "the same again for what it shows";
        const Rgb reachable = rsc::liftColour(wanted);
        EXPECT_EQ(rsc::liftColour(rsc::colourToStore(reachable)), reachable);
        // lifting small numbers spreads them, so that dark colours are shown a step or two off
        const int largest = std::max({wanted.red, wanted.green, wanted.blue});
        if (largest < 60) continue;
        EXPECT_LE(rsc::componentDistance(shown, wanted), largest >= 90 ? 1 : 2)
            << testing::PrintToString(wanted);
    }
}

TEST(Palette, KeepsFixedColoursAndEncodesWords) {
    const auto png = testfiles::indexedPng(1, {10}, std::vector<Rgba>(256, {200, 100, 40, 255}));
    const Palette palette = Palette::fromIndexed(Picture::fromPng(png));
    for (const std::size_t fixed : {0, 1, 9, 246, 255})
        EXPECT_EQ(palette.shown()[fixed], platform::staticPalette()[fixed]) << fixed;
    for (const std::size_t game : {10, 245})
        EXPECT_LE(rsc::componentDistance(palette.shown()[game], {200, 100, 40}), 1) << game;
    const rsc::Bytes resource = palette.resource();
    ASSERT_EQ(resource.size(), 256U * 6);
    const Rgb stored = rsc::colourToStore({200, 100, 40});
    const rsc::Bytes entry(resource.begin() + 10 * 6, resource.begin() + 11 * 6);
    EXPECT_EQ(entry, (rsc::Bytes{stored.red, 0, stored.green, 0, stored.blue, 0}));
    EXPECT_EQ(resource[255 * 6], 255) << "white";
    const Picture truecolour = Picture::fromPng(testfiles::truecolourPng(1, {{1, 2, 3, 255}}));
    EXPECT_THROW((void)Palette::fromIndexed(truecolour), rsc::Refusal);
}

TEST(Palette, MapsToTheNearestShownColour) {
    rsc::Colours wanted{};
    wanted[10] = {200, 0, 0};
    wanted[245] = {0, 0, 200};
    const Palette palette = Palette::fromColours(wanted);
    EXPECT_EQ(palette.nearest({210, 10, 5}), 10);
    EXPECT_EQ(palette.nearest({10, 10, 190}), 245);
    EXPECT_EQ(palette.nearest({0, 0, 0}), Palette::kBlack);
    EXPECT_EQ(palette.nearest({255, 255, 255}), Palette::kWhite);
    EXPECT_EQ(palette.nearest({10, 10, 10}), Palette::kBlack);
    EXPECT_EQ(palette.nearest({33, 33, 33}), 11) << "unused entries show a dark grey";
    EXPECT_NE(palette.nearest({255, 0, 0}), 249) << "other fixed colours are not for pictures";
}

TEST(PaletteMaker, KeepsFewColoursAsTheyAre) {
    PaletteMaker maker;
    maker.add(
        Picture::fromPng(testfiles::truecolourPng(3, {{0, 0, 0, 255},
                                                      {255, 255, 255, 255},
                                                      {200, 100, 40, 255}, // black, white: fixed
                                                      {90, 80, 170, 128},
                                                      {90, 200, 170, 127},
                                                      {5, 5, 5, 255}}))); // transparent; too dark
    const Palette palette = maker.make();
    EXPECT_LE(rsc::componentDistance(palette.shown()[10], {90, 80, 170}), 1);
    EXPECT_LE(rsc::componentDistance(palette.shown()[11], {200, 100, 40}), 1);
    EXPECT_EQ(palette.shown()[12], (Rgb{33, 33, 33})) << "nothing else took an entry";
}

TEST(PaletteMaker, ReducesManyColoursAlwaysInTheSameWay) {
    std::vector<Rgba> pixels;
    for (int i = 0; i < 64 * 64; ++i)
        pixels.push_back({static_cast<std::uint8_t>(i % 64 * 4),
                          static_cast<std::uint8_t>(i / 64 * 4),
                          static_cast<std::uint8_t>(128 + i % 7 * 10), 255});
    const Picture picture = Picture::fromPng(testfiles::truecolourPng(64, pixels));
    PaletteMaker maker;
    maker.add(picture);
    std::optional<Palette> palette;
    const std::string refusal = testfiles::refusalOf([&] { palette = maker.make(); });
    if (refusal.find("built without libimagequant") != std::string::npos) GTEST_SKIP() << refusal;
    ASSERT_EQ(refusal, "");
    EXPECT_EQ(maker.make().resource(), palette->resource());
    std::set<std::uint8_t> used;
    double error = 0;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const Rgb colour = picture.pixel(i).colour;
        used.insert(palette->nearest(colour));
        error += rsc::colourDistance(colour, palette->shown()[palette->nearest(colour)]);
    }
    EXPECT_GT(used.size(), 200U);
    EXPECT_LT(error / static_cast<double>(picture.size()), 200.0);
}

TEST(Picture, ReadsFewAndManyBitsAPixel) {
    const auto two = testfiles::indexedPng(3, {0, 2, 1}, {{9, 8, 7}, {1, 1, 1, 0}, {2, 2, 2}});
    const Picture indexed = Picture::fromPng(two); // bits a pixel in the file
    EXPECT_EQ(indexed.index(1), 2);
    EXPECT_FALSE(indexed.pixel(2).opaque());

    const std::uint16_t grey[] = {0x8080, 0xFFFF, 0x1234, 0x0000};
    png_image image = testfiles::pngImage(2, 2, PNG_FORMAT_LINEAR_Y_ALPHA);
    const Picture deep = Picture::fromPng(testfiles::writePng(image, grey, nullptr));
    EXPECT_EQ(deep.pixel(0).colour.red, deep.pixel(0).colour.blue);
    EXPECT_TRUE(deep.pixel(0).opaque());
    EXPECT_FALSE(deep.pixel(1).opaque());
}

TEST(Picture, RefusesDamagedFiles) {
    const auto png =
        testfiles::indexedPng(3, {0, 2, 1}, {{9, 8, 7, 255}, {1, 1, 1, 0}, {2, 2, 2, 255}});
    for (std::size_t size = 0; size < png.size(); ++size) {
        const rsc::Bytes part(png.begin(), png.begin() + static_cast<long>(size));
        EXPECT_THROW((void)Picture::fromPng(part), rsc::Refusal) << size;
    }
    rsc::Bytes huge = png;
    huge[16] = 0x7F; // the width
    EXPECT_THROW((void)Picture::fromPng(huge), rsc::Refusal);
}

} // namespace
