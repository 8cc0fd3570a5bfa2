// Maps as authors write them: what is read of them, and what is told of the rest.
#include "formats/map/resourcemap.h"

#include <gtest/gtest.h>

using formats::map::kMaxIdentifier;
using formats::map::Library;
using formats::map::ResourceMap;

namespace {

using namespace std::string_literals;

struct MapRow {
    const char* name;
    std::string text;
    std::string blocks; ///< what is read: "file:TYPE id,..;"
    std::string log;    ///< "line: problem"
};

void expectRead(const MapRow& row) {
    std::string blocks;
    std::string log;
    ResourceMap map(row.text, [&](int line, const char* problem) {
        log += std::to_string(line) + ": " + problem + "\n";
    });
    for (Library library; map.next(library);) {
        blocks += library.name + ":";
        for (const auto& [type, id] : library.resources)
            blocks += type + " " + std::to_string(id) + ",";
        blocks += ";";
    }
    EXPECT_EQ(blocks, row.blocks) << row.name;
    EXPECT_EQ(log, row.log) << row.name;
}

TEST(ResourceMap, LeavesOutWhatMakesNoSenseInAMap) {
    const std::string type = "a type must have four characters, the line is left out";
    const std::string id = "an id must be a number from 1 to 32767, the line is left out";
    const std::string surplus = "more resources than line 2 says, the file is left out: correct it";
    const std::string noEnd = "the map ends without ENDFILE: write one behind the last file";
    const std::string noCount =
        "must be the largest number of resources of a file, the folder is scanned instead";
    const std::string longIdentifier =
        "the identifier has more than 39 characters, the folder is scanned instead\n";
    const MapRow rows[] = {
        {"line ends", "M\r2\r\n\n \t\na.RSC junk\rWAVE 1\n\n  RRGB\t 2 junk\r\nx ENDFILE y\n",
         "a.rsc:WAVE 1,RRGB 2,;", ""},
        {"type", "M\n9\na\nWAV 1\nCURSOR 2\nWAVE3\nAB\nASEQ 4\nENDFILE", "a:WAV  1,WAVE 3,ASEQ 4,;",
         "5: " + id + "\n7: " + type + "\n"},
        {"id", "M\n9\na\nWAVE\nWAVE 0\nWAVE -1\nWAVE 32768\nWAVE 32767\nENDFILE", "a:WAVE 32767,;",
         "4: " + id + "\n5: " + id + "\n6: " + id + "\n7: " + id + "\n"},
        {"surplus", "M\n1\na\nWAVE 1\nWAVE 2\nWAVE 3\nENDFILE\nb\nWAVE 4\nENDFILE", "b:WAVE 4,;",
         "7: " + surplus + "\n"},
        {"surplus of lines that do not count", "M\n1\na\nWAVE 1\nWAVE x\nENDFILE", "a:WAVE 1,;",
         "5: " + id + "\n"},
        {"absurd count", "M\n2147483647\na\nWAVE 1\nENDFILE", "a:WAVE 1,;", ""},
        {"no count", "M\na.rsc\nWAVE 1\nENDFILE", "", "2: " + noCount + "\n"},
        {"more than a number holds", "M\n2147483648\na\nWAVE 1\nENDFILE", "",
         "2: " + noCount + "\n"},
        {"count 0", "M\n0 files\na\nWAVE 1\nENDFILE\nb\nENDFILE", "b:;", "5: " + surplus + "\n"},
        {"no ENDFILE between", "M\n9\na\nWAVE 1\nb.rsc\nWAVE 2\nENDFILE", "a:WAVE 1,WAVE 2,;",
         "5: " + id + "\n"},
        {"NUL bytes", "M\0x\n1\0\na\0b\nWAVE\0 1\nWAVE 2\0\nENDFILE"s, "a:WAVE 2,;",
         "4: " + id + "\n"},
        {"long identifier", std::string(40, 'M') + "\n9\na\nENDFILE", "", "1: " + longIdentifier},
        {"long name", "M\n9\nabcdefghijkl.rsc\nWAVE 1\nENDFILE\nabcdefghijk.rsc\nWAVE 2\nENDFILE",
         "abcdefghijk.rsc:WAVE 2,;",
         "3: the file name has more than 15 characters, the resources below are left out\n"},
        {"stray ENDFILE", "M\n9\nENDFILE\na\nWAVE 1\nENDFILE", "a:WAVE 1,;",
         "3: ENDFILE without a file before it, passed over\n"},
        {"no ENDFILE", "M\n9\na\nWAVE 1\nWAVE 2", "a:WAVE 1,WAVE 2,;", "5: " + noEnd + "\n"},
        {"control character", "M\n9\na\nENDFILE\n\x1A", "a:;",
         "5: no file name, the resources below are left out\n5: " + noEnd + "\n"},
        {"long line",
         "M\n9\na" + std::string(100, ' ') + "b\nWAVE 1" + std::string(90, '0') + "\nENDFILE",
         "a:;", "4: " + id + "\n"},
        {"empty", "", "", "0: " + noCount + "\n"},
    };
    for (const MapRow& row : rows) expectRead(row);
    const std::string longest(kMaxIdentifier, 'M');
    EXPECT_EQ(ResourceMap(longest + "\n9\n", {}).identifier(), longest);
}

} // namespace
