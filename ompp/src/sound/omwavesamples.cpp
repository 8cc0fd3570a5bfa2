#include "omwavesamples.h"

#include "omdebug.h"
#include "omistream.h"
#include "omwavemix.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

bool OMWaveSamples::isStreamed() const { return !stream_.isWhole(); }

void OMWaveSamples::load(std::int64_t start, std::int64_t end, std::size_t blockSize,
                         std::size_t blocks) {
    blockSize_ = blockSize;
    if (!isStreamed()) {
        if (whole_.empty()) whole_ = stream_.readAll();
        return;
    }
    maxBlocks_ = 2 * blocks;
    storage_.resize(maxBlocks_ * blockSize);
    const auto step = static_cast<std::int64_t>(blockSize);
    const std::int64_t preloadEnd =
        std::min(end, start + step * static_cast<std::int64_t>(blocks) - 1);
    for (std::int64_t at = start; at <= preloadEnd; at += step)
        chunk(at, static_cast<std::size_t>(std::min(step, end - at + 1)));
}

void OMWaveSamples::unload() {
    // The stream must not write into blocks that are gone.
    if (!storage_.empty()) stream_.setDstBuffer(kOMIStreamBuffered);
    whole_ = {};
    storage_ = std::vector<std::uint8_t>();
    blocks_.clear();
    oldest_ = 0;
}

bool OMWaveSamples::has(std::int64_t position) const {
    return !isStreamed() || std::ranges::find(blocks_, position, &Block::position) != blocks_.end();
}

OMWaveSamples::Chunk OMWaveSamples::chunk(std::int64_t position, std::size_t count) {
    if (!isStreamed()) return wholeChunk(position, count);
    const auto found = std::ranges::find(blocks_, position, &Block::position);
    if (found == blocks_.end()) return read(position, count);
    return storage(static_cast<std::size_t>(found - blocks_.begin())).first(found->count);
}

OMWaveSamples::Chunk OMWaveSamples::wholeChunk(std::int64_t position, std::size_t count) {
    const std::size_t offset = dataOffset_ + static_cast<std::size_t>(position);
    const Chunk all(reinterpret_cast<const std::uint8_t*>(whole_.data()), whole_.size());
    const Chunk there = all.subspan(std::min(offset, all.size()));
    if (there.size() >= count) return there.first(count);
    // The data end early. Only one chunk of a play window has both samples and silence.
    std::vector<std::uint8_t>& padded = there.empty() ? silence_ : cut_;
    padded.assign(blockSize_, OMWaveMix::kSilence);
    std::ranges::copy(there, padded.begin());
    return Chunk(padded).first(count);
}

/// Replaces the oldest block: those still in use are always among the newest.
OMWaveSamples::Chunk OMWaveSamples::read(std::int64_t position, std::size_t count) {
    std::size_t place = blocks_.size();
    if (place < maxBlocks_) {
        blocks_.push_back({position, count});
    } else {
        place = std::exchange(oldest_, (oldest_ + 1) % maxBlocks_);
        blocks_[place] = {position, count};
    }
    const auto block = storage(place).first(count);
    stream_.setDstBuffer(static_cast<int>(count), std::as_writable_bytes(block));
    stream_.seek(static_cast<std::int64_t>(dataOffset_) + position);
    std::ranges::fill(block.subspan(stream_.fill()), OMWaveMix::kSilence);
    return block;
}

namespace {

/// The failed check of a fault: its condition, and what is invalid.
struct FaultTexts {
    const char* condition;
    const char* what;
};
constexpr FaultTexts kFaults[] = {
    // in the order of formats::sound::Fault
    {"samplesPerSec", "sample rate"},
    {"channels == 1", "number of channels"},
    {"bitsPerSample == 8", "number of bits per sample"},
    {"numSynths == 1", "number of synthesizers"},
    {"synthID == sampledSynth", "synthesizer"},
    {"initOption == 0x80 || initOption == 0xA0", "synthesizer option"},
    {"numCommands == 1", "number of commands"},
    {"command == bufferCmd", "command"},
    {"param1 == 0", "command parameter 1"},
    {"param2 == headerOffset", "command parameter 2"},
    {"encode == stdSH || encode == extSH", "encoding"},
};
static_assert(std::size(kFaults) == static_cast<std::size_t>(formats::sound::Fault::Encoding) + 1);

/// A stream of any buffer mode. Walks that go forward read every byte at most once.
class StreamSource {
  public:
    explicit StreamSource(OMIStream& stream) : stream_(stream) {}

    /// Fills the buffer from `offset` on; the number of bytes that are there.
    std::size_t read(std::uint64_t offset, std::span<std::byte> buffer) {
        std::size_t done = 0;
        while (done < buffer.size()) {
            const auto part = from(offset + done);
            if (part.empty()) break;
            const auto taken = part.first(std::min(part.size(), buffer.size() - done));
            std::ranges::copy(taken, buffer.begin() + static_cast<std::ptrdiff_t>(done));
            done += taken.size();
        }
        return done;
    }

  private:
    /// At least one byte from `offset` on, unless that is the end.
    std::span<const std::byte> from(std::uint64_t offset) {
        if (offset >= stream_.length()) return {};
        const auto place = static_cast<std::size_t>(offset);
        const auto inside = [&] {
            return place >= start_ && place - start_ < stream_.current().size();
        };
        if (!inside()) {
            stream_.seek(static_cast<std::int64_t>(place));
            if (stream_.fill() == 0) return {};
            start_ = stream_.chunkStart();
        }
        return inside() ? stream_.current().subspan(place - start_) : std::span<const std::byte>();
    }

    OMIStream& stream_;
    std::size_t start_ = std::numeric_limits<std::size_t>::max(); ///< of the current data
};

} // namespace

formats::sound::Header OMReadWaveHeader(OMIStream& stream) {
    StreamSource source(stream);
    const auto facts = formats::sound::examine(
        [&](std::uint64_t place, std::span<std::byte> buffer) {
            return source.read(place, buffer);
        },
        stream.length());
    OMDebug::require(facts.hasFormat, "!found", "OMWaveSound::OMWaveSound - invalid WAVE format!");
    for (const formats::sound::Fault fault : facts.faults) {
        const auto& [condition, what] = kFaults[static_cast<std::size_t>(fault)];
        OMDebug::check(false, condition,
                       std::string("OMWaveSound::OMWaveSound - invalid ") + what + "!");
    }
    return facts.header;
}
