#include "movies/makemovie.h"

#include "filesystem.h"
#include "manifest/givenfiles.h"
#include "movies/moviefile.h"
#include "movies/soundcoder.h"

#include <ostream>

namespace rsc {

namespace {

namespace fs = std::filesystem;

class MovieMaker {
  public:
    MovieMaker(const MovieOptions& options, std::ostream& notes)
        : options_(options), notes_(notes), sound_(readSound(options)),
          frames_(listFrameFiles(options.frames), options.colours) {}

    Bytes make() {
        movie_.width = frames_.width();
        movie_.height = frames_.height();
        movie_.frameTime = options_.frameTime;
        movie_.ring = options_.ring;
        addPictures();
        if (sound_) addSound(*sound_);
        return buildMovieFile(movie_);
    }

  private:
    static std::optional<MovieSound> readSound(const MovieOptions& options) {
        if (!options.sound) return std::nullopt;
        return onPath(*options.sound,
                      [&] { return readMovieSound(readWholeFile(*options.sound)); });
    }

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

    void addSound(const MovieSound& sound) {
        const CodedSound coded =
            codeSound(sound, frames_.count(), options_.frameTime, options_.packSound);
        movie_.track = {sound.rate, sound.channels, sound.bits, options_.packSound,
                        coded.largestChunk};
        for (std::size_t i = 0; i < coded.chunks.size(); ++i)
            movie_.frames[i].sound = coded.chunks[i];
        // who plays in rounds shows the ring frame in place of the first one
        if (options_.ring) movie_.frames.back().sound = coded.chunks.front();
        noteWhatIsLeftOut(coded.leftOut, sound.rate);
    }

    void noteWhatIsLeftOut(std::size_t samples, int rate) {
        const std::uint64_t hundredths = std::uint64_t{100} * samples / static_cast<unsigned>(rate);
        if (hundredths == 0) return;
        const std::string digits = std::to_string(hundredths % 100 + 100).substr(1);
        notes_ << options_.sound->string() << ": is longer than the pictures, its last "
               << hundredths / 100 << "." << digits << " seconds are left out\n";
    }

    const MovieOptions& options_;
    std::ostream& notes_;
    std::optional<MovieSound> sound_; ///< read first: a fault is told before the long work
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
