// The device that nobody hears: when buffers are done, and what the recordings hold.
#include "temporaryfolder.h"

#include "platform/headless/headlesswaveout.h"
#include "platform/headless/virtualclock.h"

#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace platform {
namespace {

using Bytes = std::vector<std::uint8_t>;

class HeadlessWaveOutTest : public testing::Test {
  protected:
    /// Queues a buffer of `size` bytes that count up through all buffers.
    WaveBuffer& write(std::size_t size) {
        Bytes& data = data_.emplace_back(size);
        for (std::uint8_t& byte : data) byte = next_++;
        WaveBuffer& buffer = buffers_.emplace_back();
        buffer.data = data;
        device_.write(buffer);
        return buffer;
    }
    void pass(std::uint32_t ms) {
        clock_.sleep(ms);
        device_.poll();
    }
    static Bytes counted(std::size_t size) {
        Bytes bytes(size);
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i);
        return bytes;
    }

    /// The samples of a recording, after a check of its header.
    Bytes recorded(const std::string& name, std::uint32_t rate) {
        const std::string all = folder_.contents("sound/" + name);
        if (all.size() < 44) return {};
        std::size_t size = 0;
        for (std::size_t at = 44; at-- > 40;) size = size << 8 | static_cast<std::uint8_t>(all[at]);
        const auto number = [](std::size_t value) {
            std::string text;
            for (int i = 0; i < 4; ++i) text += static_cast<char>(value >> 8 * i);
            return text;
        };
        const std::string bytesPerSecond = number(rate) + number(rate);
        EXPECT_EQ(all.substr(0, 44), "RIFF" + number(all.size() - 8) + "WAVEfmt " + number(16) +
                                         number(1 | 1 << 16) + bytesPerSecond +
                                         number(1 | 8 << 16) + "data" + number(size));
        EXPECT_EQ(all.size(), 44 + size + size % 2);
        return {all.begin() + 44, all.begin() + 44 + static_cast<std::ptrdiff_t>(size)};
    }
    TemporaryFolder folder_;
    std::ostringstream notes_;
    VirtualClock clock_;
    WaveFolder recordings_{folder_.path("sound"), notes_};
    HeadlessWaveOut device_{clock_, recordings_};
    std::deque<Bytes> data_;
    std::deque<WaveBuffer> buffers_;
    std::uint8_t next_ = 0;
};

TEST_F(HeadlessWaveOutTest, NothingIsLostOverHours) {
    WaveFolder none("", notes_);
    HeadlessWaveOut device(clock_, none);
    ASSERT_TRUE(device.open(11127));
    constexpr std::size_t size = 1000;
    const Bytes data(size);
    std::vector<WaveBuffer> ring(8);
    std::uint64_t written = 0;
    std::uint64_t played = 0;
    std::uint64_t ms = 0;
    for (std::uint32_t step = 1; ms < 5ULL * 3600 * 1000; step = step % 499 + 1) {
        for (; written < played + ring.size(); ++written) {
            ring[written % ring.size()].data = data;
            device.write(ring[written % ring.size()]);
        }
        clock_.sleep(step);
        device.poll();
        ms += step;
        while (played < written && ring[played % ring.size()].done) ++played;
        ASSERT_EQ(played, ms * 11127 / 1000 / size) << ms;
    }
}

TEST_F(HeadlessWaveOutTest, PauseStopsTheQueueAndTimeWithoutDataIsLost) {
    ASSERT_TRUE(device_.open(1000));
    pass(500);
    const WaveBuffer& a = write(10);
    pass(4);
    device_.pause();
    clock_.sleep(1000);
    device_.restart();
    pass(5);
    EXPECT_FALSE(a.done);
    pass(1);
    EXPECT_TRUE(a.done);
    pass(100);
    const WaveBuffer& b = write(10);
    clock_.sleep(9);
    const WaveBuffer& c = write(1); // in time
    pass(1);
    EXPECT_TRUE(b.done);
    EXPECT_FALSE(c.done);
    pass(1);
    EXPECT_TRUE(c.done);
}

TEST_F(HeadlessWaveOutTest, QueuedBytesMayBeChangedUntilTheyArePlayed) {
    ASSERT_TRUE(device_.open(1000));
    write(10);
    clock_.sleep(4);
    {
        const WaveOutHold hold(device_);
        data_.front().assign(10, 99);
    }
    pass(100);
    device_.close();
    EXPECT_EQ(recorded("001-1000.wav", 1000), (Bytes{0, 1, 2, 3, 99, 99, 99, 99, 99, 99}));
}

TEST_F(HeadlessWaveOutTest, EveryOpeningThatPlayedHasItsRecording) {
    EXPECT_TRUE(device_.open(11025));
    write(5);
    EXPECT_TRUE(device_.open(22050)); // closes the other one
    device_.close();
    EXPECT_FALSE(std::filesystem::exists(folder_.path("sound"))) << "nothing was played";

    next_ = 0;
    EXPECT_TRUE(device_.open(1000));
    write(6);
    write(6);
    pass(5);
    device_.pause();
    device_.reset(); // drops the rest
    EXPECT_TRUE(buffers_.back().done);
    write(4);
    pass(2);
    clock_.sleep(1);
    device_.close();
    EXPECT_EQ(recorded("001-1000.wav", 1000), (Bytes{0, 1, 2, 3, 4, 12, 13, 14}));

    next_ = 0;
    EXPECT_TRUE(device_.open(2000));
    write(7);
    pass(100);
    device_.close();
    EXPECT_EQ(recorded("002-2000.wav", 2000), counted(7)) << "with a pad byte";
    EXPECT_EQ(notes_.str(), "");
}

TEST_F(HeadlessWaveOutTest, RefusesImpossibleRatesAndIgnoresCallsWhenClosed) {
    for (const int rate :
         {0, -1, HeadlessWaveOut::kMinRate - 1, HeadlessWaveOut::kMaxRate + 1, 0x7FFFFFFF}) {
        EXPECT_FALSE(device_.open(rate));
        EXPECT_FALSE(device_.isOpen());
    }
    const WaveBuffer& a = write(5);
    EXPECT_FALSE(a.prepared);
    pass(1000);
    device_.reset();
    device_.pause();
    device_.restart();
    device_.close();
    EXPECT_FALSE(a.done);
}

TEST_F(HeadlessWaveOutTest, ARecordingThatCannotBeWrittenIsToldOnce) {
    folder_.make("sound", "a file where the folder should be");
    ASSERT_TRUE(device_.open(1000));
    write(50);
    pass(10);
    pass(10);
    device_.close();
    EXPECT_EQ(notes_.str(),
              "recording " + folder_.path("sound") + "/001-1000.wav cannot be written\n");
}

} // namespace
} // namespace platform
