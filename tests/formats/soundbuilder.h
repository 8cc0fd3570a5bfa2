// Builds sound resources for tests: RIFF WAVE files and Macintosh sound resources of any values.
#pragma once

#include "formats/base/bytes.h"

namespace testing_support {

struct RiffSound {
    std::uint32_t rate = 22050, channels = 1, bits = 8;
    std::size_t before = 0, between = 0; ///< bytes of further chunks before "fmt " and "data"
    std::int64_t claimed = -1;           ///< size of "data" as written, -1: the real one
    formats::Bytes data{};

    [[nodiscard]] formats::Bytes build() const {
        formats::ByteWriter out;
        out.text("RIFF").u32(0).text("WAVE");
        if (before > 0) chunk(out, before);
        out.text("fmt ").u32(16).u16(1).u16(channels).u32(rate).u32(rate).u16(1).u16(bits);
        if (between > 0) chunk(out, between);
        out.text("data").u32(claimed < 0 ? static_cast<std::int64_t>(data.size()) : claimed);
        return out.block(data).take();
    }

  private:
    static void chunk(formats::ByteWriter& out, std::size_t size) {
        out.text("LIST").u32(static_cast<std::int64_t>(size)).zeros(size + size % 2);
    }
};

struct MacSound {
    std::uint32_t format = 1, synthesizers = 1, synthesizer = 5, options = 0x80;
    std::uint32_t commands = 1, command = 0x8051, param1 = 0;
    std::int64_t param2 = -1, length = -1; ///< as written, -1: the right ones
    std::uint32_t rate = 0x56220000, encoding = 0;
    formats::Bytes data{};

    [[nodiscard]] formats::Bytes build() const {
        formats::ByteWriter out(std::endian::big);
        out.u16(format);
        if (format == 1)
            out.u16(synthesizers).u16(synthesizer).u32(options);
        else
            out.u16(7); // reference count
        out.u16(commands).u16(command).u16(param1);
        out.u32(param2 >= 0 ? param2 : format == 1 ? 0x14 : 0x0E);
        const std::int64_t written = length < 0 ? static_cast<std::int64_t>(data.size()) : length;
        const bool extended = encoding != 0;
        out.u32(0).u32(extended ? 1 : written).u32(rate).u32(0).u32(0).u8(encoding).u8(60);
        if (extended) out.u32(written).zeros(64 - 26);
        return out.block(data).take();
    }
};

} // namespace testing_support
