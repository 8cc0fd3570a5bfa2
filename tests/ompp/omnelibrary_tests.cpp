// Resource libraries: what is found in them, and what is left of damaged ones.
#include "nebuilder.h"

#include "omnelibrary.h"

#include <gtest/gtest.h>

using testing_support::Bytes;
using testing_support::MemoryFiles;
using testing_support::NEBuilder;

namespace {

using Ids = std::vector<int>;
using Types = std::vector<std::string>;

std::optional<OMNELibrary> parse(const Bytes& bytes) {
    MemoryFiles files;
    files.put("a.rsc", bytes);
    const auto file = files.open("a.rsc", platform::OpenMode::Read);
    return OMNELibrary::read(*file);
}

void setU16(Bytes& bytes, std::size_t at, unsigned value) {
    bytes.at(at) = static_cast<std::byte>(value & 0xFF);
    bytes.at(at + 1) = static_cast<std::byte>(value >> 8);
}

// Offsets in the file of what the builder's first type and first resource say.
constexpr std::size_t kShift = NEBuilder::kTable;
constexpr std::size_t kTypeId = kShift + 2;
constexpr std::size_t kCount = kTypeId + 2;
constexpr std::size_t kOffset = kTypeId + 8;
constexpr std::size_t kLength = kOffset + 2;
constexpr std::size_t kIdField = kLength + 4;

TEST(OMNELibrary, ListsAndFindsResources) {
    const Bytes bytes = NEBuilder()
                            .add("WAVE", 300, "three")
                            .add("WAVE", 5, std::string(33, 'x'))
                            .addStandard(14, 7, "icon")
                            .addStandard(77, 1, "a type without a name")
                            .addNamed("ASEQ", 44, "named")
                            .add("ASEQ", 2, "two")
                            .add("CURSOR", 1, "bears but the name of a standard type")
                            .build();
    const auto library = parse(bytes);
    ASSERT_TRUE(library);
    EXPECT_FALSE(library->isDamaged());
    EXPECT_EQ(library->types(), (Types{"ASEQ", "ICON", "WAVE"}));
    EXPECT_EQ(library->ids("WAVE"), (Ids{300, 5})) << "in the order of the table";
    EXPECT_EQ(library->ids("ASEQ"), Ids{2}) << "without named resources";
    EXPECT_EQ(library->ids("wave"), Ids{}) << "case counts";

    const auto place = library->find(5, "WAVE");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->length, 48U) << "33 bytes in units of 16";
    EXPECT_EQ(static_cast<char>(bytes.at(place->offset)), 'x');
    EXPECT_TRUE(library->find(7, "ICON"));
    EXPECT_FALSE(library->find(6, "WAVE"));
    EXPECT_FALSE(library->find(301, "WAVE"));
    EXPECT_FALSE(library->find(5, "RRGB"));
}

TEST(OMNELibrary, TakesTheFirstOfEqualIdsAndJoinsRepeatedTypes) {
    Bytes bytes = NEBuilder(0).add("WAVE", 5, "a").add("ASEQ", 5, "bb").add("ASEQ", 5, "c").build();
    const std::size_t second = kTypeId + 8 + 12; // its type record names the first type
    bytes.at(second) = bytes.at(kTypeId);
    bytes.at(second + 1) = bytes.at(kTypeId + 1);
    const auto library = parse(bytes);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->types(), Types{"WAVE"});
    EXPECT_EQ(library->ids("WAVE"), (Ids{5, 5, 5}));
    EXPECT_EQ(library->find(5, "WAVE")->length, 1U);
}

TEST(OMNELibrary, LeavesOutWhatPointsOutside) {
    constexpr std::size_t kTablePlace = NEBuilder::kNeHeader + 0x24; // counts from the NE header
    constexpr std::size_t kTableEnd = kTablePlace + 2;
    constexpr unsigned kTableStart = NEBuilder::kTable - NEBuilder::kNeHeader;
    constexpr unsigned kTableSize = 41;
    const Bytes good = NEBuilder().add("WAVE", 1, "one").add("WAVE", 2, "two").build();
    enum Verdict { Whole, Damaged, Refused };
    struct Row {
        const char* name;
        std::size_t at;
        unsigned value;
        Verdict verdict;
        Ids ids = {};
        std::size_t length = 0; ///< of the first resource left
    };
    const Row rows[] = {
        {"no MZ", 0, 0x4D5A, Refused},
        {"old relocation table", 0x18, 0x3F, Refused},
        {"newer relocation table", 0x18, 0x41, Whole, {1, 2}, 16},
        {"place of the second header", 0x3C, 65, Refused},
        {"second header past the end", 0x3E, 0xFFFF, Refused},
        {"no NE", NEBuilder::kNeHeader, 0x4550, Refused},
        {"largest shift", kShift, 15, Damaged},
        {"absurd shift", kShift, 16, Damaged},
        {"all bits of the shift", kShift, 0xFFFF, Damaged},
        {"name at the end of the table", kTypeId, kTableSize, Damaged},
        {"name past the end by its length", kTypeId, kTableSize - 1, Damaged},
        {"name outside the table", kTypeId, 0x7FFF, Damaged},
        {"type number without a name", kTypeId, 0x8000 | 3, Whole},
        {"name table", kTypeId, 0x800F, Whole},
        {"no resources", kCount, 0, Damaged},
        {"more resources than the table has", kCount, 0xFFFF, Damaged, {1, 2}, 16},
        {"offset past the file", kOffset, 0xFFFF, Damaged, {2}, 16},
        {"offset at its end", kOffset, static_cast<unsigned>(good.size() / 16), Damaged, {2}, 16},
        {"the table as a resource", kOffset, NEBuilder::kTable / 16, Whole, {1, 2}, 16},
        {"length past the file", kLength, 0xFFFF, Damaged, {1, 2}, 32},
        {"no length", kLength, 0, Whole, {1, 2}, 0},
        {"named", kIdField, 1, Whole, {2}, 16},
        {"empty table", kTableEnd, kTableStart, Whole},
        {"table of its shift", kTableEnd, kTableStart + 2, Damaged},
        {"table without the names", kTableEnd, kTableStart + 22, Damaged},
        {"table turned inside out", kTableEnd, 1, Whole},
        {"table longer than the file", kTableEnd, 0xFFFF, Damaged, {1, 2}, 16},
        {"table outside the file", kTablePlace, 0x7000, Whole},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Bytes bytes = good;
        setU16(bytes, row.at, row.value);
        const auto library = parse(bytes);
        ASSERT_EQ(library.has_value(), row.verdict != Refused);
        if (!library) continue;
        EXPECT_EQ(library->isDamaged(), row.verdict == Damaged);
        EXPECT_EQ(library->hasNameTable(), row.value == 0x800F);
        EXPECT_EQ(library->ids("WAVE"), row.ids);
        if (row.ids.empty()) continue;
        EXPECT_EQ(library->find(row.ids[0], "WAVE")->length, row.length);
    }
}

/// Every resource that is listed is found and lies within the file; their number.
std::size_t expectSound(const OMNELibrary& library, std::size_t fileSize, std::size_t unit) {
    std::size_t count = 0;
    for (const std::string& type : library.types())
        for (const int id : library.ids(type)) {
            const auto place = library.find(id, type);
            EXPECT_TRUE(place) << type << id;
            if (!place) continue;
            EXPECT_LE(place->offset, fileSize) << type << id;
            EXPECT_LT(place->length, fileSize - place->offset + unit) << type << id;
            ++count;
        }
    return count;
}

TEST(OMNELibrary, LivesWithTruncationAndEveryBitTurned) {
    Bytes bytes =
        NEBuilder().add("WAVE", 1, "one").addStandard(14, 3, "icon").add("RRGB", 2, "two").build();
    std::size_t refused = 0;
    std::size_t damaged = 0;
    std::size_t whole = 0;
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        SCOPED_TRACE(bit);
        const auto turn = static_cast<std::byte>(1 << bit % 8);
        bytes[bit / 8] ^= turn;
        const auto library = parse(bytes);
        if (!library) ++refused;
        if (library && library->isDamaged()) ++damaged;
        if (library && expectSound(*library, bytes.size(), 32768) == 3) ++whole;
        bytes[bit / 8] ^= turn;
    }
    // The two signatures, the place of the second header, and the only bit of the relocation table
    // that is set.
    EXPECT_EQ(refused, 2 * 16U + 32 + 1);
    EXPECT_GT(damaged, 50U);
    EXPECT_GT(whole, 8 * 64U) << "most bits are of no concern";
    std::size_t left = 3;
    while (!bytes.empty()) {
        bytes.pop_back();
        const auto library = parse(bytes);
        ASSERT_EQ(library.has_value(), bytes.size() >= NEBuilder::kTable) << bytes.size();
        const std::size_t count = library ? expectSound(*library, bytes.size(), 16) : 0;
        EXPECT_LE(count, left);
        left = count;
    }
}

} // namespace
