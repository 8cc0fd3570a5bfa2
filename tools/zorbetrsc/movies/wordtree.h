// The codes of 16-bit values, and how a movie file stores their tree: two trees for the low and the
// high bytes of its leaves, three markers, and the tree itself.
//
// Readers keep the three values that came last, anew in each frame. The leaf of a marker stands for
// one of them. The writer uses these leaves for the whole movie or not at all, whichever is
// shorter.
#pragma once

#include "movies/huffmantree.h"

#include <array>
#include <optional>

namespace rsc {

using Values = std::vector<std::uint16_t>;
using ValueSpan = std::span<const std::uint16_t>;

/// What readers keep.
class ValueCache {
  public:
    static constexpr std::size_t kSlots = 3;

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

class WordTree {
  public:
    /// The tree for the values of these frames, each in the order in which they are put. Refused
    /// when no three values are left for the markers.
    static WordTree forFrames(std::span<const ValueSpan> frames);

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
    using Markers = std::array<std::uint16_t, ValueCache::kSlots>;
    struct Statistics;

    WordTree(const Statistics& statistics, const Markers& markers, bool usesCache);

    static Statistics count(std::span<const ValueSpan> frames, bool usesCache);
    static std::optional<Markers> chooseMarkers(const Statistics& statistics);
    static std::vector<std::uint32_t> leafCounts(const Statistics& statistics,
                                                 const Markers& markers);
    static std::optional<WordTree> make(std::span<const ValueSpan> frames, bool usesCache);

    HuffmanTree tree_;
    Markers markers_;
    bool usesCache_;
    std::uint64_t bits_ = 0; ///< of the tree and all values
};

} // namespace rsc
