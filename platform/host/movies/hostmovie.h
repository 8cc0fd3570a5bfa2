// The movies of every back end. One that is played: when its frames are due, what is shown of them,
// what is told of it. Each frame is decoded as soon as it is the current one, so that its colours
// are known before it is due and its sound is queued in time.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/host/movies/changedblocks.h"
#include "platform/host/movies/movieclock.h"
#include "platform/host/movies/moviefile.h"
#include "platform/host/movies/movieframes.h"
#include "platform/host/movies/moviesound.h"
#include "platform/host/sound/moviespeaker.h"
#include "platform/movies.h"

#include <memory>
#include <optional>

namespace platform {

/// What a movie is made of; only the sound may be missing.
struct MovieParts {
    MovieFacts facts;
    std::unique_ptr<MovieFile> file;
    std::unique_ptr<MovieFrames> frames; ///< of the file
    std::optional<MovieSound> sound;
};

class HostMovie final : public Movie {
  public:
    /// `start` is when its opening began. The clock must outlive the movie.
    HostMovie(MovieParts parts, const Clock& clock, std::uint32_t start);

    [[nodiscard]] int width() const override { return picture_.width(); }
    [[nodiscard]] int height() const override { return picture_.height(); }
    [[nodiscard]] int frameCount() const override { return facts_.frames; }
    [[nodiscard]] int frameTime() const override { return facts_.frameTime; }
    [[nodiscard]] int frame() const override { return frame_; }

    void run(bool on) override;
    [[nodiscard]] bool wait() override;

    [[nodiscard]] bool hasNewPalette() const override { return newPalette_; }
    void clearNewPalette() override { newPalette_ = false; }
    [[nodiscard]] const MoviePalette& palette() const override { return frames_->palette(); }

    void doFrame() override;
    [[nodiscard]] const Surface& picture() const override { return picture_; }
    [[nodiscard]] std::optional<Rect> takeChanged() override;

    void nextFrame() override;
    void goTo(int frame) override;

    void addBlitTime(std::uint32_t ms) override;
    [[nodiscard]] MovieSummary summary() const override;

  private:
    /// The frames that took longest.
    struct SlowestFrames {
        struct Time {
            std::uint32_t ms = 0;
            std::uint32_t frame = 0;
        };
        void add(std::uint32_t ms, int frame);

        Time first;
        Time second;
    };

    void decode();
    void addSound();
    void decodeUntil(int frame);
    /// Of the movie, from its start on, when a frame is due.
    [[nodiscard]] double seconds(int frame) const;
    void takePicture();
    void compareRow(int y, const std::uint8_t* line);
    [[nodiscard]] bool mustSkip() const;
    void endFrame();
    [[nodiscard]] std::uint64_t highestMemory() const;

    MovieFacts facts_;
    std::unique_ptr<MovieFile> file_;
    std::unique_ptr<MovieFrames> frames_;
    std::optional<MovieSound> sound_;
    const Clock& clock_;
    MovieClock time_;

    Surface picture_;
    ChangedBlocks changed_;
    int frame_ = 0;
    bool done_ = false;   ///< the current frame was asked for
    bool whole_ = true;   ///< the picture is to be given whole
    bool hidden_ = false; ///< the frame was skipped
    bool newPalette_ = true;
    int skippedInARow_ = 0;

    std::uint32_t openMs_ = 0;
    std::uint32_t frameMs_ = 0; ///< spent on the current frame
    std::uint32_t played_ = 0;
    std::uint32_t skipped_ = 0;
    std::uint32_t blitMs_ = 0;
    SlowestFrames slowest_;
};

class HostMovies final : public Movies {
  public:
    /// All must outlive the movies.
    HostMovies(Files& files, const Clock& clock, MovieSpeakers& speakers)
        : files_(files), clock_(clock), speakers_(speakers) {}

    [[nodiscard]] std::unique_ptr<Movie> open(const MovieRequest& request) override;

  private:
    Files& files_;
    const Clock& clock_;
    MovieSpeakers& speakers_;
};

} // namespace platform
