#include "soundtimes.h"

#include "cputime.h"
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

void append(std::vector<std::byte>& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::byte>(value >> (8 * i)));
}

void append(std::vector<std::byte>& out, std::string_view text) {
    for (const char c : text) out.push_back(static_cast<std::byte>(c));
}

/// A RIFF WAVE file of samples without a pattern.
std::vector<std::byte> makeSound(std::uint32_t seed) {
    constexpr auto kLength = static_cast<std::uint32_t>(kMixLength);
    std::vector<std::byte> out;
    append(out, "RIFF");
    append(out, 36 + kLength, 4);
    append(out, "WAVEfmt ");
    append(out, 16, 4);
    append(out, 1, 2); // PCM
    append(out, 1, 2); // one channel
    append(out, kMixRate, 4);
    append(out, kMixRate, 4);
    append(out, 1, 2);
    append(out, 8, 2);
    append(out, "data");
    append(out, kLength, 4);
    for (std::uint32_t i = 0, noise = seed; i < kLength; ++i) {
        noise = noise * 1664525 + 1013904223;
        append(out, noise >> 24, 1);
    }
    return out;
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
        machine.put(name, makeSound(static_cast<std::uint32_t>(i)));
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
