// Codes for the symbols of a bit stream: the more often one occurs, the shorter is its code. A code
// is the way from the root of a binary tree to the symbol's leaf, one bit a node; in a tree of a
// single leaf it has no bits.
#pragma once

#include "movies/bitwriter.h"

#include <span>

namespace rsc {

class HuffmanTree {
  public:
    /// Bits of the longest code; readers have bounds of about this size.
    static constexpr int kLongestCode = 24;

    /// `counts` tells for each symbol (at most 65,536) how often it is put; those with 0 have no
    /// code. Without any the tree is the single leaf 0.
    explicit HuffmanTree(std::span<const std::uint32_t> counts);

    [[nodiscard]] std::size_t leafCount() const { return leafCount_; }
    /// Bits of all codes, with the counts given at construction.
    [[nodiscard]] std::uint64_t bitCount(std::span<const std::uint32_t> counts) const;

    /// Depth first: a bit 1 for a node with two branches, which follow, a bit 0 for a leaf,
    /// followed by what `putLeaf(symbol)` puts.
    template <class PutLeaf>
    void putShape(BitWriter& out, const PutLeaf& putLeaf) const {
        putShape(out, putLeaf, nodes_.size() - 1);
    }

    /// A symbol that was counted.
    void put(BitWriter& out, std::size_t symbol) const {
        out.put(codes_[symbol].bits, codes_[symbol].length);
    }

  private:
    struct Node {
        std::uint64_t count = 0;
        std::size_t symbol = 0;    ///< of a leaf
        std::size_t branches[2]{}; ///< of the others
    };
    struct Code {
        std::uint32_t bits = 0; ///< the first is the lowest
        int length = 0;
    };

    void build(std::span<const std::uint32_t> counts);
    void join();
    void assignCodes();
    [[nodiscard]] int longestCode() const;

    template <class PutLeaf>
    void putShape(BitWriter& out, const PutLeaf& putLeaf, std::size_t node) const {
        const bool isLeaf = node < leafCount_;
        out.putBit(!isLeaf);
        if (isLeaf) {
            putLeaf(nodes_[node].symbol);
            return;
        }
        for (const std::size_t branch : nodes_[node].branches) putShape(out, putLeaf, branch);
    }

    std::vector<Node> nodes_; ///< the leaves, then the others, each behind its branches
    std::size_t leafCount_ = 0;
    std::vector<Code> codes_; ///< by symbol
};

} // namespace rsc
