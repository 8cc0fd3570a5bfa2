#include "formats/movie/moviesound.h"

#include "formats/movie/bytetree.h"

#include <algorithm>

namespace formats {

namespace {

constexpr std::uint64_t kSecond = 100000; ///< hundredths of a millisecond
constexpr std::size_t kSmallestChunk = 4; ///< bytes of samples; readers refuse less
constexpr std::size_t kMostUnpacked = 1 << 24;
constexpr std::uint8_t kSilence8 = 128;

/// One chunk of packed samples.
class SamplePacker {
  public:
    SamplePacker(const MovieSoundFormat& format, ByteSpan samples)
        : channels_(static_cast<std::size_t>(format.channels)), bytes_(format.bytesOfSample()),
          samples_(samples), count_(samples.size() / bytes_), counts_(channels_ * bytes_) {
        for (std::size_t i = channels_; i < count_; ++i)
            for (std::size_t byte = 0; byte < bytes_; ++byte)
                ++counts_[treeOf(i, byte)][difference(i, byte)];
    }

    Bytes pack() const {
        BitWriter out;
        out.putBit(true);
        out.putBit(channels_ == 2);
        out.putBit(bytes_ == 2);
        std::vector<ByteTree> trees;
        for (const ByteCounts& counts : counts_) trees.emplace_back(counts).write(out);
        for (std::size_t channel = channels_; channel > 0; --channel)
            for (std::size_t byte = bytes_; byte > 0; --byte)
                out.put(static_cast<std::uint8_t>(sample(channel - 1) >> (8 * (byte - 1))), 8);
        for (std::size_t i = channels_; i < count_; ++i)
            for (std::size_t byte = 0; byte < bytes_; ++byte)
                trees[treeOf(i, byte)].put(out, difference(i, byte));
        return out.take();
    }

  private:
    [[nodiscard]] std::uint16_t sample(std::size_t i) const {
        if (bytes_ == 1) return samples_[i];
        return static_cast<std::uint16_t>(samples_[2 * i] | samples_[2 * i + 1] << 8);
    }
    /// A byte of the difference to the sample before of the same channel, the low byte first.
    [[nodiscard]] std::uint8_t difference(std::size_t i, std::size_t byte) const {
        return static_cast<std::uint8_t>((sample(i) - sample(i - channels_)) >> (8 * byte));
    }
    /// Each byte of each channel has a tree.
    [[nodiscard]] std::size_t treeOf(std::size_t i, std::size_t byte) const {
        return i % channels_ * bytes_ + byte;
    }

    std::size_t channels_;
    std::size_t bytes_; ///< of a sample
    ByteSpan samples_;
    std::size_t count_; ///< of samples in all channels
    std::vector<ByteCounts> counts_;
};

/// The samples of a packed chunk, behind its two numbers.
class SampleUnpacker {
  public:
    SampleUnpacker(const MovieSoundFormat& format, ByteSpan bits)
        : channels_(static_cast<std::size_t>(format.channels)), bytes_(format.bytesOfSample()),
          in_(bits) {}

    std::optional<Bytes> unpack(std::size_t size) {
        if (!in_.takeBit()) return Bytes();
        if (in_.takeBit() != (channels_ == 2) || in_.takeBit() != (bytes_ == 2)) return {};
        for (HuffmanCodes& codes : std::span(codes_).first(channels_ * bytes_))
            if (!readByteTree(in_, codes)) return {};
        for (std::size_t channel = channels_; channel-- > 0;)
            for (std::size_t byte = bytes_; byte-- > 0;)
                last_[channel] |= static_cast<std::uint16_t>(in_.take(8) << (8 * byte));
        Bytes samples(size);
        std::uint8_t* out = samples.data();
        for (std::size_t channel = 0; channel < channels_; ++channel) out = put(out, channel);
        if (in_.overrun()) return {};
        for (const std::uint8_t* const end = samples.data() + size; out < end;)
            for (std::size_t channel = 0; channel < channels_; ++channel) {
                addDifference(channel);
                out = put(out, channel);
                if (in_.overrun()) return {};
            }
        return samples;
    }

  private:
    void addDifference(std::size_t channel) {
        std::uint32_t difference = codes_[channel * bytes_].get(in_);
        if (bytes_ == 2) difference |= codes_[channel * bytes_ + 1].get(in_) << 8;
        last_[channel] = static_cast<std::uint16_t>(last_[channel] + difference);
    }
    std::uint8_t* put(std::uint8_t* out, std::size_t channel) const {
        *out++ = static_cast<std::uint8_t>(last_[channel]);
        if (bytes_ == 2) *out++ = static_cast<std::uint8_t>(last_[channel] >> 8);
        return out;
    }

    std::size_t channels_;
    std::size_t bytes_; ///< of a sample
    BitReader in_;
    std::array<HuffmanCodes, 4> codes_;
    std::array<std::uint16_t, 2> last_{}; ///< sample of each channel
};

/// Bytes of the samples that are heard in this time, at most all of them.
std::size_t bytesUntil(const MovieSoundFormat& format, ByteSpan samples, std::uint64_t time) {
    const auto rate = static_cast<std::uint64_t>(format.rate);
    const std::uint64_t points = time / kSecond * rate + time % kSecond * rate / kSecond;
    return std::min<std::size_t>(points * format.bytesOfPoint(), samples.size());
}

} // namespace

Bytes makeSoundChunk(const MovieSoundFormat& format, ByteSpan samples) {
    ByteWriter chunk;
    chunk.u32(0);
    if (format.packed)
        chunk.u32(static_cast<std::int64_t>(samples.size()))
            .block(SamplePacker(format, samples).pack());
    else
        chunk.block(samples);
    chunk.putU32(0, static_cast<std::int64_t>(chunk.size()));
    return chunk.take();
}

std::optional<Bytes> readSoundChunk(const MovieSoundFormat& format, ByteSpan chunk) {
    const std::size_t point = format.bytesOfPoint();
    if (!format.packed) return Bytes(chunk.begin(), chunk.end() - chunk.size() % point);
    ByteReader in(chunk);
    const std::size_t size = in.u32();
    if (!in.ok() || size > kMostUnpacked || size == 0 || size % point != 0) return std::nullopt;
    return SampleUnpacker(format, chunk.subspan(in.position())).unpack(size);
}

CodedSound codeSound(const MovieSoundFormat& format, ByteSpan samples, std::size_t frames,
                     int frameTime) {
    const auto time = static_cast<std::uint64_t>(frameTime);
    const ByteSpan heard = samples.first(bytesUntil(format, samples, frames * time));
    Bytes kept(heard.begin(), heard.end());
    if (kept.size() < kSmallestChunk) // silence behind what is too little for any chunk
        kept.resize(kSmallestChunk, format.bits == 8 ? kSilence8 : std::uint8_t{0});
    CodedSound coded;
    coded.chunks.resize(frames);
    std::size_t sent = 0;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        std::size_t end = bytesUntil(format, kept, (frame + 1) * time + kSecond);
        if (kept.size() - end < kSmallestChunk) end = kept.size();
        if (end - sent < kSmallestChunk) continue;
        const ByteSpan part = ByteSpan(kept).subspan(sent, end - sent);
        coded.chunks[frame] = makeSoundChunk(format, part);
        coded.largestChunk = std::max(coded.largestChunk, part.size());
        sent = end;
    }
    coded.leftOut =
        (samples.size() - std::min(samples.size(), kept.size())) / format.bytesOfPoint();
    return coded;
}

} // namespace formats
