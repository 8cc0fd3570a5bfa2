// Blocks of bytes with numbers in them: reading within bounds, and appending.
//
// A reader knows where its data ends, so that no parser built on it can run past it, and always
// moves forward, so that broken data cannot stall a parser.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace formats {

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

/// The same bytes as numbers.
inline ByteSpan asNumbers(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

/// Numbers out of a block of bytes, little-endian unless told otherwise. A read that goes past the
/// end gives 0 (or nothing), and from then on `ok` is false and every further read fails too: a
/// parser may read a whole record and ask once.
class ByteReader {
  public:
    /// The bytes must outlive the reader.
    explicit ByteReader(std::span<const std::byte> bytes, std::endian order = std::endian::little)
        : bytes_(bytes), order_(order) {}
    explicit ByteReader(ByteSpan bytes, std::endian order = std::endian::little)
        : ByteReader(std::as_bytes(bytes), order) {}

    [[nodiscard]] bool ok() const { return ok_; }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] std::size_t remaining() const { return bytes_.size() - position_; }

    /// Sets the place of the next read, counted from the start; a place past the end is a failure.
    void seek(std::size_t position);
    void skip(std::size_t count) { (void)bytes(count); }

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }
    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

    /// The next `count` bytes; none of them when not all are there.
    std::span<const std::byte> bytes(std::size_t count);
    /// The same as Latin-1 characters.
    std::string_view text(std::size_t count);

  private:
    std::uint32_t number(std::size_t count);

    std::span<const std::byte> bytes_;
    std::endian order_;
    std::size_t position_ = 0;
    bool ok_ = true;
};

// Tables of thousands of numbers are read one by one.

inline std::span<const std::byte> ByteReader::bytes(std::size_t count) {
    if (!ok_ || count > remaining()) {
        ok_ = false;
        position_ = bytes_.size();
        return {};
    }
    const auto result = bytes_.subspan(position_, count);
    position_ += count;
    return result;
}

inline std::uint32_t ByteReader::number(std::size_t count) {
    const auto source = bytes(count);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const std::size_t place = order_ == std::endian::little ? i : source.size() - 1 - i;
        value |= std::to_integer<std::uint32_t>(source[i]) << (8 * place);
    }
    return value;
}

/// Numbers at the end of a growing block, little-endian unless told otherwise. Of a number, which
/// may be negative, the low bytes are taken: who writes has checked its range.
class ByteWriter {
  public:
    explicit ByteWriter(std::endian order = std::endian::little) : order_(order) {}

    [[nodiscard]] const Bytes& bytes() const { return bytes_; }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] Bytes take() { return std::move(bytes_); }

    ByteWriter& u8(std::int64_t value) { return number(value, 1); }
    ByteWriter& u16(std::int64_t value) { return number(value, 2); }
    ByteWriter& u32(std::int64_t value) { return number(value, 4); }
    ByteWriter& block(ByteSpan block);
    ByteWriter& text(std::string_view latin1);
    ByteWriter& zeros(std::size_t count);
    /// Zeros up to a size that is a multiple of `unit`.
    ByteWriter& padTo(std::size_t unit);

    /// Writes over what stands at `at`, which must be there.
    void putU16(std::size_t at, std::int64_t value) { put(at, value, 2); }
    void putU32(std::size_t at, std::int64_t value) { put(at, value, 4); }

  private:
    ByteWriter& number(std::int64_t value, std::size_t count);
    void put(std::size_t at, std::int64_t value, std::size_t count);

    std::endian order_;
    Bytes bytes_;
};

// Files of which only parts are read.

/// Up to as many bytes of a file as the buffer holds, from a place on; fewer at its end, none past
/// it. Gives their number.
using ReadAt = std::function<std::size_t(std::uint64_t place, std::span<std::byte> buffer)>;

/// Reads of a block, which must outlive what is returned.
[[nodiscard]] inline ReadAt readAt(ByteSpan block) {
    return [block](std::uint64_t place, std::span<std::byte> buffer) {
        const ByteSpan there = block.subspan(std::min<std::uint64_t>(place, block.size()));
        const std::size_t count = std::min(buffer.size(), there.size());
        std::ranges::copy(std::as_bytes(there.first(count)), buffer.begin());
        return count;
    };
}

} // namespace formats
