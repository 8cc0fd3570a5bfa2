// Movies made of pixels, colours and samples; recordings of samples.
#pragma once

#include "formats/movie/moviefile.h"
#include "formats/sound/wave.h"

#include <map>
#include <string>

namespace testing_support {

/// To the byte.
inline std::string recordingOf(const formats::sound::Format& format, formats::Bytes samples) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    const formats::Bytes head = formats::sound::riffHead(format, size);
    samples.insert(samples.begin(), head.begin(), head.end());
    samples.resize(samples.size() + size % 2);
    return {samples.begin(), samples.end()};
}

struct MovieBuilder {
    struct Frame {
        formats::Bytes pixels; ///< width × height, top row first
        std::optional<formats::MoviePalette> palette{};
        std::map<std::size_t, formats::Bytes> sounds{}; ///< by track
    };
    int width = 16, height = 8; ///< multiples of 4
    int frameTime = 6666;
    std::uint32_t flags = 0;
    std::map<std::size_t, formats::MovieSoundFormat> tracks{};
    std::uint32_t otherCodecs = 0; ///< of track 0
    std::vector<Frame> frames{};
    std::optional<Frame> ring{};

    // Places in the file, known after `build`: of the first frame, and the ends of all.
    std::size_t start = 0;
    std::vector<std::size_t> ends{};

    [[nodiscard]] formats::Bytes build() {
        formats::MovieHeader header{.width = static_cast<std::uint32_t>(width),
                                    .height = static_cast<std::uint32_t>(height),
                                    .flags = flags | (ring ? 1U : 0U)};
        header.setFrameTime(frameTime);
        for (const auto& [number, format] : tracks) header.setSound(number, format);
        header.tracks[0] |= otherCodecs;
        std::vector<Frame> stored = frames;
        if (ring) stored.push_back(*ring);
        formats::VideoCoder coder(width, height);
        for (const Frame& frame : stored) coder.add(frame.pixels, false);
        const formats::CodedVideo video = coder.finish().value();
        std::vector<formats::MovieFrame> made(stored.size());
        for (std::size_t i = 0; i < stored.size(); ++i) {
            made[i].picture = video.frames[i];
            if (stored[i].palette) made[i].palette = makePaletteChunk(*stored[i].palette);
            for (const auto& [number, samples] : stored[i].sounds)
                made[i].sounds[number] = makeSoundChunk(tracks.at(number), samples);
        }
        const formats::Bytes file = makeMovieFile(header, video.trees, made);
        start = formats::readMovieHeader(file)->framesStart();
        ends = {start + made[0].size()};
        for (std::size_t i = 1; i < made.size(); ++i) ends.push_back(ends[i - 1] + made[i].size());
        return file;
    }
};

} // namespace testing_support
