#include "movies/moviefile.h"

#include "filesystem.h"
#include "movies/moviecolours.h"

namespace rsc {

namespace {

constexpr std::size_t kUnit = 4;           ///< sizes of frames and trees are multiples of it
constexpr std::uint32_t kKeyFrame = 1;     ///< in a frame's size
constexpr std::uint8_t kHasPalette = 1;    ///< in what a frame has
constexpr std::uint8_t kHasSound = 2;      ///< of the first track
constexpr std::uint32_t kTicksOfMs = 100;  ///< the frame time's other unit
constexpr std::size_t kPaletteChunk = 772; ///< its length, 256 colours and zeros up to a unit

void fillUnit(Bytes& out) {
    while (out.size() % kUnit != 0) put8(out, 0);
}

void append(Bytes& out, ByteSpan bytes) { out.insert(out.end(), bytes.begin(), bytes.end()); }

/// All 256 entries, so that it does not matter which came before.
void putPalette(Bytes& out, const Palette& palette) {
    const std::size_t end = out.size() + kPaletteChunk;
    put8(out, kPaletteChunk / kUnit);
    for (const platform::Rgb colour : palette.stored())
        for (const std::uint8_t component : {colour.red, colour.green, colour.blue})
            put8(out, toMovieComponent(component));
    out.resize(end);
}

Bytes frameData(const MovieFrame& frame, ByteSpan video) {
    Bytes data;
    if (frame.palette) putPalette(data, *frame.palette);
    append(data, frame.sound);
    append(data, video);
    fillUnit(data);
    return data;
}

std::uint32_t frameTimeField(int frameTime) {
    const auto ticks = static_cast<std::uint32_t>(frameTime);
    return ticks % kTicksOfMs == 0 ? ticks / kTicksOfMs : 0 - ticks;
}

std::uint32_t soundFormatField(const SoundTrack& track) {
    return static_cast<std::uint32_t>(track.rate) | MovieHeader::kPresent |
           (track.packed ? MovieHeader::kPacked : 0) |
           (track.bits == 16 ? MovieHeader::k16Bits : 0) |
           (track.channels == 2 ? MovieHeader::kStereo : 0);
}

/// The first track's number; the others are not there.
void putTracks(Bytes& out, std::size_t first) {
    put32(out, first);
    out.resize(out.size() + (MovieHeader::kTracks - 1) * 4);
}

Bytes makeHeader(const MovieParts& parts, std::size_t treesSize) {
    Bytes out(kMovieSignature.begin(), kMovieSignature.end());
    put32(out, static_cast<std::size_t>(parts.width));
    put32(out, static_cast<std::size_t>(parts.height));
    put32(out, parts.frames.size() - (parts.ring ? 1 : 0));
    put32(out, frameTimeField(parts.frameTime));
    put32(out, parts.ring ? MovieHeader::kRingFlag : 0);
    putTracks(out, parts.track ? parts.track->largestChunk : 0);
    put32(out, treesSize);
    for (const std::uint32_t size : parts.video.treeSizes) put32(out, size);
    putTracks(out, parts.track ? soundFormatField(*parts.track) : 0);
    put32(out, 0);
    return out;
}

} // namespace

Bytes buildMovieFile(const MovieParts& parts) {
    Bytes trees = parts.video.trees;
    fillUnit(trees);
    Bytes file = makeHeader(parts, trees.size());
    Bytes contents;
    Bytes frames;
    for (std::size_t i = 0; i < parts.frames.size(); ++i) {
        const MovieFrame& frame = parts.frames[i];
        const Bytes data = frameData(frame, parts.video.frames[i]);
        put32(file, data.size() | (frame.key ? kKeyFrame : 0));
        put8(contents, (frame.palette ? kHasPalette : 0) | (frame.sound.empty() ? 0 : kHasSound));
        append(frames, data);
        if (frames.size() > kLargestFile) throw Refusal("the movie becomes larger than 1 GiB");
    }
    append(file, contents);
    append(file, trees);
    append(file, frames);
    return file;
}

} // namespace rsc
