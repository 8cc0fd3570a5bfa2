// What can be found in a library, by type and number, as the program looks for it.
//
// Of a damaged library everything counts that can be used: what lies outside the file is left out,
// and a length that passes its end is cut.
#pragma once

#include "formats/library/reader.h"

#include <map>
#include <vector>

namespace formats::library {

class Index {
  public:
    /// Where a resource lies in the file. The length is a multiple of the table's unit, so that the
    /// last bytes may be padding; it may pass the end of the file by less than one unit.
    struct Place {
        std::uint64_t offset = 0;
        std::size_t length = 0;
    };

    /// Reads headers and table. None when the file, of so many bytes, is no library.
    [[nodiscard]] static std::optional<Index> read(const ReadAt& read, std::uint64_t fileSize);

    /// Names of the types, ascending. Standard types have their names; other numbers are left out.
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

  private:
    struct Type {
        std::vector<Record> records;   ///< as in the table
        std::vector<std::size_t> byId; ///< indices of `records`, ascending by number, stable
    };

    Index(const Head& head, std::uint64_t fileSize);
    [[nodiscard]] std::string typeName(std::uint16_t type, const TableReader& table);
    void add(const std::string& type, Record record, std::uint64_t fileSize, std::uint64_t unit);
    void sortTypes();

    std::map<std::string, Type, std::less<>> types_;
    bool damaged_ = false;
    bool hasNameTable_ = false;
};

} // namespace formats::library
