// The movies of every back end.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/host/sound/moviespeaker.h"
#include "platform/movies.h"

namespace platform {

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
