#include "platform/sdl/sdlfollower.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace platform {

namespace {

// What waits for the device.
constexpr int kLeadMs = 40;      ///< silence ahead of samples that come when nothing waits
constexpr int kMostWaitMs = 250; ///< more is not heard, so that sound and picture stay together

std::uint32_t bytesOf(const SoundFormat& format, int ms) {
    const int samples = static_cast<int>(std::int64_t{format.rate} * ms / kMsPerSecond);
    return static_cast<std::uint32_t>(samples * format.blockSize());
}

} // namespace

void SdlFollower::play(std::span<const std::uint8_t> samples, const SoundFormat& format) {
    if (samples.empty()) return;
    if (device_ == 0 || format != format_) {
        finish();
        format_ = format;
        device_ = sound_.open(format);
    }
    if (device_ == 0) return;
    if (SdlSound::isLost(device_)) return sound_.closeLost(std::exchange(device_, 0));
    const std::uint32_t waiting = SDL_GetQueuedAudioSize(device_);
    if (waiting > bytesOf(format, kMostWaitMs)) return;
    if (waiting == 0) {
        const std::uint8_t silence = format.bits == 8 ? 128 : 0;
        const std::vector<std::uint8_t> lead(bytesOf(format, kLeadMs), silence);
        SDL_QueueAudio(device_, lead.data(), static_cast<Uint32>(lead.size()));
    }
    SDL_QueueAudio(device_, samples.data(), static_cast<Uint32>(samples.size()));
}

void SdlFollower::finish() {
    if (device_ == 0) return;
    SDL_ClearQueuedAudio(device_);
    sound_.close(std::exchange(device_, 0));
}

} // namespace platform
