#include "platform/host/moviesound.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t kMostQueued = 64 << 20;
constexpr double kTolerated = 0.05; // seconds; nobody notices sound that is so much late

} // namespace

void MovieSound::run(bool on) {
    if (on == runs_) return;
    runs_ = on;
    if (!speaker_) return;
    if (opened_) return on ? speaker_->restart() : speaker_->pause();
    opened_ = true;
    if (speaker_->open(format_))
        speaker_->write(waiting_);
    else
        speaker_.reset();
    waiting_ = {};
}

void MovieSound::add(std::span<const std::uint8_t> samples, int frame, double due, double now) {
    if (samples.empty() || !speaker_) return;
    poll();
    const auto blockSize = static_cast<std::size_t>(format_.blockSize());
    const double length = static_cast<double>(samples.size() / blockSize) / format_.rate;
    const double begin = std::max(heard_, due);
    if (dry_) samples = samples.subspan(std::min(lateBytes(begin, now), samples.size()));
    heard_ = begin + length;
    frame_ = frame;
    queue(samples);
}

std::size_t MovieSound::lateBytes(double due, double now) const {
    const double late = now - due;
    if (late <= kTolerated) return 0;
    const double blocks = std::min(late * format_.rate, static_cast<double>(kMostQueued));
    return static_cast<std::size_t>(blocks) * static_cast<std::size_t>(format_.blockSize());
}

void MovieSound::queue(std::span<const std::uint8_t> samples) {
    if (samples.empty()) return;
    const std::size_t queued = opened_ ? speaker_->bytesQueued() : waiting_.size();
    if (queued + samples.size() > kMostQueued) return;
    highestQueued_ = std::max(highestQueued_, queued + samples.size());
    dry_ = false;
    if (opened_)
        speaker_->write(samples);
    else
        waiting_.insert(waiting_.end(), samples.begin(), samples.end());
}

void MovieSound::drop() {
    waiting_.clear();
    if (opened_ && speaker_) speaker_->drop();
    dry_ = false;
    frame_ = -1;
    heard_ = 0;
}

void MovieSound::poll() {
    const bool more = frame_ >= 0 && frame_ < lastFrame_;
    if (!opened_ || !speaker_ || !runs_ || dry_ || !more || speaker_->bytesQueued() > 0) return;
    dry_ = true;
    ++skips_;
}

} // namespace platform
