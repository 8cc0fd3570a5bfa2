#include "platform/host/movies/hostmovies.h"

#include "platform/host/movies/hostmovie.h"

#include <utility>

namespace platform {

std::unique_ptr<Movie> HostMovies::open(const MovieRequest& request) {
    const std::uint32_t start = clock_.milliseconds();
    std::unique_ptr<File> file = files_.open(request.path, OpenMode::Read);
    if (!file) return nullptr;
    const auto facts = MovieFacts::read(*file);
    if (!facts) return nullptr;
    MovieParts parts;
    parts.facts = *facts;
    parts.file = std::make_unique<MovieFile>(
        std::move(file), MovieFile::Request{request.preload, request.extraBuffer}, clock_);
    parts.frames = MovieFrames::open(*parts.file, *facts, clock_);
    if (!parts.frames) return nullptr;
    if (facts->track) {
        const auto format = *facts->header.sound(*facts->track);
        parts.sound.emplace(SoundFormat{format.rate, format.bits, format.channels},
                            parts.frames->lastFrameWithSound(), speakers_.make());
    }
    return std::make_unique<HostMovie>(std::move(parts), clock_, start);
}

} // namespace platform
