// Where resources are found, by maps and in folders, how they are loaded, and cursors among them.
#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omcursor.h"
#include "omformat.h"
#include "omtrinketwindow.h"
#include "resources/cursors.h"
#include "resources/mapproblems.h"
#include "resources/resources.h"

using testing_support::NEBuilder;

namespace {

using Strings = std::vector<std::string>;
using StartUp = RResources::StartUp;
using formats::map::SequenceSound;

constexpr const char* kMap = "RSC\\resource.map";

class ResourcesTest : public testing_support::OMAppTest {
  protected:
    using Files = std::initializer_list<std::pair<const char*, std::string>>;

    StartUp start() {
        return resources.start("D:",
                               [this](const SequenceSound& sound) { sounds.push_back(sound); });
    }
    /// A text of @ and a digit is a library with the sound of that number.
    void put(const Files& all) {
        for (const auto& [path, text] : all)
            if (text.starts_with('@'))
                files.put(path, NEBuilder().add("WAVE", text[1] - '0', path).build());
            else
                files.put(path, text);
    }
    /// A start with these files; which sounds from 1 to 9 there are then, and what is logged.
    void expectStart(const Files& all, const std::string& found, const std::string& log = "") {
        put(all);
        EXPECT_EQ(start(), StartUp::Ready);
        std::string ids;
        for (int id = 1; id <= 9; ++id)
            if (has(id)) ids += std::to_string(id);
        EXPECT_EQ(ids, found);
        EXPECT_EQ(takeLog(), log);
        resources.shutDown();
        EXPECT_FALSE(has(1));
        for (const auto& [path, text] : all) files.erase(path);
    }
    std::string takeLog() {
        const std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }
    static bool has(int id, std::string_view type = "WAVE") {
        return OMResMgrFindFile(id, type) != nullptr;
    }
    auto load(int id, const char* type = "WAVE") {
        return resources.load(id, type, kOMIStreamCache);
    }

    /// Cursors from 1 to below `end`, and a damaged one.
    void putLibrary(const char* name, int end) {
        testing_support::NEBuilder library;
        const auto cursor = testing_support::buildCursor({testing_support::CurPicture{}});
        for (int id = 1; id < end; ++id) library.add("CURSOR", id, cursor);
        files.put(name, library.add("CURSOR", 30000, "damaged").build());
    }
    static int idOf(int wanted) { return OMTrinketWindow::findCursor(wanted)->id(); }

    RResources resources;
    std::vector<SequenceSound> sounds;
};

TEST_F(ResourcesTest, FindsWhatMapsNameAndFoldersHold) {
    EXPECT_EQ(start(), StartUp::NoResourceFile);
    // Each map and each file once.
    expectStart(
        {{kMap, "ONE\n2\na.rsc\nWAVE 1\nENDFILE\n"},
         {"..\\RSC\\resource.map", "ONE\n2\nb.rsc\nWAVE 2\nENDFILE\n"},
         {"D:\\RSC\\resource.map", "one\n2\nA.RSC\nWAVE 3\nENDFILE\nc.rsc\nWAVE 4\nENDFILE"}},
        "14");
    // A map that cannot be used is as good as none; that of the same name on the CD is read.
    int line = 0;
    for (const char* text : {"", "CD\n", "CD\nmany\n"})
        expectStart(
            {{kMap, text},
             {"RSC\\b.rsc", "@2"},
             {"D:\\RSC\\resource.map", "CD\n1\na.rsc\nWAVE 1\nENDFILE\n"}},
            "12",
            OMFormat("ERROR: RSC\\resource.map line %d: must be the largest number of resources of "
                     "a file, the folder is scanned instead\nActivating DLL b.rsc temporarily\n",
                     line++));
    // The second of a name is asked for through the search path.
    expectStart({{"RSC\\First.RSC", "@1"},
                 {"RSC\\copy.rsc.bak", "@2"},
                 {"RSC\\readme.txt", "@3"},
                 {"RSC\\dir.rsc\\x", ""},
                 {"RSC\\a-name-too-long.rsc", "@4"},
                 {"..\\RSC\\first.rsc", "@5"},
                 {"..\\RSC\\second.rsc", "@6"},
                 {"D:\\RSC\\third.rsc", "@7"}},
                "1267",
                "ERROR: a-name-too-long.rsc is left out, as its name has more than 15 characters: "
                "rename it\n"
                "Activating DLL copy.rsc.bak temporarily\nActivating DLL first.rsc temporarily\n"
                "Activating DLL second.rsc temporarily\nActivating DLL third.rsc temporarily\n");
    std::string text = "M\n1\na.rsc\nWAVE 1\nENDFILE\n"; // of the largest size, and larger
    text.resize(std::size_t{4} << 20, ' ');
    expectStart({{kMap, text}, {"RSC\\a.rsc", "@2"}}, "1");
    expectStart({{kMap, text + " "}, {"RSC\\a.rsc", "@2"}}, "2",
                "ERROR: RSC\\resource.map is there and cannot be read: File too large. The folder "
                "is scanned instead\nActivating DLL a.rsc temporarily\n");
}

TEST_F(ResourcesTest, FilesOfAMapAreFoundWithoutOpeningThem) {
    put({{kMap, "MAIN\n3\nsound1.rsc\nWAVE 101\nWAVE 102\nASEQ 2001\nENDFILE\n"
                "palettes.rsc\nRRGB 5\nENDFILE\n"},
         {"D:\\RSC\\other.rsc", "@2"}});
    files.opened.clear();
    start();
    EXPECT_TRUE(has(101) && has(102) && has(2001, "ASEQ") && has(5, "RRGB"));
    EXPECT_EQ(std::ranges::count(files.opened, "sound1.rsc"), 0);
    takeLog();
    // Active for the framework, not for the game.
    resources.deactivateDLL("sound1.rsc");
    resources.activateDLL("SOUND1.RSC", false);
    resources.deactivateDLL("sound1.rsc");
    EXPECT_TRUE(has(101)) << "files of a map stay findable";
    resources.deactivateDLL("other.rsc");
    EXPECT_FALSE(has(2));
    EXPECT_EQ(takeLog(), "Activating DLL sound1.rsc temporarily\nDeactivating DLL sound1.rsc\n"
                         "Deactivating DLL other.rsc\n");
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourcesTest, ReadsTheAudioMapThroughTheSearchPath) {
    put({{kMap, "M\n0\na.rsc\nENDFILE"},
         {"audio.map", "AO: 9\tSequence: 9\tSound: 9\n"}, // in no directory of the path
         {"..\\RSC\\Audio.map", "  AO: 2001\tSequence: 3\tSound: 100000\r\n"
                                "AO:-1 Sequence:0  Sound:7 trailing\r\n\r\nAO: 1 Sound: 2\r\n"
                                "AO: 70000 Sequence: 1 Sound: 1\r\nAO: 5 Sequence: 6 Sound: 7"}});
    start();
    EXPECT_EQ(sounds, (std::vector<SequenceSound>{{2001, 3, 100000}, {-1, 0, 7}, {5, 6, 7}}));
    EXPECT_EQ(takeLog(),
              "ERROR: ..\\RSC\\audio.map line 4: not of the form AO: n  Sequence: n  Sound: n\n"
              "ERROR: ..\\RSC\\audio.map line 5: not of the form AO: n  Sequence: n  Sound: n\n");
}

TEST_F(ResourcesTest, LoadsResourcesAndReportsTheMissing) {
    put({{"RSC\\c.rsc", "@2"},
         {"..\\RSC\\resource.map", "M\n1\ngone.rsc\nWAVE 9\nENDFILE\n"},
         {"D:\\RSC\\resource.map", "CD\n1\na.rsc\nWAVE 1\nWAVE 3\nENDFILE\n"},
         {"D:\\RSC\\a.rsc", "@1"}});
    files.put("RSC\\a.rsc", NEBuilder().add("WAVE", 1, "local").add("WAVE", 3, "too").build());
    start();
    takeLog();
    files.opened.clear();
    machine.clock().now = 1234;
    EXPECT_EQ(testing_support::toText(load(1)->readAll()).substr(0, 5), "local")
        << "nearer than the CD's";
    load(3)->fill();
    EXPECT_EQ(takeLog(), "Loading WAVE resource 1 from file a.rsc(CD), current ms: 1234\n"
                         "Loading WAVE resource 3 from file a.rsc(CD), current ms: 1234\n");
    EXPECT_LE(std::ranges::count(files.opened, "RSC\\a.rsc"), 1) << "once for loads in a row";

    EXPECT_FALSE(load(0) || load(-3, "ASEQ") || load(8));
    const auto gone = load(9);
    ASSERT_TRUE(gone) << "a map is believed";
    EXPECT_EQ(gone->fill(), 0U);
    Strings texts;
    std::string logged;
    for (const auto& box : machine.dialogs().boxes) {
        texts.push_back(box.text);
        logged += "ERROR: " + box.text + "\n";
    }
    EXPECT_EQ(texts, (Strings{"Bad WAVE resource id: 0", "Bad ASEQ resource id: -3",
                              "WAVE resource 8 not found."}));
    const std::string log = takeLog();
    EXPECT_TRUE(log.starts_with(logged)) << log;
    EXPECT_NE(log.find("WAVE resource 9 is empty, or not in gone.rsc"), std::string::npos);
    EXPECT_EQ(failures,
              Strings{"OMIStreamDLL16::OMIStreamDLL16 - resource (id 9 type WAVE) not found "
                      "in gone.rsc!"});
}

TEST_F(ResourcesTest, TellsOfEqualIdsAndUsesTheFirst) {
    put({{kMap, "M\n2\na.rsc\nWAVE 1\nWAVE 1\nENDFILE\nb.rsc\nWAVE 2\nENDFILE\n"
                "c.rsc\nWAVE 2\nENDFILE\nd.rsc\nWAVE 3\nASEQ 4\nENDFILE\nD.RSC\nWAVE 9\nENDFILE\n"},
         {"D:\\RSC\\resource.map", "N\n2\ne.rsc\nWAVE 3\nWAVE 4\nENDFILE\n"}});
    start();
    // New files stand in front, and the sort by id moves equal ones about.
    const char* expected[] = {"a.rsc", "c.rsc", "e.rsc", "e.rsc"};
    for (int id = 1; id <= 4; ++id) {
        const OMResMgrFile* file = OMResMgrFindFile(id, "WAVE");
        EXPECT_EQ(file ? file->name() : "none", expected[id - 1]) << id;
        const std::string told =
            "OMResMgrFindFile - active, duplicate id " + std::to_string(id) + " found!";
        EXPECT_EQ(takeFailures(), id < 4 ? Strings{told} : Strings{}) << id;
    }
    EXPECT_FALSE(has(9)) << "a file of that name was named before";
}

TEST_F(ResourcesTest, LogsOnlyTheFirstProblemsOfAMap) {
    std::string text = "M\n9\na.rsc\n";
    for (int i = 0; i < 5000; ++i) text += "nonsense\n";
    for (const char* name : {kMap, "RSC\\audio.map"}) {
        put({{kMap, "M\n0\na.rsc\nENDFILE\n"}, {name, text}});
        start();
        const std::string log = takeLog();
        EXPECT_TRUE(log.ends_with("further problems of this map are not logged\n")) << log;
        EXPECT_EQ(std::ranges::count(log, '\n'), MapProblems::kMaxLogged + 1);
        resources.shutDown();
    }
}

TEST_F(ResourcesTest, CursorsOpenTheirLibraryWhenACursorIsWantedAndReportsWhatIsMissingOnce) {
    putLibrary("cursors.rsc", 3);
    {
        const RCursors cursors;
        EXPECT_EQ(idOf(kOMCursorCross), kOMCursorCross);
        EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr);
        for (int i = 0; i < 2; ++i)
            for (const int id : {1, 2, 3, 0, 30000, -7})
                EXPECT_EQ(idOf(id), id == 1 || id == 2 ? id : kOMCursorArrow);
        EXPECT_EQ(OMTrinketWindow::findCursor(1), OMTrinketWindow::findCursor(1));
        EXPECT_EQ(takeLog(), "ERROR: Cursor 3 is in no active library: the arrow is shown\n"
                             "ERROR: Cursor 0 is in no active library: the arrow is shown\n"
                             "ERROR: Cursor 30000 is damaged, pack it anew: the arrow is shown\n"
                             "ERROR: Cursor -7 is not one of -1 to -4: the arrow is shown\n");
    }
    EXPECT_FALSE(OMTrinketWindow::hasCursorLocator());
    EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr) << "the library is let go";
}

TEST_F(ResourcesTest, WithoutALibraryThereAreCursorsOfOtherFilesAndThePlatforms) {
    const RCursors cursors;
    for (const int id : {1, 2}) EXPECT_EQ(idOf(id), kOMCursorArrow);
    EXPECT_EQ(takeLog(), "Warning: cursors.rsc is not there, arrows are shown: pack one\n"
                         "ERROR: Cursor 1 is in no active library: the arrow is shown\n"
                         "ERROR: Cursor 2 is in no active library: the arrow is shown\n");
    putLibrary("scene.rsc", 2);
    OMResMgrUseDLL16("scene.rsc", true);
    EXPECT_EQ(idOf(1), 1) << "it may come later";
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourcesTest, KeepsABoundedNumberOfCursors) {
    constexpr int kMany = 2 * static_cast<int>(RCursors::kMostKept);
    putLibrary("cursors.rsc", kMany);
    const RCursors cursors;
    const auto shown = OMTrinketWindow::findCursor(1);
    const std::weak_ptr<const OMCursor> unused = OMTrinketWindow::findCursor(2);
    for (int id = 3; id < kMany; ++id) ASSERT_EQ(idOf(id), id);
    EXPECT_TRUE(unused.expired());
    EXPECT_EQ(OMTrinketWindow::findCursor(1), shown) << "is not made twice";
    EXPECT_EQ(idOf(kOMCursorWait), kOMCursorWait);
}

} // namespace
