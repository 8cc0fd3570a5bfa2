#include "library/nelibrary.h"

#include "formats/library/reader.h"
#include "text.h"

namespace rsc {

namespace {

namespace ne = formats::library;

constexpr const char* kTableCutOff = "damaged library: its resource table is cut off";

std::string nameAt(const ne::TableReader& table, std::uint16_t place) {
    const auto name = table.name(place);
    if (!name) throw Refusal(kTableCutOff);
    return *name;
}

std::string typeName(const ne::TableReader& table, std::uint16_t type) {
    if ((type & ne::kNumberMark) == 0) return nameAt(table, type);
    const int number = type & ~ne::kNumberMark;
    const std::string_view standard = ne::standardTypeName(number);
    return standard.empty() ? "#" + std::to_string(number) : std::string(standard);
}

ne::Head checkedHead(ByteSpan file) {
    ne::Head head = ne::readHead(formats::readAt(file));
    if (!head.refusal.empty()) throw Refusal(std::string(head.refusal));
    if (head.tableEnd < head.tableStart)
        throw Refusal("damaged library: its resource table has no end");
    if (head.isCutOff()) throw Refusal("no resource library: it ends within its headers");
    return head;
}

ResourceEntry entryOf(const ne::Record& record, const std::string& type,
                      const ne::TableReader& table) {
    const bool isNumber = (record.id & ne::kNumberMark) != 0;
    return {type, static_cast<std::uint16_t>(isNumber ? record.number() : 0),
            isNumber ? std::string() : nameAt(table, record.id),
            static_cast<std::size_t>(record.offset), record.length};
}

} // namespace

Bytes buildNeLibrary(std::string_view moduleName, std::span<const Resource> resources) {
    return valueOf(ne::write(moduleName, resources));
}

std::string ResourceEntry::title() const {
    return printable(type + " " + (name.empty() ? std::to_string(id) : name));
}

NeTable readNeTable(ByteSpan file) {
    const ne::Head head = checkedHead(file);
    const auto neHeader = static_cast<std::size_t>(head.neHeader);
    ne::TableReader table(head.table);
    NeTable result{table.shift(),
                   {},
                   {{0, ne::kHeaderSize},
                    {neHeader, ne::kHeaderSize},
                    {neHeader + head.tableStart, head.tableLength()}}};
    if (!table.hasShift()) throw Refusal("damaged library: its alignment is out of range");
    while (const std::uint16_t type = table.nextType()) {
        if (type == ne::kNameTableType)
            throw Refusal(
                "the library has a name table, which neither this program nor the game reads");
        const std::string name = typeName(table, type);
        for (ne::Record record; table.nextRecord(record);)
            result.entries.push_back(entryOf(record, name, table));
    }
    if (table.isCutOff()) throw Refusal(kTableCutOff);
    return result;
}

NeLibrary::NeLibrary(ByteSpan file) : file_(file), table_(readNeTable(file)) {
    for (const ResourceEntry& entry : table_.entries) {
        if (entry.offset > file_.size() || entry.length > file_.size() - entry.offset)
            throw Refusal("damaged library: " + entry.title() + " lies past the end of the file");
    }
}

} // namespace rsc
