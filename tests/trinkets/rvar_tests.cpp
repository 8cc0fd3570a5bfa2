#include "rvar.h"

#include "omrandom.h"
#include "omscrptb.h"
#include "omsexception.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace {

using Kind = YVariable::Kind;
using Type = YVariable::Type;
using Ownership = YVariable::Ownership;

/// Counts how many of its kind are alive.
class Thing : public OMScriptableObject {
  public:
    Thing() { ++alive; }
    Thing(const Thing& other) : OMScriptableObject(other) { ++alive; }
    ~Thing() override { --alive; }
    std::unique_ptr<OMScriptableObject> duplicate() override {
        return std::make_unique<Thing>(*this);
    }
    static int alive;
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
    std::string parts(const YVariable& variable) {
        std::string list;
        for (const int part : variable.parts())
            list += "[" + (part == YVariable::kNoPart ? "-" : heap.get(part).text()) + "]";
        return list;
    }

    YHeap heap;
};

// ---------------------------------------------------------------------------- symbols

TEST_F(RVar, TheFirstThreeNamesAreThere) {
    EXPECT_EQ(heap.count(), YHeap::kPredefined);
    EXPECT_EQ(heap.lookup("SYSTEM"), YHeap::kSystem);
    EXPECT_EQ(heap.lookup("RECEIVER"), YHeap::kReceiver);
    EXPECT_EQ(heap.lookup("RESULT"), YHeap::kResult);
    EXPECT_EQ(text("SYSTEM"), "WIN");
    EXPECT_EQ(heap.lookup("system"), -1) << "case counts";
}

TEST_F(RVar, ClassifiesTexts) {
    const struct {
        const char* text;
        Kind kind;
        const char* parts;
    } rows[] = {
        {"x", Kind::Name, ""},
        {"item.3", Kind::Name, ""},
        {"item.3.12", Kind::Name, ""},
        {"item.3x", Kind::Name, ""},
        {"item.i", Kind::Compound, "[i]"},
        {"item.i.3", Kind::Compound, "[i][3]"},
        {"a.b.c", Kind::Compound, "[b][c]"},
        {"a.", Kind::Compound, "[]"},
        {"item.(i+1)", Kind::Compound, "[(i+1)]"},
        {"12", Kind::Constant, ""},
        {".5", Kind::Constant, ""},
        {"\"a.b\"", Kind::Constant, ""},
        {"'a b'", Kind::Constant, ""},
        {"?", Kind::Constant, ""},
        {"s|i", Kind::Substring, "[s][i][-]"},
        {"s|i|n", Kind::Substring, "[s][i][n]"},
        {"s||n", Kind::Substring, "[s][-][n]"},
        {"item.i|2", Kind::Substring, "[item.i][2][-]"},
        {"\"a|b\"", Kind::Substring, "[\"a][b\"][-]"}, // the selector is looked for first
        {"s|(i+1)", Kind::Substring, "[s][(i+1)][-]"},
    };
    for (const auto& row : rows) {
        const YVariable& variable = var(row.text);
        EXPECT_EQ(variable.kind(), row.kind) << row.text;
        EXPECT_EQ(parts(variable), row.parts) << row.text;
        EXPECT_EQ(&var(row.text), &variable) << "the same the next time";
    }
    EXPECT_EQ(var("(i+1)").kind(), Kind::Expression);
}

TEST_F(RVar, ElementFamiliesAreNumberedFromTheLargestMember) {
    const struct {
        const char* name;
        std::vector<const char*> existing;
        int count;
        const char* next;
    } rows[] = {
        {"none", {}, 0, "none.1"},
        {"some", {"some.2", "some.7", "some.3"}, 7, "some.8"},
        {"other", {"other.x", "others.4", "other.1.9"}, 0, "other.1"},
        {"deep.1", {"deep.1.5"}, 5, "deep.1.6"},
        {"much", {"much.2000000"}, 2000000, "much.2000001"},
    };
    for (const auto& row : rows) {
        for (const char* member : row.existing) var(member);
        YVariable& name = var(row.name);
        EXPECT_EQ(name.elementCount(), row.count) << row.name;
        heap.appendElement(name, "new");
        EXPECT_EQ(text(row.next), "new") << row.name;
    }
    YVariable& early = var("early");
    var("early.9");
    EXPECT_EQ(early.elementCount(), 0) << "members are counted when the name appears";

    var("huge.99999999999");
    heap.appendElement(var("huge"), "x");
    EXPECT_EQ(var("huge").elementCount(), std::numeric_limits<std::int32_t>::max());
}

TEST_F(RVar, DropsOneLevelOfAFamily) {
    for (const char* name : {"n", "n.1", "n.22", "n.1.1", "nn.1", "n.a"}) set(name, "full");
    heap.emptyFamily("n");
    std::string left;
    for (const char* name : {"n", "n.1", "n.22", "n.1.1", "nn.1"})
        if (var(name).isDefined()) left += std::string(name) + " ";
    EXPECT_EQ(left, "n n.1.1 nn.1 ");
}

// ---------------------------------------------------------------------------- values

TEST_F(RVar, StoredTextsAreTypedByTheirFirstByte) {
    const struct {
        const char* text;
        Type type;
        double number;
    } rows[] = {
        {"abc", Type::String, 0},
        {"", Type::String, 0},
        {" 5", Type::String, 0},
        {"007", Type::Integer, 7},
        {"1e3", Type::Integer, 1000},
        {"-12", Type::Integer, -12},
        {"+5", Type::Integer, 5},
        {"-x", Type::Integer, 0},
        {"2.50", Type::Real, 2.5},
        {"2000000000", Type::Integer, 2e9},
        {"2000000001", Type::Real, 2000000001},
        {"-2000000000", Type::Real, -2e9}, // eleven characters
        {"00000000005", Type::Real, 5},
        {"12345678901", Type::Real, 12345678901},
    };
    for (const auto& row : rows) {
        set("x", row.text);
        EXPECT_EQ(var("x").type(), row.type) << row.text;
        EXPECT_EQ(var("x").number(), row.number) << row.text;
        EXPECT_EQ(text("x"), row.text) << "the text is kept";
    }
}

TEST_F(RVar, NumbersAreWrittenWhenAskedFor) {
    YVariable& x = var("x");
    x.setInteger(-2147483647 - 1);
    EXPECT_EQ(text(x), "-2147483648");
    x.setReal(6.0);
    EXPECT_EQ(x.type(), Type::Integer);
    EXPECT_EQ(text(x), "6");
    x.setReal(2000000001);
    EXPECT_EQ(x.type(), Type::Real);
    EXPECT_EQ(text(x), "2000000001");
    x.setReal(0.1 + 0.2);
    EXPECT_EQ(text(x), "0.3");
    EXPECT_EQ(x.number(), 0.3) << "what expressions compute with is what the text says";

    x.setNumberAsText(-999999999);
    EXPECT_EQ(x.type(), Type::Integer);
    x.setNumberAsText(-1000000000);
    EXPECT_EQ(x.type(), Type::Real) << "a text of eleven characters";
    EXPECT_EQ(text(x), "-1000000000");
    x.setNumberAsText(2.0 / 3);
    EXPECT_EQ(x.number(), 0.666666666666667);
    x.setNumberAsText(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(text(x), "-inf");
    EXPECT_EQ(x.number(), 0) << "a failed scan";
}

TEST_F(RVar, UnsetNamesReadAsThemselvesAndObjectsAsOneByte) {
    EXPECT_EQ(text("lonely"), "lonely");
    EXPECT_FALSE(var("lonely").isDefined());
    set("lonely", "x");
    var("lonely").makeEmpty();
    EXPECT_EQ(text("lonely"), "lonely");
    var("o").setObject(std::make_unique<Thing>());
    EXPECT_EQ(text("o"), "\xA5");
    EXPECT_EQ(var("o").number(), 0);
    EXPECT_EQ(var("o").integer(), 0);
}

TEST_F(RVar, ConstantsCannotBeChanged) {
    for (const char* name : {"12", "\"a b\"", "'it'", "s|1", "x+1", "item.i"}) {
        YVariable& constant = operand(name);
        const std::string before = text(constant);
        constant.setString("changed");
        if (constant.kind() != Kind::Compound) constant.setInteger(5);
        EXPECT_EQ(text(constant), before) << name;
    }
    EXPECT_EQ(text("\"a b\""), "a b");
    EXPECT_EQ(text("'say \"hi\"'"), "say \"hi\"");
    EXPECT_EQ(text("\"\""), "");
    EXPECT_EQ(text("1e3"), "1e3");
}

TEST_F(RVar, TheRandomDigitIsDrawnAtEveryReading) {
    OMSeedRandom(1);
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) seen.insert(text("?"));
    EXPECT_EQ(seen.size(), 10U);
    EXPECT_EQ(*seen.begin(), "0");
    EXPECT_EQ(*seen.rbegin(), "9");
}

TEST_F(RVar, IntegersOfValues) {
    const struct {
        const char* word;
        std::int32_t integer;
    } rows[] = {
        {"2.5", 2},      {"r", -3},          {"2.6", 3},           {"\"7\"", 0},
        {"t", 0},        {"a+b", 3},         {"7/2", 3},           {"t|2", 12},
        {"item.one", 9}, {"\"1\"+\"2\"", 3}, {"2^40", 2147483647},
    };
    set("r", "-2.5");
    set("t", "x12y");
    set("a", "1");
    set("b", "2");
    set("one", "1");
    set("item.1", "9.75");
    for (const auto& row : rows) EXPECT_EQ(operand(row.word).integer(), row.integer) << row.word;
    EXPECT_EQ(operand("7/2").number(), 3.5);
    EXPECT_EQ(operand("item.one").number(), 9.75);
    EXPECT_EQ(operand("t|2|1").number(), 1);
}

TEST_F(RVar, SelectsPartsOfTexts) {
    const struct {
        const char* word;
        const char* value;
    } rows[] = {
        {"s|2", "bcdef"},
        {"s|6", "f"},
        {"s|7", ""},
        {"s|0", "abcdef"},
        {"s|neg", "abcdef"},
        {"s|", "abcdef"},
        {"s|2|3", "bcd"},
        {"s|5|9", "ef"},
        {"s|7|1", ""},
        {"s|2|0", ""},
        {"s|2|neg", ""},
        {"s|0|2", "ab"},
        {"s||2", "ef"},
        {"s||0", ""},
        {"s||99", "abcdef"},
        {"s||", ""},
        {"s|two", "bcdef"},
        {"s|(two+1)", "cdef"},
        {"s|two|(two*2)", "bcde"},
        {"list.two|2", "econd"},
        {"1234|2", "234"},
        {"|2", ""},
        {"s|half|1", "b"},
        {"unset|3", "set"},
    };
    set("s", "abcdef");
    set("two", "2");
    set("neg", "-3");
    set("half", "2.5");
    set("list.2", "second");
    for (const auto& row : rows) EXPECT_EQ(text(row.word), row.value) << row.word;
    EXPECT_EQ(text(var("s|-3")), "abcdef") << "a name built at run time, not a word";
}

TEST_F(RVar, SelectorsOfSelectorsEndSomewhere) {
    std::string deep = "s";
    for (int i = 0; i < 20000; ++i) deep += "|1";
    (void)text(var(deep)); // no crash is all that is asked
    std::string dots = "s";
    for (int i = 0; i < 20000; ++i) dots += ".a";
    (void)text(var(dots));
}

// ---------------------------------------------------------------------------- compound names

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
    set("grid.3.5", "here");
    EXPECT_EQ(text("grid.i.j"), "here");
    EXPECT_EQ(text("grid.3.j"), "here");
    EXPECT_EQ(text("grid.(i).(j*1)"), "here");
    set("grid.4.5", "there");
    EXPECT_EQ(text("grid.(i+1).j"), "there");
}

TEST_F(RVar, CompoundNamesMayLeadToEachOther) {
    set("i", "j");
    set("j", "3");
    set("item.3", "end");
    EXPECT_EQ(text("item.i"), "end");
    var("item.i").resolve().setString("written");
    EXPECT_EQ(text("item.3"), "written");
    var("item.3").setObject(std::make_unique<Thing>());
    EXPECT_NE(var("item.i").object(), nullptr);
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

// ---------------------------------------------------------------------------- objects

TEST_F(RVar, OwnersDestroyWhatTheyHeld) {
    const struct {
        const char* name;
        void (*overwrite)(YVariable&);
    } rows[] = {
        {"string", [](YVariable& x) { x.setString("text"); }},
        {"integer", [](YVariable& x) { x.setInteger(1); }},
        {"real", [](YVariable& x) { x.setReal(1.5); }},
        {"number", [](YVariable& x) { x.setNumberAsText(1.5); }},
        {"empty", [](YVariable& x) { x.makeEmpty(); }},
        {"null", [](YVariable& x) { x.setObject(nullptr); }},
        {"reference", [](YVariable& x) { x.setReference(nullptr); }},
    };
    for (const auto& row : rows) {
        YVariable& x = var("x");
        x.setObject(std::make_unique<Thing>());
        EXPECT_EQ(x.ownership(), Ownership::Owner);
        row.overwrite(x);
        EXPECT_EQ(Thing::alive, 0) << row.name;

        Thing thing;
        x.setReference(&thing);
        EXPECT_EQ(x.ownership(), Ownership::Reference);
        row.overwrite(x);
        EXPECT_EQ(Thing::alive, 1) << row.name;
        EXPECT_EQ(x.ownership(), Ownership::Owner) << row.name;
    }
    YVariable& x = var("x");
    x.setObject(std::make_unique<Thing>());
    const std::unique_ptr<OMScriptableObject> kept(x.object());
    x.makeEmptyKeepingObject();
    EXPECT_EQ(Thing::alive, 1);
    EXPECT_FALSE(x.isDefined());
}

TEST_F(RVar, CopiesBetweenOwnersAreDuplicates) {
    YVariable& x = var("x");
    YVariable& y = var("y");
    x.setObject(std::make_unique<Thing>());
    y.copyFrom(x);
    EXPECT_EQ(Thing::alive, 2);
    EXPECT_NE(x.object(), y.object());
    EXPECT_EQ(OMScriptableObject::lastBorn, y.object());

    YVariable& marked = var("marked");
    marked.markReference();
    marked.copyFrom(x);
    EXPECT_EQ(marked.object(), x.object()) << "one of them does not own";
    EXPECT_EQ(marked.ownership(), Ownership::Reference);
    var("z").copyFrom(marked);
    EXPECT_EQ(var("z").object(), x.object()) << "a copy of a reference is one";
    EXPECT_EQ(Thing::alive, 2);
    x.copyFrom(x);
    EXPECT_NE(x.object(), nullptr);
    heap.emptyOwners();
    EXPECT_FALSE(x.isDefined());
    EXPECT_EQ(Thing::alive, 0);
}

TEST_F(RVar, ForgettingEmptiesEveryHolder) {
    auto* thing = new Thing;
    var("a").setReference(thing);
    var("b").setObject(std::unique_ptr<OMScriptableObject>(thing));
    var("c").setReference(thing);
    Thing other;
    var("d").setReference(&other);
    EXPECT_TRUE(heap.forget(thing, true));
    EXPECT_EQ(Thing::alive, 1);
    for (const char* name : {"a", "b", "c"}) EXPECT_FALSE(var(name).isDefined()) << name;
    EXPECT_TRUE(var("d").isDefined());
    EXPECT_FALSE(heap.forget(thing, false)) << "nobody holds it";
    EXPECT_FALSE(heap.forget(nullptr, true));
}

TEST_F(RVar, ASecondOwnerIsReported) {
    std::vector<std::string> reports;
    OMSobException::setNotification([&](const OMSobException& report) {
        reports.push_back(std::string(report.kind()) + ": " + report.text());
    });
    Thing thing;
    EXPECT_EQ(heap.holderOf(&thing), nullptr);
    var("seen").setReference(&thing);
    EXPECT_EQ(heap.holderOf(&thing), nullptr) << "a reference is no owner";
    for (const char* name : {"first", "second", "third"})
        var(name).setObject(std::unique_ptr<OMScriptableObject>(&thing));
    EXPECT_EQ(heap.holderOf(&thing), &var("first"));
    EXPECT_EQ(reports, (std::vector<std::string>{
                           "warning: Variables first and second hold the same trinket pointer",
                           "warning: Variables first and third hold the same trinket pointer"}));
    for (const char* name : {"first", "second", "third"}) var(name).makeEmptyKeepingObject();
    OMSobException::setNotification(nullptr);
    OMSobException::clearCurrent();
}

} // namespace
