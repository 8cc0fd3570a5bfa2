#include "movie/wavsound.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace rsc {

namespace {

constexpr std::size_t kRiffHeader = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::size_t kFormatSize = 16;
constexpr std::uint16_t kPcm = 1;
constexpr std::uint16_t kExtensible = 0xFFFE; ///< the coding stands at kSubFormat
constexpr std::size_t kSubFormat = 24;
constexpr std::uint32_t kSlowestRate = 1000; ///< what sound devices take
constexpr std::uint32_t kFastestRate = 192000;

class WavReader {
  public:
    explicit WavReader(ByteSpan file) : in_(file, "the sound is cut off") {}

    WavSound read() const {
        if (in_.size() < kRiffHeader || !isTag(0, "RIFF") || !isTag(8, "WAVE"))
            throw Refusal("no WAVE file");
        const auto format = findChunk("fmt ");
        if (!format) throw Refusal("the WAVE file has no format");
        WavSound sound = readFormat(*format);
        const auto data = findChunk("data");
        if (!data || data->empty()) throw Refusal("the sound has no samples");
        if (data->size() % sound.bytesOfPoint() != 0)
            throw Refusal("the sound ends within a sample");
        sound.samples.assign(data->begin(), data->end());
        return sound;
    }

  private:
    [[nodiscard]] bool isTag(std::size_t at, std::string_view tag) const {
        return std::ranges::equal(in_.slice(at, tag.size()), tag, {}, {},
                                  [](char c) { return static_cast<std::uint8_t>(c); });
    }

    /// Chunks of odd size are followed by a pad byte.
    [[nodiscard]] std::optional<ByteSpan> findChunk(std::string_view tag) const {
        for (std::size_t at = kRiffHeader; at + kChunkHeader <= in_.size();) {
            const std::size_t size = in_.u32(at + 4);
            if (isTag(at, tag)) return in_.slice(at + kChunkHeader, size);
            at += kChunkHeader + size + size % 2;
        }
        return std::nullopt;
    }

    static WavSound readFormat(ByteSpan chunk) {
        const ByteReader in(chunk, "the format of the WAVE file is cut off");
        const std::uint16_t channels = in.u16(2);
        const std::uint32_t rate = in.u32(4);
        const std::uint16_t bits = in.u16(kFormatSize - 2);
        const std::uint16_t coding = in.u16(0) == kExtensible ? in.u16(kSubFormat) : in.u16(0);
        if (coding != kPcm || (bits != 8 && bits != 16))
            throw Refusal("the sound must have plain samples (PCM) of 8 or 16 bits");
        if (channels != 1 && channels != 2)
            throw Refusal("the sound has " + std::to_string(channels) +
                          " channels, allowed is 1 or 2");
        if (rate < kSlowestRate || rate > kFastestRate)
            throw Refusal("the sound has " + std::to_string(rate) +
                          " samples a second, allowed is " + std::to_string(kSlowestRate) + " to " +
                          std::to_string(kFastestRate));
        return {static_cast<int>(rate), channels, bits, {}};
    }

    ByteReader in_;
};

} // namespace

WavSound readWav(ByteSpan file) { return WavReader(file).read(); }

} // namespace rsc
