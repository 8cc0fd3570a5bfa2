#include "movies/movieinfo.h"

#include "movies/moviefile.h"
#include "text.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::uint32_t kSizeMask = ~std::uint32_t{3}; ///< of a frame's size; the rest are flags
constexpr std::size_t kTableEntry = 5;                 ///< bytes for a frame: size, contents
constexpr int kNormalRate = 10;                        ///< frames a second when it says 0

class MovieDescriber {
  public:
    explicit MovieDescriber(ByteSpan file) : in_(file, "the movie is cut off") {}

    std::string describe() const {
        checkSize();
        std::string text =
            std::to_string(in_.u32(MovieHeader::kWidth)) + "x" + std::to_string(shownHeight()) +
            ", " + counted(in_.u32(MovieHeader::kFrames), "frame") + " of " + frameTime() + " ms";
        if (hasRing()) text += ", a ring frame";
        for (std::size_t track = 0; track < MovieHeader::kTracks; ++track)
            text += sound(in_.u32(MovieHeader::kSoundFormat + track * 4));
        return text;
    }

  private:
    [[nodiscard]] bool hasFlag(std::uint32_t flags) const {
        return (in_.u32(MovieHeader::kFlags) & flags) != 0;
    }
    [[nodiscard]] bool hasRing() const { return hasFlag(MovieHeader::kRingFlag); }

    [[nodiscard]] std::uint64_t shownHeight() const {
        const std::uint64_t height = in_.u32(MovieHeader::kHeight);
        return hasFlag(MovieHeader::kDoubledFlags) ? 2 * height : height;
    }

    void checkSize() const {
        const std::size_t frames = std::size_t{in_.u32(MovieHeader::kFrames)} + (hasRing() ? 1 : 0);
        std::size_t end = MovieHeader::kSize + frames * kTableEntry;
        (void)in_.slice(0, end);
        end += in_.u32(MovieHeader::kTreesSize);
        for (std::size_t i = 0; i < frames; ++i)
            end += in_.u32(MovieHeader::kSize + i * 4) & kSizeMask;
        (void)in_.slice(0, end);
    }

    /// In milliseconds, with two digits behind the point.
    [[nodiscard]] std::string frameTime() const {
        const auto field = static_cast<std::int32_t>(in_.u32(MovieHeader::kFrameTime));
        std::int64_t ticks = 100'000 / kNormalRate;
        if (field > 0) ticks = std::int64_t{field} * 100;
        if (field < 0) ticks = -std::int64_t{field};
        const std::string digits = std::to_string(ticks % 100 + 100).substr(1);
        return std::to_string(ticks / 100) + "." + digits;
    }

    /// Empty for a track that is not there.
    static std::string sound(std::uint32_t format) {
        const std::uint32_t rate = format & MovieHeader::kRateMask;
        if ((format & MovieHeader::kPresent) == 0 || rate == 0) return {};
        return ", sound of " + std::to_string(rate) + " Hz, " +
               ((format & MovieHeader::k16Bits) != 0 ? "16" : "8") + " bits, " +
               ((format & MovieHeader::kStereo) != 0 ? "stereo" : "mono") +
               ((format & MovieHeader::kPacked) != 0 ? ", packed" : "");
    }

    ByteReader in_;
};

} // namespace

bool isMovieFile(ByteSpan file) {
    const auto startsWith = [&](std::string_view text) {
        return file.size() >= text.size() && std::ranges::equal(file.first(text.size()), text);
    };
    return startsWith(kMovieSignature) || startsWith(kLaterMovieSignature);
}

std::string describeMovie(ByteSpan file) { return MovieDescriber(file).describe(); }

} // namespace rsc
