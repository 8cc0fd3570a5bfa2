// The speaker of movies on SDL's driver without a loudspeaker, which plays in real time.
#include "platform/headless/virtualclock.h"
#include "platform/sdl/sdlmoviespeaker.h"

#include <gtest/gtest.h>

#include <vector>

namespace platform {
namespace {

/// Whether it plays all that is queued within a second.
bool runsDry(SdlMovieSpeaker& speaker) {
    for (int i = 0; i < 100 && speaker.bytesQueued() > 0; ++i) SDL_Delay(10);
    return speaker.bytesQueued() == 0;
}

TEST(SdlMovieSpeaker, PlaysItsQueueUnlessItIsPaused) {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    const VirtualClock clock; // which stands still: the device plays
    SdlSound sound(clock);
    SdlMovieSpeaker speaker(sound);
    const SoundFormat format{22050, 16, 2};
    ASSERT_TRUE(speaker.open(format));
    const std::vector<std::uint8_t> samples(static_cast<std::size_t>(format.bytesPerSecond()) / 10);
    speaker.pause();
    speaker.write(samples);
    const std::size_t queued = speaker.bytesQueued();
    EXPECT_GT(queued, samples.size() / 2) << "SDL may have taken some before it paused";
    SDL_Delay(60);
    EXPECT_EQ(speaker.bytesQueued(), queued);
    speaker.restart();
    EXPECT_TRUE(runsDry(speaker));
    speaker.pause();
    speaker.write(samples);
    speaker.drop();
    EXPECT_EQ(speaker.bytesQueued(), 0u);
    speaker.close();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

} // namespace
} // namespace platform
