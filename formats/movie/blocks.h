// The pictures of a movie as blocks of 4x4 pixels, in rows from the top: each block is skipped
// because it is as before, or has one colour, two, or more. Neighbouring blocks of one kind are
// told together, as a run. Four trees of values hold for the whole movie; they stand in the file in
// this order:
//
//     masks      of blocks of two colours: bit 0 is the top left pixel
//     colours    of the same: of the bits 0 in the low byte, of the bits 1 in the high one
//     pairs      of blocks of more: pixels side by side, the left one in the low byte
//     runs       bits 0 and 1 the kind, bits 2 to 7 the length, the high byte the colour of solid
//                blocks
//
// A frame is a stream of bits: runs, each followed by what its blocks need: colours and mask, or
// eight pairs, in each row the right one, then the left one. In files of the later kind a run of
// full blocks begins with its coarseness: a bit 1, each block has two pairs, which are its left and
// right half for two rows each; bits 0 and 1, it has four, two for two equal rows each; bits 0 and
// 0, as above.
#pragma once

#include <cstddef>
#include <cstdint>

namespace formats {

inline constexpr int kBlockSide = 4; ///< pixels

enum class BlockKind : std::uint8_t {
    Mono = 0, ///< two colours and a mask
    Full = 1,
    Skip = 2,
    Solid = 3
};

struct BlockRun {
    /// The longest run that can be told and is not longer than `blocks`, which is at least 1.
    static BlockRun longest(BlockKind kind, std::size_t blocks, std::uint8_t colour);
    static BlockRun fromValue(std::uint16_t value) {
        return {static_cast<BlockKind>(value & 3), static_cast<std::uint8_t>(value >> 2 & 63),
                static_cast<std::uint8_t>(value >> 8)};
    }

    [[nodiscard]] std::uint16_t value() const;
    [[nodiscard]] std::size_t length() const;

    BlockKind kind = BlockKind::Skip;
    std::uint8_t lengthIndex = 0;
    std::uint8_t colour = 0;
};

} // namespace formats
