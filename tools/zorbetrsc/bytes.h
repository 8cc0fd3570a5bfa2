// Blocks of bytes with numbers in them: appending, and reading within bounds.
#pragma once

#include "refusal.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace rsc {

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

inline void put8(Bytes& out, std::size_t value) { out.push_back(value & 0xFF); }

inline void put16(Bytes& out, std::size_t value) {
    put8(out, value);
    put8(out, value >> 8);
}

inline void put32(Bytes& out, std::size_t value) {
    put16(out, value);
    put16(out, value >> 16);
}

/// A 16-bit signed number; the caller has checked its range.
inline void putSigned16(Bytes& out, int value) { put16(out, static_cast<std::uint16_t>(value)); }

/// Numbers at places of a block that came from a file. A place outside of it is refused with the
/// text given at construction.
class ByteReader {
  public:
    /// The bytes must outlive the reader.
    ByteReader(ByteSpan bytes, std::string refusal, bool bigEndian = false)
        : bytes_(bytes), refusal_(std::move(refusal)), bigEndian_(bigEndian) {}

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }

    [[nodiscard]] ByteSpan slice(std::size_t at, std::size_t length) const {
        if (at > bytes_.size() || length > bytes_.size() - at) throw Refusal(refusal_);
        return bytes_.subspan(at, length);
    }
    [[nodiscard]] std::uint8_t u8(std::size_t at) const { return slice(at, 1)[0]; }
    [[nodiscard]] std::uint16_t u16(std::size_t at) const {
        const ByteSpan two = slice(at, 2);
        const int low = bigEndian_ ? two[1] : two[0];
        const int high = bigEndian_ ? two[0] : two[1];
        return static_cast<std::uint16_t>(low | high << 8);
    }
    [[nodiscard]] std::int16_t s16(std::size_t at) const {
        return static_cast<std::int16_t>(u16(at));
    }
    [[nodiscard]] std::uint32_t u32(std::size_t at) const {
        const std::uint32_t first = u16(at);
        const std::uint32_t second = u16(at + 2);
        return bigEndian_ ? first << 16 | second : second << 16 | first;
    }

  private:
    ByteSpan bytes_;
    std::string refusal_;
    bool bigEndian_;
};

} // namespace rsc
