// The font factory: fonts shared by use counts, substitutions, and every line of its log.
#include "../ompp/nfntbuilder.h"
#include "../trinkets/windowfixture.h"

#include "omfont.h"
#include "omformat.h"
#include "resources/fontfact.h"

using testing_support::MemoryStream;
using FontKind = OMFont::Kind;

namespace {

class FontFactoryTest : public testing_support::OMAppTest {
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
    /// The log since the last call, in one line and with signs for what is always the same.
    std::string log() {
        std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        const std::pair<std::string_view, std::string_view> signs[] = {{"Starting to use ", "+"},
                                                                       {"Done using ", "-"},
                                                                       {", dumping\n", "!\n"},
                                                                       {"\tSubstituting ", ""},
                                                                       {" for font ", ">"},
                                                                       {"Warning: ", "W:"},
                                                                       {"\n", " / "}};
        for (const auto& [from, to] : signs)
            for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;)
                text.replace(at, from.size(), to);
        return text;
    }
    static std::string pointer(const OMFont& font) {
        return OMFormat("%p", static_cast<const void*>(&font));
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
    EXPECT_EQ(log(), "+NFNT font 12 / +NFNT font 12 / -NFNT font 12 / -NFNT font 12! / ");

    OMFont& face = fonts->useTrueType("Lumo", 3, 18);
    EXPECT_EQ(face.name(), "Lumo");
    EXPECT_TRUE(machine.typefaces().asked->bold && machine.typefaces().asked->italic);
    EXPECT_EQ(machine.typefaces().asked->size, 18);
    EXPECT_NE(&fonts->useTrueType("Lumo", 0, 18), &face) << "style and size are part of the key";
    fonts->useFont(face);
    for (int i = 0; i < 2; ++i) fonts->doneUsing(face);
    EXPECT_EQ(log(), "+TT font Lumo 3 18 / +TT font Lumo 0 18 / +font " + pointer(face) +
                         " / -TT font Lumo 3 18 / -TT font Lumo 3 18! / ");
}

TEST_F(FontFactoryTest, EveryKindMayStandForEveryOther) {
    OMFont& own = system();
    OMFont& other = system();
    log();
    fonts->addSubstitution(&own, 8);
    EXPECT_EQ(fonts->useFont(own).kind(), FontKind::NFNT);
    EXPECT_EQ(log(), OMFormat("+font %s / NFNT font 8>font %s / +NFNT font 8 / ",
                              pointer(own).c_str(), pointer(own).c_str()));
    fonts->addSubstitution(7, RTrueTypeKey{"Lumo", 1, 20});
    EXPECT_EQ(fonts->useNFNT(7).kind(), FontKind::Typeface);
    EXPECT_EQ(log(), "+NFNT font 7 / TT font Lumo 1 20>NFNT font 7 / +TT font Lumo 1 20 / ");
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, 7);
    fonts->addSubstitution(RTrueTypeKey{"Arial", 0, 9}, &other); // replaces the one before
    EXPECT_EQ(&fonts->useTrueType("Arial", 0, 9), &other);
    EXPECT_EQ(log(), OMFormat("+TT font Arial 0 9 / %s>TT font Arial 0 9 / +font %s / ",
                              pointer(other).c_str(), pointer(other).c_str()));
    fonts->addSubstitution(7, &own); // goes with its font
    fonts->doneUsing(own);
    EXPECT_EQ(fonts->useNFNT(7).kind(), FontKind::NFNT);
    for (int i = 1; i <= 3; ++i) fonts->addSubstitution(i, i % 3 + 1); // in a circle
    EXPECT_EQ(fonts->useNFNT(1).kind(), FontKind::NFNT);
    asked.clear();
    fonts->addGameSubstitutions();
    (void)fonts->useTrueType("Geneva", 1, 10);
    EXPECT_EQ(asked, std::vector<int>{10});
    EXPECT_EQ(fonts->useTrueType("Arial", 1, 13).kind(), FontKind::Typeface);
}

TEST_F(FontFactoryTest, WhatCannotBeHadIsTheSystemFont) {
    OMFont& missing = fonts->useNFNT(91);
    EXPECT_EQ(missing.name(), "System font");
    EXPECT_EQ(log(), "+NFNT font 91 / W:FontFactory: Cannot load NFNT font with id 91 / +font " +
                         pointer(missing) + " / ");
    EXPECT_EQ(fonts->useNFNT(90).name(), "System font") << "a damaged one";
    OMFont& face = fonts->useTrueType("Nowhere", 0, 12);
    EXPECT_EQ(face.name(), "System font");
    EXPECT_NE(log().find("W:FontFactory: Cannot load TT font Nowhere /"), std::string::npos);
    fonts->doneUsing(face);
    fonts->setNFNTLocator(nullptr);
    EXPECT_EQ(fonts->useNFNT(12).name(), "System font");
    EXPECT_NE(log().find("W:NFNT URL is not installed in FontFactory /"), std::string::npos);
    EXPECT_EQ(takeFailures(), Strings{"NFNT URL is not installed in FontFactory"});
}

TEST_F(FontFactoryTest, ToldWhatIsUsedAtTheEnd) {
    (void)fonts->useNFNT(12);
    (void)fonts->useTrueType("Lumo", 1, 20);
    system();
    {
        const OMFontUse use(fonts->useNFNT(13));
        const OMFontUse copy = use;
        EXPECT_EQ(copy.font(), use.font());
    }
    OMFontUse left(fonts->useNFNT(14));
    log();
    fonts.reset();
    EXPECT_EQ(log(), "W:FontFactory: NFNT font with ID 12 not released. / "
                     "W:FontFactory: TrueType font Lumo 1 20 not released. / "
                     "W:FontFactory: Unknown font not released. / "
                     "W:FontFactory: NFNT font with ID 14 not released. / ");
    EXPECT_EQ(left.font(), nullptr) << "its source is gone";
}

} // namespace
