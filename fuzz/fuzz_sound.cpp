// A damaged sound, played. The first bytes of an input say how, the rest is the sound resource. A
// sound that is read as a whole and one that is read piece by piece must be heard alike, every play
// comes to its end, and what is heard is no longer than what was to be played.
#include "fuzzmachine.h"

#include "omistreamfile.h"
#include "omwaveengine.h"
#include "omwavesound.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using Samples = std::vector<std::uint8_t>;

constexpr const char* kName = "sound.bin";
constexpr int kMostBufferSize = 256;
constexpr int kMostPlays = 3;
constexpr std::int64_t kMostHeard = 1 << 16; ///< bytes of one input

/// How the sound is played.
struct Manner {
    int bufferSize;
    int volume;
    int laterVolume; ///< from the second pass on
    int start;
    int length;
    int plays;
    int pausedPass; ///< the pass before which it is paused; the next one resumes it
    int chunk;      ///< buffer mode of the streamed one
};

Manner readManner(fuzzing::Choices& choices) {
    return {.bufferSize = 1 + choices.byte() % kMostBufferSize,
            .volume = choices.byte() % 128,
            .laterVolume = choices.byte() % 128,
            .start = choices.word(),
            .length = choices.word(),
            .plays = 1 + choices.byte() % kMostPlays,
            .pausedPass = choices.byte(),
            .chunk = choices.byte()};
}

/// The passes of the main loop that a play takes, with some to spare.
std::int64_t passesOf(const OMWaveSound& sound, const Manner& manner) {
    const std::int64_t window = sound.playEnd() + 1 - sound.playStart();
    return (window / manner.bufferSize + 1) * manner.plays + 64;
}

void pass(fuzzing::World& world, OMWaveEngine& engine, const Manner& manner) {
    world.machine.waveOut().play(static_cast<std::size_t>(manner.bufferSize));
    engine.service();
    engine.service(); // a streamed sound reads ahead in its spare ones
}

void checkSound(const OMWaveSound& sound, std::size_t fileSize) {
    expect(sound.dataLength() >= 0 && sound.dataLength() <= std::int64_t(fileSize),
           "samples lie within the file");
    expect(sound.playStart() >= 0 && sound.playEnd() < sound.dataLength(),
           "the play window lies within the samples");
    expect(sound.volume() >= 0 && sound.volume() <= OMSound::kFullVolume, "volumes are clamped");
}

/// What is heard of the sound when it is played alone.
Samples heard(fuzzing::World& world, const Manner& manner, int mode) {
    OMWaveEngine engine;
    engine.setBufferSize(manner.bufferSize);
    OMIStreamFile stream(kName, mode);
    OMWaveSound sound(stream, false);
    sound.setVolume(manner.volume);
    sound.setPlayCount(manner.plays);
    sound.setPlayPosition(manner.start, manner.length);
    checkSound(sound, stream.length());
    const bool empty = sound.playEnd() < sound.playStart();
    const bool playing = sound.play(true);
    const int rate = sound.sampleRate();
    const bool playable =
        !empty && rate >= platform::WaveOut::kMinRate && rate <= platform::WaveOut::kMaxRate;
    expect(playing == playable, "a sound plays when it can");
    const std::int64_t window = sound.playEnd() + 1 - sound.playStart();
    if (!playing || window * manner.plays > kMostHeard) return {};

    const std::int64_t passes = passesOf(sound, manner);
    for (std::int64_t i = 0; i < passes; ++i) {
        if (i == 1) sound.setVolume(manner.laterVolume);
        if (i == manner.pausedPass) sound.pause();
        pass(world, engine, manner);
        if (i == manner.pausedPass) sound.resume();
    }
    expect(engine.soundingCount() == 0, "a sound ends");
    expect(sound.completedPlays() == manner.plays, "all plays are completed");
    return std::exchange(world.machine.waveOut().heard, {});
}

/// Several of them at once, destroyed in the middle.
void playTogether(fuzzing::World& world, const Manner& manner) {
    OMWaveEngine engine;
    engine.setBufferSize(manner.bufferSize);
    OMIStreamFile whole(kName, kOMIStreamCache);
    OMIStreamFile streamed(kName, manner.chunk);
    OMWaveSound first(whole, true);
    OMWaveSound second(streamed, false);
    second.setPlayCount(kOMSoundPlayForever);
    second.setVolume(manner.volume);
    first.play(true);
    pass(world, engine, manner);
    second.play(true);
    for (int i = 0; i < 8; ++i) pass(world, engine, manner);
    second.setPlayPosition(manner.start, manner.length);
    second.play(true);
    second.setVolume(manner.laterVolume);
    for (int i = 0; i < 8; ++i) pass(world, engine, manner);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    fuzzing::Choices choices(data, size);
    const Manner manner = readManner(choices);
    world.files.put(kName, choices.rest());
    world.makeApp();
    try {
        const Samples whole = heard(world, manner, kOMIStreamCache);
        const Samples streamed = heard(world, manner, manner.chunk);
        expect(whole == streamed, "whole and streamed sounds are heard alike");
        playTogether(world, manner);
    } catch (const fuzzing::ProgramEnd&) {
        // a RIFF file without a format
    }
    return 0;
}
