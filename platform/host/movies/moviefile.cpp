#include "platform/host/movies/moviefile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {

namespace {

constexpr std::uint64_t kMostPreloaded = 256 << 20; // larger ones are read while they are played
constexpr std::uint64_t kMostExtra = 16 << 20;
constexpr std::uint64_t kUsualExtra = 1 << 20; // some seconds of a large movie
constexpr std::size_t kPiece = 64 << 10;       // what is read in one time of waiting

std::size_t extraSize(int wanted, std::uint64_t fileSize) {
    const std::uint64_t size = wanted < 0 ? kUsualExtra : static_cast<std::uint64_t>(wanted);
    return static_cast<std::size_t>(std::min({size, kMostExtra, fileSize}));
}

} // namespace

MovieFile::MovieFile(std::unique_ptr<File> file, const Request& request, const Clock& clock)
    : file_(std::move(file)), clock_(clock), size_(file_->size()) {
    if (request.preload && size_ <= kMostPreloaded)
        preload();
    else
        buffer_.resize(extraSize(request.extraBuffer, size_));
}

void MovieFile::preload() {
    const std::uint32_t start = clock_.milliseconds();
    whole_.resize(static_cast<std::size_t>(size_));
    size_ = readDevice(0, whole_);
    readMs_ += clock_.milliseconds() - start;
    file_.reset();
}

std::size_t MovieFile::read(std::span<std::byte> bytes) {
    std::size_t done = 0;
    if (!file_) {
        const std::uint64_t left = size_ - std::min(position_, size_);
        done = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), left));
        if (done > 0) std::memcpy(bytes.data(), whole_.data() + position_, done);
        position_ += done;
        return done;
    }
    done = readBuffered(bytes);
    if (done == bytes.size()) return done;
    const std::uint32_t start = clock_.milliseconds();
    const std::size_t count = readDevice(position_, bytes.subspan(done));
    readMs_ += clock_.milliseconds() - start;
    position_ += count;
    begin_ = end_ = position_;
    return done + count;
}

/// What is there of it; the buffer then begins behind it.
std::size_t MovieFile::readBuffered(std::span<std::byte> bytes) {
    if (position_ < begin_ || position_ >= end_) return 0;
    std::size_t done = 0;
    begin_ = position_;
    while (done < bytes.size() && begin_ < end_) {
        const std::size_t count =
            std::min({bytes.size() - done, buffered(), buffer_.size() - index(begin_)});
        std::memcpy(bytes.data() + done, buffer_.data() + index(begin_), count);
        done += count;
        begin_ += count;
    }
    position_ = begin_;
    return done;
}

void MovieFile::readAhead() {
    if (!file_ || buffer_.empty()) return;
    if (position_ < begin_ || position_ > end_) begin_ = end_ = position_;
    begin_ = position_;
    const std::uint64_t left = size_ - std::min(end_, size_);
    const std::size_t room = std::min(buffer_.size() - buffered(), buffer_.size() - index(end_));
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>({kPiece, room, left}));
    if (count == 0) return;
    const std::uint32_t start = clock_.milliseconds();
    end_ += readDevice(end_, std::span(buffer_).subspan(index(end_), count));
    readAheadMs_ += clock_.milliseconds() - start;
    highestUse_ = std::max(highestUse_, buffered());
}

std::size_t MovieFile::readDevice(std::uint64_t place, std::span<std::byte> bytes) {
    if (!file_->seek(place)) return 0;
    const std::size_t count = file_->read(bytes);
    bytesRead_ += count;
    return count;
}

} // namespace platform
