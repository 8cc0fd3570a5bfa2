// Writes numbers and texts one behind the other, for what builds resources of any values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ranges>
#include <string_view>
#include <vector>

namespace testing_support {

class ByteWriter {
  public:
    explicit ByteWriter(bool bigEndian = false) : bigEndian_(bigEndian) {}

    /// The lowest `size` bytes of `value`, negative ones too.
    ByteWriter& number(std::int64_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes_.push_back(
                static_cast<std::byte>(value >> (8 * (bigEndian_ ? size - 1 - i : i))));
        return *this;
    }
    ByteWriter& u8(std::int64_t value) { return number(value, 1); }
    ByteWriter& u16(std::int64_t value) { return number(value, 2); }
    ByteWriter& u32(std::int64_t value) { return number(value, 4); }
    ByteWriter& text(std::string_view text) { return all(text); }
    /// Bytes, samples: whatever fits one.
    template <std::ranges::range Range>
    ByteWriter& all(const Range& range) {
        for (const auto each : range) bytes_.push_back(static_cast<std::byte>(each));
        return *this;
    }
    ByteWriter& zeros(std::size_t count) { return zerosTo(size() + count); }
    ByteWriter& zerosTo(std::size_t place) {
        bytes_.resize(place);
        return *this;
    }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] const std::vector<std::byte>& bytes() const { return bytes_; }

  private:
    bool bigEndian_;
    std::vector<std::byte> bytes_;
};

} // namespace testing_support
