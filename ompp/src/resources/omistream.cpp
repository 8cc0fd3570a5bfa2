#include "omistream.h"

#include "omdebug.h"

#include <algorithm>

OMIStream::OMIStream(int bufferMode, std::span<std::byte> buffer)
    : bufferSize_(bufferMode), userBuffer_(buffer) {
    OMDebug::requireApp("OMIStream");
}

OMIStream::OMIStream(const OMIStream& other)
    : bufferSize_(other.bufferSize_), length_(other.length_),
      position_(other.current_.empty() ? other.position_ : other.chunkStart_),
      chunkStart_(other.chunkStart_) {
    OMDebug::requireApp("OMIStream");
    if (!other.inMemory_) return;
    memory_ = other.memory_;
    loaded_ = memory_.size();
    inMemory_ = committed_ = true;
    if (!other.current_.empty()) fill();
}

void OMIStream::setMemory(std::span<const std::byte> bytes) {
    memory_ = bytes.first(std::min(bytes.size(), length_));
    loaded_ = memory_.size();
    bufferSize_ = kOMIStreamCache;
    userBuffer_ = {};
    inMemory_ = committed_ = true;
    fill();
}

std::size_t OMIStream::fill() {
    if (length_ == 0 || (!committed_ && !commit())) return 0;
    return isWhole() ? deliverWhole() : deliverChunk();
}

bool OMIStream::commit() {
    if (!openSource()) return false;
    committed_ = true;
    if (isWhole()) loadWhole();
    return true;
}

void OMIStream::loadWhole() {
    loaded_ = readSource(0, destination());
    closeSource();
}

std::size_t OMIStream::deliverWhole() {
    if (position_ >= loaded_) return 0;
    const std::span<const std::byte> whole = inMemory_ ? memory_ : destination();
    current_ = whole.subspan(position_, loaded_ - position_);
    chunkStart_ = position_;
    position_ = length_;
    return current_.size();
}

std::size_t OMIStream::deliverChunk() {
    if (position_ >= length_) return 0;
    const std::span<std::byte> buffer = destination();
    const std::size_t wanted = std::min(buffer.size(), length_ - position_);
    const std::size_t got = readSource(position_, buffer.first(wanted));
    current_ = buffer.first(got); // also after a failed read, which may have left anything
    if (got == 0) return 0;
    chunkStart_ = position_;
    position_ += got;
    return got;
}

std::span<std::byte> OMIStream::destination() {
    std::size_t size = length_;
    if (!isWhole()) {
        const int chunk = bufferSize_ == kOMIStreamBuffered ? kOMIStreamDefaultChunk : bufferSize_;
        size = std::min(size, static_cast<std::size_t>(chunk));
    }
    if (!userBuffer_.empty()) return userBuffer_.first(std::min(size, userBuffer_.size()));
    if (!buffer_) buffer_ = std::make_unique_for_overwrite<std::byte[]>(size);
    return {buffer_.get(), size};
}

std::span<const std::byte> OMIStream::readAll() {
    if (!isWhole()) return {};
    seek(0);
    fill();
    return current_;
}

void OMIStream::seek(std::int64_t position) {
    const auto end = static_cast<std::int64_t>(length_);
    position_ = static_cast<std::size_t>(std::clamp<std::int64_t>(position, 0, end));
    current_ = {};
}

void OMIStream::setDstBuffer(int bufferMode, std::span<std::byte> buffer) {
    if (!OMDebug::check(!committed_ || !isWhole(), "committed && cached",
                        "OMIStream::setDstBuffer - cannot setDstBuffer on committed, cached "
                        "OMIStream") ||
        !OMDebug::check(bufferMode >= kOMIStreamCache, "size < kOMIStreamCache",
                        "OMIStream::setDstBuffer - invalid parameter!"))
        return;
    dropBuffer();
    bufferSize_ = bufferMode;
    userBuffer_ = buffer;
    // A stream that becomes a whole one has all its reading before it.
    if (committed_ && isWhole()) {
        closeSource();
        committed_ = false;
    }
}

void OMIStream::close() {
    closeSource();
    dropBuffer();
    position_ = chunkStart_ = 0;
    committed_ = inMemory_;
}

void OMIStream::dropBuffer() {
    buffer_.reset();
    current_ = {};
    loaded_ = memory_.size();
}
