// Characters: fidgets, animations, speeches, and who is told.
#include "scenes/rcharctr.h"

#include "trinkets/windowfixture.h"

#include "aosounds.h"
#include "omao.h"
#include "omrandom.h"
#include "omsexception.h"

#include <map>
#include <set>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

/// Animations of one colour a frame; 100 ms each where a test does not say more. The clock goes in
/// steps of 50 ms, three ticks.
class CharacterTest : public WindowTest, private AOSounds {
  protected:
    static constexpr int kPose = 1;    ///< p, q
    static constexpr int kWave = 20;   ///< a, b
    static constexpr int kSpeech = 30; ///< s and t with sound 501, then a hold; u with 502, an end
    static constexpr int kOther = 31;  ///< v with 503 and 501

    CharacterTest() {
        OMSeedRandom(1);
        machine.clock().now = 1000;
        OMAnimation::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            ++loads;
            const auto found = resources.find(id);
            return found == resources.end() ? nullptr
                                            : std::make_unique<MemoryStream>(found->second);
        });
        OMSobException::setNotification(
            [this](const OMSobException& report) { reports.emplace_back(report.text()); });
        RSpeechRecords::setStreamLinks([this](int id) { streamed.insert(id); },
                                       [this](int id) { streamed.erase(id); });
        AOSounds::setCurrent(this);
        const AOEntry first = entry(0, 100);
        const AOEntry second = entry(1, 100);
        const AOEntry loop = entry(AOEntry::kLoop);
        const AOEntry end = entry(AOEntry::kEnd);
        put(kPose, "pq", {{first, second, loop, end}});
        put(kWave, "ab", {{first, second, loop, end}});
        for (const int fidget : {11, 12, 13})
            put(fidget, "f", {{entry(0, 350), entry(0, 350), loop, end}});
        put(kSpeech, "stu",
            {{entry(AOEntry::kSound, 501), first, second, entry(AOEntry::kHold), end},
             {entry(2, 100), entry(AOEntry::kSound, 502), end}});
        put(kOther, "v", {{entry(AOEntry::kSound, 503), entry(AOEntry::kSound, 501), first, end}});
        make();
    }
    ~CharacterTest() override {
        character.reset();
        AOSounds::setCurrent(nullptr);
        RSpeechRecords::clear();
        RCharacter::setSpeechListeners(nullptr, nullptr);
        RCharacter::setSpeechCaching(false);
        OMSobException::setNotification(nullptr);
        OMAnimation::setSourceLocator(nullptr);
    }

    void put(int id, const char* colors, std::vector<AOSequence> sequences) {
        AseqBuilder builder;
        for (; *colors; ++colors) builder.block(10, 10, *colors);
        builder.sequences = std::move(sequences);
        resources[id] = builder.build();
    }
    void make() {
        character = std::make_unique<RCharacter>(window, kPose, Point{20, 10});
        character->announceBorn("");
        character->takeClass(RCharacter::kClass);
        character->attachHandler("finished", [this] { heard += "finished "; });
    }
    OMLink done(const char* name = "done") {
        return [this, name] { heard += std::string(name) + " "; };
    }
    void run(int ms) {
        for (; ms > 0; ms -= 50) {
            machine.clock().now += 50;
            app->pass();
        }
    }
    /// The colour that is seen where the character is, "." without.
    char seen() {
        const int pixel = backPixel(25, 15);
        return pixel == 0 ? '.' : static_cast<char>(pixel);
    }
    /// The colours that were seen in the time, each change once.
    std::string watch(int ms) {
        std::string colors;
        for (; ms > 0; ms -= 50) {
            run(50);
            if (colors.empty() || colors.back() != seen()) colors += seen();
        }
        return colors;
    }
    void endSound(int id) {
        const OMLink ended = sounds.at(id);
        sounds.erase(id);
        ended();
    }
    std::string takeHeard() { return std::exchange(heard, {}); }
    /// What was reported, which is also what boxes showed.
    Strings takeReports() {
        Strings boxes;
        for (const auto& box : machine.dialogs().boxes) boxes.push_back(box.text);
        machine.dialogs().boxes.clear();
        EXPECT_EQ(boxes, reports);
        return std::exchange(reports, {});
    }

    std::map<int, Bytes> resources;
    int loads = 0;
    Strings reports;
    std::set<int> streamed;
    std::map<int, OMLink> sounds;
    std::string heard;
    std::unique_ptr<RCharacter> character;

  private:
    Start play(OMAnimation&, int id, OMLink done) override {
        sounds[id] = std::move(done);
        return Start::Plays;
    }
    void stop(OMAnimation&) override { sounds.clear(); }
    void forget(OMAnimation&) override {}
};

// Fidgets

TEST_F(CharacterTest, TenMinutesOfFidgets) {
    character->addFidgetGroup(7, 5, 10, true);
    for (const int id : {11, 12, 13}) character->addFidget(7, id, std::nullopt);
    std::vector<int> played;
    std::multiset<std::uint32_t> waits;
    std::uint32_t since = machine.clock().now;
    int now = 0;
    while (machine.clock().now < 600'000) {
        run(50);
        int shown = 0;
        for (const int layer : {3, 4, 5})
            if (character->member(layer)->isVisible()) shown = layer;
        EXPECT_EQ(character->member(1)->isVisible(), shown == 0);
        if (shown == now) continue;
        if (shown != 0) waits.insert(machine.clock().now - since), played.push_back(shown);
        since = machine.clock().now;
        now = shown;
    }
    EXPECT_EQ(std::set<std::uint32_t>(waits.begin(), waits.end()),
              (std::set<std::uint32_t>{5000, 6000, 7000, 8000, 9000}));
    ASSERT_GT(played.size(), 60u);
    for (std::size_t round = 0; round + 3 <= played.size(); round += 3)
        EXPECT_EQ(std::set<int>(&played[round], &played[round] + 3), (std::set<int>{3, 4, 5}));
}

TEST_F(CharacterTest, IntervalsOfAnySizeAndAClockThatWraps) {
    const struct {
        int minimum;
        int maximum;
        std::uint64_t ticks;
    } rows[] = {{5, 5, 300}, {5, 2, 300}, {0, 1, 1},
                {-3, 0, 1},  {-9, -4, 1}, {2147483646, 2147483647, 128849018760u}};
    for (const auto& row : rows) {
        FidgetGroup group(1, {row.minimum, row.maximum}, true);
        group.schedule(100);
        EXPECT_FALSE(group.isDue(99 + row.ticks)) << row.minimum << " " << row.maximum;
        EXPECT_TRUE(group.isDue(100 + row.ticks)) << row.minimum << " " << row.maximum;
    }
    machine.clock().now = 0xffffff00u;
    character->addFidgetGroup(7, 5, 6, true);
    character->addFidget(7, 11, std::nullopt);
    run(5000 - 50);
    EXPECT_EQ(seen(), 'p');
    EXPECT_EQ(watch(150), "pf");
}

TEST_F(CharacterTest, AGroupThatIsAlwaysDueLeavesOthersTheirTurn) {
    character->addFidgetGroup(1, 0, 0, true); // without fidgets
    character->addFidgetGroup(2, 1, 1, true);
    character->addFidget(2, 11, false);
    machine.clock().now += 1000;
    for (int i = 0; i < 40; ++i) {
        machine.clock().now += 1;
        app->pass();
    }
    EXPECT_TRUE(character->member(3)->isVisible());
    EXPECT_TRUE(character->member(1)->isVisible()) << "the fidget does not hide the settle pose";
}

TEST_F(CharacterTest, NoFidgetBeginsWhileItIsBusyHiddenOrPaused) {
    character->addFidgetGroup(7, 1, 1, true);
    character->addFidget(7, 11, std::nullopt);
    character->playAnim(kWave, -1, true, done());
    EXPECT_EQ(watch(1150), "abababababab");
    character->stop(); // the group had become due in the meantime and waits anew
    EXPECT_EQ(takeHeard(), "finished done ");
    EXPECT_EQ(watch(800), "p");
    EXPECT_EQ(watch(150), "pf");
    const std::pair<OMLink, OMLink> states[] = {
        {[this] { character->setVisible(false); }, [this] { character->setVisible(true); }},
        {[this] { character->pause(); }, [this] { character->resume(); }}};
    for (const auto& [begin, end] : states) {
        character->stop(); // the fidget, silently
        begin();
        run(1500);
        end();
        EXPECT_EQ(watch(450), "p");
        EXPECT_EQ(watch(150), "pf");
    }
    EXPECT_EQ(heard, "");
}

TEST_F(CharacterTest, AGroupGoesWithItsFidgets) {
    character->addFidgetGroup(7, 1, 1, true);
    character->addFidget(7, 11, std::nullopt);
    character->addFidgetGroup(8, 300, 300, true);
    character->addFidget(8, 12, std::nullopt);
    run(1150);
    EXPECT_EQ(seen(), 'f');
    character->removeFidgetGroup(7); // while it plays
    EXPECT_EQ(character->member(3), nullptr);
    EXPECT_EQ(watch(3000), "p");
    character->addFidget(8, 13, std::nullopt);
    EXPECT_NE(character->member(5), nullptr) << "numbers of layers are not used again";
    const std::size_t tasks = app->tasks().count();
    character->removeFidgetGroup(8);
    EXPECT_EQ(app->tasks().count(), tasks - 1);
}

// Animations

TEST_F(CharacterTest, AnAnimationPlaysInPlaceOfTheSettlePose) {
    const struct {
        std::optional<int> repeat;
        bool stayVisible;
        std::string colors;
    } rows[] = {{std::nullopt, true, "abp"}, {0, true, "abp"}, {2, false, "abab."}};
    for (const auto& row : rows) {
        character->setVisible(true);
        character->playAnim(kWave, row.repeat, row.stayVisible, done());
        EXPECT_EQ(watch(600), row.colors);
        EXPECT_EQ(character->isVisible(), row.stayVisible);
        EXPECT_EQ(takeHeard(), "finished done ");
    }
    EXPECT_EQ(character->boundingRectangle(), (Rect{20, 10, 30, 20})) << "hidden where it was";
    character->playAnim(kWave, std::nullopt, true, done());
    EXPECT_EQ(watch(600), ".") << "unseen";
    EXPECT_EQ(takeHeard(), "finished done ");
}

TEST_F(CharacterTest, LayersFollowTheCharacter) {
    character->place(40, 30);
    character->setZ(60);
    character->playAnim(kWave, -1, true, nullptr);
    EXPECT_EQ(character->member(2)->boundingRectangle(), (Rect{40, 30, 50, 40}));
    character->offset(-3, 0);
    character->setSettlePoseId(kOther);
    EXPECT_EQ(character->member(1)->boundingRectangle(), (Rect{37, 30, 47, 40}));
    EXPECT_EQ(character->member(2)->z(), 60);
    EXPECT_GT(character->member(2)->indexInWindow(), character->member(1)->indexInWindow());
    Tile hat(window, {37, 25, 47, 30}, 'h');
    character->add(hat, 0, 1);
    character->removeAll();
    character->place(0, 0);
    EXPECT_EQ(character->member(2)->x(), 0);
    EXPECT_EQ(hat.x(), 37);
}

TEST_F(CharacterTest, TheSettlePoseInAllStates) {
    EXPECT_EQ(watch(500), "p");
    character->setAnimateSettled(true);
    EXPECT_EQ(watch(400), "pqpq");
    character->setSettlePoseId(kOther);
    EXPECT_EQ(watch(300), "v") << "without end";
    character->playAnim(kWave, -1, true, nullptr);
    character->setSettlePoseId(kPose);
    EXPECT_EQ(watch(200), "ab");
    character->stop();
    character->setSettlePoseId(RCharacter::kNoSettlePose);
    EXPECT_EQ(watch(100), ".");
    EXPECT_EQ(takeReports(), Strings{});
    character->setVisible(false);
    character->pause();
    character->setSettlePoseId(kPose);
    EXPECT_EQ(watch(100), ".");
    character->setVisible(true);
    EXPECT_EQ(watch(300), "p") << "it is paused";
    character->resume();
    EXPECT_EQ(watch(250), "pqp");
    run(100);
    character->setAnimateSettled(false);
    EXPECT_EQ(watch(500), "p");
}

TEST_F(CharacterTest, OnlyWhatPlaysIsPaused) {
    character->setAnimateSettled(true);
    character->playAnim(kWave, 2, true, done());
    run(50);
    character->pause();
    EXPECT_EQ(watch(1000), "a");
    character->resume();
    EXPECT_EQ(watch(300), "bab");
    run(150);
    EXPECT_EQ(takeHeard(), "finished done ");
    character->pause(); // the settle pose
    character->playAnim(kWave, -1, true, nullptr);
    EXPECT_EQ(watch(200), "ab");
    character->pause();
    run(100);
    character->stop();
    EXPECT_EQ(watch(300).size(), 1u);
    character->resume();
    EXPECT_GT(watch(300).size(), 1u);
}

// Speeches

TEST_F(CharacterTest, ASpeechIsItsSequenceAndItsSounds) {
    character->addSpeechAnim(kOther);
    character->addSpeechAnim(kSpeech); // 501 is there already
    std::string told;
    RCharacter::setSpeechListeners([&](int id) { told += "first " + std::to_string(id) + " "; },
                                   [&](int id) { told += "second " + std::to_string(id) + " "; });
    character->playSpeech(502, std::nullopt, std::nullopt, done());
    EXPECT_EQ(watch(300), "u") << "seen until it is silent";
    EXPECT_EQ(takeHeard(), "");
    endSound(502);
    EXPECT_EQ(takeHeard(), "finished done ");
    EXPECT_EQ(watch(100), "p");
    character->playSpeech(501, false, 5, done());
    EXPECT_EQ(watch(50), "v");
    endSound(503);
    endSound(501);
    EXPECT_EQ(takeHeard(), "") << "the frame still has its time";
    EXPECT_EQ(watch(150), "v.");
    EXPECT_EQ(takeHeard(), "finished done ");
    EXPECT_EQ(told, "first 502 second 501 ");
    character->setVisible(true);
    character->playSpeech(503, true, 0, done());
    run(50);
    character->stop();
    EXPECT_TRUE(sounds.empty());
    EXPECT_EQ(takeHeard(), "finished done ");
}

TEST_F(CharacterTest, MouthsMoveWhileTheyAreHeard) {
    character->addSpeechAnim(kSpeech);
    character->playSpeech(501, std::nullopt, std::nullopt, done());
    EXPECT_EQ(watch(150), "st");
    EXPECT_EQ(sounds.count(501), 1u);
    character->pause();
    endSound(501);
    EXPECT_EQ(watch(500), "t");
    character->resume();
    run(200);
    EXPECT_EQ(takeHeard(), "finished done ");
}

TEST_F(CharacterTest, SoundsOfTheAudioMapAreStreamedWhileTheyAreSpoken) {
    RSpeechRecords::addSequenceSound({kSpeech, 1, 501}); // sequences count from 1
    RSpeechRecords::addSequenceSound({kOther, 1, 501});
    RSpeechRecords::addSequenceSound({kOther, 1, 503});
    RSpeechRecords::addSequenceSound({kSpeech, 2, 777});
    RCharacter second(window, kPose, {50, 50});
    character->addSpeechAnim(kSpeech);
    second.addSpeechAnim(kOther);
    character->playSpeech(501, std::nullopt, std::nullopt, nullptr);
    EXPECT_EQ(streamed, (std::set<int>{501}));
    second.playSpeech(503, std::nullopt, std::nullopt, nullptr);
    character->stop();
    EXPECT_EQ(streamed, (std::set<int>{501, 503}));
    character->playSpeech(501, std::nullopt, std::nullopt, nullptr);
    second.stop();
    EXPECT_EQ(streamed, (std::set<int>{501}));
    character.reset();
    EXPECT_EQ(streamed, std::set<int>{});
}

TEST_F(CharacterTest, CachedSpeechesAreLoadedOnce) {
    character->addSpeechAnim(kSpeech);
    RCharacter(window, kPose, {}).addSpeechAnim(kSpeech);
    EXPECT_EQ(std::exchange(loads, 0), 2) << "the settle pose, and the speeches of both";
    RCharacter::setSpeechCaching(true);
    const auto speak = [this](int speech) {
        character->playSpeech(speech, std::nullopt, std::nullopt, nullptr);
        const std::string colors = watch(100);
        character->stop();
        return colors + watch(50);
    };
    character->addSpeechAnim(kOther);
    loads = 0;
    EXPECT_EQ(speak(501), "sp");
    EXPECT_EQ(speak(502), "up");
    EXPECT_EQ(speak(503), "vp");
    EXPECT_EQ(speak(501), "sp") << "from its first frame";
    EXPECT_EQ(loads, 2);
    EXPECT_TRUE(character->member(1000) && character->member(1001) && !character->member(1002));
    character->offset(5, 0);
    EXPECT_EQ(character->member(1000)->x(), 25);
}

// Refusals

TEST_F(CharacterTest, RefusalsAreReportedAndTellWhoAsked) {
    resources[40] = resources[kSpeech];
    character->addSpeechAnim(40);
    character->addSpeechAnim(kSpeech);
    resources.erase(40);
    character->playAnim(404, 1, true, done());
    character->playSpeech(404, std::nullopt, std::nullopt, done());
    character->playSpeech(501, std::nullopt, std::nullopt, done());
    character->addSpeechAnim(404);
    character->addFidget(7, 11, std::nullopt);
    character->removeFidgetGroup(7);
    character->addFidgetGroup(7, 1, 2, std::nullopt);
    character->addFidget(7, 404, std::nullopt);
    character->setSettlePoseId(404);
    EXPECT_EQ(takeHeard(), "done done done ");
    EXPECT_EQ(
        takeReports(),
        (Strings{"RCharacter: animation 404 not found",
                 "RCharacter: unknown animation for speech ID 404",
                 "RCharacter: animation 40 not found", "RCharacter: unable to load animation 404",
                 "RCharacter: Unknown fidget group 7", "RCharacter: unknown fidget group 7",
                 "RCharacter: Unable to load fidget animation 404",
                 "RCharacter: unable to load settle pose 404"}));
    EXPECT_FALSE(character->isPlaying());
    character->playAnim(kWave, 1, true, done("first"));
    character->playAnim(kWave, 1, true, done("second"));
    character->playSpeech(501, std::nullopt, std::nullopt, done("third"));
    EXPECT_EQ(takeHeard(), "second third ");
    EXPECT_EQ(takeReports(), (Strings{"RCharacter: busy, cannot play animation 20",
                                      "RCharacter: busy, cannot play speech 501"}));
    run(500);
    EXPECT_EQ(takeHeard(), "finished first ");
    EXPECT_EQ(takeFailures(), Strings{});
    character->setAOCursor(1, std::nullopt);
    OMAnimation::setSourceLocator(nullptr);
    character->playAnim(99, 1, true, done());
    EXPECT_EQ(takeFailures(), (Strings{"Cursor URL is not installed in RCharacter",
                                       "Source URL not installed in OMAnimation"}));
    EXPECT_EQ(takeHeard(), "done ");
}

TEST_F(CharacterTest, WhoWaitsInAScriptIsToldOnce) {
    const auto play = [this](const char* name) {
        character->setCompletionLink(done(name));
        EXPECT_TRUE(character->invoke("playAnim", {"20"}));
    };
    play("first");
    play("second"); // refused
    EXPECT_EQ(takeHeard(), "second ");
    run(500);
    EXPECT_EQ(takeHeard(), "finished first ");
}

// Destruction

TEST_F(CharacterTest, WhoeverDestroysItWhoWaitsIsToldOnce) {
    const auto destroy = [this] { character.reset(); };
    const struct {
        const char* what;
        std::function<void()> prepare;
        const char* heard;
    } rows[] = {
        {"in finished", [&] { character->attachHandler("finished", destroy); }, "done "},
        {"in the mouse's event",
         [&] {
             character->attachHandler("mouseDown", destroy);
             window.mouseDown({25, 15});
         },
         "done "},
        {"by another one who waits",
         [&] {
             character->stop();
             takeHeard();
             character->playAnim(kWave, 1, true, [&] { destroy(), heard += "done "; });
         },
         "finished done "},
        {"in a passing pass", destroy, "done "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        make();
        const OMSWatch watch(character.get());
        character->playAnim(kWave, 1, true, [&] {
            heard += "done ";
            EXPECT_TRUE(!watch || character) << "it is gone, or whole";
        });
        row.prepare();
        run(500);
        EXPECT_EQ(takeHeard(), row.heard);
        EXPECT_FALSE(character);
        EXPECT_FALSE(watch);
    }
}

TEST_F(CharacterTest, AListenerMayDestroyItOrHaveItPlay) {
    character->addSpeechAnim(kSpeech);
    RCharacter::setSpeechListeners(
        [this](int) { character->playAnim(kWave, 1, true, done("other")); },
        [this](int) { character.reset(); });
    character->playSpeech(501, std::nullopt, 0, done());
    EXPECT_EQ(takeHeard(), "done ");
    EXPECT_EQ(takeReports(), Strings{"RCharacter: busy, cannot play speech 501"});
    run(500);
    EXPECT_EQ(takeHeard(), "finished other ");
    character->playSpeech(501, std::nullopt, 1, done());
    EXPECT_EQ(takeHeard(), "done ");
}

} // namespace
