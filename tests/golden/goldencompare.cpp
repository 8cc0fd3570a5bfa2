// goldencompare PICTURE EXPECTED DIFFERENCE [--depth N] [--at X,Y]
//
// Compares two PNG files: size, kind (indexed or RGB), every entry of the palettes, every pixel.
// When they differ it tells the first place, both values and how many places differ, writes the
// picture DIFFERENCE with these in red, and ends with 1; with 2 when one cannot be read.
//
//     --depth N   PICTURE is from a screen of 16, 24 or 32 bits: it is RGB, with the colours of
//                 EXPECTED, at 16 bits as five bits a component show them
//     --at X,Y    EXPECTED is what a larger PICTURE shows there; all around it is black
#include "pictures/picture.h"
#include "platform/host/screen/png.h"
#include "refusal.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

struct Picture {
    int width = 0;
    int height = 0;
    bool indexed = false;
    std::array<std::uint32_t, 256> palette{}; ///< 0 behind the last entry, and in an RGB picture
    std::vector<std::uint32_t> pixels{};      ///< indices or colours, row by row

    std::uint32_t& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// The highest byte is 0 when it is opaque, as all must be.
std::uint32_t numberOf(const rsc::Pixel& pixel) {
    const auto& [red, green, blue] = pixel.colour;
    return (255U - pixel.alpha) << 24 | static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}

Picture read(const char* file) {
    std::ifstream in(file, std::ios::binary);
    const formats::Bytes bytes((std::istreambuf_iterator<char>(in)), {});
    const auto png = rsc::Picture::fromPng(bytes);
    Picture picture{png.width(), png.height(), png.isIndexed()};
    std::ranges::transform(png.palette(), picture.palette.begin(), numberOf);
    for (std::size_t i = 0; i < png.size(); ++i)
        picture.pixels.push_back(png.isIndexed() ? png.index(i) : numberOf(png.pixel(i)));
    return picture;
}

Picture onDeepScreen(Picture picture, int depth) {
    for (std::uint32_t& value : picture.pixels) {
        if (picture.indexed) value = picture.palette[value];
        // 31 of five bits is as bright as 255 of eight
        if (depth == 16) value = (value & 0xF8F8F8) + (value >> 5 & 0x070707);
    }
    return {picture.width, picture.height, false, {}, picture.pixels};
}

/// Both the colour 0 and the entry 0 are black.
Picture onLargeScreen(Picture picture, int left, int top, const Picture& screen) {
    Picture made{screen.width, screen.height, picture.indexed, picture.palette,
                 std::vector<std::uint32_t>(screen.pixels.size(), 0)};
    for (int y = 0; y < std::min(picture.height, screen.height - top); ++y)
        for (int x = 0; x < std::min(picture.width, screen.width - left); ++x)
            made.at(x + left, y + top) = picture.at(x, y);
    return made;
}

/// Marks what differs in `marks`, and tells the first place.
int countDifferent(Picture& got, Picture& wanted, Picture& marks) {
    int count = 0;
    for (std::size_t i = 0; i < got.palette.size(); ++i)
        if (got.palette[i] != wanted.palette[i] && count++ == 0)
            std::printf("palette entry %zu: %06x, expected %06x\n", i, got.palette[i],
                        wanted.palette[i]);
    const int entries = count;
    for (int y = 0; y < got.height; ++y)
        for (int x = 0; x < got.width; ++x) {
            const std::uint32_t is = got.at(x, y), was = wanted.at(x, y);
            marks.at(x, y) = is == was ? 0x303030 : 0xFF0000;
            if (is != was && count++ == entries)
                std::printf("pixel %d,%d: %s%x, expected %x\n", x, y,
                            got.indexed ? "entry " : "colour ", is, was);
        }
    if (count > 0) std::printf("%d entries and %d pixels differ\n", entries, count - entries);
    return count;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc < 4) return 2;
    Picture got = read(argv[1]), wanted = read(argv[2]);
    for (int i = 4; i + 1 < argc; i += 2) {
        int x = 0, y = 0;
        if (std::string(argv[i]) == "--depth")
            wanted = onDeepScreen(wanted, std::atoi(argv[i + 1]));
        else if (std::sscanf(argv[i + 1], "%d,%d", &x, &y) == 2)
            wanted = onLargeScreen(wanted, x, y, got);
        else
            return 2;
    }
    if (got.width != wanted.width || got.height != wanted.height || got.indexed != wanted.indexed) {
        std::printf("%d x %d, expected %d x %d, or one has a palette and the other none\n",
                    got.width, got.height, wanted.width, wanted.height);
        return 1;
    }
    Picture marks = got;
    if (countDifferent(got, wanted, marks) == 0) return 0;
    (void)platform::writePng(argv[3], {marks.width, marks.height, marks.pixels});
    return 1;
} catch (const rsc::Refusal& refusal) {
    std::fprintf(stderr, "%s or %s: %s\n", argv[1], argv[2], refusal.what());
    return 2;
}
