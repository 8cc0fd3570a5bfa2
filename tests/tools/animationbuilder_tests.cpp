#include "animationbuilder.h"

#include "aorow.h"
#include "palette.h"
#include "picture.h"
#include "testfiles.h"

#include <gmock/gmock.h>

#include <map>

namespace {

using rsc::AnimationPlan;
using rsc::Aseq;
using rsc::AseqEntry;
using rsc::Bytes;
using rsc::Palette;
using rsc::Picture;
using rsc::Transparency;
using testfiles::Rgba;
using testing::HasSubstr;
using testing::StartsWith;

constexpr Rgba kNone{1, 2, 3, 0};
constexpr Rgba kRed{200, 20, 20, 255};
constexpr Rgba kBlue{20, 20, 200, 255};
constexpr std::uint8_t kRedIndex = 10;
constexpr std::uint8_t kBlueIndex = 11;
constexpr std::uint8_t kClear = 99; ///< stands for transparent pixels in expected rows

class AnimationBuilder : public testing::Test {
  protected:
    AnimationBuilder() {
        rsc::Colours wanted{};
        wanted[kRedIndex] = {kRed.red, kRed.green, kRed.blue};
        wanted[kBlueIndex] = {kBlue.red, kBlue.green, kBlue.blue};
        palette_ = Palette::fromColours(wanted);
    }

    void addFrame(const std::string& name, const Bytes& png, int dx = 0, int dy = 0) {
        pictures_[name] = png;
        plan_.frames.push_back({{name, static_cast<int>(plan_.frames.size()) + 1}, dx, dy});
    }

    void addSequence(rsc::AseqSequence entries) {
        entries.push_back({0, 0, -1, 0});
        plan_.sequences.push_back({50, std::move(entries)});
    }

    const Aseq& build(bool withPalette = true) {
        bytes_ = rsc::buildAnimation(
            plan_, withPalette ? &palette_ : nullptr,
            [&](const rsc::FileName& file) { return Picture::fromPng(pictures_.at(file.path)); });
        aseq_ = rsc::readAseq(bytes_);
        return aseq_;
    }

    std::string refusal(bool withPalette = true) {
        return testfiles::refusalOf([&] { (void)build(withPalette); });
    }

    [[nodiscard]] Bytes pixels(std::size_t frame) const {
        const auto& [width, height, rows] = aseq_.frames.at(frame);
        Bytes all(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        std::size_t used = 0;
        for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
            const auto size = static_cast<std::size_t>(width);
            used +=
                aorow::decodeRow(rows.subspan(used), std::span(all).subspan(y * size, size), kClear)
                    .bytes;
        }
        return all;
    }

    AnimationPlan plan_;
    Palette palette_;
    std::map<std::string, Bytes> pictures_;
    Bytes bytes_;
    Aseq aseq_;
};

TEST_F(AnimationBuilder, CropsFramesAndMovesTheirSteps) {
    plan_.rate = 8;
    addFrame("a",
             testfiles::truecolourPng(4, {kNone, kNone, kNone, kNone,   //
                                          kNone, kRed, kNone, kNone,    //
                                          kNone, kNone, kBlue, kNone}), //
             10, 20);
    addSequence({{5, -5, 0, 0}, {7, 7, -101, 3}});
    const Aseq& aseq = build();
    EXPECT_EQ(pixels(0), (Bytes{kRedIndex, kClear, kClear, kBlueIndex}));
    EXPECT_EQ(aseq.sequences[0][0], (AseqEntry{5 + 10 + 1, -5 + 20 + 1, 0, 0}));
    EXPECT_EQ(aseq.sequences[0][1], (AseqEntry{7, 7, -101, 3})) << "no frame, so not moved";

    plan_.crop = false;
    build();
    EXPECT_EQ(aseq_.frames[0].width, 4);
    EXPECT_EQ(aseq_.frames[0].height, 3);
    EXPECT_EQ(aseq_.sequences[0][0], (AseqEntry{15, 15, 0, 0}));
}

TEST_F(AnimationBuilder, SharesEqualFrames) {
    plan_.rate = 8;
    addFrame("a", testfiles::truecolourPng(2, {kNone, kRed}));
    addFrame("b", testfiles::truecolourPng(1, {kBlue}));
    addFrame("c", testfiles::truecolourPng(1, {kRed}), 4, 0); // what is left of the first one
    addFrame("d", testfiles::truecolourPng(1, {kNone}));      // nothing to see
    addSequence({{0, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 2, 0}, {0, 0, 3, 0}});
    const Aseq& aseq = build();
    ASSERT_EQ(aseq.frames.size(), 3U);
    EXPECT_EQ(aseq.sequences[0][0], (AseqEntry{1, 0, 0, 0}));
    EXPECT_EQ(aseq.sequences[0][1], (AseqEntry{0, 0, 1, 0}));
    EXPECT_EQ(aseq.sequences[0][2], (AseqEntry{4, 0, 0, 0}));
    EXPECT_EQ(aseq.sequences[0][3], (AseqEntry{0, 0, 2, 0}));
    EXPECT_EQ(pixels(2), (Bytes{kClear})) << "an empty frame is one clear pixel";
}

TEST_F(AnimationBuilder, MakesAStillPictureWithoutASequence) {
    plan_.x = -2047;
    plan_.y = 2048;
    plan_.depth = 255;
    addFrame("a", testfiles::truecolourPng(3, {kNone, {0, 0, 0, 255}, {255, 255, 255, 255}}));
    const Aseq& aseq = build();
    EXPECT_EQ(aseq.framesPerSecond, rsc::kStillRate);
    EXPECT_EQ(aseq.x, -2047);
    EXPECT_EQ(aseq.y, 2048);
    EXPECT_EQ(aseq.depth, 255);
    EXPECT_EQ(pixels(0), (Bytes{0, 255})) << "black and white are fixed colours";
    EXPECT_EQ(aseq.sequences[0],
              (rsc::AseqSequence{{0, 0, -4, 0}, {1, 0, 0, 0}, {0, 0, -2, 0}, {0, 0, -1, 0}}));
}

TEST_F(AnimationBuilder, KeepsIndicesUnlessAskedToMapColours) {
    const std::vector<Rgba> colours = {kNone, kBlue, kRed, kBlue};
    addFrame("a", testfiles::indexedPng(4, {2, 0, 1, 3}, colours));
    build(false);
    EXPECT_EQ(pixels(0), (Bytes{2, kClear, 1, 3}));
    plan_.remap = true;
    build();
    EXPECT_EQ(pixels(0), (Bytes{kRedIndex, kClear, kBlueIndex, kBlueIndex}));
}

TEST_F(AnimationBuilder, DecidesWhatIsTransparent) {
    plan_.crop = false;
    const std::vector<Rgba> colours = {kNone, kBlue, kRed, kBlue};
    addFrame("a", testfiles::indexedPng(4, {2, 0, 1, 3}, colours));
    plan_.transparency.kind = Transparency::Kind::None;
    build();
    EXPECT_EQ(pixels(0), (Bytes{2, 0, 1, 3}));
    plan_.transparency = {Transparency::Kind::Index, 3, {}};
    build();
    EXPECT_EQ(pixels(0), (Bytes{2, 0, 1, kClear}));
    plan_.transparency = {Transparency::Kind::Colour, 0, {kBlue.red, kBlue.green, kBlue.blue}};
    build();
    EXPECT_EQ(pixels(0), (Bytes{2, kClear, kClear, kClear}));

    plan_.transparency = {};
    plan_.frames.clear();
    addFrame("b", testfiles::truecolourPng(2, {{200, 20, 20, 127}, {200, 20, 20, 128}}));
    build();
    EXPECT_EQ(pixels(0), (Bytes{kClear, kRedIndex})) << "half or more is opaque";
}

TEST_F(AnimationBuilder, RefusesWhatItCannotBuild) {
    plan_.rate = 8;
    addFrame("a", testfiles::truecolourPng(1, {kRed}), 32767, 0);
    EXPECT_THAT(refusal(false), HasSubstr("needs a palette"));
    plan_.transparency = {Transparency::Kind::Index, 3, {}};
    EXPECT_THAT(refusal(), StartsWith("1: "));
    EXPECT_THAT(refusal(), HasSubstr("needs an indexed picture"));
    plan_.transparency = {};
    addSequence({{1, 0, 0, 0}});
    EXPECT_THAT(refusal(), StartsWith("50: "));
    EXPECT_THAT(refusal(), HasSubstr("is 32768, allowed is -32768 to 32767"));
}

} // namespace
