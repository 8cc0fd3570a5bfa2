#include "platform/sdl/sdlmoviespeaker.h"

#include <utility>

namespace platform {

bool SdlMovieSpeaker::open(const SoundFormat& format) {
    close();
    device_ = sound_.open(format);
    return device_ != 0 || silent_.open(format);
}

void SdlMovieSpeaker::close() {
    silent_.close();
    if (device_ == 0) return;
    drop();
    sound_.close(std::exchange(device_, 0));
}

void SdlMovieSpeaker::write(std::span<const std::uint8_t> samples) {
    if (device_ == 0) return silent_.write(samples);
    // Without memory for it there is a gap, which is all that can be done.
    SDL_QueueAudio(device_, samples.data(), static_cast<Uint32>(samples.size()));
}

std::size_t SdlMovieSpeaker::bytesQueued() {
    return device_ == 0 ? silent_.bytesQueued() : SDL_GetQueuedAudioSize(device_);
}

void SdlMovieSpeaker::pause() {
    if (device_ == 0) return silent_.pause();
    SDL_PauseAudioDevice(device_, 1);
}

void SdlMovieSpeaker::restart() {
    if (device_ == 0) return silent_.restart();
    SDL_PauseAudioDevice(device_, 0);
}

void SdlMovieSpeaker::drop() {
    if (device_ == 0) return silent_.drop();
    SDL_ClearQueuedAudio(device_);
}

} // namespace platform
