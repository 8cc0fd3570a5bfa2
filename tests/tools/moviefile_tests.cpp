#include "movies/moviefile.h"

#include "moviedecoder.h"
#include "testfiles.h"

#include <random>

namespace {

using moviedecoder::decode;
using moviedecoder::Movie;
using rsc::Bytes;
using Pictures = std::vector<Bytes>;

constexpr std::uint8_t kBefore = 7; ///< colour
const rsc::Palette kPalette = rsc::Palette::fromColours({}, rsc::ColourStorage::Movie);

/// The first frame is told whole, the others as changes.
Bytes movieOf(int width, const Pictures& pictures) {
    const int height = static_cast<int>(pictures.front().size()) / width;
    rsc::VideoCoder video(width, height);
    rsc::MovieParts parts{width, height, 6666, false, {}, {}, {}};
    for (const Bytes& picture : pictures) {
        video.add(picture, parts.frames.empty());
        parts.frames.push_back({parts.frames.empty() ? &kPalette : nullptr, false, {}});
    }
    parts.frames.front().key = true;
    parts.video = video.finish();
    return rsc::buildMovieFile(parts);
}

/// Throws when a picture does not come back as it was.
Movie roundTrip(int width, const Pictures& pictures) {
    Movie movie = decode(movieOf(width, pictures));
    moviedecoder::demand(movie.frames.size() == pictures.size(), "frames are missing");
    for (std::size_t i = 0; i < pictures.size(); ++i)
        moviedecoder::demand(movie.frames[i].pixels == pictures[i], "a picture differs");
    return movie;
}

using Block = std::array<std::uint8_t, 16>;

/// Of one kind; number `i` differs from its neighbours, but for solid and skipped ones.
Block blockOf(unsigned kind, std::size_t i) {
    Block pixels;
    pixels.fill(kind == 2 ? kBefore : kind == 3 ? 200 : static_cast<std::uint8_t>(10 + i % 90));
    if (kind < 2) pixels[1 + i % 15] = 101;
    if (kind == 1) pixels[1 + (i + 3) % 15] = 102;
    return pixels;
}

TEST(MovieFile, TellsEveryKindOfBlockInEveryRun) {
    std::vector<std::size_t> lengths = {127, 128, 256, 512, 1024, 2048, 4096 + 60};
    for (std::size_t length = 1; length <= 60; ++length) lengths.push_back(length);
    for (const unsigned kind : {0U, 1U, 2U, 3U}) {
        std::vector<Block> row;
        for (const std::size_t length : lengths) {
            for (std::size_t i = 0; i < length; ++i) row.push_back(blockOf(kind, i));
            row.push_back(blockOf((kind + 1) % 4, 0));
        }
        const std::size_t width = row.size() * 4;
        Bytes picture(width * 4);
        for (std::size_t i = 0; i < picture.size(); ++i)
            picture[i] = row[i % width / 4][i / width * 4 + i % 4];
        const Bytes before(picture.size(), kBefore);
        const Movie movie = roundTrip(static_cast<int>(width), {before, picture, before, before});
        EXPECT_TRUE(movie.kinds.contains(kind));
        EXPECT_EQ(movie.runs.size(), 64U);
    }
}

TEST(MovieFile, GivesPicturesBack) {
    std::mt19937 random(1);
    struct Case {
        int width;
        int height;
        unsigned colours;
        unsigned changes; ///< pixels in a frame
    };
    for (const auto& [width, height, colours, changes] :
         {Case{4, 4, 2, 99}, Case{36, 20, 3, 9999}, Case{64, 64, 256, 20000},
          Case{200, 100, 256, 20}, Case{128, 128, 2, 9}, Case{4, 400, 200, 1}}) {
        Pictures pictures(1, Bytes(static_cast<std::size_t>(width * height)));
        for (int frame = 0; frame < 6; ++frame) {
            Bytes& picture = pictures.emplace_back(pictures.back());
            for (unsigned i = 0; i < changes; ++i)
                picture[random() % picture.size()] = static_cast<std::uint8_t>(random() % colours);
        }
        EXPECT_NO_THROW((void)roundTrip(width, pictures)) << width << " " << colours;
    }
    // the same few blocks again and again: readers' memory of the last values pays
    Pictures stripes(3, Bytes(64 * 64));
    for (std::size_t frame = 0; frame < stripes.size(); ++frame)
        for (std::size_t i = 0; i < stripes[frame].size(); ++i)
            stripes[frame][i] = static_cast<std::uint8_t>((i / 512 * 31 + frame * 7) % 251 + i % 4);
    EXPECT_TRUE(roundTrip(64, stripes).usesCache);
}

TEST(MovieFile, NeedsValuesForTheMarkers) {
    // each pair of neighbouring colours once: blocks of 8 pairs in a row
    const auto pictureWith = [](std::size_t pairs) {
        constexpr std::size_t kBlocks = 65536 / 8;
        Bytes picture(kBlocks * 16);
        for (std::size_t i = 0; i < 65536; ++i) {
            const std::size_t pair = std::min(i, pairs - 1);
            const std::size_t at = i % 8 / 2 * kBlocks * 4 + i / 8 * 4 + i % 2 * 2;
            picture[at] = static_cast<std::uint8_t>(pair);
            picture[at + 1] = static_cast<std::uint8_t>(pair >> 8);
        }
        return picture;
    };
    EXPECT_FALSE(roundTrip(65536 / 2, {pictureWith(65533)}).usesCache);
    EXPECT_TRUE(roundTrip(65536 / 2, {pictureWith(65534)}).usesCache)
        << "0 is there from the start";
    EXPECT_THROW((void)movieOf(65536 / 2, {pictureWith(65535)}), rsc::Refusal);
}

} // namespace
