#include "pictures/animationbuilder.h"

#include "formats/animation/row.h"
#include "pictures/palette.h"
#include "pictures/picture.h"
#include "testfiles.h"

#include <gmock/gmock.h>

#include <map>

namespace {

using formats::Bytes;
using formats::animation::Entry;
using formats::animation::Sequence;
using rsc::AnimationPlan;
using rsc::Palette;
using rsc::Picture;
using rsc::Transparency;
using testfiles::Rgba;
using testing::HasSubstr;
using testing::StartsWith;

constexpr Rgba kNone{1, 2, 3, 0};
constexpr Rgba kRed{200, 20, 20, 255};
constexpr Rgba kBlue{20, 20, 200, 255};

class AnimationBuilder : public testing::Test {
  protected:
    AnimationBuilder() {
        rsc::Colours wanted{};
        wanted['r'] = {kRed.red, kRed.green, kRed.blue};
        wanted['b'] = {kBlue.red, kBlue.green, kBlue.blue};
        palette_ = Palette::fromColours(wanted);
        plan_.rate = 8;
    }

    void addFrame(const Bytes& png, int dx = 0, int dy = 0) {
        const std::string name = std::to_string(pictures_.size());
        pictures_[name] = png;
        plan_.frames.push_back({{name, static_cast<int>(plan_.frames.size()) + 1}, dx, dy});
    }
    void addSequence(Sequence entries) {
        entries.push_back({0, 0, -1, 0});
        plan_.sequences.push_back({50, std::move(entries)});
    }

    /// The rows of all frames, "/" behind each and "." for what is transparent.
    std::string build(bool withPalette = true) {
        bytes_ = rsc::buildAnimation(
            plan_, withPalette ? &palette_ : nullptr,
            [&](const rsc::FileName& file) { return Picture::fromPng(pictures_.at(file.path)); });
        aseq_ = rsc::valueOf(formats::animation::readWhole(bytes_));
        std::string text;
        for (const auto& frame : aseq_.frames) {
            Bytes row(static_cast<std::size_t>(frame.width));
            std::size_t used = 0;
            for (int y = 0; y < frame.height; ++y) {
                used += formats::animation::decodeRow(frame.rows.subspan(used), row, '.').bytes;
                text.append(row.begin(), row.end());
                text += '/';
            }
        }
        return text;
    }
    std::string refusal(bool withPalette = true) {
        return testfiles::refusalOf([&] { (void)build(withPalette); });
    }

    AnimationPlan plan_;
    Palette palette_;
    std::map<std::string, Bytes> pictures_;
    Bytes bytes_;
    formats::animation::Animation aseq_;
};

TEST_F(AnimationBuilder, CropsFramesAndMovesTheirSteps) {
    addFrame(testfiles::truecolourPng(4, {kNone, kNone, kNone, kNone,   //
                                          kNone, kRed, kNone, kNone,    //
                                          kNone, kNone, kBlue, kNone}), //
             10, 20);
    addSequence({{5, -5, 0, 0}, {7, 7, -101, 3}});
    EXPECT_EQ(build(), "r./.b/");
    const Entry end{0, 0, -1, 0};
    EXPECT_EQ(aseq_.sequences[0], (Sequence{{16, 16, 0, 0}, {7, 7, -101, 3}, end}))
        << "what shows no frame is not moved";
    plan_.crop = false;
    EXPECT_EQ(build(), "..../.r../..b./");
    EXPECT_EQ(aseq_.sequences[0][0], (Entry{15, 15, 0, 0}));
}

TEST_F(AnimationBuilder, SharesEqualFrames) {
    addFrame(testfiles::truecolourPng(2, {kNone, kRed}));
    addFrame(testfiles::truecolourPng(1, {kBlue}));
    addFrame(testfiles::truecolourPng(1, {kRed}), 4, 0); // what is left of the first one
    addFrame(testfiles::truecolourPng(1, {kNone}));      // nothing to see
    addSequence({{0, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 2, 0}, {0, 0, 3, 0}});
    EXPECT_EQ(build(), "r/b/./");
    EXPECT_EQ(aseq_.sequences[0],
              (Sequence{{1, 0, 0, 0}, {0, 0, 1, 0}, {4, 0, 0, 0}, {0, 0, 2, 0}, {0, 0, -1, 0}}));
}

TEST_F(AnimationBuilder, MakesAStillPictureWithoutASequence) {
    addFrame(testfiles::truecolourPng(3, {kNone, {0, 0, 0, 255}, {255, 255, 255, 255}}));
    EXPECT_EQ(build(), std::string("\0\xFF/", 3)) << "black and white are fixed colours";
    EXPECT_EQ(aseq_.sequences[0],
              (Sequence{{0, 0, -4, 0}, {1, 0, 0, 0}, {0, 0, -2, 0}, {0, 0, -1, 0}}));
}

TEST_F(AnimationBuilder, KeepsIndicesUnlessAskedToMapColoursAndDecidesWhatIsTransparent) {
    addFrame(testfiles::indexedPng(4, {2, 0, 1, 3}, {kNone, kBlue, kRed, kBlue}));
    plan_.remap = true;
    EXPECT_EQ(build(), "r.bb/");
    plan_.remap = false;
    EXPECT_EQ(build(false), "\2.\1\3/");
    plan_.crop = false;
    plan_.transparency.kind = Transparency::Kind::None;
    EXPECT_EQ(build(), std::string("\2\0\1\3/", 5));
    plan_.transparency = {Transparency::Kind::Index, 3, {}};
    EXPECT_EQ(build(), std::string("\2\0\1./", 5));
    plan_.transparency = {Transparency::Kind::Colour, 0, {kBlue.red, kBlue.green, kBlue.blue}};
    EXPECT_EQ(build(), "\2.../");

    plan_.transparency = {};
    plan_.frames.clear();
    addFrame(testfiles::truecolourPng(2, {{200, 20, 20, 127}, {200, 20, 20, 128}}));
    EXPECT_EQ(build(), ".r/") << "half or more is opaque";
}

TEST_F(AnimationBuilder, RefusesWhatItCannotBuild) {
    addFrame(testfiles::truecolourPng(1, {kRed}), 32767, 0);
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
