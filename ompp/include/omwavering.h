// The ring of small output buffers that the sound engine keeps queued on the wave-out device, and
// for each of them which sounds begin, end and go on in it.
#pragma once

#include "platform/waveout.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

class OMWaveSound;

using OMWaveSoundList = std::vector<OMWaveSound*>; ///< not owned

/// Removes `sound` wherever it stands; whether it was listed.
bool OMWaveRemove(OMWaveSoundList& list, const OMWaveSound& sound);
[[nodiscard]] bool OMWaveContains(const OMWaveSoundList& list, const OMWaveSound& sound);
/// Takes the first one off the list; null when it is empty.
OMWaveSound* OMWaveTakeFirst(OMWaveSoundList& list);

struct OMWaveOutputBuffer {
    OMWaveSoundList starting; ///< start notices due when it plays
    OMWaveSoundList ending;
    OMWaveSoundList resuming;
    std::span<std::uint8_t> samples;
    platform::WaveBuffer header;
};

class OMWaveRing {
  public:
    static constexpr int kNone = -1;

    void allocate(int buffers, int bufferSize);
    /// Only when the device no longer has any of them.
    void release();

    [[nodiscard]] bool isEmpty() const { return head_ == kNone; }
    [[nodiscard]] bool isFull() const { return !isEmpty() && next(tail_) == head_; }
    [[nodiscard]] int queued() const; ///< number of buffers from head to tail
    [[nodiscard]] int queuedNotDone() const;
    /// All queued buffers are done, or there is none.
    [[nodiscard]] bool hasRunDry() const;

    /// Slot of the queued buffer at `distance` from the head.
    [[nodiscard]] int slot(int distance) const { return (head_ + distance) % count(); }
    [[nodiscard]] OMWaveOutputBuffer& operator[](int slot) {
        return buffers_[static_cast<std::size_t>(slot)];
    }
    [[nodiscard]] OMWaveOutputBuffer& head() { return (*this)[head_]; }

    /// Distance from the head to the buffer `latency` buffers after the one now playing; none when
    /// that one is not queued.
    [[nodiscard]] int latencyTarget(int latency) const;

    /// Appends a buffer, which must not be full; its slot.
    int claim();
    /// Takes the head out; its slot. Its lists stay for the caller.
    int retire();
    /// Empties the ring and the device's queue. Lists of sounds are emptied too.
    void reset(platform::WaveOut& device);

    /// Removes the sound from every list of every buffer.
    void forget(const OMWaveSound& sound);
    /// Whether the sound is in any buffer's end list.
    [[nodiscard]] bool endsSomewhere(const OMWaveSound& sound) const;

  private:
    [[nodiscard]] int count() const { return static_cast<int>(buffers_.size()); }
    [[nodiscard]] int next(int slot) const { return (slot + 1) % count(); }
    [[nodiscard]] const OMWaveOutputBuffer& at(int distance) const {
        return buffers_[static_cast<std::size_t>(slot(distance))];
    }

    std::vector<OMWaveOutputBuffer> buffers_; ///< stay in place: the device knows them
    std::vector<std::uint8_t> data_;          ///< of all buffers
    int head_ = kNone;                        ///< oldest queued buffer
    int tail_ = kNone;                        ///< newest queued buffer
};
