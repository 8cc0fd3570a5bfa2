// The sound device on SDL's driver without a loudspeaker.
#include "platform/sdl/sdlwaveout.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <limits>

namespace platform {
namespace {

TEST(SdlWaveOut, RefusesRatesThatNoDevicePlays) {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    SdlWaveOut device;
    if (!device.open(22050)) GTEST_SKIP() << "SDL has no driver without a loudspeaker here";
    for (const int rate :
         {0, -1, WaveOut::kMinRate - 1, WaveOut::kMaxRate + 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(device.open(rate)) << rate;
        EXPECT_FALSE(device.isOpen()) << "an open device is closed first";
    }
    for (const int rate : {WaveOut::kMinRate, WaveOut::kMaxRate}) {
        EXPECT_TRUE(device.open(rate));
        const Uint64 start = SDL_GetTicks64();
        device.close();
        EXPECT_LT(SDL_GetTicks64() - start, 1000u) << "the program would stand still";
    }
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

} // namespace
} // namespace platform
