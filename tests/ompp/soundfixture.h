// What tests of playing sounds stand on: an application, the sound engine with small buffers, and
// sounds made of given samples.
#pragma once

#include "formats/soundbuilder.h"
#include "frameworkfixture.h"

#include "omistreamfile.h"
#include "omwaveengine.h"
#include "omwavesound.h"

namespace testing_support {

using Samples = std::vector<std::uint8_t>;

/// A sound with the stream it owns.
struct TestSound {
    std::unique_ptr<OMIStream> stream;
    std::unique_ptr<OMWaveSound> sound;

    OMWaveSound* operator->() const { return sound.get(); }
};

class SoundTest : public OMAppTest {
  protected:
    static constexpr int kSize = 8; ///< bytes of an output buffer

    SoundTest() {
        engine.setBufferSize(kSize);
        engine.setNumBuffers(6);
        engine.setMinNumBuffersInQueue(4);
        engine.setLatencyDelta(2);
    }

    TestSound make(const Samples& data, int mode = kOMIStreamCache, std::uint32_t rate = 22050) {
        const std::string name = "sound" + std::to_string(++made_) + ".bin";
        files.put(name, RiffSound{.rate = rate, .data = data}.build());
        TestSound made{std::make_unique<OMIStreamFile>(name, mode), nullptr};
        made.sound = std::make_unique<OMWaveSound>(*made.stream, false);
        return made;
    }
    /// Plays `bytes`, with a service after each step.
    void run(int bytes, int step = kSize) {
        for (; bytes > 0; bytes -= step) {
            device.play(static_cast<std::size_t>(std::min(step, bytes)));
            engine.service();
        }
    }
    Samples heard() { return std::exchange(device.heard, {}); }

    OMWaveEngine engine;
    MemoryWaveOut& device = machine.waveOut();

  private:
    int made_ = 0;
};

} // namespace testing_support
