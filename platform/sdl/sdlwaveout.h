// The machine's real sound device, through SDL, which converts rates and formats as it needs.
//
// SDL asks for samples on a thread of its own. That thread reads the queue and the bytes of the
// queued buffers, and counts what it took; everything else happens on the main thread, with SDL's
// device lock held where both meet. The flags of the buffers belong to the main thread alone.
#pragma once

#include "platform/waveout.h"

#include <SDL.h>
#include <cstddef>
#include <deque>

namespace platform {

class SdlWaveOut final : public WaveOut {
  public:
    SdlWaveOut() = default;
    ~SdlWaveOut() override { close(); }
    SdlWaveOut(const SdlWaveOut&) = delete;
    SdlWaveOut& operator=(const SdlWaveOut&) = delete;

    bool open(int rate) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return device_ != 0; }
    [[nodiscard]] int rate() const override { return rate_; }
    void write(WaveBuffer& buffer) override;
    void poll() override;
    void pause() override;
    void restart() override;
    void reset() override;

  protected:
    void beginChange() override;
    void endChange() override;

  private:
    struct Queued {
        WaveBuffer* buffer;
        std::size_t played; ///< bytes
    };

    static void SDLCALL deliver(void* device, Uint8* output, int bytes);

    SDL_AudioDeviceID device_ = 0; ///< 0: closed
    int rate_ = 0;
    std::deque<Queued> queue_; ///< guarded by the device lock
};

} // namespace platform
