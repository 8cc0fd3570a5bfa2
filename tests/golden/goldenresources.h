// Resources of which every run of pixels is chosen: animations, and palettes. No packing of the
// program takes part, so that its painters are measured by something else.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace golden {

using Bytes = std::vector<std::byte>;

/// The palette index that a letter of the art stands for:
///
///     k n s t p   the shades of backgrounds           entries 10 to 14
///     r g b y c m o v   the colours of figures        entries 20 to 27
///     w           the game's own white                entry 100
///     K W R I     black, white, red, blue             fixed entries 0, 255, 249, 252
[[nodiscard]] std::uint8_t indexOf(char letter);

/// One packed row. Each call adds one token, however many pixels it has (1 to 250; more is a
/// mistake and ends the program).
class Row {
  public:
    Row& clear(int pixels);
    Row& fill(char letter, int pixels) { return fillIndex(indexOf(letter), pixels); }
    Row& fillIndex(int index, int pixels);
    /// Single pixels, one a letter.
    Row& single(std::string_view letters);
    /// Single pixels that are all the same.
    Row& same(char letter, int pixels);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

  private:
    int counted(int pixels);
    void add(int byte) { bytes_.push_back(static_cast<std::uint8_t>(byte)); }

    int width_ = 0;
    std::vector<std::uint8_t> bytes_;
};

/// All rows must have the same width.
using Frame = std::vector<Row>;

/// How a stretch of letters is packed; a stretch of "." is a clear run either way.
enum class Packing : std::uint8_t {
    Singles, ///< neighbouring letters are single pixels
    Fills    ///< each stretch of one letter is a fill
};

/// A frame from letters, "." is transparent. Each letter becomes a square of `scale` pixels.
[[nodiscard]] Frame drawn(const std::vector<std::string_view>& art, int scale = 1,
                          Packing packing = Packing::Singles);
using Grid = std::vector<std::string>;
[[nodiscard]] inline Frame filled(const Grid& grid, int scale) {
    return drawn({grid.begin(), grid.end()}, scale, Packing::Fills);
}
/// A frame of equal rows.
[[nodiscard]] Frame repeated(const Row& row, int rows);
/// Adds the rows of one frame below those of another.
Frame& operator+=(Frame& frame, const Frame& more);

struct Step {
    int dx;
    int dy;
    int code;
    int argument;
};
inline constexpr int kEnd = -1;
inline constexpr int kLoop = -2;
inline constexpr int kHold = -4;

struct Animation {
    int x = 0; ///< embedded place, -2047 to 2048
    int y = 0;
    int depth = 0; ///< 0 to 255
    int rate = 0;  ///< frames a second; 0: the steps carry milliseconds
    std::vector<Frame> frames;
    std::vector<std::vector<Step>> sequences;
    bool bigEndian = false;

    [[nodiscard]] Bytes resource() const;
};

struct Color {
    int red;
    int green;
    int blue;
};
using Palette = std::array<Color, 256>;

[[nodiscard]] Bytes resource(const Palette& palette);

} // namespace golden
