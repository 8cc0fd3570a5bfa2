// The sound device and the speaker of movies on SDL's drivers without a loudspeaker, which play in
// real time, and where there is none.
#include "platform/headless/virtualclock.h"
#include "platform/sdl/sdlmoviespeaker.h"
#include "platform/sdl/sdlwaveout.h"

#include <gtest/gtest.h>
#include <vector>

namespace platform {
namespace {

class SdlSoundTest : public testing::Test {
  protected:
    ~SdlSoundTest() override {
        device_.close();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    bool isDoneAfter(std::uint32_t ms) {
        clock_.sleep(ms);
        device_.poll();
        return buffer_.done;
    }

    VirtualClock clock_;
    SdlSound sound_{clock_};
    SdlWaveOut device_{sound_};
    const std::vector<std::uint8_t> data_ = std::vector<std::uint8_t>(20'000);
    WaveBuffer buffer_{.data = data_};
};

TEST_F(SdlSoundTest, RefusesRatesThatNoDevicePlays) {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    for (const int rate : {0, -1, WaveOut::kMinRate - 1, WaveOut::kMaxRate + 1, 0x7FFFFFFF}) {
        EXPECT_FALSE(device_.open(rate)) << rate;
        EXPECT_FALSE(device_.isOpen()) << "an open device is closed first";
    }
    for (const int rate : {WaveOut::kMinRate, WaveOut::kMaxRate}) {
        EXPECT_TRUE(device_.open(rate));
        const Uint64 start = SDL_GetTicks64();
        device_.close();
        EXPECT_LT(SDL_GetTicks64() - start, 1000u) << "the program would stand still";
    }
}

TEST_F(SdlSoundTest, WithoutADeviceTheClockPlays) {
    SDL_setenv("SDL_AUDIODRIVER", "no such driver", 1);
    ASSERT_TRUE(device_.open(1000));
    EXPECT_NE(device_.whySilent(), "");
    device_.write(buffer_);
    EXPECT_FALSE(isDoneAfter(19'999));
    EXPECT_TRUE(isDoneAfter(1));
}

TEST_F(SdlSoundTest, WhatADeviceLeavesWhenItGoesTheClockPlays) {
    SDL_setenv("SDL_AUDIODRIVER", "disk", 1);
    SDL_setenv("SDL_DISKAUDIOFILE", "/dev/full", 1); // nothing can be written there
    ASSERT_TRUE(device_.open(10'000));
    if (!device_.whySilent().empty()) GTEST_SKIP() << "SDL has no driver that writes files here";
    device_.write(buffer_);
    for (int i = 0; i < 500 && device_.whySilent().empty(); ++i) {
        SDL_Delay(10);
        EXPECT_FALSE(isDoneAfter(0));
    }
    EXPECT_EQ(device_.whySilent(), "the sound device has gone") << "the second one in a row, too";
    EXPECT_TRUE(isDoneAfter(2000));
}

TEST_F(SdlSoundTest, TheSpeakerOfMoviesPlaysItsQueueUnlessItIsPaused) {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    SdlMovieSpeaker speaker(sound_); // the clock stands still: the device plays
    ASSERT_TRUE(speaker.open({22050, 16, 2}));
    speaker.pause();
    speaker.write(data_);
    const std::size_t queued = speaker.bytesQueued();
    EXPECT_GT(queued, data_.size() / 2) << "SDL may have taken some before it paused";
    SDL_Delay(60);
    EXPECT_EQ(speaker.bytesQueued(), queued);
    speaker.restart();
    for (int i = 0; i < 100 && speaker.bytesQueued() > 0; ++i) SDL_Delay(10);
    EXPECT_EQ(speaker.bytesQueued(), 0u);
    speaker.pause();
    speaker.write(data_);
    speaker.drop();
    EXPECT_EQ(speaker.bytesQueued(), 0u);
    speaker.close();
}

} // namespace
} // namespace platform
