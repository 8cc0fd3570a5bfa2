// The program's icon: a lighthouse, 32 by 32 pixels.

#include "startup/programresources.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 32> kRows{
    "..............kkkk..............", "..........kkkkkkkkkkkk..........",
    "........kkksssskksssskkk........", ".......kkssssskrrkssssskk.......",
    ".....kksssssskrrrrksssssskk.....", "....kksssssskrrrrrrksssssskk....",
    "....kyyyssskrrrrrrrrksssyyyk....", "...kyyyyyyyykYYYYYYkyyyyyyyyk...",
    "..kkyyyyyyyykYYYYYYkyyyyyyyykk..", "..kyyyyyyyyykYYYYYYkyyyyyyyyyk..",
    ".kkyyyyyyyykkkkkkkkkkyyyyyyyykk.", ".kyyyyyyssssskrrrrksssssyyyyyyk.",
    ".kyyssssssssskrrrrksssssssssyyk.", ".kssssssssssskrrrrksssssssssssk.",
    "kkssssssssssskcccckssssssssssskk", "kksssssssssskccccccksssssssssskk",
    "kksssssssssskccccccksssssssssskk", "kksssssssssskrrrrrrksssssssssskk",
    ".ksssssssssskrrrrrrkssssssssssk.", ".ksssssssssskrrrrrrkssssssssssk.",
    ".ksssssssssskcccccckssssssssssk.", ".kksssssssskccccccccksssssssskk.",
    "..kwwwwwwwwkccckkccckwwwwwwwwk..", "..kkwwwwwwwkrrrkkrrrkwwwwwwwkk..",
    "...kwwwggggkrrrkkrrrkggggwwwk...", "....kwgggggkrrrkkrrrkgggggwk....",
    "....kkggggggggggggggggggggkk....", ".....kkggggggggggggggggggkk.....",
    ".......kkwwwwwwwwwwwwwwkk.......", "........kkkwwwwwwwwwwkkk........",
    "..........kkkkkkkkkkkk..........", "..............kkkk..............",
};

struct Ink {
    char letter;
    std::uint8_t red, green, blue;
};
/// The first one is transparent.
constexpr Ink kInks[] = {{'.', 255, 0, 255},  {'k', 45, 42, 74},    {'s', 126, 200, 227},
                         {'w', 42, 130, 160}, {'y', 255, 240, 170}, {'Y', 255, 214, 70},
                         {'r', 226, 88, 72},  {'c', 255, 250, 238}, {'g', 104, 170, 84}};

constexpr std::size_t kIconSide = kRows.size();
constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kPixels = kFileHeader + kInfoHeader + 4 * std::size(kInks);
using File = std::array<std::uint8_t, kPixels + kIconSide * kIconSide>;

constexpr std::uint8_t inkOf(char letter) {
    for (std::size_t i = 0; i < std::size(kInks); ++i)
        if (kInks[i].letter == letter) return static_cast<std::uint8_t>(i);
    return 0;
}

constexpr void put(File& file, std::size_t at, std::size_t value) {
    for (std::size_t i = 0; i < 4; ++i) file[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

/// A BMP file of 8 bits; its layout is in ombitmap.h.
constexpr File makeFile() {
    File file{};
    file[0] = 'B';
    file[1] = 'M';
    put(file, 2, file.size());
    put(file, 10, kPixels);
    put(file, 14, kInfoHeader);
    put(file, 18, kIconSide);
    put(file, 22, kIconSide);
    file[26] = 1; // plane
    file[28] = 8; // bits a pixel
    put(file, 46, std::size(kInks));
    for (std::size_t i = 0; i < std::size(kInks); ++i) {
        const std::size_t at = kFileHeader + kInfoHeader + 4 * i;
        file[at] = kInks[i].blue;
        file[at + 1] = kInks[i].green;
        file[at + 2] = kInks[i].red;
    }
    for (std::size_t y = 0; y < kIconSide; ++y)
        for (std::size_t x = 0; x < kIconSide; ++x)
            file[kPixels + (kIconSide - 1 - y) * kIconSide + x] = inkOf(kRows[y][x]);
    return file;
}

constexpr File kFile = makeFile();

} // namespace

std::span<const std::byte> RProgramIcon() { return std::as_bytes(std::span(kFile)); }
