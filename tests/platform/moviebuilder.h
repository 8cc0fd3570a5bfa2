// Writes movie files of any values, byte by byte: pictures as solid, two-coloured, full and skipped
// blocks, palettes, sounds packed or not. Its trees are balanced over the values that are used.
#pragma once

#include "ompp/bytewriter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// Bits, the lowest of each byte first.
class BitWriter {
  public:
    void put(std::uint32_t value, int bits) {
        for (int i = 0; i < bits; ++i, ++count_) {
            if (count_ % 8 == 0) bytes_.push_back(0);
            bytes_.back() =
                static_cast<std::uint8_t>(bytes_.back() | (value >> i & 1) << count_ % 8);
        }
    }
    /// Bits of a code, the first one at the front.
    void put(const std::string& code) {
        for (const char bit : code) put(bit == '1' ? 1 : 0, 1);
    }
    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
    std::size_t count_ = 0;
};

/// A balanced tree over values, and the code of each.
class MovieTree {
  public:
    void use(std::uint32_t value) { values_.insert(value); }

    /// A tree of bytes.
    void writeBytes(BitWriter& out) {
        out.put(1, 1);
        write(out, [&](std::uint32_t value) { out.put(value, 8); });
        out.put(0, 1);
    }
    /// A tree of words: those of its low and high bytes, three markers that no value is, itself.
    void writeWords(BitWriter& out) {
        MovieTree low;
        MovieTree high;
        if (values_.empty()) use(0);
        for (const std::uint32_t value : values_) {
            low.use(value & 0xFF);
            high.use(value >> 8);
        }
        out.put(1, 1);
        low.writeBytes(out);
        high.writeBytes(out);
        std::uint32_t marker = 0xFFFF;
        for (int i = 0; i < 3; --marker) {
            if (values_.contains(marker)) continue;
            out.put(marker, 16);
            ++i;
        }
        write(out, [&](std::uint32_t value) {
            out.put(low.code(value & 0xFF));
            out.put(high.code(value >> 8));
        });
        out.put(0, 1);
    }
    [[nodiscard]] const std::string& code(std::uint32_t value) const { return codes_.at(value); }
    /// What it takes in memory, as the header of the file tells it.
    [[nodiscard]] std::size_t memory() const { return 4 * (2 * values_.size() - 1 + 3); }

  private:
    template <class Leaf>
    void write(BitWriter& out, const Leaf& leaf) {
        if (values_.empty()) use(0);
        const std::vector<std::uint32_t> sorted(values_.begin(), values_.end());
        write(out, leaf, sorted, 0, sorted.size(), "");
    }
    template <class Leaf>
    void write(BitWriter& out, const Leaf& leaf, const std::vector<std::uint32_t>& sorted,
               std::size_t begin, std::size_t end, const std::string& code) {
        out.put(end - begin > 1 ? 1 : 0, 1);
        if (end - begin == 1) {
            codes_[sorted[begin]] = code;
            return leaf(sorted[begin]);
        }
        const std::size_t middle = (begin + end) / 2;
        write(out, leaf, sorted, begin, middle, code + "0");
        write(out, leaf, sorted, middle, end, code + "1");
    }

    std::set<std::uint32_t> values_;
    std::map<std::uint32_t, std::string> codes_;
};

struct MovieBuilder {
    using Color = std::array<std::uint8_t, 3>; ///< red, green, blue, of 6 bits
    using Palette = std::array<Color, 256>;
    using Samples = std::vector<std::uint8_t>;

    struct Frame {
        std::vector<std::uint8_t> pixels;               ///< width × height, top row first
        std::optional<Palette> palette{};               ///< colours from here on
        std::map<int, Samples> sounds{};                ///< by track
        std::optional<std::vector<std::uint8_t>> raw{}; ///< instead of all that is in the frame
    };
    struct Track {
        std::uint32_t rate = 22050;
        int bits = 8;
        int channels = 1;
        bool packed = false;
        bool unknown = false; ///< of a codec of its own
    };

    std::uint32_t width = 16; ///< multiples of 4
    std::uint32_t height = 8;
    std::int32_t rate = -6666;
    std::uint32_t flags = 0;
    std::map<int, Track> tracks{};
    std::vector<Frame> frames{};
    std::optional<Frame> ring{};

    // Places in the file, known after `build`.
    std::size_t start = 0;           ///< of the first frame
    std::vector<std::size_t> ends{}; ///< of the frames

    [[nodiscard]] std::vector<std::byte> build();

  private:
    enum Kind : std::uint32_t { Mono = 0, Full = 1, Skip = 2, Solid = 3 };
    struct Block {
        std::uint32_t type; ///< of a run of one
        std::vector<std::uint32_t> full{};
        std::uint32_t colours = 0;
        std::uint32_t mask = 0;
    };
    struct Trees {
        MovieTree masks;
        MovieTree colours;
        MovieTree full;
        MovieTree types;
    };

    [[nodiscard]] std::vector<Block> blocksOf(const Frame& frame, const Frame* before) const;
    [[nodiscard]] Block blockOf(const std::array<std::uint8_t, 16>& pixels) const;
    static void writePalette(std::vector<std::uint8_t>& out, const Palette& palette);
    static std::vector<std::uint8_t> chunk(const Track& track, const Samples& samples);
    static std::vector<std::uint8_t> packed(const Track& track, const Samples& samples);
};

inline MovieBuilder::Block MovieBuilder::blockOf(const std::array<std::uint8_t, 16>& pixels) const {
    const std::set<std::uint8_t> used(pixels.begin(), pixels.end());
    const std::uint32_t first = *used.begin();
    const std::uint32_t last = *used.rbegin();
    if (used.size() == 1) return {Solid | first << 8};
    Block block{used.size() == 2 ? Mono : Full};
    block.colours = first | last << 8;
    for (std::uint32_t i = 0; i < 16; ++i) block.mask |= (pixels[i] == last ? 1u : 0u) << i;
    for (std::size_t row = 0; row < 16; row += 4)
        for (const std::size_t pair : {row + 2, row})
            block.full.push_back(pixels[pair] | static_cast<std::uint32_t>(pixels[pair + 1] << 8));
    return block;
}

inline std::vector<MovieBuilder::Block> MovieBuilder::blocksOf(const Frame& frame,
                                                               const Frame* before) const {
    std::vector<Block> blocks;
    for (std::size_t y = 0; y < height; y += 4)
        for (std::size_t x = 0; x < width; x += 4) {
            std::array<std::uint8_t, 16> pixels{};
            bool same = true;
            for (std::size_t i = 0; i < 16; ++i) {
                const std::size_t place = (y + i / 4) * width + x + i % 4;
                pixels[i] = frame.pixels.at(place);
                same = same && pixels[i] == (before ? before->pixels.at(place) : 0);
            }
            blocks.push_back(same ? Block{Skip} : blockOf(pixels));
        }
    return blocks;
}

inline void MovieBuilder::writePalette(std::vector<std::uint8_t>& out, const Palette& palette) {
    const std::size_t start = out.size();
    out.push_back(193);
    for (const Color& color : palette) out.insert(out.end(), color.begin(), color.end());
    out.resize(start + 4 * std::size_t{193});
}

inline std::vector<std::uint8_t> MovieBuilder::packed(const Track& track, const Samples& samples) {
    const auto step = static_cast<std::size_t>(track.bits / 8 * track.channels);
    const auto sample = [&](std::size_t place) {
        return samples[place] | (track.bits == 16 ? samples[place + 1] << 8 : 0);
    };
    const std::size_t bytesEach = static_cast<std::size_t>(track.bits / 8);
    std::vector<std::uint32_t> differences; // of the channels in turn
    for (std::size_t place = step; place < samples.size(); place += bytesEach)
        differences.push_back(static_cast<std::uint32_t>(sample(place) - sample(place - step)) &
                              (track.bits == 16 ? 0xFFFFu : 0xFFu));
    std::vector<MovieTree> trees(step); // for each byte of a sample of all channels
    for (std::size_t i = 0; i < differences.size(); ++i) {
        const std::size_t first = i * bytesEach % step;
        for (std::size_t byte = 0; byte < bytesEach; ++byte)
            trees[first + byte].use(differences[i] >> 8 * byte & 0xFF);
    }
    BitWriter bits;
    bits.put(1, 1);
    bits.put(track.channels == 2 ? 1 : 0, 1);
    bits.put(track.bits == 16 ? 1 : 0, 1);
    for (MovieTree& tree : trees) tree.writeBytes(bits);
    for (std::size_t byte = step; byte-- > 0;) bits.put(samples[byte], 8);
    for (std::size_t i = 0; i < differences.size(); ++i) {
        const std::size_t first = i * bytesEach % step;
        for (std::size_t byte = 0; byte < bytesEach; ++byte)
            bits.put(trees[first + byte].code(differences[i] >> 8 * byte & 0xFF));
    }
    return bits.bytes();
}

inline std::vector<std::uint8_t> MovieBuilder::chunk(const Track& track, const Samples& samples) {
    const std::vector<std::uint8_t> data = track.packed ? packed(track, samples) : samples;
    ByteWriter out;
    out.u32(static_cast<std::int64_t>(data.size()) + (track.packed ? 8 : 4));
    if (track.packed) out.u32(static_cast<std::int64_t>(samples.size()));
    out.all(data);
    std::vector<std::uint8_t> bytes;
    for (const std::byte byte : out.bytes()) bytes.push_back(static_cast<std::uint8_t>(byte));
    return bytes;
}

inline std::vector<std::byte> MovieBuilder::build() {
    std::vector<const Frame*> stored;
    for (const Frame& frame : frames) stored.push_back(&frame);
    if (ring) stored.push_back(&*ring);

    Trees trees;
    std::vector<std::vector<Block>> blocks;
    const Frame* before = nullptr;
    for (const Frame* frame : stored) {
        blocks.emplace_back();
        if (frame->raw) continue;
        blocks.back() = blocksOf(*frame, before);
        before = frame;
        for (const Block& block : blocks.back()) {
            trees.types.use(block.type);
            if ((block.type & 3) == Mono) {
                trees.masks.use(block.mask);
                trees.colours.use(block.colours);
            }
            if ((block.type & 3) == Full)
                for (const std::uint32_t pair : block.full) trees.full.use(pair);
        }
    }
    BitWriter treeBits;
    for (MovieTree* tree : {&trees.masks, &trees.colours, &trees.full, &trees.types})
        tree->writeWords(treeBits);
    std::vector<std::uint8_t> treeBytes = treeBits.bytes();
    treeBytes.resize((treeBytes.size() + 3) / 4 * 4);

    std::vector<std::vector<std::uint8_t>> contents;
    std::vector<std::uint8_t> parts;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const Frame& frame = *stored[i];
        std::vector<std::uint8_t> content;
        std::uint32_t part = frame.palette ? 1 : 0;
        for (const auto& sound : frame.sounds) part |= 2u << sound.first;
        parts.push_back(static_cast<std::uint8_t>(part));
        if (frame.palette) writePalette(content, *frame.palette);
        for (const auto& [track, samples] : frame.sounds) {
            const auto bytes = chunk(tracks.at(track), samples);
            content.insert(content.end(), bytes.begin(), bytes.end());
        }
        BitWriter bits;
        for (const Block& block : blocks[i]) {
            bits.put(trees.types.code(block.type));
            if ((block.type & 3) == Mono) {
                bits.put(trees.colours.code(block.colours));
                bits.put(trees.masks.code(block.mask));
            }
            if ((block.type & 3) == Full)
                for (const std::uint32_t pair : block.full) bits.put(trees.full.code(pair));
        }
        bits.put(0, 8); // there is always something
        content.insert(content.end(), bits.bytes().begin(), bits.bytes().end());
        if (frame.raw) content = *frame.raw;
        content.resize((content.size() + 3) / 4 * 4);
        contents.push_back(std::move(content));
    }

    ByteWriter out;
    out.text("SMK2").u32(width).u32(height).u32(static_cast<std::int64_t>(frames.size())).u32(rate);
    out.u32(flags | (ring ? 1 : 0)).zeros(7 * 4);
    out.u32(static_cast<std::int64_t>(treeBytes.size()));
    for (const MovieTree* tree : {&trees.masks, &trees.colours, &trees.full, &trees.types})
        out.u32(static_cast<std::int64_t>(tree->memory()));
    for (int track = 0; track < 7; ++track) {
        const auto found = tracks.find(track);
        if (found == tracks.end()) {
            out.u32(0);
            continue;
        }
        const Track& sound = found->second;
        out.u32(sound.rate | 1u << 30 | (sound.packed ? 1u << 31 : 0) |
                (sound.bits == 16 ? 1u << 29 : 0) | (sound.channels == 2 ? 1u << 28 : 0) |
                (sound.unknown ? 1u << 26 : 0));
    }
    out.u32(0);
    for (const auto& content : contents) out.u32(static_cast<std::int64_t>(content.size()) | 1);
    out.all(parts).all(treeBytes);
    start = out.size();
    ends.clear();
    for (const auto& content : contents) {
        out.all(content);
        ends.push_back(out.size());
    }
    return out.bytes();
}

} // namespace testing_support
