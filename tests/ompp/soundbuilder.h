// Builds sound resources for tests: RIFF WAVE files and Macintosh sound resources of any values.
#pragma once

#include "memoryfiles.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace testing_support {

class ByteWriter {
  public:
    explicit ByteWriter(bool bigEndian) : bigEndian_(bigEndian) {}

    ByteWriter& text(std::string_view text) {
        for (const char c : text) bytes_.push_back(static_cast<std::byte>(c));
        return *this;
    }
    ByteWriter& number(std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes_.push_back(
                static_cast<std::byte>(value >> (8 * (bigEndian_ ? size - 1 - i : i))));
        return *this;
    }
    ByteWriter& u8(std::uint32_t value) { return number(value, 1); }
    ByteWriter& u16(std::uint32_t value) { return number(value, 2); }
    ByteWriter& u32(std::uint32_t value) { return number(value, 4); }
    ByteWriter& zeros(std::size_t count) {
        bytes_.resize(bytes_.size() + count);
        return *this;
    }
    ByteWriter& samples(const std::vector<std::uint8_t>& data) {
        for (const std::uint8_t sample : data) bytes_.push_back(std::byte{sample});
        return *this;
    }
    [[nodiscard]] const Bytes& bytes() const { return bytes_; }

  private:
    bool bigEndian_;
    Bytes bytes_;
};

struct RiffSound {
    std::uint32_t rate = 22050;
    std::uint32_t channels = 1;
    std::uint32_t bits = 8;
    std::size_t before = 0;        ///< bytes of a further chunk before "fmt "
    std::size_t between = 0;       ///< bytes of a further chunk before "data"
    std::uint32_t extraFormat = 0; ///< bytes of "fmt " past the PCM format
    std::int64_t claimed = -1;     ///< size of "data" as written, -1: the real one
    std::vector<std::uint8_t> data{};

    [[nodiscard]] Bytes build() const {
        ByteWriter out(false);
        out.text("RIFF").u32(0).text("WAVE");
        if (before > 0) chunk(out, before);
        out.text("fmt ").u32(16 + extraFormat).u16(1).u16(channels).u32(rate).u32(rate);
        out.u16(1).u16(bits).zeros(extraFormat + extraFormat % 2);
        if (between > 0) chunk(out, between);
        out.text("data").u32(static_cast<std::uint32_t>(
            claimed < 0 ? static_cast<std::int64_t>(data.size()) : claimed));
        return out.samples(data).bytes();
    }

  private:
    static void chunk(ByteWriter& out, std::size_t size) {
        out.text("LIST").u32(static_cast<std::uint32_t>(size)).zeros(size + size % 2);
    }
};

struct MacSound {
    std::uint32_t format = 1;
    std::uint32_t synthesizers = 1;
    std::uint32_t synthesizer = 5;
    std::uint32_t options = 0x80;
    std::uint32_t commands = 1;
    std::uint32_t command = 0x8051;
    std::uint32_t param1 = 0;
    std::int64_t param2 = -1; ///< -1: the right one
    std::int64_t length = -1; ///< as written, -1: the real one
    std::uint32_t rate = 0x56220000;
    std::uint32_t encoding = 0;
    std::vector<std::uint8_t> data{};

    [[nodiscard]] Bytes build() const {
        ByteWriter out(true);
        out.u16(format);
        if (format == 1)
            out.u16(synthesizers).u16(synthesizer).u32(options);
        else
            out.u16(7); // reference count
        const std::uint32_t right = format == 1 ? 0x14 : 0x0E;
        out.u16(commands).u16(command).u16(param1);
        out.u32(param2 < 0 ? right : static_cast<std::uint32_t>(param2));
        const auto written = static_cast<std::uint32_t>(
            length < 0 ? static_cast<std::int64_t>(data.size()) : length);
        const bool extended = encoding != 0;
        out.u32(0).u32(extended ? 1 : written).u32(rate).u32(0).u32(0).u8(encoding).u8(60);
        if (extended) out.u32(written).zeros(64 - 26);
        return out.samples(data).bytes();
    }
};

} // namespace testing_support
