#include "movietimes.h"

#include "formats/library/writer.h"
#include "mediamachine.h"

#include "formats/movie/moviefile.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <span>
#include <string_view>

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kPanning = 4; ///< pixels a frame

/// Blobs of colour, as a painting has them, that move along.
formats::Bytes panning() {
    std::mt19937 random(1);
    formats::Bytes picture(static_cast<std::size_t>(kWidth) * kHeight);
    for (std::size_t i = 0; i < picture.size();) {
        const auto colour = static_cast<std::uint8_t>(10 + random() % 230);
        for (auto run = 1 + random() % 24; run > 0 && i < picture.size(); --run)
            picture[i++] = colour;
    }
    formats::VideoCoder coder(kWidth, kHeight);
    for (int frame = 0; frame < kMovieFrames; ++frame) {
        coder.add(picture, frame == 0);
        std::ranges::rotate(picture, picture.begin() + kPanning);
    }
    formats::CodedVideo video = coder.finish().value();
    formats::MovieHeader header{.width = kWidth, .height = kHeight, .treeSizes = video.treeSizes};
    header.setFrameTime(kMovieFrameTime);
    std::vector<formats::MovieFrame> frames(kMovieFrames);
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i].picture = video.frames[i];
    return formats::makeMovieFile(header, video.trees, frames);
}

} // namespace

ProcessTimes measureMovie(int repetitions) {
    constexpr std::string_view kScript = "yield off\nm=RSmackerMovie \"movie.smk\" 0 0\n"
                                         "play m start }\nget m frame n\n"
                                         "if n=74\nquit\n";
    const MediaMachine machine;
    std::filesystem::create_directory(machine.hostPath("RSC"));
    const formats::Bytes movie = panning();
    machine.put("RSC/movie.smk", std::as_bytes(std::span(movie)));
    const formats::Bytes library = formats::library::write("LIB", {}).value;
    machine.put("RSC/some.rsc", std::as_bytes(std::span(library)));
    machine.put("Startup.mps", std::as_bytes(std::span(kScript)));
    return playGame(machine.hostPath("").string(), repetitions);
}
