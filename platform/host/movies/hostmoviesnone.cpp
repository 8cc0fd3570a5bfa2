// Built where the library for movies is missing.
#include "platform/host/movies/hostmovies.h"

#include "platform/host/movies/nomovies.h"

namespace platform {

const bool HostMovies::kAvailable = false;

std::unique_ptr<Movie> HostMovies::open(const MovieRequest& request) {
    return NoMovies().open(request);
}

} // namespace platform
