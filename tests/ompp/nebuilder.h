// Builds 16-bit resource libraries for tests: MZ and NE header, resource table, type names, data.
#pragma once

#include "memoryfiles.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

    /// The resource table alone, for data that begins at `dataStart` in the file.
    [[nodiscard]] Bytes table(std::size_t dataStart) const {
        Bytes out;
        std::size_t nameAt = namesStart();
        std::size_t dataAt = dataStart;
        u16(out, shift_);
        for (const Type& type : types_) {
            u16(out, type.name.empty() ? 0x8000 | type.number : static_cast<int>(nameAt));
            if (!type.name.empty()) nameAt += 1 + type.name.size();
            u16(out, static_cast<int>(type.resources.size()));
            zeros(out, 4);
            for (const Resource& resource : type.resources) {
                u16(out, static_cast<int>(dataAt >> shift_));
                u16(out, static_cast<int>(padded(resource.data.size()) >> shift_));
                u16(out, 0);
                u16(out, resource.rawId);
                zeros(out, 4);
                dataAt += padded(resource.data.size());
            }
        }
        u16(out, 0);
        for (const Type& type : types_)
            if (!type.name.empty()) {
                out.push_back(static_cast<std::byte>(type.name.size()));
                append(out, toBytes(type.name));
            }
        return out;
    }

    [[nodiscard]] Bytes build() const {
        const std::size_t tableSize = table(0).size();
        Bytes out;
        append(out, toBytes("MZ"));
        zeros(out, 0x18 - out.size());
        u16(out, 0x40);
        zeros(out, 0x3C - out.size());
        u16(out, kNeHeader);
        u16(out, 0);
        append(out, toBytes("NE"));
        zeros(out, kNeHeader + 0x24 - out.size());
        u16(out, kTable - kNeHeader);
        u16(out, static_cast<int>(kTable - kNeHeader + tableSize));
        zeros(out, kTable - out.size());
        append(out, table(padded(kTable + tableSize)));
        zeros(out, padded(out.size()) - out.size());
        for (const Type& type : types_)
            for (const Resource& resource : type.resources) {
                append(out, resource.data);
                zeros(out, padded(out.size()) - out.size());
            }
        return out;
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
    [[nodiscard]] std::size_t namesStart() const {
        std::size_t size = 4;
        for (const Type& type : types_) size += 8 + 12 * type.resources.size();
        return size;
    }
    [[nodiscard]] std::size_t padded(std::size_t size) const {
        const std::size_t unit = std::size_t{1} << shift_;
        return (size + unit - 1) / unit * unit;
    }
    static void u16(Bytes& out, int value) {
        out.push_back(static_cast<std::byte>(value & 0xFF));
        out.push_back(static_cast<std::byte>(value >> 8 & 0xFF));
    }
    static void u16(Bytes& out, std::size_t value) { u16(out, static_cast<int>(value)); }
    static void zeros(Bytes& out, std::size_t count) { out.resize(out.size() + count); }
    static void append(Bytes& out, const Bytes& more) {
        out.insert(out.end(), more.begin(), more.end());
    }

    int shift_;
    std::vector<Type> types_;
};

} // namespace testing_support
