#include "formats/library/index.h"

#include <algorithm>
#include <numeric>

namespace formats::library {

std::optional<Index> Index::read(const ReadAt& read, std::uint64_t fileSize) {
    const Head head = readHead(read);
    return head.refusal.empty() ? std::optional(Index(head, fileSize)) : std::nullopt;
}

Index::Index(const Head& head, std::uint64_t fileSize) : damaged_(head.isCutOff()) {
    if (head.table.empty()) return;
    TableReader table(head.table);
    if (!table.hasShift()) damaged_ = true;
    std::uint16_t type = table.nextType();
    hasNameTable_ = type == kNameTableType;
    for (; type != 0 && !hasNameTable_; type = table.nextType()) {
        const std::string name = typeName(type, table);
        for (Record record; table.nextRecord(record);)
            if (!name.empty()) add(name, record, fileSize, std::uint64_t{1} << table.shift());
    }
    if (!hasNameTable_ && table.isCutOff()) damaged_ = true;
    sortTypes();
}

std::string Index::typeName(std::uint16_t type, const TableReader& table) {
    if (type & kNumberMark) return std::string(standardTypeName(type & ~kNumberMark));
    std::string name = table.name(type).value_or(std::string());
    if (name.empty()) damaged_ = true;
    // A standard type is always asked for by its number, so this one could not be reached.
    if (standardTypeNumber(name)) name.clear();
    return name;
}

void Index::add(const std::string& type, Record record, std::uint64_t fileSize,
                std::uint64_t unit) {
    if (record.offset > fileSize || (record.offset == fileSize && record.length > 0)) {
        damaged_ = true;
        return;
    }
    const std::uint64_t there = (fileSize - record.offset + unit - 1) / unit * unit;
    if (record.length > there) damaged_ = true;
    record.length = static_cast<std::size_t>(std::min<std::uint64_t>(record.length, there));
    types_[type].records.push_back(record);
}

void Index::sortTypes() {
    for (auto& [name, type] : types_) {
        const auto& records = type.records; // older compilers capture no structured binding
        type.byId.resize(records.size());
        std::iota(type.byId.begin(), type.byId.end(), std::size_t{0});
        std::ranges::stable_sort(type.byId, {},
                                 [&](std::size_t index) { return records[index].number(); });
    }
}

std::vector<std::string> Index::types() const {
    std::vector<std::string> result;
    result.reserve(types_.size());
    for (const auto& [name, type] : types_) result.push_back(name);
    return result;
}

std::vector<int> Index::ids(std::string_view type) const {
    std::vector<int> result;
    const auto found = types_.find(type);
    if (found == types_.end()) return result;
    for (const Record& record : found->second.records)
        if (record.id & kNumberMark) result.push_back(record.number());
    return result;
}

std::optional<Index::Place> Index::find(int id, std::string_view type) const {
    const auto found = types_.find(type);
    if (found == types_.end()) return std::nullopt;
    const auto& [records, byId] = found->second;
    const auto place = std::ranges::lower_bound(
        byId, id, {}, [&records = records](std::size_t index) { return records[index].number(); });
    if (place == byId.end() || records[*place].number() != id) return std::nullopt;
    return Place{records[*place].offset, records[*place].length};
}

} // namespace formats::library
