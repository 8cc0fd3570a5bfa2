// Characters: the sounds that are streamed while they are spoken, and native listeners. Scripts
// show the rest.
#include "character/rcharctr.h"

#include "trinkets/windowfixture.h"

#include "omao.h"

#include <set>

using namespace testing_support;

namespace {

constexpr int kSpeech = 30; ///< 501
constexpr int kOther = 31;  ///< 501 and 503

class CharacterTest : public OMAppTest {
  protected:
    CharacterTest() {
        AOImage::setSourceLocator([](int id) {
            const AOEntry end = entry(AOEntry::kEnd);
            AseqBuilder builder;
            builder.block(10, 10, id == kSpeech ? 's' : 'o').sequences = {
                {entry(AOEntry::kSound, 501), entry(0, 100), end},
                {entry(AOEntry::kSound, 503), entry(0, 100), end}};
            if (id == kSpeech) builder.sequences.pop_back();
            return std::make_unique<MemoryStream>(builder.build());
        });
    }
    ~CharacterTest() override { AOImage::setSourceLocator(nullptr); }
    auto make(int speeches) {
        auto made = std::make_unique<RCharacter>(window, kOther, platform::Point{});
        made->takeClass(RCharacter::kClass);
        made->addSpeechAnim(speeches);
        return made;
    }

    std::set<int> streamed;
    RSpeechRecords records{[this](int id) { streamed.insert(id); },
                           [this](int id) { streamed.erase(id); }};
    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
};

TEST_F(CharacterTest, SoundsOfTheAudioMapAreStreamedWhileTheyAreSpoken) {
    using Sound = formats::map::SequenceSound;
    for (const Sound& record :
         {Sound{kSpeech, 1, 501}, {kOther, 2, 501}, {kOther, 2, 503}, {kSpeech, 2, 777}})
        records.addSequenceSound(record);
    auto first = make(kSpeech);
    const auto second = make(kOther);
    first->playSpeech(501, {}, {}, nullptr);
    EXPECT_EQ(streamed, std::set{501});
    second->playSpeech(503, {}, {}, nullptr);
    first->stop();
    EXPECT_EQ(streamed, (std::set{501, 503}));
    first->playSpeech(501, {}, {}, nullptr);
    second->stop();
    EXPECT_EQ(streamed, std::set{501});
    first.reset();
    EXPECT_TRUE(streamed.empty());
}

TEST_F(CharacterTest, ListenersHearWhatBeginsAndMayDestroyIt) {
    std::string heard;
    auto character = make(kOther);
    records.listeners = {[&](int id) { heard += std::to_string(id) + " "; },
                         [&](int id) {
                             heard += std::to_string(id) + " gone ";
                             character.reset();
                         }};
    character->playSpeech(503, {}, {}, nullptr);
    character->stop();
    {
        const OMUnderWay underWay;
        character->playSpeech(501, {}, 5, [&] { heard += "done"; });
    }
    EXPECT_EQ(heard, "503 501 gone done");
}

} // namespace
