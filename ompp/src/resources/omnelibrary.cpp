#include "omnelibrary.h"

#include "formats/base/bytes.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace {

constexpr std::size_t kHeaderSize = 64;
constexpr std::uint16_t kMzSignature = 0x5A4D;
constexpr std::uint16_t kNeSignature = 0x454E;
constexpr std::size_t kMzRelocationTable = 0x18;
constexpr std::uint16_t kFirstNewRelocationTable = 0x40; ///< older programs have no second header
constexpr std::size_t kMzNewHeader = 0x3C;
constexpr std::size_t kNeResourceTable = 0x24;

constexpr int kMaxShift = 15; ///< units of 32,768 bytes reach 2 GB, more than these libraries hold
constexpr std::uint16_t kNumberBit = 0x8000;
constexpr std::uint16_t kNameTableType = 0x800F;
constexpr std::size_t kReserved = 4;

struct StandardType {
    int number;
    std::string_view name;
};
constexpr StandardType kStandardTypes[] = {
    {12, "CURSOR"}, {2, "BITMAP"},  {14, "ICON"}, {4, "MENU"},        {5, "DIALOG"},
    {6, "STRING"},  {7, "FONTDIR"}, {8, "FONT"},  {9, "ACCELERATOR"}, {10, "RCDATA"},
};

bool isStandardTypeName(std::string_view name) {
    return std::any_of(std::begin(kStandardTypes), std::end(kStandardTypes),
                       [&](const StandardType& type) { return type.name == name; });
}

using Header = std::array<std::byte, kHeaderSize>;

std::size_t readAt(platform::File& file, std::uint64_t offset, std::span<std::byte> buffer) {
    return file.seek(offset) ? file.read(buffer) : 0;
}

std::uint16_t u16At(const Header& header, std::size_t offset) {
    formats::ByteReader reader(header);
    reader.seek(offset);
    return reader.u16();
}

std::uint32_t u32At(const Header& header, std::size_t offset) {
    formats::ByteReader reader(header);
    reader.seek(offset);
    return reader.u32();
}

} // namespace

std::optional<OMNELibrary> OMNELibrary::read(platform::File& file) {
    Header mz;
    if (readAt(file, 0, mz) != kHeaderSize || u16At(mz, 0) != kMzSignature ||
        u16At(mz, kMzRelocationTable) < kFirstNewRelocationTable)
        return std::nullopt;
    const std::uint64_t newHeader = u32At(mz, kMzNewHeader);
    Header ne;
    if (readAt(file, newHeader, ne) != kHeaderSize || u16At(ne, 0) != kNeSignature)
        return std::nullopt;

    const std::uint16_t start = u16At(ne, kNeResourceTable);
    const std::uint16_t end = u16At(ne, kNeResourceTable + 2);
    std::vector<std::byte> table(end > start ? end - start : 0);
    const std::size_t wanted = table.size();
    table.resize(readAt(file, newHeader + start, table));
    OMNELibrary library(table, file.size());
    if (table.size() != wanted) library.damaged_ = true;
    return library;
}

OMNELibrary::OMNELibrary(std::span<const std::byte> table, std::uint64_t fileSize) {
    if (!table.empty()) parse(table, fileSize);
    sortTypes();
}

void OMNELibrary::parse(std::span<const std::byte> table, std::uint64_t fileSize) {
    formats::ByteReader reader(table);
    const int shift = reader.u16();
    if (shift > kMaxShift) {
        damaged_ = true;
        return;
    }
    std::uint16_t typeId = reader.u16();
    hasNameTable_ = typeId == kNameTableType;
    if (hasNameTable_) return;
    while (typeId != 0) {
        const std::string type = typeName(typeId, table);
        int count = reader.u16();
        reader.skip(kReserved);
        for (; count > 0 && reader.ok(); --count) {
            const std::uint64_t offset = std::uint64_t{reader.u16()} << shift;
            const std::size_t length = std::size_t{reader.u16()} << shift;
            reader.skip(2);
            const std::uint16_t id = reader.u16();
            reader.skip(kReserved);
            if (reader.ok() && !type.empty())
                add(type, id, {offset, length}, fileSize, std::uint64_t{1} << shift);
        }
        typeId = reader.u16();
    }
    if (!reader.ok()) damaged_ = true;
}

std::string OMNELibrary::typeName(std::uint16_t typeId, std::span<const std::byte> table) {
    if (typeId & kNumberBit) return std::string(standardTypeName(typeId & ~kNumberBit));
    formats::ByteReader reader(table);
    reader.seek(typeId);
    std::string name(reader.text(reader.u8()));
    if (name.empty()) damaged_ = true;
    // A standard type is always asked for by its number, so this one could not be reached.
    if (isStandardTypeName(name)) name.clear();
    return name;
}

void OMNELibrary::add(const std::string& type, std::uint16_t id, const Place& place,
                      std::uint64_t fileSize, std::uint64_t unit) {
    if (place.offset > fileSize || (place.offset == fileSize && place.length > 0)) {
        damaged_ = true;
        return;
    }
    const std::uint64_t there = (fileSize - place.offset + unit - 1) / unit * unit;
    if (place.length > there) damaged_ = true;
    const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(place.length, there));
    types_[type].records.push_back({id, {place.offset, length}});
}

void OMNELibrary::sortTypes() {
    for (auto& [name, type] : types_) {
        type.byId.resize(type.records.size());
        std::iota(type.byId.begin(), type.byId.end(), std::size_t{0});
        std::stable_sort(type.byId.begin(), type.byId.end(),
                         [&records = type.records](std::size_t a, std::size_t b) {
                             return records[a].number() < records[b].number();
                         });
    }
}

std::vector<std::string> OMNELibrary::types() const {
    std::vector<std::string> result;
    result.reserve(types_.size());
    for (const auto& [name, type] : types_) result.push_back(name);
    return result;
}

std::vector<int> OMNELibrary::ids(std::string_view type) const {
    std::vector<int> result;
    const auto found = types_.find(type);
    if (found == types_.end()) return result;
    for (const Record& record : found->second.records)
        if (record.id & kNumberBit) result.push_back(record.number());
    return result;
}

std::optional<OMNELibrary::Place> OMNELibrary::find(int id, std::string_view type) const {
    const auto found = types_.find(type);
    if (found == types_.end()) return std::nullopt;
    const auto& [records, byId] = found->second;
    const auto place = std::lower_bound(byId.begin(), byId.end(), id,
                                        [&records = records](std::size_t index, int wanted) {
                                            return records[index].number() < wanted;
                                        });
    if (place == byId.end() || records[*place].number() != id) return std::nullopt;
    return records[*place].place;
}

std::string_view OMNELibrary::standardTypeName(int number) {
    const auto* found =
        std::find_if(std::begin(kStandardTypes), std::end(kStandardTypes),
                     [&](const StandardType& type) { return type.number == number; });
    return found == std::end(kStandardTypes) ? std::string_view() : found->name;
}
