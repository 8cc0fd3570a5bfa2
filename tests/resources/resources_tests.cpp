#include "frameworkfixture.h"
#include "growth.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omformat.h"
#include "resources/mapproblems.h"
#include "resources/resources.h"

#include <algorithm>
#include <optional>

using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kLogFile = "zorbelog.txt";

class ResourcesTest : public FrameworkTest {
  protected:
    RResources::StartUp start(std::string_view cd = "D:\\") {
        return resources.start(
            cd, [this](const formats::map::SequenceSound& sound) { sounds.push_back(sound); });
    }
    std::string takeLog() {
        const std::string text = files.text(kLogFile);
        files.erase(kLogFile);
        return text;
    }
    Strings alerts() {
        Strings texts;
        for (const auto& box : machine.dialogs().boxes) texts.push_back(box.text);
        return texts;
    }
    static bool has(int id, std::string_view type = "WAVE") {
        return OMResMgrFindFile(id, type) != nullptr;
    }

    RResources resources;
    std::vector<formats::map::SequenceSound> sounds;
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
    EXPECT_EQ(sounds,
              (std::vector<formats::map::SequenceSound>{{2001, 3, 100000}, {-1, 0, 7}, {5, 6, 7}}));
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
    EXPECT_EQ(alerts(), texts);
    EXPECT_EQ(takeLog(),
              "ERROR: " + texts[0] + "\nERROR: " + texts[1] + "\nERROR: " + texts[2] + "\n");
    EXPECT_TRUE(failures.empty());

    const auto gone = resources.load(9, "WAVE", kOMIStreamCache);
    ASSERT_TRUE(gone) << "a map is believed";
    EXPECT_EQ(gone->fill(), 0U);
    EXPECT_EQ(alerts(), texts);
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
    std::string text = "M\n9\na.rsc\n";
    for (int i = 0; i < 5000; ++i) text += "nonsense\n";
    for (const char* name : {"RSC\\resource.map", "RSC\\audio.map"}) {
        files.put(name, text);
        start();
        const std::string log = takeLog();
        EXPECT_TRUE(log.ends_with("further problems of this map are not logged\n")) << log;
        EXPECT_EQ(std::ranges::count(log, '\n'), MapProblems::kMaxLogged + 1);
        resources.shutDown();
        files.put("RSC\\resource.map", "M\n0\na.rsc\nENDFILE\n");
    }
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
