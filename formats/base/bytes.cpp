#include "formats/base/bytes.h"

#include <algorithm>

namespace formats {

void ByteReader::seek(std::size_t position) {
    if (position > bytes_.size()) ok_ = false;
    position_ = std::min(position, bytes_.size());
}

std::string_view ByteReader::text(std::size_t count) {
    const auto characters = bytes(count);
    return {reinterpret_cast<const char*>(characters.data()), characters.size()};
}

ByteWriter& ByteWriter::block(ByteSpan block) {
    bytes_.insert(bytes_.end(), block.begin(), block.end());
    return *this;
}

ByteWriter& ByteWriter::text(std::string_view latin1) {
    bytes_.insert(bytes_.end(), latin1.begin(), latin1.end());
    return *this;
}

ByteWriter& ByteWriter::zeros(std::size_t count) {
    bytes_.resize(bytes_.size() + count);
    return *this;
}

ByteWriter& ByteWriter::padTo(std::size_t unit) {
    return zeros((unit - bytes_.size() % unit) % unit);
}

ByteWriter& ByteWriter::number(std::int64_t value, std::size_t count) {
    zeros(count);
    put(bytes_.size() - count, value, count);
    return *this;
}

void ByteWriter::put(std::size_t at, std::int64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = order_ == std::endian::little ? i : count - 1 - i;
        bytes_[at + place] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

} // namespace formats
