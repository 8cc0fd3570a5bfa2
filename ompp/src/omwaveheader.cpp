#include "omwaveheader.h"

#include "omdebug.h"
#include "omistream.h"
#include "omreader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t kFirstBytes = 1024;

// RIFF
constexpr std::size_t kFirstChunk = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::array<std::uint32_t, 5> kRates = {22050, 22000, 22255, 11025, 11127};

// Macintosh
constexpr std::uint16_t kSampledSound = 5;
constexpr std::uint16_t kBufferCommand = 0x80; ///< the high byte: with data offset
constexpr std::uint8_t kStandardHeader = 0;
constexpr std::uint8_t kExtendedHeader = 0xFF;
constexpr std::size_t kStandardSize = 22;
constexpr std::size_t kExtendedSize = 64;
constexpr std::array<std::uint32_t, 5> kFixedRates = {0x56220000, 0x55F00000, 0x56EE8BA3,
                                                      0x2B110000, 0x2B7745D1};

/// The non-fatal checks of this file. `what` is what is wrong.
void check(bool holds, const char* condition, const char* what) {
    if (holds) return;
    OMDebug::check(false, condition,
                   std::string("OMWaveSound::OMWaveSound - invalid ") + what + "!");
}

template <class Range, class Value>
bool contains(const Range& range, Value value) {
    return std::ranges::find(range, value) != range.end();
}

/// Reads anywhere in a stream of any buffer mode. Walks that go forward read every byte at most
/// once.
class Window {
  public:
    explicit Window(OMIStream& stream) : stream_(stream) {}

    /// Up to `count` bytes from `offset` on; fewer at the end.
    std::vector<std::byte> read(std::size_t offset, std::size_t count) {
        std::vector<std::byte> result;
        while (result.size() < count) {
            const auto part = from(offset + result.size());
            if (part.empty()) break;
            const auto taken = part.first(std::min(part.size(), count - result.size()));
            result.insert(result.end(), taken.begin(), taken.end());
        }
        return result;
    }

  private:
    std::span<const std::byte> from(std::size_t offset) {
        if (offset >= stream_.length()) return {};
        const auto inside = [&] {
            return offset >= start_ && offset - start_ < stream_.current().size();
        };
        if (!inside()) {
            stream_.seek(static_cast<std::int64_t>(offset));
            if (stream_.fill() == 0) return {};
            start_ = stream_.chunkStart();
        }
        return inside() ? stream_.current().subspan(offset - start_) : std::span<const std::byte>();
    }

    OMIStream& stream_;
    std::size_t start_ = std::numeric_limits<std::size_t>::max(); ///< of the current data
};

struct Chunk {
    std::size_t begin; ///< of its header
    std::size_t size;  ///< of its data, as written

    /// Chunks of odd size are followed by a pad byte.
    [[nodiscard]] std::uint64_t end() const {
        return std::uint64_t{begin} + kChunkHeader + size + size % 2;
    }
};

/// The first chunk of that tag from `offset` on whose header lies within `limit` bytes.
std::optional<Chunk> findChunk(Window& window, std::string_view tag, std::uint64_t from,
                               std::size_t limit) {
    if (from > limit) return std::nullopt;
    auto offset = static_cast<std::size_t>(from);
    while (limit - offset >= kChunkHeader) {
        const auto bytes = window.read(offset, kChunkHeader);
        OMReader reader(bytes);
        const bool found = reader.text(tag.size()) == tag;
        const Chunk chunk{offset, reader.u32()};
        if (!reader.ok()) break;
        if (found) return chunk;
        if (chunk.end() > limit) break;
        offset = static_cast<std::size_t>(chunk.end());
    }
    return std::nullopt;
}

/// No more samples than the stream holds.
OMWaveHeader limited(const OMIStream& stream, std::size_t offset, std::size_t length, int rate) {
    const std::size_t begin = std::min(offset, stream.length());
    return {begin, std::min(length, stream.length() - begin), rate};
}

OMWaveHeader readRiff(OMIStream& stream, Window& window) {
    const std::size_t limit = std::min(stream.length(), kFirstBytes);
    const auto format = findChunk(window, "fmt ", kFirstChunk, limit);
    OMDebug::require(format.has_value(), "!found",
                     "OMWaveSound::OMWaveSound - invalid WAVE format!");
    const auto bytes = window.read(format->begin + kChunkHeader, 16);
    OMReader reader(bytes);
    reader.skip(2); // format tag
    const std::uint16_t channels = reader.u16();
    const std::uint32_t rate = reader.u32();
    reader.skip(6); // average bytes a second, block align
    const std::uint16_t bits = reader.u16();
    check(contains(kRates, rate), "samplesPerSec", "sample rate");
    check(channels == 1, "channels == 1", "number of channels");
    check(bits == 8, "bitsPerSample == 8", "number of bits per sample");

    constexpr auto mostRate = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
    const auto sampleRate = static_cast<int>(std::min(rate, mostRate));
    const auto data = findChunk(window, "data", format->end(), stream.length());
    if (!data) return limited(stream, 0, 0, sampleRate);
    return limited(stream, data->begin + kChunkHeader, data->size, sampleRate);
}

/// The command that leads to the sound header; the reader stands before it.
void checkCommand(OMReader& reader, std::uint32_t headerOffset) {
    check(reader.u16() == 1, "numCommands == 1", "number of commands");
    check(reader.u16() >> 8 == kBufferCommand, "command == bufferCmd", "command");
    check(reader.u16() == 0, "param1 == 0", "command parameter 1");
    check(reader.u32() == headerOffset, "param2 == headerOffset", "command parameter 2");
}

OMWaveHeader readSoundHeader(const OMIStream& stream, OMReader& reader) {
    const std::size_t begin = reader.position();
    reader.skip(4); // sample pointer
    const std::uint32_t length = reader.u32();
    const std::uint32_t rate = reader.u32();
    reader.skip(8); // loop start and end
    const std::uint8_t encoding = reader.u8();
    reader.skip(1); // base frequency
    check(contains(kFixedRates, rate), "sampleRate", "sample rate");
    check(encoding == kStandardHeader || encoding == kExtendedHeader,
          "encode == stdSH || encode == extSH", "encoding");
    const auto sampleRate = static_cast<int>(rate >> 16);
    if (encoding == kStandardHeader && reader.ok())
        return limited(stream, begin + kStandardSize, length, sampleRate);
    const std::uint32_t frames = reader.u32();
    return limited(stream, begin + kExtendedSize, frames, sampleRate);
}

OMWaveHeader readMacintosh(const OMIStream& stream, std::span<const std::byte> first) {
    OMReader reader(first, std::endian::big);
    const std::uint16_t format = reader.u16();
    if (format == 1) {
        check(reader.u16() == 1, "numSynths == 1", "number of synthesizers");
        check(reader.u16() == kSampledSound, "synthID == sampledSynth", "synthesizer");
        const std::uint32_t options = reader.u32();
        check(options == 0x80 || options == 0xA0, "initOption == 0x80 || initOption == 0xA0",
              "synthesizer option");
        checkCommand(reader, 0x14);
        return readSoundHeader(stream, reader);
    }
    if (format == 2) {
        reader.skip(2); // reference count
        checkCommand(reader, 0x0E);
        return readSoundHeader(stream, reader);
    }
    return {};
}

} // namespace

OMWaveHeader OMReadWaveHeader(OMIStream& stream) {
    Window window(stream);
    const std::vector<std::byte> first = window.read(0, kFirstBytes);
    OMReader reader(first);
    const bool riff = reader.text(4) == "RIFF";
    reader.skip(4);
    if (riff && reader.text(4) == "WAVE") return readRiff(stream, window);
    return readMacintosh(stream, first);
}
