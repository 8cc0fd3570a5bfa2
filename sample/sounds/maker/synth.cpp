#include "synth.h"

#include "tone.h"

#include <algorithm>

namespace {

constexpr std::int64_t kBuffer = 1024; ///< of the game's mixer: loops are multiples of it
constexpr int kPercent = 100;

/// Where in the samples a tick lies. A loop is stretched by less than a buffer in all.
class Time {
  public:
    explicit Time(const Score& score)
        : samples_(std::int64_t{60} * kSampleRate), ticks_(score.tempo * kTicksPerBeat) {
        if (score.loop == 0) return;
        const std::int64_t exact = at(score.loop);
        samples_ = std::max<std::int64_t>((exact + kBuffer / 2) / kBuffer, 1) * kBuffer;
        ticks_ = score.loop;
    }
    [[nodiscard]] std::int64_t at(std::int64_t ticks) const { return ticks * samples_ / ticks_; }

  private:
    std::int64_t samples_; ///< for so many
    std::int64_t ticks_;
};

} // namespace

std::vector<std::int64_t> playScore(const Score& score) {
    const Time time(score);
    std::vector<Waves> waves(score.instruments.begin(), score.instruments.end());
    std::vector<std::int64_t> sums(static_cast<std::size_t>(time.at(score.loop)));
    std::uint32_t seed = 0;
    for (const Voice& voice : score.voices)
        for (const Note& note : voice.notes) {
            auto at = static_cast<std::size_t>(time.at(note.start));
            const std::int64_t length = time.at(note.start + note.length) - time.at(note.start);
            Tone tone(score.instruments[voice.instrument], waves[voice.instrument], note, length,
                      ++seed);
            const auto duration = static_cast<std::size_t>(tone.duration());
            if (score.loop == 0) sums.resize(std::max(sums.size(), at + duration));
            for (std::size_t i = 0; i < duration; ++i, ++at) {
                if (at == sums.size()) at = 0;
                sums[at] += tone.next() * note.volume * voice.volume / (kPercent * kPercent);
            }
        }
    return sums;
}
