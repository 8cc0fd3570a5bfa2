#include "formats/movie/wordtree.h"

#include "formats/movie/bytetree.h"

#include <algorithm>

namespace formats {

namespace {

constexpr std::size_t kValues = 65536;
constexpr std::size_t kNodeSize = 4; ///< bytes of a node in memory
constexpr int kDeepest = 500;        ///< bits of codes in files that others wrote
constexpr std::size_t kMostNodes = 2 * kValues;

std::uint8_t lowByte(std::size_t value) { return value & 0xFF; }
std::uint8_t highByte(std::size_t value) { return value >> 8 & 0xFF; }

} // namespace

struct WordTree::Statistics {
    std::vector<std::uint32_t> literals = std::vector<std::uint32_t>(kValues);
    std::array<std::uint32_t, ValueCache::kSlots> slots{}; ///< values that were found there
};

WordTree::Statistics WordTree::count(std::span<const ValueSpan> frames, bool usesCache) {
    Statistics statistics;
    for (const ValueSpan& frame : frames) {
        ValueCache cache;
        for (const std::uint16_t value : frame) {
            const auto slot = usesCache ? cache.find(value) : std::nullopt;
            ++(slot ? statistics.slots[*slot] : statistics.literals[value]);
            cache.add(value);
        }
    }
    return statistics;
}

/// The highest values that are no literals.
std::optional<ValueMarkers> WordTree::chooseMarkers(const Statistics& statistics) {
    ValueMarkers markers{};
    std::size_t found = 0;
    for (std::size_t value = kValues; value > 0 && found < markers.size(); --value)
        if (statistics.literals[value - 1] == 0)
            markers[found++] = static_cast<std::uint16_t>(value - 1);
    return found == markers.size() ? std::optional(markers) : std::nullopt;
}

std::vector<std::uint32_t> WordTree::leafCounts(const Statistics& statistics,
                                                const ValueMarkers& markers) {
    std::vector<std::uint32_t> counts = statistics.literals;
    for (std::size_t slot = 0; slot < markers.size(); ++slot)
        counts[markers[slot]] = statistics.slots[slot];
    return counts;
}

WordTree::WordTree(const Statistics& statistics, const ValueMarkers& markers, bool usesCache)
    : tree_(leafCounts(statistics, markers)), markers_(markers), usesCache_(usesCache) {
    BitWriter shape;
    write(shape);
    bits_ = shape.bitCount() + tree_.bitCount(leafCounts(statistics, markers));
}

std::optional<WordTree> WordTree::make(std::span<const ValueSpan> frames, bool usesCache) {
    const Statistics statistics = count(frames, usesCache);
    const auto markers = chooseMarkers(statistics);
    return markers ? std::optional(WordTree(statistics, *markers, usesCache)) : std::nullopt;
}

std::optional<WordTree> WordTree::forFrames(std::span<const ValueSpan> frames) {
    auto plain = make(frames, false);
    auto cached = make(frames, true);
    return plain && plain->bits_ <= cached->bits_ ? plain : cached;
}

void WordTree::write(BitWriter& out) const {
    ByteCounts low{};
    ByteCounts high{};
    BitWriter nowhere;
    tree_.putShape(nowhere, [&](std::size_t value) {
        ++low[lowByte(value)];
        ++high[highByte(value)];
    });
    const ByteTree lowBytes(low);
    const ByteTree highBytes(high);
    out.putBit(true);
    lowBytes.write(out);
    highBytes.write(out);
    for (const std::uint16_t marker : markers_) out.put(marker, 16);
    tree_.putShape(out, [&](std::size_t value) {
        lowBytes.put(out, lowByte(value));
        highBytes.put(out, highByte(value));
    });
    out.putBit(false);
}

std::uint32_t WordTree::sizeInMemory() const {
    const std::size_t nodes = 2 * tree_.leafCount() - 1;
    return static_cast<std::uint32_t>(kNodeSize * (nodes + ValueCache::kSlots));
}

void WordTree::FrameWriter::put(BitWriter& out, std::uint16_t value) {
    const auto slot = tree_.usesCache_ ? cache_.find(value) : std::nullopt;
    tree_.tree_.put(out, slot ? tree_.markers_[*slot] : value);
    cache_.add(value);
}

bool WordCodes::read(BitReader& in) {
    isThere_ = in.takeBit();
    if (!isThere_) return true;
    HuffmanCodes low;
    HuffmanCodes high;
    if (!readByteTree(in, low) || !readByteTree(in, high)) return false;
    ValueMarkers markers{};
    for (std::uint16_t& marker : markers) marker = static_cast<std::uint16_t>(in.take(16));
    const auto readLeaf = [&]() -> std::uint32_t {
        const std::uint32_t lowByte = low.get(in);
        const std::uint32_t value = lowByte | high.get(in) << 8;
        const auto* const marker = std::ranges::find(markers, value);
        if (marker == markers.end()) return value;
        return kFirstSlot + static_cast<std::uint32_t>(marker - markers.begin());
    };
    if (!codes_.read(in, {kDeepest, kMostNodes}, readLeaf)) return false;
    (void)in.takeBit();
    return true;
}

} // namespace formats
