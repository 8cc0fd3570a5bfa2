// Libraries as other tools might have made them: any types, names, units and places.
#pragma once

#include "formats/base/bytes.h"

#include <string>

namespace testfiles {

struct ForeignResource {
    std::string type;       ///< by name
    std::uint16_t id = 0;   ///< as stored: with the high bit for a number
    std::string name;       ///< when it has no number
    std::size_t offset = 0; ///< in units, from where the data begin
    std::size_t length = 0; ///< in units
};

/// Each resource has a type record of its own; the data begin at the unit behind the table.
inline formats::Bytes foreignLibrary(int shift, const std::vector<ForeignResource>& resources,
                                     const formats::Bytes& data) {
    constexpr std::size_t kNe = 0x60;
    const auto number = [](std::size_t value) { return static_cast<std::int64_t>(value); };
    formats::ByteWriter names;
    formats::ByteWriter table;
    const auto addName = [&](const std::string& name) {
        const std::size_t at = 2 + resources.size() * (8 + 12) + 2 + names.size();
        names.u8(number(name.size())).text(name);
        return number(at);
    };
    const auto fill = [&](std::size_t firstUnit) {
        names = table = formats::ByteWriter();
        table.u16(shift);
        for (const ForeignResource& resource : resources) {
            table.u16(addName(resource.type)).u16(1).u32(0x12345678);
            table.u16(number(firstUnit + resource.offset)).u16(number(resource.length)).u16(0x1C10);
            table.u16(resource.name.empty() ? resource.id : addName(resource.name)).u32(0);
        }
        table.u16(0).block(names.bytes());
    };
    fill(0);
    const std::size_t unit = std::size_t{1} << shift;
    const std::size_t first = (kNe + 0x40 + table.size() + unit - 1) / unit;
    fill(first);
    formats::Bytes file = {'M', 'Z'};
    const auto add = [&](const formats::ByteWriter& part, std::size_t upTo, std::uint8_t filling) {
        file.insert(file.end(), part.bytes().begin(), part.bytes().end());
        file.resize(upTo, filling);
    };
    add(formats::ByteWriter(), 0x18, 0);
    add(formats::ByteWriter().u16(0x40), 0x3C, 0);
    add(formats::ByteWriter().u32(kNe), kNe, 0xEE); // a program of its own
    add(formats::ByteWriter().text("NE"), kNe + 0x24, 0x77);
    add(formats::ByteWriter().u16(0x40).u16(number(0x40 + table.size())), kNe + 0x40, 0x77);
    add(table, first * unit, 0xDD);
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

} // namespace testfiles
