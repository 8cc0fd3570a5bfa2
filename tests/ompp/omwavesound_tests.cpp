// Sounds beside what is heard of them in random use, which omwavemix_tests.cpp compares.
#include "soundfixture.h"

#include "omwavesamples.h"

#include <functional>
#include <numeric>
#include <random>

using namespace testing_support;

namespace {

using Numbers = std::vector<int>;

class OMWaveSoundTest : public SoundTest {
  protected:
    void expect(const Strings& complaints, const std::string& place = "OMWaveSound::") {
        Strings expected;
        for (const std::string& text : complaints) expected.push_back(place + text);
        EXPECT_EQ(takeFailures(), expected);
    }
};

TEST_F(OMWaveSoundTest, HeadersAreReadInEveryBufferMode) {
    const Samples data(10, 200);
    const std::string invalid = "OMWaveSound::OMWaveSound - invalid ";
    const auto read = [&](const Samples& bytes, int mode) {
        files.put("s.bin", bytes);
        OMIStreamFile stream("s.bin", mode);
        stream.seek(3); // wherever it stands
        return OMReadWaveHeader(stream);
    };
    for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, 7}) {
        const RiffSound riff{.rate = 7, .channels = 2, .bits = 16, .between = 20000, .data = data};
        EXPECT_EQ(read(riff.build(), mode).dataOffset, 44u + 20008) << mode;
        expect({"sample rate!", "number of channels!", "number of bits per sample!"}, invalid);
        const MacSound mac{1, 2, 1, 0xC0, 2, 0x51, 1, 9, -1, 0xAC440000, 0xFE, data};
        const auto header = read(mac.build(), mode);
        EXPECT_TRUE(header.dataOffset == 84 && header.dataLength == data.size()) << mode;
        expect({"number of synthesizers!", "synthesizer!", "synthesizer option!",
                "number of commands!", "command!", "command parameter 1!", "command parameter 2!",
                "sample rate!", "encoding!"},
               invalid);
    }
    EXPECT_EXIT(read(RiffSound{.before = 998}.build(), 0), testing::ExitedWithCode(255),
                "OMWaveSound::OMWaveSound - invalid WAVE format!");
}

TEST_F(OMWaveSoundTest, PlaysTheWindowThatWasSet) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::int64_t start, length, first, last;
        std::string complaint{};
    } rows[] = {
        {0, -1, 0, 9},
        {3, 4, 3, 6},
        {3, 100, 3, 9},
        {9, kMost, 9, 9},
        {2, 0, 2, 1},
        {-1, 4, 0, 3, "start position must be greater than or equal to 0!"},
        {10, 4, 9, 9, "start position is past the end of data!"},
        {kMost, 1, 9, 9, "start position is past the end of data!"},
        {3, -2, 3, 9, "length to play must be greater than or equal to 0!"},
    };
    for (const auto& row : rows)
        for (const int mode : {kOMIStreamCache, kOMIStreamBuffered}) {
            const TestSound a = make({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, mode);
            a->load();
            a->setPlayPosition(row.start, row.length);
            EXPECT_EQ(a->playStart(), row.first) << row.start << " " << row.length;
            EXPECT_EQ(a->playEnd(), row.last) << row.start << " " << row.length;
            if (!row.complaint.empty()) expect({"setPlayPosition - " + row.complaint});
            Samples expected(static_cast<std::size_t>(row.last + 1 - row.first));
            std::iota(expected.begin(), expected.end(), static_cast<std::uint8_t>(row.first));
            EXPECT_EQ(a->play(true), !expected.empty());
            run(32);
            std::erase(device.heard, 128);
            EXPECT_EQ(heard(), expected);
        }
}

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
    EXPECT_EQ(engine.soundingCount() + app->tasks().count(), 0u);
    EXPECT_FALSE(device.isOpen());
}

TEST_F(OMWaveSoundTest, StreamedSoundsReadAheadAndAreSilentWhereTheyCannotBeRead) {
    const TestSound a = make(Samples(500, 7), 16);
    a->load();
    EXPECT_EQ(a.stream->position(), 44u + 6 * kSize) << "as many blocks as buffers";
    a->play(true);
    // With enough queued the service mixes nothing and reads until the blocks are full.
    for (const std::size_t block : {7, 8, 9, 10, 11, 12, 12}) {
        engine.service();
        EXPECT_EQ(a.stream->position(), 44u + block * kSize);
    }
    a->unload();
    a.stream->seek(0);
    EXPECT_EQ(a.stream->fill(), 544u) << "no more into the sound's blocks";
    const TestSound cut = make(Samples(40, 7));
    cut.stream->close(); // it was read for its header
    files.truncate("sound2.bin", 44 + 12);
    cut->play(true);
    run(80);
    Samples expected(40, 128);
    std::fill_n(expected.begin(), 12, 7);
    EXPECT_EQ(heard(), expected);
}

TEST_F(OMWaveSoundTest, TheDeviceIsOpenAtTheFirstSoundsRate) {
    const TestSound a = make(Samples(16, 7), kOMIStreamCache, 11025);
    for (const std::uint32_t rate : {0u, 192001u, 0xFFFFFFFFu, 22050u}) {
        const TestSound b = make(Samples(80, 9), kOMIStreamBuffered, rate);
        EXPECT_EQ(b->play(true), rate == 22050u);
        b->stop(), run(8);
        a->play(true);
        EXPECT_TRUE(b->play(true)) << "among others every sound is played at their rate";
        EXPECT_EQ(device.rate(), 11025);
        b->stop(), run(48);
        EXPECT_FALSE(device.isOpen());
    }
    engine.testDevice(true);
    for (int i = 0; i < 2; ++i) device.opened.clear(), a->play(true), run(80);
    EXPECT_EQ(device.opened, Numbers{}) << "kept open, and not reopened";
    engine.testDevice(false);
    device.available = false;
    EXPECT_FALSE(a->play(true) || engine.testDevice(true) || make({})->play(true));
}

TEST_F(OMWaveSoundTest, ASynchronousPlayReturnsInSilence) {
    machine.clock().whileAsleep = [this](std::uint32_t ms) { device.play(2 * std::size_t{ms}); };
    const TestSound a = make(Samples(100, 7));
    EXPECT_TRUE(a->play(false));
    EXPECT_EQ(engine.soundingCount(), 0u);
    EXPECT_GE(machine.clock().now, 50u);
    EXPECT_EQ(heard().size(), 104u) << "what is mixed is full blocks of 8";
}

TEST_F(OMWaveSoundTest, ListenersHearOfTheBackgroundAndThatTheQueueRanDry) {
    Numbers late;
    const int number = engine.addLatencyListener([&](int ms) { late.push_back(ms); });
    const auto expectLate = [&](const Numbers& ms) { EXPECT_EQ(std::exchange(late, {}), ms); };
    std::uint32_t& now = machine.clock().now;
    TestSound a = make(Samples(100, 7));
    a->play(true);
    now = 0xFFFFFF00;
    engine.suspend();
    now = 0x100;
    engine.suspend();
    run(80);
    const TestSound b = make(Samples(100, 7));
    a->stop();
    b->play(true);
    EXPECT_TRUE(device.paused) << "what begins in the background waits as well";
    EXPECT_EQ(heard(), Samples{});
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
    engine.suspend(), engine.resume();
    expectLate({});
}

TEST_F(OMWaveSoundTest, SettingsAreCheckedAndChangeOnlyInTime) {
    for (const int size : {0, 0x7FFFFFFF}) engine.setBufferSize(size);
    for (const int count : {1, 0x7FFFFFFF}) engine.setNumBuffers(count);
    for (const int delta : {0, 6}) engine.setLatencyDelta(delta);
    for (const int count : {1, 7}) engine.setMinNumBuffersInQueue(count);
    const TestSound a = make(Samples(100, 7));
    a->play(true);
    engine.setBufferSize(16), engine.setLatencyDelta(2);
    Strings texts;
    for (const char* name :
         {"setBufferSize", "setNumBuffers", "setLatencyDelta", "setMinNumBuffersInQueue"})
        texts.resize(texts.size() + 2, std::string(name) + " - invalid parameter!");
    texts.emplace_back(
        "setBufferSize - cannot change buffer size if there are instances of OMWaveSound!");
    texts.emplace_back(
        "setLatencyDelta - cannot change the latency delta if there are sounds playing!");
    expect(texts);
}

} // namespace
