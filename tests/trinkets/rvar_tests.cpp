#include "yheap.h"

#include "omscrptb.h"
#include "omsexception.h"
#include "wordtable.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using testing_support::wordTable;
using Type = YVariable::Type;

/// Counts how many of its kind are alive.
class Thing : public OMScriptableObject {
  public:
    Thing() { ++alive; }
    Thing(const Thing& other) : OMScriptableObject(other) { ++alive; }
    ~Thing() override {
        atEnd();
        --alive;
    }
    std::unique_ptr<OMScriptableObject> duplicate() override {
        return std::make_unique<Thing>(*this);
    }
    static int alive;
    OMLink atEnd;
};
int Thing::alive = 0;

class RVar : public testing::Test {
  protected:
    RVar() { Thing::alive = 0; }

    YVariable& var(std::string_view text) { return heap.get(heap.intern(text)); }
    YVariable& operand(std::string_view text) {
        int error = 0;
        YVariable& variable = heap.get(heap.internOperand(text, error));
        EXPECT_EQ(error, 0) << text;
        return variable;
    }
    std::string text(const YVariable& variable) {
        YScratch scratch;
        return std::string(variable.string(scratch));
    }
    std::string text(std::string_view name) { return text(operand(name)); }
    void set(std::string_view name, std::string_view value) { var(name).setString(value); }

    YHeap heap;
};

TEST_F(RVar, ElementFamiliesAreNumberedFromTheLargestMember) {
    YVariable& early = var("early");
    for (const char* member : {"early.9", "some.2", "some.7", "some.3", "some.x", "somes.8",
                               "some.1.9", "deep.1.5", "huge.99999999999"})
        var(member);
    EXPECT_EQ(early.elementCount(), 0) << "members are counted when the name appears";
    EXPECT_EQ(var("some").elementCount(), 7);
    heap.appendElement(var("some"), "new");
    EXPECT_EQ(text("some.8"), "new");
    heap.appendElement(var("deep.1"), "new");
    EXPECT_EQ(text("deep.1.6"), "new");
    heap.appendElement(var("huge"), "x");
    EXPECT_EQ(var("huge").elementCount(), std::numeric_limits<std::int32_t>::max());
}

TEST_F(RVar, StoredTextsAreTypedByTheirFirstByte) {
    const struct {
        Type type;
        const char* texts;
    } rows[] = {
        {Type::String, "abc : 0 x5 : 0 EMPTY : 0"},
        {Type::Integer, "007 : 7 1e3 : 1000 +5 : 5 -x : 0 2000000000 : 2e9"},
        {Type::Real, "2.50 : 2.5 2000000001 : 2000000001"},
        {Type::Real, "-2000000000 : -2e9 00000000005 : 5"}, // of eleven characters
    };
    for (const auto& row : rows)
        for (const auto& [written, number] : wordTable(row.texts)) {
            set("x", written);
            EXPECT_EQ(var("x").type(), row.type) << written;
            EXPECT_EQ(var("x").number(), std::stod(number)) << written;
            EXPECT_EQ(text("x"), written) << "the text is kept";
        }
}

TEST_F(RVar, NumbersBecomeTextsOfTheirType) {
    YVariable& x = var("x");
    x.setReal(6.0);
    EXPECT_EQ(x.type(), Type::Integer);
    x.setReal(0.1 + 0.2);
    EXPECT_EQ(text(x), "0.3");
    EXPECT_EQ(x.number(), 0.3) << "what expressions compute with is what the text says";
    x.setNumberAsText(-999999999);
    EXPECT_EQ(x.type(), Type::Integer);
    x.setNumberAsText(-1000000000);
    EXPECT_EQ(x.type(), Type::Real) << "a text of eleven characters";
}

TEST_F(RVar, SelectsPartsOfTexts) {
    for (const auto& [name, text] :
         wordTable("s : abcdef two : 2 neg : -3 half : 2.5 list.2 : second"))
        set(name, text);
    const auto rows = wordTable(R"(
        s|2 : bcdef    s|6 : f          s|7 : EMPTY       s|0 : abcdef      s|neg : abcdef
        s| : abcdef    s|2|3 : bcd      s|5|9 : ef        s|2|0 : EMPTY     s|2|neg : EMPTY
        s|0|2 : ab     s||2 : ef        s||0 : EMPTY      s||99 : abcdef    s|| : EMPTY
        1234|2 : 234   |2 : EMPTY       s|half|1 : b      unset|3 : set     list.two|2 : econd
        s|two|(two*2) : bcde)");
    for (const auto& [word, value] : rows) EXPECT_EQ(text(word), value) << word;
    EXPECT_EQ(text(var("s|-3")), "abcdef") << "a name built at run time, not a word";
}

TEST_F(RVar, SelectorsOfSelectorsEndSomewhere) {
    for (const char* more : {"|1", ".a"}) {
        std::string deep = "s";
        for (int i = 0; i < 20000; ++i) deep += more;
        (void)text(var(deep)); // no crash is all that is asked
    }
}

TEST_F(RVar, CompoundNamesFollowTheirParts) {
    set("i", "2");
    var("item.i").resolve().setString("two");
    EXPECT_EQ(text("item.2"), "two");
    set("i", "02");
    EXPECT_EQ(text("item.i"), "item.02") << "another name";
    set("i", "2");
    EXPECT_EQ(text("item.i"), "two");
    var("i").setInteger(3);
    EXPECT_EQ(text("item.i"), "item.3");
    set("j", "5");
    set("grid.4.5", "there");
    EXPECT_EQ(text("grid.(i+1).j"), "there");
    set("i", "j"); // one compound name leads to another
    var("item.i").resolve().setString("written");
    EXPECT_EQ(text("item.5"), "written");
}

TEST_F(RVar, CompoundNamesThatLeadToThemselvesReadAsTheirText) {
    EXPECT_EQ(text("item.i"), "item.i") << "i is not set";
    EXPECT_EQ(text("a."), "a.");
    set("b", "c");
    set("c", "b");
    EXPECT_EQ(text("a.b").substr(0, 2), "a.") << "a.b is a.c is a.b";
    EXPECT_EQ(var("a.b").object(), nullptr);
    EXPECT_EQ(var("a.b").number(), 0);
    set("q", "it\"s");
    EXPECT_EQ(text("a.q"), "a.it\"s") << "no word that could be compiled";
    set("long", std::string(300, 'x'));
    EXPECT_EQ(text("a.long").size(), 255U) << "names end at the size of a computed text";
}

TEST_F(RVar, ElementsAreFoundAmongThousands) {
    for (int i = 0; i < 5000; ++i) {
        var("n").setInteger(i);
        var("item.n").resolve().setInteger(i);
    }
    EXPECT_EQ(text("item.4999"), "4999");
    EXPECT_EQ(text("item.0"), "0");
    var("n").setInteger(4500); // past the remembered elements
    EXPECT_EQ(text("item.n"), "4500");
}

TEST_F(RVar, OwnersDestroyWhatTheyHeld) {
    void (*const overwrites[])(YVariable&) = {
        [](YVariable& x) { x.setString("text"); },     [](YVariable& x) { x.setInteger(1); },
        [](YVariable& x) { x.setReal(1.5); },          [](YVariable& x) { x.setNumberAsText(1.5); },
        [](YVariable& x) { x.makeEmpty(); },           [](YVariable& x) { x.setObject(nullptr); },
        [](YVariable& x) { x.setReference(nullptr); },
    };
    YVariable& x = var("x");
    for (const auto& overwrite : overwrites) {
        x.setObject(std::make_unique<Thing>());
        overwrite(x);
        EXPECT_EQ(Thing::alive, 0);
        Thing thing;
        x.setReference(&thing);
        overwrite(x);
        EXPECT_EQ(Thing::alive, 1);
        EXPECT_EQ(x.ownership(), YVariable::Ownership::Owner);
        // What the end of the old one stores there is the latest, and is not lost.
        auto last = std::make_unique<Thing>();
        last->atEnd = [&x] { x.setObject(std::make_unique<Thing>()); };
        x.setObject(std::move(last));
        overwrite(x);
        EXPECT_EQ(Thing::alive, 2);
        EXPECT_NE(x.object(), nullptr);
        x.makeEmpty();
    }
    // Copies: of an owner a duplicate, of a reference another one.
    x.setObject(std::make_unique<Thing>());
    var("y").copyFrom(x);
    EXPECT_EQ(OMScriptableObject::lastBorn, var("y").object());
    var("marked").markReference();
    var("marked").copyFrom(x);
    var("z").copyFrom(var("marked"));
    EXPECT_EQ(var("z").object(), x.object());
    x.copyFrom(x);
    EXPECT_EQ(Thing::alive, 2);
    heap.emptyOwners();
    EXPECT_EQ(Thing::alive, 0);
}

TEST_F(RVar, ASecondOwnerIsReportedAndAllAreForgotten) {
    std::string reports;
    OMSobException::setNotification([&](const OMSobException& report) {
        reports += std::string(report.kind()) + ": " + report.text() + "/";
    });
    auto* thing = new Thing;
    var("seen").setReference(thing);
    EXPECT_EQ(heap.holderOf(thing), nullptr) << "a reference is no owner";
    for (const char* name : {"first", "second", "third"})
        var(name).setObject(std::unique_ptr<OMScriptableObject>(thing));
    EXPECT_EQ(heap.holderOf(thing), &var("first"));
    EXPECT_EQ(reports, "warning: Variables first and second hold the same trinket pointer/"
                       "warning: Variables first and third hold the same trinket pointer/");
    Thing other;
    var("other").setReference(&other);
    EXPECT_TRUE(heap.forget(thing, true));
    EXPECT_EQ(Thing::alive, 1);
    for (const char* name : {"seen", "first", "second", "third"})
        EXPECT_FALSE(var(name).isDefined()) << name;
    EXPECT_TRUE(var("other").isDefined());
    OMSobException::setNotification(nullptr);
    OMSobException::clearCurrent();
}

} // namespace
