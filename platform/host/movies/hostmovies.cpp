#include "platform/host/movies/hostmovies.h"

#include "platform/host/movies/hostmovie.h"

#include <utility>

namespace platform {

const bool HostMovies::kAvailable = true;

std::unique_ptr<Movie> HostMovies::open(const MovieRequest& request) {
    const std::uint32_t start = clock_.milliseconds();
    std::unique_ptr<File> file = files_.open(request.path, OpenMode::Read);
    if (!file) return nullptr;
    const auto header = readMovieHeader(*file);
    if (!header) return nullptr;
    MovieParts parts;
    parts.header = *header;
    parts.file = std::make_unique<MovieFile>(
        std::move(file), MovieFile::Request{request.preload, request.extraBuffer}, clock_);
    parts.decoder = MovieDecoder::open(*parts.file, *header, clock_);
    if (!parts.decoder) return nullptr;
    if (header->sound) parts.sound.emplace(*header->sound, speakers_.make());
    return std::make_unique<HostMovie>(std::move(parts), clock_, start);
}

} // namespace platform
