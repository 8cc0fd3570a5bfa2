// The headers of a library and the records of its table, in their order. Nothing of a library is
// believed: whatever the bytes say, reading stays within what is there.
#pragma once

#include "formats/base/bytes.h"
#include "formats/library/layout.h"

namespace formats::library {

/// All of a library that must be read to know what is in it.
struct Head {
    std::string_view refusal;     ///< why this is no library; empty when it is one
    std::uint64_t neHeader = 0;   ///< its place in the file
    std::uint16_t tableStart = 0; ///< counted from the NE header, as `tableEnd`, which may come
    std::uint16_t tableEnd = 0;   ///< before it
    std::vector<std::byte> table; ///< as much as is there

    [[nodiscard]] std::size_t tableLength() const {
        return tableEnd > tableStart ? tableEnd - tableStart : 0U;
    }
    [[nodiscard]] bool isCutOff() const { return table.size() < tableLength(); }
};

[[nodiscard]] Head readHead(const ReadAt& read);

/// What a table says of one resource.
struct Record {
    std::uint64_t offset = 0; ///< bytes, from the beginning of the file; may lie outside of it
    std::size_t length = 0;   ///< bytes, rounded up to the unit
    std::uint16_t id = 0;     ///< as stored, with kNumberMark for a number

    [[nodiscard]] int number() const { return id & ~kNumberMark; }
};

/// Goes through a table type by type, and in each type resource by resource.
class TableReader {
  public:
    /// The bytes must outlive the reader.
    explicit TableReader(std::span<const std::byte> table);

    [[nodiscard]] int shift() const { return shift_; }
    /// Otherwise there are no types.
    [[nodiscard]] bool hasShift() const { return shift_ <= kLargestShift; }

    /// The next type, as stored; 0 at the end of the table.
    std::uint16_t nextType();
    /// The next resource of this type; false behind the last.
    bool nextRecord(Record& record);
    /// Whether the table ended before it said so. Known when the types are through.
    [[nodiscard]] bool isCutOff() const { return !reader_.ok(); }

    /// The name at a place of the table; none when it lies outside.
    [[nodiscard]] std::optional<std::string> name(std::uint16_t place) const;

  private:
    std::span<const std::byte> table_;
    ByteReader reader_;
    int shift_;
    int left_ = 0; ///< resources of this type
};

} // namespace formats::library
