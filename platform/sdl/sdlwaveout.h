// The machine's real sound device, through SDL, which converts rates and formats as it needs. Where
// there is none, or it goes away, a clock plays in its place.
//
// SDL asks for samples on a thread of its own. That thread reads the queue and the bytes of the
// queued buffers, and counts what it took; everything else happens on the main thread, with SDL's
// device lock held where both meet. The flags of the buffers belong to the main thread alone.
#pragma once

#include "platform/host/sound/clockedwaveout.h"
#include "platform/host/sound/wavequeue.h"
#include "platform/sdl/sdlsound.h"

namespace platform {

class SdlWaveOut final : public WaveOut {
  public:
    /// What opens devices must outlive it.
    explicit SdlWaveOut(SdlSound& sound) : sound_(sound), silent_(sound.clock()) {}
    ~SdlWaveOut() override { close(); }
    SdlWaveOut& operator=(SdlWaveOut&&) = delete;

    bool open(int rate) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return rate_ != 0; }
    [[nodiscard]] int rate() const override { return rate_; }
    [[nodiscard]] std::string whySilent() const override;
    void write(WaveBuffer& buffer) override;
    void poll() override;
    void pause() override;
    void restart() override;
    void reset() override;

  protected:
    void beginChange() override;
    void endChange() override;

  private:
    static void SDLCALL deliver(void* device, Uint8* output, int bytes);

    void watchDevice();
    [[nodiscard]] bool standsStill();
    void replaceDevice();

    SdlSound& sound_;
    SDL_AudioDeviceID device_ = 0; ///< 0: closed, or silent
    int rate_ = 0;                 ///< 0: closed
    bool paused_ = false;
    WaveQueue queue_;             ///< of the device; guarded by its lock
    bool asked_ = false;          ///< since the last look; guarded by the lock
    std::uint32_t lookedMs_ = 0;  ///< when that was
    std::uint32_t unaskedMs_ = 0; ///< of playing
    ClockedWaveOut silent_;       ///< open in place of the device
};

} // namespace platform
