// The pictures of a movie as its file stores them. The trees hold for the whole movie, so that the
// frames come out when all are there; until then they are kept as blocks.
#pragma once

#include "movies/blockcoder.h"

namespace rsc {

struct CodedVideo {
    static constexpr std::size_t kTrees = 4;

    Bytes trees;
    std::array<std::uint32_t, kTrees> treeSizes{}; ///< bytes in a reader's memory
    std::vector<Bytes> frames;                     ///< each has at least one byte
};

class VideoCoder {
  public:
    /// Sides in pixels, multiples of 4.
    VideoCoder(int width, int height) : blocks_(width, height) {}

    /// As BlockCoder::code.
    void add(ByteSpan indices, bool whole) { frames_.push_back(blocks_.code(indices, whole)); }

    [[nodiscard]] CodedVideo finish() const;

  private:
    BlockCoder blocks_;
    std::vector<FrameBlocks> frames_;
};

} // namespace rsc
