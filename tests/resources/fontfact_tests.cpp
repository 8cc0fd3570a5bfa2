// The font factory: fonts shared by use counts, substitutions, and every line of its log.
#include "../ompp/nfntbuilder.h"
#include "../trinkets/windowfixture.h"

#include "omfont.h"
#include "omformat.h"
#include "omnfntfont.h"
#include "omttfont.h"
#include "resources/fontfact.h"

#include <optional>

using testing_support::MemoryStream;
using testing_support::OMAppTest;

namespace {

using Strings = std::vector<std::string>;

class FontFactoryTest : public OMAppTest {
  protected:
    FontFactoryTest() {
        fonts->setNFNTLocator([this](int id) -> std::unique_ptr<OMIStream> {
            asked.push_back(id);
            if (id > 90) return nullptr;
            if (id == 90) return std::make_unique<MemoryStream>(testing_support::toBytes("bad"));
            return std::make_unique<MemoryStream>(testing_support::smallFont().bytes());
        });
        machine.typefaces().families = {"Lumo", "Arial"};
    }
    std::string takeLog() {
        const std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }
    static std::string pointer(const OMFont& font) {
        return OMFormat("%p", static_cast<const void*>(&font));
    }

    std::optional<FontFactory> fonts{std::in_place};
    std::vector<int> asked;
};

TEST_F(FontFactoryTest, FontsAreMadeOnceAndGoWithTheirLastUse) {
    OMFont& font = fonts->useNFNT(12);
    EXPECT_EQ(&fonts->useNFNT(12), &font);
    EXPECT_EQ(asked, std::vector<int>{12});
    EXPECT_EQ(takeLog(), "Starting to use NFNT font 12\nStarting to use NFNT font 12\n");
    fonts->doneUsing(font);
    EXPECT_EQ(takeLog(), "Done using NFNT font 12\n");
    fonts->doneUsing(font);
    EXPECT_EQ(takeLog(), "Done using NFNT font 12, dumping\n");
    fonts->doneUsing(font); // no longer known; never looked at
    EXPECT_EQ(takeLog(), "");

    OMFont& face = fonts->useTrueType("Lumo", 3, 18);
    EXPECT_EQ(face.name(), "Lumo");
    EXPECT_TRUE(machine.typefaces().asked->bold && machine.typefaces().asked->italic);
    EXPECT_EQ(machine.typefaces().asked->size, 18);
    EXPECT_NE(&fonts->useTrueType("Lumo", 0, 18), &face) << "style and size are part of the key";
    fonts->useFont(face);
    fonts->doneUsing(face);
    fonts->doneUsing(face);
    EXPECT_EQ(takeLog(), "Starting to use TT font Lumo 3 18\nStarting to use TT font Lumo 0 18\n"
                         "Starting to use font " +
                             pointer(face) +
                             "\nDone using TT font Lumo 3 18\n"
                             "Done using TT font Lumo 3 18, dumping\n");
}

TEST_F(FontFactoryTest, EveryKindMayStandForEveryOther) {
    OMFont& own = fonts->useFont(std::make_unique<OMSysFont>());
    OMFont& other = fonts->useFont(std::make_unique<OMSysFont>());
    const auto expectLog = [&](const std::string& name, const std::string& kind,
                               const std::string& substitute) {
        EXPECT_EQ(takeLog(), "Starting to use " + name + "\n\tSubstituting " + substitute +
                                 " for font " + name + "\nStarting to use " + kind + substitute +
                                 "\n");
    };
    takeLog();
    fonts->addSubstitution(&own, 8);
    EXPECT_EQ(fonts->useFont(own).kind(), OMFont::Kind::NFNT);
    expectLog("font " + pointer(own), "", "NFNT font 8");
    fonts->addSubstitution(7, RTrueTypeKey{"Lumo", 1, 20});
    EXPECT_EQ(fonts->useNFNT(7).kind(), OMFont::Kind::Typeface);
    expectLog("NFNT font 7", "", "TT font Lumo 1 20");
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, 7);
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, &other); // replaces the one before
    EXPECT_EQ(&fonts->useTrueType("Arial", 0, 9), &other);
    expectLog("TT font Arial 0 9", "font ", pointer(other));
    // In a circle.
    fonts->addSubstitution(1, 2);
    fonts->addSubstitution(2, 3);
    fonts->addSubstitution(3, 1);
    EXPECT_EQ(fonts->useNFNT(1).kind(), OMFont::Kind::NFNT);
}

TEST_F(FontFactoryTest, TheGamesTableNamesAFontOfAFaceStyleAndSize) {
    fonts->addGameSubstitutions();
    (void)fonts->useTrueType("Geneva", 1, 10);
    EXPECT_EQ(asked, std::vector<int>{10});
    EXPECT_EQ(fonts->useTrueType("Arial", 1, 13).kind(), OMFont::Kind::Typeface);
}

TEST_F(FontFactoryTest, ASubstitutionGoesWithItsFont) {
    OMFont& own = fonts->useFont(std::make_unique<OMSysFont>());
    fonts->addSubstitution(7, &own);
    fonts->doneUsing(own);
    EXPECT_EQ(fonts->useNFNT(7).kind(), OMFont::Kind::NFNT);
}

TEST_F(FontFactoryTest, WhatCannotBeHadIsTheSystemFont) {
    OMFont& missing = fonts->useNFNT(91);
    EXPECT_EQ(missing.name(), "System font");
    EXPECT_EQ(takeLog(), "Starting to use NFNT font 91\n"
                         "Warning: FontFactory: Cannot load NFNT font with id 91\n"
                         "Starting to use font " +
                             pointer(missing) + "\n");
    EXPECT_EQ(fonts->useNFNT(90).name(), "System font") << "a damaged one";
    OMFont& face = fonts->useTrueType("Nowhere", 0, 12);
    EXPECT_EQ(face.name(), "System font");
    EXPECT_NE(takeLog().find("Warning: FontFactory: Cannot load TT font Nowhere\n"),
              std::string::npos);
    fonts->doneUsing(face);
    fonts->setNFNTLocator(nullptr);
    EXPECT_EQ(fonts->useNFNT(12).name(), "System font");
    EXPECT_NE(takeLog().find("Warning: NFNT URL is not installed in FontFactory\n"),
              std::string::npos);
    EXPECT_EQ(takeFailures(), Strings{"NFNT URL is not installed in FontFactory"});
}

TEST_F(FontFactoryTest, ToldWhatIsUsedAtTheEnd) {
    (void)fonts->useNFNT(12);
    (void)fonts->useTrueType("Lumo", 1, 20);
    fonts->useFont(std::make_unique<OMSysFont>());
    {
        const OMFontUse use(fonts->useNFNT(13));
        const OMFontUse copy = use;
        EXPECT_EQ(copy.font(), use.font());
    }
    takeLog();
    OMFontUse left(fonts->useNFNT(14));
    takeLog();
    fonts.reset();
    EXPECT_EQ(takeLog(), "Warning: FontFactory: NFNT font with ID 12 not released.\n"
                         "Warning: FontFactory: TrueType font Lumo 1 20 not released.\n"
                         "Warning: FontFactory: Unknown font not released.\n"
                         "Warning: FontFactory: NFNT font with ID 14 not released.\n");
    EXPECT_EQ(left.font(), nullptr) << "its source is gone";
}

} // namespace
