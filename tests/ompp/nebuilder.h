// Builds 16-bit resource libraries for tests: MZ and NE header, resource table, type names, data.
#pragma once

#include "bytewriter.h"
#include "memoryfiles.h"

#include <string>

namespace testing_support {

class NEBuilder {
  public:
    static constexpr std::size_t kNeHeader = 64; ///< place of the NE header
    static constexpr std::size_t kTable = 128;   ///< place of the resource table

    explicit NEBuilder(int shift = 4) : shift_(shift) {}

    NEBuilder& add(std::string_view type, int id, Bytes data) {
        typeOf({std::string(type), 0}).resources.push_back({0x8000 | id, std::move(data)});
        return *this;
    }
    NEBuilder& add(std::string_view type, int id, std::string_view text) {
        return add(type, id, toBytes(text));
    }
    /// A resource of a standard type.
    NEBuilder& addStandard(int typeNumber, int id, std::string_view text) {
        typeOf({"", typeNumber}).resources.push_back({0x8000 | id, toBytes(text)});
        return *this;
    }
    /// A resource with a name instead of a number; `rawId` is its place in the table.
    NEBuilder& addNamed(std::string_view type, int rawId, std::string_view text) {
        typeOf({std::string(type), 0}).resources.push_back({rawId, toBytes(text)});
        return *this;
    }

    [[nodiscard]] Bytes build() const {
        const std::size_t dataStart = padded(kTable + table(0).size());
        const Bytes resources = table(dataStart);
        ByteWriter out;
        out.text("MZ").zerosTo(0x18).u16(0x40).zerosTo(0x3C).u32(kNeHeader).text("NE");
        out.zerosTo(kNeHeader + 0x24).u16(kTable - kNeHeader);
        out.u16(static_cast<std::int64_t>(kTable - kNeHeader + resources.size()));
        out.zerosTo(kTable).all(resources).zerosTo(dataStart);
        for (const Type& type : types_)
            for (const Resource& resource : type.resources)
                out.all(resource.data).zerosTo(padded(out.size()));
        return out.bytes();
    }

  private:
    struct Resource {
        int rawId;
        Bytes data;
    };
    struct Type {
        std::string name; ///< empty: a standard type
        int number;
        std::vector<Resource> resources = {};
    };

    Type& typeOf(const Type& wanted) {
        for (Type& type : types_)
            if (type.name == wanted.name && type.number == wanted.number) return type;
        return types_.emplace_back(wanted);
    }
    /// The resource table, for data that begins at `dataStart` in the file.
    [[nodiscard]] Bytes table(std::size_t dataStart) const {
        std::size_t nameAt = 4; // behind the records
        for (const Type& type : types_) nameAt += 8 + 12 * type.resources.size();
        const auto units = [this](std::size_t size) {
            return static_cast<std::int64_t>(padded(size) >> shift_);
        };
        ByteWriter out;
        ByteWriter names;
        out.u16(shift_);
        for (const Type& type : types_) {
            const auto name = static_cast<std::int64_t>(nameAt + names.size());
            out.u16(type.name.empty() ? 0x8000 | type.number : name);
            out.u16(static_cast<std::int64_t>(type.resources.size())).zeros(4);
            if (!type.name.empty()) names.u8(static_cast<int>(type.name.size())).text(type.name);
            for (const Resource& resource : type.resources) {
                out.u16(units(dataStart)).u16(units(resource.data.size()));
                out.u16(0).u16(resource.rawId).zeros(4);
                dataStart += padded(resource.data.size());
            }
        }
        return out.u16(0).all(names.bytes()).bytes();
    }
    [[nodiscard]] std::size_t padded(std::size_t size) const {
        const std::size_t unit = std::size_t{1} << shift_;
        return (size + unit - 1) / unit * unit;
    }

    int shift_;
    std::vector<Type> types_;
};

} // namespace testing_support
