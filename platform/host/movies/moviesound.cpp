#include "platform/host/movies/moviesound.h"

#include <algorithm>
#include <cmath>
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
    const double begin = keep(samples, due, due);
    if (dry_) samples = samples.subspan(std::min(lateBytes(begin, now), samples.size()));
    frame_ = frame;
    queue(samples);
}

/// Takes samples to the kept ones, of which those before the time `from` are forgotten. When they
/// are to be heard: behind those before them, but not before their frame.
double MovieSound::keep(std::span<const std::uint8_t> samples, double due, double from) {
    if (due > end_) {
        kept_.clear(); // all of it was before the frame
        forgotten_ = 0;
        end_ = due;
    }
    const double begin = end_;
    kept_.insert(kept_.end(), samples.begin(), samples.end());
    end_ += lengthOf(samples.size());
    forgetBefore(from);
    if (kept_.size() > kMostQueued) {
        kept_.clear();
        forgotten_ = 0;
    }
    return begin;
}

void MovieSound::forgetBefore(double time) {
    const double begin = end_ - lengthOf(kept_.size());
    const double blocks = std::round((time - begin) * format_.rate);
    if (blocks <= 0) return;
    const auto blockSize = static_cast<double>(format_.blockSize());
    const double bytes = std::min(blocks * blockSize, static_cast<double>(kept_.size()));
    forgotten_ = std::max(forgotten_, static_cast<std::size_t>(bytes));
    if (forgotten_ < kept_.size() / 2) return; // it is not moved for each frame
    kept_.erase(kept_.begin(), kept_.begin() + static_cast<std::ptrdiff_t>(forgotten_));
    forgotten_ = 0;
}

double MovieSound::lengthOf(std::size_t bytes) const {
    return static_cast<double>(bytes) / format_.bytesPerSecond();
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
    highestMemory_ = std::max(highestMemory_, queued + samples.size() + kept_.size());
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
}

void MovieSound::rewind() {
    kept_.clear();
    forgotten_ = 0;
    end_ = 0;
    frame_ = -1;
}

void MovieSound::pass(std::span<const std::uint8_t> samples, int frame, double due, double target) {
    if (samples.empty() || !speaker_) return;
    keep(samples, due, target);
    frame_ = frame;
}

void MovieSound::goOn(double time) {
    if (!speaker_) return;
    forgetBefore(time);
    const auto rest = std::span<const std::uint8_t>(kept_).subspan(forgotten_);
    if (rest.empty()) frame_ = -1; // the speaker has not run dry, there was nothing for it
    queue(rest);
}

void MovieSound::poll() {
    const bool more = frame_ >= 0 && frame_ < lastFrame_;
    if (!opened_ || !speaker_ || !runs_ || dry_ || !more || speaker_->bytesQueued() > 0) return;
    dry_ = true;
    ++skips_;
}

} // namespace platform
