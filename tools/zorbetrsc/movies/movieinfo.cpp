#include "movies/movieinfo.h"

#include "refusal.h"
#include "text.h"

#include "formats/movie/moviefile.h"

namespace rsc {

namespace {

void checkSize(const formats::MovieHeader& header, ByteSpan file) {
    std::uint64_t end = header.framesStart();
    if (end <= file.size())
        for (const auto& entry : formats::readMovieTables(
                 file.subspan(formats::MovieHeader::kSize, header.tablesSize())))
            end += entry.size;
    if (end > file.size()) throw Refusal("the movie is cut off");
}

/// In milliseconds, with two digits behind the point.
std::string frameTimeText(std::int64_t hundredths) {
    const std::string digits = std::to_string(hundredths % 100 + 100).substr(1);
    return std::to_string(hundredths / 100) + "." + digits;
}

std::string soundText(const formats::MovieSoundFormat& format) {
    return ", sound of " + std::to_string(format.rate) + " Hz, " + std::to_string(format.bits) +
           " bits, " + (format.channels == 2 ? "stereo" : "mono") +
           (format.packed ? ", packed" : "");
}

} // namespace

bool isMovieFile(ByteSpan file) { return formats::isMovie(file); }

std::string describeMovie(ByteSpan file) {
    const auto header = formats::readMovieHeader(file);
    if (!header) throw Refusal("the movie is cut off");
    checkSize(*header, file);
    std::string text = std::to_string(header->width) + "x" + std::to_string(header->shownHeight()) +
                       ", " + counted(header->frames, "frame") + " of " +
                       frameTimeText(header->frameTime()) + " ms";
    if (header->hasRing()) text += ", a ring frame";
    for (std::size_t track = 0; track < formats::kMovieTracks; ++track)
        if (const auto format = header->sound(track)) text += soundText(*format);
    return text;
}

} // namespace rsc
