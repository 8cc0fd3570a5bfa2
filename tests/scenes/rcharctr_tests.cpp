// Characters: fidgets, animations, speeches, and who is told.
#include "character/rcharctr.h"

#include "trinkets/windowfixture.h"

#include "aosounds.h"
#include "omao.h"
#include "omrandom.h"

#include <map>
#include <set>

using namespace testing_support;
using platform::Rect;

namespace {

/// Animations of one colour a frame, of 100 ms. The clock goes in steps of 50 ms, three ticks.
class CharacterTest : public WindowTest, private AOSounds {
  protected:
    static constexpr int kPose = 1;    ///< p, q
    static constexpr int kWave = 20;   ///< a, b
    static constexpr int kSpeech = 30; ///< s and t with sound 501, then a hold; u with 502, an end
    static constexpr int kOther = 31;  ///< v with 503 and 501

    CharacterTest() {
        OMSeedRandom(1);
        AOImage::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            ++loads;
            const auto found = resources.find(id);
            return found == resources.end() ? nullptr
                                            : std::make_unique<MemoryStream>(found->second);
        });
        const AOEntry end = entry(AOEntry::kEnd);
        const AOSequence both{entry(0, 100), entry(1, 100), entry(AOEntry::kLoop), end};
        const auto sound = [](int id) { return entry(AOEntry::kSound, id); };
        put(kPose, "pq", {both});
        put(kWave, "ab", {both});
        for (const int fidget : {11, 12, 13}) put(fidget, "ff", {both});
        put(kSpeech, "stu",
            {{sound(501), entry(0, 100), entry(1, 100), entry(AOEntry::kHold), end},
             {entry(2, 100), sound(502), end}});
        put(kOther, "v", {{sound(503), sound(501), entry(0, 100), end}});
        make();
    }
    ~CharacterTest() override {
        character.reset();
        AOSounds::setCurrent(nullptr);
        AOImage::setSourceLocator(nullptr);
    }

    void put(int id, const char* colors, std::vector<AOSequence> sequences) {
        AseqBuilder builder;
        for (; *colors; ++colors) builder.block(10, 10, *colors);
        builder.sequences = std::move(sequences);
        resources[id] = builder.build();
    }
    void make() {
        character = std::make_unique<RCharacter>(window, kPose, platform::Point{20, 10});
        character->takeClass(RCharacter::kClass);
        character->attachHandler("finished", [this] { heard += "finished "; });
    }
    OMLink done(const char* name = "done") {
        return [this, name] { heard += std::string(name) + " "; };
    }
    void wave(std::optional<int> repeat = {}) { character->playAnim(kWave, repeat, true, done()); }
    void speak(int speech) { character->playSpeech(speech, {}, {}, done()); }
    void addFidgets(int group, int minimum, int maximum, std::initializer_list<int> ids) {
        character->addFidgetGroup(group, minimum, maximum, {});
        for (const int id : ids) character->addFidget(group, id, {});
    }
    [[nodiscard]] bool isShown(int layer) const { return character->member(layer)->isVisible(); }
    void run(int ms) {
        for (; ms > 0; ms -= 50) {
            machine.clock().now += 50;
            app->pass();
        }
    }
    /// The colours that are seen in the time, each change once; "." where there is nothing.
    std::string watch(int ms) {
        std::string colors;
        for (; ms > 0; ms -= 50) {
            run(50);
            const int pixel = backPixel(25, 15);
            const char seen = pixel == 0 ? '.' : static_cast<char>(pixel);
            if (colors.empty() || colors.back() != seen) colors += seen;
        }
        return colors;
    }
    void endSound(int id) { sounds.extract(id).mapped()(); }
    std::string takeHeard() { return std::exchange(heard, {}); }
    Strings takeBoxes() {
        Strings texts;
        for (const auto& box : machine.dialogs().boxes) texts.push_back(box.text);
        machine.dialogs().boxes.clear();
        return texts;
    }

    std::map<int, Bytes> resources;
    int loads = 0;
    std::set<int> streamed;
    std::map<int, OMLink> sounds; ///< that are heard
    bool areSoundsHeld = false;
    std::string heard;
    RSpeechRecords speeches{[this](int id) { streamed.insert(id); },
                            [this](int id) { streamed.erase(id); }};
    std::unique_ptr<RCharacter> character;

  private:
    Start play(AOVoice&, int id, OMLink ended) override {
        sounds[id] = std::move(ended);
        return Start::Plays;
    }
    void stop(AOVoice&) override { sounds.clear(); }
    void pause(AOVoice&) override { areSoundsHeld = true; }
    void resume(AOVoice&) override { areSoundsHeld = false; }
    void forget(AOVoice&) override {}
};

// Fidgets

TEST_F(CharacterTest, TenMinutesOfFidgets) {
    machine.clock().now = 0u - 300'000; // it wraps in the midst of it
    addFidgets(7, 5, 10, {11, 12, 13});
    std::vector<int> played;
    std::set<int> waits;
    int waited = 0;
    for (int last = 0, ms = 0; ms < 600'000; ms += 50) {
        run(50);
        waited += 50;
        const int now = isShown(3) ? 3 : isShown(4) ? 4 : isShown(5) ? 5 : 0;
        EXPECT_EQ(isShown(1), now == 0);
        if (now == last) continue;
        if (now != 0) played.push_back(now), waits.insert(waited);
        waited = 0;
        last = now;
    }
    EXPECT_EQ(waits, (std::set<int>{5000, 6000, 7000, 8000, 9000}));
    ASSERT_GT(played.size(), 60u);
    for (std::size_t round = 0; round + 3 <= played.size(); round += 3)
        EXPECT_EQ(std::set<int>(&played[round], &played[round] + 3), (std::set<int>{3, 4, 5}));
}

TEST_F(CharacterTest, IntervalsOfAnySize) {
    const struct {
        FidgetGroup::Interval seconds;
        std::uint64_t ticks;
    } rows[] = {{{5, 5}, 300}, {{5, 2}, 300}, {{0, 1}, 1},
                {{-3, 0}, 1},  {{-9, -4}, 1}, {{2147483646, 2147483647}, 128849018760u}};
    for (const auto& row : rows) {
        FidgetGroup group(1, row.seconds, true);
        group.schedule(100);
        EXPECT_FALSE(group.isDue(99 + row.ticks)) << row.seconds.minimum;
        EXPECT_TRUE(group.isDue(100 + row.ticks)) << row.seconds.minimum;
    }
}

TEST_F(CharacterTest, NoFidgetBeginsWhileItIsBusyHiddenOrPaused) {
    addFidgets(7, 1, 1, {11});
    const std::pair<OMLink, OMLink> states[] = {
        {[this] { wave(-1); }, [this] { character->stop(); }},
        {[this] { character->setVisible(false); }, [this] { character->setVisible(true); }},
        {[this] { character->pause(); }, [this] { character->resume(); }}};
    for (const auto& [begin, end] : states) {
        begin();
        run(1500); // it becomes due, and waits anew
        end();
        EXPECT_EQ(watch(450), "p");
        EXPECT_EQ(watch(150), "pf");
        character->stop(); // silently
    }
    EXPECT_EQ(heard, "finished done ");
}

TEST_F(CharacterTest, AGroupGoesWithItsFidgets) {
    addFidgets(7, 1, 1, {11});
    addFidgets(8, 300, 300, {12});
    run(1100);
    EXPECT_TRUE(isShown(3));
    character->removeFidgetGroup(7);
    EXPECT_EQ(character->member(3), nullptr);
    EXPECT_EQ(watch(3000), "p");
    character->addFidget(8, 13, {});
    EXPECT_NE(character->member(5), nullptr) << "numbers of layers are not used again";
    const std::size_t tasks = app->tasks().count();
    character->removeFidgetGroup(8);
    EXPECT_EQ(app->tasks().count(), tasks - 1);
}

// Animations and the settle pose

TEST_F(CharacterTest, AnAnimationPlaysInPlaceOfTheSettlePose) {
    const struct {
        std::optional<int> repeat;
        bool stayVisible;
        std::string colors;
    } rows[] = {{{}, true, "abp"}, {0, true, "abp"}, {2, false, "abab."}, {1, true, "."}};
    for (const auto& row : rows) {
        character->playAnim(kWave, row.repeat, row.stayVisible, done());
        EXPECT_EQ(watch(600), row.colors);
        EXPECT_EQ(takeHeard(), "finished done ");
    }
    EXPECT_EQ(character->boundingRectangle(), (Rect{20, 10, 30, 20})) << "hidden where it was";
}

TEST_F(CharacterTest, LayersFollowTheCharacter) {
    character->place(40, 30);
    character->setZ(60);
    wave(-1);
    character->offset(-3, 0);
    character->setSettlePoseId(kOther);
    for (const int layer : {1, 2}) {
        EXPECT_EQ(character->member(layer)->boundingRectangle(), (Rect{37, 30, 47, 40}));
        EXPECT_EQ(character->member(layer)->z(), 60);
    }
    EXPECT_GT(character->member(2)->indexInWindow(), character->member(1)->indexInWindow());
    Tile hat(window, {37, 25, 47, 30}, 'h');
    character->add(hat, 0, 1);
    character->removeAll();
    character->place(0, 0);
    EXPECT_EQ(character->member(2)->x(), 0);
    EXPECT_EQ(hat.x(), 37);
}

TEST_F(CharacterTest, WhatIsPlayedMayEndInTheMidstOfADrag) {
    for (const char* event : {"mouseUp", "flyOn", "flyOff"})
        character->attachHandler(event, [this, event] { heard += std::string(event) + " "; });
    wave();
    run(50);
    window.mouseMove({25, 15});
    window.mouseDown({25, 15});
    run(300);
    EXPECT_EQ(takeHeard(), "flyOn finished done ");
    character->setSettlePoseId(kOther);
    window.mouseMove({35, 15});
    window.mouseUp({35, 15});
    EXPECT_EQ(character->x(), 30);
    window.mouseMove({90, 70});
    EXPECT_EQ(takeHeard(), "mouseUp flyOff flyOn flyOff ") << "from what was played to the pose";
}

TEST_F(CharacterTest, TheSettlePoseInAllStates) {
    EXPECT_EQ(watch(500), "p");
    character->setAnimateSettled(true);
    EXPECT_EQ(watch(400), "pqpq");
    character->setSettlePoseId(kOther);
    EXPECT_EQ(watch(300), "v");
    wave(-1);
    character->setSettlePoseId(kPose);
    EXPECT_EQ(watch(200), "ab") << "the new one is not seen";
    character->stop();
    character->setSettlePoseId(RCharacter::kNoSettlePose);
    EXPECT_EQ(watch(100), ".");
    EXPECT_EQ(takeBoxes(), Strings{});
    character->setVisible(false);
    character->pause();
    character->setSettlePoseId(kPose);
    EXPECT_EQ(watch(100), ".");
    character->setVisible(true);
    EXPECT_EQ(watch(300), "p") << "paused";
    character->resume();
    EXPECT_EQ(watch(250), "pqp");
    run(100);
    character->setAnimateSettled(false);
    EXPECT_EQ(watch(500), "p");
}

TEST_F(CharacterTest, OnlyWhatPlaysIsPaused) {
    character->setAnimateSettled(true);
    wave(2);
    run(50);
    character->pause();
    EXPECT_EQ(watch(1000), "a");
    character->setCompletionLink(done());
    character->resumeForScript();
    EXPECT_EQ(watch(300), "bab");
    run(150);
    EXPECT_EQ(takeHeard(), "finished done done ");
    character->pause(); // the settle pose
    wave(-1);
    EXPECT_EQ(watch(200), "ab");
    character->stop();
    EXPECT_EQ(watch(300).size(), 1u);
    character->resume();
    EXPECT_GT(watch(300).size(), 1u);
    character->addSpeechAnim(kSpeech);
    speak(501);
    run(400); // the pictures are over, the sound is not
    character->pause();
    EXPECT_TRUE(areSoundsHeld);
    character->resume();
    EXPECT_FALSE(areSoundsHeld);
}

// Speeches

TEST_F(CharacterTest, ASpeechIsItsSequenceAndItsSounds) {
    character->addSpeechAnim(kOther);
    character->addSpeechAnim(kSpeech); // 501 is there already
    speeches.listeners = {[&](int id) { heard += "first " + std::to_string(id) + " "; },
                          [&](int id) { heard += "second " + std::to_string(id) + " "; }};
    speak(502);
    EXPECT_EQ(watch(300), "u") << "seen until it is silent";
    EXPECT_EQ(takeHeard(), "first 502 ");
    endSound(502);
    EXPECT_EQ(watch(100), "p");
    EXPECT_EQ(takeHeard(), "finished done ");
    character->playSpeech(501, false, 5, done());
    run(50);
    endSound(503);
    endSound(501);
    EXPECT_EQ(takeHeard(), "second 501 ") << "the frame still has its time";
    EXPECT_EQ(watch(150), "v.");
    EXPECT_EQ(takeHeard(), "finished done ");
    make();
    character->addSpeechAnim(kSpeech);
    speak(501);
    EXPECT_EQ(watch(200), "st") << "the mouth moves while it is heard";
}

TEST_F(CharacterTest, SoundsOfTheAudioMapAreStreamedWhileTheyAreSpoken) {
    for (const formats::map::SequenceSound& record : {formats::map::SequenceSound{kSpeech, 1, 501},
                                                      {kOther, 1, 501},
                                                      {kOther, 1, 503},
                                                      {kSpeech, 2, 777}})
        speeches.addSequenceSound(record);
    RCharacter second(window, kPose, {50, 50});
    character->addSpeechAnim(kSpeech);
    second.addSpeechAnim(kOther);
    speak(501);
    EXPECT_EQ(streamed, std::set{501});
    second.playSpeech(503, {}, {}, nullptr);
    character->stop();
    EXPECT_EQ(streamed, (std::set{501, 503}));
    speak(501);
    second.stop();
    EXPECT_EQ(streamed, std::set{501});
    character.reset();
    EXPECT_TRUE(streamed.empty());
}

TEST_F(CharacterTest, CachedSpeechesAreLoadedOnce) {
    RCharacter(window, kPose, {}).addSpeechAnim(kSpeech);
    character->addSpeechAnim(kSpeech);
    EXPECT_EQ(std::exchange(loads, 0), 2) << "the settle pose, and the speeches of both";
    speeches.caching = true;
    character->addSpeechAnim(kOther);
    loads = 0;
    const std::pair<int, const char*> rows[] = {{501, "sp"}, {502, "up"}, {503, "vp"}, {501, "sp"}};
    for (const auto& [speech, colors] : rows) {
        speak(speech);
        const std::string spoken = watch(100);
        character->stop();
        EXPECT_EQ(spoken + watch(50), colors);
        EXPECT_TRUE(sounds.empty());
    }
    EXPECT_EQ(loads, 2);
    EXPECT_TRUE(character->member(1000) && character->member(1001) && !character->member(1002));
    speeches.caching = false;
    speak(501);
    EXPECT_TRUE(character->member(2)) << "on its own layer, which goes again";
}

// Refusals and destruction

TEST_F(CharacterTest, RefusalsTellWhoAsked) {
    resources[40] = resources[kSpeech];
    character->addSpeechAnim(40);
    resources.erase(40);
    character->playAnim(404, 1, true, done());
    speak(404);
    speak(501);
    character->addSpeechAnim(404);
    character->addFidget(7, 11, {});
    character->removeFidgetGroup(7);
    addFidgets(7, 1, 2, {404});
    character->setSettlePoseId(404);
    EXPECT_EQ(takeHeard(), "done done done ");
    EXPECT_EQ(
        takeBoxes(),
        (Strings{"RCharacter: animation 404 not found",
                 "RCharacter: unknown animation for speech ID 404",
                 "RCharacter: animation 40 not found", "RCharacter: unable to load animation 404",
                 "RCharacter: Unknown fidget group 7", "RCharacter: unknown fidget group 7",
                 "RCharacter: Unable to load fidget animation 404",
                 "RCharacter: unable to load settle pose 404"}));
    for (const char* script : {"first", "second"}) {
        character->setCompletionLink(done(script));
        EXPECT_TRUE(character->invoke("playAnim", {"20"}));
    }
    speak(501);
    EXPECT_EQ(takeHeard(), "second done ");
    EXPECT_EQ(takeBoxes(), (Strings{"RCharacter: busy, cannot play animation 20",
                                    "RCharacter: busy, cannot play speech 501"}));
    run(500);
    EXPECT_EQ(takeHeard(), "finished first ");
    character->setAOCursor(1, {});
    AOImage::setSourceLocator(nullptr);
    wave();
    EXPECT_EQ(takeFailures(), (Strings{"Cursor URL is not installed in RCharacter",
                                       "Source URL not installed in OMAnimation"}));
    EXPECT_EQ(takeHeard(), "done ");
}

TEST_F(CharacterTest, WhoeverDestroysItWhoWaitsIsToldOnce) {
    const OMLink destroy = [this] { character.reset(); };
    const auto inMouseDown = [&] {
        character->attachHandler("mouseDown", destroy);
        window.mouseDown({25, 15});
    };
    const auto inDone = [&] {
        character->stop();
        character->playAnim(kWave, 1, true, [&] { destroy(), heard += "other "; });
    };
    const auto inListener = [&] {
        character->stop();
        speeches.listeners[0] = [destroy](int) { destroy(); };
        character->addSpeechAnim(kSpeech);
        const OMUnderWay underWay;
        speak(501);
    };
    const std::pair<std::function<void()>, const char*> rows[] = {
        {[&] { character->attachHandler("finished", destroy); }, "done "},
        {inMouseDown, "done "},
        {inDone, "finished done finished other "},
        {inListener, "finished done done "},
        {[&] { destroy(); }, "done "},
    };
    for (const auto& [prepare, expected] : rows) {
        make();
        const OMSWatch watch(character.get());
        wave();
        prepare();
        run(500);
        EXPECT_EQ(takeHeard(), expected);
        EXPECT_FALSE(watch);
    }
}

} // namespace
