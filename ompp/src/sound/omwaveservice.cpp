// How the engine fills the ring and takes it back: mixing sounds into queued and new buffers, and
// the periodic service.
//
// Links are called between steps only, when every list is in order; after each of them the state is
// read anew, since they may start, stop and destroy any sound.
#include "omwaveengine.h"

#include "omplatform.h"
#include "omwavesound.h"

#include <algorithm>

using platform::WaveOutHold;

namespace {

constexpr int kMillisecondsPerSecond = 1000;
constexpr std::uint32_t kWaitMs = 1; ///< between two services of a synchronous play

} // namespace

// Starting a sound

void OMWaveEngine::start(OMWaveSound& sound, bool resuming) {
    playing_.push_back(&sound);
    sound.startsNext_ = true;
    sound.resumesNext_ = resuming;
    device_.poll();
    const int target = ring_.latencyTarget(latencyDelta_);
    const int startsAt = target == OMWaveRing::kNone ? ring_.queued() : target;
    if (target != OMWaveRing::kNone)
        for (int distance = target; distance < ring_.queued(); ++distance)
            if (OMWaveContains(playing_, sound)) mixIntoQueue(sound, distance);

    const bool dry = ring_.hasRunDry();
    if (dry) device_.pause();
    fillFor(sound);
    sound.latencySkip_ = startsAt;
    if (!dry) return;
    restartDevice();
    if (!resuming) return;
    for (int distance = 0; distance < ring_.queued(); ++distance)
        OMWaveRemove(ring_[ring_.slot(distance)].resuming, sound);
    sound.resumesNext_ = false;
    sound.notifyResumed();
}

void OMWaveEngine::mixIntoQueue(OMWaveSound& sound, int distance) {
    const int slot = ring_.slot(distance);
    const OMWaveSamples::Chunk samples = sound.nextChunk(); // may read: not while the device waits
    {
        const WaveOutHold hold(device_);
        OMWaveMix::add(ring_[slot].samples, samples, sound.volumeTable());
    }
    contribute(sound, slot, samples);
}

/// The only playing sound fills the ring at once: as far as its end, and a streamed one as far as
/// its blocks in memory reach.
void OMWaveEngine::fillFor(OMWaveSound& sound) {
    if (playing_.size() != 1 || playing_.front() != &sound) return;
    const int plays = sound.completedPlays_;
    for (int buffers = 0; buffers < numBuffers_ && !ring_.isFull(); ++buffers) {
        if (sound.completedPlays_ != plays) return;
        if (sound.samples_.isStreamed() && !sound.samples_.has(sound.position_)) return;
        mixNewBuffer();
    }
}

/// Enters what was just mixed, always from the buffer's first byte on, into the lists.
void OMWaveEngine::contribute(OMWaveSound& sound, int slot, OMWaveSamples::Chunk samples) {
    OMWaveOutputBuffer& buffer = ring_[slot];
    if (sound.startsNext_) buffer.starting.push_back(&sound);
    if (sound.resumesNext_) buffer.resuming.push_back(&sound);
    if (!sound.advance(slot, samples)) return;
    buffer.ending.push_back(&sound);
    if (sound.playsRemain()) return;
    OMWaveRemove(playing_, sound);
    finishing_.push_back(&sound);
}

// New buffers

/// Needs a playing sound and a ring that is not full.
void OMWaveEngine::mixNewBuffer() {
    noteLatency();
    const int slot = ring_.claim();
    OMWaveOutputBuffer& buffer = ring_[slot];
    const std::size_t length =
        playing_.size() == 1 ? mixOne(*playing_.front(), slot) : mixAll(slot);
    std::ranges::fill(buffer.samples.subspan(length), OMWaveMix::kSilence);
    device_.write(buffer.header);
    sent_ = true;
    sentMs_ = OMMilliseconds();
}

/// Bytes that were mixed.
std::size_t OMWaveEngine::mixOne(OMWaveSound& sound, int slot) {
    const OMWaveSamples::Chunk samples = sound.nextChunk();
    OMWaveMix::copy(ring_[slot].samples, samples, sound.volumeTable());
    contribute(sound, slot, samples);
    return samples.size();
}

std::size_t OMWaveEngine::mixAll(int slot) {
    std::ranges::fill(sums_, std::int16_t{0});
    std::size_t longest = 0;
    mixed_ = playing_; // those that end leave the list
    for (OMWaveSound* sound : mixed_) {
        const OMWaveSamples::Chunk samples = sound->nextChunk();
        // A silent sound adds nothing, but goes on all the same.
        if (sound->volume_ > 0) OMWaveMix::accumulate(sums_, samples, sound->volumeTable());
        longest = std::max(longest, samples.size());
        contribute(*sound, slot, samples);
    }
    OMWaveMix::clip(ring_[slot].samples, std::span(sums_).first(longest));
    return longest;
}

/// Called before a new buffer is queued: it comes late when all before it have been played.
void OMWaveEngine::noteLatency() {
    if (quietBuffers_ > 0) {
        --quietBuffers_;
    } else if (sent_ && ring_.hasRunDry()) {
        const int sinceMs = static_cast<int>(OMMilliseconds() - sentMs_);
        const int bufferMs = static_cast<int>(std::int64_t{bufferSize_} * kMillisecondsPerSecond /
                                              std::max(device_.rate(), 1));
        latencies_.push_back(sinceMs - bufferMs);
        quietBuffers_ = minInQueue_ - 1;
    }
}

void OMWaveEngine::subtractQueued(const OMWaveSound& sound) {
    const WaveOutHold hold(device_);
    for (const OMWaveSound::Contribution& part : sound.contributions_) {
        const OMWaveOutputBuffer& buffer = ring_[part.slot];
        if (!buffer.header.done)
            OMWaveMix::subtract(buffer.samples, part.samples, sound.volumeTable());
    }
}

// Service

void OMWaveEngine::service() {
    reap();
    noteSilence();
    notifyFinished(); // also those that no buffer brings to their end
    settle();
    if (!fill() && !playing_.empty()) readAhead();
    notifyLatency();
}

void OMWaveEngine::serviceUntilSilent() {
    // A device that is paused for the background would never end.
    while (soundingCount() > 0 && !suspended_) {
        service();
        if (soundingCount() > 0) OMPlatform().clock().sleep(kWaitMs);
    }
}

void OMWaveEngine::reap() {
    device_.poll();
    while (!ring_.isEmpty()) {
        announceHead();
        if (ring_.isEmpty() || !ring_.head().header.done) return;
        retireHead();
        notifyFinished();
    }
}

/// The notices of the buffer that plays now. Sounds that enter its lists meanwhile come next time.
void OMWaveEngine::announceHead() {
    for (std::size_t due = ring_.head().starting.size(); due > 0 && !ring_.isEmpty(); --due)
        if (OMWaveSound* sound = OMWaveTakeFirst(ring_.head().starting)) sound->notifyStartedOnce();
    if (ring_.isEmpty()) return;
    for (std::size_t due = ring_.head().resuming.size(); due > 0 && !ring_.isEmpty(); --due)
        if (OMWaveSound* sound = OMWaveTakeFirst(ring_.head().resuming)) sound->notifyResumed();
}

/// The head was played: it leaves the ring, the sounds move on, and those that ended in it are
/// finished.
void OMWaveEngine::retireHead() {
    OMWaveOutputBuffer& buffer = ring_[ring_.retire()];
    for (OMWaveSound* sound : playing_) sound->bufferPlayed();
    for (OMWaveSound* sound : finishing_)
        if (!sound->contributions_.empty()) sound->bufferPlayed();
    buffer.starting.clear();
    buffer.resuming.clear();
    while (OMWaveSound* sound = OMWaveTakeFirst(buffer.ending)) {
        if (OMWaveContains(playing_, *sound) || ring_.endsSomewhere(*sound)) continue;
        OMWaveRemove(finishing_, *sound);
        sound->contributions_.clear();
        finished_.push_back(sound);
    }
}

void OMWaveEngine::notifyFinished() {
    while (OMWaveSound* sound = OMWaveTakeFirst(finished_)) sound->notifyFinishedIfStarted();
}

/// Silence: the queue is emptied, and the device closed unless it is still needed.
void OMWaveEngine::settle() {
    if (soundingCount() > 0 || !device_.isOpen()) return;
    if (!ring_.isEmpty()) resetRing();
    forgetQueue();
    if (paused_.empty() && !keepOpen_) device_.close();
}

/// Whether anything was mixed.
bool OMWaveEngine::fill() {
    bool mixed = false;
    for (int i = 0; i < numBuffers_ && !playing_.empty() && !ring_.isFull(); ++i) {
        mixNewBuffer();
        mixed = true;
        if (ring_.queuedNotDone() >= minInQueue_) break;
    }
    return mixed;
}

/// One block for the first streamed sound that can take one, beginning behind the one served last.
void OMWaveEngine::readAhead() {
    const auto last = std::ranges::find(playing_, lastReader_);
    const auto count = playing_.size();
    const auto first =
        last == playing_.end() ? 0 : static_cast<std::size_t>(last - playing_.begin()) + 1;
    for (std::size_t i = 0; i < count; ++i) {
        OMWaveSound* sound = playing_[(first + i) % count];
        if (!sound->readAhead()) continue;
        lastReader_ = sound;
        return;
    }
}
