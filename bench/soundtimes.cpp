#include "soundtimes.h"

#include "cputime.h"
#include "formats/sound/wave.h"
#include "mediamachine.h"

#include "omistreamfile.h"
#include "omplatform.h"
#include "omwaveengine.h"
#include "omwavesound.h"

#include "platform/waveout.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t kOutputSamples = 200LL * kMixRate;

/// A RIFF WAVE file of samples without a pattern.
formats::Bytes makeSound(std::uint32_t seed) {
    formats::Bytes samples(kMixLength);
    for (std::uint8_t& sample : samples) {
        seed = seed * 1664525 + 1013904223;
        sample = static_cast<std::uint8_t>(seed >> 24);
    }
    return formats::sound::writeRiff(samples, kMixRate);
}

struct PlayedSound {
    OMIStreamFile stream;
    OMWaveSound sound;

    explicit PlayedSound(const std::string& name)
        : stream(name, kOMIStreamCache), sound(stream, true) {
        sound.setVolume(kMixVolume);
        sound.setPlayCount(kOMSoundPlayForever);
    }
};

} // namespace

double measureOurMixing(int sounds) {
    MediaMachine machine;
    OMWaveEngine engine;
    engine.setBufferSize(kMixBuffer);
    std::vector<std::unique_ptr<PlayedSound>> played;
    for (int i = 0; i < sounds; ++i) {
        const std::string name = "sound" + std::to_string(i) + ".wav";
        const formats::Bytes file = makeSound(static_cast<std::uint32_t>(i));
        machine.put(name, std::as_bytes(std::span(file)));
        played.push_back(std::make_unique<PlayedSound>(name));
        if (!played.back()->sound.play(true)) throw std::runtime_error("a sound does not play");
    }
    // Buffer by buffer, as the device would take them; the clock is the device's.
    constexpr std::int64_t kBuffers = kOutputSamples / kMixBuffer;
    std::int64_t elapsedMs = 0;
    const double taken = cpuNanoseconds([&] {
        for (std::int64_t buffer = 1; buffer <= kBuffers; ++buffer) {
            const std::int64_t dueMs = buffer * kMixBuffer * 1000 / kMixRate;
            OMPlatform().clock().sleep(static_cast<std::uint32_t>(dueMs - elapsedMs));
            elapsedMs = dueMs;
            engine.service();
        }
    });
    return taken / static_cast<double>(kBuffers * kMixBuffer);
}
