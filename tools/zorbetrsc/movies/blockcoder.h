// The pictures of a movie as blocks of 4x4 pixels, in rows from the top: each block is skipped
// because it is as before, or has one colour, two, or more. Neighbouring blocks of one kind are
// told together.
#pragma once

#include "movies/wordtree.h"

namespace rsc {

inline constexpr int kBlockSide = 4; ///< pixels

enum class BlockKind : std::uint8_t {
    Mono = 0, ///< two colours and a mask
    Full = 1,
    Skip = 2,
    Solid = 3
};

/// A run of blocks, as the tree of runs stores it: the kind in the lowest two bits, then six bits
/// for the length, and the colour of solid blocks in the high byte.
struct BlockRun {
    /// The longest run that can be told and is not longer than `blocks`, which is at least 1.
    static BlockRun longest(BlockKind kind, std::size_t blocks, std::uint8_t colour);
    static BlockRun fromValue(std::uint16_t value);

    [[nodiscard]] std::uint16_t value() const;
    [[nodiscard]] std::size_t length() const;

    BlockKind kind = BlockKind::Skip;
    std::uint8_t lengthIndex = 0;
    std::uint8_t colour = 0;
};

/// What is told of a frame: the values of each tree, in the order in which readers take them.
struct FrameBlocks {
    static constexpr std::size_t kPairsOfBlock = 8;

    Values masks; ///< of mono blocks: bit 0 is the top left pixel
    Values
        colours;  ///< of mono blocks: of the bits 0 in the low byte, of the bits 1 in the high one
    Values pairs; ///< of full blocks: in each row the right pair of pixels, then the left one
    Values runs;
};

/// Remembers the frame before.
class BlockCoder {
  public:
    /// Sides in pixels, multiples of 4.
    BlockCoder(int width, int height);

    /// The next frame, row by row from the top left. When it is to be told `whole`, no block is
    /// skipped, so that it does not need the frames before.
    FrameBlocks code(ByteSpan indices, bool whole);

  private:
    using Block = std::array<std::uint8_t, kBlockSide * kBlockSide>;

    [[nodiscard]] Block blockAt(ByteSpan indices, std::size_t block) const;

    std::size_t width_;
    std::size_t blocksAcross_;
    std::size_t blocks_;
    Bytes before_;
};

} // namespace rsc
