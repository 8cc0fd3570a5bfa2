#include "movies/soundcoder.h"

#include "movies/bytetree.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::uint64_t kSecond = 100000; ///< hundredths of a millisecond
constexpr std::size_t kSmallestChunk = 4; ///< bytes of samples; readers refuse less
constexpr std::size_t kLengthSize = 4;    ///< bytes of the length in front of a chunk
constexpr std::uint8_t kSilence8 = 128;

/// One chunk of packed samples.
class SamplePacker {
  public:
    SamplePacker(const MovieSound& format, ByteSpan samples)
        : channels_(static_cast<std::size_t>(format.channels)), bytes_(format.bytesOfSample()),
          samples_(samples), count_(samples.size() / bytes_), counts_(channels_ * bytes_) {
        for (std::size_t i = channels_; i < count_; ++i)
            for (std::size_t byte = 0; byte < bytes_; ++byte)
                ++countsOf(i, byte)[difference(i, byte)];
    }

    Bytes pack() const {
        BitWriter out;
        out.putBit(true); // something follows
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
    ByteCounts& countsOf(std::size_t i, std::size_t byte) { return counts_[treeOf(i, byte)]; }

    std::size_t channels_;
    std::size_t bytes_; ///< of a sample
    ByteSpan samples_;
    std::size_t count_; ///< of samples in all channels
    std::vector<ByteCounts> counts_;
};

Bytes makeChunk(const MovieSound& format, ByteSpan samples, bool packed) {
    Bytes data;
    if (packed) {
        put32(data, samples.size());
        const Bytes bits = SamplePacker(format, samples).pack();
        data.insert(data.end(), bits.begin(), bits.end());
    } else {
        data.assign(samples.begin(), samples.end());
    }
    Bytes chunk;
    put32(chunk, kLengthSize + data.size());
    chunk.insert(chunk.end(), data.begin(), data.end());
    return chunk;
}

/// Bytes of the samples that are heard in this time, at most all of them.
std::size_t bytesUntil(const MovieSound& sound, std::uint64_t time) {
    const auto rate = static_cast<std::uint64_t>(sound.rate);
    const std::uint64_t points = time / kSecond * rate + time % kSecond * rate / kSecond;
    return std::min<std::size_t>(points * sound.bytesOfPoint(), sound.samples.size());
}

/// The samples that are heard in this time, with silence behind them when they are too few for any
/// chunk.
Bytes samplesUntil(const MovieSound& sound, std::uint64_t time) {
    Bytes samples = sound.samples;
    samples.resize(bytesUntil(sound, time));
    if (samples.size() < kSmallestChunk)
        samples.resize(kSmallestChunk, sound.bits == 8 ? kSilence8 : std::uint8_t{0});
    return samples;
}

} // namespace

CodedSound codeSound(const MovieSound& sound, std::size_t frames, int frameTime, bool packed) {
    const auto time = static_cast<std::uint64_t>(frameTime);
    const Bytes samples = samplesUntil(sound, frames * time);
    CodedSound coded;
    coded.chunks.resize(frames);
    std::size_t sent = 0;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        std::size_t end = std::min(bytesUntil(sound, (frame + 1) * time + kSecond), samples.size());
        if (samples.size() - end < kSmallestChunk) end = samples.size();
        if (end - sent < kSmallestChunk) continue;
        const ByteSpan part = ByteSpan(samples).subspan(sent, end - sent);
        coded.chunks[frame] = makeChunk(sound, part, packed);
        coded.largestChunk = std::max(coded.largestChunk, part.size());
        sent = end;
    }
    coded.leftOut = (sound.samples.size() - std::min(sound.samples.size(), samples.size())) /
                    sound.bytesOfPoint();
    return coded;
}

} // namespace rsc
