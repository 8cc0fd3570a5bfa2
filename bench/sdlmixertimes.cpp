#include "soundtimes.h"

#include "cputime.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <atomic>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t kOutputSamples = 200LL * kMixRate;

std::atomic<std::int64_t> mixedSamples{0};

void countMixed(void*, Uint8*, int length) { mixedSamples += length; }

[[noreturn]] void fail(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

std::vector<Uint8> makeSamples(std::uint32_t seed) {
    std::vector<Uint8> samples(kMixLength);
    std::uint32_t noise = seed;
    for (Uint8& sample : samples) {
        noise = noise * 1664525 + 1013904223;
        sample = static_cast<Uint8>(noise >> 24);
    }
    return samples;
}

/// The mixer over the driver that writes to a file and never waits.
class Mixer {
  public:
    explicit Mixer(int channels) {
        SDL_setenv("SDL_AUDIODRIVER", "disk", 1);
        SDL_setenv("SDL_DISKAUDIOFILE", "/dev/null", 1);
        SDL_setenv("SDL_DISKAUDIODELAY", "0", 1);
        SDL_LogSetOutputFunction(nullptr, nullptr); // the driver warns each time
        if (SDL_Init(SDL_INIT_AUDIO) != 0) fail("SDL_Init");
        if (Mix_OpenAudioDevice(kMixRate, AUDIO_U8, 1, kMixBuffer, nullptr, 0) != 0)
            fail("Mix_OpenAudioDevice");
        Mix_AllocateChannels(channels);
        Mix_SetPostMix(countMixed, nullptr);
    }
    ~Mixer() {
        Mix_HaltChannel(-1);
        Mix_CloseAudio();
        SDL_Quit();
    }
    Mixer& operator=(Mixer&&) = delete;
};

} // namespace

double measureSdlMixer(int sounds) {
    const Mixer mixer(sounds);
    std::vector<std::vector<Uint8>> samples;
    std::vector<Mix_Chunk*> chunks;
    for (int i = 0; i < sounds; ++i) {
        samples.push_back(makeSamples(static_cast<std::uint32_t>(i)));
        chunks.push_back(Mix_QuickLoad_RAW(samples.back().data(), kMixLength));
        if (!chunks.back()) fail("Mix_QuickLoad_RAW");
        chunks.back()->volume = MIX_MAX_VOLUME * kMixVolume / 100;
        if (Mix_PlayChannel(i, chunks.back(), -1) != i) fail("Mix_PlayChannel");
    }
    std::int64_t mixed = 0;
    const double taken = cpuNanoseconds([&] {
        const std::int64_t before = mixedSamples;
        while ((mixed = mixedSamples - before) < kOutputSamples) SDL_Delay(1);
    });
    Mix_HaltChannel(-1);
    for (Mix_Chunk* chunk : chunks) Mix_FreeChunk(chunk);
    return taken / static_cast<double>(mixed);
}
