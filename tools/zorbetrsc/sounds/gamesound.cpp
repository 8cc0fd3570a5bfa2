#include "sounds/gamesound.h"

#include "platform/waveout.h"
#include "refusal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <tuple>
#include <utility>

namespace rsc {

namespace {

using formats::sound::Facts;
using formats::sound::Fault;
using Kind = Facts::Kind;
using platform::WaveOut;

/// Claims from here on stand for a length that the writer did not know.
constexpr std::size_t kUnknownLength = 0x7FFF0000;

constexpr int kFloat = 3;
constexpr std::pair<int, const char*> kCodings[] = {
    {2, "Microsoft ADPCM"}, {kFloat, "float"}, {6, "A-law"}, {7, "mu-law"},
    {17, "IMA ADPCM"},      {49, "GSM 6.10"},  {85, "MP3"},
};

std::string codingName(int coding) {
    const auto* known = std::ranges::find(kCodings, coding, &std::pair<int, const char*>::first);
    return known == std::end(kCodings) ? "coding " + std::to_string(coding) : known->second;
}

std::string channelText(int channels) {
    if (channels == 1) return "mono";
    return channels == 2 ? "stereo" : std::to_string(channels) + " channels";
}

/// In seconds; empty when the samples do not tell it.
std::string lengthText(const Facts& facts) {
    const std::size_t bytes =
        static_cast<std::size_t>(facts.bits) / 8 * static_cast<std::size_t>(facts.channels);
    const bool isPlain = facts.coding == Facts::kPcm || facts.coding == kFloat;
    if (!isPlain || bytes == 0 || facts.header.sampleRate <= 0) return {};
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), ", %.2f s",
                  static_cast<double>(facts.header.dataLength / bytes) / facts.header.sampleRate);
    return text.data();
}

std::string describe(const Facts& facts) {
    if (facts.kind == Kind::Unknown) return "no sound";
    if (!facts.hasFormat) return "a WAVE file without a format";
    const bool isPcm = facts.coding == Facts::kPcm;
    return std::to_string(facts.header.sampleRate) + " Hz, " + std::to_string(facts.bits) +
           " bits, " + (isPcm ? "" : codingName(facts.coding) + ", ") +
           channelText(facts.channels) + lengthText(facts) +
           (facts.kind == Kind::Macintosh ? ", Macintosh" : "");
}

using Verdict = std::pair<Heard, std::string>;

Verdict judgeSamples(const Facts& facts) {
    const bool onlyRate =
        std::ranges::all_of(facts.faults, [](Fault fault) { return fault == Fault::SampleRate; });
    if (facts.coding != Facts::kPcm)
        return {Heard::Noise, "the sound is coded as " + codingName(facts.coding) +
                                  ", the game plays plain samples (PCM): it would be noise"};
    if (facts.channels != 1 || facts.bits != 8)
        return {Heard::Noise, "the sound is " + channelText(facts.channels) + " of " +
                                  std::to_string(facts.bits) +
                                  " bits, the game plays mono of 8 bits: it would be noise"};
    if (!onlyRate)
        return {Heard::Noise,
                "the header of the Macintosh sound is not one of those that the game knows: it "
                "would be noise"};
    return {Heard::Well, {}};
}

Verdict judgeRate(int rate) {
    if (rate < WaveOut::kMinRate || rate > WaveOut::kMaxRate)
        return {Heard::Nothing, "the sound has " + std::to_string(rate) +
                                    " samples a second, the game plays " +
                                    std::to_string(WaveOut::kMinRate) + " to " +
                                    std::to_string(WaveOut::kMaxRate) + ": nothing would be heard"};
    return {Heard::WrongSpeed, "the sound has " + std::to_string(rate) +
                                   " samples a second, the game's sounds have " + gameRates() +
                                   ": beside one of those it is heard at the wrong speed"};
}

Verdict judge(const Facts& facts) {
    if (facts.kind == Kind::Unknown)
        return {Heard::Nothing, "no WAVE file and no Macintosh sound: nothing would be heard"};
    if (!facts.hasFormat)
        return {Heard::EndOfGame, "the WAVE file has no format (\"fmt \") within its first 1,024 "
                                  "bytes: playing it would end the game with a fatal error"};
    Verdict verdict = judgeSamples(facts);
    if (verdict.first != Heard::Well) return verdict;
    if (facts.header.dataLength == 0)
        return {Heard::Nothing, "the sound has no samples: nothing would be heard"};
    return facts.faults.empty() ? verdict : judgeRate(facts.header.sampleRate);
}

} // namespace

std::string gameRates() {
    std::string text;
    for (const int rate : formats::sound::kRates) {
        if (!text.empty()) text += rate == formats::sound::kRates.back() ? " or " : ", ";
        text += std::to_string(rate);
    }
    return text;
}

SoundReport examineSound(ByteSpan resource) {
    SoundReport report;
    report.facts = formats::sound::examine(resource);
    report.text = describe(report.facts) + (cutOffText(report.facts).empty() ? "" : ", cut off");
    std::tie(report.heard, report.fault) = judge(report.facts);
    return report;
}

std::string consequenceOf(Heard heard) {
    switch (heard) {
    case Heard::Well: break;
    case Heard::WrongSpeed: return "at the wrong speed beside other sounds";
    case Heard::Noise: return "the game plays noise";
    case Heard::Nothing: return "the game plays nothing";
    case Heard::EndOfGame: return "the game ends with a fatal error";
    }
    return {};
}

std::string cutOffText(const Facts& facts) {
    if (facts.claimedLength <= facts.header.dataLength || facts.claimedLength >= kUnknownLength)
        return {};
    return "the sound is cut off: of its " + std::to_string(facts.claimedLength) +
           " bytes of samples only " + std::to_string(facts.header.dataLength) +
           " are there; export or copy it anew";
}

void refuseCutOff(const Facts& facts) {
    if (const std::string text = cutOffText(facts); !text.empty()) throw Refusal(text);
}

ByteSpan samplesOf(const Facts& facts, ByteSpan file) {
    return file.subspan(facts.header.dataOffset, facts.header.dataLength);
}

std::optional<std::size_t> riffLength(ByteSpan resource) {
    if (formats::sound::examine(resource).kind != Kind::Riff) return std::nullopt;
    return formats::sound::riffLength(resource);
}

std::optional<Bytes> macSoundToWav(ByteSpan resource) {
    const SoundReport report = examineSound(resource);
    if (report.facts.kind != Kind::Macintosh || report.heard == Heard::Noise) return std::nullopt;
    return formats::sound::writeRiff(samplesOf(report.facts, resource),
                                     report.facts.header.sampleRate);
}

} // namespace rsc
