// Trees of bytes, as they stand in a movie file: a bit 1, the tree with 8 bits for each leaf, a bit
// 0. A bit 0 alone stands for a tree that always gives 0; none is written.
#pragma once

#include "formats/movie/huffmantree.h"

#include <array>

namespace formats {

using ByteCounts = std::array<std::uint32_t, 256>;

/// The codes of bytes, for writing.
class ByteTree {
  public:
    explicit ByteTree(const ByteCounts& counts) : tree_(counts) {}

    void write(BitWriter& out) const {
        out.putBit(true);
        tree_.putShape(out,
                       [&](std::size_t byte) { out.put(static_cast<std::uint32_t>(byte), 8); });
        out.putBit(false);
    }

    /// A byte that was counted.
    void put(BitWriter& out, std::uint8_t byte) const { tree_.put(out, byte); }

  private:
    HuffmanTree tree_;
};

/// False when the tree is damaged.
[[nodiscard]] inline bool readByteTree(BitReader& in, HuffmanCodes& codes) {
    constexpr HuffmanCodes::Bounds kBounds{27, 2 * 256 - 1};
    if (!in.takeBit()) return true;
    if (!codes.read(in, kBounds, [&] { return in.take(8); })) return false;
    (void)in.takeBit();
    return true;
}

} // namespace formats
