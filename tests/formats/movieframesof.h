// All frames of a movie file in memory.
#pragma once

#include "formats/movie/moviedecoder.h"

#include <map>

namespace testing_support {

struct SeenFrame {
    formats::Bytes picture;
    formats::MoviePalette palette{};
    formats::Bytes sound; ///< of the first track
};

/// The good frames by their numbers.
inline std::map<std::int64_t, SeenFrame> framesOf(formats::ByteSpan file) {
    const auto header = formats::readMovieHeader(file).value();
    const formats::ByteSpan tables = file.subspan(formats::MovieHeader::kSize);
    auto decoder = formats::MovieDecoder::make(
        header, tables.subspan(header.tablesSize(), header.treesSize), 0);
    std::map<std::int64_t, SeenFrame> frames;
    std::size_t at = header.framesStart();
    std::int64_t number = 0;
    for (const auto& entry : formats::readMovieTables(tables.first(header.tablesSize()))) {
        if (decoder.value().decode(file.subspan(at, entry.size), entry.contents))
            frames[number] = {decoder->picture(), decoder->palette(), decoder->sound()};
        at += entry.size;
        ++number;
    }
    return frames;
}

} // namespace testing_support
