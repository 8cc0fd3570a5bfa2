#include "library/nelibrary.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace rsc {

namespace {

struct StandardType {
    std::string_view name;
    std::uint16_t number;
};

constexpr std::array kStandardTypes = {
    StandardType{"BITMAP", 2},      StandardType{"MENU", 4},    StandardType{"DIALOG", 5},
    StandardType{"STRING", 6},      StandardType{"FONTDIR", 7}, StandardType{"FONT", 8},
    StandardType{"ACCELERATOR", 9}, StandardType{"RCDATA", 10}, StandardType{"CURSOR", 12},
    StandardType{"ICON", 14},
};

constexpr std::size_t kNamedTypeLength = 4;

constexpr std::size_t kMzHeaderSize = 0x40;
constexpr std::uint16_t kMzMark = 0x5A4D;
constexpr std::size_t kRelocationsAt = 0x18;
constexpr std::size_t kNeOffsetAt = 0x3C;
constexpr std::array<std::uint8_t, 5> kDosProgram = {0xB8, 0x01, 0x4C, 0xCD, 0x21}; // exit(1)
constexpr std::size_t kNeOffset = 0x50;

constexpr std::size_t kNeHeaderSize = 0x40;
constexpr std::uint16_t kNeMark = 0x454E;
constexpr std::size_t kResourceTableAt = 0x24;
constexpr std::size_t kResidentNamesAt = 0x26;
constexpr std::uint16_t kLibraryModule = 0x8000;
constexpr std::uint8_t kForWindows = 2;
constexpr std::uint16_t kWindowsVersion = 0x030A;
constexpr std::uint16_t kSegmentShift = 4;

constexpr std::uint16_t kIntegerMark = 0x8000; ///< high bit: a number, not the offset of a name
constexpr std::uint16_t kNameTableType = 0x800F;
constexpr std::uint16_t kResourceFlags = 0x1030; ///< moveable, pure, discardable
constexpr std::size_t kTypeRecordSize = 8;
constexpr std::size_t kResourceRecordSize = 12;
constexpr std::size_t kLargestWord = 0xFFFF;
constexpr std::size_t kLongestName = 255;

void putName(Bytes& out, std::string_view name) {
    name = name.substr(0, kLongestName);
    put8(out, name.size());
    out.insert(out.end(), name.begin(), name.end());
}

std::size_t roundUp(std::size_t bytes, int shift) {
    const std::size_t unit = std::size_t{1} << shift;
    return (bytes + unit - 1) >> shift;
}

struct TypeGroup {
    std::string_view type;
    std::vector<const Resource*> resources;
};

std::vector<TypeGroup> groupByType(std::span<const Resource> resources) {
    std::vector<TypeGroup> groups;
    for (const Resource& resource : resources) {
        auto group = std::ranges::find(groups, resource.type, &TypeGroup::type);
        if (group == groups.end()) group = groups.insert(groups.end(), {resource.type, {}});
        group->resources.push_back(&resource);
    }
    return groups;
}

/// Places of everything in front of the resources; they do not depend on the shift.
struct Layout {
    std::size_t typeNames = 0; ///< in the resource table
    std::size_t tableSize = 0;
    std::size_t residentNames = 0; ///< from the NE header, as the next two
    std::size_t importedNames = 0;
    std::size_t entryTable = 0;
    std::size_t nonResidentNames = 0; ///< in the file
    std::size_t headEnd = 0;          ///< in the file
};

Layout layOut(std::span<const TypeGroup> groups, std::string_view moduleName) {
    Layout layout;
    layout.typeNames = 2 + 2; // the shift, the end mark
    std::size_t names = 0;
    for (const TypeGroup& group : groups) {
        layout.typeNames += kTypeRecordSize + kResourceRecordSize * group.resources.size();
        if (!integerType(group.type)) names += 1 + group.type.size();
    }
    const std::size_t nameTable = 1 + std::min(moduleName.size(), kLongestName) + 2 + 1;
    layout.tableSize = layout.typeNames + names + 1;
    layout.residentNames = kNeHeaderSize + layout.tableSize;
    layout.importedNames = layout.residentNames + nameTable;
    layout.entryTable = layout.importedNames + 1;
    layout.nonResidentNames = kNeOffset + layout.entryTable + 2;
    layout.headEnd = layout.nonResidentNames + nameTable;
    // a larger offset of a name would read as a number
    const bool namesInReach = names == 0 || layout.typeNames + names < kIntegerMark;
    if (!namesInReach || layout.entryTable > kLargestWord)
        throw Refusal("too many resources for one library: split it");
    return layout;
}

/// The smallest shift with which offsets and lengths in units fit into 16 bits.
int chooseShift(std::span<const TypeGroup> groups, std::size_t headEnd) {
    for (int shift = kSmallestShift; shift <= kLargestShift; ++shift) {
        std::size_t at = roundUp(headEnd, shift);
        bool fits = true;
        for (const TypeGroup& group : groups) {
            for (const Resource* resource : group.resources) {
                const std::size_t length = roundUp(resource->data.size(), shift);
                fits = fits && at <= kLargestWord && length <= kLargestWord;
                at += length;
            }
        }
        if (fits) return shift;
    }
    throw Refusal("the resources are too large for one library: split it");
}

void putMzHeader(Bytes& out) {
    const std::size_t programEnd = kMzHeaderSize + kDosProgram.size();
    put16(out, kMzMark);
    put16(out, programEnd); // bytes on the last page
    put16(out, 1);          // pages
    put16(out, 0);          // relocations
    put16(out, kMzHeaderSize / 16);
    put16(out, 0);      // smallest and
    put16(out, 0xFFFF); // largest extra memory
    out.resize(kRelocationsAt, 0);
    put16(out, kMzHeaderSize);
    out.resize(kNeOffsetAt, 0);
    put32(out, kNeOffset);
    out.insert(out.end(), kDosProgram.begin(), kDosProgram.end());
    out.resize(kNeOffset, 0);
}

void putNeHeader(Bytes& out, const Layout& layout) {
    put16(out, kNeMark);
    put16(out, 1); // linker version
    put16(out, layout.entryTable);
    put16(out, 2); // its size
    put32(out, 0); // checksum
    put16(out, kLibraryModule);
    out.resize(out.size() + 18, 0); // data segment, heap, stack, entry points, counts
    put16(out, layout.headEnd - layout.nonResidentNames);
    put16(out, kNeHeaderSize); // segment table, empty
    put16(out, kNeHeaderSize);
    put16(out, layout.residentNames);
    put16(out, layout.importedNames); // module references, none
    put16(out, layout.importedNames);
    put32(out, layout.nonResidentNames);
    put16(out, 0); // movable entry points
    put16(out, kSegmentShift);
    put16(out, 0); // resource segments
    put8(out, kForWindows);
    put8(out, 0);
    out.resize(out.size() + 6, 0); // fast-load area, swap area
    put16(out, kWindowsVersion);
}

void putResourceTable(Bytes& out, std::span<const TypeGroup> groups, const Layout& layout,
                      int shift) {
    std::size_t at = roundUp(layout.headEnd, shift);
    std::size_t nameAt = layout.typeNames;
    put16(out, static_cast<std::size_t>(shift));
    for (const TypeGroup& group : groups) {
        const auto number = integerType(group.type);
        put16(out, number ? *number | kIntegerMark : nameAt);
        if (!number) nameAt += 1 + group.type.size();
        put16(out, group.resources.size());
        put32(out, 0);
        for (const Resource* resource : group.resources) {
            const std::size_t length = roundUp(resource->data.size(), shift);
            put16(out, at);
            put16(out, length);
            put16(out, kResourceFlags);
            put16(out, resource->id | kIntegerMark);
            put32(out, 0);
            at += length;
        }
    }
    put16(out, 0);
    for (const TypeGroup& group : groups)
        if (!integerType(group.type)) putName(out, group.type);
    put8(out, 0);
}

void putModuleName(Bytes& out, std::string_view moduleName) {
    putName(out, moduleName);
    put16(out, 0); // ordinal
    put8(out, 0);  // end of the table
}

void padToUnit(Bytes& out, int shift) { out.resize(roundUp(out.size(), shift) << shift, 0); }

std::string storedName(const ByteReader& table, std::size_t at) {
    const ByteSpan name = table.slice(at + 1, table.u8(at));
    return {name.begin(), name.end()};
}

std::string typeName(const ByteReader& table, std::uint16_t type) {
    if ((type & kIntegerMark) == 0) return storedName(table, type);
    const std::uint16_t number = type & ~kIntegerMark & 0xFFFF;
    const auto* standard = std::ranges::find(kStandardTypes, number, &StandardType::number);
    if (standard != kStandardTypes.end()) return std::string(standard->name);
    return std::string(1, '#').append(std::to_string(number));
}

/// The headers and the resource table, after the headers have been checked.
std::vector<ByteRange> findHeaders(ByteSpan bytes) {
    const ByteReader file(bytes, "no resource library: it ends within its headers");
    if (file.u16(0) != kMzMark || file.u16(kRelocationsAt) < kMzHeaderSize)
        throw Refusal("no resource library (.rsc): it has no MZ header");
    const std::size_t ne = file.u32(kNeOffsetAt);
    static_cast<void>(file.slice(ne, kNeHeaderSize));
    if (file.u16(ne) != kNeMark) throw Refusal("no resource library (.rsc): it has no NE header");
    const std::size_t start = file.u16(ne + kResourceTableAt);
    const std::size_t end = file.u16(ne + kResidentNamesAt);
    if (end < start) throw Refusal("damaged library: its resource table has no end");
    static_cast<void>(file.slice(ne + start, end - start));
    return {{0, kMzHeaderSize}, {ne, kNeHeaderSize}, {ne + start, end - start}};
}

/// Appends the entries of the type whose record stands at `at`.
void readType(const ByteReader& table, std::size_t at, NeTable& out) {
    const std::string type = typeName(table, table.u16(at));
    const std::size_t count = table.u16(at + 2);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t record = at + kTypeRecordSize + i * kResourceRecordSize;
        static_cast<void>(table.slice(record, kResourceRecordSize));
        ResourceEntry entry;
        entry.type = type;
        entry.offset = std::size_t{table.u16(record)} << out.shift;
        entry.length = std::size_t{table.u16(record + 2)} << out.shift;
        const std::uint16_t id = table.u16(record + 6);
        if ((id & kIntegerMark) != 0)
            entry.id = id & ~kIntegerMark & 0xFFFF;
        else
            entry.name = storedName(table, id);
        out.entries.push_back(std::move(entry));
    }
}

} // namespace

std::optional<std::uint16_t> integerType(std::string_view type) {
    const auto* standard = std::ranges::find(kStandardTypes, type, &StandardType::name);
    if (standard != kStandardTypes.end()) return standard->number;
    if (!type.starts_with('#')) return std::nullopt;
    const auto number = parseNumber(type.substr(1));
    if (!number || *number < 1 || *number > kLargestId) return std::nullopt;
    return static_cast<std::uint16_t>(*number);
}

bool isResourceType(std::string_view type) {
    if (integerType(type)) return true;
    const auto visible = [](char c) { return c > ' ' && c <= '~'; };
    return type.size() == kNamedTypeLength && type[0] != '#' && std::ranges::all_of(type, visible);
}

std::string moduleNameOf(std::string_view fileName) {
    std::string name(fileName.substr(0, fileName.rfind('.')));
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name;
}

Bytes buildNeLibrary(std::string_view moduleName, std::span<const Resource> resources) {
    const std::vector<TypeGroup> groups = groupByType(resources);
    const Layout layout = layOut(groups, moduleName);
    const int shift = chooseShift(groups, layout.headEnd);
    Bytes out;
    putMzHeader(out);
    putNeHeader(out, layout);
    putResourceTable(out, groups, layout, shift);
    putModuleName(out, moduleName); // resident
    put8(out, 0);                   // imported names
    put16(out, 0);                  // entry table
    putModuleName(out, moduleName); // non-resident
    padToUnit(out, shift);
    for (const TypeGroup& group : groups) {
        for (const Resource* resource : group.resources) {
            out.insert(out.end(), resource->data.begin(), resource->data.end());
            padToUnit(out, shift);
        }
    }
    return out;
}

std::string ResourceEntry::title() const {
    return printable(type + " " + (name.empty() ? std::to_string(id) : name));
}

NeTable readNeTable(ByteSpan file) {
    NeTable result;
    result.headers = findHeaders(file);
    const auto [start, size] = result.headers.back();
    const ByteReader table(file.subspan(start, size),
                           "damaged library: its resource table is cut off");
    result.shift = table.u16(0);
    if (result.shift > kLargestShift)
        throw Refusal("damaged library: its alignment is out of range");
    for (std::size_t at = 2; table.u16(at) != 0;) {
        if (table.u16(at) == kNameTableType)
            throw Refusal(
                "the library has a name table, which neither this program nor the game reads");
        readType(table, at, result);
        at += kTypeRecordSize + table.u16(at + 2) * kResourceRecordSize;
    }
    return result;
}

NeLibrary::NeLibrary(ByteSpan file) : file_(file), table_(readNeTable(file)) {
    for (const ResourceEntry& entry : table_.entries) {
        if (entry.offset > file_.size() || entry.length > file_.size() - entry.offset)
            throw Refusal("damaged library: " + entry.title() + " lies past the end of the file");
    }
}

} // namespace rsc
