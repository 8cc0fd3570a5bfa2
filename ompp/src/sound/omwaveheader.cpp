#include "omwaveheader.h"

#include "omdebug.h"
#include "omistream.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>

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
