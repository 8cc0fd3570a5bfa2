#include "platform/sdl/sdlwaveout.h"

#include <algorithm>
#include <span>

namespace platform {

namespace {

constexpr Uint16 kMostAtOnce = 512; // about 23 ms at 22,050 Hz
constexpr Uint16 kFewestAtOnce = 32;
constexpr int kShortestMs = 20;

/// A power of two. Closing the device waits for as many to be played, so slow rates take fewer.
Uint16 samplesAtOnce(int rate) {
    Uint16 samples = kMostAtOnce;
    while (samples > kFewestAtOnce && samples * 1000 / rate > 2 * kShortestMs) samples /= 2;
    return samples;
}

constexpr int kSilence = 128;

} // namespace

bool SdlWaveOut::open(int rate) {
    close();
    if (rate < kMinRate || rate > kMaxRate) return false;
    // The subsystem may fail where there is no sound at all; the program goes on without.
    if (SDL_WasInit(SDL_INIT_AUDIO) == 0 && SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
    SDL_AudioSpec wanted{};
    wanted.freq = rate;
    wanted.format = AUDIO_U8;
    wanted.channels = 1;
    wanted.samples = samplesAtOnce(rate);
    wanted.callback = deliver;
    wanted.userdata = this;
    device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0) return false;
    rate_ = rate;
    SDL_PauseAudioDevice(device_, 0);
    return true;
}

void SdlWaveOut::close() {
    if (!isOpen()) return;
    reset();
    SDL_CloseAudioDevice(device_);
    device_ = 0;
    rate_ = 0;
}

void SdlWaveOut::write(WaveBuffer& buffer) {
    if (!isOpen()) return;
    buffer.prepared = true;
    buffer.done = false;
    SDL_LockAudioDevice(device_);
    queue_.push_back({&buffer, 0});
    SDL_UnlockAudioDevice(device_);
}

void SdlWaveOut::poll() {
    beginChange();
    endChange();
}

void SdlWaveOut::beginChange() {
    if (!isOpen()) return;
    SDL_LockAudioDevice(device_);
    while (!queue_.empty() && queue_.front().played == queue_.front().buffer->data.size()) {
        queue_.front().buffer->done = true;
        queue_.pop_front();
    }
}

void SdlWaveOut::endChange() {
    if (isOpen()) SDL_UnlockAudioDevice(device_);
}

void SdlWaveOut::pause() {
    if (isOpen()) SDL_PauseAudioDevice(device_, 1);
}

void SdlWaveOut::restart() {
    if (isOpen()) SDL_PauseAudioDevice(device_, 0);
}

void SdlWaveOut::reset() {
    if (!isOpen()) return;
    SDL_LockAudioDevice(device_);
    for (const Queued& queued : queue_) queued.buffer->done = true;
    queue_.clear();
    SDL_UnlockAudioDevice(device_);
    restart();
}

/// On SDL's thread, with the device lock held.
void SDLCALL SdlWaveOut::deliver(void* device, Uint8* output, int bytes) {
    std::span<Uint8> rest(output, static_cast<std::size_t>(bytes));
    for (Queued& queued : static_cast<SdlWaveOut*>(device)->queue_) {
        const auto waiting = queued.buffer->data.subspan(queued.played);
        const std::size_t count = std::min(waiting.size(), rest.size());
        std::copy_n(waiting.begin(), count, rest.begin());
        queued.played += count;
        rest = rest.subspan(count);
    }
    std::ranges::fill(rest, Uint8{kSilence});
}

} // namespace platform
