#include "omwaveheader.h"

#include "formats/base/bytes.h"
#include "omdebug.h"
#include "omistream.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kFirstBytes = 1024;

// RIFF
constexpr std::size_t kFirstChunk = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::size_t kFormatSize = 16; ///< bytes of a format that count
constexpr std::uint16_t kExtensible = 0xFFFE;
constexpr std::size_t kExtensibleSize = 40; ///< bytes of such a format
constexpr std::size_t kSubFormat = 24;      ///< where it says which one it stands for

// Macintosh
constexpr std::uint16_t kSampledSound = 5;
constexpr std::uint16_t kBufferCommand = 0x80; ///< the high byte: with data offset
constexpr std::uint8_t kStandardHeader = 0;
constexpr std::uint8_t kExtendedHeader = 0xFF;
constexpr std::size_t kStandardSize = 22;
constexpr std::size_t kExtendedSize = 64;
constexpr std::array<std::uint32_t, 5> kFixedRates = {0x56220000, 0x55F00000, 0x56EE8BA3,
                                                      0x2B110000, 0x2B7745D1};

/// The failed check of a fault: its condition, and what is invalid.
struct FaultTexts {
    const char* condition;
    const char* what;
};
constexpr FaultTexts kFaults[] = {
    // in the order of OMWaveFault
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
static_assert(std::size(kFaults) == static_cast<std::size_t>(OMWaveFault::Encoding) + 1);

template <class Range, class Value>
bool contains(const Range& range, Value value) {
    return std::ranges::find(range, value) != range.end();
}

/// The bytes of a resource, wherever they lie.
class Source {
  public:
    explicit Source(std::size_t length) : length_(length) {}
    virtual ~Source() = default;

    [[nodiscard]] std::size_t length() const { return length_; }

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

  protected:
    /// At least one byte from `offset` on, unless that is the end.
    virtual std::span<const std::byte> from(std::size_t offset) = 0;

  private:
    std::size_t length_;
};

class MemorySource final : public Source {
  public:
    explicit MemorySource(std::span<const std::byte> bytes) : Source(bytes.size()), bytes_(bytes) {}

  protected:
    std::span<const std::byte> from(std::size_t offset) override {
        return bytes_.subspan(std::min(offset, bytes_.size()));
    }

  private:
    std::span<const std::byte> bytes_;
};

/// A stream of any buffer mode. Walks that go forward read every byte at most once.
class StreamSource final : public Source {
  public:
    explicit StreamSource(OMIStream& stream) : Source(stream.length()), stream_(stream) {}

  protected:
    std::span<const std::byte> from(std::size_t offset) override {
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

  private:
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

class Examiner {
  public:
    explicit Examiner(Source& source) : source_(source) {}

    OMWaveFacts examine() {
        const std::vector<std::byte> first = source_.read(0, kFirstBytes);
        formats::ByteReader reader(first);
        const bool riff = reader.text(4) == "RIFF";
        reader.skip(4);
        if (riff && reader.text(4) == "WAVE")
            examineRiff();
        else
            examineMacintosh(first);
        return std::move(facts_);
    }

  private:
    void expect(bool holds, OMWaveFault otherwise) {
        if (!holds) facts_.faults.push_back(otherwise);
    }

    /// The first chunk of that tag from `offset` on whose header lies within `limit` bytes.
    std::optional<Chunk> findChunk(std::string_view tag, std::uint64_t from, std::size_t limit) {
        if (from > limit) return std::nullopt;
        auto offset = static_cast<std::size_t>(from);
        while (limit - offset >= kChunkHeader) {
            const auto bytes = source_.read(offset, kChunkHeader);
            formats::ByteReader reader(bytes);
            const bool found = reader.text(tag.size()) == tag;
            const Chunk chunk{offset, reader.u32()};
            if (!reader.ok()) break;
            if (found) return chunk;
            if (chunk.end() > limit) break;
            offset = static_cast<std::size_t>(chunk.end());
        }
        return std::nullopt;
    }

    /// No more samples than there are.
    void setSamples(std::size_t offset, std::size_t length) {
        facts_.claimedLength = length;
        facts_.header.dataOffset = std::min(offset, source_.length());
        facts_.header.dataLength = std::min(length, source_.length() - facts_.header.dataOffset);
    }

    void examineRiff() {
        facts_.kind = OMWaveFacts::Kind::Riff;
        const std::size_t limit = std::min(source_.length(), kFirstBytes);
        const auto format = findChunk("fmt ", kFirstChunk, limit);
        facts_.hasFormat = format.has_value();
        if (!format) return;
        examineFormat(*format);
        const auto data = findChunk("data", format->end(), source_.length());
        if (data) setSamples(data->begin + kChunkHeader, data->size);
    }

    void examineFormat(const Chunk& format) {
        const auto bytes = source_.read(format.begin + kChunkHeader, kExtensibleSize);
        const std::span<const std::byte> all(bytes);
        formats::ByteReader reader(all.first(std::min(all.size(), kFormatSize)));
        facts_.coding = reader.u16();
        facts_.channels = reader.u16();
        const std::uint32_t rate = reader.u32();
        reader.skip(6); // average bytes a second, block align
        facts_.bits = reader.u16();
        expect(contains(kOMWaveRates, static_cast<std::int64_t>(rate)), OMWaveFault::SampleRate);
        expect(facts_.channels == 1, OMWaveFault::Channels);
        expect(facts_.bits == 8, OMWaveFault::Bits);
        constexpr auto mostRate = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
        facts_.header.sampleRate = static_cast<int>(std::min(rate, mostRate));
        if (facts_.coding != kExtensible || format.size < kExtensibleSize) return;
        formats::ByteReader extension(all);
        extension.skip(kSubFormat);
        facts_.coding = extension.u16();
    }

    /// The command that leads to the sound header; the reader stands before it.
    void examineCommand(formats::ByteReader& reader, std::uint32_t headerOffset) {
        expect(reader.u16() == 1, OMWaveFault::Commands);
        expect(reader.u16() >> 8 == kBufferCommand, OMWaveFault::Command);
        expect(reader.u16() == 0, OMWaveFault::Parameter1);
        expect(reader.u32() == headerOffset, OMWaveFault::Parameter2);
    }

    void examineSoundHeader(formats::ByteReader& reader) {
        const std::size_t begin = reader.position();
        reader.skip(4); // sample pointer
        const std::uint32_t length = reader.u32();
        const std::uint32_t rate = reader.u32();
        reader.skip(8); // loop start and end
        const std::uint8_t encoding = reader.u8();
        reader.skip(1); // base frequency
        expect(contains(kFixedRates, rate), OMWaveFault::SampleRate);
        expect(encoding == kStandardHeader || encoding == kExtendedHeader, OMWaveFault::Encoding);
        facts_.header.sampleRate = static_cast<int>(rate >> 16);
        if (encoding == kStandardHeader && reader.ok())
            setSamples(begin + kStandardSize, length);
        else
            setSamples(begin + kExtendedSize, reader.u32());
    }

    void examineMacintosh(std::span<const std::byte> first) {
        formats::ByteReader reader(first, std::endian::big);
        const std::uint16_t format = reader.u16();
        if (format == 1) {
            facts_.kind = OMWaveFacts::Kind::Macintosh;
            expect(reader.u16() == 1, OMWaveFault::Synthesizers);
            expect(reader.u16() == kSampledSound, OMWaveFault::Synthesizer);
            const std::uint32_t options = reader.u32();
            expect(options == 0x80 || options == 0xA0, OMWaveFault::Options);
            examineCommand(reader, 0x14);
            examineSoundHeader(reader);
        } else if (format == 2) {
            facts_.kind = OMWaveFacts::Kind::Macintosh;
            reader.skip(2); // reference count
            examineCommand(reader, 0x0E);
            examineSoundHeader(reader);
        }
    }

    Source& source_;
    OMWaveFacts facts_;
};

} // namespace

OMWaveFacts OMExamineWave(std::span<const std::byte> resource) {
    MemorySource source(resource);
    return Examiner(source).examine();
}

OMWaveHeader OMReadWaveHeader(OMIStream& stream) {
    StreamSource source(stream);
    const OMWaveFacts facts = Examiner(source).examine();
    OMDebug::require(facts.hasFormat, "!found", "OMWaveSound::OMWaveSound - invalid WAVE format!");
    for (const OMWaveFault fault : facts.faults) {
        const auto& [condition, what] = kFaults[static_cast<std::size_t>(fault)];
        OMDebug::check(false, condition,
                       std::string("OMWaveSound::OMWaveSound - invalid ") + what + "!");
    }
    return facts.header;
}
