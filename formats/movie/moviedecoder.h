// What is seen and heard of a movie, frame by frame.
#pragma once

#include "formats/movie/moviefile.h"
#include "formats/movie/videodecoder.h"

namespace formats {

class MovieDecoder {
  public:
    /// The picture has the header's width and height, which must have been checked. `track` is the
    /// one that is heard, if there is any. None when the trees are damaged.
    [[nodiscard]] static std::optional<MovieDecoder> make(const MovieHeader& header, ByteSpan trees,
                                                          std::optional<std::size_t> track);

    /// Decodes the bytes of the next frame. False when it is damaged; picture and palette stay as
    /// they were then.
    bool decode(ByteSpan frame, std::uint8_t contents);
    /// For a frame that is missing.
    void forgetSound() { sound_.clear(); }
    /// All is as before the first frame.
    void rewind();

    /// Row by row from the top left; all zeros at first.
    [[nodiscard]] const Bytes& picture() const { return picture_; }
    [[nodiscard]] const MoviePalette& palette() const { return palette_; }
    /// What came with the frame, in whole samples of all channels.
    [[nodiscard]] const Bytes& sound() const { return sound_; }

  private:
    MovieDecoder(VideoDecoder video, std::size_t pixels)
        : video_(std::move(video)), picture_(pixels) {}
    [[nodiscard]] bool readSounds(ByteReader& in, ByteSpan frame, std::uint8_t contents);

    VideoDecoder video_;
    std::size_t track_ = kMovieTracks;
    MovieSoundFormat format_;
    Bytes picture_;
    Bytes next_;                 ///< a picture that is being drawn
    MoviePalette palette_{};     ///< of the last good frame
    MoviePalette nextPalette_{}; ///< of the next good one
    Bytes sound_;
};

} // namespace formats
