#include "platform/sdl/sdlsound.h"

#include <algorithm>
#include <iterator>

namespace platform {

namespace {

constexpr std::uint32_t kRetryMs = 30'000;
constexpr int kMostAtOnceMs = 25;
constexpr int kFewestAtOnce = 32;

/// Samples that the device takes at a time, a power of two. Closing it waits for as many.
Uint16 samplesAtOnce(int rate) {
    int samples = kFewestAtOnce;
    while (2 * samples * 1000 / rate <= kMostAtOnceMs) samples *= 2;
    return static_cast<Uint16>(samples);
}

} // namespace

SDL_AudioDeviceID SdlSound::open(const SoundFormat& format, SDL_AudioCallback callback,
                                 void* owner) {
    if (hangs_ || wasJust(failedMs_)) return 0;
    if (SDL_WasInit(SDL_INIT_AUDIO) == 0 && SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return fail();
    SDL_AudioSpec wanted{};
    wanted.freq = format.rate;
    wanted.format = format.bits == 16 ? AUDIO_S16LSB : AUDIO_U8;
    wanted.channels = static_cast<Uint8>(format.channels);
    wanted.samples = samplesAtOnce(format.rate);
    wanted.callback = callback;
    wanted.userdata = owner;
    const SDL_AudioDeviceID device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device == 0) return fail();
    devices_.push_back(device);
    SDL_PauseAudioDevice(device, 0);
    return device;
}

SDL_AudioDeviceID SdlSound::fail() {
    // Some hosts open one device at a time: that another one is refused says nothing of the next.
    if (devices_.empty()) failedMs_ = clock_.milliseconds();
    failure_ = SDL_GetError();
    return 0;
}

void SdlSound::close(SDL_AudioDeviceID device) {
    SDL_CloseAudioDevice(device);
    std::erase(devices_, device);
}

void SdlSound::closeLost(SDL_AudioDeviceID device) {
    close(device);
    failure_ = "the sound device has gone";
    if (wasJust(lostMs_)) failedMs_ = clock_.milliseconds();
    lostMs_ = clock_.milliseconds();
}

void SdlSound::abandon(SDL_AudioDeviceID device) {
    SDL_PauseAudioDevice(device, 1);
    std::erase(devices_, device);
    hangs_ = true;
    failure_ = "the sound device stands still";
}

void SdlSound::hold(bool on) {
    if (on)
        std::ranges::copy_if(devices_, std::back_inserter(held_), [](SDL_AudioDeviceID device) {
            return SDL_GetAudioDeviceStatus(device) == SDL_AUDIO_PLAYING;
        });
    for (const SDL_AudioDeviceID device : held_) SDL_PauseAudioDevice(device, on ? 1 : 0);
    if (!on) held_.clear();
}

bool SdlSound::wasJust(const std::optional<std::uint32_t>& ms) const {
    return ms && clock_.milliseconds() - *ms < kRetryMs;
}

} // namespace platform
