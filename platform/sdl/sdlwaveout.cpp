#include "platform/sdl/sdlwaveout.h"

#include <algorithm>
#include <span>
#include <utility>

namespace platform {

namespace {

constexpr int kSilence = 128;
constexpr std::uint32_t kMostUnaskedMs = 2000;
/// What counts of the time between two looks: the program may have been stopped, and the device
/// too.
constexpr std::uint32_t kMostBetweenMs = 50;

} // namespace

bool SdlWaveOut::open(int rate) {
    close();
    if (rate < kMinRate || rate > kMaxRate) return false;
    rate_ = rate;
    paused_ = asked_ = false;
    unaskedMs_ = 0;
    lookedMs_ = sound_.clock().milliseconds();
    device_ = sound_.open({rate}, deliver, this);
    if (device_ == 0) silent_.open(rate);
    return true;
}

void SdlWaveOut::close() {
    if (!isOpen()) return;
    reset();
    if (device_ != 0) sound_.close(std::exchange(device_, 0));
    silent_.close();
    rate_ = 0;
}

std::string SdlWaveOut::whySilent() const {
    return silent_.isOpen() ? sound_.failure() : std::string();
}

void SdlWaveOut::write(WaveBuffer& buffer) {
    if (device_ == 0) return silent_.write(buffer);
    SDL_LockAudioDevice(device_);
    queue_.add(buffer);
    SDL_UnlockAudioDevice(device_);
}

void SdlWaveOut::poll() {
    if (device_ != 0) watchDevice();
    beginChange();
    endChange();
}

void SdlWaveOut::watchDevice() {
    if (standsStill()) {
        sound_.abandon(std::exchange(device_, 0));
        replaceDevice();
    } else if (SdlSound::isLost(device_)) {
        sound_.closeLost(std::exchange(device_, 0));
        replaceDevice();
    }
}

/// Whether the device has long asked for nothing, which it does also when nothing is there.
bool SdlWaveOut::standsStill() {
    const std::uint32_t now = sound_.clock().milliseconds();
    const std::uint32_t betweenMs = std::min(now - std::exchange(lookedMs_, now), kMostBetweenMs);
    SDL_LockAudioDevice(device_);
    const bool fine = std::exchange(asked_, false) || paused_;
    SDL_UnlockAudioDevice(device_);
    unaskedMs_ = fine ? 0 : unaskedMs_ + betweenMs;
    return unaskedMs_ > kMostUnaskedMs;
}

/// Another device, or the clock, goes on with the queue.
void SdlWaveOut::replaceDevice() {
    queue_.settle();
    unaskedMs_ = 0;
    device_ = sound_.open({rate_}, deliver, this);
    if (device_ == 0) {
        silent_.open(rate_);
        queue_.empty([this](WaveBuffer& buffer) { silent_.write(buffer); });
    }
    if (paused_) pause();
}

void SdlWaveOut::beginChange() {
    if (device_ == 0) return silent_.poll();
    SDL_LockAudioDevice(device_);
    queue_.settle();
}

void SdlWaveOut::endChange() {
    if (device_ != 0) SDL_UnlockAudioDevice(device_);
}

void SdlWaveOut::pause() {
    paused_ = true;
    if (device_ != 0) SDL_PauseAudioDevice(device_, 1);
    silent_.pause();
}

void SdlWaveOut::restart() {
    paused_ = false;
    if (device_ != 0) SDL_PauseAudioDevice(device_, 0);
    silent_.restart();
}

void SdlWaveOut::reset() {
    if (device_ != 0) {
        SDL_LockAudioDevice(device_);
        queue_.drop();
        SDL_UnlockAudioDevice(device_);
    }
    silent_.reset();
    restart();
}

/// On SDL's thread, with the device lock held.
void SDLCALL SdlWaveOut::deliver(void* device, Uint8* output, int bytes) {
    auto* const self = static_cast<SdlWaveOut*>(device);
    self->asked_ = true;
    std::span<Uint8> rest(output, static_cast<std::size_t>(bytes));
    self->queue_.play(rest.size(), [&rest](std::span<const std::uint8_t> samples) {
        std::ranges::copy(samples, rest.begin());
        rest = rest.subspan(samples.size());
    });
    std::ranges::fill(rest, Uint8{kSilence});
}

} // namespace platform
