// Resource libraries: what is written, what is found in them, and what is left of damaged ones.
#include "formats/library/index.h"
#include "formats/library/writer.h"

#include <gtest/gtest.h>

using formats::Bytes;
using formats::library::Index;
using formats::library::kWrittenTable;
using formats::library::Resource;

namespace {

using Ids = std::vector<int>;
using Types = std::vector<std::string>;

Bytes written(const std::vector<Resource>& resources) {
    return formats::library::write("TEST", resources).value;
}

std::optional<Index> parse(const Bytes& bytes) {
    return Index::read(formats::readAt(bytes), bytes.size());
}

void setU16(Bytes& bytes, std::size_t at, unsigned value) {
    bytes.at(at) = static_cast<std::uint8_t>(value);
    bytes.at(at + 1) = static_cast<std::uint8_t>(value >> 8);
}

// Offsets in the file of what its first type and first resource say.
constexpr std::size_t kShift = kWrittenTable;
constexpr std::size_t kTypeId = kShift + 2;
constexpr std::size_t kCount = kTypeId + 2;
constexpr std::size_t kOffset = kTypeId + 8;
constexpr std::size_t kLength = kOffset + 2;
constexpr std::size_t kIdField = kLength + 4;

TEST(Library, ListsAndFindsResources) {
    Bytes bytes = written({{"ASEQ", 44, {1}},
                           {"ASEQ", 2, {2}},
                           {"WAVE", 300, {3}},
                           {"WAVE", 5, Bytes(33, 'x')},
                           {"ICON", 7, {4}},
                           {"#77", 1, {5}},
                           {"?URSOR", 1, {6}}});
    setU16(bytes, kIdField, 44);                       // named
    *std::find(bytes.begin(), bytes.end(), '?') = 'C'; // but the name of a standard type
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
    EXPECT_EQ(bytes.at(place->offset), 'x');
    EXPECT_TRUE(library->find(7, "ICON"));
    EXPECT_FALSE(library->find(6, "WAVE"));
    EXPECT_FALSE(library->find(301, "WAVE"));
    EXPECT_FALSE(library->find(5, "RRGB"));
}

TEST(Library, TakesTheFirstOfEqualIdsAndJoinsRepeatedTypes) {
    Bytes bytes = written({{"WAVE", 5, {1}}, {"ASEQ", 5, Bytes(17, 2)}, {"ASEQ", 5, {3}}});
    const std::size_t second = kTypeId + 8 + 12; // its type record names the first type
    setU16(bytes, second, bytes.at(kTypeId));
    const auto library = parse(bytes);
    ASSERT_TRUE(library);
    EXPECT_EQ(library->types(), Types{"WAVE"});
    EXPECT_EQ(library->ids("WAVE"), (Ids{5, 5, 5}));
    EXPECT_EQ(library->find(5, "WAVE")->length, 16U);
}

TEST(Library, LeavesOutWhatPointsOutside) {
    constexpr std::size_t kNeHeader = formats::library::kWrittenNeHeader;
    constexpr std::size_t kTablePlace = kNeHeader + 0x24; // counts from the NE header
    constexpr std::size_t kTableEnd = kTablePlace + 2;
    constexpr unsigned kTableStart = kWrittenTable - kNeHeader;
    constexpr unsigned kTableSize = 42;
    const Bytes good = written({{"WAVE", 1, {1}}, {"WAVE", 2, {2}}});
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
        {"place of the second header", 0x3C, kNeHeader + 1, Refused},
        {"second header past the end", 0x3E, 0xFFFF, Refused},
        {"no NE", kNeHeader, 0x4550, Refused},
        {"largest shift", kShift, 15, Damaged},
        {"absurd shift", kShift, 16, Damaged},
        {"all bits of the shift", kShift, 0xFFFF, Damaged},
        {"name at the end of the table", kTypeId, kTableSize, Damaged},
        {"name past the end by its length", kTypeId, kTableSize - 2, Damaged},
        {"empty name", kTypeId, kTableSize - 1, Damaged},
        {"name outside the table", kTypeId, 0x7FFF, Damaged},
        {"type number without a name", kTypeId, 0x8000 | 3, Whole},
        {"name table", kTypeId, 0x800F, Whole},
        {"no resources", kCount, 0, Damaged},
        {"more resources than the table has", kCount, 0xFFFF, Damaged, {1, 2}, 16},
        {"offset past the file", kOffset, 0xFFFF, Damaged, {2}, 16},
        {"offset at its end", kOffset, static_cast<unsigned>(good.size() / 16), Damaged, {2}, 16},
        {"the table as a resource", kOffset, kWrittenTable / 16, Whole, {1, 2}, 16},
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
std::size_t expectSound(const Index& library, std::size_t fileSize, std::size_t unit) {
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

TEST(Library, LivesWithTruncationAndEveryBitTurned) {
    Bytes bytes = written({{"WAVE", 1, {1}}, {"ICON", 3, {2}}, {"RRGB", 2, {3}}});
    std::size_t refused = 0;
    std::size_t damaged = 0;
    std::size_t whole = 0;
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        SCOPED_TRACE(bit);
        bytes[bit / 8] ^= 1 << bit % 8;
        const auto library = parse(bytes);
        if (!library) ++refused;
        if (library && library->isDamaged()) ++damaged;
        if (library && expectSound(*library, bytes.size(), 32768) == 3) ++whole;
        bytes[bit / 8] ^= 1 << bit % 8;
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
        ASSERT_EQ(library.has_value(), bytes.size() >= kWrittenTable) << bytes.size();
        const std::size_t count = library ? expectSound(*library, bytes.size(), 16) : 0;
        EXPECT_LE(count, left);
        left = count;
    }
}

TEST(Library, TakesTheSmallestShiftThatReachesEverything) {
    struct Case {
        std::size_t size;
        int count;
        int shift;
    };
    const Case cases[] = {
        {0xFFFF * 16, 1, 4},     // the largest that a length of 16 bits can tell
        {0xFFFF * 16 + 1, 1, 5}, //
        {0x8000 * 16, 2, 4},     // the second begins just within reach
        {0x8000 * 16, 3, 5},     // the third does not
        {0xFFFF * 64 + 1, 1, 7},
    };
    for (const auto& [size, count, shift] : cases) {
        std::vector<Resource> resources;
        for (std::uint16_t id = 1; id <= count; ++id)
            resources.push_back({"WAVE", id, Bytes(size, static_cast<std::uint8_t>(id))});
        const Bytes file = written(resources);
        EXPECT_EQ(file.at(kShift), shift) << size << " x " << count;
        for (int id = 1; id <= count; ++id) {
            const auto place = parse(file)->find(id, "WAVE");
            EXPECT_EQ(file.at(place->offset), id);
            EXPECT_EQ(file.at(place->offset + size - 1), id);
        }
    }
}

TEST(Library, RefusesMoreResourcesThanItsTableHolds) {
    // Offsets of 32768 and more of a type's name were read as integer types.
    for (const auto& [type, most] : {std::pair("WAVE", 2728), std::pair("CURSOR", 5440)}) {
        std::vector<Resource> resources(static_cast<std::size_t>(most), Resource{type, 1, {1}});
        EXPECT_EQ(parse(written(resources))->ids(type).size(), resources.size());
        resources.insert(resources.end(), 20, resources[0]);
        EXPECT_NE(formats::library::write("MANY", resources).refusal, "") << type;
    }
}

TEST(Library, KnowsItsTypes) {
    EXPECT_EQ(formats::library::typeNumber("ICON"), 14);
    EXPECT_EQ(formats::library::typeNumber("#300"), 300);
    for (const char* good : {"WAVE", "a.b!", "ACCELERATOR", "#1", "#32767"})
        EXPECT_TRUE(formats::library::isResourceType(good)) << good;
    for (const char* bad : {"", "WAV", "WAVES", "WA E", "#", "#0", "#32768", "#-12", "Cursor"})
        EXPECT_FALSE(formats::library::isResourceType(bad)) << bad;
}

} // namespace
