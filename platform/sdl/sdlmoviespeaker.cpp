#include "platform/sdl/sdlmoviespeaker.h"

namespace platform {

namespace {

constexpr int kMostAtOnceMs = 25;
constexpr int kFewestAtOnce = 32;

/// Samples that the device takes at a time, a power of two.
Uint16 samplesAtOnce(int rate) {
    int samples = kFewestAtOnce;
    while (2 * samples * 1000 / rate <= kMostAtOnceMs) samples *= 2;
    return static_cast<Uint16>(samples);
}

} // namespace

bool SdlMovieSpeaker::open(const SoundFormat& format) {
    close();
    // The subsystem may fail where there is no sound at all; the movie goes on without.
    if (SDL_WasInit(SDL_INIT_AUDIO) == 0 && SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
    SDL_AudioSpec wanted{};
    wanted.freq = format.rate;
    wanted.format = format.bits == 16 ? AUDIO_S16LSB : AUDIO_U8;
    wanted.channels = static_cast<Uint8>(format.channels);
    wanted.samples = samplesAtOnce(format.rate);
    device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0) return false;
    restart();
    return true;
}

void SdlMovieSpeaker::close() {
    if (device_ == 0) return;
    drop();
    SDL_CloseAudioDevice(device_);
    device_ = 0;
}

void SdlMovieSpeaker::write(std::span<const std::uint8_t> samples) {
    if (device_ == 0) return;
    // Without memory for it there is a gap, which is all that can be done.
    SDL_QueueAudio(device_, samples.data(), static_cast<Uint32>(samples.size()));
}

std::size_t SdlMovieSpeaker::bytesQueued() {
    return device_ == 0 ? 0 : SDL_GetQueuedAudioSize(device_);
}

void SdlMovieSpeaker::pause() {
    if (device_ != 0) SDL_PauseAudioDevice(device_, 1);
}

void SdlMovieSpeaker::restart() {
    if (device_ != 0) SDL_PauseAudioDevice(device_, 0);
}

void SdlMovieSpeaker::drop() {
    if (device_ != 0) SDL_ClearQueuedAudio(device_);
}

} // namespace platform
