// The codes of bytes, and how a movie file stores their tree.
#pragma once

#include "movies/huffmantree.h"

#include <array>

namespace rsc {

using ByteCounts = std::array<std::uint32_t, 256>;

class ByteTree {
  public:
    explicit ByteTree(const ByteCounts& counts) : tree_(counts) {}

    void write(BitWriter& out) const {
        out.putBit(true); // there is a tree
        tree_.putShape(out,
                       [&](std::size_t byte) { out.put(static_cast<std::uint32_t>(byte), 8); });
        out.putBit(false);
    }

    /// A byte that was counted.
    void put(BitWriter& out, std::uint8_t byte) const { tree_.put(out, byte); }

  private:
    HuffmanTree tree_;
};

} // namespace rsc
