// Reads movie files back, straight from the description of the format and strictly: whatever a
// reader could stumble over throws.
#pragma once

#include "bytes.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>
#include <vector>

namespace moviedecoder {

using rsc::Bytes;

inline void demand(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

class Bits {
  public:
    explicit Bits(Bytes bytes) : bytes_(std::move(bytes)) {}
    unsigned get(int count) {
        unsigned value = 0;
        for (int i = 0; i < count; ++i, ++at_) value |= (bytes_.at(at_ / 8) >> (at_ % 8) & 1U) << i;
        return value;
    }
    void demandOnlyPadding() {
        demand(at_ <= bytes_.size() * 8 && bytes_.size() - at_ / 8 <= 4, "more than padding");
        while (at_ < bytes_.size() * 8) demand(get(1) == 0, "bits that nobody reads");
    }

  private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

struct Tree {
    struct Node {
        std::array<std::size_t, 2> branches{};
        unsigned value = 0;
    };

    template <class Leaf>
    std::size_t read(Bits& bits, const Leaf& leaf, int depth = 0) {
        demand(depth <= 24, "a code is too long");
        const std::size_t at = nodes.size();
        nodes.emplace_back();
        if (bits.get(1) == 0) {
            nodes[at].value = leaf();
            return at;
        }
        for (const std::size_t i : {0U, 1U}) {
            const std::size_t branch = read(bits, leaf, depth + 1);
            nodes[at].branches[i] = branch;
        }
        return at;
    }
    unsigned get(Bits& bits) const {
        std::size_t at = 0;
        while (nodes[at].branches[0] != 0) at = nodes[at].branches[bits.get(1)];
        return nodes[at].value;
    }

    std::vector<Node> nodes; ///< the root first
};

inline Tree readByteTree(Bits& bits) {
    Tree tree;
    demand(bits.get(1) == 1, "no tree of bytes");
    tree.read(bits, [&] { return bits.get(8); });
    demand(bits.get(1) == 0, "a tree of bytes has no end");
    return tree;
}

/// A tree of 16-bit values with the three values that came last.
struct WordTree {
    WordTree(Bits& bits, std::uint32_t sizeInMemory) {
        demand(bits.get(1) == 1, "no tree of words");
        const Tree low = readByteTree(bits);
        const Tree high = readByteTree(bits);
        for (unsigned& marker : markers) marker = bits.get(16);
        std::multiset<unsigned> values;
        tree.read(bits, [&] {
            const unsigned lowByte = low.get(bits);
            return *values.insert(lowByte | high.get(bits) << 8);
        });
        demand(bits.get(1) == 0, "a tree of words has no end");
        demand(sizeInMemory == 4 * (tree.nodes.size() + 3), "its size in memory is wrong");
        demand(std::set(markers.begin(), markers.end()).size() == 3, "markers are alike");
        for (const unsigned value : values)
            demand(values.count(value) == 1, "two leaves are alike");
        usesCache = std::ranges::any_of(markers, [&](unsigned m) { return values.contains(m); });
    }
    void startFrame() { last = {}; }
    unsigned get(Bits& bits) {
        unsigned value = tree.get(bits);
        const auto* marker = std::ranges::find(markers, value);
        if (marker != markers.end())
            value = last[static_cast<std::size_t>(marker - markers.begin())];
        if (value != last[0]) last = {value, last[0], last[1]};
        return value;
    }

    Tree tree;
    std::array<unsigned, 3> markers{};
    std::array<unsigned, 3> last{};
    bool usesCache = false;
};

/// Packed samples of a chunk behind its length.
inline Bytes unpackSound(const rsc::ByteReader& chunk, std::uint32_t format) {
    const std::size_t size = chunk.u32(0);
    const auto data = chunk.slice(4, chunk.size() - 4);
    Bits bits(Bytes(data.begin(), data.end()));
    const unsigned channels = (format >> 28 & 1) + 1;
    const unsigned bytes = (format >> 29 & 1) + 1;
    demand(bits.get(1) == 1 && bits.get(1) == channels - 1 && bits.get(1) == bytes - 1,
           "a chunk contradicts the header");
    std::vector<Tree> trees;
    for (unsigned i = 0; i < channels * bytes; ++i) trees.push_back(readByteTree(bits));
    std::array<unsigned, 2> samples{};
    for (unsigned channel = channels; channel-- > 0;)
        for (unsigned byte = bytes; byte-- > 0;) samples[channel] |= bits.get(8) << byte * 8;
    Bytes out;
    for (unsigned i = 0; out.size() < size; ++i) {
        const unsigned channel = i % channels;
        for (unsigned byte = 0; i >= channels && byte < bytes; ++byte)
            samples[channel] += trees[channel * bytes + byte].get(bits) << byte * 8;
        for (unsigned byte = 0; byte < bytes; ++byte) rsc::put8(out, samples[channel] >> byte * 8);
    }
    demand(out.size() == size, "a chunk ends within a sample");
    bits.demandOnlyPadding();
    return out;
}

struct Frame {
    bool isKey = false;
    bool hasPalette = false;
    Bytes palette; ///< 256 times red, green, blue, of 6 bits
    Bytes pixels;
    Bytes sound;
};

struct Movie {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<Frame> frames; ///< a ring frame is the last
    std::set<unsigned> kinds;  ///< of blocks: mono, full, skip, solid
    std::set<unsigned> runs;   ///< their lengths, as indices
    bool usesCache = false;
};

class Decoder {
  public:
    explicit Decoder(const Bytes& file) : file_(file), in_(file_, "the movie is cut off") {}

    Movie decode() {
        movie_.width = in_.u32(4);
        movie_.height = in_.u32(8);
        const std::size_t count = in_.u32(12) + (in_.u32(20) & 1);
        const std::size_t trees = 104 + 5 * count;
        Bits bits(part(trees, in_.u32(52)));
        for (std::size_t i = 0; i < 4; ++i) {
            trees_.emplace_back(bits, in_.u32(56 + 4 * i));
            movie_.usesCache |= trees_.back().usesCache;
        }
        bits.demandOnlyPadding();
        frame_.palette.resize(768);
        frame_.pixels.resize(movie_.width * movie_.height);
        std::size_t at = trees + in_.u32(52);
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t word = in_.u32(104 + 4 * i);
            frame_.isKey = (word & 1) != 0;
            decodeFrame(part(at, word & ~3U), file_.at(104 + 4 * count + i));
            movie_.frames.push_back(frame_);
            at += word & ~3U;
        }
        demand(at == file_.size(), "something lies behind the frames");
        return movie_;
    }

  private:
    [[nodiscard]] Bytes part(std::size_t at, std::size_t size) const {
        const auto bytes = in_.slice(at, size);
        return {bytes.begin(), bytes.end()};
    }

    void decodeFrame(const Bytes& data, unsigned contents) {
        const rsc::ByteReader in(data, "a frame is cut off");
        std::size_t at = 0;
        frame_.hasPalette = (contents & 1) != 0;
        if (frame_.hasPalette) {
            readPalette(in);
            at = 4U * in.u8(0);
        }
        frame_.sound.clear();
        if ((contents & 2) != 0) {
            const std::uint32_t format = in_.u32(72);
            const auto chunk = in.slice(at + 4, in.u32(at) - 4);
            frame_.sound = (format >> 31) != 0 ? unpackSound({chunk, "a chunk is cut off"}, format)
                                               : Bytes(chunk.begin(), chunk.end());
            demand(frame_.sound.size() >= 4 && frame_.sound.size() <= in_.u32(24),
                   "a chunk's size");
            at += in.u32(at);
        }
        demand(contents < 4 && at < data.size() && data.size() % 4 == 0, "a frame's size");
        drawBlocks(Bits(Bytes(data.begin() + static_cast<long>(at), data.end())));
    }

    /// Only colours as such; the other commands are not written.
    void readPalette(const rsc::ByteReader& in) {
        for (std::size_t i = 0; i < frame_.palette.size(); ++i) {
            frame_.palette[i] = in.u8(1 + i);
            demand(frame_.palette[i] < 64, "a component has more than 6 bits");
        }
    }

    void drawBlocks(Bits bits) {
        for (WordTree& tree : trees_) tree.startFrame();
        const std::size_t blocks = movie_.width / 4 * (movie_.height / 4);
        for (std::size_t block = 0; block < blocks;) {
            const unsigned run = trees_[3].get(bits);
            const unsigned index = run >> 2 & 63;
            movie_.kinds.insert(run & 3);
            movie_.runs.insert(index);
            for (unsigned left = index < 59 ? index + 1 : 128U << (index - 59);
                 left > 0 && block < blocks; --left, ++block)
                drawBlock(bits, run, block);
        }
        bits.demandOnlyPadding();
    }

    void drawBlock(Bits& bits, unsigned run, std::size_t block) {
        const std::size_t across = movie_.width / 4;
        const std::size_t corner = block / across * 4 * movie_.width + block % across * 4;
        const auto draw = [&](unsigned x, unsigned y, unsigned colour) {
            frame_.pixels.at(corner + y * movie_.width + x) = static_cast<std::uint8_t>(colour);
        };
        if ((run & 3) == 2) return;
        unsigned colours = (run >> 8) | (run & 0xFF00);
        unsigned mask = 0;
        if ((run & 3) == 0) {
            colours = trees_[1].get(bits);
            mask = trees_[0].get(bits);
        }
        for (unsigned y = 0; y < 4; ++y) {
            if ((run & 3) == 1) {
                for (const unsigned x : {2U, 0U}) {
                    const unsigned pair = trees_[2].get(bits);
                    draw(x, y, pair);
                    draw(x + 1, y, pair >> 8);
                }
                continue;
            }
            for (unsigned x = 0; x < 4; ++x)
                draw(x, y, (mask >> (y * 4 + x) & 1) != 0 ? colours >> 8 : colours);
        }
    }

    Bytes file_;
    rsc::ByteReader in_;
    std::vector<WordTree> trees_; ///< masks, pairs of mono blocks, pixels of full ones, runs
    Movie movie_;
    Frame frame_; ///< goes on from frame to frame
};

inline Movie decode(const Bytes& file) { return Decoder(file).decode(); }

} // namespace moviedecoder
