// The file of a movie, read ahead in times of waiting, or whole beforehand.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace platform {

class MovieFile {
  public:
    struct Request {
        bool preload = false;
        int extraBuffer = -1; ///< bytes for reading ahead; negative: automatic
    };

    /// The clock must outlive it.
    MovieFile(std::unique_ptr<File> file, const Request& request, const Clock& clock);

    [[nodiscard]] std::uint64_t size() const { return size_; }
    void seek(std::uint64_t position) { position_ = position; }
    /// Bytes read, less than asked for only at the end of the file or after an error.
    std::size_t read(std::span<std::byte> bytes);
    /// Reads a piece of what comes next into the buffer, if it has room.
    void readAhead();

    // What became of it.
    [[nodiscard]] std::uint64_t bytesRead() const { return bytesRead_; } ///< from the device
    [[nodiscard]] std::uint32_t readMs() const { return readMs_; }
    [[nodiscard]] std::uint32_t readAheadMs() const { return readAheadMs_; }
    [[nodiscard]] std::size_t extraMemory() const { return buffer_.size(); }
    [[nodiscard]] std::size_t highestExtraUse() const { return highestUse_; }
    [[nodiscard]] std::size_t memory() const { return buffer_.size() + whole_.size(); }

  private:
    void preload();
    std::size_t readBuffered(std::span<std::byte> bytes);
    std::size_t readDevice(std::uint64_t place, std::span<std::byte> bytes);
    [[nodiscard]] std::size_t index(std::uint64_t place) const { return place % buffer_.size(); }
    [[nodiscard]] std::size_t buffered() const { return end_ - begin_; }

    std::unique_ptr<File> file_; ///< null when the whole file is in memory
    const Clock& clock_;
    std::uint64_t size_;
    std::uint64_t position_ = 0;
    std::vector<std::byte> whole_; ///< the file, when it was read beforehand
    /// The bytes of the file from begin_ to end_; the byte at a place has the index place modulo
    /// size.
    std::vector<std::byte> buffer_;
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
    std::size_t highestUse_ = 0;
    std::uint64_t bytesRead_ = 0;
    std::uint32_t readMs_ = 0;
    std::uint32_t readAheadMs_ = 0;
};

} // namespace platform
