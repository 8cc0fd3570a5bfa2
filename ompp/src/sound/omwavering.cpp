#include "omwavering.h"

#include <algorithm>
#include <utility>

bool OMWaveRemove(OMWaveSoundList& list, const OMWaveSound& sound) {
    return std::erase(list, &sound) > 0;
}

bool OMWaveContains(const OMWaveSoundList& list, const OMWaveSound& sound) {
    return std::ranges::find(list, &sound) != list.end();
}

OMWaveSound* OMWaveTakeFirst(OMWaveSoundList& list) {
    if (list.empty()) return nullptr;
    OMWaveSound* first = list.front();
    list.erase(list.begin());
    return first;
}

void OMWaveRing::allocate(int buffers, int bufferSize) {
    const auto size = static_cast<std::size_t>(bufferSize);
    buffers_ = std::vector<OMWaveOutputBuffer>(static_cast<std::size_t>(buffers));
    data_.resize(buffers_.size() * size);
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        buffers_[i].samples = std::span(data_).subspan(i * size, size);
        buffers_[i].header.data = buffers_[i].samples;
    }
}

void OMWaveRing::release() {
    buffers_.clear();
    data_ = std::vector<std::uint8_t>(); // frees, which an empty list would not
    head_ = tail_ = kNone;
}

int OMWaveRing::queued() const { return isEmpty() ? 0 : (tail_ - head_ + count()) % count() + 1; }

int OMWaveRing::queuedNotDone() const {
    int result = 0;
    for (int distance = 0; distance < queued(); ++distance)
        if (!at(distance).header.done) ++result;
    return result;
}

bool OMWaveRing::hasRunDry() const { return isEmpty() || at(queued() - 1).header.done; }

int OMWaveRing::latencyTarget(int latency) const {
    int playing = 0;
    while (playing < queued() && at(playing).header.done) ++playing;
    return playing + latency < queued() ? playing + latency : kNone;
}

int OMWaveRing::claim() {
    if (isEmpty()) return head_ = tail_ = 0;
    return tail_ = next(tail_);
}

int OMWaveRing::retire() {
    const int slot = head_;
    platform::WaveBuffer& header = (*this)[slot].header;
    header.prepared = header.done = false;
    if (head_ == tail_)
        head_ = tail_ = kNone;
    else
        head_ = next(head_);
    return slot;
}

void OMWaveRing::reset(platform::WaveOut& device) {
    device.reset();
    for (OMWaveOutputBuffer& buffer : buffers_) {
        buffer.starting.clear();
        buffer.ending.clear();
        buffer.resuming.clear();
        buffer.header.prepared = buffer.header.done = false;
    }
    head_ = tail_ = kNone;
}

void OMWaveRing::forget(const OMWaveSound& sound) {
    for (OMWaveOutputBuffer& buffer : buffers_) {
        OMWaveRemove(buffer.starting, sound);
        OMWaveRemove(buffer.ending, sound);
        OMWaveRemove(buffer.resuming, sound);
    }
}

bool OMWaveRing::endsSomewhere(const OMWaveSound& sound) const {
    return std::ranges::any_of(buffers_, [&](const OMWaveOutputBuffer& buffer) {
        return OMWaveContains(buffer.ending, sound);
    });
}
