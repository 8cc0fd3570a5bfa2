// Resource libraries as the tool needs them: what lies where, in the order of the table, and a
// refusal of everything that is not as it should be.
#pragma once

#include "filesystem.h"
#include "formats/library/writer.h"
#include "refusal.h"

namespace rsc {

using formats::library::isResourceType;
using formats::library::kLargestId;
using formats::library::moduleNameOf;
using formats::library::Resource;

/// Writes a library. Refused when there are more or larger resources than the format can point to.
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
    std::vector<ByteRange> headers; ///< both headers and the resource table
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
