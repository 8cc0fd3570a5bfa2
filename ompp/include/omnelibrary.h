// The resources of a 16-bit library (segmented "NE" executable), as ".rsc" files are.
//
//   offset 0      MZ header, 64 bytes: "MZ"; 0x18 u16 at least 0x40; 0x3C u32 offset of the NE
//   header NE header     64 bytes: "NE"; 0x24 u16 resource table, 0x26 u16 the table that follows
//   it, both
//                 counted from the NE header
//   resource table:
//     u16 shift                        offsets and lengths below count units of 1 << shift bytes
//     per type: u16 type id            0 ends the table; bit 15 set: number of a standard type,
//     clear:
//                                      place in the table of the type's name (u8 length,
//                                      characters)
//               u16 count, 4 bytes
//               count x 12 bytes:      u16 offset, u16 length, u16 flags, u16 id (bit 15 set: a
//               number,
//                                      clear: a name), 4 bytes
//
// Nothing in a library is believed: what lies outside the file is left out.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class OMNELibrary {
  public:
    /// Where a resource lies in the file. The length is a multiple of the table's unit, so that the
    /// last bytes may be padding; it may pass the end of the file by less than one unit.
    struct Place {
        std::uint64_t offset = 0;
        std::size_t length = 0;
    };

    /// Reads headers and table. None when the file is no such library.
    [[nodiscard]] static std::optional<OMNELibrary> read(platform::File& file);

    /// From the bytes of the resource table of a file of `fileSize` bytes.
    OMNELibrary(std::span<const std::byte> table, std::uint64_t fileSize);

    /// Names of the types, ascending. Standard types have the names below.
    [[nodiscard]] std::vector<std::string> types() const;
    /// Numbers of the resources of a type in the order of the table; resources with names are left
    /// out.
    [[nodiscard]] std::vector<int> ids(std::string_view type) const;
    /// The first resource of that number; none when there is none. Types are compared with case.
    [[nodiscard]] std::optional<Place> find(int id, std::string_view type) const;

    /// Part of the table was cut short or pointed outside the file and was left out.
    [[nodiscard]] bool isDamaged() const { return damaged_; }
    /// The library keeps its types and numbers in a name table, which is not supported: it shows no
    /// resources.
    [[nodiscard]] bool hasNameTable() const { return hasNameTable_; }

    /// "BITMAP", "CURSOR", … for the number of a standard type; empty for other numbers. Cursors
    /// and icons are the group types 12 and 14.
    [[nodiscard]] static std::string_view standardTypeName(int number);

  private:
    struct Record {
        std::uint16_t id;
        Place place;
        [[nodiscard]] int number() const { return id & 0x7FFF; }
    };
    struct Type {
        std::vector<Record> records;   ///< as in the table
        std::vector<std::size_t> byId; ///< indices of `records`, ascending by number, stable
    };

    void parse(std::span<const std::byte> table, std::uint64_t fileSize);
    [[nodiscard]] std::string typeName(std::uint16_t typeId, std::span<const std::byte> table);
    void add(const std::string& type, std::uint16_t id, const Place& place, std::uint64_t fileSize,
             std::uint64_t unit);
    void sortTypes();

    std::map<std::string, Type, std::less<>> types_;
    bool damaged_ = false;
    bool hasNameTable_ = false;
};
