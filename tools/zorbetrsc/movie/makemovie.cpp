#include "movie/makemovie.h"

#include "filesystem.h"
#include "givenfiles.h"
#include "movie/moviefile.h"
#include "movie/soundcoder.h"

#include <ostream>

namespace rsc {

namespace {

namespace fs = std::filesystem;

class MovieMaker {
  public:
    MovieMaker(const MovieOptions& options, std::ostream& notes)
        : options_(options), notes_(notes),
          frames_(listFrameFiles(options.frames), options.colours) {}

    Bytes make() {
        movie_.width = frames_.width();
        movie_.height = frames_.height();
        movie_.frameTime = options_.frameTime;
        movie_.ring = options_.ring;
        addPictures();
        if (options_.sound) addSound(*options_.sound);
        return buildMovieFile(movie_);
    }

  private:
    void addPictures() {
        VideoCoder video(frames_.width(), frames_.height());
        for (std::size_t i = 0; i < frames_.count(); ++i) {
            const Palette* palette = frames_.newPalette(i);
            // where the colours change a scene begins, which does not need what was before
            video.add(frames_.indices(i), palette != nullptr);
            movie_.frames.push_back({palette, palette != nullptr, {}});
        }
        if (options_.ring) {
            video.add(frames_.indices(0), false);
            movie_.frames.push_back({frames_.newPalette(0), false, {}});
        }
        movie_.video = video.finish();
    }

    void addSound(const fs::path& file) {
        const WavSound sound = onPath(file, [&] { return readWav(readWholeFile(file)); });
        const CodedSound coded =
            codeSound(sound, frames_.count(), options_.frameTime, options_.packSound);
        movie_.track = {sound.rate, sound.channels, sound.bits, options_.packSound,
                        coded.largestChunk};
        for (std::size_t i = 0; i < coded.chunks.size(); ++i)
            movie_.frames[i].sound = coded.chunks[i];
        // who plays in rounds shows the ring frame in place of the first one
        if (options_.ring) movie_.frames.back().sound = coded.chunks.front();
        const auto leftOut = std::uint64_t{100} * coded.leftOut / static_cast<unsigned>(sound.rate);
        if (leftOut > 0)
            notes_ << file.string() << ": is longer than the pictures, its last " << leftOut / 100
                   << (leftOut % 100 < 10 ? ".0" : ".") << leftOut % 100
                   << " seconds are left out\n";
    }

    const MovieOptions& options_;
    std::ostream& notes_;
    MovieFrames frames_;
    MovieParts movie_;
};

} // namespace

Bytes makeMovie(const MovieOptions& options, std::ostream& notes) {
    return MovieMaker(options, notes).make();
}

int runMovie(const MovieOptions& options, std::ostream& errors) {
    try {
        const fs::path folder = options.output.parent_path();
        writeFiles(folder.empty() ? fs::path(".") : folder,
                   {{options.output.filename().string(), makeMovie(options, errors)}});
        return 0;
    } catch (const Refusal& refusal) {
        errors << refusal.what() << "\n";
        return 1;
    }
}

} // namespace rsc
