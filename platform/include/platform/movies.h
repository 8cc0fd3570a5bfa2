// Movies: pictures of 8 bits with a palette, and sound. Whoever plays one asks for each frame when
// its time has come; the sound goes to the machine's speaker by itself.
//
//     movie->run(true);
//     in every pass of the main loop, unless movie->wait():
//         if (movie->hasNewPalette()) use it
//         movie->doFrame();
//         show movie->picture() where movie->takeChanged() says so
//         at the last frame end, else movie->nextFrame();
#pragma once

#include "platform/display.h"
#include "platform/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {

/// What is told of a playback. Times in milliseconds of the platform's clock, amounts in bytes.
enum class MovieFact : std::uint8_t {
    PlaybackTime = 0, ///< from the first `run` on, without the time in which it did not run
    FrameTime = 1,    ///< in hundredths of a millisecond
    OpenTime = 2,
    FramesPlayed = 3,
    FramesSkipped = 4, ///< decoded but not shown, to keep up with the sound
    SoundSkips = 5,    ///< how often the sound ran dry
    BlitTime = 6,
    ReadTime = 7,
    DecompressTime = 8,
    ReadAheadTime = 9, ///< of reading in times of waiting
    ReadSpeed = 10,    ///< bytes a second; 0 while no time was spent
    SlowestTime = 11,
    SecondSlowestTime = 12,
    SlowestFrame = 13,
    SecondSlowestFrame = 14,
    AverageFrameSize = 15, ///< bytes in the file
    Unused16 = 16,
    Unused17 = 17,
    HighestMemory = 18,
    ExtraMemory = 19, ///< allocated for reading ahead
    HighestExtraUse = 20,
};
inline constexpr std::size_t kMovieFacts = 21;
using MovieSummary = std::array<std::uint32_t, kMovieFacts>;

/// An open movie; closed by destruction.
class Movie {
  public:
    virtual ~Movie() = default;

    [[nodiscard]] virtual int width() const = 0;      ///< pixels
    [[nodiscard]] virtual int height() const = 0;     ///< pixels
    [[nodiscard]] virtual int frameCount() const = 0; ///< at least 1
    /// Hundredths of a millisecond from frame to frame; at least 1.
    [[nodiscard]] virtual int frameTime() const = 0;
    /// The current frame: the next one to be decoded, or the one just decoded; from 0.
    [[nodiscard]] virtual int frame() const = 0;

    /// Time passes for the movie, and its sound plays, only while it runs. At first it does not.
    virtual void run(bool on) = 0;
    /// While it runs: whether it is not yet time for the current frame. Always true otherwise.
    [[nodiscard]] virtual bool wait() = 0;

    /// Whether the current frame has other colours than the one before, told before it is decoded;
    /// until `clearNewPalette`. The first frame's palette is new.
    [[nodiscard]] virtual bool hasNewPalette() const = 0;
    virtual void clearNewPalette() = 0;
    [[nodiscard]] virtual const std::array<Rgb, kPaletteSize>& palette() const = 0;

    /// Decodes the current frame into the picture and plays its sound. A frame that is damaged or
    /// missing leaves the picture as it is.
    virtual void doFrame() = 0;
    /// 8 bits, all zeros before the first frame.
    [[nodiscard]] virtual const Surface& picture() const = 0;
    /// The next rectangle of the picture that frames changed since it was asked last; none when
    /// there are no more. A frame that was skipped to keep up with the sound gives none, the next
    /// one gives its changes too.
    [[nodiscard]] virtual std::optional<Rect> takeChanged() = 0;

    /// Goes on to the next frame; the last one stays.
    virtual void nextFrame() = 0;
    /// Goes to a frame, kept between the first and the last: `doFrame` then gives its picture
    /// whole. The sound goes on with that of the frame's time.
    virtual void goTo(int frame) = 0;

    /// To be told how long it took to show what was decoded, for the summary.
    virtual void addBlitTime(std::uint32_t ms) = 0;
    [[nodiscard]] virtual MovieSummary summary() const = 0;
};

struct MovieRequest {
    static constexpr int kAutomaticExtra = -1;

    std::string_view path;             ///< as in Files
    bool preload = false;              ///< reads the whole file before it is played
    int extraBuffer = kAutomaticExtra; ///< bytes for reading ahead
};

class Movies {
  public:
    virtual ~Movies() = default;
    /// Null when there is no such file, when it is no movie or a damaged one, and always on
    /// machines that cannot play movies.
    [[nodiscard]] virtual std::unique_ptr<Movie> open(const MovieRequest& request) = 0;
};

} // namespace platform
