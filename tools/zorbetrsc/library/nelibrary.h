// Resource libraries (".rsc"): 16-bit "NE" module files that hold nothing but resources. Written
// and read here, so that the layout stands in one place:
//
//     0x00  MZ header (64 bytes): 0x40 at 0x18, file offset of the NE header at 0x3C
//     0x40  a five-byte DOS program that ends at once
//     0x50  NE header (64 bytes): offsets, from here, of the resource table at 0x24 and of the
//           resident-name table (where the resource table ends) at 0x26
//     0x90  resource table: alignment shift; per type: type, count, 4 bytes, then per resource
//           offset and length in units of 1 << shift, flags, id, 4 bytes; 0; the names of types
//           resident names, imported names, entry table, non-resident names
//           the resources, each at a multiple of the unit and padded to one with zeros
#pragma once

#include "bytes.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rsc {

inline constexpr int kSmallestShift = 4;
inline constexpr int kLargestShift = 15;
inline constexpr int kLargestId = 0x7FFF;

/// Number of a standard type ("CURSOR" is 12) or of the form "#N" for any other integer type;
/// none when the type is stored by its name.
[[nodiscard]] std::optional<std::uint16_t> integerType(std::string_view type);

/// Four printable characters without blanks, a standard type's name, or "#1" to "#32767".
[[nodiscard]] bool isResourceType(std::string_view type);

struct Resource {
    std::string type;
    std::uint16_t id = 0; ///< 1 to kLargestId
    Bytes data;
};

/// What the name of a library's file says as the name of its module.
[[nodiscard]] std::string moduleNameOf(std::string_view fileName);

/// The bytes of a library with these resources, grouped by type in the order in which the types
/// first appear. The shift is the smallest, from kSmallestShift on, that reaches all of them.
/// Refused when there are more or larger ones than the format can point to.
[[nodiscard]] Bytes buildNeLibrary(std::string_view moduleName,
                                   std::span<const Resource> resources);

/// Where a resource lies in its library.
struct ResourceEntry {
    std::string type; ///< the standard name, "#N", or the stored name
    std::uint16_t id = 0;
    std::string name; ///< instead of an id, in files made elsewhere
    std::size_t offset = 0;
    std::size_t length = 0; ///< bytes, rounded up to the unit

    /// Type and id for messages.
    [[nodiscard]] std::string title() const;
};

struct ByteRange {
    std::size_t offset = 0;
    std::size_t length = 0;
    [[nodiscard]] std::size_t end() const { return offset + length; }
};

/// The table of contents of a library.
struct NeTable {
    int shift = 0;
    std::vector<ResourceEntry> entries;
    std::vector<ByteRange> headers; ///< both headers and the resource table, which is the last
};

/// Reads the table alone: the resources may lie past the end of `file`. Refuses what is no library.
[[nodiscard]] NeTable readNeTable(ByteSpan file);

/// A library that was read.
class NeLibrary {
  public:
    /// `file` must outlive the library. Refuses what is no library or points outside of the file.
    explicit NeLibrary(ByteSpan file);

    [[nodiscard]] ByteSpan file() const { return file_; }
    [[nodiscard]] const NeTable& table() const { return table_; }
    [[nodiscard]] int alignmentShift() const { return table_.shift; }
    [[nodiscard]] const std::vector<ResourceEntry>& entries() const { return table_.entries; }
    [[nodiscard]] ByteSpan data(const ResourceEntry& entry) const {
        return file_.subspan(entry.offset, entry.length);
    }

  private:
    ByteSpan file_;
    NeTable table_;
};

} // namespace rsc
