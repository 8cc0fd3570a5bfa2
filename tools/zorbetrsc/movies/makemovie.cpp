#include "movies/makemovie.h"

#include "filesystem.h"
#include "manifest/givenfiles.h"
#include "movies/moviesound.h"

#include "formats/movie/moviefile.h"

#include <algorithm>
#include <ostream>

namespace rsc {

namespace {

namespace fs = std::filesystem;

formats::MoviePalette movieColours(const Colours& colours) {
    formats::MoviePalette palette;
    std::ranges::transform(colours, palette.begin(), [](platform::Rgb colour) {
        return formats::MovieColour{colour.red, colour.green, colour.blue};
    });
    return palette;
}

class MovieMaker {
  public:
    MovieMaker(const MovieOptions& options, std::ostream& notes)
        : options_(options), notes_(notes), sound_(readSound(options)),
          frames_(listFrameFiles(options.frames), options.colours) {}

    Bytes make() {
        header_.width = static_cast<std::uint32_t>(frames_.width());
        header_.height = static_cast<std::uint32_t>(frames_.height());
        header_.setFrameTime(options_.frameTime);
        header_.flags = options_.ring ? formats::MovieHeader::kRingFlag : 0;
        const Bytes trees = addPictures();
        if (sound_) addSound(*sound_);
        std::size_t size = 0;
        for (const formats::MovieFrame& frame : movie_) size += frame.size();
        if (size > kLargestFile) throw Refusal("the movie becomes larger than 1 GiB");
        return formats::makeMovieFile(header_, trees, movie_);
    }

  private:
    static std::optional<MovieSound> readSound(const MovieOptions& options) {
        if (!options.sound) return std::nullopt;
        MovieSound sound =
            onPath(*options.sound, [&] { return readMovieSound(readWholeFile(*options.sound)); });
        sound.format.packed = !options.unpacked;
        return sound;
    }

    /// Returns the trees of their codes.
    Bytes addPictures() {
        formats::VideoCoder video(frames_.width(), frames_.height());
        for (std::size_t i = 0; i < frames_.count(); ++i) {
            const Palette* palette = frames_.newPalette(i);
            // where the colours change a scene begins, which does not need what was before
            video.add(frames_.indices(i), palette != nullptr);
            addFrame(palette, palette != nullptr);
        }
        if (options_.ring) {
            video.add(frames_.indices(0), false);
            addFrame(frames_.newPalette(0), false);
        }
        auto coded = video.finish();
        if (!coded)
            throw Refusal("the pictures hold nearly all pairs of neighbouring colours that there "
                          "are; use fewer colours");
        for (std::size_t i = 0; i < movie_.size(); ++i)
            movie_[i].picture = std::move(coded->frames[i]);
        header_.treeSizes = coded->treeSizes;
        return coded->trees;
    }

    void addFrame(const Palette* palette, bool isKey) {
        formats::MovieFrame& frame = movie_.emplace_back();
        frame.key = isKey;
        if (palette) frame.palette = formats::makePaletteChunk(movieColours(palette->stored()));
    }

    void addSound(const MovieSound& sound) {
        const formats::CodedSound coded =
            formats::codeSound(sound.format, sound.samples, frames_.count(), options_.frameTime);
        header_.setSound(0, sound.format);
        header_.largestChunks[0] = static_cast<std::uint32_t>(coded.largestChunk);
        for (std::size_t i = 0; i < coded.chunks.size(); ++i) movie_[i].sounds[0] = coded.chunks[i];
        // who plays in rounds shows the ring frame in place of the first one
        if (options_.ring) movie_.back().sounds[0] = coded.chunks.front();
        noteWhatIsLeftOut(coded.leftOut, sound.format.rate);
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
    formats::MovieHeader header_;
    std::vector<formats::MovieFrame> movie_;
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
