#include "trinkets/windowfixture.h"

#include "aosounds.h"
#include "omsarguments.h"
#include "omsregistry.h"
#include "ranimation.h"

#include <map>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using State = OMAnimation::State;

namespace {

/// Frames 0 to 3 are blocks of 10 x 10 of the colours a to d.
AseqBuilder frames() {
    AseqBuilder builder;
    for (const char color : {'a', 'b', 'c', 'd'}) builder.block(10, 10, color);
    return builder;
}

class AnimationTest : public WindowTest {
  protected:
    AnimationTest() {
        AOImage::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            ++located;
            const auto found = resources.find(id);
            if (found == resources.end()) return nullptr;
            return std::make_unique<MemoryStream>(found->second);
        });
        OMSRegistry::global().registerClass(RAnimation::kClass);
    }
    ~AnimationTest() override {
        OMSRegistry::global().unregisterAll();
        AOImage::setSourceLocator(nullptr);
        AOSounds::setCurrent(nullptr);
        OMAnimation::setUseEmbeddedAnimationCoordinates(false);
    }

    /// The animation under test, of one sequence, at 0, 0.
    OMAnimation& make(AOSequence sequence, int rate = 0) {
        AseqBuilder builder = frames();
        builder.rate = rate;
        return make(builder.sequence(std::move(sequence)));
    }
    OMAnimation& make(const AseqBuilder& builder) {
        animation = std::make_unique<RAnimation>(window, builder.image(), 1, 0, 0);
        animation->announceBorn("RAnimation");
        animation->playLinks().finished = [this] { heard += "finished "; };
        animation->playLinks().looped = [this] { heard += "looped "; };
        animation->playLinks().marker = [this](int code) { heard += std::to_string(code) + " "; };
        animation->attachHandler("paused", [this] { heard += "paused "; });
        animation->attachHandler("special", [this] { heard += "special "; });
        return *animation;
    }
    /// Steps at each millisecond up to `end`; the colour shown after each step, runs counted:
    /// "a100 b50".
    std::string play(std::uint32_t end) {
        std::vector<std::pair<char, int>> runs;
        for (; now < end; ++now) {
            animation->step(now);
            const char color = shown();
            if (runs.empty() || runs.back().first != color) runs.emplace_back(color, 0);
            ++runs.back().second;
        }
        std::string text;
        for (const auto& [color, ms] : runs)
            text += (text.empty() ? "" : " ") + std::string(1, color) + std::to_string(ms);
        return text;
    }
    char shown() {
        OMMemCanvas canvas(60, 60, 8);
        animation->paint(canvas, OMRegion(canvas.bounds()));
        const Rect r = animation->boundingRectangle();
        const auto pixel = *canvas.pixels().at(r.left, r.top);
        return animation->isVisible() ? static_cast<char>(pixel) : '-';
    }
    std::string take() { return std::exchange(heard, {}); }
    std::string property(std::string_view name) { return animation->getProperty(name).value(); }
    std::unique_ptr<OMScriptableObject> create(std::initializer_list<std::string_view> arguments) {
        OMSArguments::global().clear();
        for (const std::string_view text : arguments) OMSArguments::global().push(text);
        return OMSRegistry::global().create("RAnimation");
    }

    std::map<int, Bytes> resources;
    int located = 0;
    std::unique_ptr<RAnimation> animation;
    std::uint32_t now = 0;
    std::string heard;
};

// Rates

TEST_F(AnimationTest, SequencesArePlayedByTheirCodes) {
    const AOSequence loop{entry(0, 30), entry(1, 50), entry(-3), entry(2, 20), entry(-2)};
    const AOSequence end{entry(0, 10), entry(1, 10), entry(-1)};
    const AOSequence hold{entry(0, 10), entry(-4), entry(1, 10), entry(-2)};
    const AOSequence holdFirst{entry(-4), entry(0, 10), entry(1, 10), entry(-2)};
    const struct {
        const char* name;
        AOSequence sequence;
        int rate; ///< of the header
        int repeats;
        const char* shown; ///< in 100 ms
        State state;
        const char* heard;
    } rows[] = {
        {"durations", loop, 0, 0, "a30 b50 c20", State::Playing, ""},
        {"a rate", loop, 30, 0, "a33 b33 c33 a1", State::Playing, "looped "},
        {"the end hides", end, 0, 0, "a10 b10 -80", State::Stopped, "finished paused "},
        {"twice to the end", end, 0, 2, "a10 b10 a10 b70", State::Held, "looped finished paused "},
        {"twice round", loop, 0, 2, "a30 b50 c20", State::Playing, ""},
        {"for ever past the end", end, 50, -1, "a20 b20 a20 b20 a20", State::Playing,
         "looped looped "},
        {"held", hold, 0, 0, "a100", State::Held, "finished paused "},
        {"holds are passed for ever", hold, 0, -1, "a10 b10 a10 b10 a10 b10 a10 b10 a10 b10",
         State::Playing, "looped looped looped looped "},
        {"held from the start", holdFirst, 0, 0, "a100", State::Held, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        now = 0;
        OMAnimation& a = make(row.sequence, row.rate);
        if (row.repeats > 0) a.setRepeatCount(row.repeats);
        if (row.repeats < 0) a.forever();
        EXPECT_EQ(play(100), row.shown);
        EXPECT_EQ(a.state(), row.state);
        EXPECT_EQ(take(), row.heard);
    }
}

TEST_F(AnimationTest, WhatIsHeldPausedOrStoppedIsPlayedOn) {
    OMAnimation& a = make({entry(0, 10), entry(-4), entry(1, 10), entry(2, 10), entry(-2)});
    EXPECT_EQ(play(20), "a20");
    a.resume();
    EXPECT_EQ(a.state(), State::Resumed);
    EXPECT_EQ(play(25), "b5");
    EXPECT_TRUE(a.invoke("pause", {}));
    EXPECT_EQ(play(1000), "b975");
    EXPECT_TRUE(a.invoke("resume", {}));
    EXPECT_EQ(play(1030), "c10 a20") << "with the next frame";
    a.stop();
    a.resume(); // only what is held can be resumed
    EXPECT_EQ(play(1100), "a70");
    a.play();
    EXPECT_EQ(play(1115), "b10 c5");
    a.setProperty("framerate", "100");
    EXPECT_EQ(play(1140), "c5 a20");
    a.setProperty("framerate", "-3");
    EXPECT_EQ(property("framerate"), "0");
}

TEST_F(AnimationTest, PlayingOnWithoutFramesDoesNotHangAStep) {
    for (const AOSequence& sequence : {AOSequence{entry(-500), entry(-2)}, AOSequence{}})
        for (const int repeats : {0, 1, 2, -1}) {
            OMAnimation& a = make(sequence);
            a.setRepeatCount(repeats);
            a.attachHandler("paused", [&] { a.play(); });
            for (std::uint32_t i = 0; i < 10; ++i) a.step(i);
        }
}

TEST_F(AnimationTest, LateFramesAreCaughtUpUnlessThatIsOff) {
    for (const bool catchUp : {true, false}) {
        OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(2, 10), entry(3, 10), entry(-4)});
        a.setCatchUp(catchUp);
        std::string frames;
        const std::uint32_t start = 0xFFFFFFE0u;                         // the clock wraps
        for (const std::uint32_t later : {0u, 9u, 35u, 36u, 37u, 45u}) { // at 35 three are due
            a.step(start + later);
            frames += std::to_string(a.frameNumber());
        }
        EXPECT_EQ(frames, catchUp ? "112344" : "112223");
    }
}

TEST_F(AnimationTest, MarkersTellTheirCodeAndTheirEntryIsTheCurrentOne) {
    OMAnimation& a = make({entry(0, 10), entry(-500, 42), entry(-499), entry(1, 10), entry(-2)});
    a.attachHandler("special", [&] {
        OMSArguments::global().clear();
        OMSArguments::global().push("4");
        heard += "argument " + property("param") + " ";
    });
    EXPECT_EQ(play(15), "a10 b5");
    EXPECT_EQ(take(), "-500 argument 42 ");
}

TEST_F(AnimationTest, TheStopPositionIsToldOnce) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(2, 10), entry(-2), entry(-1)});
    a.playLinks().stopAt = [&] {
        heard += "stop ";
        a.pause();
    };
    a.setStopPosition(2);
    EXPECT_EQ(play(50), "a10 b40");
    a.resume();
    EXPECT_EQ(play(100), "c10 a10 b10 c10 a10");
    a.setStopPosition(0);
    EXPECT_EQ(play(140), "b10 c30");
    EXPECT_EQ(take(), "stop looped looped looped stop ");
}

// Handlers in the middle of a step

TEST_F(AnimationTest, HandlersMaySendTheAnimationElsewhere) {
    AseqBuilder builder = frames();
    builder.sequence({entry(0, 10), entry(-500), entry(1, 10), entry(-1)});
    builder.sequence({entry(2, 10), entry(-4), entry(3, 10), entry(-4)});
    OMAnimation& a = make(builder);
    a.attachHandler("special", [&] { a.setSequenceNumber(2); });
    EXPECT_EQ(play(40), "a10 c30");
    a.attachHandler("paused", [&] { a.play(); });
    a.play();
    EXPECT_EQ(play(60), "d10 -10"); // through the second hold to the end, which hides it
    EXPECT_EQ(a.state(), State::Playing);

    OMAnimation& b = make({entry(0, 10), entry(-4), entry(1, 10), entry(2, 10), entry(-4)});
    b.attachHandler("paused", [&] { b.setPosition(2); });
    play(75);
    EXPECT_EQ(b.position(), 2) << "where the handler sent it";
}

TEST_F(AnimationTest, HandlersMayDestroyTheAnimation) {
    const auto kill = [this] { animation.reset(); };
    const std::function<void(RAnimation&)> arms[] = {
        [&](RAnimation& a) { a.playLinks().looped = kill; },
        [&](RAnimation& a) { a.playLinks().finished = kill; },
        [&](RAnimation& a) { a.playLinks().marker = [kill](int) { kill(); }; },
        [&](RAnimation& a) { a.attachHandler("paused", kill); },
        [&](RAnimation& a) { a.attachHandler("special", kill); },
        [&](RAnimation& a) { a.addFrameListener([kill](RAnimation::FrameNews) { kill(); }); },
        [&](RAnimation& a) { a.playLinks().stopAt = kill; },
    };
    for (const auto& arm : arms)
        for (const int end : {-1, -2, -4})
            for (const int stop : {0, 1}) {
                make({entry(0, 1), entry(-500), entry(1, 1), entry(end), entry(-2)});
                animation->setRepeatCount(2);
                animation->setStopPosition(stop);
                arm(*animation);
                const OMUnderWay underWay;
                for (int i = 0; i < 20 && animation; ++i) cycle();
                EXPECT_EQ(animation, nullptr);
            }
}

// Place and picture

TEST_F(AnimationTest, FramesAreOffsetFromAnOriginThatMovesWithTheTrinket) {
    OMAnimation& a = make({entry(0, 10, 3, 4), entry(1, 10, 20, 0), entry(-2), entry(-1)});
    EXPECT_EQ(a.boundingRectangle(), (Rect{3, 4, 13, 14}));
    play(15);
    EXPECT_EQ(a.boundingRectangle(), (Rect{20, 0, 30, 10}));
    a.place(40, 30); // the corner goes there; the origin is 20, 30
    EXPECT_EQ(property("x"), "40");
    play(25);
    EXPECT_EQ(a.boundingRectangle(), (Rect{23, 34, 33, 44}));
}

TEST_F(AnimationTest, OpaquePixelsAreHitAsTheyAreTurned) {
    AseqBuilder builder;
    builder.frame({"a.c"}).sequence({entry(-4), entry(0)});
    OMAnimation& a = make(builder);
    a.place(20, 20);
    cycle();
    EXPECT_EQ(window.input().hitTest({22, 20}), &a);
    EXPECT_EQ(window.input().hitTest({21, 20}), nullptr);
    a.setProperty("drawDirection", "5");
    EXPECT_EQ(property("width") + " " + property("height"), "1 3");
    EXPECT_EQ(window.input().hitTest({22, 20}), nullptr);
    EXPECT_EQ(window.input().hitTest({20, 22}), &a);
    cycle();
    EXPECT_EQ(pixelsOf(window.canvas(), {20, 20, 23, 23}), "a../.../c../");
}

// Resources

TEST_F(AnimationTest, ResourcesAreFoundThroughTheLocatorAndShared) {
    resources[5] = frames().sequence({entry(0)}).build();
    auto first = OMAnimation::create(5, 0, 0, window);
    auto second = OMAnimation::create(5, 0, 0, window);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(located, 1);
    first.reset();
    second.reset();
    EXPECT_TRUE(OMAnimation::create(5, 0, 0, window));
    EXPECT_EQ(located, 2);
    EXPECT_EQ(create({"6", "0"}), nullptr);
    resources[7] = Bytes(5);
    EXPECT_EQ(OMAnimation::create(7, 0, 0, window), nullptr);
    EXPECT_NE(files.text("zorbelog.txt").find("Animation 7 cannot be used"), std::string::npos);
    EXPECT_EQ(takeFailures(), std::vector<std::string>{});
    AOImage::setSourceLocator(nullptr);
    EXPECT_EQ(OMAnimation::create(5, 0, 0, window), nullptr);
    EXPECT_EQ(takeFailures(), std::vector<std::string>{"Source URL not installed in OMAnimation"});
}

TEST_F(AnimationTest, EditingAnEntryLeavesTheSharedResourceAlone) {
    resources[5] = frames().sequence({entry(1, 10, 3, -3), entry(1, 10), entry(-4)}).build();
    const auto edited = create({"5", "0"});
    const auto other = create({"5", "0"});
    const auto param = [](OMScriptableObject& object, const char* index) {
        OMSArguments::global().clear();
        OMSArguments::global().push(index);
        return object.getProperty("param");
    };
    EXPECT_EQ(param(*edited, "0"), "1");
    EXPECT_EQ(param(*edited, "2"), "3");
    EXPECT_EQ(param(*edited, "3"), "-3");
    EXPECT_EQ(param(*edited, "4"), "10");
    OMSArguments::global().rewind();
    EXPECT_TRUE(edited->setProperty("param", "70000")); // 16 bits
    EXPECT_EQ(param(*edited, "4"), std::to_string(70000 - 65536));
    EXPECT_EQ(param(*edited, "5"), "");
    EXPECT_EQ(param(*other, "4"), "10");
    EXPECT_EQ(param(*edited->makeDuplicate(), "4"), std::to_string(70000 - 65536));
}

// Scripts

TEST_F(AnimationTest, ScriptsReadAndWriteFramesAndSequences) {
    AseqBuilder builder = frames();
    builder.sequence({entry(-77), entry(0), entry(-77), entry(1), entry(2), entry(-4)});
    builder.sequence({entry(3), entry(-4)});
    OMAnimation& a = make(builder);
    EXPECT_EQ(property("frame"), "1");
    EXPECT_EQ(property("frameCount"), "3");
    a.setProperty("frame", "3");
    EXPECT_EQ(shown(), 'c');
    EXPECT_EQ(property("frame"), "3");
    for (const char* none : {"0", "4", "-1", "-2147483648"}) a.setProperty("frame", none);
    EXPECT_EQ(shown(), 'c');
    a.setProperty("sequence", "2");
    EXPECT_EQ(shown(), 'd');
    EXPECT_EQ(property("sequence"), "2");
    EXPECT_EQ(takeFailures(), std::vector<std::string>{});
    for (const char* none : {"0", "3", "-2147483648"}) {
        a.setProperty("sequence", none);
        EXPECT_EQ(takeFailures(), std::vector<std::string>{"Invalid sequence"}) << none;
    }
}

TEST_F(AnimationTest, FramesAreNotifiedWhileAskedFor) {
    OMAnimation& a = make({entry(0, 10), entry(-77), entry(1, 10), entry(-2), entry(-1)});
    a.attachHandler("frameNotify", [&] { heard += property("frame") + " "; });
    play(15);
    EXPECT_EQ(take(), "");
    animation->setFrameNotification(1);
    const int listener =
        animation->addFrameListener([&](RAnimation::FrameNews) { heard += "callback "; });
    play(25);
    EXPECT_EQ(take(), "looped 1 callback ");
    animation->removeFrameListener(listener);
    play(35);
    EXPECT_EQ(take(), "2 ");
    a.setProperty("frameNotification", "2");
    EXPECT_EQ(property("frameNotification"), "0");
    play(45);
    EXPECT_EQ(take(), "looped ");
}

TEST_F(AnimationTest, ASynchronousPlayEndsWhenTheAnimationFinishes) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(-4), entry(-1)});
    a.setCompletionLink([&] { heard += "completed "; });
    play(19);
    EXPECT_EQ(take(), "");
    play(25);
    EXPECT_EQ(take(), "finished paused completed ");
    // A handler that has it played again waits for the new end.
    a.setCompletionLink([&] { heard += "first "; });
    a.playLinks().finished = [&] { a.setCompletionLink([&] { heard += "second "; }); };
    a.setSequence(0, true);
    play(50);
    EXPECT_EQ(take(), "paused first ");
    a.setSequence(0, true);
    play(75);
    EXPECT_EQ(take(), "paused second ");
}

TEST_F(AnimationTest, PaintGoesIntoTheBackgroundPicture) {
    struct Picture : OMTBackground {
        OMMemCanvas canvas{100, 80, 8};
        OMRegion paint(OMMemCanvas& backBuffer, const OMRegion& dirty) override {
            backBuffer.blt(canvas, 0, 0, 100, 80, 0, 0, OMRasterOp::SrcCopy, &dirty);
            return dirty;
        }
        OMMemCanvas* picture() override { return &canvas; }
    };
    OMAnimation& a = make({entry(0)});
    EXPECT_TRUE(a.invoke("paint", {})); // no background yet
    window.setBackground(std::make_unique<Picture>());
    a.place(10, 10);
    cycle();
    a.invoke("paint", {});
    a.invoke("paint", {"50", "60"});
    a.invoke("paint", {"2147483647", "-2147483648"});
    a.invoke("hide", {});
    EXPECT_EQ(workOfCycle(), (Work{200, 200}));
    EXPECT_EQ(screenPixel(15, 15), 'a');
    EXPECT_EQ(screenPixel(59, 69), 'a');
}

// Sounds

class SoundTest : public AnimationTest, private AOSounds {
  protected:
    static constexpr int kMissing = 404;
    static constexpr int kBusy = 405; ///< the first time
    static constexpr int kEmpty = 1;  ///< ends while it is being started

    void end(int id) {
        const OMLink done = playing.at(id);
        playing.erase(id);
        done();
    }

    std::map<int, OMLink> playing;
    int missed = 0;

  private:
    Start play(AOVoice&, int id, OMLink done) override {
        if (id == kMissing || (id == kBusy && missed == 0)) {
            ++missed;
            return id == kMissing ? Start::Never : Start::NotNow;
        }
        if (id == kEmpty)
            done();
        else
            playing[id] = std::move(done);
        return Start::Plays;
    }
    void stop(AOVoice&) override { playing.clear(); }
    void pause(AOVoice&) override {}
    void resume(AOVoice&) override {}
    void forget(AOVoice&) override { EXPECT_TRUE(playing.empty()); }
};

TEST_F(SoundTest, InSyncTheAnimationHoldsUntilItsSoundHasEnded) {
    OMAnimation& a = make({entry(0, 10), entry(-101, 7), entry(1, 10), entry(-101, kMissing),
                           entry(2, 10), entry(-101, kEmpty), entry(3, 10), entry(-4)});
    EXPECT_EQ(AnimationTest::play(500), "a500");
    end(7);
    EXPECT_EQ(AnimationTest::play(540), "b10 c11 d19"); // one that ends at once: the next step
    EXPECT_EQ(missed, 1);
    EXPECT_EQ(a.state(), State::Held);
    EXPECT_EQ(take(), "finished paused ");
}

TEST_F(SoundTest, TheEndOfASoundMayMoveOrDestroyTheAnimation) {
    OMAnimation& a = make({entry(0, 10), entry(-101, kEmpty), entry(1, 10), entry(2), entry(-4)});
    a.playLinks().allSoundsDone = [&] { a.setPosition(3); };
    EXPECT_EQ(AnimationTest::play(30), "a10 c20");
    a.setSequence(0, true);
    a.playLinks().allSoundsDone = [&] { animation.reset(); };
    const OMUnderWay underWay;
    a.step(now);
    a.step(now + 10);
    EXPECT_EQ(animation, nullptr);
}

TEST_F(SoundTest, AFinishWaitsForTheSoundsUnlessItIsPlayedAgain) {
    for (const bool again : {false, true}) {
        now = 0;
        OMAnimation& a = make({entry(-101, 7), entry(0, 10), entry(-4), entry(1, 10), entry(-4)});
        a.setSoundSync(false);
        a.step(0);
        a.setSoundSync(true);
        a.step(10);
        EXPECT_EQ(a.state(), State::Held);
        EXPECT_EQ(take(), "");
        if (again) a.play();
        end(7);
        EXPECT_EQ(take(), again ? "" : "finished paused ");
    }
}

TEST_F(SoundTest, ASoundThatCannotBePlayedNowIsTriedInTheNextRound) {
    make({entry(-101, kBusy), entry(0, 10), entry(AOEntry::kLoop)});
    EXPECT_EQ(AnimationTest::play(10), "a10");
    EXPECT_EQ(missed, 1);
    AnimationTest::play(30);
    EXPECT_EQ(playing.count(kBusy), 1u);
}

TEST_F(SoundTest, SwitchedOffSoundsStopAndHoldNothing) {
    OMAnimation& a = make({entry(0, 10), entry(-101, 7), entry(1, 10), entry(-101, 8), entry(-4)});
    AnimationTest::play(20);
    a.setProperty("soundOn", "0");
    EXPECT_TRUE(playing.empty());
    EXPECT_EQ(AnimationTest::play(50), "b30");
    ::AOSounds::setCurrent(nullptr);
    a.setSoundOn(true);
    a.setSequence(0, true);
    EXPECT_EQ(AnimationTest::play(80), "a10 b20");
    EXPECT_TRUE(playing.empty());
}

TEST_F(SoundTest, AScriptMayGoOnWithoutWaitingAndOldSoundsDoNotResume) {
    OMAnimation& a = make({entry(-101, 7), entry(0, 10), entry(-101, 8), entry(1, 10), entry(-4)});
    AnimationTest::play(10);
    a.resume();
    EXPECT_EQ(AnimationTest::play(40), "a30"); // waits for 8 now
    end(7);
    EXPECT_EQ(a.state(), State::Held);
    a.pause();
    end(8);
    EXPECT_EQ(a.state(), State::Held); // paused by the script meanwhile
}

} // namespace
