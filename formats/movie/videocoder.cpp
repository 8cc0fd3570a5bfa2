#include "formats/movie/videocoder.h"

#include <algorithm>

namespace formats {

namespace {

using BlockPixels = std::span<const std::uint8_t, kBlockSide * kBlockSide>;

std::uint16_t word(std::uint8_t low, std::uint8_t high) {
    return static_cast<std::uint16_t>(low | high << 8);
}

/// The second colour of a block whose first is that of its first pixel; the same when it has only
/// one, none when it has more.
std::optional<std::uint8_t> secondColour(BlockPixels pixels) {
    std::uint8_t second = pixels[0];
    for (const std::uint8_t pixel : pixels) {
        if (pixel == pixels[0] || pixel == second) continue;
        if (second != pixels[0]) return std::nullopt;
        second = pixel;
    }
    return second;
}

std::uint16_t maskOf(BlockPixels pixels) {
    std::uint16_t mask = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        if (pixels[i] != pixels[0]) mask |= static_cast<std::uint16_t>(1 << i);
    return mask;
}

void addPairs(BlockPixels pixels, Values& pairs) {
    for (std::size_t row = 0; row < pixels.size(); row += kBlockSide) {
        pairs.push_back(word(pixels[row + 2], pixels[row + 3]));
        pairs.push_back(word(pixels[row], pixels[row + 1]));
    }
}

/// Joins blocks to runs.
class RunJoiner {
  public:
    explicit RunJoiner(Values& runs) : runs_(runs) {}

    void add(BlockKind kind, std::uint8_t colour) {
        if (kind != kind_ || colour != colour_) finish();
        kind_ = kind;
        colour_ = colour;
        ++blocks_;
    }

    void finish() {
        while (blocks_ > 0) {
            const BlockRun run = BlockRun::longest(kind_, blocks_, colour_);
            runs_.push_back(run.value());
            blocks_ -= run.length();
        }
    }

  private:
    Values& runs_;
    BlockKind kind_ = BlockKind::Skip;
    std::uint8_t colour_ = 0;
    std::size_t blocks_ = 0;
};

struct Trees {
    WordTree masks;
    WordTree colours;
    WordTree pairs;
    WordTree runs;
};

std::optional<WordTree> treeFor(const std::vector<FrameBlocks>& frames,
                                Values FrameBlocks::*which) {
    std::vector<ValueSpan> values;
    for (const FrameBlocks& frame : frames) values.emplace_back(frame.*which);
    return WordTree::forFrames(values);
}

/// One kind of values of a frame, put one after the other.
class ValueQueue {
  public:
    ValueQueue(const Values& values, const WordTree& tree) : values_(values), writer_(tree) {}

    [[nodiscard]] bool atEnd() const { return at_ == values_.size(); }
    std::uint16_t put(BitWriter& out) {
        writer_.put(out, values_[at_]);
        return values_[at_++];
    }

  private:
    const Values& values_;
    WordTree::FrameWriter writer_;
    std::size_t at_ = 0;
};

Bytes writeFrame(const FrameBlocks& frame, const Trees& trees) {
    ValueQueue masks(frame.masks, trees.masks);
    ValueQueue colours(frame.colours, trees.colours);
    ValueQueue pairs(frame.pairs, trees.pairs);
    ValueQueue runs(frame.runs, trees.runs);
    BitWriter out;
    while (!runs.atEnd()) {
        const BlockRun run = BlockRun::fromValue(runs.put(out));
        for (std::size_t block = 0; block < run.length(); ++block) {
            if (run.kind == BlockKind::Mono) {
                colours.put(out);
                masks.put(out);
            } else if (run.kind == BlockKind::Full) {
                for (std::size_t i = 0; i < FrameBlocks::kPairsOfBlock; ++i) pairs.put(out);
            }
        }
    }
    Bytes bytes = out.take();
    if (bytes.empty()) bytes.push_back(0); // codes may have no bits, but readers want a byte
    return bytes;
}

} // namespace

VideoCoder::VideoCoder(int width, int height)
    : width_(static_cast<std::size_t>(width)), blocksAcross_(width_ / kBlockSide),
      blocks_(blocksAcross_ * (static_cast<std::size_t>(height) / kBlockSide)) {}

VideoCoder::Block VideoCoder::blockAt(ByteSpan indices, std::size_t block) const {
    const std::size_t top = block / blocksAcross_ * kBlockSide;
    const std::size_t left = block % blocksAcross_ * kBlockSide;
    Block pixels{};
    auto to = pixels.begin();
    for (std::size_t y = top; y < top + kBlockSide; ++y)
        to = std::ranges::copy(indices.subspan(y * width_ + left, kBlockSide), to).out;
    return pixels;
}

void VideoCoder::add(ByteSpan indices, bool whole) {
    FrameBlocks& frame = frames_.emplace_back();
    RunJoiner runs(frame.runs);
    for (std::size_t i = 0; i < blocks_; ++i) {
        const Block pixels = blockAt(indices, i);
        const auto second = secondColour(pixels);
        if (!whole && !before_.empty() && pixels == blockAt(before_, i)) {
            runs.add(BlockKind::Skip, 0);
        } else if (!second) {
            runs.add(BlockKind::Full, 0);
            addPairs(pixels, frame.pairs);
        } else if (*second == pixels[0]) {
            runs.add(BlockKind::Solid, pixels[0]);
        } else {
            runs.add(BlockKind::Mono, 0);
            frame.colours.push_back(word(pixels[0], *second));
            frame.masks.push_back(maskOf(pixels));
        }
    }
    runs.finish();
    before_.assign(indices.begin(), indices.end());
}

std::optional<CodedVideo> VideoCoder::finish() const {
    auto masks = treeFor(frames_, &FrameBlocks::masks);
    auto colours = treeFor(frames_, &FrameBlocks::colours);
    auto pairs = treeFor(frames_, &FrameBlocks::pairs);
    auto runs = treeFor(frames_, &FrameBlocks::runs);
    if (!masks || !colours || !pairs || !runs) return std::nullopt;
    const Trees trees{*std::move(masks), *std::move(colours), *std::move(pairs), *std::move(runs)};
    CodedVideo video;
    BitWriter out;
    for (const WordTree* tree : {&trees.masks, &trees.colours, &trees.pairs, &trees.runs})
        tree->write(out);
    video.trees = out.take();
    video.treeSizes = {trees.masks.sizeInMemory(), trees.colours.sizeInMemory(),
                       trees.pairs.sizeInMemory(), trees.runs.sizeInMemory()};
    for (const FrameBlocks& frame : frames_) video.frames.push_back(writeFrame(frame, trees));
    return video;
}

} // namespace formats
