// Streams of bits, the lowest bit of a byte first; so are fields of several bits.
#pragma once

#include "formats/base/bytes.h"

#include <bit>
#include <cstring>

namespace formats {

class BitWriter {
  public:
    /// The lowest `count` bits of `bits`, at most 32; the others must be 0.
    void put(std::uint32_t bits, int count) {
        pending_ |= std::uint64_t{bits} << pendingCount_;
        pendingCount_ += count;
        for (; pendingCount_ >= kByte; pendingCount_ -= kByte, pending_ >>= kByte)
            bytes_.push_back(static_cast<std::uint8_t>(pending_));
    }
    void putBit(bool bit) { put(bit ? 1 : 0, 1); }

    [[nodiscard]] std::size_t bitCount() const {
        return bytes_.size() * kByte + static_cast<std::size_t>(pendingCount_);
    }

    /// Fills the last byte with zeros; the writer is done then.
    [[nodiscard]] Bytes take() {
        if (pendingCount_ > 0) put(0, kByte - pendingCount_);
        return std::move(bytes_);
    }

  private:
    static constexpr int kByte = 8;

    Bytes bytes_;
    std::uint64_t pending_ = 0;
    int pendingCount_ = 0; ///< below 8 between calls
};

/// Behind the end all bits are 0; whoever reads asks `overrun` often enough not to go on for long.
class BitReader {
  public:
    /// The bytes must outlive the reader.
    explicit BitReader(ByteSpan bytes) : at_(bytes.data()), end_(bytes.data() + bytes.size()) {}

    /// Whether more bits were taken than there are.
    [[nodiscard]] bool overrun() const { return held_ < missing_; }

    /// The next `count` bits, at most 32, which stay.
    [[nodiscard]] std::uint32_t peek(int count) {
        if (held_ < count) refill();
        return static_cast<std::uint32_t>(bits_ & ((std::uint64_t{1} << count) - 1));
    }
    /// No more than were seen.
    void skip(int count) {
        bits_ >>= count;
        held_ -= count;
    }
    std::uint32_t take(int count) {
        const std::uint32_t bits = peek(count);
        skip(count);
        return bits;
    }
    bool takeBit() { return take(1) != 0; }

  private:
    /// Afterwards at least 56 bits are held.
    void refill() {
        if constexpr (std::endian::native == std::endian::little) {
            if (end_ - at_ >= 8) {
                std::uint64_t next = 0;
                std::memcpy(&next, at_, sizeof(next));
                bits_ |= next << held_; // those that are not counted as held come once more
                at_ += (63 - held_) >> 3;
                held_ |= 56;
                return;
            }
        }
        for (; held_ < 56; held_ += 8) {
            if (at_ < end_)
                bits_ |= std::uint64_t{*at_++} << held_;
            else
                missing_ += 8;
        }
    }

    const std::uint8_t* at_;
    const std::uint8_t* end_;
    std::uint64_t bits_ = 0;   ///< the next one is the lowest
    int held_ = 0;             ///< of them, at most 63
    std::int64_t missing_ = 0; ///< bits that were made up
};

} // namespace formats
