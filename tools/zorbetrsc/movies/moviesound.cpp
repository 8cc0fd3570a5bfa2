#include "movies/moviesound.h"

#include "sounds/gamesound.h"
#include "sounds/soundbuilder.h"
#include "sounds/soundfile.h"

#include "platform/waveout.h"

namespace rsc {

namespace {

using platform::WaveOut;

constexpr int kMostChannels = 2;

/// Whether a movie can store the samples as they are.
bool isStorable(const formats::sound::Facts& facts) {
    return facts.kind == formats::sound::Facts::Kind::Riff && facts.hasFormat &&
           facts.coding == formats::sound::Facts::kPcm && (facts.bits == 8 || facts.bits == 16) &&
           facts.channels >= 1 && facts.channels <= kMostChannels;
}

MovieSound storedSound(const formats::sound::Facts& facts, ByteSpan file) {
    MovieSound sound{{facts.header.sampleRate, facts.bits, facts.channels}, {}};
    const ByteSpan samples = samplesOf(facts, file);
    const ByteSpan whole =
        samples.first(samples.size() - samples.size() % sound.format.bytesOfPoint());
    sound.samples.assign(whole.begin(), whole.end());
    return sound;
}

MovieSound convertedSound(ByteSpan file) {
    const SoundSamples given = readSoundFile(file);
    formats::ByteWriter samples;
    for (const float value : given.values) {
        if (given.isDeep)
            samples.u16(toSample16(value));
        else
            samples.u8(toSample8(value));
    }
    return {{given.rate, given.isDeep ? 16 : 8, given.channels}, samples.take()};
}

} // namespace

MovieSound readMovieSound(ByteSpan file) {
    const formats::sound::Facts facts = formats::sound::examine(file);
    refuseCutOff(facts);
    MovieSound sound = isStorable(facts) ? storedSound(facts, file) : convertedSound(file);
    if (sound.samples.empty()) throw Refusal("the sound has no samples");
    if (sound.format.channels > kMostChannels)
        throw Refusal("the sound has " + std::to_string(sound.format.channels) +
                      " channels, a movie has 1 or 2: mix it down");
    if (sound.format.rate < WaveOut::kMinRate || sound.format.rate > WaveOut::kMaxRate)
        throw Refusal("the sound has " + std::to_string(sound.format.rate) +
                      " samples a second, allowed is " + std::to_string(WaveOut::kMinRate) +
                      " to " + std::to_string(WaveOut::kMaxRate));
    return sound;
}

} // namespace rsc
