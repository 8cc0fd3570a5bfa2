// Answers with texts and several pictures: how they are painted, and that what is seen of them is
// never old.
#include "puzzles/labelledanswer.h"

#include "ompp/nfntbuilder.h"
#include "trinkets/flippingfixture.h"

#include "aodeep.h"
#include "aosounds.h"
#include "omfontsource.h"
#include "omnfntfont.h"
#include "omsarguments.h"
#include "omsclass.h"

#include <random>

using namespace testing_support;
using Showing = OMTrinketWindow::Showing;

namespace {

using Double = RDoubleGraphicTextAnswer;
using Strings = std::vector<std::string>;

// Pictures, by their ids. All hold on their frame but the last three.
constexpr int kBase = 1;  ///< 6 x 4
constexpr int kTall = 2;  ///< 3 x 5, one pixel to the left and above
constexpr int kSmall = 3; ///< 2 x 2, one pixel to the right
constexpr int kPlaying = 4;
constexpr int kOnce = 5;     ///< one frame, then the end
constexpr int kSounding = 6; ///< makes a sound behind its frame

std::unique_ptr<OMIStream> picture(int id) {
    AseqBuilder builder;
    const AOEntry hold = entry(AOEntry::kHold);
    switch (id) {
    case kBase: builder.block(6, 4, 'b').sequence({hold, entry(0), entry(-1)}); break;
    case kTall: builder.block(3, 5, 'p').sequence({hold, entry(0, 0, -1, -1), entry(-1)}); break;
    case kSmall: builder.block(2, 2, 'q').sequence({hold, entry(0, 0, 1, 0), entry(-1)}); break;
    case kPlaying:
        builder.block(9, 3, 'r').block(4, 8, 's');
        builder.sequence({entry(0, 7), entry(1, 5, 3, -6), entry(0, 9, -8, 2), entry(-2)});
        break;
    case kOnce: builder.block(20, 20, 'o').sequence({entry(0, 10), entry(-1)}); break;
    case kSounding:
        builder.block(4, 4, 'x').sequence({entry(0, 10), entry(AOEntry::kSound, 7), entry(-2)});
        break;
    default: return nullptr;
    }
    return std::make_unique<MemoryStream>(builder.build());
}

/// One bitmap font, under every name.
struct Fonts final : OMFontSource {
    OMFont& useNFNT(int) override { return useFont(font); }
    OMFont& useTrueType(std::string_view, int, int) override { return useFont(font); }
    OMFont& useFont(OMFont&) override { return font; }
    void doneUsing(OMFont&) override {}

    MemoryStream stream{smallFont().bytes()};
    OMNFNTFont font{stream};
};

class Pictures {
  public:
    Pictures() { AOImage::setSourceLocator(&picture); }
    ~Pictures() { AOImage::setSourceLocator(nullptr); }
};

class AnswerKindsTest : public WindowTest {
  protected:
    /// What a script creates with these words.
    static std::unique_ptr<Double> make(std::initializer_list<const char*> arguments) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        for (const char* argument : arguments) list.push(argument);
        return std::unique_ptr<Double>(static_cast<Double*>(Double::kClass.create().release()));
    }

    Pictures pictures;
    Fonts fonts;
};

TEST_F(AnswerKindsTest, OnlyWhatChangesIsPaintedAgain) {
    auto answer = make({"1", "20", "30", "5"});
    answer->chooseFont("30", std::nullopt, std::nullopt);
    answer->setText<0>("A");
    answer->setTextOffsetX<0>(10); // the whole is 14 by 4
    answer->setPictureID<1>(kSounding);
    cycle();
    EXPECT_EQ(workOfCycle(), (Work{0, 0})) << "a frame that stays";
    answer->offset(3, 0);
    EXPECT_EQ(workOfCycle(), (Work{17 * 4, 17 * 4}));
    answer->setTextOffsetY<0>(-4);
    EXPECT_EQ(workOfCycle(), (Work{14 * 8, 14 * 8}));
    answer->setText<0>("");
    EXPECT_EQ(workOfCycle(), (Work{14 * 8, 14 * 8}));
    answer->setVisible(false);
    EXPECT_EQ(workOfCycle(), (Work{6 * 4, 6 * 4}));
    answer->setText<0>("A");
    answer->setPictureID<0>(kTall);
    EXPECT_EQ(workOfCycle(), (Work{0, 0})) << "nobody sees it";
}

TEST_F(AnswerKindsTest, NothingStaysOfAnAnswerThatIsDestroyedByTheSoundOfItsPicture) {
    struct Sounds final : AOSounds {
        Start play(AOVoice&, int, OMLink) override {
            answer.reset(); // a box, behind which scripts go on
            return Start::Never;
        }
        void stop(AOVoice&) override {}
        void pause(AOVoice&) override {}
        void resume(AOVoice&) override {}
        void forget(AOVoice&) override {}
        std::unique_ptr<Double> answer;
    } sounds;
    sounds.answer = make({"-1", "20", "30", "5"});
    sounds.answer->setPictureID<0>(kSounding);
    cycle();
    EXPECT_EQ(backPixel(22, 32), 'x');
    machine.clock().now += 20;
    cycle();
    EXPECT_EQ(sounds.answer, nullptr);
    cycle();
    EXPECT_EQ(backPixel(22, 32), 0);
}

// A model: whatever happens, what is seen is what all answers painted afresh look like.

class AnswerModelTest : public SurfaceTest,
                        public testing::WithParamInterface<std::tuple<Showing, int>> {
  protected:
    AnswerModelTest() : SurfaceTest(OMApp::DisplayMode::FullScreen, std::get<int>(GetParam())) {
        OMDevicePalette colors;
        for (std::size_t i = 0; i < colors.size(); ++i) {
            const auto shade = static_cast<std::uint8_t>(i);
            colors[i] = {shade, static_cast<std::uint8_t>(255 - shade), 128};
        }
        palette = OMPaletteFromDevice(colors);
        AOPaletteRecord::setCurrent(std::make_shared<AOPaletteRecord>(colors));
        open(std::get<Showing>(GetParam()));
        window->setPalette(palette, false);
    }
    ~AnswerModelTest() override {
        answers.clear();
        AOPaletteRecord::setCurrent(nullptr);
    }

    int below(int limit) { return static_cast<int>(random() % static_cast<std::uint32_t>(limit)); }
    std::unique_ptr<Double> make() {
        const int id = below(6);
        return std::make_unique<Double>(*window, AOImage::locateOrBlank(id), id, below(90),
                                        below(70));
    }
    void change(std::unique_ptr<Double>& answer) {
        static constexpr const char* kTexts[] = {"", "A", "BD", "D\nCBA"};
        switch (below(20)) {
        case 0: answer->setText<0>(kTexts[below(4)]); return;
        case 1: answer->setText<1>(kTexts[below(4)]); return;
        case 2: answer->setTextOffsetX<0>(below(40) - 20); return;
        case 3: answer->setTextOffsetY<1>(below(40) - 20); return;
        case 4: answer->setPictureID<0>(below(6)); return;
        case 5: answer->setPictureID<1>(below(6)); return;
        case 6: answer->setPictureOffsetZ<0>(below(5) - 2); return;
        case 7: answer->setPictureOffsetZ<1>(below(5) - 2); return;
        case 8: answer->chooseFont("30", std::nullopt, std::nullopt); return;
        case 9: answer->setTextColorIndex(below(256)); return;
        case 10: answer->playAnimations(); return;
        case 11: answer->stopAnimations(); return;
        case 12: answer->setVisible(!answer->isVisible()); return;
        case 13: answer->setZ(below(3)); return;
        case 14: answer->setDrawDirection(below(8)); return;
        case 15: answer->setGraphicID(below(6)); return;
        case 16: answer.reset(static_cast<Double*>(answer->duplicate().release())); return;
        case 17: answer = make(); return;
        default: answer->offset(below(30) - 15, below(30) - 15); return;
        }
    }
    /// Of the pixels that are seen and those that a canvas painted afresh has.
    int differences() {
        OMMemCanvas& back = window->backBuffer();
        OMMemCanvas fresh(kFlippingWidth, kFlippingHeight, back.depth(), OMMemCanvas::Kind::Fixed);
        fresh.setPalette(palette);
        fresh.setColor(OMColor(0));
        fresh.fillRect(fresh.bounds());
        std::vector<OMTrinket*> shown;
        for (const auto& answer : answers)
            if (answer->isShown()) shown.push_back(answer.get());
        std::ranges::sort(shown, {}, &OMTrinket::indexInWindow);
        for (OMTrinket* trinket : shown) trinket->paint(fresh, OMRegion(fresh.bounds()));
        int count = 0;
        const int bytes = kFlippingWidth * fresh.pixels().bytesPerPixel;
        for (int y = 0; y < kFlippingHeight; ++y)
            count += !std::equal(fresh.pixels().at(0, y), fresh.pixels().at(0, y) + bytes,
                                 machine.display().shown().row(y));
        return count;
    }

    OMPalette palette;
    Pictures pictures;
    Fonts fonts;
    std::vector<std::unique_ptr<Double>> answers;
    std::minstd_rand random{10};
};

TEST_P(AnswerModelTest, WhatIsSeenIsNeverOld) {
    for (int i = 0; i < 4; ++i) answers.push_back(make());
    for (int round = 0; round < 500; ++round) {
        for (int i = below(4); i > 0; --i)
            change(answers[static_cast<std::size_t>(below(static_cast<int>(answers.size())))]);
        cycle();
        ASSERT_EQ(differences(), 0) << "rows, round " << round;
    }
    EXPECT_EQ(takeFailures(), Strings{});
}

INSTANTIATE_TEST_SUITE_P(PagesAndDepths, AnswerModelTest,
                         testing::Combine(testing::Values(Showing::Copying, Showing::Flipping),
                                          testing::Values(8, 16, 32)));

} // namespace
