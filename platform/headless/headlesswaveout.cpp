#include "platform/headless/headlesswaveout.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::uint64_t kByte = 1000; // a millisecond is worth `rate` thousandths of bytes

} // namespace

bool HeadlessWaveOut::open(int rate) {
    close();
    if (!available_ || rate < kMinRate || rate > kMaxRate) return false;
    rate_ = rate;
    paused_ = false;
    due_ = 0;
    polledMs_ = clock_.totalMs();
    return true;
}

void HeadlessWaveOut::close() {
    if (!isOpen()) return;
    reset();
    rate_ = 0;
    recorder_.finish();
}

void HeadlessWaveOut::write(WaveBuffer& buffer) {
    if (!isOpen()) return;
    poll();
    buffer.prepared = true;
    buffer.done = buffer.data.empty();
    if (!buffer.done) queue_.push_back({&buffer, 0});
}

void HeadlessWaveOut::poll() {
    const std::uint64_t elapsedMs = clock_.totalMs() - polledMs_;
    polledMs_ += elapsedMs;
    if (!isOpen() || paused_) return;
    due_ += elapsedMs * static_cast<std::uint64_t>(rate_);
    while (!queue_.empty() && due_ >= kByte) {
        const Queued& front = queue_.front();
        playFront(std::min<std::size_t>(due_ / kByte, front.buffer->data.size() - front.played));
    }
    if (queue_.empty()) due_ = 0; // time without data is lost
}

void HeadlessWaveOut::playFront(std::size_t bytes) {
    Queued& front = queue_.front();
    recorder_.play(front.buffer->data.subspan(front.played, bytes), {rate_});
    front.played += bytes;
    due_ -= bytes * kByte;
    if (front.played < front.buffer->data.size()) return;
    front.buffer->done = true;
    queue_.pop_front();
}

void HeadlessWaveOut::pause() {
    poll();
    paused_ = true;
}

void HeadlessWaveOut::restart() {
    poll();
    paused_ = false;
}

void HeadlessWaveOut::reset() {
    poll();
    for (const Queued& queued : queue_) queued.buffer->done = true;
    queue_.clear();
    due_ = 0;
    paused_ = false;
}

} // namespace platform
