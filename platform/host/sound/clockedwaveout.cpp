#include "platform/host/sound/clockedwaveout.h"

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
    queue_.add(buffer);
}

void ClockedWaveOut::poll() {
    if (!isOpen()) return;
    queue_.play(pace_.advance(queue_.waiting()), [this](std::span<const std::uint8_t> samples) {
        if (sink_) sink_->play(samples, {rate_});
    });
    queue_.settle();
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
    queue_.drop();
    pace_.start(rate_);
}

} // namespace platform
