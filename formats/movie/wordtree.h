// Trees of 16-bit values, as they stand in a movie file: a bit 1, two trees of bytes for the low
// and the high bytes of the leaves, three markers of 16 bits, the tree with a code of each for a
// leaf, a bit 0. A bit 0 alone stands for a tree that always gives 0; none is written.
//
// Reader and writer keep the three values that came last, anew in each frame. The leaf of a marker
// stands for one of them. The writer uses these leaves for the whole movie or not at all, whichever
// is shorter.
#pragma once

#include "formats/movie/huffmantree.h"

#include <array>
#include <optional>

namespace formats {

using Values = std::vector<std::uint16_t>;
using ValueSpan = std::span<const std::uint16_t>;

/// The values that came last.
class ValueCache {
  public:
    static constexpr std::size_t kSlots = 3;

    [[nodiscard]] std::uint16_t operator[](std::size_t slot) const { return slots_[slot]; }
    /// The first slot that holds the value.
    [[nodiscard]] std::optional<std::size_t> find(std::uint16_t value) const {
        for (std::size_t slot = 0; slot < kSlots; ++slot)
            if (slots_[slot] == value) return slot;
        return std::nullopt;
    }
    void add(std::uint16_t value) {
        if (value != slots_[0]) slots_ = {value, slots_[0], slots_[1]};
    }

  private:
    std::array<std::uint16_t, kSlots> slots_{};
};

using ValueMarkers = std::array<std::uint16_t, ValueCache::kSlots>;

/// The codes of values, for writing.
class WordTree {
  public:
    /// The tree for the values of these frames, each in the order in which they are put. None when
    /// no three values are left for the markers.
    [[nodiscard]] static std::optional<WordTree> forFrames(std::span<const ValueSpan> frames);

    void write(BitWriter& out) const;
    /// Bytes of the tree in a reader's memory, as the file's header tells them.
    [[nodiscard]] std::uint32_t sizeInMemory() const;

    /// Puts the values of one frame.
    class FrameWriter {
      public:
        /// The tree must outlive the writer.
        explicit FrameWriter(const WordTree& tree) : tree_(tree) {}
        void put(BitWriter& out, std::uint16_t value);

      private:
        const WordTree& tree_;
        ValueCache cache_;
    };

  private:
    struct Statistics;

    WordTree(const Statistics& statistics, const ValueMarkers& markers, bool usesCache);

    static Statistics count(std::span<const ValueSpan> frames, bool usesCache);
    static std::optional<ValueMarkers> chooseMarkers(const Statistics& statistics);
    static std::vector<std::uint32_t> leafCounts(const Statistics& statistics,
                                                 const ValueMarkers& markers);
    static std::optional<WordTree> make(std::span<const ValueSpan> frames, bool usesCache);

    HuffmanTree tree_;
    ValueMarkers markers_;
    bool usesCache_;
    std::uint64_t bits_ = 0; ///< of the tree and all values
};

/// The codes of a tree that was read; at first they always give 0.
class WordCodes {
  public:
    /// False when the tree is damaged.
    [[nodiscard]] bool read(BitReader& in);
    [[nodiscard]] bool isThere() const { return isThere_; }

    void startFrame() { cache_ = {}; }
    std::uint16_t get(BitReader& in) {
        const std::uint32_t leaf = codes_.get(in);
        const auto value =
            leaf < kFirstSlot ? static_cast<std::uint16_t>(leaf) : cache_[leaf - kFirstSlot];
        cache_.add(value);
        return value;
    }

  private:
    static constexpr std::uint32_t kFirstSlot = 1 << 16; ///< symbols from here on are slots

    HuffmanCodes codes_;
    ValueCache cache_;
    bool isThere_ = false;
};

} // namespace formats
