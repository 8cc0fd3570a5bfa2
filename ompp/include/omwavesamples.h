// What is read of a sound's stream: its header, and its samples. These are delivered in chunks of
// at most a buffer's size at offsets of the play window that are multiples of it.
//
// A whole stream has them all in memory. Of a chunked one, blocks of a buffer's size are kept: as
// many as the output ring has buffers for those still queued, and as many again that were read
// ahead.
#pragma once

#include "formats/sound/wave.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

class OMIStream;

/// Reads the header wherever the stream stands. An unknown header gives a length of 0. Unusual
/// values fail checks and are taken as they are; a RIFF WAVE file without format is a fatal error.
[[nodiscard]] formats::sound::Header OMReadWaveHeader(OMIStream& stream);

class OMWaveSamples {
  public:
    using Chunk = std::span<const std::uint8_t>;

    /// The stream must outlive the samples and must not be closed while they are loaded. Samples
    /// begin at `dataOffset` of it.
    OMWaveSamples(OMIStream& stream, std::size_t dataOffset)
        : stream_(stream), dataOffset_(dataOffset) {}
    ~OMWaveSamples() { unload(); }
    OMWaveSamples& operator=(OMWaveSamples&&) = delete;

    [[nodiscard]] bool isStreamed() const;

    /// Gets ready for playing the window `start` to `end` (inclusive) from its start: a whole
    /// stream is read, a chunked one as far as its first blocks are not in memory. `blocks` is the
    /// number of output buffers, `blockSize` their size. Another window needs `unload` first.
    void load(std::int64_t start, std::int64_t end, std::size_t blockSize, std::size_t blocks);
    void unload();

    /// The chunk at `position`. It stays until as many others were asked for as there are output
    /// buffers. What cannot be read is silence.
    Chunk chunk(std::int64_t position, std::size_t count);
    /// Whether `chunk` needs no reading.
    [[nodiscard]] bool has(std::int64_t position) const;

  private:
    struct Block {
        std::int64_t position;
        std::size_t count;
    };

    Chunk read(std::int64_t position, std::size_t count);
    Chunk wholeChunk(std::int64_t position, std::size_t count);
    std::span<std::uint8_t> storage(std::size_t block) {
        return std::span(storage_).subspan(block * blockSize_, blockSize_);
    }

    OMIStream& stream_;
    std::size_t dataOffset_;
    std::size_t blockSize_ = 0;
    std::size_t maxBlocks_ = 0;
    std::span<const std::byte> whole_; ///< whole streams: everything
    std::vector<std::uint8_t> storage_;
    std::vector<Block> blocks_;
    std::size_t oldest_ = 0;        ///< the block to be replaced next when all are used
    std::vector<std::uint8_t> cut_; ///< whole streams: the chunk in which the data end early
    std::vector<std::uint8_t> silence_;
};
