#include "omwavesound.h"

#include "omdebug.h"
#include "omwaveengine.h"

#include <algorithm>

OMWaveSound::OMWaveSound(OMIStream& stream, bool loadNow)
    : engine_(OMWaveEngine::require()), header_(OMReadWaveHeader(stream)),
      dataLength_(static_cast<std::int64_t>(header_.dataLength)), end_(dataLength_ - 1),
      samples_(stream, header_.dataOffset) {
    engine_.attach();
    if (loadNow) OMWaveSound::load();
}

OMWaveSound::~OMWaveSound() {
    engine_.withdraw(*this);
    engine_.detach();
}

// Settings

std::int64_t OMWaveSound::clampedStart(std::int64_t start) const {
    if (!OMDebug::check(start >= 0, "start >= 0",
                        "OMWaveSound::setPlayPosition - start position must be greater than or "
                        "equal to 0!"))
        return 0;
    if (!OMDebug::check(start < dataLength_, "start < dataLength",
                        "OMWaveSound::setPlayPosition - start position is past the end of data!"))
        return std::max<std::int64_t>(dataLength_ - 1, 0);
    return start;
}

std::int64_t OMWaveSound::clampedLength(std::int64_t length) const {
    if (length == kWholeLength) return dataLength_;
    if (!OMDebug::check(length >= 0, "length >= 0",
                        "OMWaveSound::setPlayPosition - length to play must be greater than or "
                        "equal to 0!"))
        return dataLength_;
    return std::min(length, dataLength_);
}

void OMWaveSound::setPlayPosition(std::int64_t start, std::int64_t length) {
    const std::int64_t newStart = clampedStart(start);
    const std::int64_t newEnd = std::min(newStart + clampedLength(length), dataLength_) - 1;
    if (newStart == start_ && newEnd == end_) return;
    const auto life = watch();
    const bool reload = loaded_;
    if (reload) unload();
    if (life.expired() || (reload && loaded_)) return; // a link destroyed it or had it play again
    start_ = newStart;
    end_ = newEnd;
    if (reload) load();
}

void OMWaveSound::setVolume(int volume) {
    const OMWaveMix::VolumeTable before = table_;
    OMSound::setVolume(volume);
    table_ = OMWaveMix::makeVolumeTable(volume_);
    engine_.changeVolume(*this, before);
}

// Loading

bool OMWaveSound::load() {
    if (!stop() || isEmptyWindow()) return false;
    samples_.load(start_, end_, engine_.blockSize(),
                  static_cast<std::size_t>(engine_.numBuffers()));
    loaded_ = true;
    return true;
}

void OMWaveSound::unload() {
    if (!stop()) return;
    samples_.unload();
    loaded_ = false;
}

// Playing

bool OMWaveSound::play(bool asynchronous) {
    const auto life = watch();
    if (!engine_.testDevice(engine_.keepsDeviceOpen())) return false;
    if (!load()) return !life.expired() && engine_.uses(*this);
    if (!engine_.openDeviceFor(*this)) return false;
    completedPlays_ = 0;
    startedNotified_ = false;
    position_ = start_;
    table_ = OMWaveMix::makeVolumeTable(volume_);
    if (paused_)
        engine_.hold(*this);
    else
        engine_.start(*this, false);
    if (!asynchronous && !life.expired()) waitUntilAllSoundsEnd();
    return true;
}

bool OMWaveSound::stop() {
    if (!engine_.withdraw(*this)) return true;
    const auto life = watch();
    notifyFinishedIfStarted();
    return !life.expired() && !engine_.uses(*this);
}

void OMWaveSound::pause() {
    if (paused_) return engine_.staysPaused(*this);
    paused_ = true;
    if (engine_.suspendSound(*this)) notifyPaused();
}

void OMWaveSound::resume() {
    if (!paused_ || engine_.resumesLater(*this)) return;
    paused_ = false;
    engine_.resumeSound(*this);
}

void OMWaveSound::waitUntilAllSoundsEnd() {
    if (!OMDebug::check(engine_.soundingCount() < 2, "playing + finishing < 2",
                        "OMWaveSound::play - only one sound can be played synchronously!"))
        return;
    // One that loops for ever is never waited for.
    if (playCount_ != kOMSoundPlayForever) engine_.serviceUntilSilent();
}

void OMWaveSound::notifyStartedOnce() {
    if (!startedNotified_) notifyStarted();
}

void OMWaveSound::notifyFinishedIfStarted() {
    if (startedNotified_) notifyFinished();
}

// The way through the play window

std::size_t OMWaveSound::chunkSizeAt(std::int64_t position) const {
    const auto most = static_cast<std::int64_t>(engine_.blockSize());
    return static_cast<std::size_t>(std::min(most, end_ + 1 - position));
}

OMWaveSamples::Chunk OMWaveSound::nextChunk() {
    return samples_.chunk(position_, chunkSizeAt(position_));
}

bool OMWaveSound::advance(int slot, OMWaveSamples::Chunk samples) {
    contributions_.push_back({slot, samples, position_, completedPlays_});
    startsNext_ = resumesNext_ = false;
    position_ += static_cast<std::int64_t>(samples.size());
    if (position_ <= end_) return false;
    ++completedPlays_;
    if (playsRemain()) position_ = start_;
    return true;
}

void OMWaveSound::bufferPlayed() {
    if (latencySkip_ > 0) {
        --latencySkip_;
    } else if (!contributions_.empty()) {
        contributions_.pop_front();
    }
}

void OMWaveSound::rewind() {
    if (contributions_.empty()) return;
    position_ = contributions_.front().position;
    completedPlays_ = contributions_.front().completedPlays;
}

bool OMWaveSound::readAhead() {
    if (!samples_.isStreamed()) return false;
    std::int64_t position = position_;
    std::int64_t plays = completedPlays_;
    for (int block = 0; block < engine_.numBuffers(); ++block) {
        const std::size_t count = chunkSizeAt(position);
        if (!samples_.has(position)) {
            samples_.chunk(position, count);
            return true;
        }
        position += static_cast<std::int64_t>(count);
        if (position <= end_) continue;
        if (playCount_ != kOMSoundPlayForever && ++plays >= playCount_) return false;
        position = start_;
    }
    return false;
}
