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

// What the NE header says of the table's place, and the size of a table of two resources of a type.
constexpr unsigned kTableStart = NEBuilder::kTable - NEBuilder::kNeHeader;
constexpr unsigned kTableSize = 41;

/// Every resource that is listed is found and lies within the file; their number.
std::size_t expectSound(const OMNELibrary& library, std::size_t fileSize) {
    std::size_t count = 0;
    for (const std::string& type : library.types())
        for (const int id : library.ids(type)) {
            const auto place = library.find(id, type);
            EXPECT_TRUE(place) << type << id;
            if (!place) continue;
            EXPECT_LE(place->offset, fileSize) << type << id;
            EXPECT_LT(place->length, fileSize - place->offset + 32768) << type << id;
            ++count;
        }
    return count;
}

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
        {"largest shift", kShift, 15, true, {}, 0},
        {"absurd shift", kShift, 16, true, {}, 0},
        {"shift of 32 bits", kShift, 31, true, {}, 0},
        {"all bits of the shift", kShift, 0xFFFF, true, {}, 0},
        {"name onto the type itself", kTypeId, 2, false, {}, 0},
        {"name at the end of the table", kTypeId, kTableSize, true, {}, 0},
        {"name past the end by its length", kTypeId, kTableSize - 1, true, {}, 0},
        {"no resources", kCount, 0, true, {}, 0},
        {"name outside the table", kTypeId, 0x7FFF, true, {}, 0},
        {"type number without a name", kTypeId, 0x8000 | 3, false, {}, 0},
        {"more resources than the table has", kCount, 0xFFFF, true, {1, 2}, 16},
        {"offset past the file", kOffset, 0xFFFF, true, {2}, 16},
        {"length past the file", kLength, 0xFFFF, true, {1, 2}, 32},
        {"named", kId, 1, false, {2}, 16},
        {"name table", kTypeId, 0x800F, false, {}, 0},
        {"empty table", NEBuilder::kNeHeader + 0x26, kTableStart, false, {}, 0},
        {"table of its shift", NEBuilder::kNeHeader + 0x26, kTableStart + 2, true, {}, 0},
        {"table without the names", NEBuilder::kNeHeader + 0x26, kTableStart + 22, true, {}, 0},
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

TEST(OMNELibrary, LivesWithEveryBitTurned) {
    const Bytes good =
        NEBuilder().add("WAVE", 1, "one").addStandard(14, 3, "icon").add("RRGB", 2, "two").build();
    std::size_t refused = 0;
    std::size_t damaged = 0;
    std::size_t whole = 0;
    for (std::size_t bit = 0; bit < 8 * good.size(); ++bit) {
        Bytes bytes = good;
        bytes[bit / 8] ^= static_cast<std::byte>(1 << bit % 8);
        SCOPED_TRACE(bit);
        const auto library = parse(bytes);
        if (!library) ++refused;
        if (library && library->isDamaged()) ++damaged;
        if (library && expectSound(*library, bytes.size()) == 3) ++whole;
    }
    // The two signatures, the place of the second header, and the only bit of the relocation table
    // that is set.
    EXPECT_EQ(refused, 2 * 16U + 32 + 1);
    EXPECT_GT(damaged, 50U);
    EXPECT_GT(whole, 8 * 64U) << "most bits are of no concern";
}

TEST(OMNELibrary, RefusesFilesThatAreAllOneByte) {
    for (const unsigned value : {0x00u, 0x4Du, 0xFFu})
        for (const std::size_t size : {1, 63, 64, 65, 128, 4096})
            EXPECT_FALSE(parse(Bytes(size, static_cast<std::byte>(value)))) << value << " " << size;
}

TEST(OMNELibrary, LooksForTheSecondHeaderWhereverItIsSaidToBe) {
    struct Row {
        const char* name;
        std::uint32_t place;
    };
    const Bytes good = NEBuilder().add("WAVE", 1, "one").build();
    const auto size = static_cast<std::uint32_t>(good.size());
    const Row rows[] = {{"at the start", 0},           {"within the first header", 2},
                        {"at the end", size},          {"a byte before the end", size - 1},
                        {"cut by the end", size - 63}, {"past the end", size + 1},
                        {"at 2 GB", 0x80000000},       {"at the last place there is", 0xFFFFFFFF}};
    for (const Row& row : rows) {
        Bytes bytes = good;
        setU16(bytes, 0x3C, row.place & 0xFFFF);
        setU16(bytes, 0x3E, row.place >> 16);
        EXPECT_FALSE(parse(bytes)) << row.name;
    }
    Bytes moved = good;
    moved.insert(moved.end(), good.begin() + NEBuilder::kNeHeader, good.end());
    setU16(moved, 0x3C, size);
    EXPECT_TRUE(parse(moved)->find(1, "WAVE")) << "a second header may stand at the end";
}

TEST(OMNELibrary, ResourcesMayShareBytes) {
    const Bytes good = NEBuilder().add("WAVE", 1, "one").add("WAVE", 2, "two").build();
    const auto fileUnits = static_cast<unsigned>(good.size() / 16);
    struct Row {
        const char* name;
        unsigned offset; ///< units of 16 bytes, of the first resource
        unsigned length;
    };
    const Row rows[] = {{"the other one", 12, 1},
                        {"the whole file", 0, fileUnits},
                        {"the table itself", NEBuilder::kTable / 16, 3},
                        {"the last unit", fileUnits - 1, 1},
                        {"nothing", 12, 0},
                        {"nothing at the end", fileUnits, 0}};
    for (const Row& row : rows) {
        Bytes bytes = good;
        setU16(bytes, kOffset, row.offset);
        setU16(bytes, kLength, row.length);
        const auto library = parse(bytes);
        ASSERT_TRUE(library) << row.name;
        EXPECT_FALSE(library->isDamaged()) << row.name;
        EXPECT_EQ(library->ids("WAVE"), (std::vector<int>{1, 2})) << row.name;
        EXPECT_EQ(library->find(1, "WAVE")->offset, row.offset * 16) << row.name;
        EXPECT_EQ(library->find(1, "WAVE")->length, row.length * 16) << row.name;
    }
}

TEST(OMNELibrary, TakesATableOfTheLargestSize) {
    constexpr int kMost = (0xFFFF - 10) / 12; // what 64 KB have room for
    Bytes table;
    const auto u16 = [&table](unsigned value) {
        table.push_back(static_cast<std::byte>(value & 0xFF));
        table.push_back(static_cast<std::byte>(value >> 8));
    };
    u16(0);
    u16(0x8000 | 10);
    u16(0xFFFF); // as many as can be said
    table.resize(table.size() + 4);
    for (unsigned id = 1; id <= kMost; ++id)
        for (const unsigned word : {0u, 1u, 0u, 0x8000u | id, 0u, 0u}) u16(word);
    table.resize(0xFFFF);
    const OMNELibrary library(table, std::uint64_t{64} << 20);
    EXPECT_TRUE(library.isDamaged());
    EXPECT_EQ(library.ids("RCDATA").size(), std::size_t{kMost});
    EXPECT_TRUE(library.find(kMost, "RCDATA"));
}

TEST(OMNELibrary, KeepsAResourceWhosePaddingIsMissingAtTheEndOfTheFile) {
    Bytes bytes = NEBuilder().add("WAVE", 1, std::string(33, 'x')).build();
    bytes.resize(bytes.size() - 15);
    const auto library = parse(bytes);
    EXPECT_FALSE(library->isDamaged());
    EXPECT_EQ(library->find(1, "WAVE")->length, 48U);
}

} // namespace
