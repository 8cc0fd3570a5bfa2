// goldencompare PICTURE EXPECTED DIFFERENCE [--depth N] [--at X,Y]
//
// Compares two PNG files: size, kind (indexed or RGB), every entry of the palettes, every pixel.
// When they differ it tells the first place, row by row, both values and how many places differ,
// and writes the picture DIFFERENCE: what is the same in dark grey, what is not in red.
//
//     --depth N   PICTURE is from a screen of 16, 24 or 32 bits: it is RGB, with the colours of
//                 EXPECTED, at 16 bits as five bits a component show them
//     --at X,Y    EXPECTED is what a larger PICTURE shows there; all around it is black
//
// Exit code 0 when they are the same, 1 when they differ, 2 when one cannot be read.
#include "goldenpicture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace {

using golden::Picture;

constexpr int kSame = 0;
constexpr int kDifferent = 1;
constexpr int kUnreadable = 2;

struct Task {
    std::string picture;
    std::string expected;
    std::string difference;
    int depth = 0; ///< 0: the pictures are of one kind
    int x = 0;
    int y = 0;
    bool isPart = false;
};

bool readOption(std::string_view name, const char* value, Task& task) {
    if (name == "--depth") {
        task.depth = std::atoi(value);
        return task.depth == 16 || task.depth == 24 || task.depth == 32;
    }
    task.isPart = name == "--at" && std::sscanf(value, "%d,%d", &task.x, &task.y) == 2;
    return task.isPart && task.x >= 0 && task.y >= 0;
}

std::optional<Task> readTask(int argc, char** argv) {
    constexpr int kFirstOption = 4;
    if (argc < kFirstOption || argc % 2 != 0) return std::nullopt;
    Task task{argv[1], argv[2], argv[3]};
    for (int i = kFirstOption; i < argc; i += 2)
        if (!readOption(argv[i], argv[i + 1], task)) return std::nullopt;
    return task;
}

// What is expected on another screen

/// 31 of five bits is as bright as 255 of eight.
int throughFiveBits(int part) { return part / 8 * 8 + part / 32; }

Picture onDeepScreen(const Picture& picture, int depth) {
    Picture made{picture.width, picture.height, false, {}, picture.pixels};
    for (std::uint32_t& value : made.pixels) {
        if (picture.indexed) value = picture.palette[value];
        if (depth > 16) continue;
        value =
            golden::rgb(throughFiveBits(golden::red(value)), throughFiveBits(golden::green(value)),
                        throughFiveBits(golden::blue(value)));
    }
    return made;
}

/// Both the colour 0 and the entry 0 are black.
Picture onLargeScreen(const Picture& picture, const Task& task, const Picture& screen) {
    Picture made{screen.width, screen.height, picture.indexed, picture.palette,
                 std::vector<std::uint32_t>(screen.pixels.size(), 0)};
    for (int y = 0; y < std::min(picture.height, screen.height - task.y); ++y)
        for (int x = 0; x < std::min(picture.width, screen.width - task.x); ++x)
            made.at(x + task.x, y + task.y) = picture.at(x, y);
    return made;
}

// Comparing

const char* kindOf(const Picture& picture) { return picture.indexed ? "indexed" : "RGB"; }

std::string valueOf(const Picture& picture, std::uint32_t value) {
    char text[32];
    if (picture.indexed)
        std::snprintf(text, sizeof text, "entry %u (%06x)", value, picture.palette.at(value));
    else
        std::snprintf(text, sizeof text, "%06x", value);
    return text;
}

bool sameShape(const Picture& got, const Picture& wanted) {
    if (got.width == wanted.width && got.height == wanted.height && got.indexed == wanted.indexed)
        return true;
    std::printf("%d x %d %s, expected %d x %d %s\n", got.width, got.height, kindOf(got),
                wanted.width, wanted.height, kindOf(wanted));
    return false;
}

bool samePalette(const Picture& got, const Picture& wanted) {
    int count = 0;
    for (std::size_t i = 0; i < got.palette.size(); ++i) {
        if (got.palette[i] == wanted.palette[i]) continue;
        if (count++ == 0)
            std::printf("palette entry %zu: %06x, expected %06x\n", i, got.palette[i],
                        wanted.palette[i]);
    }
    if (count > 0) std::printf("%d palette entries differ\n", count);
    return count == 0;
}

bool samePixels(const Picture& got, const Picture& wanted, Picture& difference) {
    constexpr std::uint32_t kRed = 0xFF0000;
    constexpr std::uint32_t kGrey = 0x303030;
    int count = 0;
    for (int y = 0; y < got.height; ++y)
        for (int x = 0; x < got.width; ++x) {
            const bool same = got.at(x, y) == wanted.at(x, y);
            difference.at(x, y) = same ? kGrey : kRed;
            if (same || count++ > 0) continue;
            std::printf("pixel %d,%d: %s, expected %s\n", x, y, valueOf(got, got.at(x, y)).c_str(),
                        valueOf(wanted, wanted.at(x, y)).c_str());
        }
    if (count > 0) std::printf("%d pixels differ\n", count);
    return count == 0;
}

int compare(const Task& task, const Picture& got, Picture wanted) {
    if (task.depth > 0) wanted = onDeepScreen(wanted, task.depth);
    if (task.isPart) wanted = onLargeScreen(wanted, task, got);
    if (!sameShape(got, wanted)) return kDifferent;
    const bool palettes = samePalette(got, wanted);
    Picture difference{got.width, got.height, false, {}, got.pixels};
    const bool pixels = samePixels(got, wanted, difference);
    if (!pixels && !golden::writePicture(task.difference, difference))
        std::printf("%s cannot be written\n", task.difference.c_str());
    return palettes && pixels ? kSame : kDifferent;
}

} // namespace

int main(int argc, char** argv) {
    const std::optional<Task> task = readTask(argc, argv);
    if (!task) {
        std::fputs("goldencompare PICTURE EXPECTED DIFFERENCE [--depth 16|24|32] [--at X,Y]\n",
                   stderr);
        return kUnreadable;
    }
    const std::optional<Picture> got = golden::readPicture(task->picture);
    const std::optional<Picture> wanted = golden::readPicture(task->expected);
    return got && wanted ? compare(*task, *got, *wanted) : kUnreadable;
}
