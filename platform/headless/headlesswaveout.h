// A wave-out device that nobody hears: it plays its queue by the virtual clock, byte by byte at the
// rate it was opened with, and hands what was played to a recorder.
//
// The clock only moves between the program's calls, so every call first plays what the time since
// the last one is worth.
#pragma once

#include "platform/headless/virtualclock.h"
#include "platform/headless/waverecorder.h"
#include "platform/waveout.h"

#include <cstddef>
#include <cstdint>
#include <deque>

namespace platform {

class HeadlessWaveOut final : public WaveOut {
  public:
    /// Both must outlive the device.
    HeadlessWaveOut(const VirtualClock& clock, WaveFolder& recordings)
        : clock_(clock), recorder_(recordings) {}

    bool open(int rate) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return rate_ != 0; }
    [[nodiscard]] int rate() const override { return rate_; }
    void write(WaveBuffer& buffer) override;
    void poll() override;
    void pause() override;
    void restart() override;
    void reset() override;

    /// Without one no opening succeeds; there is one at first.
    void setAvailable(bool available) { available_ = available; }

  protected:
    void beginChange() override { poll(); }
    void endChange() override {}

  private:
    struct Queued {
        WaveBuffer* buffer;
        std::size_t played; ///< bytes
    };

    void playFront(std::size_t bytes);

    const VirtualClock& clock_;
    WaveRecorder recorder_;
    bool available_ = true;
    int rate_ = 0; ///< 0: closed
    bool paused_ = false;
    std::uint64_t polledMs_ = 0;
    std::uint64_t due_ = 0; ///< thousandths of bytes that time has passed but no whole byte yet
    std::deque<Queued> queue_;
};

} // namespace platform
