// Reads the pictures of a movie.
#pragma once

#include "formats/movie/blocks.h"
#include "formats/movie/wordtree.h"

namespace formats {

class VideoDecoder {
  public:
    /// Sides in pixels, at least 1; what is left of them behind whole blocks is never drawn. None
    /// when the trees are damaged. `later`: the file is of the later kind.
    [[nodiscard]] static std::optional<VideoDecoder> make(int width, int height, bool later,
                                                          ByteSpan trees);

    /// Draws over the frame before: width × height pixels, row by row from the top left. False when
    /// bits are missing; some of its blocks are drawn then.
    [[nodiscard]] bool draw(ByteSpan frame, std::span<std::uint8_t> pixels);

  private:
    /// How many pixels of a full block are told.
    enum class Detail : std::uint8_t { All, Rows, Quarters };

    VideoDecoder() = default;
    [[nodiscard]] Detail readDetail(BitReader& in, const BlockRun& run) const;
    void drawBlocks(BitReader& in, const BlockRun& run, Detail detail, std::uint8_t* first,
                    std::size_t count);
    void drawMono(BitReader& in, std::uint8_t* block);
    void drawFull(BitReader& in, Detail detail, std::uint8_t* block);
    [[nodiscard]] std::uint8_t* lineOf(std::uint8_t* block, std::size_t y) const {
        return block + y * stride_;
    }

    std::size_t stride_ = 0; ///< the picture's width
    std::size_t blocksAcross_ = 0;
    std::size_t blocks_ = 0;
    bool later_ = false;
    WordCodes masks_;
    WordCodes colours_;
    WordCodes pairs_;
    WordCodes runs_;
};

} // namespace formats
