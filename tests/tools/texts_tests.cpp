// zorbet-mps texts: which texts of a game it takes, what it makes of catalogues, what it tells.
#include "tooltest.h"

#include "formats/texts/catalogue.h"

namespace {

using namespace testfiles;
using formats::texts::Catalogue;
using formats::texts::Entry;

class MpsTexts : public ToolTest {
  protected:
    int texts(const Files& options) { return mps(join({"texts", folder_.path()}, options)); }
    /// The texts that it takes, each with where it is and what it is for.
    std::string taken() {
        EXPECT_EQ(texts({}), 0) << errors_;
        const auto read = formats::texts::readCatalogue(out_);
        EXPECT_TRUE(read.ok()) << read.refusal;
        std::string all;
        for (const Entry& entry : read.value) {
            if (entry.text.empty()) continue;
            for (const std::string& place : entry.places) all += place + ' ';
            all += entry.text + " (" + replacedAll(entry.remark, "\n", "; ") + ")\n";
        }
        return all;
    }
    Catalogue catalogue(const std::string& language) {
        return formats::texts::readCatalogue(read("languages/" + language + ".po")).value;
    }
};

TEST_F(MpsTexts, TakesWhatIsShownAndNothingThatTheGameWorksWith) {
    folder_.make("Startup.mps", "include scripts/sign.mps\n"
                                "name.1=\"Um barco\"\n"
                                "kind=\"boat\"\n"
                                "call tell \"Ol\xE1, \"+kind+'!'\n"
                                "call tell name.1\n"
                                "call tell \"Diz \"+\"adeus\"\n"
                                "MessageBox 'Bem-vindo'\n"
                                "LogMessage \"the game begins\"\n"
                                "if kind=\"boat\"\n"
                                "relay \"scripts/second.mps\"\n");
    folder_.make("scripts/sign.mps", "sign=RText 0 0 -1 -1\n"
                                     "procedure tell said\n"
                                     "[\n"
                                     "set sign text said\n"
                                     "]\n");
    folder_.make("scripts/second.mps", "sign=RText 0 0 -1 -1\n"
                                       "colours=[\"Azul\" \"Verde\"\n"
                                       "set sign text \"Azul\"\n"
                                       "set sign text \"Um barco\"\n"
                                       "set sign tag \"Etiqueta\"\n"
                                       "set sign text \"2 + 3\"\n"
                                       "; texts take\n"
                                       "set sign userData \"Mar\"\n"
                                       "set sign userData \"Rio\"\n"
                                       "; texts skip\n"
                                       "set sign text \"Zorbet\"\n"
                                       "letter=\"Ele\"\n"
                                       "; texts skip\n"
                                       "set sign text letter\n"
                                       "shown=\"Sol\"\n"
                                       "set sign text shown\n"
                                       "first=shown|1|1\n"
                                       "talk=RQueue 1\n"
                                       "play talk add PropertyAction \"sign\" \"text\" \"Lua\"\n"
                                       "play talk add PropertyAction \"sign\" \"tag\" \"Nuvem\"\n"
                                       "puzzle=RPuzzle 0\n"
                                       "play puzzle setAnswer 1 \"fish\" \"Um peixe\"\n"
                                       "play puzzle setPuzzleText 1 1 0 0 5 \"Conta!\"\n"
                                       "box=RWorldPort 0\n"
                                       "play box addStringProperty text\n"
                                       "set box text \"Guardado\"\n");
    folder_.make("tests/player.mps", "x=RText 0 0 -1 -1\nset x text \"Teste\"\n");
    EXPECT_EQ(taken(),
              "Startup.mps:2 scripts/second.mps:4 Um barco (text of sign)\n"
              "Startup.mps:4 Ol\xC3\xA1,  (joined: \"Ol\xC3\xA1, \"+kind+'!'; text of sign)\n"
              "Startup.mps:6 Diz  (joined: \"Diz \"+\"adeus\"; text of sign)\n"
              "Startup.mps:6 adeus (joined: \"Diz \"+\"adeus\"; text of sign)\n"
              "Startup.mps:7 Bem-vindo (MessageBox)\n"
              "scripts/second.mps:8 Mar ()\n"
              "scripts/second.mps:19 Lua (text of sign)\n"
              "scripts/second.mps:22 Um peixe (setAnswer of puzzle)\n"
              "scripts/second.mps:23 Conta! (setPuzzleText of puzzle)\n");
    EXPECT_THAT(errors_, HasSubstr("scripts/second.mps:3: \"Azul\" is left out: it is shown, but "
                                   "also a word of a list (scripts/second.mps); when"));
    EXPECT_THAT(errors_,
                HasSubstr("second.mps:15: \"Sol\" is left out: it is shown, but also cut; "));
    folder_.make("scripts/second.mps", "if x [\n");
    EXPECT_EQ(texts({"--write", "en"}), 1);
    EXPECT_EQ(out_, "");
    EXPECT_FALSE(std::filesystem::exists(at("languages")));
}

TEST_F(MpsTexts, RenewsCataloguesAndKeepsWhatTranslatorsWrote) {
    const std::string begin = "sign=RText 0 0 -1 -1\n";
    folder_.make("game.ini", "title=Pond\nlanguages=pt,en\n");
    folder_.make("Startup.mps", begin + "set sign text \"Bom dia\"\n"
                                        "set sign text \"Onde mora o peixe?\"\n"
                                        "set sign text \"Adeus\"\n"
                                        "say \"Eco\"\n");
    EXPECT_EQ(texts({"--write", "en"}), 0) << errors_;
    EXPECT_EQ(out_, "");
    EXPECT_THAT(errors_, HasSubstr("en.po: 3 new, 0 of them fuzzy; 0 not used any more\n"));
    Catalogue en = catalogue("en");
    ASSERT_EQ(en.size(), 4U);
    EXPECT_THAT(en[0].translation, HasSubstr("Language: en\nMIME-Version: 1.0\nContent-Type: "
                                             "text/plain; charset=UTF-8\n"));
    en[0].notes = "ours";
    en[1].translation = "Good morning";
    en[1].notes = "warmly";
    en[2].translation = "Where does the fish live?";
    en[3].translation = "Bye";
    en.push_back({"", "Eco", "Echo", {}, {}});
    en.push_back({"Startup.mps", "Bom dia", "Morning", {}, {}});
    folder_.make("languages/en.po", formats::texts::writeCatalogue(en));
    folder_.make("Startup.mps", begin + "set sign text \"Onde mora o peixe azul?\"\n"
                                        "say \"Eco\"\n"
                                        "set sign text \"Bom dia\"\n"
                                        "set sign text \"Novo\"\n");
    EXPECT_EQ(texts({"--write", "en", "fr"}), 0) << errors_;
    EXPECT_THAT(errors_, HasSubstr("en.po: 2 new, 1 of them fuzzy; 1 not used any more\n"));
    std::string all;
    for (const Entry& entry : catalogue("en"))
        all += entry.context + '|' + entry.text + '|' +
               (entry.text.empty() ? "" : entry.translation) + '|' + entry.notes + '|' +
               (entry.isFuzzy ? "fuzzy" : "") + (entry.isObsolete ? "obsolete" : "") + '\n';
    EXPECT_EQ(all, "|||ours|\n"
                   "|Onde mora o peixe azul?|Where does the fish live?||fuzzy\n"
                   "|Eco|Echo||\n"
                   "|Bom dia|Good morning|warmly|\n"
                   "Startup.mps|Bom dia|Morning||\n"
                   "|Novo|||\n"
                   "|Adeus|Bye||obsolete\n");
    EXPECT_EQ(catalogue("fr").size(), 4U);
    const std::string once = read("languages/en.po");
    EXPECT_EQ(texts({"--write", "en"}), 0);
    EXPECT_EQ(read("languages/en.po"), once);
    // What was said before comes back when the text does.
    folder_.make("Startup.mps", begin + "set sign text \"Adeus\"\n");
    EXPECT_EQ(texts({"--write", "en"}), 0);
    EXPECT_EQ(catalogue("en")[1].translation, "Bye");
    EXPECT_TRUE(catalogue("en")[1].isTranslated());

    folder_.make("languages/en.po", "msgid \"x\"\n");
    EXPECT_EQ(texts({"--write", "fr", "en"}), 1);
    EXPECT_EQ(read("languages/en.po"), "msgid \"x\"\n");
    for (const char* wrong : {"pt", "../en"}) EXPECT_EQ(texts({"--write", wrong}), 2) << wrong;
}

TEST_F(MpsTexts, TellsWhatCataloguesLack) {
    folder_.make("game.ini", "languages=pt,en,de\n");
    folder_.make("Startup.mps", "sign=RText 0 0 -1 -1\n"
                                "set sign text \"abc\"\n"
                                "set sign text \"cab\"+sign\n"
                                "set sign text \"ba \"\n"
                                "set sign text \"bac\"\n"
                                "set sign text \"acb\"\n");
    folder_.make("languages/en.po", "msgid \"abc\"\nmsgstr \"a\xC5\xA1\"\n"
                                    "msgid \"cab\"\nmsgstr \"abd\"\n"
                                    "msgid \"ba \"\nmsgstr \"ab\"\n"
                                    "#, fuzzy\nmsgid \"bac\"\nmsgstr \"b\"\n"
                                    "msgid \"gone\"\nmsgstr \"a\"\n");
    folder_.make("languages/fr.po", "msgid\n");
    folder_.make("languages/pt.po", "");
    rsc::BitmapFont letters{2, 1, 0, {{'a', kHook}, {'b', kHook}, {'c', kHook}}, {}};
    folder_.make("letters.bdf", rsc::writeBdf(letters, "letters"));
    letters.glyphs['d'] = kHook;
    folder_.make("more.bdf", rsc::writeBdf(letters, "more"));
    const std::string manifest = "library game.rsc\nfont 20 letters.bdf\n";
    folder_.make("resources.manifest", manifest);
    const std::string font = "languages/en.po:3: \"cab\" could be shown in it, but font 20 has no "
                             "\"d\" of the translation\n";
    const std::string problems =
        "game.ini: names the language de, but there is no languages/de.po; zorbet-mps texts "
        "--write de makes it\n"
        "languages/fr.po: game.ini does not name this language; write languages=pt,fr\n"
        "languages/pt.po: is never read, as the scripts themselves are in the first language of "
        "game.ini\n"
        "languages/en.po:1: \"abc\" has letters in its translation that the game, whose letters "
        "are those of Latin-1, has not: \"\xC5\xA1\"\n"
        "FONT"
        "languages/en.po:5: \"ba \" and its translation do not both end with a blank\n"
        "languages/en.po:8: \"bac\" is fuzzy: look at its translation, and take the mark away\n"
        "languages/en.po:10: \"gone\" is in no script any more; zorbet-mps texts --write takes it "
        "out\n"
        "languages/en.po: lacks \"acb\" of Startup.mps:6; zorbet-mps texts --write puts it in\n";
    EXPECT_EQ(texts({"--check"}), 1);
    EXPECT_THAT(out_, HasSubstr(replaced(problems, "FONT", font)));
    EXPECT_THAT(out_, HasSubstr("languages/fr.po:1: "));
    EXPECT_THAT(out_, HasSubstr("languages/en.po: 3 of 5 texts are translated, 1 not used\n"));
    // Another font of the game may be the one that shows it.
    folder_.make("resources.manifest", manifest + "font 28 more.bdf\n");
    EXPECT_EQ(texts({"--check"}), 1);
    EXPECT_THAT(out_, HasSubstr(replaced(problems, "FONT", "")));
    EXPECT_THAT(out_, HasSubstr(font));
}

} // namespace
