#include "library/nelibrary.h"

#include "testfiles.h"

namespace {

using rsc::Bytes;
using rsc::NeLibrary;
using rsc::Refusal;
using rsc::Resource;

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
    const std::vector<Resource> resources = {{"WAVE", 101, Bytes(33, 1)},
                                             {"CURSOR", 32767, Bytes(40, 4)}};
    const Bytes file = rsc::buildNeLibrary("SCENE", resources);
    for (std::size_t size = 0; size < file.size(); ++size) {
        const Bytes part(file.begin(), file.begin() + static_cast<long>(size));
        EXPECT_THROW((void)NeLibrary(part), Refusal) << size;
    }
}

TEST(NeLibrary, KnowsItsTypes) {
    EXPECT_EQ(rsc::integerType("ICON"), 14);
    EXPECT_EQ(rsc::integerType("#300"), 300);
    for (const char* good : {"WAVE", "a.b!", "ACCELERATOR", "#1", "#32767"})
        EXPECT_TRUE(rsc::isResourceType(good)) << good;
    for (const char* bad : {"", "WAV", "WAVES", "WA E", "#", "#0", "#32768", "#-12", "Cursor"})
        EXPECT_FALSE(rsc::isResourceType(bad)) << bad;
}

} // namespace
