// All frames of a movie file in memory.
#pragma once

#include "formats/movie/moviedecoder.h"

#include <map>

namespace testing_support {

struct SeenFrame {
    formats::Bytes picture;
    formats::MoviePalette palette{};
    formats::Bytes sound; ///< of the first track
    bool isKey = false;
    bool hasPalette = false;
};

/// The good frames by their numbers; none when the trees are damaged. The head must be whole.
inline std::map<std::int64_t, SeenFrame> framesOf(formats::ByteSpan file) {
    const auto header = formats::readMovieHeader(file).value();
    const formats::ByteSpan tables = file.subspan(formats::MovieHeader::kSize);
    auto decoder = formats::MovieDecoder::make(
        header, tables.subspan(header.tablesSize(), header.treesSize), 0);
    std::map<std::int64_t, SeenFrame> frames;
    file = file.subspan(header.framesStart());
    std::int64_t number = 0;
    for (const auto& entry : formats::readMovieTables(tables.first(header.tablesSize()))) {
        if (!decoder || entry.size > file.size()) break;
        if (decoder->decode(file.first(entry.size), entry.contents))
            frames[number] = {decoder->picture(), decoder->palette(), decoder->sound(), entry.key,
                              (entry.contents & entry.kHasPalette) != 0};
        file = file.subspan(entry.size);
        ++number;
    }
    return frames;
}

/// The first picture is told whole, the others as changes. None when a tree has too many values.
inline std::optional<formats::Bytes> movieOf(std::uint32_t width,
                                             const std::vector<formats::Bytes>& pictures,
                                             const formats::Bytes& samples = {}) {
    formats::MovieHeader header{.width = width,
                                .height = static_cast<std::uint32_t>(pictures[0].size()) / width};
    header.setFrameTime(6666);
    header.setSound(0, {22050, 8, 1, true});
    formats::VideoCoder coder(static_cast<int>(width), static_cast<int>(header.height));
    for (const formats::Bytes& picture : pictures) coder.add(picture, &picture == pictures.data());
    const auto video = coder.finish();
    if (!video) return std::nullopt;
    std::vector<formats::MovieFrame> frames(pictures.size());
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i].picture = video->frames[i];
    frames[0].key = true;
    frames[0].palette = {1, 0xFF, 0xFF, 0}; // all stay as they are
    if (!samples.empty())
        frames[0].sounds[0] = formats::makeSoundChunk({22050, 8, 1, true}, samples);
    return formats::makeMovieFile(header, video->trees, frames);
}

} // namespace testing_support
