// The sound engine: mixes all sounds that play into a ring of small buffers that it keeps queued on
// the wave-out device.
//
// A new sound does not wait for the end of the queue: it is mixed into buffers that are queued
// already, a few after the one now playing. A sound that is paused or stopped is taken out of them
// again. All mixing is done on 8-bit samples, so what is heard follows from the samples alone.
//
// The game makes one engine before its application object and keeps it until all sounds are gone.
// What it needs for playing exists only while there are sounds. Links of sounds are called from
// here; whatever they do to sounds, the one that they belong to included, is safe.
#pragma once

#include "omlink.h"
#include "omtask.h"
#include "omwavemix.h"
#include "omwavering.h"

#include "platform/waveout.h"

#include <cstdint>
#include <memory>
#include <vector>

class OMWaveSound;

class OMWaveEngine {
  public:
    static constexpr int kMinBuffers = 2;
    static constexpr int kMaxBuffers = 1024;
    static constexpr int kMaxBufferSize = 1 << 20;
    /// Of the task that services the engine: before the scripts.
    static constexpr std::uint32_t kTaskPriority = 100;

    OMWaveEngine();
    ~OMWaveEngine();
    OMWaveEngine& operator=(OMWaveEngine&&) = delete;

    /// The one engine, or null.
    [[nodiscard]] static OMWaveEngine* current() { return instance_; }
    /// The same; fatal when there is none.
    [[nodiscard]] static OMWaveEngine& require();

    [[nodiscard]] int bufferSize() const { return bufferSize_; } ///< bytes of an output buffer
    [[nodiscard]] int numBuffers() const { return numBuffers_; }
    [[nodiscard]] std::size_t blockSize() const { return static_cast<std::size_t>(bufferSize_); }

    // Settings at the wrong time or out of range fail a check and change nothing.

    /// 1 to kMaxBufferSize; only while there is no sound.
    void setBufferSize(int bytes);
    /// kMinBuffers to kMaxBuffers; only while there is no sound. Lowers the two below as needed.
    void setNumBuffers(int count);
    /// 1 to numBuffers - 1: how many buffers after the one now playing a new sound is mixed in;
    /// only while nothing plays.
    void setLatencyDelta(int buffers);
    /// 2 to numBuffers: as many filled buffers are kept queued.
    void setMinNumBuffersInQueue(int count);

    /// Whether both standard rates can be opened. The device stays open only if `keepOpen` is set,
    /// from then on also when all sounds have ended. A device that is open already is available; it
    /// is not disturbed while sounds need it.
    bool testDevice(bool keepOpen);
    /// Whether what is played is not heard, for want of a sound device. The log tells it once.
    [[nodiscard]] bool isSilent() const { return !device_.whySilent().empty(); }
    [[nodiscard]] bool keepsDeviceOpen() const { return keepOpen_; }

    /// The periodic work; a task calls it in every pass of the main loop while there are sounds.
    void service();

    /// The application goes to the background and comes back: the device pauses meanwhile.
    void suspend();
    void resume();

    /// For what needs the wave device for itself: pauses every sound that plays and closes the
    /// device; until it is reclaimed no sound can be played. May be nested.
    void yieldDevice();
    /// Opens the device again and keeps it open; the sounds that were paused go on.
    void reclaimDevice();
    [[nodiscard]] bool isYielded() const { return yields_ > 0; }

    /// Is told milliseconds by which the sounds have come late: the queue ran dry, or the engine
    /// was suspended. The number returned is for removeLatencyListener.
    int addLatencyListener(OMLinkTo<void(int)> listener);
    void removeLatencyListener(int number);

    /// Sounds playing or finishing.
    [[nodiscard]] std::size_t soundingCount() const { return playing_.size() + finishing_.size(); }

  private:
    friend class OMWaveSound;

    // For sounds.
    /// Whether the sound plays, finishes or is held.
    [[nodiscard]] bool uses(const OMWaveSound& sound) const {
        return OMWaveContains(playing_, sound) || OMWaveContains(finishing_, sound) ||
               OMWaveContains(paused_, sound);
    }
    void attach();
    void detach();
    /// Takes a sound out of everything, its samples out of the queue. Whether it was anywhere.
    bool withdraw(OMWaveSound& sound);
    /// Opens the device at the sound's rate unless it is open and any sound is in use.
    bool openDeviceFor(const OMWaveSound& sound);
    void hold(OMWaveSound& sound) { paused_.push_back(&sound); }
    void start(OMWaveSound& sound, bool resuming);
    /// Moves a sound from the playing or finishing to the paused ones; false when it is neither.
    bool suspendSound(OMWaveSound& sound);
    /// Starts a sound from the paused ones.
    void resumeSound(OMWaveSound& sound);
    /// While the device is yielded: puts the resume of a paused sound off until it is reclaimed.
    bool resumesLater(OMWaveSound& sound);
    /// Its resume is put off no more: it stays paused.
    void staysPaused(const OMWaveSound& sound) { OMWaveRemove(resumedLater_, sound); }
    /// Replaces the sound's volume in what is queued.
    void changeVolume(const OMWaveSound& sound, const OMWaveMix::VolumeTable& before);
    void serviceUntilSilent();

    // Mixing.
    void mixIntoQueue(OMWaveSound& sound, int distance);
    void fillFor(OMWaveSound& sound);
    void mixNewBuffer();
    std::size_t mixOne(OMWaveSound& sound, int slot);
    std::size_t mixAll(int slot);
    void contribute(OMWaveSound& sound, int slot, std::span<const std::uint8_t> samples);
    void subtractQueued(const OMWaveSound& sound);

    // Service.
    void reap();
    void announceHead();
    void retireHead();
    void notifyFinished();
    void settle();
    bool fill();
    void readAhead();
    void noteLatency();
    void noteSilence();
    void notifyLatency();

    void resetRing();
    void forgetQueue();
    void restartDevice();
    void allocate();
    void release();

    struct Listener {
        int number;
        OMLinkTo<void(int)> link;
    };

    static OMWaveEngine* instance_;

    platform::WaveOut& device_;
    int bufferSize_ = 1024;
    int numBuffers_ = 16;
    int latencyDelta_ = 4;
    int minInQueue_ = 6;

    int sounds_ = 0; ///< that exist
    bool keepOpen_ = false;
    bool suspended_ = false;
    std::uint32_t suspendedMs_ = 0; ///< since when
    bool silenceNoted_ = false;
    int yields_ = 0;
    int yieldedRate_ = 0; ///< what the device was open at; 0: it was closed

    OMWaveRing ring_;
    std::vector<std::int16_t> sums_;
    OMWaveSoundList mixed_; ///< scratch: the sounds of one new buffer
    OMWaveSoundList playing_;
    OMWaveSoundList finishing_;
    OMWaveSoundList paused_;
    OMWaveSoundList finished_;                ///< whose notice is due
    OMWaveSoundList resumedLater_;            ///< paused, to go on when the device is reclaimed
    const OMWaveSound* lastReader_ = nullptr; ///< that read ahead; only compared
    std::unique_ptr<OMTask> task_;

    std::vector<Listener> listeners_;
    int lastListener_ = 0;
    std::vector<int> latencies_; ///< to be told
    bool sent_ = false;          ///< a buffer, since the ring was reset
    std::uint32_t sentMs_ = 0;   ///< when the last one was
    int quietBuffers_ = 0;       ///< that follow without a notice
};
