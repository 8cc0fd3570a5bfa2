// Libraries as other tools might have made them: any types, names, units and places.
#pragma once

#include "bytes.h"

#include <algorithm>
#include <string>
#include <vector>

namespace testfiles {

struct ForeignResource {
    std::string type;       ///< by name
    std::uint16_t id = 0;   ///< as stored: with the high bit for a number
    std::string name;       ///< when it has no number
    std::size_t offset = 0; ///< in units, from where the data begin
    std::size_t length = 0; ///< in units
};

/// Each resource has a type record of its own; the data begin at the unit behind the table.
inline rsc::Bytes foreignLibrary(int shift, const std::vector<ForeignResource>& resources,
                                 const rsc::Bytes& data) {
    constexpr std::size_t kNe = 0x60;
    rsc::Bytes names;
    const std::size_t namesAt = 2 + resources.size() * (8 + 12) + 2;
    const auto addName = [&](const std::string& name) {
        const std::size_t at = namesAt + names.size();
        rsc::put8(names, name.size());
        names.insert(names.end(), name.begin(), name.end());
        return at;
    };
    rsc::Bytes table;
    const auto fill = [&](std::size_t firstUnit) {
        names.clear();
        table.clear();
        rsc::put16(table, static_cast<std::size_t>(shift));
        for (const ForeignResource& resource : resources) {
            rsc::put16(table, addName(resource.type));
            rsc::put16(table, 1);
            rsc::put32(table, 0x12345678);
            rsc::put16(table, firstUnit + resource.offset);
            rsc::put16(table, resource.length);
            rsc::put16(table, 0x1C10);
            rsc::put16(table, resource.name.empty() ? resource.id : addName(resource.name));
            rsc::put32(table, 0);
        }
        rsc::put16(table, 0);
        table.insert(table.end(), names.begin(), names.end());
    };
    fill(0);
    const std::size_t unit = std::size_t{1} << shift;
    const std::size_t first = (kNe + 0x40 + table.size() + unit - 1) / unit;
    fill(first);
    rsc::Bytes file;
    rsc::put16(file, 0x5A4D);
    file.resize(0x18);
    rsc::put16(file, 0x40);
    file.resize(0x3C);
    rsc::put32(file, kNe);
    file.resize(kNe, 0xEE); // a program of its own
    rsc::put16(file, 0x454E);
    file.resize(kNe + 0x24, 0x77);
    rsc::put16(file, 0x40);
    rsc::put16(file, 0x40 + table.size());
    file.resize(kNe + 0x40, 0x77);
    file.insert(file.end(), table.begin(), table.end());
    file.resize(first * unit, 0xDD);
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

} // namespace testfiles
