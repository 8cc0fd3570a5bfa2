// What a puzzle is filled with: entries of its data set, by number and by chance.
#include "puzzlefixture.h"

#include "ompp/nfntbuilder.h"

#include "omfontsource.h"
#include "omnfntfont.h"
#include "ranimation.h"
#include "rtext.h"

#include <gmock/gmock.h>

using namespace testing_support;
using platform::Rect;
using testing::HasSubstr;

namespace {

/// Gives one font for all, three pixels a character, and notes what was asked for.
struct AnyFont final : OMFontSource {
    AnyFont() {
        NFNTFont description;
        description.ascent = 4;
        for (int code = ' '; code < 127; ++code) description.characters[code] = {{}, 0, 3};
        MemoryStream stream(description.bytes());
        font = std::make_unique<OMNFNTFont>(stream);
    }
    OMFont& useNFNT(int id) override { return use(std::to_string(id)); }
    OMFont& useTrueType(std::string_view face, int style, int size) override {
        return use(std::string(face) + " " + std::to_string(size) + " " + std::to_string(style));
    }
    OMFont& useFont(OMFont& used) override {
        ++uses;
        return used;
    }
    void doneUsing(OMFont&) override { --uses; }

    std::unique_ptr<OMFont> font;
    std::vector<std::string> asked;
    int uses = 0;

  private:
    OMFont& use(std::string what) {
        asked.push_back(std::move(what));
        return useFont(*font);
    }
};

class DataSetTest : public PuzzleTest {
  protected:
    DataSetTest() { make("p", "RPuzzle", {"0"}); }

    void addAnswers(int count) {
        for (int i = 1; i <= count; ++i) {
            const std::string name = "a" + std::to_string(i);
            make(name, "RGraphicAnswer", {"-1", "0", "0"});
            play("p", "addAnswer", {name});
        }
    }
    static std::string attributesOf(const std::string& prefix, int count) {
        std::string all;
        for (int i = 1; i <= count; ++i) all += get(prefix + std::to_string(i), "attribute");
        return all;
    }
    template <class Object>
    [[nodiscard]] std::vector<Object*> shown() const {
        std::vector<Object*> all;
        (void)window.findTrinket([&all](OMTrinket& trinket) {
            if (auto* object = dynamic_cast<Object*>(&trinket);
                object && typeid(trinket) == typeid(Object))
                all.insert(all.begin(), object);
            return false;
        });
        return all;
    }
    /// The only text that a start has made.
    [[nodiscard]] RText& text() const {
        const auto all = shown<RText>();
        if (all.size() != 1) throw std::runtime_error(std::to_string(all.size()) + " texts");
        return *all.front();
    }
};

TEST_F(DataSetTest, AnswersAndContainersAreFilledInTheirOrder) {
    addAnswers(1);
    make("t", "RGraphicTextAnswer", {"-1", "0", "0"});
    make("d", "RDoubleGraphicTextAnswer", {"-1", "0", "0"});
    for (const char* name : {"t", "d"}) play("p", "addAnswer", {name});
    set("t", "value", "77");
    const char* kinds[] = {"RAttributeContainer",       "RValueContainer",
                           "RStackingContainer",        "RHorizontalContainer",
                           "RHorizontalValueContainer", "RFabricContainer"};
    for (const char* kind : kinds) {
        make(kind, kind, {"-1", "0", "0", "100", "100"});
        play("p", "addContainer", {kind});
    }
    make("bare", "PlainContainer", {"-1", "0", "0", "100", "100"});
    play("p", "addContainer", {"bare"});
    play("p", "setAnswer", {"1", "4", "2020", "two", "second", "", "none", "none"});
    play("p", "setAnswer", {"1", "three", ""}); // an empty text is one
    set("d", "text1", "old");
    play("p", "setContainer", {"1", "harbour", "12x", "-3"});
    play("p", "setContainer", {"1", "4two", "5", "6", "lost", "", "none"});
    play("p", "start");
    EXPECT_EQ(get("a1", "attribute") + get("a1", "graphicID") + get("a1", "value"), "420204");
    EXPECT_EQ(get("a1", "width"), "20");
    EXPECT_EQ(get("t", "attribute") + get("t", "text") + get("t", "value"), "twosecond77");
    EXPECT_EQ(get("d", "attribute") + get("d", "text1"), "three");
    EXPECT_EQ(get("RAttributeContainer", "attribute"), "harbour");
    EXPECT_EQ(get("RValueContainer", "value"), "12");
    EXPECT_EQ(get("RStackingContainer", "value"), "-3");
    EXPECT_EQ(get("RHorizontalValueContainer", "value"), "5");
    EXPECT_EQ(get("RFabricContainer", "correctSegments"), "6");
    for (const char* name : {"a1", "t"})
        play("p", "addAnswerToContainer", {name, "RHorizontalContainer"});
    EXPECT_EQ(get("RHorizontalContainer", "isSolved"), "1");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(DataSetTest, TooFewRecordsLeaveTheRestAsItIs) {
    addAnswers(3);
    for (const char* name : {"c1", "c2"}) {
        make(name, "RAttributeContainer", {"-1", "0", "0", "100", "100"});
        play("p", "addContainer", {name});
    }
    play("p", "setAnswer", {"1", "a", "-1", "b", "-1", "c", "-1", "d", "-1"});
    play("p", "setContainer", {"1", "x", "y", "z"});
    play("p", "play");
    EXPECT_EQ(attributesOf("a", 3) + attributesOf("c", 2), "abcxy") << "the last are not used";
    EXPECT_EQ(machine.files().text("zorbelog.txt"), "");

    make("p", "RPuzzle", {"0"});
    for (const char* name : {"a1", "a2", "a3"}) play("p", "addAnswer", {name});
    for (const char* name : {"c1", "c2"}) play("p", "addContainer", {name});
    play("p", "setAnswer", {"1", "e", "-1", "f", "-1"});
    play("p", "setContainer", {"1", "v"});
    play("p", "start");
    EXPECT_EQ(attributesOf("a", 3) + attributesOf("c", 2), "efcvy");
    EXPECT_NE(machine.files().text("zorbelog.txt"), "");
    set("p", "scrambleAnswers", "1");
    for (int i = 0; i < 20; ++i) {
        for (const char* name : {"a1", "a2", "a3"}) set(name, "attribute", "?");
        play("p", "start");
        std::string all = attributesOf("a", 3);
        std::ranges::sort(all);
        EXPECT_EQ(all, "?ef");
    }
}

TEST_F(DataSetTest, ScrambledAnswersComeInEveryOrderOfAnEvenNumberOfExchanges) {
    addAnswers(4);
    play("p", "setAnswer", {"1", "1", "", "2", "", "3", "", "4", "", "5", ""});
    for (int i = 0; i < 30; ++i) {
        play("p", "start");
        EXPECT_EQ(attributesOf("a", 4), "1234");
    }
    set("p", "scrambleAnswers", "1");
    std::map<std::string, int> orders;
    for (int i = 0; i < 1200; ++i) {
        play("p", "start");
        ++orders[attributesOf("a", 4)];
    }
    EXPECT_EQ(orders.size(), 12u);
    for (const auto& [order, count] : orders) {
        std::string sorted = order;
        std::ranges::sort(sorted);
        EXPECT_EQ(sorted, "1234");
        EXPECT_GT(count, 50) << order;
    }
    for (const char* name : {"a4", "a3", "a2"}) drop(name);
    play("p", "start");
    EXPECT_EQ(attributesOf("a", 1), "1");
    drop("a1");
    play("p", "start");
}

TEST_F(DataSetTest, EveryEntryIsPickedAlsoThoseThatWereSkipped) {
    play("p", "start"); // there is none
    addAnswers(1);
    play("p", "setAnswer", {"3", "third", ""});
    play("p", "setAnswer", {"1", "first", ""});
    std::map<std::string, int> picked;
    for (int i = 0; i < 600; ++i) {
        set("a1", "attribute", "kept");
        play("p", "start");
        ++picked[get("a1", "attribute")];
    }
    EXPECT_EQ(picked.size(), 3u);
    for (const char* content : {"first", "kept", "third"}) EXPECT_GT(picked[content], 120);
}

TEST_F(DataSetTest, NumbersOfEntries) {
    addAnswers(1);
    const Strings wrong{"0", "-1", "1001", "4000000000", "-4000000000", "", "one"};
    for (const char* method : {"setAnswer", "setContainer", "setPuzzleText", "setPuzzleGraphic"}) {
        for (const std::string& number : wrong) {
            play("p", method, {number, "1", "2020", "1", "1", "text"});
            const Strings shown = boxes();
            ASSERT_EQ(shown.size(), 1u);
            EXPECT_THAT(shown[0],
                        HasSubstr("RPuzzle: entry number " + std::to_string(OMSToInteger(number)) +
                                  " is not between 1 and 1000"));
        }
    }
    set("a1", "attribute", "kept");
    play("p", "start");
    EXPECT_EQ(get("a1", "attribute"), "kept");
    EXPECT_TRUE(shown<RText>().empty());
    play("p", "setAnswer", {"1000", "last", ""});
    EXPECT_TRUE(boxes().empty());
    std::set<std::string> picked;
    for (int i = 0; i < 8000; ++i) {
        play("p", "start");
        picked.insert(get("a1", "attribute"));
    }
    EXPECT_EQ(picked, (std::set<std::string>{"kept", "last"}));
}

TEST_F(DataSetTest, TextsInAllForms) {
    AnyFont fonts;
    play("p", "setPuzzleTextFont", {"20", "", "", "7"});
    struct Row {
        Strings words; // behind the entry
        std::string text;
        int left; // of texts with the width 9
        Rect box; // of those with a box of their own
        int z;
    };
    const Row rows[] = {
        {{"1", "100", "50", "30", "abc"}, "abc", 100, {}, 30},
        {{"1", "100", "50", "30", "abc", "1"}, "abc", 100, {}, 30},
        {{"1", "100", "50", "30", "abc", "2"}, "abc", 96, {}, 30},
        {{"1", "100", "50", "30", "abc", "3"}, "abc", 91, {}, 30},
        {{"1", "100", "50", "30", "abc", "9"}, "abc", 100, {}, 30},
        {{"1", "100", "50", "30", "abc", "x"}, "abc", 100, {}, 30},
        {{"1", "100", "50", "30", "abc", "", "lost"}, "abc", 100, {}, 30},
        {{"70000", "-5", "50x", "-4", "abc"}, "abc", -5, {}, -4},
        {{"1", "100", "50", "60", "20", "30", "ab cd"}, "ab cd", 0, {100, 50, 160, 70}, 30},
        {{"1", "100", "50", "6", "20", "30", "3"}, "3", 0, {100, 50, 106, 70}, 30},
        {{"1", "100", "50", "30"}, "", 100, {}, 30},
    };
    for (const Row& row : rows) {
        make("p", "RPuzzle", {"0"});
        play("p", "setPuzzleTextFont", {"20", "", "", "7"});
        OMSArguments& list = OMSArguments::global();
        list.clear();
        list.push("1");
        for (const std::string& word : row.words) list.push(word);
        ASSERT_TRUE(the("p").invoke("setPuzzleText"));
        EXPECT_TRUE(shown<RText>().empty()) << "not before the start";
        play("p", "start");
        RText& made = text();
        SCOPED_TRACE(testing::PrintToString(row.words));
        EXPECT_EQ(made.text(), row.text);
        EXPECT_EQ(made.z(), row.z);
        EXPECT_EQ(made.colorIndex(), 7);
        EXPECT_EQ(made.fontAscent(), 4);
        EXPECT_FALSE(made.isTouchy() || made.isMovable());
        if (row.box.empty()) {
            EXPECT_EQ(made.x(), row.left);
            EXPECT_EQ(made.y(), 50);
            EXPECT_FALSE(made.wrap());
            EXPECT_EQ(made.textWidth(), 3 * static_cast<int>(row.text.size()));
        } else {
            EXPECT_EQ(made.boundingRectangle(), row.box);
            EXPECT_TRUE(made.wrap());
        }
    }
}

TEST_F(DataSetTest, FontsAndColoursOfTheNextStart) {
    AnyFont fonts;
    play("p", "setPuzzleText", {"1", "1", "10", "10", "30", "one"});
    play("p", "setPuzzleText", {"1", "2", "10", "30", "30", "two"});
    play("p", "start");
    for (const RText* made : shown<RText>()) {
        EXPECT_NE(made->fontAscent(), 4) << "the system font";
        EXPECT_EQ(made->colorIndex(), 0);
    }
    play("p", "setPuzzleTextFont", {"20", "", "", "9"});
    EXPECT_EQ(get("p", "puzzleTextColorIndex"), "9");
    EXPECT_NE(shown<RText>().at(0)->fontAscent(), 4);
    play("p", "start");
    for (const RText* made : shown<RText>()) {
        EXPECT_EQ(made->fontAscent(), 4);
        EXPECT_EQ(made->colorIndex(), 9);
    }
    play("p", "setPuzzleTextFont", {"Arial", "24", "1", "3"});
    play("p", "setPuzzleTextFont", {"30", "24", "", "4"}); // without a style
    play("p", "setPuzzleTextFont", {"Times", "12", "0", "5"});
    EXPECT_EQ(fonts.asked, (Strings{"20", "Arial 24 1", "30", "Times 12 0"}));
    set("p", "puzzleTextColorIndex", "6");
    play("p", "start");
    EXPECT_EQ(shown<RText>().at(1)->colorIndex(), 6);
    drop("p");
    EXPECT_TRUE(shown<RText>().empty());
    EXPECT_EQ(fonts.uses, 0) << "all were given back";
}

TEST_F(DataSetTest, GraphicsInBothForms) {
    AOImage::setSourceLocator([](int id) -> std::unique_ptr<OMIStream> {
        if (id != 404 && id != 40000) return nullptr;
        AseqBuilder image;
        image.x = 33;
        image.y = 44;
        image.depth = 5;
        image.block(8, 6, 'a').sequence({entry(0, 100), entry(AOEntry::kEnd)});
        return std::make_unique<MemoryStream>(image.build());
    });
    play("p", "setPuzzleGraphic", {"1", "60", "404"});
    play("p", "setPuzzleGraphic", {"1", "1", "2", "-3", "40000"});
    play("p", "setPuzzleGraphic", {"1", "11111", "2", "70", "65940"}); // 65536 + 404
    play("p", "setPuzzleGraphic", {"1", "60", "405"});                 // there is none
    play("p", "setPuzzleGraphic", {"1", "1", "2", "3", "405"});
    play("p", "start");
    const auto places = [&] {
        std::set<std::string> all;
        for (const OMAnimation* made : shown<OMAnimation>()) {
            EXPECT_FALSE(made->isTouchy() || made->isMovable());
            all.insert(std::to_string(made->x()) + " " + std::to_string(made->y()) + " " +
                       std::to_string(made->z()) + " " + std::to_string(made->resourceId()));
        }
        return all;
    };
    const std::set<std::string> expected{"33 44 60 404", "1 2 -3 -25536", "33 2 70 404"};
    EXPECT_EQ(places(), expected);
    play("p", "start");
    EXPECT_EQ(places(), expected) << "instead of the ones before";
    window.mouseDown({34, 45});
    EXPECT_EQ(window.input().mouseTarget(), nullptr);
    drop("p");
    EXPECT_EQ(window.trinketCount(), 0u);
}

TEST_F(DataSetTest, TextsAndGraphicsAreThoseOfTheLastStart) {
    addAnswers(2);
    make("x", "RAttributeContainer", {"-1", "100", "100", "80", "80"});
    play("p", "addContainer", {"x"});
    play("p", "addAnswerToContainer", {"a1", "x"});
    play("p", "setPuzzleText", {"1", "1", "10", "10", "30", "first"});
    play("p", "setPuzzleGraphic", {"2", "30", "2020"});
    std::set<std::string> seen;
    for (int i = 0; i < 40; ++i) {
        play("p", "start");
        const auto graphics = shown<OMAnimation>().size();
        const auto texts = shown<RText>().size();
        EXPECT_EQ(texts + graphics, 1u);
        seen.insert(texts == 1 ? "text" : "graphic");
    }
    EXPECT_EQ(seen.size(), 2u);
    EXPECT_EQ(get("a1", "isUsed") + get("a2", "isUsed"), "10") << "a start takes nothing out";
}

} // namespace
