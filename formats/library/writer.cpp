#include "formats/library/writer.h"

#include <algorithm>
#include <array>

namespace formats::library {

namespace {

constexpr std::array<std::uint8_t, 5> kDosProgram = {0xB8, 0x01, 0x4C, 0xCD, 0x21}; // exit(1)
constexpr std::uint16_t kLibraryModule = 0x8000;
constexpr std::uint8_t kForWindows = 2;
constexpr std::uint16_t kWindowsVersion = 0x030A;
constexpr std::uint16_t kSegmentShift = 4;
constexpr std::uint16_t kResourceFlags = 0x1030; ///< moveable, pure, discardable
constexpr std::size_t kLargestWord = 0xFFFF;
constexpr std::size_t kLongestName = 255;

std::size_t unitsOf(std::size_t bytes, int shift) {
    const std::size_t unit = std::size_t{1} << shift;
    return (bytes + unit - 1) >> shift;
}

void putName(ByteWriter& out, std::string_view name) {
    name = name.substr(0, kLongestName);
    out.u8(std::ssize(name)).text(name);
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

class LibraryWriter {
  public:
    LibraryWriter(std::string_view moduleName, std::span<const Resource> resources)
        : moduleName_(moduleName.substr(0, kLongestName)), groups_(groupByType(resources)) {}

    Result<Bytes> write() {
        if (!layOut()) return {{}, "too many resources for one library: split it"};
        if (!chooseShift()) return {{}, "the resources are too large for one library: split it"};
        putMzHeader();
        putNeHeader();
        putResourceTable();
        putModuleName(); // resident
        out_.u8(0);      // imported names
        out_.u16(0);     // entry table
        putModuleName(); // non-resident
        const std::size_t unit = std::size_t{1} << shift_;
        out_.padTo(unit);
        for (const TypeGroup& group : groups_)
            for (const Resource* resource : group.resources) out_.block(resource->data).padTo(unit);
        return {out_.take(), {}};
    }

  private:
    /// Places everything in front of the resources, which does not depend on the shift.
    bool layOut() {
        typeNames_ = 2 + 2; // the shift, the end mark
        std::size_t names = 0;
        for (const TypeGroup& group : groups_) {
            typeNames_ += kTypeRecordSize + kResourceRecordSize * group.resources.size();
            if (!typeNumber(group.type)) names += 1 + group.type.size();
        }
        const std::size_t nameTable = 1 + moduleName_.size() + 2 + 1;
        residentNames_ = kHeaderSize + typeNames_ + names + 1;
        importedNames_ = residentNames_ + nameTable;
        entryTable_ = importedNames_ + 1;
        nonResidentNames_ = kWrittenNeHeader + entryTable_ + 2;
        headEnd_ = nonResidentNames_ + nameTable;
        // a larger place of a name would read as a number
        const bool namesInReach = names == 0 || typeNames_ + names < kNumberMark;
        return namesInReach && entryTable_ <= kLargestWord;
    }

    /// The smallest shift with which offsets and lengths in units fit into 16 bits.
    bool chooseShift() {
        for (shift_ = kSmallestShift; shift_ <= kLargestShift; ++shift_) {
            std::size_t at = unitsOf(headEnd_, shift_);
            bool fits = true;
            for (const TypeGroup& group : groups_) {
                for (const Resource* resource : group.resources) {
                    const std::size_t length = unitsOf(resource->data.size(), shift_);
                    fits = fits && at <= kLargestWord && length <= kLargestWord;
                    at += length;
                }
            }
            if (fits) return true;
        }
        return false;
    }

    void padTo(std::size_t place) { out_.zeros(place - out_.size()); }

    void putMzHeader() {
        out_.u16(kMzSignature);
        out_.u16(std::ssize(kDosProgram) + static_cast<std::int64_t>(kHeaderSize)); // last page
        out_.u16(1);                                                                // pages
        out_.u16(0);                                                                // relocations
        out_.u16(kHeaderSize / 16);
        out_.u16(0).u16(0xFFFF); // smallest and largest extra memory
        padTo(kRelocationsAt);
        out_.u16(kHeaderSize);
        padTo(kNeHeaderAt);
        out_.u32(kWrittenNeHeader).block(kDosProgram);
        padTo(kWrittenNeHeader);
    }

    void putNeHeader() {
        out_.u16(kNeSignature).u16(1); // linker version
        out_.u16(word(entryTable_)).u16(2);
        out_.u32(0); // checksum
        out_.u16(kLibraryModule);
        out_.zeros(18); // data segment, heap, stack, entry points, counts
        out_.u16(word(headEnd_ - nonResidentNames_));
        out_.u16(kHeaderSize).u16(kHeaderSize); // segment table, empty; resource table
        out_.u16(word(residentNames_));
        out_.u16(word(importedNames_)).u16(word(importedNames_)); // module references, none
        out_.u32(word(nonResidentNames_));
        out_.u16(0); // movable entry points
        out_.u16(kSegmentShift);
        out_.u16(0); // resource segments
        out_.u8(kForWindows).u8(0);
        out_.zeros(6); // fast-load area, swap area
        out_.u16(kWindowsVersion);
    }

    void putResourceTable() {
        std::size_t at = unitsOf(headEnd_, shift_);
        std::size_t nameAt = typeNames_;
        out_.u16(shift_);
        for (const TypeGroup& group : groups_) {
            const auto number = typeNumber(group.type);
            out_.u16(number ? *number | kNumberMark : word(nameAt));
            if (!number) nameAt += 1 + group.type.size();
            out_.u16(std::ssize(group.resources)).u32(0);
            for (const Resource* resource : group.resources) {
                const std::size_t length = unitsOf(resource->data.size(), shift_);
                out_.u16(word(at)).u16(word(length)).u16(kResourceFlags);
                out_.u16(resource->id | kNumberMark).u32(0);
                at += length;
            }
        }
        out_.u16(0);
        for (const TypeGroup& group : groups_)
            if (!typeNumber(group.type)) putName(out_, group.type);
        out_.u8(0);
    }

    void putModuleName() {
        putName(out_, moduleName_);
        out_.u16(0).u8(0); // ordinal, end of the table
    }

    static std::int64_t word(std::size_t value) { return static_cast<std::int64_t>(value); }

    std::string_view moduleName_;
    std::vector<TypeGroup> groups_;
    std::size_t typeNames_ = 0;     ///< in the resource table
    std::size_t residentNames_ = 0; ///< from the NE header, as the next two
    std::size_t importedNames_ = 0;
    std::size_t entryTable_ = 0;
    std::size_t nonResidentNames_ = 0; ///< in the file
    std::size_t headEnd_ = 0;          ///< in the file
    int shift_ = kSmallestShift;
    ByteWriter out_;
};

} // namespace

Result<Bytes> write(std::string_view moduleName, std::span<const Resource> resources) {
    return LibraryWriter(moduleName, resources).write();
}

} // namespace formats::library
