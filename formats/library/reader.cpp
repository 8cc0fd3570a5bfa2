#include "formats/library/reader.h"

#include <array>

namespace formats::library {

namespace {

constexpr std::size_t kReserved = 4;

constexpr std::string_view kCutOff = "no resource library: it ends within its headers";
constexpr std::string_view kNoMzHeader = "no resource library (.rsc): it has no MZ header";
constexpr std::string_view kNoNeHeader = "no resource library (.rsc): it has no NE header";

} // namespace

Head readHead(const ReadAt& read) {
    Head head;
    std::array<std::byte, kHeaderSize> buffer;
    const auto header = [&](std::uint64_t place) {
        return ByteReader(std::span(buffer).first(read(place, buffer)));
    };
    const auto require = [&](const ByteReader& reader, bool holds, std::string_view otherwise) {
        if (head.refusal.empty() && (!reader.ok() || !holds))
            head.refusal = reader.ok() ? otherwise : kCutOff;
    };
    ByteReader mz = header(0);
    const bool isMz = mz.u16() == kMzSignature;
    require(mz, isMz, kNoMzHeader);
    mz.seek(kRelocationsAt);
    const bool isNew = mz.u16() >= kFirstNewRelocations;
    require(mz, isNew, kNoMzHeader);
    mz.seek(kNeHeaderAt);
    head.neHeader = mz.u32();
    require(mz, true, {});
    if (!head.refusal.empty()) return head;

    ByteReader ne = header(head.neHeader);
    const bool isNe = ne.u16() == kNeSignature;
    ne.seek(kTableAt);
    head.tableStart = ne.u16();
    head.tableEnd = ne.u16();
    ne.seek(kHeaderSize);
    require(ne, isNe, kNoNeHeader);
    if (!head.refusal.empty()) return head;
    head.table.resize(head.tableLength());
    head.table.resize(read(head.neHeader + head.tableStart, head.table));
    return head;
}

TableReader::TableReader(std::span<const std::byte> table)
    : table_(table), reader_(table), shift_(reader_.u16()) {}

std::uint16_t TableReader::nextType() {
    if (!hasShift()) return 0;
    for (Record passed; nextRecord(passed);) {
    }
    const std::uint16_t type = reader_.u16();
    left_ = type == 0 ? 0 : reader_.u16();
    reader_.skip(type == 0 ? 0 : kReserved);
    return type;
}

bool TableReader::nextRecord(Record& record) {
    if (left_ == 0) return false;
    --left_;
    record.offset = std::uint64_t{reader_.u16()} << shift_;
    record.length = std::size_t{reader_.u16()} << shift_;
    reader_.skip(2); // flags
    record.id = reader_.u16();
    reader_.skip(kReserved);
    if (!reader_.ok()) left_ = 0;
    return reader_.ok();
}

std::optional<std::string> TableReader::name(std::uint16_t place) const {
    ByteReader reader(table_);
    reader.seek(place);
    const std::string_view name = reader.text(reader.u8());
    return reader.ok() ? std::optional<std::string>(name) : std::nullopt;
}

} // namespace formats::library
