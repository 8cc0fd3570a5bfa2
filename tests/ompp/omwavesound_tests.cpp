// Sounds beside what is heard and told of them in random use (omwavemix_tests.cpp): their headers,
// their play window, what links may do, the device, the engine's settings.
#include "soundfixture.h"

#include "omwavesamples.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

using testing_support::MacSound;
using testing_support::RiffSound;
using testing_support::Samples;
using testing_support::SoundTest;
using testing_support::TestSound;

namespace {

using Numbers = std::vector<int>;

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
    void expectEvents(const char* expected) { EXPECT_EQ(std::exchange(events, {}), expected); }
    void expectHeard(const Samples& expected) { EXPECT_EQ(heard(), expected); }

    std::string events;
    Numbers late; ///< of what listeners hear
};

TEST_F(OMWaveSoundTest, HeadersAreReadInEveryBufferMode) {
    const Samples data(10, 200);
    const RiffSound riff{.rate = 7, .channels = 2, .bits = 16, .between = 20000, .data = data};
    const MacSound mac{.synthesizers = 2,
                       .synthesizer = 1,
                       .options = 0xC0,
                       .commands = 2,
                       .command = 0x51,
                       .param1 = 1,
                       .param2 = 9,
                       .rate = 0xAC440000,
                       .encoding = 0xFE,
                       .data = data};
    const auto read = [&](const Samples& bytes, int mode) {
        files.put("s.bin", bytes);
        OMIStreamFile stream("s.bin", mode);
        stream.seek(3); // wherever it stands
        return OMReadWaveHeader(stream);
    };
    const auto expect = [&](const Samples& bytes, std::size_t offset, Strings complaints) {
        for (std::string& what : complaints)
            what = "OMWaveSound::OMWaveSound - invalid " + what + "!";
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, 7}) {
            const auto header = read(bytes, mode);
            EXPECT_EQ(header.dataOffset, offset) << mode;
            EXPECT_EQ(header.dataLength, data.size()) << mode;
            EXPECT_EQ(takeFailures(), complaints) << mode;
        }
    };
    expect(riff.build(), 44 + 20008,
           {"sample rate", "number of channels", "number of bits per sample"});
    expect(mac.build(), 84,
           {"number of synthesizers", "synthesizer", "synthesizer option", "number of commands",
            "command", "command parameter 1", "command parameter 2", "sample rate", "encoding"});
    EXPECT_EXIT(read(RiffSound{.before = 998, .data = data}.build(), 0),
                testing::ExitedWithCode(255),
                "!found(.|\n)*OMWaveSound::OMWaveSound - invalid WAVE format!");
}

TEST_F(OMWaveSoundTest, PlaysTheWindowThatWasSet) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const Strings negative{"start position must be greater than or equal to 0!"};
    const Strings past{"start position is past the end of data!"};
    const Strings length{"length to play must be greater than or equal to 0!"};
    const struct {
        std::int64_t start, length, expectedStart, expectedEnd;
        Strings complaints;
    } rows[] = {
        {0, -1, 0, 9, {}},       {3, 4, 3, 6, {}},    {3, -1, 3, 9, {}},     {3, 100, 3, 9, {}},
        {-1, 4, 0, 3, negative}, {10, 4, 9, 9, past}, {3, -2, 3, 9, length}, {9, kMost, 9, 9, {}},
        {kMost, 1, 9, 9, past},  {2, 0, 2, 1, {}},
    };
    for (const auto& row : rows)
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
            SCOPED_TRACE(std::to_string(row.start) + " " + std::to_string(row.length));
            const TestSound a = make({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, mode);
            a->load();
            a->setPlayPosition(row.start, row.length);
            EXPECT_EQ(a->playStart(), row.expectedStart);
            EXPECT_EQ(a->playEnd(), row.expectedEnd);
            Strings complaints = row.complaints;
            for (std::string& text : complaints) text.insert(0, "OMWaveSound::setPlayPosition - ");
            EXPECT_EQ(takeFailures(), complaints);
            Samples expected(static_cast<std::size_t>(row.expectedEnd + 1 - row.expectedStart));
            std::iota(expected.begin(), expected.end(),
                      static_cast<std::uint8_t>(row.expectedStart));
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
    empty->setPlayPosition(0, 5);
    takeFailures();
    EXPECT_FALSE(empty->play(true));
    EXPECT_FALSE(open({'n', 'o', ' ', 's', 'o', 'u', 'n', 'd'})->play(true));
    const TestSound good = make(Samples(8, 7));
    for (const bool keepOpen : {false, true})
        for (const std::uint32_t rate : {0u, 192001u, 0xFFFFFFFFu}) {
            engine.testDevice(keepOpen);
            const TestSound bad = make(Samples(8, 9), kOMIStreamBuffered, rate);
            EXPECT_FALSE(bad->play(true)) << rate;
            EXPECT_EQ(engine.soundingCount(), 0U);
            EXPECT_TRUE(good->play(true)) << "the device is opened anew";
            EXPECT_TRUE(bad->play(true)) << "among others every sound is played at their rate";
            run(16);
            EXPECT_EQ(heard().size(), 16U);
        }
    engine.testDevice(false);
    device.available = false;
    const TestSound a = listened(10);
    EXPECT_FALSE(a->play(true));
    a->pause(), a->resume(), run(100);
    expectEvents("");
    EXPECT_FALSE(engine.testDevice(true));
}

// Links

TEST_F(OMWaveSoundTest, LinksMayDoAnythingToAnySound) {
    std::mt19937 random(20261126);
    std::vector<TestSound> sounds(4);
    std::vector<TestSound> gone; ///< which end when no link runs any more
    int depth = 0;
    const std::function<void(std::size_t)> act = [&](std::size_t i) {
        OMWaveSound* sound = sounds[i].sound.get();
        switch (sound ? random() % 9 : 9) {
        case 0: sound->play(true); break;
        case 1: sound->stop(); break;
        case 2: sound->load(); break;
        case 3: sound->unload(); break;
        case 4: sound->pause(); break;
        case 5: sound->resume(); break;
        case 6: sound->setPlayPosition(static_cast<int>(random() % 9), 1 + random() % 30); break;
        case 7: sound->setPlayCount(random() % 2 == 0 ? kOMSoundPlayForever : 2); break;
        case 8: sounds[i].sound.reset(); break;
        default:
            if (sounds[i].stream) gone.push_back(std::move(sounds[i]));
            sounds[i] = make(Samples(40 + i, 7), random() % 2 == 0 ? kOMIStreamCache : 16);
            for (const auto link : {&OMSound::setStartedLink, &OMSound::setFinishedLink,
                                    &OMSound::setPausedLink, &OMSound::setResumedLink})
                ((*sounds[i].sound).*link)([&] {
                    if (depth > 3 || random() % 2 == 0) return;
                    ++depth;
                    act(random() % 4);
                    --depth;
                });
            sounds[i]->play(true);
        }
    };
    for (int step = 0; step < 5000; ++step) {
        if (step % 100 == 0) gone.clear();
        act(random() % 4);
        if (random() % 3 == 0) run(static_cast<int>(random() % 60));
    }
    takeFailures();
    EXPECT_GT(heard().size(), 20'000u);
    depth = 9; // all is quiet now
    for (TestSound& each : sounds) each.sound.reset();
    EXPECT_EQ(engine.soundingCount(), 0u);
    EXPECT_EQ(app->tasks().count(), 0u);
    EXPECT_FALSE(device.isOpen());

    // One that begins anew when it is stopped goes on at its own pace.
    for (const int mode : {kOMIStreamCache, 16})
        for (bool (*stop)(OMWaveSound&) :
             {+[](OMWaveSound& a) { return !a.play(true); },
              +[](OMWaveSound& a) { return a.stop(); }, +[](OMWaveSound& a) { return a.load(); },
              +[](OMWaveSound& a) { return a.setPlayPosition(3, 20), a.playEnd() != 47; }}) {
            const TestSound a = make(Samples(48, 7), mode);
            a->setPlayCount(kOMSoundPlayForever);
            a->play(true);
            run(16);
            heard();
            a->setFinishedLink([&, once = true]() mutable {
                if (std::exchange(once, false)) a->play(true);
            });
            EXPECT_FALSE(stop(*a));
            EXPECT_EQ(engine.soundingCount(), 1u);
            run(80);
            expectHeard(Samples(80, 7));
        }
}

TEST_F(OMWaveSoundTest, ASynchronousPlayReturnsInSilence) {
    device.bytesPerMs = 2;
    const TestSound a = listened(100);
    EXPECT_TRUE(a->play(false));
    expectEvents("a started a finished ");
    EXPECT_GE(machine.clock().now, 52u);
    const TestSound b = listened(100, "b");
    a->play(true);
    EXPECT_TRUE(b->play(false));
    EXPECT_EQ(engine.soundingCount(), 2u);
    EXPECT_EQ(takeFailures(),
              Strings{"OMWaveSound::play - only one sound can be played synchronously!"});
    a->stop(), b->stop();
    b->setPlayCount(kOMSoundPlayForever);
    EXPECT_TRUE(b->play(false)) << "never waited for";
    b->stop();
    engine.suspend();
    EXPECT_TRUE(a->play(false)) << "nor is one in the background";
}

// Streams

TEST_F(OMWaveSoundTest, StreamedSoundsReadAheadAndAreSilentWhereTheyCannotBeRead) {
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
    expectHeard(data);
    a->unload();
    a.stream->seek(0);
    EXPECT_EQ(a.stream->fill(), 544u) << "no more into the sound's blocks";
    Samples expected(40, 128);
    std::fill_n(expected.begin(), 12, 7);
    for (const int mode : {kOMIStreamCache, 16}) {
        files.put("s.bin", RiffSound{.data = Samples(40, 7)}.build());
        OMIStreamFile stream("s.bin", mode);
        OMWaveSound cut(stream, false);
        stream.close(); // a whole one was read for its header
        files.truncate("s.bin", 44 + 12);
        EXPECT_TRUE(cut.play(true));
        run(80);
        expectHeard(expected);
    }
}

// The device

TEST_F(OMWaveSoundTest, TheDeviceIsOpenAtTheFirstSoundsRate) {
    const TestSound a = make(Samples(16, 7), kOMIStreamCache, 11025);
    const TestSound b = make(Samples(80, 9));
    a->play(true);
    EXPECT_EQ(std::exchange(device.opened, {}), (Numbers{11025, 22050, 11025})) << "tested first";
    EXPECT_EQ(device.pauses, 1) << "a new sound alone is filled while the device pauses";
    EXPECT_FALSE(device.paused);
    b->play(true);
    EXPECT_EQ(device.pauses, 1) << "no pause while another one is heard";
    run(48);
    b->pause(), b->resume();
    EXPECT_EQ(device.rate(), 11025);
    b->stop();
    run(8);
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.opened, Numbers{});
    EXPECT_TRUE(engine.testDevice(true));
    EXPECT_EQ(device.rate(), 22050);
    a->play(true);
    run(80);
    EXPECT_EQ(device.rate(), 11025) << "kept open";
    a->play(true);
    EXPECT_EQ(device.opened, (Numbers{11025, 22050, 11025})) << "and not reopened";
    run(80);
    EXPECT_TRUE(engine.testDevice(false));
    EXPECT_FALSE(device.isOpen());
}

TEST_F(OMWaveSoundTest, ListenersHearOfTheBackgroundAndThatTheQueueRanDry) {
    const int number = engine.addLatencyListener([&](int ms) { late.push_back(ms); });
    const auto expectLate = [&](const Numbers& ms) { EXPECT_EQ(std::exchange(late, {}), ms); };
    std::uint32_t& now = machine.clock().now;
    TestSound a = make(Samples(100, 7));
    a->play(true);
    now = 0xFFFFFF00;
    engine.suspend();
    now = 0x100;
    engine.suspend();
    EXPECT_TRUE(device.paused);
    run(80);
    expectHeard({});
    const TestSound b = make(Samples(100, 7));
    a->stop();
    b->play(true);
    EXPECT_TRUE(device.paused) << "what begins in the background waits as well";
    engine.resume();
    engine.resume();
    EXPECT_FALSE(device.paused);
    expectLate({0x200});
    b->stop();
    run(8);

    engine.setMinNumBuffersInQueue(3);
    a = make(Samples(1000, 7), kOMIStreamCache, 1000); // a buffer in 8 ms
    now = 0;
    a->play(true);
    now = 7500;
    run(48, 48);
    expectLate({7492}); // after the last buffer was sent
    now = 20000;
    run(48, 48);
    expectLate({12492});
    now = 21000;
    a->stop();
    engine.service();
    a->play(true);
    engine.service();
    expectLate({}); // a new beginning is not late
    a->stop();
    EXPECT_TRUE(engine.testDevice(true)); // as the game keeps it
    const TestSound first = make(Samples(60, 7), kOMIStreamCache, 1000);
    const TestSound second = make(Samples(60, 7), kOMIStreamCache, 1000);
    bool begun = false;
    first->setFinishedLink([&] { begun = second->play(true); });
    first->play(true);
    for (int pass = 0; pass < 40; ++pass) now += 8, run(8, 8);
    EXPECT_TRUE(begun);
    expectLate({}); // nor is one begun by the end of another
    engine.removeLatencyListener(number);
    engine.suspend();
    engine.resume();
    expectLate({});
}

TEST_F(OMWaveSoundTest, TheDeviceIsGivenAwayAndTakenBack) {
    const TestSound a = listened(100, "a");
    const TestSound b = listened(100, "b");
    const TestSound c = listened(100, "c");
    a->play(true), b->play(true), c->play(true), c->pause();
    run(16);
    expectEvents("c paused a started b started ");
    engine.yieldDevice(), engine.yieldDevice();
    expectEvents("a paused b paused ");
    EXPECT_FALSE(device.isOpen() || make(Samples(10, 7))->play(true));
    b->resume(), run(16), engine.reclaimDevice();
    expectEvents("");
    EXPECT_FALSE(device.isOpen());
    engine.reclaimDevice(), run(200);
    expectEvents("a resumed b resumed a finished b finished ");
    EXPECT_TRUE(c->isPaused());
    EXPECT_TRUE(device.isOpen()) << "kept open from now on";
}

// Settings

TEST_F(OMWaveSoundTest, SettingsAreCheckedAndChangeOnlyInTime) {
    const auto expect = [&](const std::string& complaint) {
        EXPECT_EQ(takeFailures(), complaint.empty() ? Strings{} : Strings{complaint});
    };
    const auto expectInvalid = [&](void (OMWaveEngine::*set)(int), const std::string& name,
                                   const Numbers& values) {
        for (const int value : values)
            (engine.*set)(value), expect("OMWaveSound::" + name + " - invalid parameter!");
    };
    expectInvalid(&OMWaveEngine::setBufferSize, "setBufferSize", {0, 0x7FFFFFFF});
    expectInvalid(&OMWaveEngine::setNumBuffers, "setNumBuffers", {1, 0x7FFFFFFF});
    expectInvalid(&OMWaveEngine::setLatencyDelta, "setLatencyDelta", {0, 6});
    expectInvalid(&OMWaveEngine::setMinNumBuffersInQueue, "setMinNumBuffersInQueue", {1, 7});
    engine.setLatencyDelta(5), engine.setMinNumBuffersInQueue(6), engine.setNumBuffers(3);
    expect("");
    {
        const TestSound a = make(Samples(100, 7));
        for (const int count : {0, -2})
            a->setPlayCount(count), expect("OMSound::setPlayCount - count must be "
                                           "kOMSoundPlayForever or greater than 0!");
        a->setVolume(-5);
        EXPECT_EQ(a->volume(), 0);
        a->setVolume(1000);
        EXPECT_EQ(a->volume(), 100);
        engine.setBufferSize(16);
        expect("OMWaveSound::setBufferSize - cannot change buffer size if there are instances of "
               "OMWaveSound!");
        expectInvalid(&OMWaveEngine::setNumBuffers, "setNumBuffers", {4});
        engine.setLatencyDelta(1), expect("");
        a->play(true);
        engine.setLatencyDelta(2);
        expect("OMWaveSound::setLatencyDelta - cannot change the latency delta if there are sounds "
               "playing!");
    }
    engine.setBufferSize(16), expect("");
    EXPECT_EQ(engine.bufferSize(), 16);
}

using OMWaveSoundDeathTest = testing_support::OMAppTest;

TEST_F(OMWaveSoundDeathTest, NeedsAnEngine) {
    files.put("s.bin", RiffSound{.data = Samples(10)}.build());
    OMIStreamFile stream("s.bin", kOMIStreamCache);
    EXPECT_EXIT(OMWaveSound(stream, true), testing::ExitedWithCode(255),
                "must have an OMWaveEngine instance");
}

} // namespace
