#include "platform/host/sound/clockedwaveout.h"

#include <algorithm>

namespace platform {

bool ClockedWaveOut::open(int rate) {
    close();
    if (rate < kMinRate || rate > kMaxRate) return false;
    rate_ = rate;
    pace_.start(rate);
    return true;
}

void ClockedWaveOut::close() {
    if (!isOpen()) return;
    reset();
    rate_ = 0;
    if (sink_) sink_->finish();
}

void ClockedWaveOut::write(WaveBuffer& buffer) {
    if (!isOpen()) return;
    poll();
    buffer.prepared = true;
    buffer.done = buffer.data.empty();
    if (buffer.done) return;
    queue_.push_back({&buffer, 0});
    waiting_ += buffer.data.size();
}

void ClockedWaveOut::poll() {
    if (!isOpen()) return;
    std::size_t due = pace_.advance(waiting_);
    waiting_ -= due;
    while (due > 0) due -= playFront(due);
}

/// Bytes that it played.
std::size_t ClockedWaveOut::playFront(std::size_t most) {
    Queued& front = queue_.front();
    const auto samples = front.buffer->data.subspan(front.played);
    const std::size_t bytes = std::min(most, samples.size());
    if (sink_) sink_->play(samples.first(bytes), {rate_});
    front.played += bytes;
    if (bytes == samples.size()) {
        front.buffer->done = true;
        queue_.pop_front();
    }
    return bytes;
}

void ClockedWaveOut::pause() {
    poll();
    pace_.setPaused(true);
}

void ClockedWaveOut::restart() {
    poll();
    pace_.setPaused(false);
}

void ClockedWaveOut::reset() {
    if (!isOpen()) return;
    poll();
    for (const Queued& queued : queue_) queued.buffer->done = true;
    queue_.clear();
    waiting_ = 0;
    pace_.start(rate_);
}

} // namespace platform
