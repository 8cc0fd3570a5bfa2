#include "formats/movie/moviefile.h"

#include <algorithm>

namespace formats {

namespace {

constexpr std::string_view kMovieSignature = "SMK2";
constexpr std::string_view kLaterMovieSignature = "SMK4";
constexpr std::size_t kMovieUnit = 4;    ///< sizes of frames and trees are multiples of it
constexpr std::uint32_t kKeyFrame = 1;   ///< in a frame's size
constexpr std::uint32_t kSizeFlags = 3;  ///< all that may be there
constexpr std::int64_t kTicksOfMs = 100; ///< the frame time's other unit
constexpr std::int64_t kUsualFrameTime = 10000;

} // namespace

std::int64_t MovieHeader::frameTime() const {
    if (frameTimeField == 0) return kUsualFrameTime;
    const std::int64_t field = frameTimeField;
    return field > 0 ? field * kTicksOfMs : -field;
}

void MovieHeader::setFrameTime(int hundredths) {
    const auto ms = static_cast<int>(kTicksOfMs);
    frameTimeField = hundredths % ms == 0 ? hundredths / ms : -hundredths;
}

std::optional<MovieSoundFormat> MovieHeader::sound(std::size_t track) const {
    const std::uint32_t field = tracks[track];
    const auto rate = static_cast<int>(field & kRateMask);
    if ((field & kPresent) == 0 || rate == 0) return std::nullopt;
    return MovieSoundFormat{rate, field & k16Bits ? 16 : 8, field & kStereo ? 2 : 1,
                            (field & kPacked) != 0};
}

void MovieHeader::setSound(std::size_t track, const MovieSoundFormat& format) {
    tracks[track] = static_cast<std::uint32_t>(format.rate) | kPresent |
                    (format.packed ? kPacked : 0) | (format.bits == 16 ? k16Bits : 0) |
                    (format.channels == 2 ? kStereo : 0);
}

void MovieHeader::write(ByteWriter& out) const {
    out.text(later ? kLaterMovieSignature : kMovieSignature);
    out.u32(width).u32(height).u32(frames).u32(frameTimeField).u32(flags);
    for (const std::uint32_t size : largestChunks) out.u32(size);
    out.u32(treesSize);
    for (const std::uint32_t size : treeSizes) out.u32(size);
    for (const std::uint32_t track : tracks) out.u32(track);
    out.u32(0);
}

bool isMovie(ByteSpan file) {
    const std::string_view signature = ByteReader(file).text(kMovieSignature.size());
    return signature == kMovieSignature || signature == kLaterMovieSignature;
}

std::optional<MovieHeader> readMovieHeader(ByteSpan file) {
    if (!isMovie(file) || file.size() < MovieHeader::kSize) return std::nullopt;
    ByteReader in(file);
    MovieHeader header;
    header.later = in.text(kMovieSignature.size()) == kLaterMovieSignature;
    header.width = in.u32();
    header.height = in.u32();
    header.frames = in.u32();
    header.frameTimeField = in.i32();
    header.flags = in.u32();
    for (std::uint32_t& size : header.largestChunks) size = in.u32();
    header.treesSize = in.u32();
    for (std::uint32_t& size : header.treeSizes) size = in.u32();
    for (std::uint32_t& track : header.tracks) track = in.u32();
    return header;
}

std::vector<MovieFrameEntry> readMovieTables(ByteSpan tables) {
    std::vector<MovieFrameEntry> entries(tables.size() / 5);
    ByteReader in(tables);
    for (MovieFrameEntry& entry : entries) {
        const std::uint32_t field = in.u32();
        entry.size = field & ~kSizeFlags;
        entry.key = (field & kKeyFrame) != 0;
    }
    for (MovieFrameEntry& entry : entries) entry.contents = in.u8();
    return entries;
}

std::size_t MovieFrame::size() const {
    std::size_t size = palette.size() + picture.size();
    for (const Bytes& sound : sounds) size += sound.size();
    return (size + kMovieUnit - 1) / kMovieUnit * kMovieUnit;
}

Bytes MovieFrame::bytes() const {
    ByteWriter out;
    out.block(palette);
    for (const Bytes& sound : sounds) out.block(sound);
    return out.block(picture).padTo(kMovieUnit).take();
}

std::uint8_t MovieFrame::contents() const {
    std::uint8_t contents = palette.empty() ? 0 : MovieFrameEntry::kHasPalette;
    for (std::size_t track = 0; track < sounds.size(); ++track)
        if (!sounds[track].empty()) contents |= MovieFrameEntry::hasSound(track);
    return contents;
}

Bytes makeMovieFile(MovieHeader header, Bytes trees, std::span<const MovieFrame> frames) {
    trees.resize((trees.size() + kMovieUnit - 1) / kMovieUnit * kMovieUnit);
    header.frames = static_cast<std::uint32_t>(frames.size() - (header.hasRing() ? 1 : 0));
    header.treesSize = static_cast<std::uint32_t>(trees.size());
    ByteWriter file;
    ByteWriter contents;
    ByteWriter all;
    header.write(file);
    for (const MovieFrame& frame : frames) {
        const Bytes bytes = frame.bytes();
        file.u32(static_cast<std::int64_t>(bytes.size()) | (frame.key ? kKeyFrame : 0));
        contents.u8(frame.contents());
        all.block(bytes);
    }
    return file.block(contents.bytes()).block(trees).block(all.bytes()).take();
}

} // namespace formats
