#include "scriptfixture.h"
#include "wordtable.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScriptTest;
using testing_support::wordTable;

class RThread : public ScriptTest {
  protected:
    /// What a script says with its line ends as blanks.
    std::string saidLine() {
        std::string text = said();
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }
};

struct Row {
    const char* name;
    const char* text;
    const char* said;
};

TEST_F(RThread, LoopsRunTheirRounds) {
    const Row rows[] = {
        {"step", "for i 10 1 -2\nsay i", "10 8 6 4 2 "},
        {"step up", "for i 1 10 4\nsay i", "1 5 9 "},
        {"down without a step", "n=0\nfor i 3 1\n[\nsay i\nn=n+1\nif n=4\nbreak\n]", "3 4 5 6 "},
        {"past the target", "for i 1 4 2\nsay i\nsay i", "1 3 5 "},
        {"rounded bounds", "for i 1.6 3.5\nsay i", "2 3 "},
        {"element as counter", "k=7\nfor item.k 1 2\nsay item.7", "1 2 "},
        {"counter changed in the body", "for i 1 3\n[\nsay i\ni=9\n]", "1 2 3 "},
        {"condition", "n=3\nfor n\n[\nsay n\nn=n-1\n]\nsay end", "3 2 1 end "},
        {"endless with break", "n=0\nfor\n[\nn=n+1\nif n=3\n[\nbreak\n]\nsay n\n]\nsay end n",
         "1 2 end 3 "},
        {"nested", "for i 1 2\n[\nfor j 1 3\n[\nif j=2\ncontinue\nsay i*10+j\n]\n]",
         "11 13 21 23 "},
        {"break of the inner",
         "for i 1 3\n[\nfor j 1 3\n[\nif j=2\nbreak\nsay i*10+j\n]\nif i=2\nbreak\n]\nsay end",
         "11 21 end "},
        {"last in a loop", "for i 1 2\n[\nif i=1\n[\nfor j 1 2\nsay j\n]\nelse\nsay e\n]",
         "1 2 e "},
    };
    for (const Row& row : rows) {
        run(row.text);
        EXPECT_EQ(saidLine(), row.said) << row.name;
        EXPECT_THAT(boxes(), IsEmpty()) << row.name;
    }
}

TEST_F(RThread, CountersAreSixteenBitsWide) {
    run("for i 32766 40000\nsay i\nsay end i\n");
    EXPECT_EQ(saidLine(), "32766 32767 end -32768 ") << "40000 is -25536, below the start";
    run("for i 70000 70001\nsay i\n");
    EXPECT_EQ(saidLine(), "4464 4465 ");
    run("n=0\nfor i 32766 32767 2\n[\nsay i\nn=n+1\nif n=3\nbreak\n]\n");
    EXPECT_EQ(saidLine(), "32766 -32768 -32766 ") << "past the end of the numbers";
}

TEST_F(RThread, OnlyALeadingZeroIsFalse) {
    const auto rows = wordTable(R"(
        1 : yes     0 : no      0.5 : no     007 : no     -0 : no       -1 : yes     "" : yes
        y : no      z : yes     word : yes   "0x" : no    x=0 : yes     1/2 : no     1/3*3 : yes
        (y) : no    t|2 : no    0\0 : no     EMPTY : yes  item.x : no   "a"*2 : yes)");
    const std::string setUp = "x=0\ny=0.25\nz=-0.25\nt=\"a0\"\nitem.0=\"0\"\n";
    for (const auto& [condition, said] : rows) {
        run(setUp + "if " + condition + "\nsay yes\nelse\nsay no\n");
        EXPECT_EQ(saidLine(), said + " ") << condition;
    }
}

TEST_F(RThread, CountedLoopsAreNestedToALimit) {
    run("procedure p n\n[\nfor i 1 2\n[\ncall p n\n]\n]\ncall p 1\nsay never\n");
    EXPECT_THAT(boxes(), ElementsAre("test.mps:4: counted loops are nested too deep"));
    EXPECT_EQ(said(), "");
    EXPECT_FALSE(thread->isRunning());
}

TEST_F(RThread, ProceduresTakeArguments) {
    const Row rows[] = {
        {"arguments", "call p 1+1 \"two words\" x\nwait\nprocedure p a b c\nsay a b c",
         "2 two words x "},
        {"fewer arguments", "b=old\nc=older\ncall p 1\nwait\nprocedure p a b c\nsay a b c",
         "1 old older "},
        {"texts, not values", "item.2=\"x\"\ni=2\ncall p item.i\ni=3\nwait\nprocedure p a\nsay a",
         "x "},
        {"one after the other", "a=1\nb=2\ncall p b a\nwait\nprocedure p a b\nsay a b", "2 2 "},
        {"recursion", "call p 3\nwait\nprocedure p n\n[\nsay n\nif n>0\ncall p n-1\nsay n\n]",
         "3 2 1 0 0 0 0 0 "},
        {"name in a variable", "f=\"p\"\nf2=\"f\"\ncall f2 7\nwait\nprocedure p a\nsay a", "7 "},
        {"name in an element", "list.1=\"p\"\ni=1\ncall list.i 9\nwait\nprocedure p a\nsay a",
         "9 "},
        {"computed name", "call \"p\"+\"q\" 1\nwait\nprocedure pq a\nsay a", "1 "},
    };
    for (const Row& row : rows) {
        run(row.text);
        EXPECT_EQ(saidLine(), row.said) << row.name;
    }
}

TEST_F(RThread, TheReturnStackHasALimit) {
    const std::string text =
        "n=0\ncall p\nsay end n\nprocedure p\n[\nn=n+1\nif n<limit\ncall p\n]\n";
    run("limit=2047\n" + text);
    EXPECT_EQ(said(), "end 2047\n");
    EXPECT_THAT(boxes(), IsEmpty());
    run("limit=2048\n" + text);
    EXPECT_EQ(said(), "");
    EXPECT_THAT(boxes(), ElementsAre("test.mps:10: sp < (YTSTACK-1)"));
    EXPECT_FALSE(thread->isRunning());
}

TEST_F(RThread, ReturningWithAnEmptyStackStops) {
    run("call p\nsay never\nprocedure p\n[\ndrop stack\n]\n");
    EXPECT_THAT(boxes(), ElementsAre("test.mps:4: sp"));
    EXPECT_FALSE(thread->isRunning());
    pass(5);
    EXPECT_EQ(said(), "");
    thread->unload(); // and can still be put away
}

TEST_F(RThread, CallsThatLeadNowhereEnd) {
    run("x=\"+99999\"\ncall x\nsay never\n");
    EXPECT_EQ(boxes().size(), 1U);
    EXPECT_FALSE(thread->isRunning());
    put("y", "say in y\n");
    run("x=\"y\"\ny=\"x\"\ncall x\n", 10); // a ring of names ends at one of them
    EXPECT_EQ(said(), "in y\n");
}

TEST_F(RThread, AssignmentsStoreTexts) {
    const Row rows[] = {
        {"further words are ignored", "x=1 2 3\nsay x", "1 "},
        {"expression", "x=1/3\nsay x x*3", "0.333333333333333 0.999999999999999 "},
        {"to itself", "x=3\nx=x\nx=x+x\nsay x", "6 "},
        {"part of itself", "x=\"abcdef\"\nx=x|3\nx=x|2|2\nsay x", "de "},
        {"large", "x=999999999*10\ny=x+1\nsay x y", "9999999990 9999999991 "},
        {"negative", "x=0-1000000000\nsay x x+1", "-1000000000 -999999999 "},
        {"not a number", "x=2^2000\ny=0-x\nsay x y y+1", "inf 0-x 1 "},
        {"constants stay", "5=6\n\"a\"=7\nsay 5 \"a\"", "5 a "},
    };
    for (const Row& row : rows) {
        run(row.text);
        EXPECT_EQ(saidLine(), row.said) << row.name;
        EXPECT_THAT(boxes(), IsEmpty()) << row.name;
    }
}

TEST_F(RThread, DoubtfulAssignmentsAreToldOf) {
    run("x=1\nx=\nsay x\n");
    EXPECT_EQ(said(), "x\n");
    EXPECT_THAT(boxes(), ElementsAre("x=\nis equivalent to\ndrop x"));
    run("x=y\nsay x\n");
    EXPECT_EQ(said(), "y\n");
    EXPECT_THAT(boxes(), ElementsAre("Variable y is empty"));
    run("x=x\nx=item.i\n");
    EXPECT_THAT(boxes(), IsEmpty()) << "the same variable; no plain name";
}

TEST_F(RThread, SayJoinsWords) {
    const std::string a100(100, 'a');
    const std::string b100(100, 'b');
    const std::string c100(100, 'c');
    run("say\nsay \"\" x \"\" \"y  z\"\n");
    EXPECT_EQ(said(), "\n x  y  z\n");
    run("say \"" + a100 + "\" \"" + b100 + "\" \"" + c100 + "\" end\n");
    EXPECT_EQ(said(), a100 + " " + b100 + " end\n") << "what passes 255 bytes is left out";
    run("say \"" + std::string(255, 'x') + "\" y\nsay \"" + std::string(256, 'x') + "\" y\n");
    EXPECT_EQ(said(), std::string(255, 'x') + "\ny\n");
}

TEST_F(RThread, DropWordsActOnTheThread) {
    const Row rows[] = {
        {"variables", "x=1\ny=2\nitem.3=4\ni=3\ndrop x item.i\nsay x y item.3", "x 2 item.3 "},
        {"family",
         "n.1=a1\nn.22=a2\nn.1.1=a3\nn=a4\nn.a=a5\nx=2\ndrop [ n x\nsay n.1 n.22 n.1.1 n x",
         "n.1 n.22 a3 a4 x "},
        {"by name", "x=1\nv=\"x\"\ndrop var v\nsay x v", "x x "},
        {"words that lack theirs", "x=1\ndrop x [\ndrop var\ndrop script\nsay x", "x "},
        {"constants", "drop 5 \"a\"\nsay 5 \"a\"", "5 a "},
    };
    for (const Row& row : rows) {
        run(row.text);
        boxes(); // unset names as values
        EXPECT_EQ(saidLine(), row.said) << row.name;
    }
}

TEST_F(RThread, YieldChoosesThePace) {
    int yields = 0;
    put("test.mps",
        "say 1\nyield off\nsay 2\nsay 3\nyield on\nsay 4\nsay 5\nyield x\nsay 6\nsay 7\n");
    load("test.mps");
    thread->setYieldLink([&] { ++yields; });
    const char* const turns[] = {"1\n", "", "2\n3\n", "4\n", "5\n", "", "6\n7\n", ""};
    for (const char* turn : turns) {
        pass(1);
        EXPECT_EQ(said(), turn);
    }
    EXPECT_EQ(yields, 3);
}

TEST_F(RThread, ALoopWithoutEndLeavesTimeToOthers) {
    run("for\nx=\n", 2); // the first pass has the yield
    EXPECT_EQ(boxes().size(), 100u);
    pass(2);
    EXPECT_EQ(boxes().size(), 200u);
    run("for\nsay x\n", 2);
    EXPECT_NEAR(static_cast<double>(said().size()), 20'000, 100) << "lines of a letter";
}

TEST_F(RThread, TheEndIsToldOnceUntilSomethingElseRuns) {
    int ends = 0;
    put("test.mps", "yield off\nschedule 0.1 p\nwait\nwait\nsay on\nwait\n"
                    "procedure p\n[\ndrop wait\n]\n");
    load("test.mps");
    thread->setEndReachedLink([&] { ++ends; });
    pass(3);
    EXPECT_EQ(ends, 1);
    pass(4, 101);
    EXPECT_EQ(ends, 2) << "the handler's instructions lay between";
    put("next.mps", "yield off\nsay end\n");
    thread->loadScript("next.mps");
    thread->run();
    pass(5);
    EXPECT_EQ(ends, 3);
}

// Without a trace, and until it is blocked, a thread takes expressions as rows of steps for
// integers or reals, and changes its mind when values do. One statement at a time it takes them by
// the rules.
TEST_F(RThread, ExpressionsOfNumbersAreAsTheRulesHaveThem) {
    constexpr int kExpressions = 300;
    const char* const names[] = {"a", "b", "item.k", "(~c)", "3", "0.25", "2147483647", "1000003"};
    constexpr std::string_view kOperators = "+-*/\\%^=#<>";
    std::mt19937 random(99);
    const auto word = [&](auto&& self, int depth) -> std::string {
        if (depth == 0 || random() % 4 == 0) return names[random() % std::size(names)];
        const char operation = kOperators[random() % kOperators.size()];
        const bool isSign = operation == '-' && random() % 3 == 0;
        return "(" + (isSign ? "" : self(self, depth - 1)) + operation + self(self, depth - 1) +
               ")";
    };
    std::string text = "k=4\nn=5\n";
    int count = 0;
    for (const char* value :
         {"0", "1", "-1", "7", "-12", "2000000000", "-2000000000", "1999999999", "0.5", "-2.25",
          "1e10", "0.00001", "123456789.125", "\"x\"", "\"07\""})
        text += "v." + std::to_string(count++) + "=" + value + "\n";
    text += "for round 1 6\n[\n";
    for (int i = 0; i < kExpressions; ++i) {
        const std::string expression = word(word, 3) + "+0";
        text += "n=(n*7+3)%" + std::to_string(count) +
                "\na=v.n\nitem.4=v.n\nc=v.n\nn=(n+round)%13\nb=v.n\n";
        text += "x=" + expression + "\nt=0\nif " + expression + "\nt=1\nsay x t\n";
    }
    text += "]\nwait\n";
    run(text);
    const std::string byRows = said();
    start(text, 60 * kExpressions * 2);
    const std::string byRules = said();
    EXPECT_EQ(std::ranges::count(byRules, '\n'), 6 * kExpressions);
    EXPECT_EQ(byRows, byRules);
}

} // namespace
