// The wave-out device of a machine without a person: it plays by the virtual clock and has what it
// played recorded.
#pragma once

#include "platform/headless/waverecorder.h"
#include "platform/host/sound/clockedwaveout.h"

namespace platform {

class HeadlessWaveOut final : public ClockedWaveOut {
  public:
    /// Both must outlive the device.
    HeadlessWaveOut(const Clock& clock, WaveFolder& recordings)
        : ClockedWaveOut(clock, &recorder_), recorder_(recordings) {}

    bool open(int rate) override {
        close();
        return available_ && ClockedWaveOut::open(rate);
    }
    /// Without one no opening succeeds; there is one at first.
    void setAvailable(bool available) { available_ = available; }

  private:
    WaveRecorder recorder_;
    bool available_ = true;
};

} // namespace platform
