#include "platform/headless/headlessmoviespeaker.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::uint64_t kSample = 1000; // a millisecond is worth `rate` thousandths of samples

} // namespace

std::unique_ptr<MovieSpeaker> HeadlessMovieSpeakers::make() {
    return std::make_unique<HeadlessMovieSpeaker>(*this);
}

void HeadlessMovieSpeakers::closeAll() {
    for (HeadlessMovieSpeaker* speaker : speakers_) speaker->close();
}

HeadlessMovieSpeaker::HeadlessMovieSpeaker(HeadlessMovieSpeakers& owner)
    : owner_(owner), recorder_(owner.recordings_) {
    owner_.speakers_.push_back(this);
}

HeadlessMovieSpeaker::~HeadlessMovieSpeaker() {
    close();
    std::erase(owner_.speakers_, this);
}

bool HeadlessMovieSpeaker::open(const SoundFormat& format) {
    close();
    if (!owner_.available_) return false;
    format_ = format;
    paused_ = false;
    polledMs_ = owner_.clock_.totalMs();
    return true;
}

void HeadlessMovieSpeaker::close() {
    drop();
    recorder_.finish();
    format_ = {};
}

void HeadlessMovieSpeaker::write(std::span<const std::uint8_t> samples) {
    if (format_.rate == 0) return;
    poll();
    if (played_ > queue_.size() / 2) {
        queue_.erase(queue_.begin(), queue_.begin() + static_cast<std::ptrdiff_t>(played_));
        played_ = 0;
    }
    queue_.insert(queue_.end(), samples.begin(), samples.end());
}

std::size_t HeadlessMovieSpeaker::bytesQueued() {
    poll();
    return queue_.size() - played_;
}

/// Plays what the time since the last call is worth.
void HeadlessMovieSpeaker::poll() {
    const std::uint64_t elapsedMs = owner_.clock_.totalMs() - polledMs_;
    polledMs_ += elapsedMs;
    if (format_.rate == 0 || paused_) return;
    due_ += elapsedMs * static_cast<std::uint64_t>(format_.rate);
    const auto blockSize = static_cast<std::size_t>(format_.blockSize());
    const std::size_t waiting = (queue_.size() - played_) / blockSize;
    const std::size_t blocks = std::min<std::size_t>(due_ / kSample, waiting);
    recorder_.play(std::span(queue_).subspan(played_, blocks * blockSize), format_);
    played_ += blocks * blockSize;
    due_ = blocks < waiting ? due_ - blocks * kSample : 0; // time without data is lost
}

void HeadlessMovieSpeaker::pause() {
    poll();
    paused_ = true;
}

void HeadlessMovieSpeaker::restart() {
    poll();
    paused_ = false;
}

void HeadlessMovieSpeaker::drop() {
    poll();
    queue_.clear();
    played_ = 0;
    due_ = 0;
}

} // namespace platform
