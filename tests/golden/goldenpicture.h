// A PNG file as its pixels; palette indices stay what they are.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace golden {

constexpr std::uint32_t rgb(int red, int green, int blue) {
    return static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
}
constexpr int red(std::uint32_t color) { return static_cast<int>(color >> 16 & 255); }
constexpr int green(std::uint32_t color) { return static_cast<int>(color >> 8 & 255); }
constexpr int blue(std::uint32_t color) { return static_cast<int>(color & 255); }

struct Picture {
    int width = 0;
    int height = 0;
    bool indexed = false;
    std::array<std::uint32_t, 256> palette{}; ///< 0 behind the last entry, and in an RGB picture
    std::vector<std::uint32_t> pixels;        ///< indices or colours, row by row

    [[nodiscard]] std::uint32_t& at(int x, int y) { return pixels[place(x, y)]; }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return pixels[place(x, y)]; }

    [[nodiscard]] std::size_t place(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
};

/// Reads what is indexed or RGB with 8 bits; tells on standard error why it cannot.
[[nodiscard]] std::optional<Picture> readPicture(const std::string& file);

/// An RGB picture.
[[nodiscard]] bool writePicture(const std::string& file, const Picture& picture);

} // namespace golden
