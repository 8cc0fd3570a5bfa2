#include "nebuilder.h"

#include "omnelibrary.h"

#include <gtest/gtest.h>

using testing_support::Bytes;
using testing_support::MemoryFiles;
using testing_support::NEBuilder;

namespace {

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
constexpr std::size_t kId = kLength + 4;

TEST(OMNELibrary, ListsAndFindsResources) {
    const Bytes bytes = NEBuilder()
                            .add("WAVE", 300, "three")
                            .add("WAVE", 5, std::string(33, 'x'))
                            .addStandard(14, 7, "icon")
                            .addStandard(77, 1, "a type without a name")
                            .addNamed("ASEQ", 44, "named")
                            .add("ASEQ", 2, "two")
                            .build();
    const auto library = parse(bytes);
    ASSERT_TRUE(library);
    EXPECT_FALSE(library->isDamaged());
    EXPECT_EQ(library->types(), (std::vector<std::string>{"ASEQ", "ICON", "WAVE"}));
    EXPECT_EQ(library->ids("WAVE"), (std::vector<int>{300, 5})) << "in the order of the table";
    EXPECT_EQ(library->ids("ASEQ"), std::vector<int>{2}) << "without named resources";
    EXPECT_EQ(library->ids("wave"), std::vector<int>()) << "case counts";

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
    // The second type record names the first type.
    const std::size_t second = kTypeId + 8 + 12;
    bytes.at(second) = bytes.at(kTypeId);
    bytes.at(second + 1) = bytes.at(kTypeId + 1);
    const auto library = parse(bytes);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->types(), std::vector<std::string>{"WAVE"});
    EXPECT_EQ(library->ids("WAVE"), (std::vector<int>{5, 5, 5}));
    EXPECT_EQ(library->find(5, "WAVE")->length, 1U);
}

TEST(OMNELibrary, KnowsTheStandardTypes) {
    const std::pair<int, std::string_view> rows[] = {
        {12, "CURSOR"}, {2, "BITMAP"},  {14, "ICON"}, {4, "MENU"},        {5, "DIALOG"},
        {6, "STRING"},  {7, "FONTDIR"}, {8, "FONT"},  {9, "ACCELERATOR"}, {10, "RCDATA"},
        {1, ""},        {3, ""},        {11, ""},
    };
    for (const auto& [number, name] : rows)
        EXPECT_EQ(OMNELibrary::standardTypeName(number), name) << number;
    // A type that only bears the name of a standard one is out of reach.
    EXPECT_TRUE(parse(NEBuilder().add("CURSOR", 1, "x").build())->types().empty());
}

TEST(OMNELibrary, RefusesWhatIsNoLibrary) {
    const Bytes good = NEBuilder().add("WAVE", 1, "x").build();
    struct Row {
        const char* name;
        std::size_t at;
        unsigned value;
    };
    const Row rows[] = {
        {"MZ signature", 0, 0x4D5A},
        {"old relocation table", 0x18, 0x3F},
        {"place of the second header", 0x3C, 65},
        {"second header past the end", 0x3E, 0xFFFF},
        {"NE signature", NEBuilder::kNeHeader, 0x4550},
    };
    for (const Row& row : rows) {
        Bytes bytes = good;
        setU16(bytes, row.at, row.value);
        EXPECT_FALSE(parse(bytes)) << row.name;
    }
    Bytes later = good;
    setU16(later, 0x18, 0x41);
    EXPECT_TRUE(parse(later));
}

TEST(OMNELibrary, LeavesOutWhatPointsOutside) {
    struct Row {
        const char* name;
        std::size_t at;
        unsigned value;
        bool damaged;
        std::vector<int> ids;
        std::size_t length; ///< of the first resource left
    };
    const Row rows[] = {
        {"untouched", 0, 0x5A4D, false, {1, 2}, 16},
        {"absurd shift", kShift, 16, true, {}, 0},
        {"name outside the table", kTypeId, 0x7FFF, true, {}, 0},
        {"type number without a name", kTypeId, 0x8000 | 3, false, {}, 0},
        {"more resources than the table has", kCount, 0xFFFF, true, {1, 2}, 16},
        {"offset past the file", kOffset, 0xFFFF, true, {2}, 16},
        {"length past the file", kLength, 0xFFFF, true, {1, 2}, 32},
        {"named", kId, 1, false, {2}, 16},
        {"name table", kTypeId, 0x800F, false, {}, 0},
        {"table turned inside out", NEBuilder::kNeHeader + 0x26, 1, false, {}, 0},
        {"table longer than the file", NEBuilder::kNeHeader + 0x26, 0xFFFF, true, {1, 2}, 16},
        {"table outside the file", NEBuilder::kNeHeader + 0x24, 0x7000, false, {}, 0},
    };
    const Bytes good = NEBuilder().add("WAVE", 1, "one").add("WAVE", 2, "two").build();
    for (const Row& row : rows) {
        Bytes bytes = good;
        setU16(bytes, row.at, row.value);
        const auto library = parse(bytes);
        ASSERT_TRUE(library) << row.name;
        EXPECT_EQ(library->hasNameTable(), row.value == 0x800F) << row.name;
        EXPECT_EQ(library->ids("WAVE"), row.ids) << row.name;
        EXPECT_EQ(library->isDamaged(), row.damaged) << row.name;
        if (row.ids.empty()) continue;
        EXPECT_EQ(library->find(row.ids[0], "WAVE")->length, row.length) << row.name;
    }
}

TEST(OMNELibrary, LivesWithTruncationAtEveryByte) {
    const Bytes good =
        NEBuilder().add("WAVE", 1, "one").addStandard(14, 3, "icon").add("RRGB", 2, "two").build();
    std::size_t seen = 0;
    for (std::size_t size = 0; size < good.size(); ++size) {
        const auto library = parse(Bytes(good.begin(), good.begin() + std::ptrdiff_t(size)));
        EXPECT_EQ(library.has_value(), size >= NEBuilder::kTable) << size;
        if (!library) continue;
        for (const std::string& type : library->types())
            for (int id : library->ids(type)) {
                const auto place = library->find(id, type);
                ASSERT_TRUE(place);
                EXPECT_LT(place->offset, size);
                EXPECT_LT(place->offset + place->length, size + 16);
                ++seen;
            }
    }
    EXPECT_GT(seen, 0U);
}

TEST(OMNELibrary, KeepsAResourceWhosePaddingIsMissingAtTheEndOfTheFile) {
    Bytes bytes = NEBuilder().add("WAVE", 1, std::string(33, 'x')).build();
    bytes.resize(bytes.size() - 15);
    const auto library = parse(bytes);
    EXPECT_FALSE(library->isDamaged());
    EXPECT_EQ(library->find(1, "WAVE")->length, 48U);
}

} // namespace
