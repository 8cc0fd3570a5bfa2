#include "movies/videocoder.h"

namespace rsc {

namespace {

/// The trees, by what they are for.
struct Trees {
    WordTree masks;
    WordTree colours;
    WordTree pairs;
    WordTree runs;
};

WordTree treeFor(const std::vector<FrameBlocks>& frames, Values FrameBlocks::*which) {
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
    if (bytes.empty()) put8(bytes, 0); // codes may have no bits, but readers want a byte
    return bytes;
}

} // namespace

CodedVideo VideoCoder::finish() const {
    const Trees trees{treeFor(frames_, &FrameBlocks::masks),
                      treeFor(frames_, &FrameBlocks::colours),
                      treeFor(frames_, &FrameBlocks::pairs), treeFor(frames_, &FrameBlocks::runs)};
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

} // namespace rsc
