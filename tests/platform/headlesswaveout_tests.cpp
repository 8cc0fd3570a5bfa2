// The device that nobody hears: when buffers are done, and what the recordings hold.
#include "recording.h"
#include "temporaryfolder.h"

#include "platform/headless/headlesswaveout.h"
#include "platform/headless/virtualclock.h"

#include <deque>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace platform {
namespace {

using testing_support::recordingOf;

struct Written {
    formats::Bytes data{};
    WaveBuffer buffer{};
    std::size_t played = 0;
};

TEST(HeadlessWaveOut, PlaysAndRecordsAsAModelDoes) {
    const TemporaryFolder folder;
    std::ostringstream notes;
    VirtualClock clock;
    WaveFolder recordings{folder.path("sound"), notes};
    HeadlessWaveOut device{clock, recordings};
    std::mt19937 random(1);
    std::deque<Written> buffers; // of this opening
    std::size_t first = 0;       // of those that are not done
    int rate = 0, files = 0;
    bool paused = false;
    std::uint32_t lastMs = 0;
    std::uint64_t busyMs = 0, busyBytes = 0; // since something waits
    formats::Bytes heard;
    const auto play = [&] { // what every call to the device has it do
        if (!paused) busyMs += clock.milliseconds() - lastMs;
        lastMs = clock.milliseconds();
        for (; first < buffers.size(); ++first) {
            Written& next = buffers[first];
            for (; next.played < next.data.size(); ++next.played) {
                if (busyBytes == busyMs * static_cast<unsigned>(rate) / 1000) return;
                ++busyBytes;
                heard.push_back(next.data[next.played]);
            }
        }
        busyMs = busyBytes = 0; // time without data is lost
    };
    const auto reset = [&] {
        play();
        first = buffers.size();
        paused = false;
        busyMs = busyBytes = 0;
    };
    for (int i = 0; i < 20'000; ++i) {
        SCOPED_TRACE(i);
        const unsigned what = random() % 100;
        clock.sleep(random() % (what == 0 ? 5000 : 9));
        if (what == 1) {
            reset();
            const int rates[] = {1000, 2000, 11127, 192'000, 0, -1, 999, 192'001, 0x7FFFFFFF};
            const std::size_t which = random() % std::size(rates);
            ASSERT_EQ(device.open(rates[which]), which < 4) << "which closes it, too";
            for (const Written& written : buffers) ASSERT_EQ(written.buffer.done, rate > 0);
            const std::string name =
                std::to_string(1000 + files + 1).substr(1) + "-" + std::to_string(rate) + ".wav";
            const std::string recorded = folder.contents("sound/" + name);
            ASSERT_TRUE(recorded == (heard.empty() ? "" : recordingOf({rate}, heard))) << name;
            files += heard.empty() ? 0 : 1;
            rate = which < 4 ? rates[which] : 0;
            heard.clear();
            buffers.clear();
            first = 0;
        } else if (what == 2) {
            reset();
            device.reset();
        } else if (what < 10) {
            play();
            paused = what < 6;
            paused ? device.pause() : device.restart();
        } else if (what < 14) { // what waits may be changed
            play();
            const WaveOutHold hold(device);
            for (std::size_t k = first; k < buffers.size(); ++k)
                for (std::uint8_t& byte : buffers[k].data)
                    byte = static_cast<std::uint8_t>(random());
        } else if (what < 40) {
            play();
            Written& added = buffers.emplace_back();
            for (unsigned k = random() % 20; k > 0; --k) added.data.push_back(std::uint8_t(k));
            added.buffer.data = added.data;
            device.write(added.buffer);
            ASSERT_EQ(added.buffer.prepared, rate > 0);
        }
        play();
        device.poll();
        for (std::size_t k = 0; k < buffers.size(); ++k)
            ASSERT_EQ(buffers[k].buffer.done, rate > 0 && (k < first || buffers[k].data.empty()));
    }
    EXPECT_GT(files, 50);
    EXPECT_EQ(notes.str(), "");
}

TEST(HeadlessWaveOut, TellsOnceOfARecordingThatCannotBeWritten) {
    const TemporaryFolder folder;
    folder.make("sound", "a file where the folder should be");
    std::ostringstream notes;
    VirtualClock clock;
    WaveFolder recordings{folder.path("sound"), notes};
    HeadlessWaveOut device{clock, recordings};
    const formats::Bytes data(50);
    WaveBuffer buffer{.data = data};
    ASSERT_TRUE(device.open(1000));
    device.write(buffer);
    for (int i = 0; i < 2; ++i) {
        clock.sleep(10);
        device.poll();
    }
    EXPECT_EQ(notes.str(),
              "recording " + folder.path("sound") + "/001-1000.wav cannot be written\n");
}

} // namespace
} // namespace platform
