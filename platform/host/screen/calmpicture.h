// The screen for who must not see it flash: a copy that follows what a game shows, but holds still
// what would flash more than three times a second in a large part of the picture.
//
// The measure is that of the Web Content Accessibility Guidelines 2.2, success criterion 2.3.1
// "Three Flashes or Below Threshold"
// (https://www.w3.org/TR/WCAG22/#dfn-general-flash-and-red-flash-thresholds): a flash is a pair of
// opposing changes of the relative luminance by 10 % of its maximum or more, the darker one below
// 0.80, or a pair of changes to and from a saturated red. No more than three are allowed in any
// second where they take more than a quarter of any field of 10 degrees, which is 341 x 256 pixels
// of a picture of 640 x 480.
//
// The picture is looked at in blocks, of which the mean counts: patterns that are finer balance. A
// block that used up its three flashes waits with what is new, and so do all others like it, as
// long as together they are too large; at most a second after the game stood still all is shown.
// Three flashes of one place after three of another one are not added up.
#pragma once

#include "platform/display.h"
#include "platform/host/screen/flashcount.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

class CalmPicture {
  public:
    using Palette = std::array<Rgb, kPaletteSize>;

    /// Begins with what is wanted now, as if it had been there for long.
    CalmPicture(const Surface& wanted, const Palette& palette);

    /// What is to be seen; 32 bits deep.
    [[nodiscard]] const Surface& picture() const { return shown_; }
    /// Whether anything waits to be seen, for which `follow` must be called again.
    [[nodiscard]] bool isBehind() const { return !waiting_.empty(); }

    /// Part of what is wanted has changed, inside of it.
    void mark(const Rect& part) { stale_ = hull(stale_, part); }
    /// Follows what is wanted, of the size that it had at first, as far as may be at this time by
    /// the platform's clock. What lies between two calls is not seen. The part of the picture that
    /// changed, or empty.
    Rect follow(const Surface& wanted, const Palette& palette, std::uint32_t nowMs);

  private:
    struct Block {
        FlashCount light;
        FlashCount red;
        float wantedLight = 0;
        float wantedRed = 0;
        std::optional<std::uint32_t> flashedMs; ///< when it last went beyond three flashes
        bool waits = false;
    };

    [[nodiscard]] Rect pixelsOf(std::size_t block) const;
    [[nodiscard]] static bool allows(const Block& block, std::uint32_t nowMs);
    /// Reads the stale part, whose blocks wait then.
    void read(const Surface& wanted, const Palette& palette);
    void measure(std::size_t block);
    /// Whether all that wait, and those that flash already, are small enough together.
    [[nodiscard]] bool isSmall(std::uint32_t nowMs) const;
    void copyPixels(const Rect& pixels);
    /// The pixels of the block.
    Rect show(std::size_t block, std::uint32_t nowMs);

    int columns_;
    int rows_;
    std::vector<Block> blocks_; ///< row by row
    std::vector<std::uint32_t> wanted_;
    Surface shown_;
    Rect stale_; ///< part of wanted_ that is older than the game's
    std::vector<std::size_t> waiting_;
};

} // namespace platform
