// Writes the pictures of a movie.
#pragma once

#include "formats/movie/blocks.h"
#include "formats/movie/wordtree.h"

namespace formats {

/// What is told of a frame: the values of each tree, in the order in which readers take them.
struct FrameBlocks {
    static constexpr std::size_t kPairsOfBlock = 8;

    Values masks;
    Values colours;
    Values pairs;
    Values runs;
};

struct CodedVideo {
    static constexpr std::size_t kTrees = 4;

    Bytes trees;
    std::array<std::uint32_t, kTrees> treeSizes{}; ///< bytes in a reader's memory
    std::vector<Bytes> frames;                     ///< each has at least one byte
};

/// The trees hold for the whole movie, so that the frames come out when all are there; until then
/// they are kept as blocks.
class VideoCoder {
  public:
    /// Sides in pixels, multiples of 4.
    VideoCoder(int width, int height);

    /// The next frame, row by row from the top left. When it is to be told `whole`, no block is
    /// skipped, so that it does not need the frames before.
    void add(ByteSpan indices, bool whole);

    /// None when the frames hold so many different values that a tree has no room for its markers.
    [[nodiscard]] std::optional<CodedVideo> finish() const;

  private:
    using Block = std::array<std::uint8_t, kBlockSide * kBlockSide>;

    [[nodiscard]] Block blockAt(ByteSpan indices, std::size_t block) const;

    std::size_t width_;
    std::size_t blocksAcross_;
    std::size_t blocks_;
    Bytes before_;
    std::vector<FrameBlocks> frames_;
};

} // namespace formats
