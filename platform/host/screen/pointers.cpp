#include "platform/host/screen/pointers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace platform {

namespace {

constexpr std::uint32_t kPointerBlack = 0xFF000000;
constexpr std::uint32_t kPointerWhite = 0xFFFFFFFF;

// Rows of pixels: # black, . white, others are seen through.
constexpr std::string_view kArrowRows[] = {
    "#           ", "##          ", "#.#         ", "#..#        ", "#...#       ", "#....#      ",
    "#.....#     ", "#......#    ", "#.......#   ", "#........#  ", "#.........# ", "#......#####",
    "#...#..#    ", "#..# #..#   ", "#.#  #..#   ", "##    #..#  ", "#     #..#  ", "       ##   "};
constexpr std::string_view kWaitRows[] = {
    "#############", "#...........#", "#############", " #.........# ", " #.........# ",
    " #.#.#.#.#.# ", "  #.#.#.#.#  ", "   #.#.#.#   ", "    #.#.#    ", "     #.#     ",
    "     #.#     ", "    #...#    ", "   #..#..#   ", "  #...#...#  ", " #...#.#...# ",
    " #..#.#.#..# ", " #.#.#.#.#.# ", "#############", "#...........#", "#############"};
constexpr std::string_view kBeamRows[] = {
    "####.####", "#...#...#", "####.####", "   #.#   ", "   #.#   ", "   #.#   ",
    "   #.#   ", "   #.#   ", "   #.#   ", "   #.#   ", "   #.#   ", "   #.#   ",
    "   #.#   ", "   #.#   ", "####.####", "#...#...#", "####.####"};
constexpr std::string_view kCrossRows[] = {
    "       ###       ", "       #.#       ", "       #.#       ", "       #.#       ",
    "       #.#       ", "       #.#       ", "       #.#       ", "########.########",
    "#......... ......", "########.########", "       #.#       ", "       #.#       ",
    "       #.#       ", "       #.#       ", "       #.#       ", "       #.#       ",
    "       ###       "};

CursorImage imageOf(std::span<const std::string_view> rows, Point hotSpot) {
    CursorImage image{
        static_cast<int>(rows.front().size()), static_cast<int>(rows.size()), hotSpot, {}};
    for (const std::string_view row : rows)
        for (const char c : row)
            image.pixels.push_back(c == '#' ? kPointerBlack : c == '.' ? kPointerWhite : 0);
    return image;
}

/// A pixel with the eight around it, row by row; the picture is seen through outside of it.
using Neighbours = std::array<std::uint32_t, 9>;

Neighbours neighboursOf(const CursorImage& image, int x, int y) {
    Neighbours around{};
    std::size_t next = 0;
    for (int row = y - 1; row <= y + 1; ++row)
        for (int column = x - 1; column <= x + 1; ++column) {
            const bool isInside =
                column >= 0 && column < image.width && row >= 0 && row < image.height;
            const auto index = static_cast<std::size_t>(isInside ? row * image.width + column : 0);
            around[next++] = isInside ? image.pixels[index] : 0;
        }
    return around;
}

/// The colour of a corner of an enlarged pixel: that of the two neighbours that meet there, where
/// they are one edge that passes by.
std::uint32_t cornerOf(const Neighbours& around, bool right, bool bottom) {
    const std::uint32_t across = around[right ? 5 : 3];
    const std::uint32_t opposite = around[right ? 3 : 5];
    const std::uint32_t along = around[bottom ? 7 : 1];
    const std::uint32_t behind = around[bottom ? 1 : 7];
    const bool isEdge = across == along && across != behind && along != opposite;
    return isEdge ? across : around[4];
}

} // namespace

CursorImage ownPointer(int id) {
    switch (id) {
    case -2: return imageOf(kWaitRows, {6, 10});
    case -3: return imageOf(kBeamRows, {4, 8});
    case -4: return imageOf(kCrossRows, {8, 8});
    default: return imageOf(kArrowRows, {0, 0});
    }
}

CursorImage enlarged(const CursorImage& image, int times) {
    CursorImage large{image.width * times,
                      image.height * times,
                      {image.hotSpot.x * times + times / 2, image.hotSpot.y * times + times / 2},
                      {}};
    large.pixels.resize(image.pixels.size() * static_cast<std::size_t>(times * times));
    const int last = times - 1;
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x) {
            const Neighbours around = neighboursOf(image, x / times, y / times);
            const int column = x % times;
            const int row = y % times;
            const bool isCorner =
                last > 0 && (column == 0 || column == last) && (row == 0 || row == last);
            large.pixels[static_cast<std::size_t>(y * large.width + x)] =
                isCorner ? cornerOf(around, column == last, row == last) : around[4];
        }
    return large;
}

} // namespace platform
