// Input streams: every byte of media that the program reads arrives through one. A stream is a
// read-only view of one resource or one file, delivered into a buffer chunk by chunk or as a whole.
//
// This class is the walk over the bytes, the same for every source; where they come from is its
// heirs' business. A stream that could not be made is empty: its length is 0 and it delivers
// nothing. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

/// Buffer modes; any positive number is a chunk size in bytes.
inline constexpr int kOMIStreamCache = -1;   ///< the whole resource in one fill
inline constexpr int kOMIStreamBuffered = 0; ///< chunks of the default size
inline constexpr int kOMIStreamDefaultChunk = 4096;

class OMIStream {
  public:
    virtual ~OMIStream() = default;
    OMIStream& operator=(const OMIStream&) = delete;

    /// "OMIStreamFile" and the like.
    [[nodiscard]] virtual std::string_view className() const = 0;

    [[nodiscard]] std::size_t length() const { return length_; }
    /// Offset of the byte that the next fill begins with.
    [[nodiscard]] std::size_t position() const { return position_; }
    /// What the last fill delivered; empty after seek, close and a change of buffer. The bytes stay
    /// until the next fill in a chunked stream, until the buffer goes in a whole one.
    [[nodiscard]] std::span<const std::byte> current() const { return current_; }
    /// Offset of the first byte of the current data.
    [[nodiscard]] std::size_t chunkStart() const { return chunkStart_; }
    [[nodiscard]] bool isWhole() const { return bufferSize_ == kOMIStreamCache; }
    /// The source was opened by a first fill.
    [[nodiscard]] bool isCommitted() const { return committed_; }

    /// Delivers the next chunk, or in a whole stream everything from the position on. The number of
    /// bytes now current; 0 at the end and when the source cannot be read.
    std::size_t fill();
    /// The whole of a whole stream, whatever its position, which is at the end afterwards. Nothing
    /// for a chunked stream.
    std::span<const std::byte> readAll();
    /// Positions before the start or past the end become the start and the end.
    void seek(std::int64_t position);

    /// Changes the buffer mode and the buffer that is filled; with an empty `buffer` the stream
    /// makes one. The caller keeps its buffer alive; at most its size is delivered at a time, and a
    /// whole stream delivers no more than fits in. Refused by a failed check once a whole stream
    /// has been filled.
    void setDstBuffer(int bufferMode, std::span<std::byte> buffer = {});

    /// Closes the source, frees the buffer and rewinds; a later fill starts anew. A stream over
    /// cached memory stays committed.
    void close();

  protected:
    OMIStream(int bufferMode, std::span<std::byte> buffer);
    /// Never takes the buffer over: the copy delivers again what the other one delivered last.
    OMIStream(const OMIStream& other);

    void setLength(std::size_t length) { length_ = length; }
    [[nodiscard]] bool hasUserBuffer() const { return !userBuffer_.empty(); }

    /// Makes this a whole stream over bytes that are in memory already and outlive it: they are not
    /// copied, a buffer of the caller is dropped, and the first fill happens here. The source is
    /// never opened.
    void setMemory(std::span<const std::byte> bytes);

    /// Makes the source readable; false when that is impossible. Called before the first read and
    /// again after closeSource.
    virtual bool openSource() = 0;
    /// Reads from `position` on; the number of bytes read.
    virtual std::size_t readSource(std::size_t position, std::span<std::byte> buffer) = 0;
    /// Called when no more is read for now; also when the source is not open. Not called by this
    /// class's destructor.
    virtual void closeSource() = 0;

  private:
    bool commit();
    void loadWhole();
    std::size_t deliverWhole();
    std::size_t deliverChunk();
    /// The destination of a fill, made now unless there is one.
    std::span<std::byte> destination();
    void dropBuffer();

    int bufferSize_;                      ///< as asked for: a buffer mode
    std::span<std::byte> userBuffer_;     ///< empty: the stream's own buffer is used
    std::unique_ptr<std::byte[]> buffer_; ///< the own one, made by the first fill
    std::span<const std::byte> memory_;   ///< what setMemory was told
    std::span<const std::byte> current_;
    std::size_t length_ = 0;
    std::size_t position_ = 0;
    std::size_t chunkStart_ = 0;
    std::size_t loaded_ = 0; ///< whole streams: bytes in the buffer
    bool inMemory_ = false;  ///< setMemory was called
    bool committed_ = false;
};
