// Sounds as the game takes them: 8-bit mono, in RIFF WAVE files or Macintosh sound resources
// (docs/formats.md), and what it makes of all others. They are read by the game's own reader, so
// that this is what the game will do.
#pragma once

#include "filesystem.h"
#include "formats/sound/wave.h"

#include <optional>
#include <string_view>

namespace rsc {

/// What is heard when the game plays a sound.
enum class Heard : std::uint8_t {
    Well,
    WrongSpeed, ///< beside a sound of one of the game's rates; alone it is heard well
    Noise,
    Nothing,
    EndOfGame ///< the game stops with a fatal error
};

struct SoundReport {
    formats::sound::Facts facts;
    Heard heard = Heard::Well;
    std::string text;  ///< rate, bits, channels and length
    std::string fault; ///< why it is not heard well; empty when it is

    /// Samples that the game plays as they are; they lie in the examined bytes.
    [[nodiscard]] bool isReady() const { return heard == Heard::Well; }
};

[[nodiscard]] SoundReport examineSound(ByteSpan resource);

/// Type of sound resources.
inline constexpr std::string_view kSoundType = "WAVE";

/// The rates of the game's sounds (formats::sound::kRates), for messages.
[[nodiscard]] std::string gameRates();

/// What the game does with such a sound, for a list; empty when it is heard well.
[[nodiscard]] std::string consequenceOf(Heard heard);

/// What is wrong with a sound that says it has more samples than there are; empty when it has them.
/// Programs that write into a pipe say "as many as follow", which is fine.
[[nodiscard]] std::string cutOffText(const formats::sound::Facts& facts);
/// Refuses such a sound.
void refuseCutOff(const formats::sound::Facts& facts);

/// The samples of the examined file, at most what is there.
[[nodiscard]] ByteSpan samplesOf(const formats::sound::Facts& facts, ByteSpan file);

/// The bytes of the RIFF WAVE file that a resource begins with, as its header says, at most what is
/// there; none when it is no such file.
[[nodiscard]] std::optional<std::size_t> riffLength(ByteSpan resource);

/// A Macintosh sound resource as a RIFF WAVE file; none when it is no such resource. A length that
/// is more than there is counts as what is there.
[[nodiscard]] std::optional<Bytes> macSoundToWav(ByteSpan resource);

} // namespace rsc
