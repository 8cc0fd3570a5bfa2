// The machine's wave-out device: plays 8-bit mono samples out of a queue of buffers that stay in
// the program's hands. What has been played is polled; nothing is ever called back.
//
// A queued buffer may still be changed, which is how the program keeps its latency short: see
// WaveOutHold.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace platform {

/// One buffer of the queue. The bytes belong to the program and stay where they are until the
/// buffer is done.
struct WaveBuffer {
    std::span<const std::uint8_t> data; ///< samples, 128 is silence
    bool prepared = false;              ///< written to the device and not taken back yet
    bool done = false;                  ///< all its bytes have been played or dropped; see poll()
};

class WaveOut {
  public:
    // Samples a second. No device plays slower or faster, and a sound file may claim anything.
    static constexpr int kMinRate = 1000;
    static constexpr int kMaxRate = 192000;

    virtual ~WaveOut() = default;

    /// Opens the default device for 8-bit mono PCM, in the state of playing. False when there is no
    /// device or it cannot play `rate` samples a second, which are kMinRate to kMaxRate; an open
    /// device is closed first. A platform may give a silent device where there is no other.
    virtual bool open(int rate) = 0;
    /// Why nothing is heard of an open device, which plays its queue all the same; empty when it is
    /// heard. A device may fall silent at any time.
    [[nodiscard]] virtual std::string whySilent() const { return {}; }
    /// Drops what is queued. Without effect on a closed device, as all that follows.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// Samples a second of the open device, 0 when it is closed.
    [[nodiscard]] virtual int rate() const = 0;

    /// Queues a buffer and marks it as prepared and not done. It must not move until it is done.
    virtual void write(WaveBuffer& buffer) = 0;
    /// Brings the `done` flags of all queued buffers up to date; they change nowhere else but in
    /// `reset`, `close` and WaveOutHold.
    virtual void poll() = 0;

    /// Stops playing where it is; the queue stays.
    virtual void pause() = 0;
    virtual void restart() = 0;
    /// Drops what is queued and not yet played; every queued buffer is done. A paused device plays
    /// again.
    virtual void reset() = 0;

  protected:
    friend class WaveOutHold;

    /// As `poll`; and nothing is played from here to the matching endChange. May be nested.
    virtual void beginChange() = 0;
    virtual void endChange() = 0;
};

/// While it lives, the bytes of queued buffers may be changed: what was played before stays as it
/// was, what is played later is the new. Make it short-lived, the device waits.
class WaveOutHold {
  public:
    explicit WaveOutHold(WaveOut& device) : device_(device) { device_.beginChange(); }
    ~WaveOutHold() { device_.endChange(); }
    WaveOutHold& operator=(WaveOutHold&&) = delete;

  private:
    WaveOut& device_;
};

} // namespace platform
