#include "gametest/picturedifference.h"

#include <cstddef>

namespace gametest {

namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;

std::uint32_t pale(std::uint32_t colour) { return 0xFFC0C0C0 | ((colour >> 2) & 0x3F3F3F); }

std::string sizeOf(const platform::Picture& picture) {
    return std::to_string(picture.width) + " x " + std::to_string(picture.height);
}

} // namespace

std::optional<PictureDifference> differenceOf(const platform::Picture& is,
                                              const platform::Picture& was) {
    if (is.width != was.width || is.height != was.height)
        return PictureDifference{"it is " + sizeOf(is) + ", the stored one " + sizeOf(was), is};
    platform::Picture marked = is;
    std::size_t count = 0;
    std::size_t first = 0;
    for (std::size_t i = 0; i < is.pixels.size(); ++i) {
        const bool differs = is.pixels[i] != was.pixels[i];
        if (differs && count++ == 0) first = i;
        marked.pixels[i] = differs ? kRed : pale(is.pixels[i]);
    }
    if (count == 0) return std::nullopt;
    const auto width = static_cast<std::size_t>(is.width);
    return PictureDifference{std::to_string(count) + " pixels differ, the first one at " +
                                 std::to_string(first % width) + ' ' +
                                 std::to_string(first / width),
                             std::move(marked)};
}

} // namespace gametest
