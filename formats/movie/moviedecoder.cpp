#include "formats/movie/moviedecoder.h"

#include <algorithm>

namespace formats {

std::optional<MovieDecoder> MovieDecoder::make(const MovieHeader& header, ByteSpan trees,
                                               std::optional<std::size_t> track) {
    auto video = VideoDecoder::make(static_cast<int>(header.width), static_cast<int>(header.height),
                                    header.later, trees);
    if (!video) return std::nullopt;
    MovieDecoder decoder(*std::move(video), std::size_t{header.width} * header.height);
    const auto format = track ? header.sound(*track) : std::nullopt;
    if (format) {
        decoder.track_ = *track;
        decoder.format_ = *format;
    }
    return decoder;
}

bool MovieDecoder::decode(ByteSpan frame, std::uint8_t contents) {
    sound_.clear();
    ByteReader in(frame);
    const bool hasPalette = (contents & MovieFrameEntry::kHasPalette) != 0;
    if (hasPalette && !readPaletteChunk(in, nextPalette_)) return false;
    if (!readSounds(in, frame, contents) || in.remaining() == 0) return false;
    next_ = picture_;
    if (!video_.draw(frame.subspan(in.position()), next_)) return false;
    std::swap(picture_, next_);
    palette_ = nextPalette_;
    return true;
}

/// False when a chunk has an impossible length. One whose samples are damaged is just not heard.
bool MovieDecoder::readSounds(ByteReader& in, ByteSpan frame, std::uint8_t contents) {
    for (std::size_t track = 0; track < kMovieTracks; ++track) {
        if ((contents & MovieFrameEntry::hasSound(track)) == 0) continue;
        const std::size_t size = in.u32();
        const std::size_t begin = in.position();
        if (size <= kSoundLengthSize) return false;
        in.skip(size - kSoundLengthSize);
        if (!in.ok()) return false;
        if (track != track_) continue;
        auto samples = readSoundChunk(format_, frame.subspan(begin, in.position() - begin));
        if (samples) sound_ = *std::move(samples);
    }
    return true;
}

void MovieDecoder::rewind() {
    std::ranges::fill(picture_, std::uint8_t{0});
    palette_ = nextPalette_ = {};
    sound_.clear();
}

} // namespace formats
