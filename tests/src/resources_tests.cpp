#include "frameworkfixture.h"
#include "growth.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omformat.h"
#include "resources/resources.h"

#include <algorithm>
#include <optional>

using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using namespace std::string_literals;

using Strings = std::vector<std::string>;

constexpr const char* kLogFile = "zorbelog.txt";

class ResourcesTest : public FrameworkTest {
  protected:
    ResourcesTest() {
        resources.setAlertLink([this](std::string_view text) { alerts.emplace_back(text); });
    }
    RResources::StartUp start(std::string_view cd = "D:\\") {
        return resources.start(cd, [this](const SequenceSoundRecord& record) {
            sounds.push_back({record.animationObject, record.sequence, record.sound});
        });
    }
    std::string takeLog() {
        const std::string text = files.text(kLogFile);
        files.erase(kLogFile);
        return text;
    }
    static bool has(int id, std::string_view type = "WAVE") {
        return OMResMgrFindFile(id, type) != nullptr;
    }

    RResources resources;
    Strings alerts;
    std::vector<std::vector<int>> sounds;
};

TEST_F(ResourcesTest, RegistersTheFilesOfAMap) {
    files.put("RSC\\resource.map", "MAINMAP\n3\n"
                                   "sound1.rsc\nWAVE 101\nWAVE 102\nASEQ 2001\nENDFILE\n"
                                   "palettes.rsc\nRRGB 5\nENDFILE\n");
    files.opened.clear();
    EXPECT_EQ(start(), RResources::StartUp::Ready);
    EXPECT_TRUE(has(101) && has(102) && has(2001, "ASEQ") && has(5, "RRGB"));
    EXPECT_EQ(std::count(files.opened.begin(), files.opened.end(), "sound1.rsc"), 0)
        << "the map spares opening the files";
    EXPECT_EQ(takeLog(), "");

    // Active for the framework, not for the game.
    resources.deactivateDLL("sound1.rsc");
    EXPECT_TRUE(has(101));
    resources.activateDLL("SOUND1.RSC", false);
    resources.deactivateDLL("sound1.rsc");
    EXPECT_TRUE(has(101)) << "files of a map stay findable";
    EXPECT_EQ(takeLog(), "Activating DLL sound1.rsc temporarily\nDeactivating DLL sound1.rsc\n");

    resources.shutDown();
    EXPECT_FALSE(has(101));
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourcesTest, ReadsEachMapAndEachFileOnce) {
    files.put("RSC\\resource.map", "ONE\n2\na.rsc\nWAVE 1\nENDFILE\n");
    files.put("..\\RSC\\resource.map", "ONE\n2\nb.rsc\nWAVE 2\nENDFILE\n");
    files.put("D:\\RSC\\resource.map", "one\n2\nA.RSC\nWAVE 3\nENDFILE\nc.rsc\nWAVE 4\nENDFILE");
    start();
    EXPECT_TRUE(has(1));
    EXPECT_FALSE(has(2)) << "a map with the identifier of an earlier one is skipped";
    EXPECT_FALSE(has(3)) << "a file of an earlier map is not registered again";
    EXPECT_TRUE(has(4));
}

TEST_F(ResourcesTest, ScansDirectoriesWithoutAMap) {
    const auto library = [](int id) { return NEBuilder().add("WAVE", id, "x").build(); };
    files.put("RSC\\First.RSC", library(1));
    files.put("RSC\\copy.rsc.bak", library(2));
    files.put("RSC\\readme.txt", library(3));
    files.put("RSC\\dir.rsc\\x", "");
    files.put("RSC\\a-name-too-long.rsc", library(4));
    files.put("..\\RSC\\first.rsc", library(5)); // the same name: asked through the search path
    files.put("..\\RSC\\second.rsc", library(6));
    files.put("E:\\RSC\\third.rsc", library(7));
    EXPECT_EQ(start("E:"), RResources::StartUp::Ready);
    EXPECT_EQ(takeLog(), "ERROR: a-name-too-long.rsc is left out, as its name has more than 15 "
                         "characters: rename it\n"
                         "Activating DLL copy.rsc.bak temporarily\n"
                         "Activating DLL first.rsc temporarily\n"
                         "Activating DLL second.rsc temporarily\n"
                         "Activating DLL third.rsc temporarily\n");
    const std::vector<bool> expected = {true, true, false, false, false, true, true};
    for (int id = 1; id <= 7; ++id) EXPECT_EQ(has(id), expected[std::size_t(id - 1)]) << id;

    resources.deactivateDLL("first.rsc");
    EXPECT_FALSE(has(1));
    resources.shutDown();
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourcesTest, ReadsTheAudioMapThroughTheSearchPath) {
    files.put("RSC\\resource.map", "M\n0\na.rsc\nENDFILE");
    files.put("audio.map", "AO: 9\tSequence: 9\tSound: 9\n"); // in no directory of the path
    files.put("..\\RSC\\Audio.map", "  AO: 2001\tSequence: 3\tSound: 100000\r\n"
                                    "AO:-1 Sequence:0  Sound:7 trailing\r\n"
                                    "\r\n"
                                    "AO: 1 Sound: 2\r\n"
                                    "AO: 70000 Sequence: 1 Sound: 1\r\n"
                                    "AO: 5 Sequence: 6 Sound: 7");
    start();
    EXPECT_EQ(sounds, (std::vector<std::vector<int>>{{2001, 3, 100000}, {-1, 0, 7}, {5, 6, 7}}));
    EXPECT_EQ(takeLog(),
              "ERROR: ..\\RSC\\audio.map line 4: not of the form AO: n  Sequence: n  Sound: n\n"
              "ERROR: ..\\RSC\\audio.map line 5: not of the form AO: n  Sequence: n  Sound: n\n");
}

TEST_F(ResourcesTest, LoadsResourcesAndReportsTheMissing) {
    files.put("RSC\\a.rsc", NEBuilder().add("WAVE", 7, "bytes").build());
    files.put("..\\RSC\\resource.map", "M\n1\ngone.rsc\nWAVE 9\nENDFILE\n");
    start();
    takeLog();
    machine.clock().now = 1234;
    const OMApp app(OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8);
    const auto stream = resources.load(7, "WAVE", kOMIStreamCache);
    ASSERT_TRUE(stream);
    EXPECT_EQ(toText(stream->readAll()).substr(0, 5), "bytes");
    EXPECT_EQ(takeLog(), "Loading WAVE resource 7 from file a.rsc(CD), current ms: 1234\n");

    EXPECT_EQ(resources.load(0, "WAVE", kOMIStreamCache), nullptr);
    EXPECT_EQ(resources.load(-3, "ASEQ", kOMIStreamCache), nullptr);
    EXPECT_EQ(resources.load(8, "WAVE", kOMIStreamCache), nullptr);
    const Strings texts = {"Bad WAVE resource id: 0", "Bad ASEQ resource id: -3",
                           "WAVE resource 8 not found."};
    EXPECT_EQ(alerts, texts);
    EXPECT_EQ(takeLog(),
              "ERROR: " + texts[0] + "\nERROR: " + texts[1] + "\nERROR: " + texts[2] + "\n");
    EXPECT_TRUE(failures.empty());

    const auto gone = resources.load(9, "WAVE", kOMIStreamCache);
    ASSERT_TRUE(gone) << "a map is believed";
    EXPECT_EQ(gone->fill(), 0U);
    EXPECT_EQ(alerts, texts);
    EXPECT_NE(takeLog().find("WAVE resource 9 is empty, or not in gone.rsc"), std::string::npos);
}

TEST_F(ResourcesTest, OpensALibraryOnceForLoadsInARow) {
    files.put("RSC\\a.rsc", NEBuilder().add("WAVE", 1, "x").add("WAVE", 2, "y").build());
    start();
    const OMApp app(OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8);
    resources.load(1, "WAVE", kOMIStreamCache)->fill();
    resources.load(2, "WAVE", kOMIStreamCache)->fill();
    EXPECT_EQ(std::count(files.opened.begin(), files.opened.end(), "RSC\\a.rsc"), 1);
}

TEST_F(ResourcesTest, PrefersTheLocalCopyOfAFileOfTheCd) {
    files.put("D:\\RSC\\resource.map", "CD\n1\na.rsc\nWAVE 1\nENDFILE\n");
    files.put("D:\\RSC\\a.rsc", NEBuilder().add("WAVE", 1, "from the CD").build());
    files.put("..\\RSC\\a.rsc", NEBuilder().add("WAVE", 1, "local copy").build());
    start();
    const OMApp app(OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8);
    EXPECT_EQ(toText(resources.load(1, "WAVE", kOMIStreamCache)->readAll()).substr(0, 5), "local");
}

struct MapRow {
    const char* name;
    std::string text;
    std::string blocks; ///< what is read: "file:TYPE id,..;"
    std::string log;    ///< "line: problem" without the prefix of the log
};

std::string readBlocks(const std::string& text) {
    std::string result;
    ResourceMap map("m", text);
    MapFileBlock block;
    while (map.nextBlock(block)) {
        result += block.name + ":";
        for (const MapResource& resource : block.resources)
            result += resource.type + " " + std::to_string(resource.id) + ",";
        result += ";";
    }
    return result;
}

TEST_F(ResourcesTest, LeavesOutWhatMakesNoSenseInAMap) {
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
    for (const MapRow& row : rows) {
        EXPECT_EQ(readBlocks(row.text), row.blocks) << row.name;
        std::string expected;
        for (std::size_t at = 0; at < row.log.size();) {
            const std::size_t end = row.log.find('\n', at) + 1;
            expected += "ERROR: m line " + row.log.substr(at, end - at);
            at = end;
        }
        EXPECT_EQ(takeLog(), expected) << row.name;
    }
    EXPECT_EQ(ResourceMap("m", std::string(39, 'M') + "\n9\n").identifier(), std::string(39, 'M'));
}

TEST_F(ResourcesTest, AMapThatCannotBeUsedIsAsGoodAsNone) {
    for (const char* text : {"", "CD\n", "CD\nmany\n"}) {
        files.put("RSC\\resource.map", text);
        files.put("RSC\\b.rsc", NEBuilder().add("WAVE", 2, "two").build());
        files.put("D:\\RSC\\resource.map", "CD\n1\na.rsc\nWAVE 1\nENDFILE\n");
        EXPECT_EQ(start("D:\\"), RResources::StartUp::Ready);
        EXPECT_TRUE(OMResMgrGetIStreamInfo(1, "WAVE")) << "the map of that name on the CD is read";
        EXPECT_TRUE(OMResMgrGetIStreamInfo(2, "WAVE")) << "the folder was scanned";
        resources.shutDown();
    }
}

TEST_F(ResourcesTest, TellsOfEqualIdsAndUsesTheFirst) {
    const std::string duplicate = "OMResMgrFindFile - active, duplicate id ";
    files.put("RSC\\resource.map", "M\n2\na.rsc\nWAVE 1\nWAVE 1\nENDFILE\n"
                                   "b.rsc\nWAVE 2\nENDFILE\nc.rsc\nWAVE 2\nENDFILE\n"
                                   "d.rsc\nWAVE 3\nASEQ 4\nENDFILE\n"
                                   "D.RSC\nWAVE 9\nENDFILE\n");
    files.put("D:\\RSC\\resource.map", "N\n2\ne.rsc\nWAVE 3\nWAVE 4\nENDFILE\n");
    start();
    struct Row {
        int id;
        const char* file;
        bool told;
    };
    // New files stand in front, and the sort by id moves equal ones about.
    for (const Row& row : {Row{1, "a.rsc", true}, Row{2, "c.rsc", true}, Row{3, "e.rsc", true},
                           Row{4, "e.rsc", false}}) {
        const OMResMgrFile* file = OMResMgrFindFile(row.id, "WAVE");
        EXPECT_EQ(file ? file->name() : "none", row.file) << row.id;
        EXPECT_EQ(takeFailures(),
                  row.told ? Strings{duplicate + std::to_string(row.id) + " found!"} : Strings{})
            << row.id;
    }
    EXPECT_FALSE(has(9)) << "a file of that name was named before";
}

TEST_F(ResourcesTest, LogsOnlyTheFirstProblemsOfAMap) {
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "nonsense\n";
    const auto logged = [this] {
        const std::string log = takeLog();
        EXPECT_TRUE(log.ends_with("further problems of this map are not logged\n")) << log;
        return std::ranges::count(log, '\n');
    };
    readBlocks("M\n9\na.rsc\n" + text + "ENDFILE\nb.rsc\n" + text);
    EXPECT_EQ(logged(), MapProblems::kMaxLogged + 1);
    EXPECT_TRUE(readAudioMap("audio.map", text).empty());
    EXPECT_EQ(logged(), MapProblems::kMaxLogged + 1);
}

TEST_F(ResourcesTest, AFolderWithAMapBeyond4MBIsScanned) {
    std::string text = "M\n1\na.rsc\nWAVE 1\nENDFILE\n";
    text.resize(std::size_t{4} << 20, ' ');
    files.put("RSC\\a.rsc", NEBuilder().add("WAVE", 2, "x").build());
    files.put("RSC\\resource.map", text);
    start();
    EXPECT_TRUE(has(1) && !has(2));
    EXPECT_EQ(takeLog(), "");
    resources.shutDown();

    files.put("RSC\\resource.map", text + " ");
    start();
    EXPECT_TRUE(!has(1) && has(2));
    EXPECT_EQ(takeLog(), "ERROR: RSC\\resource.map is there and cannot be read: File too large. "
                         "The folder is scanned instead\n"
                         "Activating DLL a.rsc temporarily\n");
}

TEST_F(ResourcesTest, AMapOfManyFilesTakesTimeInProportion) {
    const auto work = [this](int count) {
        std::string blocks;
        for (int i = 0; i < count; ++i) blocks += OMFormat("%d\n%04d 1\nENDFILE\n", i, i / 20);
        files.put("RSC\\resource.map", "M\n1\n" + blocks);
        start();
        EXPECT_TRUE(has(1, "0000"));
        resources.shutDown();
        EXPECT_FALSE(has(1, "0000"));
    };
    EXPECT_LT(testing_support::growthOfFour(4000, work), testing_support::kInProportion);
}

} // namespace
