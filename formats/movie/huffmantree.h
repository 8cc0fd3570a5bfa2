// Codes for the symbols of a bit stream: the more often one occurs, the shorter is its code. A code
// is the way from the root of a binary tree to the symbol's leaf, one bit a node; in a tree of a
// single leaf it has no bits.
//
// A tree is stored depth first: a bit 1 for a node with two branches, which follow, that of the bit
// 0 first; a bit 0 for a leaf, followed by its symbol.
#pragma once

#include "formats/movie/bits.h"

#include <span>
#include <vector>

namespace formats {

/// The codes of symbols whose frequencies are known, for writing.
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

    /// `putLeaf(symbol)` puts what stands for a symbol.
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

/// The codes of a tree that was read. At first it is the single leaf 0.
class HuffmanCodes {
  public:
    struct Bounds {
        int depth = 0;         ///< bits of the longest code
        std::size_t nodes = 0; ///< with the leaves; at most 2^22
    };

    /// `readLeaf()` reads a symbol, below 2^22. False when the tree goes beyond the bounds or the
    /// bits; it gives the symbol 0 then.
    template <class ReadLeaf>
    [[nodiscard]] bool read(BitReader& in, const Bounds& bounds, const ReadLeaf& readLeaf) {
        nodes_.clear();
        longest_ = 0;
        const bool isWhole = readNode(in, bounds, readLeaf, 0);
        if (!isWhole) nodes_.assign(1, 0);
        makeTable();
        return isWhole;
    }

    /// The next symbol.
    [[nodiscard]] std::uint32_t get(BitReader& in) const {
        const std::uint32_t entry = table_[in.peek(tableBits_)];
        in.skip(static_cast<int>(entry >> kLengthShift));
        return entry & kInner ? walk(in, entry) : entry & kSymbol;
    }

  private:
    static constexpr int kTableBits = 11;
    static constexpr int kLengthShift = 24;
    static constexpr std::uint32_t kInner = 1 << 23;
    static constexpr std::uint32_t kSymbol = kInner - 1;

    template <class ReadLeaf>
    bool readNode(BitReader& in, const Bounds& bounds, const ReadLeaf& readLeaf, int depth) {
        if (depth > bounds.depth || nodes_.size() >= bounds.nodes || in.overrun()) return false;
        longest_ = std::max(longest_, depth);
        const std::size_t node = nodes_.size();
        nodes_.push_back(0);
        if (!in.takeBit()) {
            nodes_[node] = readLeaf();
            return !in.overrun();
        }
        if (!readNode(in, bounds, readLeaf, depth + 1)) return false;
        nodes_[node] = kInner | static_cast<std::uint32_t>(nodes_.size());
        return readNode(in, bounds, readLeaf, depth + 1);
    }
    void makeTable();
    void fillTable(std::uint32_t node, std::uint32_t code, int length);
    [[nodiscard]] std::uint32_t walk(BitReader& in, std::uint32_t node) const;

    /// A leaf's symbol, or kInner and the place of the branch 1; the branch 0 is the next one.
    std::vector<std::uint32_t> nodes_ = {0};
    int longest_ = 0;
    int tableBits_ = 0;
    /// By the next bits: how many of them were used, and the node that these lead to.
    std::vector<std::uint32_t> table_ = {0};
};

} // namespace formats
