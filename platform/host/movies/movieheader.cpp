#include "platform/host/movies/movieheader.h"

#include "platform/waveout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace platform {

namespace {

constexpr std::size_t kHeaderSize = 0x68;
constexpr std::uint32_t kMaxFrames = 0xFFFFFF;
constexpr std::uint32_t kMaxTreesSize = 4 << 20; // the largest useful ones have half a megabyte
constexpr std::uint32_t kMaxFrameSize = 64 << 20;
constexpr int kUsualFrameTime = 10000;
constexpr int kTracks = 7;

constexpr std::uint32_t kRingFrame = 1;
constexpr std::uint32_t kDoubled = 2 | 4;

constexpr std::uint32_t kTrackRate = 0xFFFFFF;
constexpr std::uint32_t kTrackOtherCodec = 3 << 26;
constexpr std::uint32_t kTrackStereo = 1 << 28;
constexpr std::uint32_t kTrack16Bit = 1 << 29;
constexpr std::uint32_t kTrackPresent = 1 << 30;

using HeaderBytes = std::array<std::byte, kHeaderSize>;

std::uint32_t number(std::span<const std::byte> bytes, std::size_t place) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | std::to_integer<std::uint32_t>(bytes[place + i]);
    return value;
}

bool isMovie(std::span<const std::byte> header) {
    const std::string_view name(reinterpret_cast<const char*>(header.data()), 4);
    return name == "SMK2" || name == "SMK4";
}

/// Hundredths of a millisecond; 0 when it is absurd.
int frameTime(std::uint32_t field) {
    constexpr int kMost = std::numeric_limits<int>::max();
    const auto rate = static_cast<std::int32_t>(field);
    if (rate == 0) return kUsualFrameTime;
    if (rate > 0) return rate <= kMost / 100 ? rate * 100 : 0;
    return rate >= -kMost ? -rate : 0;
}

/// None for a track that is not there or that cannot be played.
std::optional<SoundFormat> playableFormat(std::uint32_t field) {
    const int rate = static_cast<int>(field & kTrackRate);
    if (!(field & kTrackPresent) || (field & kTrackOtherCodec)) return std::nullopt;
    if (rate < WaveOut::kMinRate || rate > WaveOut::kMaxRate) return std::nullopt;
    return SoundFormat{rate, field & kTrack16Bit ? 16 : 8, field & kTrackStereo ? 2 : 1};
}

std::optional<MovieHeader::Sound> firstPlayableTrack(const HeaderBytes& header, int& typeBit) {
    int stream = 0;
    for (int track = 0; track < kTracks; ++track) {
        const std::uint32_t field = number(header, 0x48 + 4 * static_cast<std::size_t>(track));
        if (const auto format = playableFormat(field)) {
            typeBit = 2 << track;
            return MovieHeader::Sound{*format, stream};
        }
        if (field & kTrackRate) ++stream;
    }
    return std::nullopt;
}

/// A table of the file that is read piece by piece; the caller knows that it is there.
class Table {
  public:
    Table(File& file, std::uint64_t place) : file_(file), place_(place) {}

    /// The next `size` bytes, at most kPiece; none when they cannot be read.
    std::optional<std::span<const std::byte>> next(std::size_t size) {
        const std::span<std::byte> piece(bytes_.data(), size);
        if (!file_.seek(place_) || file_.read(piece) != size) return std::nullopt;
        place_ += size;
        return piece;
    }
    static constexpr std::size_t kPiece = 16384;

  private:
    File& file_;
    std::uint64_t place_;
    std::vector<std::byte> bytes_ = std::vector<std::byte>(kPiece);
};

/// Fills in the amounts; `place` is that of the first frame.
bool readSizes(File& file, MovieHeader& header, std::uint64_t place) {
    constexpr int kAtOnce = Table::kPiece / 4;
    const std::uint64_t fileSize = file.size();
    Table table(file, kHeaderSize);
    for (int done = 0; done < header.frames;) {
        const int count = std::min(kAtOnce, header.frames - done);
        const auto piece = table.next(4 * static_cast<std::size_t>(count));
        if (!piece) return false;
        for (int i = 0; i < count; ++i, ++done) {
            const std::uint32_t size = number(*piece, 4 * static_cast<std::size_t>(i)) & ~3u;
            if (size > kMaxFrameSize) return false;
            header.framesSize += size;
            if (place + header.framesSize <= fileSize) header.wholeFrames = done + 1;
        }
    }
    return true;
}

/// Looks for the last frame with sound; `place` is that of the table of their parts.
bool readTypes(File& file, MovieHeader& header, std::uint64_t place, int typeBit) {
    Table table(file, place);
    for (int done = 0; done < header.wholeFrames;) {
        const int count = std::min(static_cast<int>(Table::kPiece), header.wholeFrames - done);
        const auto piece = table.next(static_cast<std::size_t>(count));
        if (!piece) return false;
        for (const std::byte parts : *piece) {
            if (std::to_integer<int>(parts) & typeBit) header.sound->lastFrame = done;
            ++done;
        }
    }
    return true;
}

} // namespace

std::optional<MovieHeader> readMovieHeader(File& file) {
    HeaderBytes bytes{};
    if (!file.seek(0) || file.read(bytes) != bytes.size() || !isMovie(bytes)) return std::nullopt;
    const std::uint32_t width = number(bytes, 0x04);
    const std::uint32_t height = number(bytes, 0x08);
    const std::uint32_t frames = number(bytes, 0x0C);
    const std::uint32_t flags = number(bytes, 0x14);
    const std::uint32_t treesSize = number(bytes, 0x34);
    const std::uint32_t maxHeight =
        flags & kDoubled ? MovieHeader::kMaxSide / 2 : MovieHeader::kMaxSide;
    if (width < 1 || width > MovieHeader::kMaxSide || height < 1 || height > maxHeight)
        return std::nullopt;
    if (frames < 1 || frames >= kMaxFrames || treesSize > kMaxTreesSize) return std::nullopt;

    MovieHeader header;
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(height);
    header.doubled = (flags & kDoubled) != 0;
    header.frames = static_cast<int>(frames);
    header.frameTime = frameTime(number(bytes, 0x10));
    header.treesSize = treesSize;
    if (header.frameTime == 0) return std::nullopt;

    const std::uint64_t stored = std::uint64_t{frames} + (flags & kRingFrame);
    const std::uint64_t types = kHeaderSize + 4 * stored;
    const std::uint64_t firstFrame = types + stored + treesSize;
    if (firstFrame > file.size() || !readSizes(file, header, firstFrame)) return std::nullopt;
    int typeBit = 0;
    header.sound = firstPlayableTrack(bytes, typeBit);
    if (header.sound && !readTypes(file, header, types, typeBit)) return std::nullopt;
    return header;
}

} // namespace platform
