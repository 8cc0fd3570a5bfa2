// A wave-out device that nobody hears: it plays its queue by a clock, byte by byte at the rate it
// was opened with, so that everything ends when it would have been heard to its end. What was
// played can be handed on, to be recorded.
#pragma once

#include "platform/host/sound/soundpace.h"
#include "platform/host/sound/soundsink.h"
#include "platform/host/sound/wavequeue.h"

namespace platform {

class ClockedWaveOut : public WaveOut {
  public:
    /// Both must outlive the device's last call; the sink may be null.
    explicit ClockedWaveOut(const Clock& clock, SoundSink* sink = nullptr)
        : pace_(clock), sink_(sink) {}

    bool open(int rate) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return rate_ != 0; }
    [[nodiscard]] int rate() const override { return rate_; }
    void write(WaveBuffer& buffer) override;
    void poll() override;
    void pause() override;
    void restart() override;
    void reset() override;

  protected:
    void beginChange() override { poll(); }
    void endChange() override {}

  private:
    SoundPace pace_;
    SoundSink* sink_;
    int rate_ = 0; ///< 0: closed
    WaveQueue queue_;
};

} // namespace platform
