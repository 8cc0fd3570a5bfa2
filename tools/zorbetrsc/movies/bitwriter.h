// A stream of bits, lowest bit of a byte first.
#pragma once

#include "bytes.h"

#include <utility>

namespace rsc {

class BitWriter {
  public:
    /// The lowest `count` bits of `bits`, at most 32; the others must be 0.
    void put(std::uint32_t bits, int count) {
        pending_ |= std::uint64_t{bits} << pendingCount_;
        pendingCount_ += count;
        for (; pendingCount_ >= kByte; pendingCount_ -= kByte, pending_ >>= kByte)
            put8(bytes_, static_cast<std::size_t>(pending_));
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

} // namespace rsc
