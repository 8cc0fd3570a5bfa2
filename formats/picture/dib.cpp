#include "formats/picture/dib.h"

namespace formats::picture {

namespace {

constexpr std::uint32_t kHeaderSize = 40;
constexpr std::size_t kResolution = 8; ///< bytes

} // namespace

std::optional<DibHeader> readDibHeader(ByteReader& reader) {
    if (reader.u32() != kHeaderSize) return std::nullopt;
    DibHeader header;
    header.width = reader.i32();
    header.height = reader.i32();
    reader.skip(2); // planes
    header.depth = reader.u16();
    header.compression = reader.u32();
    reader.skip(4 + kResolution);
    header.colours = reader.u32();
    reader.skip(4);
    if (!reader.ok()) return std::nullopt;
    return header;
}

void writeDibHeader(ByteWriter& out, const DibHeader& header, std::size_t pixels) {
    out.u32(kHeaderSize).u32(header.width).u32(header.height).u16(1).u16(header.depth);
    out.u32(header.compression).u32(static_cast<std::int64_t>(pixels)).zeros(kResolution);
    out.u32(header.colours).u32(0);
}

} // namespace formats::picture
