// What tests of playing sounds stand on: an application, the sound engine with small buffers, and
// sounds made of given samples.
#pragma once

#include "formats/soundbuilder.h"
#include "frameworkfixture.h"

#include "omistreamfile.h"
#include "omwaveengine.h"
#include "omwavesound.h"

#include <memory>
#include <string>

namespace testing_support {

using Samples = std::vector<std::uint8_t>;

/// A sound with the stream it owns.
struct TestSound {
    std::unique_ptr<OMIStream> stream;
    std::unique_ptr<OMWaveSound> sound;

    OMWaveSound* operator->() const { return sound.get(); }
    OMWaveSound& operator*() const { return *sound; }
};

class SoundTest : public OMAppTest {
  protected:
    static constexpr int kSize = 8; ///< bytes of an output buffer, unless a test says otherwise

    SoundTest() {
        engine.setBufferSize(kSize);
        engine.setNumBuffers(6);
        engine.setMinNumBuffersInQueue(4);
        engine.setLatencyDelta(2);
    }

    TestSound make(const Samples& data, int mode = kOMIStreamCache, std::uint32_t rate = 22050) {
        return open(RiffSound{.rate = rate, .data = data}.build(), mode);
    }
    TestSound open(const formats::Bytes& bytes, int mode = kOMIStreamCache) {
        const std::string name = "sound" + std::to_string(++made_) + ".bin";
        files.put(name, bytes);
        TestSound made;
        made.stream = std::make_unique<OMIStreamFile>(name, mode);
        made.sound = std::make_unique<OMWaveSound>(*made.stream, false);
        return made;
    }

    /// Plays what `bytes` are worth, one service after each; then what was heard so far.
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
