#include "formats/movie/huffmantree.h"

#include <algorithm>

namespace formats {

HuffmanTree::HuffmanTree(std::span<const std::uint32_t> counts) : codes_(counts.size()) {
    build(counts);
    if (longestCode() <= kLongestCode) return;
    // Counts that lie closer together make flatter trees; equal ones make the flattest.
    std::vector<std::uint32_t> flatter(counts.begin(), counts.end());
    do {
        for (std::uint32_t& count : flatter) count = count / 2 + count % 2;
        build(flatter);
    } while (longestCode() > kLongestCode);
}

void HuffmanTree::build(std::span<const std::uint32_t> counts) {
    nodes_.clear();
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol)
        if (counts[symbol] > 0) nodes_.push_back({counts[symbol], symbol, {}});
    if (nodes_.empty()) nodes_.push_back({});
    leafCount_ = nodes_.size();
    std::ranges::stable_sort(nodes_, {}, &Node::count);
    join();
    assignCodes();
}

/// Joins the two rarest nodes until one is left. Joined nodes come out in the order of their
/// counts, so the rarest is the first of the leaves or the first of the joined ones that are left.
void HuffmanTree::join() {
    std::size_t leaf = 0;
    std::size_t joined = leafCount_;
    const auto takeRarest = [&] {
        const bool fromLeaves = leaf < leafCount_ && (joined == nodes_.size() ||
                                                      nodes_[leaf].count <= nodes_[joined].count);
        return fromLeaves ? leaf++ : joined++;
    };
    for (std::size_t left = leafCount_; left > 1; --left) {
        const std::size_t first = takeRarest();
        const std::size_t second = takeRarest();
        nodes_.push_back({nodes_[first].count + nodes_[second].count, 0, {first, second}});
    }
}

void HuffmanTree::assignCodes() {
    std::vector<Code> ofNode(nodes_.size());
    for (std::size_t node = nodes_.size() - 1; node >= leafCount_; --node) {
        const Code& code = ofNode[node];
        const bool hasRoom = code.length < 32; // longer ones are not used
        for (const std::uint32_t bit : {0U, 1U})
            ofNode[nodes_[node].branches[bit]] = {hasRoom ? code.bits | bit << code.length : 0,
                                                  code.length + 1};
    }
    for (std::size_t leaf = 0; leaf < leafCount_; ++leaf)
        codes_[nodes_[leaf].symbol] = ofNode[leaf];
}

std::uint64_t HuffmanTree::bitCount(std::span<const std::uint32_t> counts) const {
    std::uint64_t bits = 0;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol)
        bits += std::uint64_t{counts[symbol]} * static_cast<std::uint64_t>(codes_[symbol].length);
    return bits;
}

int HuffmanTree::longestCode() const { return std::ranges::max(codes_, {}, &Code::length).length; }

void HuffmanCodes::makeTable() {
    tableBits_ = std::min(longest_, kTableBits);
    table_.resize(std::size_t{1} << tableBits_);
    fillTable(0, 0, 0);
}

void HuffmanCodes::fillTable(std::uint32_t node, std::uint32_t code, int length) {
    const bool isLeaf = (nodes_[node] & kInner) == 0;
    if (!isLeaf && length < tableBits_) {
        fillTable(node + 1, code, length + 1);
        fillTable(nodes_[node] & kSymbol, code | 1U << length, length + 1);
        return;
    }
    const std::uint32_t entry = nodes_[node] & kSymbol;
    for (std::size_t at = code; at < table_.size(); at += std::size_t{1} << length)
        table_[at] = (isLeaf ? entry : kInner | node) | static_cast<std::uint32_t>(length)
                                                            << kLengthShift;
}

/// From a node that the table leads to.
std::uint32_t HuffmanCodes::walk(BitReader& in, std::uint32_t node) const {
    node &= kSymbol;
    while (nodes_[node] & kInner) node = in.takeBit() ? nodes_[node] & kSymbol : node + 1;
    return nodes_[node];
}

} // namespace formats
