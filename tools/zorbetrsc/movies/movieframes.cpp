#include "movies/movieframes.h"

#include "filesystem.h"
#include "formats/base/latin1.h"
#include "manifest/givenfiles.h"
#include "pictures/picture.h"
#include "text.h"

#include "formats/movie/blocks.h"

#include <algorithm>

namespace rsc {

namespace {

namespace fs = std::filesystem;
using formats::kBlockSide;
using platform::Rgb;

constexpr int kLargestMovieSide = 4096; ///< of movies that the program shows

Picture readPicture(const fs::path& path) {
    return onPath(path, [&] { return Picture::fromPng(readWholeFile(path)); });
}

std::string sizeText(int width, int height) {
    return std::to_string(width) + "x" + std::to_string(height) + " pixels";
}

void checkMovieSize(const Picture& picture) {
    const int width = picture.width();
    const int height = picture.height();
    if (width % kBlockSide != 0 || height % kBlockSide != 0)
        throw Refusal("the picture has " + sizeText(width, height) +
                      "; both must be multiples of 4 in a movie");
    if (std::max(width, height) > kLargestMovieSide)
        throw Refusal("the picture has " + sizeText(width, height) + ", allowed is at most " +
                      sizeText(kLargestMovieSide, kLargestMovieSide));
}

/// Whether the pictures given to it are indexed and have one palette. Programs that write pictures
/// may leave out the last entries when no pixel has them.
class SharedPalette {
  public:
    void add(const Picture& picture) {
        const std::vector<Pixel>& other = picture.palette();
        const std::size_t both = std::min(colours_.size(), other.size());
        for (std::size_t i = 0; i < both; ++i) isShared_ &= colours_[i] == other[i].colour;
        for (std::size_t i = both; i < other.size(); ++i) colours_.push_back(other[i].colour);
        isShared_ &= picture.isIndexed();
    }

    [[nodiscard]] bool isShared() const { return isShared_; }
    [[nodiscard]] Colours colours() const {
        Colours all{};
        std::ranges::copy(colours_, all.begin());
        return all;
    }

  private:
    bool isShared_ = true;
    std::vector<Rgb> colours_; ///< at most 256
};

/// Where each scene ends, when these frames, counted from 1, begin new ones.
std::vector<std::size_t> sceneEnds(const std::vector<int>& starts, std::size_t frames) {
    std::vector<std::size_t> ends = {frames};
    for (const int start : starts) {
        if (start < 2 || static_cast<std::size_t>(start) > frames)
            throw Refusal("--palette-at " + std::to_string(start) + ": the frames are 1 to " +
                          std::to_string(frames) + ", and the first one has a palette anyway");
        ends.push_back(static_cast<std::size_t>(start) - 1);
    }
    std::ranges::sort(ends);
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    return ends;
}

/// Takes the number that a name begins with, without its leading zeros; empty when there is none.
std::string_view takeNumber(std::string_view& name) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto* const end = std::ranges::find_if_not(name, isDigit);
    std::string_view digits(name.begin(), end);
    name.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

bool comesBefore(const fs::path& first, const fs::path& second) {
    const std::string firstName = first.filename().string();
    const std::string secondName = second.filename().string();
    std::string_view a = firstName;
    std::string_view b = secondName;
    while (!a.empty() && !b.empty()) {
        const std::string_view m = takeNumber(a);
        const std::string_view n = takeNumber(b);
        if (m != n) return std::pair(m.size(), m) < std::pair(n.size(), n);
        if (a.empty() || b.empty() || a.front() != b.front()) break;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return a != b ? a < b : firstName < secondName;
}

void addFolder(const fs::path& folder, std::vector<fs::path>& files) {
    const auto before = std::ssize(files);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error))
        if (formats::lowerAscii(entry.path().extension().string()) == ".png")
            files.push_back(entry.path());
    if (error) throw Refusal(folder.string() + ": cannot be read: " + error.message());
    if (std::ssize(files) == before) throw Refusal(folder.string() + ": holds no PNG files");
    std::sort(files.begin() + before, files.end(), comesBefore);
}

} // namespace

MovieFrames::MovieFrames(std::vector<fs::path> files, const MovieColourOptions& options)
    : files_(std::move(files)), remap_(options.remap) {
    const Picture picture = readPicture(files_.front());
    onPath(files_.front(), [&] { checkMovieSize(picture); });
    width_ = picture.width();
    height_ = picture.height();
    if (options.palette) {
        const Picture chosen = readPicture(*options.palette);
        const Palette palette = onPath(
            *options.palette, [&] { return Palette::fromIndexed(chosen, ColourStorage::Movie); });
        scenes_.push_back({0, palette, !remap_, ColourLookup(palette)});
        return;
    }
    std::size_t first = 0;
    for (const std::size_t end : sceneEnds(options.paletteAt, count())) {
        scenes_.push_back(makeScene(first, end));
        first = end;
    }
}

MovieFrames::Scene MovieFrames::makeScene(std::size_t first, std::size_t end) const {
    SharedPalette shared;
    PaletteMaker maker;
    for (std::size_t frame = first; frame < end; ++frame) {
        const Picture picture = read(frame);
        shared.add(picture);
        maker.add(picture);
    }
    const bool keepsIndices = shared.isShared() && !remap_;
    const Palette palette = keepsIndices
                                ? Palette::fromColours(shared.colours(), ColourStorage::Movie)
                                : maker.make(ColourStorage::Movie);
    return {first, palette, keepsIndices, ColourLookup(palette)};
}

Picture MovieFrames::read(std::size_t frame) const {
    Picture picture = readPicture(files_[frame]);
    if (picture.width() != width_ || picture.height() != height_)
        throw Refusal(files_[frame].string() + ": the picture has " +
                      sizeText(picture.width(), picture.height()) + ", the first frame has " +
                      sizeText(width_, height_));
    return picture;
}

MovieFrames::Scene& MovieFrames::sceneOf(std::size_t frame) {
    const auto next = std::ranges::upper_bound(scenes_, frame, {}, &Scene::first);
    return *std::prev(next);
}

const Palette* MovieFrames::newPalette(std::size_t frame) const {
    const auto scene = std::ranges::find(scenes_, frame, &Scene::first);
    return scene == scenes_.end() ? nullptr : &scene->palette;
}

Bytes MovieFrames::indices(std::size_t frame) {
    const Picture picture = read(frame);
    Scene& scene = sceneOf(frame);
    const bool keepsIndices = scene.keepsIndices && picture.isIndexed();
    Bytes indices(picture.size(), Palette::kBlack);
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (keepsIndices)
            indices[i] = picture.index(i);
        else if (const Pixel pixel = picture.pixel(i); pixel.opaque())
            indices[i] = scene.lookup.nearest(pixel.colour);
    }
    return indices;
}

std::vector<fs::path> listFrameFiles(const std::vector<fs::path>& paths) {
    std::vector<fs::path> files;
    for (const fs::path& path : paths) {
        std::error_code error;
        if (fs::is_directory(path, error))
            addFolder(path, files);
        else
            files.push_back(path);
    }
    return files;
}

} // namespace rsc
