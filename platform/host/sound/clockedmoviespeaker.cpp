#include "platform/host/sound/clockedmoviespeaker.h"

namespace platform {

bool ClockedMovieSpeaker::open(const SoundFormat& format) {
    close();
    format_ = format;
    pace_.start(format.rate);
    return true;
}

void ClockedMovieSpeaker::close() {
    if (format_.rate == 0) return;
    drop();
    format_ = {};
    if (sink_) sink_->finish();
}

void ClockedMovieSpeaker::write(std::span<const std::uint8_t> samples) {
    if (format_.rate == 0) return;
    poll();
    if (played_ > queue_.size() / 2) {
        queue_.erase(queue_.begin(), queue_.begin() + static_cast<std::ptrdiff_t>(played_));
        played_ = 0;
    }
    queue_.insert(queue_.end(), samples.begin(), samples.end());
}

std::size_t ClockedMovieSpeaker::bytesQueued() {
    poll();
    return queue_.size() - played_;
}

/// Plays what the time since the last call is worth.
void ClockedMovieSpeaker::poll() {
    if (format_.rate == 0) return;
    const auto blockSize = static_cast<std::size_t>(format_.blockSize());
    const std::size_t bytes = pace_.advance((queue_.size() - played_) / blockSize) * blockSize;
    if (sink_) sink_->play(std::span(queue_).subspan(played_, bytes), format_);
    played_ += bytes;
}

void ClockedMovieSpeaker::pause() {
    poll();
    pace_.setPaused(true);
}

void ClockedMovieSpeaker::restart() {
    poll();
    pace_.setPaused(false);
}

void ClockedMovieSpeaker::drop() {
    poll();
    queue_.clear();
    played_ = 0;
    poll(); // what was due of it is lost
}

} // namespace platform
