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
    for (const int rate : {0, -1, WaveOut::kMaxRate + 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(device.open(rate)) << rate;
        EXPECT_FALSE(device.isOpen()) << "an open device is closed first";
    }
    EXPECT_TRUE(device.open(WaveOut::kMaxRate));
    device.close();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

} // namespace
} // namespace platform
