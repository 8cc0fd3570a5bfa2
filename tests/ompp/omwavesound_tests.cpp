// The life of sounds: their links, their play window, the device, the engine's settings. What is
// heard of them: omwavemix_tests.cpp.
#include "soundfixture.h"

#include <algorithm>
#include <functional>
#include <numeric>

using testing_support::RiffSound;
using testing_support::Samples;
using testing_support::SoundTest;
using testing_support::TestSound;

namespace {

using Rates = std::vector<int>;

class OMWaveSoundTest : public SoundTest {
  protected:
    /// One whose links write down what they are called for.
    TestSound listened(std::size_t length, const std::string& name = "a") {
        TestSound made = make(Samples(length, 200));
        const auto note = [this, name](const char* what) {
            return [this, name, what] { events += name + what; };
        };
        made->setStartedLink(note(" started "));
        made->setFinishedLink(note(" finished "));
        made->setPausedLink(note(" paused "));
        made->setResumedLink(note(" resumed "));
        return made;
    }

    struct Step {
        std::function<void()> act;
        const char* events; ///< that are heard of meanwhile
    };
    void expectEvents(const std::vector<Step>& steps) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            steps[i].act();
            EXPECT_EQ(std::exchange(events, {}), steps[i].events) << "step " << i;
        }
    }

    std::string events;
};

TEST_F(OMWaveSoundTest, LinksAreCalledInTheirOrder) {
    const TestSound a = listened(20);
    a->setPlayCount(2);
    expectEvents({
        {[&] { a->play(true); }, ""}, // a start is told by the service
        {[&] { run(24); }, "a started "},
        {[&] { a->pause(); }, "a paused "},
        {[&] { EXPECT_EQ(device.queuedBytes(), 0u); }, ""},
        {[&] { run(100), a->pause(); }, ""},
        {[&] { a->resume(); }, "a resumed "},
        {[&] { a->resume(), run(16); }, ""}, // it was told that it started
        {[&] { run(8); }, "a finished "},
        {[&] { run(100); }, ""},
    });
    EXPECT_FALSE(device.isOpen());
}

TEST_F(OMWaveSoundTest, AResumeAmongOthersIsToldWhenItIsHeard) {
    const TestSound a = listened(400, "a");
    const TestSound b = listened(400, "b");
    expectEvents({
        {[&] { a->play(true), b->play(true), run(40); }, "a started b started "},
        {[&] { b->pause(), run(16), b->resume(); }, "b paused "},
        {[&] { run(8); }, ""},
        {[&] { run(8); }, "b resumed "}, // two buffers after the one that played
    });
}

TEST_F(OMWaveSoundTest, StopFinishesWhatHadStarted) {
    const TestSound a = listened(400);
    expectEvents({
        {[&] { a->play(true), a->stop(); }, ""}, // nobody heard it
        {[&] { a->play(true), run(8), a->pause(), a->stop(); }, "a started a paused a finished "},
        {[&] { a->resume(), a->play(true), run(8); }, "a started "},
        {[&] { a->play(true); }, "a finished "}, // a new play stops the old one
        {[&] { run(16), a->unload(); }, "a started a finished "},
    });
    EXPECT_FALSE(a->isLoaded());
}

TEST_F(OMWaveSoundTest, PlaysTheWindowThatWasSet) {
    const std::string text = "OMWaveSound::setPlayPosition - ";
    const Strings negative{text + "start position must be greater than or equal to 0!"};
    const Strings past{text + "start position is past the end of data!"};
    const Strings length{text + "length to play must be greater than or equal to 0!"};
    struct Row {
        std::int64_t start, length;
        std::int64_t expectedStart, expectedEnd;
        Strings complaints;
    };
    const std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const Row rows[] = {
        {0, -1, 0, 9, {}},       {3, 4, 3, 6, {}},    {3, -1, 3, 9, {}},     {3, 100, 3, 9, {}},
        {-1, 4, 0, 3, negative}, {10, 4, 9, 9, past}, {3, -2, 3, 9, length}, {9, most, 9, 9, {}},
        {most, 1, 9, 9, past},   {2, 0, 2, 1, {}},
    };
    for (const Row& row : rows)
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
            SCOPED_TRACE(std::to_string(row.start) + " " + std::to_string(row.length));
            const TestSound a = make({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, mode);
            a->load();
            a->setPlayPosition(row.start, row.length);
            EXPECT_EQ(a->playStart(), row.expectedStart);
            EXPECT_EQ(a->playEnd(), row.expectedEnd);
            EXPECT_EQ(takeFailures(), row.complaints);
            Samples expected;
            for (auto i = row.expectedStart; i <= row.expectedEnd; ++i)
                expected.push_back(static_cast<std::uint8_t>(i));
            EXPECT_EQ(a->play(true), !expected.empty());
            run(32);
            Samples got = heard();
            std::erase(got, 128);
            EXPECT_EQ(got, expected);
        }
}

TEST_F(OMWaveSoundTest, WithoutSamplesOrDeviceNothingStarts) {
    const TestSound empty = make({});
    EXPECT_FALSE(empty->load());
    EXPECT_FALSE(empty->play(true));
    empty->setPlayPosition(0, 5);
    takeFailures();
    EXPECT_FALSE(empty->play(true));
    EXPECT_FALSE(open({'n', 'o', ' ', 's', 'o', 'u', 'n', 'd'})->play(true));

    device.available = false;
    const TestSound a = listened(10);
    EXPECT_FALSE(a->play(true));
    expectEvents({{[&] { a->pause(), a->resume(), run(100); }, ""}});
    EXPECT_FALSE(engine.testDevice(true));
}

TEST_F(OMWaveSoundTest, ASoundMayDieInEachOfItsLinks) {
    using Act = std::function<void(TestSound&)>;
    const Act acts[] = {[](TestSound& a) { a.sound.reset(); }, [](TestSound& a) { a->stop(); },
                        [](TestSound& a) { a->unload(); }, [](TestSound& a) { a->pause(); },
                        [](TestSound& a) { a->play(true); }};
    const auto links = {&OMSound::setStartedLink, &OMSound::setFinishedLink,
                        &OMSound::setPausedLink, &OMSound::setResumedLink};
    for (const bool alone : {true, false})
        for (const Act& act : acts)
            for (const auto link : links) {
                TestSound other = listened(100, "b");
                if (!alone) other->play(true);
                TestSound a = make(Samples(30, 7));
                int calls = 0;
                ((*a.sound).*link)([&] {
                    if (++calls == 1) act(a);
                });
                EXPECT_TRUE(a->play(true));
                run(16);
                if (a.sound) a->pause();
                run(16);
                if (a.sound) a->resume();
                run(80);
                if (a.sound) a->play(true);
                if (a.sound) a->stop();
                EXPECT_GE(calls, 1);
                a.sound.reset();
                run(200);
                EXPECT_EQ(engine.soundingCount(), 0u);
            }
}

TEST_F(OMWaveSoundTest, ALinkMayPlayItsSoundAgainWhereverItIsCalled) {
    using Act = std::function<void(OMWaveSound&)>;
    const Act acts[] = {[](OMWaveSound& a) { EXPECT_TRUE(a.play(true)); },
                        [](OMWaveSound& a) { EXPECT_FALSE(a.stop()); },
                        [](OMWaveSound& a) { EXPECT_FALSE(a.load()); },
                        [](OMWaveSound& a) { a.unload(); },
                        [](OMWaveSound& a) { a.setPlayPosition(3, 20); }};
    for (const int mode : {kOMIStreamCache, 16})
        for (const Act& act : acts) {
            const TestSound a = make(Samples(48, 7), mode);
            a->setPlayCount(kOMSoundPlayForever);
            a->play(true);
            run(16);
            heard();
            a->setFinishedLink([&, once = true]() mutable {
                if (std::exchange(once, false)) a->play(true);
            });
            act(*a);
            EXPECT_EQ(engine.soundingCount(), 1u);
            EXPECT_EQ(a->playEnd(), 47);
            run(80);
            EXPECT_EQ(heard(), Samples(80, 7)) << "at its own pace";
        }
}

TEST_F(OMWaveSoundTest, ALinkMayDestroyEverySound) {
    for (const bool replace : {false, true}) {
        std::vector<TestSound> sounds;
        for (int i = 0; i < 5; ++i) {
            sounds.push_back(make(Samples(10, 9)));
            sounds.back()->setFinishedLink([&] {
                sounds.clear();
                if (!replace) return;
                sounds.push_back(make(Samples(16, 50)));
                sounds.back()->play(true);
            });
            sounds.back()->play(true);
        }
        run(16);
        EXPECT_EQ(sounds.size(), replace ? 1u : 0u);
        heard();
        run(24);
        EXPECT_EQ(heard(), replace ? Samples(16, 50) : Samples());
        EXPECT_FALSE(device.isOpen());
    }
}

TEST_F(OMWaveSoundTest, ASynchronousPlayReturnsInSilence) {
    device.bytesPerMs = 2;
    const TestSound a = listened(100);
    expectEvents({{[&] { EXPECT_TRUE(a->play(false)); }, "a started a finished "}});
    EXPECT_GE(machine.clock().now, 52u);

    const TestSound b = listened(100, "b");
    a->play(true);
    EXPECT_TRUE(b->play(false));
    EXPECT_EQ(engine.soundingCount(), 2u);
    EXPECT_EQ(takeFailures(),
              Strings{"OMWaveSound::play - only one sound can be played synchronously!"});
    a->stop();
    b->stop();
    b->setPlayCount(kOMSoundPlayForever);
    EXPECT_TRUE(b->play(false)) << "never waited for";
    b->stop();
    engine.suspend();
    EXPECT_TRUE(a->play(false)) << "nor is one in the background";
}

TEST_F(OMWaveSoundTest, StreamedSoundsReadAheadWhenThereIsTime) {
    Samples data(500);
    std::iota(data.begin(), data.end(), std::uint8_t{0});
    const TestSound a = make(data, 16);
    a->load();
    EXPECT_EQ(a.stream->position(), 44u + 6 * kSize) << "as many blocks as buffers";
    a->play(true);
    EXPECT_EQ(device.queuedBytes(), 6u * kSize);
    // With enough queued the service mixes nothing and reads until the blocks are full.
    for (const std::size_t block : {7, 8, 9, 10, 11, 12, 12}) {
        engine.service();
        EXPECT_EQ(a.stream->position(), 44u + block * kSize);
    }
    run(304);
    a->setVolume(0); // what is queued was mixed out of blocks that are still there
    run(200);
    data.resize(504);
    std::fill(data.begin() + 304, data.end(), 128);
    EXPECT_EQ(heard(), data);
    a->unload();
    a.stream->seek(0);
    EXPECT_EQ(a.stream->fill(), 544u) << "no more into the sound's blocks";
}

TEST_F(OMWaveSoundTest, AShortStreamIsSilentWhereItCannotBeRead) {
    Samples expected(40, 128);
    std::fill_n(expected.begin(), 12, 7);
    for (const int mode : {kOMIStreamCache, 16}) {
        files.put("s.bin", RiffSound{.data = Samples(40, 7)}.build());
        OMIStreamFile stream("s.bin", mode);
        OMWaveSound a(stream, false);
        stream.close(); // a whole one was read for its header
        files.truncate("s.bin", 44 + 12);
        EXPECT_TRUE(a.play(true));
        run(80);
        EXPECT_EQ(heard(), expected) << mode;
    }
}

// The device

TEST_F(OMWaveSoundTest, ARateThatNoDevicePlaysIsRefused) {
    const TestSound good = make(Samples(8, 7));
    for (const bool keepOpen : {false, true})
        for (const std::uint32_t rate : {0u, 192001u, 0xFFFFFFFFu}) {
            engine.testDevice(keepOpen);
            const TestSound bad = make(Samples(8, 9), kOMIStreamBuffered, rate);
            EXPECT_FALSE(bad->play(true)) << rate;
            EXPECT_EQ(engine.soundingCount(), 0U);
            EXPECT_TRUE(good->play(true)) << "the device is opened anew";
            // Among others every sound is played at their rate.
            EXPECT_TRUE(bad->play(true)) << rate;
            run(16);
            EXPECT_EQ(heard().size(), 16U);
        }
}

TEST_F(OMWaveSoundTest, TheDeviceIsOpenAtTheFirstSoundsRate) {
    const TestSound a = make(Samples(16, 7), kOMIStreamCache, 11025);
    const TestSound b = make(Samples(80, 9));
    a->play(true);
    EXPECT_EQ(std::exchange(device.opened, {}), (Rates{11025, 22050, 11025})) << "tested first";
    EXPECT_EQ(device.pauses, 1) << "a new sound alone is filled while the device pauses";
    EXPECT_FALSE(device.paused);
    b->play(true);
    EXPECT_EQ(device.pauses, 1) << "no pause while another one is heard";
    run(48);
    b->pause();
    b->resume();
    EXPECT_EQ(device.rate(), 11025);
    b->pause();
    run(8);
    EXPECT_EQ(device.rate(), 11025) << "open while a sound is paused";
    b->stop();
    run(8);
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.opened, Rates{});

    EXPECT_TRUE(engine.testDevice(true));
    EXPECT_EQ(device.rate(), 22050);
    a->play(true);
    run(80);
    EXPECT_EQ(device.rate(), 11025) << "kept open";
    a->play(true);
    EXPECT_EQ(device.opened, (Rates{11025, 22050, 11025})) << "and not reopened";
    run(80);
    EXPECT_TRUE(engine.testDevice(false));
    EXPECT_FALSE(device.isOpen());
}

TEST_F(OMWaveSoundTest, TheBackgroundPausesTheDevice) {
    std::vector<int> late;
    const int number = engine.addLatencyListener([&](int ms) { late.push_back(ms); });
    const TestSound a = make(Samples(100, 7));
    a->play(true);
    machine.clock().now = 0xFFFFFF00;
    engine.suspend();
    machine.clock().now = 0x100;
    engine.suspend();
    EXPECT_TRUE(device.paused);
    run(80);
    EXPECT_EQ(heard(), Samples());
    const TestSound b = make(Samples(100, 7));
    a->stop();
    b->play(true);
    EXPECT_TRUE(device.paused) << "what begins in the background waits as well";
    engine.resume();
    engine.resume();
    EXPECT_FALSE(device.paused);
    EXPECT_EQ(late, std::vector<int>{0x200});
    engine.removeLatencyListener(number);
    engine.suspend();
    engine.resume();
    EXPECT_EQ(late.size(), 1u);
}

TEST_F(OMWaveSoundTest, ListenersHearThatTheQueueRanDry) {
    std::vector<int> late;
    engine.addLatencyListener([&](int ms) { late.push_back(ms); });
    engine.setMinNumBuffersInQueue(3);
    const TestSound a = make(Samples(1000, 7), kOMIStreamCache, 1000); // a buffer in 8 ms
    a->play(true);
    machine.clock().now = 7500;
    run(48, 48);
    EXPECT_EQ(late, std::vector<int>{7492}) << "7.5 s after the last buffer was sent";
    machine.clock().now = 20000;
    run(48, 48);
    EXPECT_EQ(late, (std::vector<int>{7492, 12492}));
    machine.clock().now = 21000;
    a->stop();
    engine.service();
    a->play(true);
    engine.service();
    EXPECT_EQ(late.size(), 2u) << "a new beginning is not late";
}

TEST_F(OMWaveSoundTest, ASoundBegunByTheEndOfAnotherIsNotLate) {
    EXPECT_TRUE(engine.testDevice(true)); // as the game keeps it
    std::vector<int> late;
    engine.addLatencyListener([&](int ms) { late.push_back(ms); });
    const TestSound a = make(Samples(60, 7), kOMIStreamCache, 1000);
    const TestSound b = make(Samples(60, 7), kOMIStreamCache, 1000);
    int begun = 0;
    a->setFinishedLink([&] { begun += b->play(true) ? 1 : 0; });
    a->play(true);
    for (int pass = 0; pass < 40; ++pass) {
        machine.clock().now += 8;
        run(8, 8);
    }
    EXPECT_EQ(begun, 1);
    EXPECT_EQ(late, std::vector<int>{});
}

TEST_F(OMWaveSoundTest, TheDeviceIsGivenAwayAndTakenBack) {
    const TestSound a = listened(100, "a");
    const TestSound b = listened(100, "b");
    const TestSound c = listened(100, "c");
    expectEvents({
        {[&] { a->play(true), b->play(true), c->play(true), c->pause(); }, "c paused "},
        {[&] { run(16); }, "a started b started "},
        {[&] { engine.yieldDevice(), engine.yieldDevice(); }, "a paused b paused "},
        {[&] { EXPECT_FALSE(device.isOpen() || make(Samples(10, 7))->play(true)); }, ""},
        {[&] { b->resume(), run(16), engine.reclaimDevice(); }, ""},
        {[&] { EXPECT_FALSE(device.isOpen()); }, ""},
        {[&] { engine.reclaimDevice(), run(200); }, "a resumed b resumed a finished b finished "},
    });
    EXPECT_TRUE(c->isPaused());
    EXPECT_TRUE(device.isOpen()) << "kept open from now on";
}

// Settings

TEST_F(OMWaveSoundTest, SettingsAreCheckedAndChangeOnlyInTime) {
    const std::string text = "OMWaveSound::";
    const auto expect = [&](std::string_view complaint) {
        EXPECT_EQ(takeFailures(),
                  complaint.empty() ? Strings{} : Strings{text + std::string(complaint)});
    };
    engine.setBufferSize(0), expect("setBufferSize - invalid parameter!");
    engine.setBufferSize(0x7FFFFFFF), expect("setBufferSize - invalid parameter!");
    engine.setNumBuffers(1), expect("setNumBuffers - invalid parameter!");
    engine.setNumBuffers(0x7FFFFFFF), expect("setNumBuffers - invalid parameter!");
    engine.setLatencyDelta(0), expect("setLatencyDelta - invalid parameter!");
    engine.setLatencyDelta(6), expect("setLatencyDelta - invalid parameter!");
    engine.setMinNumBuffersInQueue(1), expect("setMinNumBuffersInQueue - invalid parameter!");
    engine.setMinNumBuffersInQueue(7), expect("setMinNumBuffersInQueue - invalid parameter!");
    engine.setLatencyDelta(5), expect("");
    engine.setMinNumBuffersInQueue(6), expect("");
    engine.setNumBuffers(3), expect("");
    {
        const TestSound a = make(Samples(100, 7));
        for (const int count : {0, -2}) {
            a->setPlayCount(count);
            EXPECT_EQ(takeFailures(), Strings{"OMSound::setPlayCount - count must be "
                                              "kOMSoundPlayForever or greater than 0!"});
        }
        a->setVolume(-5);
        EXPECT_EQ(a->volume(), 0);
        a->setVolume(1000);
        EXPECT_EQ(a->volume(), 100);
        engine.setBufferSize(16);
        expect("setBufferSize - cannot change buffer size if there are instances of OMWaveSound!");
        engine.setNumBuffers(4), expect("setNumBuffers - invalid parameter!");
        engine.setLatencyDelta(1), expect("");
        a->play(true);
        engine.setLatencyDelta(2);
        expect("setLatencyDelta - cannot change the latency delta if there are sounds playing!");
    }
    engine.setBufferSize(16), expect("");
    EXPECT_EQ(engine.bufferSize(), 16);
}

TEST_F(OMWaveSoundTest, TheEngineWorksByATaskWhileThereAreSounds) {
    EXPECT_EQ(app->tasks().count(), 0u);
    TestSound a = make(Samples(8, 7));
    EXPECT_EQ(app->tasks().count(), 1u);
    a->setFinishedLink([&] { a.sound.reset(); });
    a->play(true);
    app->begin();
    device.play(8);
    app->pass(); // the task goes in its own run
    EXPECT_EQ(app->tasks().count(), 0u);
    EXPECT_FALSE(device.isOpen());
}

using OMWaveSoundDeathTest = testing_support::OMAppTest;

TEST_F(OMWaveSoundDeathTest, NeedsAnEngine) {
    files.put("s.bin", RiffSound{.data = Samples(10)}.build());
    OMIStreamFile stream("s.bin", kOMIStreamCache);
    EXPECT_EXIT(OMWaveSound(stream, true), testing::ExitedWithCode(255),
                "must have an OMWaveEngine instance");
}

} // namespace
