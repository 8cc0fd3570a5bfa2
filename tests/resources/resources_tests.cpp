// Where resources are found, by maps and in folders, how they are loaded, cursors among them, and
// fonts shared by use counts and standing for each other.
#include "../trinkets/windowfixture.h"
#include "nebuilder.h"

#include "formats/font/nfnt.h"
#include "formats/picture/cursor.h"
#include "omcursor.h"
#include "omfont.h"
#include "omformat.h"
#include "omtrinketwindow.h"
#include "resources/cursors.h"
#include "resources/fontfact.h"
#include "resources/resources.h"

using testing_support::MemoryStream;
using testing_support::NEBuilder;
using FontKind = OMFont::Kind;

namespace {

using StartUp = RResources::StartUp;
using formats::map::SequenceSound;

constexpr const char* kMap = "RSC\\resource.map";

class ResourcesTest : public testing_support::OMAppTest {
  protected:
    using Files = std::initializer_list<std::pair<const char*, std::string>>;

    StartUp start() {
        return resources.start("D:", [](const SequenceSound&) {});
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
    static bool has(int id, std::string_view type = "WAVE") {
        return OMResMgrFindFile(id, type) != nullptr;
    }
    auto load(int id, const char* type = "WAVE") {
        return resources.load(id, type, kOMIStreamCache);
    }

    RResources resources;
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
    EXPECT_LE(std::ranges::count(files.opened, "RSC\\a.rsc"), 1) << "once for loads in a row";
    EXPECT_FALSE(load(0) || load(-3, "ASEQ") || load(8));
    EXPECT_EQ(takeLog(), "Loading WAVE resource 1 from file a.rsc(CD), current ms: 1234\n"
                         "Loading WAVE resource 3 from file a.rsc(CD), current ms: 1234\n"
                         "ERROR: Bad WAVE resource id: 0\nERROR: Bad ASEQ resource id: -3\n"
                         "ERROR: WAVE resource 8 not found.\n");
    ASSERT_EQ(machine.dialogs().boxes.size(), 3u);
    EXPECT_EQ(machine.dialogs().boxes[2], "WAVE resource 8 not found.");
    EXPECT_EQ(load(9)->fill(), 0U) << "a map is believed";
    EXPECT_NE(takeLog().find("WAVE resource 9 is empty, or not in gone.rsc"), std::string::npos);
    EXPECT_EQ(takeFailures().size(), 1u);
}

TEST_F(ResourcesTest, CursorsAreOfTheirLibraryWhichIsOpenedForThem) {
    constexpr int kMany = 2 * static_cast<int>(RCursors::kMostKept);
    // Cursors from 1 to below `end`, and a damaged one.
    const auto putLibrary = [&](const char* name, int end) {
        NEBuilder library;
        const auto cursor = formats::picture::writeCursor({1, 1, {}, {0xFF00FF00}});
        for (int id = 1; id < end; ++id) library.add("CURSOR", id, cursor);
        files.put(name, library.add("CURSOR", 30000, "damaged").build());
    };
    const auto idOf = [](int wanted) { return OMTrinketWindow::findCursor(wanted)->id(); };
    {
        const RCursors cursors;
        for (int i = 0; i < 2; ++i) EXPECT_EQ(idOf(1), kOMCursorArrow);
        EXPECT_EQ(takeLog(), "Warning: cursors.rsc is not there, arrows are shown: pack one\n"
                             "ERROR: Cursor 1 is in no active library: the arrow is shown\n");
    }
    EXPECT_FALSE(OMTrinketWindow::hasCursorLocator());
    putLibrary("cursors.rsc", kMany);
    {
        const RCursors cursors;
        EXPECT_EQ(idOf(kOMCursorCross), kOMCursorCross);
        EXPECT_FALSE(has(1, "CURSOR")) << "until one is wanted";
        for (int i = 0; i < 2; ++i)
            for (const int id : {1, 2, kMany, 0, 30000, -7})
                EXPECT_EQ(idOf(id), id == 1 || id == 2 ? id : kOMCursorArrow);
        EXPECT_EQ(
            takeLog(),
            OMFormat("ERROR: Cursor %d is in no active library: the arrow is shown\n", kMany) +
                "ERROR: Cursor 0 is in no active library: the arrow is shown\n"
                "ERROR: Cursor 30000 is damaged, pack it anew: the arrow is shown\n"
                "ERROR: Cursor -7 is not one of -1 to -4: the arrow is shown\n");
        const auto shown = OMTrinketWindow::findCursor(1);
        const std::weak_ptr<const OMCursor> unused = OMTrinketWindow::findCursor(2);
        for (int id = 3; id < kMany; ++id) ASSERT_EQ(idOf(id), id);
        EXPECT_TRUE(unused.expired()) << "they are bounded";
        EXPECT_EQ(OMTrinketWindow::findCursor(1), shown) << "is not made twice";
        EXPECT_EQ(idOf(kOMCursorWait), kOMCursorWait);
    }
    EXPECT_FALSE(has(1, "CURSOR")) << "the library is let go";
}

class FontFactoryTest : public testing_support::OMAppTest {
  protected:
    FontFactoryTest() {
        fonts->setNFNTLocator([this](int id) -> std::unique_ptr<OMIStream> {
            asked.push_back(id);
            if (id > 90) return nullptr;
            const formats::font::Font font{.lastChar = 99, .ascent = 3, .glyphs = {{'A', {4}}}};
            return std::make_unique<MemoryStream>(testing_support::toBytes(
                id == 90 ? formats::Bytes{1} : formats::font::write(font).value));
        });
        machine.typefaces().families = {"Lumo", "Arial"};
    }
    OMFont& system() { return fonts->useFont(std::make_unique<OMSysFont>()); }

    std::optional<FontFactory> fonts{std::in_place};
    std::vector<int> asked;
};

TEST_F(FontFactoryTest, FontsAreMadeOnceAndGoWithTheirLastUse) {
    OMFont& font = fonts->useNFNT(12);
    EXPECT_EQ(&fonts->useNFNT(12), &font);
    EXPECT_EQ(asked, std::vector<int>{12});
    for (int i = 0; i < 3; ++i) fonts->doneUsing(font); // no longer known at last, never looked at
    EXPECT_EQ(takeLog(), "Starting to use NFNT font 12\nStarting to use NFNT font 12\n"
                         "Done using NFNT font 12\nDone using NFNT font 12, dumping\n");
    OMFont& bold = fonts->useTrueType("Lumo", 3, 18);
    const auto& face = *machine.typefaces().asked;
    EXPECT_TRUE(bold.name() == "Lumo" && face.bold && face.italic && face.size == 18);
    EXPECT_NE(&fonts->useTrueType("Lumo", 0, 18), &bold) << "style and size are part of the key";
    fonts->useFont(bold);
    for (int i = 0; i < 2; ++i) fonts->doneUsing(bold);
    const OMFontUse use(fonts->useNFNT(14));
    const OMFontUse copy = use;
    system();
    takeLog();
    fonts.reset();
    EXPECT_EQ(takeLog(), "Warning: FontFactory: TrueType font Lumo 0 18 not released.\n"
                         "Warning: FontFactory: NFNT font with ID 14 not released.\n"
                         "Warning: FontFactory: Unknown font not released.\n");
    EXPECT_TRUE(!use.font() && !copy.font()) << "their source is gone";
}

TEST_F(FontFactoryTest, EveryKindMayStandForEveryOther) {
    OMFont &own = system(), &other = system();
    fonts->addSubstitution(&own, 8);
    EXPECT_EQ(fonts->useFont(own).kind(), FontKind::NFNT);
    fonts->addSubstitution(7, RTrueTypeKey{"Lumo", 1, 20});
    takeLog();
    EXPECT_EQ(fonts->useNFNT(7).kind(), FontKind::Typeface);
    EXPECT_EQ(takeLog(), "Starting to use NFNT font 7\n\tSubstituting TT font Lumo 1 20 for font "
                         "NFNT font 7\nStarting to use TT font Lumo 1 20\n");
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, 7);
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, &other); // replaces the one before
    EXPECT_EQ(&fonts->useTrueType("Arial", 0, 9), &other);
    fonts->addSubstitution(7, &own); // goes with its font
    fonts->doneUsing(own);
    EXPECT_EQ(fonts->useNFNT(7).kind(), FontKind::NFNT);
    for (int i = 1; i <= 3; ++i) fonts->addSubstitution(i, i % 3 + 1); // in a circle
    EXPECT_EQ(fonts->useNFNT(1).kind(), FontKind::NFNT);
    fonts->addGameSubstitutions();
    EXPECT_EQ(fonts->useTrueType("Geneva", 1, 10).kind(), FontKind::NFNT);
    EXPECT_EQ(asked.back(), 10);
    EXPECT_EQ(fonts->useTrueType("Arial", 1, 13).kind(), FontKind::Typeface);
}

TEST_F(FontFactoryTest, WhatCannotBeHadIsTheSystemFont) {
    for (OMFont* font : {&fonts->useNFNT(91), &fonts->useNFNT(90), &fonts->useTrueType("No", 0, 9)})
        EXPECT_EQ(font->name(), "System font");
    const std::string log = takeLog();
    for (const std::string told : {"NFNT font with id 91", "NFNT font with id 90", "TT font No"})
        EXPECT_NE(log.find("Warning: FontFactory: Cannot load " + told + "\n"), log.npos);
    fonts->setNFNTLocator(nullptr);
    EXPECT_EQ(fonts->useNFNT(12).name(), "System font");
    EXPECT_EQ(takeFailures(), Strings{"NFNT URL is not installed in FontFactory"});
}

} // namespace
