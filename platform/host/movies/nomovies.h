// The movies of a machine that cannot play any.
#pragma once

#include "platform/movies.h"

namespace platform {

class NoMovies final : public Movies {
  public:
    [[nodiscard]] std::unique_ptr<Movie> open(const MovieRequest&) override { return nullptr; }
};

} // namespace platform
