#include "trinkets/scriptfixture.h"
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

AOEntry entry(int code, int argument = 0, int dx = 0, int dy = 0) {
    return {static_cast<std::int16_t>(dx), static_cast<std::int16_t>(dy),
            static_cast<std::int16_t>(code), static_cast<std::int16_t>(argument)};
}

class AnimationTest : public WindowTest {
  protected:
    AnimationTest() {
        OMAnimation::setSourceLocator([this](int id) -> std::unique_ptr<OMIStream> {
            ++located;
            const auto found = resources.find(id);
            if (found == resources.end()) return nullptr;
            return std::make_unique<MemoryStream>(found->second);
        });
        registerRAnimation(OMSRegistry::global());
    }
    ~AnimationTest() override {
        OMSRegistry::global().unregisterAll();
        OMAnimation::setSourceLocator(nullptr);
        OMAnimation::setSounds(nullptr);
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
    std::string play(std::uint32_t end, std::uint32_t every = 1) {
        std::string text;
        char last = 0;
        std::uint32_t run = 0;
        const auto flush = [&] {
            if (last) text.append(1, last).append(std::to_string(run)).append(" ");
        };
        for (; now < end; now += every) {
            animation->step(now);
            const char color = shown();
            if (color != last) {
                flush();
                run = 0;
            }
            last = color;
            run += every;
        }
        flush();
        if (!text.empty()) text.pop_back(); // the last blank
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

TEST_F(AnimationTest, AtRateZeroEachFrameStaysForItsDuration) {
    make({entry(0, 30), entry(1, 50), entry(-3), entry(2, 20), entry(-2), entry(-1)});
    EXPECT_EQ(play(220), "a30 b50 c20 a30 b50 c20 a20");
    EXPECT_EQ(take(), "looped looped ");
}

TEST_F(AnimationTest, ARateOfTheHeaderOrOfTheScriptCountsForAllFrames) {
    OMAnimation& a = make({entry(0, 5), entry(1, 5), entry(2, 5), entry(-2), entry(-1)}, 30);
    EXPECT_EQ(play(132), "a33 b33 c33 a33");
    a.setProperty("framerate", "100");
    EXPECT_EQ(play(160), "b10 c10 a8");
    a.setProperty("framerate", "-3");
    EXPECT_EQ(property("framerate"), "0");
}

TEST_F(AnimationTest, LateFramesAreCaughtUpUnlessThatIsOff) {
    for (const bool catchUp : {true, false}) {
        now = 0;
        OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(2, 10), entry(3, 10), entry(-4)});
        a.setCatchUp(catchUp);
        a.step(0);
        a.step(35); // b, c and d are due
        EXPECT_EQ(a.frameNumber(), 2);
        a.step(36);
        EXPECT_EQ(a.frameNumber(), catchUp ? 3 : 2);
        a.step(37);
        EXPECT_EQ(a.frameNumber(), catchUp ? 4 : 2);
        a.step(45);
        EXPECT_EQ(a.frameNumber(), catchUp ? 4 : 3);
    }
}

TEST_F(AnimationTest, TheClockMayWrap) {
    now = 0xFFFFFFF0u;
    OMAnimation& a = make({entry(0, 30), entry(1, 30), entry(-2), entry(-1)});
    a.step(now);
    a.step(now + 29);
    EXPECT_EQ(a.frameNumber(), 1);
    a.step(now + 30);
    EXPECT_EQ(a.frameNumber(), 2);
}

// Codes

TEST_F(AnimationTest, TheEndHidesTheAnimationAndRewindsIt) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(-1)});
    EXPECT_EQ(play(40), "a10 b10 -20");
    EXPECT_EQ(a.state(), State::Stopped);
    EXPECT_EQ(a.position(), 0);
    EXPECT_EQ(take(), "finished paused ");
    a.setVisible(true);
    a.play();
    EXPECT_EQ(play(70), "a10 b10 -10");
}

TEST_F(AnimationTest, AHoldStopsAtTheCurrentFrameUntilPlayedOn) {
    OMAnimation& a = make({entry(0, 10), entry(-4), entry(1, 10), entry(-2), entry(-1)});
    EXPECT_EQ(play(30), "a30");
    EXPECT_EQ(a.state(), State::Held);
    EXPECT_EQ(take(), "finished paused ");
    a.resume();
    EXPECT_EQ(a.state(), State::Resumed);
    EXPECT_EQ(play(60), "b10 a20");
    a.forever(); // passes holds
    EXPECT_EQ(play(85), "b10 a10 b5");
}

TEST_F(AnimationTest, AHoldAtTheStartBeginsPaused) {
    OMAnimation& a = make({entry(-4), entry(0, 10), entry(1, 10), entry(-2), entry(-1)});
    EXPECT_EQ(a.state(), State::Held);
    EXPECT_EQ(play(20), "a20");
    EXPECT_EQ(take(), "");
    a.play();
    EXPECT_EQ(play(50), "a10 b20"); // round to the hold
    EXPECT_EQ(take(), "looped finished paused ");
    a.setSequence(0, true);
    EXPECT_EQ(a.state(), State::Held);
    EXPECT_EQ(shown(), 'a');
}

TEST_F(AnimationTest, ARepeatCountPlaysThatOftenAndHoldsOnTheLastFrame) {
    for (const int end : {-2, -1}) {
        now = 0;
        OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(-77), entry(end), entry(-1)});
        a.setProperty("repeatCount", "3");
        EXPECT_EQ(play(100), "a10 b10 a10 b10 a10 b50") << end;
        EXPECT_EQ(a.state(), State::Held);
        EXPECT_EQ(a.repeatCount(), 0);
        EXPECT_EQ(take(), "looped looped finished paused ");
    }
}

TEST_F(AnimationTest, ForeverLoopsEvenAtTheEndCode) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(-1)});
    EXPECT_TRUE(a.invoke("forever", {}));
    EXPECT_EQ(play(45), "a10 b10 a10 b10 a5");
    EXPECT_EQ(property("repeatCount"), "-1");
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

TEST_F(AnimationTest, SequencesWithoutFramesDoNotHangAStep) {
    const AOSequence endless[] = {
        {entry(-2)},
        {entry(-500), entry(-2)},
        {entry(-3), entry(-2), entry(-1)},
        {entry(-101, 5), entry(-2)},
        {},
    };
    for (const AOSequence& sequence : endless)
        for (const int repeats : {0, 1, 2, -1}) {
            OMAnimation& a = make(sequence);
            a.setRepeatCount(repeats);
            a.attachHandler("paused", [&] { a.play(); });
            for (int i = 0; i < 10; ++i) a.step(static_cast<std::uint32_t>(i));
            EXPECT_TRUE(a.boundingRectangle().empty());
        }
}

TEST_F(AnimationTest, TheStopPositionIsToldOnce) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(2, 10), entry(-2), entry(-1)});
    int told = 0;
    a.playLinks().stopAt = [&] {
        ++told;
        a.pause();
    };
    a.setStopPosition(2);
    EXPECT_EQ(play(50), "a10 b40");
    EXPECT_EQ(told, 1);
    a.resume();
    EXPECT_EQ(play(100), "c10 a10 b10 c10 a10");
    a.setStopPosition(0);
    play(140);
    EXPECT_EQ(told, 2);
}

TEST_F(AnimationTest, APausedAnimationPlaysOnWithTheNextFrame) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(2, 10), entry(-2), entry(-1)});
    play(15);
    EXPECT_TRUE(a.invoke("pause", {}));
    EXPECT_EQ(play(1000), "b985");
    EXPECT_TRUE(a.invoke("resume", {}));
    EXPECT_EQ(play(1025), "c10 a10 b5");
    a.stop();
    a.resume(); // only what is held can be resumed
    EXPECT_EQ(play(1100), "b75");
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
}

TEST_F(AnimationTest, HandlersMayDestroyTheAnimation) {
    const auto kill = [this] { animation.reset(); };
    const std::function<void(OMAnimation&)> arms[] = {
        [&](OMAnimation& a) { a.playLinks().looped = kill; },
        [&](OMAnimation& a) { a.playLinks().finished = kill; },
        [&](OMAnimation& a) { a.playLinks().marker = [kill](int) { kill(); }; },
        [&](OMAnimation& a) { a.attachHandler("paused", kill); },
        [&](OMAnimation& a) { a.attachHandler("special", kill); },
        [&](OMAnimation& a) {
            a.attachHandler("frameNotify", kill);
            a.setProperty("frameNotification", "1");
        },
        [&](OMAnimation& a) {
            a.setStopPosition(1);
            a.playLinks().stopAt = kill;
        },
        [&](OMAnimation& a) {
            a.setStopPosition(0);
            a.playLinks().stopAt = kill;
        },
    };
    for (const auto& arm : arms)
        for (const int end : {-1, -2, -4}) {
            OMAnimation& a = make({entry(0, 1), entry(-500), entry(1, 1), entry(end), entry(-2)});
            a.setRepeatCount(2);
            arm(a);
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

TEST_F(AnimationTest, AFrameStepRepaintsWhatBothFramesCover) {
    make({entry(0, 10), entry(1, 10, 5, 0), entry(1, 10, 5, 0), entry(-4), entry(-1)});
    cycle();
    machine.clock().now += 10;
    EXPECT_EQ(workOfCycle(), (Work{150, 150}));
    EXPECT_EQ(pixelsOf(window.canvas(), {0, 0, 20, 1}), ".....bbbbbbbbbb...../");
    machine.clock().now += 10;
    EXPECT_EQ(workOfCycle(), (Work{0, 0})); // the same picture at the same place
}

TEST_F(AnimationTest, OnlyOpaquePixelsAreHit) {
    AseqBuilder builder;
    builder.frame({"a.", ".a"}).sequence({entry(0)});
    OMAnimation& a = make(builder);
    a.place(10, 10);
    EXPECT_TRUE(a.containsPoint({10, 10}));
    EXPECT_FALSE(a.containsPoint({11, 10}));
    EXPECT_EQ(window.hitTest({11, 11}), &a);
    EXPECT_EQ(window.hitTest({10, 11}), nullptr);
    a.setProperty("drawDirection", "1");
    EXPECT_EQ(window.hitTest({10, 11}), &a);
}

TEST_F(AnimationTest, ATurnSwapsTheSidesOfTheBoundingRectangle) {
    AseqBuilder builder;
    builder.frame({"abc"}).sequence({entry(-4), entry(0)});
    OMAnimation& a = make(builder);
    a.place(20, 20);
    cycle();
    a.setProperty("drawDirection", "5");
    EXPECT_EQ(property("width") + " " + property("height"), "1 3");
    cycle();
    EXPECT_EQ(pixelsOf(window.canvas(), {20, 20, 23, 23}), "a../b../c../");
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
    EXPECT_EQ(OMAnimation::create(6, 0, 0, window), nullptr);
    EXPECT_EQ(takeFailures(), std::vector<std::string>{});

    resources[7] = Bytes(5);
    EXPECT_EQ(OMAnimation::create(7, 0, 0, window), nullptr);
    EXPECT_NE(files.text("zorbelog.txt").find("Animation 7 cannot be used"), std::string::npos);

    OMAnimation::setSourceLocator(nullptr);
    EXPECT_EQ(OMAnimation::create(5, 0, 0, window), nullptr);
    EXPECT_EQ(takeFailures(), std::vector<std::string>{"Source URL not installed in OMAnimation"});
}

TEST_F(AnimationTest, EditingAnEntryLeavesTheSharedResourceAlone) {
    resources[5] = frames().sequence({entry(0, 10), entry(1, 10), entry(-4)}).build();
    auto edited = create({"5", "0"});
    auto other = create({"5", "0"});
    const auto param = [](OMScriptableObject& object, const char* index) {
        OMSArguments::global().clear();
        OMSArguments::global().push(index);
        return object.getProperty("param");
    };
    OMSArguments::global().clear();
    OMSArguments::global().push("4");
    EXPECT_TRUE(edited->setProperty("param", "70000")); // 16 bits
    EXPECT_EQ(param(*edited, "4"), std::to_string(70000 - 65536));
    EXPECT_EQ(param(*edited, "0"), "0");
    EXPECT_EQ(param(*edited, "5"), "");
    EXPECT_EQ(param(*other, "4"), "10");
    const auto copy = edited->makeDuplicate();
    EXPECT_EQ(param(*copy, "4"), std::to_string(70000 - 65536));
}

TEST_F(AnimationTest, ACopyGoesItsOwnWay) {
    OMAnimation& a = make({entry(0, 10), entry(1, 10), entry(-2), entry(-1)});
    a.setProperty("userData", "text");
    play(5);
    const auto copy = a.makeDuplicate();
    auto& twin = dynamic_cast<RAnimation&>(*copy);
    EXPECT_EQ(twin.userData(), "text");
    EXPECT_EQ(twin.indexInWindow(), a.indexInWindow() + 1);
    play(15);
    EXPECT_EQ(a.frameNumber(), 2);
    EXPECT_EQ(twin.frameNumber(), 1);
    twin.step(15);
    EXPECT_EQ(twin.frameNumber(), 2);
}

// Scripts

TEST_F(AnimationTest, ScriptsCreateItWithOrWithoutAPosition) {
    AseqBuilder builder = frames();
    builder.x = 0x805;
    builder.y = 30;
    builder.depth = 9;
    resources[5] = builder.sequence({entry(0)}).build();
    struct Row {
        std::initializer_list<std::string_view> arguments;
        bool embeddedOnly;
        Point place;
        int z;
    };
    const Row rows[] = {
        {{"5"}, false, {-5, 30}, 9},
        {{"5", "2"}, false, {-5, 30}, 2},
        {{"5", "40", "50", "7"}, false, {40, 50}, 7},
        {{"5", "11111", "50", "7"}, false, {-5, 50}, 7},
        {{"5", "40", "50", "7"}, true, {-5, 30}, 7},
    };
    for (const Row& row : rows) {
        OMAnimation::setUseEmbeddedAnimationCoordinates(row.embeddedOnly);
        const auto object = create(row.arguments);
        const auto* made = dynamic_cast<RAnimation*>(object.get());
        ASSERT_TRUE(made);
        EXPECT_EQ((Point{made->x(), made->y()}), row.place);
        EXPECT_EQ(made->z(), row.z);
    }
    EXPECT_EQ(create({"6", "0"}), nullptr);
}

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
    EXPECT_EQ(property("sequence"), "2");
    a.setProperty("height", "3");
    EXPECT_EQ(property("height"), "10"); // written in vain
}

TEST_F(AnimationTest, FramesAreNotifiedWhileAskedFor) {
    OMAnimation& a = make({entry(0, 10), entry(-77), entry(1, 10), entry(-2), entry(-1)});
    a.attachHandler("frameNotify", [&] { heard += property("frame") + " "; });
    play(15);
    EXPECT_EQ(take(), "");
    animation->setFrameNotification(true, [&] { heard += "callback "; });
    play(25);
    EXPECT_EQ(take(), "looped 1 callback ");
    a.setProperty("frameNotification", "1"); // takes the callback away
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
    static constexpr int kEmpty = 1; ///< ends while it is being started

    SoundTest() { OMAnimation::setSounds(this); }

    void end(int id) {
        const OMLink done = playing.at(id);
        playing.erase(id);
        done();
    }

    std::map<int, OMLink> playing;
    bool enabled = true;
    int missed = 0;

  private:
    bool isEnabled() const override { return enabled; }
    bool play(OMAnimation&, int id, OMLink done) override {
        if (id == kMissing) {
            ++missed;
            return false;
        }
        if (id == kEmpty) {
            done();
            return true;
        }
        playing[id] = std::move(done);
        return true;
    }
    void stop(OMAnimation&) override { playing.clear(); }
};

TEST_F(SoundTest, InSyncTheAnimationHoldsUntilItsSoundHasEnded) {
    OMAnimation& a = make({entry(0, 10), entry(-101, 7), entry(1, 10), entry(-101, kMissing),
                           entry(2, 10), entry(-4)});
    EXPECT_EQ(AnimationTest::play(500), "a500");
    end(7);
    EXPECT_EQ(AnimationTest::play(540), "b10 c30"); // the missing sound is passed
    EXPECT_EQ(a.state(), State::Held);
    EXPECT_EQ(take(), "finished paused ");
}

TEST_F(SoundTest, AMissingSoundIsAskedForOnceAndLosesNoTime) {
    make({entry(0, 10), entry(-101, kMissing), entry(1, 10), entry(-2), entry(-1)});
    AnimationTest::play(140, 7);
    EXPECT_EQ(missed, 1);
    EXPECT_EQ(take(), "looped looped looped looped looped looped ") << "late frames are caught up";
}

TEST_F(SoundTest, OutOfSyncItPlaysOnAndFinishesAtOnce) {
    OMAnimation& a = make({entry(-101, 7), entry(0, 10), entry(1, 10), entry(-4)});
    a.setProperty("soundSync", "0");
    a.playLinks().allSoundsDone = [&] { heard += "silent "; };
    EXPECT_EQ(AnimationTest::play(30), "a10 b20");
    EXPECT_EQ(take(), "finished paused ");
    end(7);
    EXPECT_EQ(take(), "silent ");
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

TEST_F(SoundTest, SwitchedOffSoundsStopAndHoldNothing) {
    OMAnimation& a =
        make({entry(0, 10), entry(-101, 7), entry(1, 10), entry(-101, 8), entry(2, 10), entry(-4)});
    AnimationTest::play(20);
    EXPECT_EQ(playing.size(), 1u);
    a.setProperty("soundOn", "0");
    EXPECT_TRUE(playing.empty());
    EXPECT_EQ(AnimationTest::play(50), "b10 c20");
    EXPECT_TRUE(playing.empty());
    enabled = false;
    a.setSoundOn(true);
    a.setSequence(0, true);
    EXPECT_EQ(AnimationTest::play(80), "a10 b10 c10");
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

TEST_F(SoundTest, ASoundMayEndWhileItIsStarted) {
    OMAnimation& a = make({entry(0, 10), entry(-101, kEmpty), entry(1, 10), entry(-4)});
    EXPECT_EQ(AnimationTest::play(12), "a11 b1"); // goes on with the next step
    a.setSequence(0, true);
    a.playLinks().allSoundsDone = [&] { a.setPosition(3); };
    EXPECT_EQ(AnimationTest::play(40), "a28");
    EXPECT_EQ(a.position(), 4);
    a.setSequence(0, true);
    a.playLinks().allSoundsDone = [&] { animation.reset(); };
    a.step(now);
    a.step(now + 10);
    EXPECT_EQ(animation, nullptr);
}

TEST_F(SoundTest, SoundsMayOutliveTheirAnimation) {
    make({entry(-101, 7), entry(0, 10), entry(-4)}).step(0);
    const OMLink done = playing.at(7);
    animation.reset();
    EXPECT_TRUE(playing.empty());
    done();
}

// A real script, whose handler drops the animation in the middle of its step.

TEST_F(ScriptTest, AScriptMayDropAnAnimationInItsOwnFrameNotification) {
    const Bytes resource = frames().sequence({entry(0, 5), entry(1, 5), entry(-2)}).build();
    OMAnimation::setSourceLocator([&](int) { return std::make_unique<MemoryStream>(resource); });
    registerRAnimation(OMSRegistry::global());
    auto window = std::make_unique<OMTrinketWindow>(Rect{0, 0, 640, 480}, nullptr, "");
    run(R"(a=RAnimation 5 10 20 3
set a frameNotification 1
set a frameNotify onFrame
set a param 4 9
get a param 4 r
say r
procedure onFrame
[
get RECEIVER frame f
say f
if f=2
drop a
]
)",
        100);
    EXPECT_EQ(said(), "9\n1\n2\n");
    EXPECT_EQ(boxes(), std::vector<std::string>{});
    EXPECT_EQ(window->trinketCount(), 0u);
    OMAnimation::setSourceLocator(nullptr);
    thread->unload(); // its objects leave the window
    thread.reset();
}

} // namespace
