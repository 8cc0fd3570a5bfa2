#include "nelibrary.h"

#include "testfiles.h"

#include <gtest/gtest.h>

namespace {

using rsc::ByteReader;
using rsc::Bytes;
using rsc::NeLibrary;
using rsc::Refusal;
using rsc::Resource;

std::vector<Resource> someResources() {
    return {{"WAVE", 101, Bytes(33, 1)}, {"ASEQ", 2001, Bytes(16, 2)},
            {"WAVE", 7, Bytes(1, 3)},    {"CURSOR", 32767, Bytes(40, 4)},
            {"#1", 1, Bytes(5, 5)},      {"ASEQ", 1, Bytes(17, 6)}};
}

TEST(NeLibrary, ReadsBackWhatItWrote) {
    const auto resources = someResources();
    const Bytes file = rsc::buildNeLibrary("SCENE", resources);
    const NeLibrary library(file);
    ASSERT_EQ(library.entries().size(), resources.size());
    constexpr std::size_t kOrder[] = {0, 2, 1, 5, 3, 4}; // grouped by type
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const Resource& resource = resources[kOrder[i]];
        const auto& entry = library.entries()[i];
        EXPECT_EQ(entry.type, resource.type);
        EXPECT_EQ(entry.id, resource.id);
        EXPECT_EQ(entry.offset % 16, 0U);
        Bytes padded = resource.data;
        padded.resize((padded.size() + 15) / 16 * 16);
        const auto data = library.data(entry);
        EXPECT_EQ(Bytes(data.begin(), data.end()), padded);
    }
}

/// The places that the program's own reader and other tools go by.
TEST(NeLibrary, PutsHeadersAndTableWhereReadersLook) {
    const Bytes bytes = rsc::buildNeLibrary("SCENE", someResources());
    const ByteReader file(bytes, "outside");
    EXPECT_EQ(file.u16(0), 0x5A4D);
    EXPECT_GE(file.u16(0x18), 0x40);
    const std::size_t ne = file.u32(0x3C);
    EXPECT_EQ(file.u16(ne), 0x454E);
    const std::size_t table = ne + file.u16(ne + 0x24);
    const std::size_t tableEnd = ne + file.u16(ne + 0x26);
    EXPECT_EQ(file.u16(table), 4) << "alignment shift";
    const std::size_t name = table + file.u16(table + 2); // of the first type
    ASSERT_LT(name + 5, tableEnd) << "names belong to the table";
    EXPECT_EQ(std::string(bytes.begin() + static_cast<long>(name),
                          bytes.begin() + static_cast<long>(name) + 5),
              "\x04WAVE");
    EXPECT_EQ(file.u16(table + 4), 2) << "resources of the first type";
    EXPECT_EQ(file.u16(table + 10 + 2), 3) << "33 bytes are three units";
    EXPECT_EQ(file.u16(table + 10 + 6), 0x8000 | 101);
    const std::size_t third = table + 2 + 2 * (8 + 2 * 12);
    EXPECT_EQ(file.u16(third), 0x8000 | 12) << "CURSOR is type 12";
    EXPECT_EQ(file.u8(tableEnd), 5) << "the resident names begin with the module's";
}

TEST(NeLibrary, TakesTheSmallestShiftThatReachesEverything) {
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
    for (const Case& row : cases) {
        std::vector<Resource> resources;
        for (int i = 1; i <= row.count; ++i)
            resources.push_back({"WAVE", static_cast<std::uint16_t>(i),
                                 Bytes(row.size, static_cast<std::uint8_t>(i))});
        const Bytes file = rsc::buildNeLibrary("BIG", resources);
        const NeLibrary library(file);
        EXPECT_EQ(library.alignmentShift(), row.shift) << row.size << " x " << row.count;
        for (const auto& entry : library.entries()) {
            const auto data = library.data(entry);
            EXPECT_EQ(data.front(), entry.id);
            EXPECT_EQ(data[row.size - 1], entry.id);
        }
    }
}

TEST(NeLibrary, RefusesMoreResourcesThanItsTableHolds) {
    // Offsets of 32768 and more of a type's name were read as integer types.
    for (const auto& [type, most] : {std::pair("WAVE", 2728), std::pair("CURSOR", 5440)}) {
        std::vector<Resource> resources(static_cast<std::size_t>(most), Resource{type, 1, {1}});
        const Bytes file = rsc::buildNeLibrary("MANY", resources);
        const NeLibrary library(file);
        EXPECT_EQ(library.entries().size(), resources.size());
        EXPECT_EQ(library.entries().back().type, type);
        resources.insert(resources.end(), 20, resources[0]);
        EXPECT_THROW((void)rsc::buildNeLibrary("MANY", resources), Refusal) << type;
    }
}

TEST(NeLibrary, RefusesAFileCutOffAnywhere) {
    const Bytes file = rsc::buildNeLibrary("SCENE", someResources());
    for (std::size_t size = 0; size < file.size(); ++size) {
        const Bytes part(file.begin(), file.begin() + static_cast<long>(size));
        EXPECT_THROW((void)NeLibrary(part), Refusal) << size;
    }
}

TEST(NeLibrary, KnowsItsTypes) {
    EXPECT_EQ(rsc::integerType("ICON"), 14);
    EXPECT_EQ(rsc::integerType("#300"), 300);
    EXPECT_EQ(rsc::integerType("WAVE"), std::nullopt);
    for (const char* good : {"WAVE", "TEXT", "a.b!", "CURSOR", "ACCELERATOR", "#1", "#32767"})
        EXPECT_TRUE(rsc::isResourceType(good)) << good;
    for (const char* bad : {"", "WAV", "WAVES", "WA E", "#", "#0", "#32768", "#-12", "Cursor"})
        EXPECT_FALSE(rsc::isResourceType(bad)) << bad;
}

} // namespace
