#include "formats/sound/wave.h"

#include <limits>
#include <optional>

namespace formats::sound {

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

template <class Range, class Value>
bool contains(const Range& range, Value value) {
    return std::ranges::find(range, value) != range.end();
}

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
    Examiner(const ReadAt& read, std::size_t length) : read_(read), length_(length) {}

    Facts examine() {
        const std::vector<std::byte> first = read(0, kFirstBytes);
        ByteReader reader(first);
        const bool riff = reader.text(4) == "RIFF";
        reader.skip(4);
        if (riff && reader.text(4) == "WAVE")
            examineRiff();
        else
            examineMacintosh(first);
        return std::move(facts_);
    }

  private:
    std::vector<std::byte> read(std::size_t offset, std::size_t count) const {
        std::vector<std::byte> result(count);
        result.resize(read_(offset, result));
        return result;
    }

    void expect(bool holds, Fault otherwise) {
        if (!holds) facts_.faults.push_back(otherwise);
    }

    /// The first chunk of that tag from `offset` on whose header lies within `limit` bytes.
    std::optional<Chunk> findChunk(std::string_view tag, std::uint64_t from, std::size_t limit) {
        if (from > limit) return std::nullopt;
        auto offset = static_cast<std::size_t>(from);
        while (limit - offset >= kChunkHeader) {
            const auto bytes = read(offset, kChunkHeader);
            ByteReader reader(bytes);
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
        facts_.header.dataOffset = std::min(offset, length_);
        facts_.header.dataLength = std::min(length, length_ - facts_.header.dataOffset);
    }

    void examineRiff() {
        facts_.kind = Facts::Kind::Riff;
        const std::size_t limit = std::min(length_, kFirstBytes);
        const auto format = findChunk("fmt ", kFirstChunk, limit);
        facts_.hasFormat = format.has_value();
        if (!format) return;
        examineFormat(*format);
        const auto data = findChunk("data", format->end(), length_);
        if (data) setSamples(data->begin + kChunkHeader, data->size);
    }

    void examineFormat(const Chunk& format) {
        const auto bytes = read(format.begin + kChunkHeader, kExtensibleSize);
        const std::span<const std::byte> all(bytes);
        ByteReader reader(all.first(std::min(all.size(), kFormatSize)));
        facts_.coding = reader.u16();
        facts_.channels = reader.u16();
        const std::uint32_t rate = reader.u32();
        reader.skip(6); // average bytes a second, block align
        facts_.bits = reader.u16();
        expect(contains(kRates, static_cast<std::int64_t>(rate)), Fault::SampleRate);
        expect(facts_.channels == 1, Fault::Channels);
        expect(facts_.bits == 8, Fault::Bits);
        constexpr auto mostRate = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
        facts_.header.sampleRate = static_cast<int>(std::min(rate, mostRate));
        if (facts_.coding != kExtensible || format.size < kExtensibleSize) return;
        ByteReader extension(all);
        extension.skip(kSubFormat);
        facts_.coding = extension.u16();
    }

    /// The command that leads to the sound header; the reader stands before it.
    void examineCommand(ByteReader& reader, std::uint32_t headerOffset) {
        expect(reader.u16() == 1, Fault::Commands);
        expect(reader.u16() >> 8 == kBufferCommand, Fault::Command);
        expect(reader.u16() == 0, Fault::Parameter1);
        expect(reader.u32() == headerOffset, Fault::Parameter2);
    }

    void examineSoundHeader(ByteReader& reader) {
        const std::size_t begin = reader.position();
        reader.skip(4); // sample pointer
        const std::uint32_t length = reader.u32();
        const std::uint32_t rate = reader.u32();
        reader.skip(8); // loop start and end
        const std::uint8_t encoding = reader.u8();
        reader.skip(1); // base frequency
        expect(contains(kFixedRates, rate), Fault::SampleRate);
        expect(encoding == kStandardHeader || encoding == kExtendedHeader, Fault::Encoding);
        facts_.header.sampleRate = static_cast<int>(rate >> 16);
        if (encoding == kStandardHeader && reader.ok())
            setSamples(begin + kStandardSize, length);
        else
            setSamples(begin + kExtendedSize, reader.u32());
    }

    void examineMacintosh(std::span<const std::byte> first) {
        ByteReader reader(first, std::endian::big);
        const std::uint16_t format = reader.u16();
        if (format == 1) {
            facts_.kind = Facts::Kind::Macintosh;
            expect(reader.u16() == 1, Fault::Synthesizers);
            expect(reader.u16() == kSampledSound, Fault::Synthesizer);
            const std::uint32_t options = reader.u32();
            expect(options == 0x80 || options == 0xA0, Fault::Options);
            examineCommand(reader, 0x14);
            examineSoundHeader(reader);
        } else if (format == 2) {
            facts_.kind = Facts::Kind::Macintosh;
            reader.skip(2); // reference count
            examineCommand(reader, 0x0E);
            examineSoundHeader(reader);
        }
    }

    const ReadAt& read_;
    std::size_t length_; ///< of the resource
    Facts facts_;
};

} // namespace

Facts examine(const ReadAt& read, std::size_t length) { return Examiner(read, length).examine(); }

Facts examine(ByteSpan resource) { return examine(readAt(resource), resource.size()); }

Bytes riffHead(const Format& format, std::uint32_t dataSize) {
    constexpr std::int64_t kHead = kFirstChunk + kChunkHeader + kFormatSize;
    const int pointSize = format.channels * format.bits / 8;
    ByteWriter out;
    out.text("RIFF").u32(kHead + dataSize + dataSize % 2).text("WAVE");
    out.text("fmt ").u32(kFormatSize).u16(Facts::kPcm).u16(format.channels).u32(format.rate);
    out.u32(std::int64_t{format.rate} * pointSize).u16(pointSize).u16(format.bits);
    out.text("data").u32(dataSize);
    return out.take();
}

Bytes writeRiff(ByteSpan samples, int rate) {
    Bytes file = riffHead({.rate = rate}, static_cast<std::uint32_t>(samples.size()));
    file.insert(file.end(), samples.begin(), samples.end());
    if (samples.size() % 2 == 1) file.push_back(0);
    return file;
}

std::size_t riffLength(ByteSpan resource) {
    ByteReader reader(resource);
    reader.skip(4);
    const std::size_t said = reader.u32() + kChunkHeader;
    return std::clamp(said, kFirstChunk, resource.size());
}

} // namespace formats::sound
