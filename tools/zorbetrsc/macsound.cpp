#include "macsound.h"

#include <algorithm>
#include <string_view>

namespace rsc {

namespace {

constexpr std::size_t kRiffHeader = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::size_t kFormatSize = 16;
constexpr std::size_t kPcm = 1;

constexpr std::uint16_t kSampledSound = 5;
constexpr std::uint8_t kBufferCommand = 0x80;
constexpr std::size_t kHeaderOfFormat1 = 20; ///< where the sound header begins
constexpr std::size_t kHeaderOfFormat2 = 14;
constexpr std::uint8_t kExtended = 0xFF; ///< encoding
constexpr std::size_t kStandardHeader = 22;
constexpr std::size_t kExtendedHeader = 64;

bool startsWith(ByteSpan bytes, std::size_t at, std::string_view text) {
    return bytes.size() >= at + text.size() &&
           std::equal(
               text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
               [](char c, std::uint8_t byte) { return static_cast<unsigned char>(c) == byte; });
}

/// One command that leads to the sound header, whose place is the result.
std::optional<std::size_t> findHeader(const ByteReader& in) {
    const std::uint16_t format = in.u16(0);
    const bool sampled = format == 1 && in.u16(2) == 1 && in.u16(4) == kSampledSound;
    if (!sampled && format != 2) return std::nullopt;
    const std::size_t header = sampled ? kHeaderOfFormat1 : kHeaderOfFormat2;
    const std::size_t commands = header - 10;
    if (in.u16(commands) != 1 || in.u8(commands + 2) != kBufferCommand) return std::nullopt;
    return header;
}

void putText(Bytes& out, std::string_view text) { out.insert(out.end(), text.begin(), text.end()); }

Bytes wavFile(ByteSpan samples, std::size_t rate) {
    const std::size_t padded = samples.size() + samples.size() % 2;
    Bytes out;
    putText(out, "RIFF");
    put32(out, kRiffHeader - kChunkHeader + kChunkHeader + kFormatSize + kChunkHeader + padded);
    putText(out, "WAVEfmt ");
    put32(out, kFormatSize);
    put16(out, kPcm);
    put16(out, 1); // channels
    put32(out, rate);
    put32(out, rate); // bytes a second
    put16(out, 1);    // bytes a sample
    put16(out, 8);    // bits a sample
    putText(out, "data");
    put32(out, samples.size());
    out.insert(out.end(), samples.begin(), samples.end());
    if (padded != samples.size()) put8(out, 0);
    return out;
}

Bytes convert(ByteSpan resource, const ByteReader& in, std::size_t header) {
    const bool extended = in.u8(header + 20) == kExtended;
    const std::size_t length = in.u32(header + (extended ? 22 : 4));
    const std::size_t rate = in.u32(header + 8) >> 16;
    const std::size_t start = header + (extended ? kExtendedHeader : kStandardHeader);
    const ByteSpan rest = in.slice(start, resource.size() - std::min(start, resource.size()));
    return wavFile(rest.first(std::min(length, rest.size())), rate);
}

} // namespace

std::optional<std::size_t> riffLength(ByteSpan resource) {
    if (!startsWith(resource, 0, "RIFF") || !startsWith(resource, 8, "WAVE")) return std::nullopt;
    const std::size_t said = ByteReader(resource, {}).u32(4) + kChunkHeader;
    return std::clamp(said, kRiffHeader, resource.size());
}

std::optional<Bytes> macSoundToWav(ByteSpan resource) {
    const ByteReader in(resource, "the sound is cut off", true);
    try {
        const auto header = findHeader(in);
        return header ? std::optional(convert(resource, in, *header)) : std::nullopt;
    } catch (const Refusal&) {
        return std::nullopt;
    }
}

} // namespace rsc
