#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScriptTest;

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

// ---------------------------------------------------------------------------- loops and tests

TEST_F(RThread, LoopsRunTheirRounds) {
    const Row rows[] = {
        {"up", "for i 1 3\nsay i\nsay i", "1 2 3 4 "},
        {"down to 0", "for i 3\nsay i\nsay i", "3 2 1 0 -1 "},
        {"step", "for i 10 1 -2\nsay i", "10 8 6 4 2 "},
        {"step up", "for i 1 10 4\nsay i", "1 5 9 "},
        {"down without a step", "n=0\nfor i 3 1\n[\nsay i\nn=n+1\nif n=4\nbreak\n]", "3 4 5 6 "},
        {"one round", "for i 5 5\nsay i", "5 "},
        {"away from the target", "n=0\nfor i 1 3 -1\n[\nsay i\nn=n+1\nif n=4\nbreak\n]",
         "1 0 -1 -2 "},
        {"past the target", "for i 1 4 2\nsay i\nsay i", "1 3 5 "},
        {"expressions", "n=2\nfor i n-1 n*2 n/2\nsay i", "1 2 3 4 "},
        {"rounded bounds", "for i 1.5 2.5\nsay i", "1 2 "},
        {"element as counter", "k=7\nfor item.k 1 2\nsay item.7", "1 2 "},
        {"counter changed in the body", "for i 1 3\n[\nsay i\ni=9\n]", "1 2 3 "},
        {"condition", "n=3\nfor n\n[\nsay n\nn=n-1\n]\nsay end", "3 2 1 end "},
        {"condition of an expression", "n=0\nfor n<3\n[\nn=n+1\nsay n\n]", "1 2 3 "},
        {"endless with break", "n=0\nfor\n[\nn=n+1\nif n=3\n[\nbreak\n]\nsay n\n]\nsay end n",
         "1 2 end 3 "},
        {"continue", "for i 1 4\n[\nif i=2\n[\ncontinue\n]\nsay i\n]", "1 3 4 "},
        {"break of a counted loop", "for i 1 9\n[\nif i=3\nbreak\nsay i\n]\nfor j 1 2\nsay j",
         "1 2 1 2 "},
        {"nested", "for i 1 2\n[\nfor j 1 3\n[\nif j=2\ncontinue\nsay i*10+j\n]\n]",
         "11 13 21 23 "},
        {"break of the inner",
         "for i 1 3\n[\nfor j 1 3\n[\nif j=2\nbreak\nsay i*10+j\n]\nif i=2\nbreak\n]\nsay end",
         "11 21 end "},
        {"last in a loop", "for i 1 2\n[\nif i=1\n[\nfor j 1 2\nsay j\n]\nelse\nsay e\n]",
         "1 2 e "},
        {"nothing to do", "for i 1 3\n[\n]\nsay i", "4 "},
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
    const struct {
        const char* condition;
        bool holds;
    } rows[] = {
        {"1", true},          {"0", false},      {"0.5", false}, {"007", false},
        {"-0", false},        {"-1", true},      {"\"\"", true}, {"word", true},
        {"\"0x\"", false},    {"x", false},      {"y", false},   {"z", true},
        {"x=0", true},        {"x=1", false},    {"1/2", false}, {"-1/2", true},
        {"1/3*3", true},      {"item.x", false}, {"t|2", false}, {"t|1", true},
        {"\"a\"*2", true},    {"0\\0", false},   {"", true},     {"?-?=99", false},
        {"1-0.5-0.5", false}, {"(y)", false},
    };
    for (const auto& row : rows) {
        const std::string setUp = "x=0\ny=0.25\nz=-0.25\nt=\"a0\"\nitem.0=\"0\"\n";
        run(setUp + "if " + row.condition + "\nsay yes\nelse\nsay no\n");
        EXPECT_EQ(said(), row.holds ? "yes\n" : "no\n") << row.condition;
    }
}

TEST_F(RThread, CountedLoopsAreNestedToALimit) {
    run("procedure p n\n[\nfor i 1 2\n[\ncall p n\n]\n]\ncall p 1\nsay never\n");
    EXPECT_THAT(boxes(), ElementsAre("test.mps:4: counted loops are nested too deep"));
    EXPECT_EQ(said(), "");
    EXPECT_FALSE(thread->isRunning());
}

// ---------------------------------------------------------------------------- procedures

TEST_F(RThread, ProceduresTakeArguments) {
    const Row rows[] = {
        {"skipped in sequence", "procedure p\n[\nsay never\n]\nsay on", "on "},
        {"call", "call p\nsay back\nwait\nprocedure p\nsay in", "in back "},
        {"arguments", "call p 1+1 \"two words\" x\nwait\nprocedure p a b c\nsay a b c",
         "2 two words x "},
        {"fewer arguments", "b=old\nc=older\ncall p 1\nwait\nprocedure p a b c\nsay a b c",
         "1 old older "},
        {"more arguments", "call p 1 2 3\nwait\nprocedure p a\nsay a", "1 "},
        {"texts, not values", "item.2=\"x\"\ni=2\ncall p item.i\ni=3\nwait\nprocedure p a\nsay a",
         "x "},
        {"into an element", "i=4\ncall p 5\nsay item.4\nwait\nprocedure p item.i\n[\n]", "5 "},
        {"one after the other", "a=1\nb=2\ncall p b a\nwait\nprocedure p a b\nsay a b", "2 2 "},
        {"recursion", "call p 3\nwait\nprocedure p n\n[\nsay n\nif n>0\ncall p n-1\nsay n\n]",
         "3 2 1 0 0 0 0 0 "},
        {"name in a variable", "f=\"p\"\nf2=\"f\"\ncall f2 7\nwait\nprocedure p a\nsay a", "7 "},
        {"procedure value", "f=p\ncall f 8\nwait\nprocedure p a\nsay a", "8 "},
        {"name in an element", "list.1=\"p\"\ni=1\ncall list.i 9\nwait\nprocedure p a\nsay a",
         "9 "},
        {"computed name", "call \"p\"+\"q\" 1\nwait\nprocedure pq a\nsay a", "1 "},
        {"nested", "call p\nwait\nprocedure p\n[\ncall q\nsay p2\n]\nprocedure q\nsay q2",
         "q2 p2 "},
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

// ---------------------------------------------------------------------------- assignment

TEST_F(RThread, AssignmentsStoreTexts) {
    const Row rows[] = {
        {"number", "x=5\nsay x x+1", "5 6 "},
        {"text of a number", "x=007\ny=x\nsay y y+1", "007 8 "},
        {"quoted", "x=\"a b\"\nsay x", "a b "},
        {"further words are ignored", "x=1 2 3\nsay x", "1 "},
        {"expression", "x=1/3\nsay x x*3", "0.333333333333333 0.999999999999999 "},
        {"error", "x=1\\0\nsay x", "1\\0 "},
        {"element", "i=2\nitem.i=5\nj=i\nsay item.2 item.j", "5 5 "},
        {"to itself", "x=3\nx=x\nx=x+x\nsay x", "6 "},
        {"part of itself", "x=\"abcdef\"\nx=x|3\nx=x|2|2\nsay x", "de "},
        {"joined to itself", "x=\"ab\"\nx=x+x\nx=x+x\nsay x", "abababab "},
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
    const struct {
        const char* text;
        const char* box;
    } rows[] = {
        {"x=1\nx=\n", "x=\nis equivalent to\ndrop x"},
        {"x=y\n", "Variable y is empty"},
        {"item.1=y\n", "Variable y is empty"},
    };
    for (const auto& row : rows) {
        run(row.text);
        EXPECT_THAT(boxes(), ElementsAre(row.box));
    }
    run("x=1\nx=\nsay x\n");
    EXPECT_EQ(said(), "x\n");
    run("x=y\nsay x\n");
    EXPECT_EQ(said(), "y\n");
    boxes();
    run("x=x\nx=item.i\n");
    EXPECT_THAT(boxes(), IsEmpty()) << "the same variable; no plain name";
}

TEST_F(RThread, MarkedReferencesDoNotOwn) {
    run("x=&5\nsay x\n");
    EXPECT_EQ(said(), "5\n");
    EXPECT_EQ(YHeap::current().get(YHeap::current().lookup("x")).ownership(),
              YVariable::Ownership::Owner)
        << "the mark goes with the first value";
}

// ---------------------------------------------------------------------------- say, drop, commands

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
        {"family", "n.1=a1\nn.2=a2\nn.1.1=a3\nn=a4\ndrop [ n\nsay n.1 n.2 n.1.1 n",
         "n.1 n.2 a3 a4 "},
        {"family and more", "n.1=a1\nx=2\ndrop [ n x\nsay n.1 x", "n.1 x "},
        {"by name", "x=1\nv=\"x\"\ndrop var v\nsay x v", "x x "},
        {"by computed name", "x1=1\ndrop var \"x\"+1\nsay x1", "x1 "},
        {"nothing of that name", "v=\"nobody\"\ndrop var v\nsay v", "nobody "},
        {"words that lack theirs", "x=1\ndrop x [\ndrop var\ndrop script\nsay x", "x "},
        {"script word that is none", "drop script other\nsay on", "on "},
        {"nothing", "drop\nsay on", "on "},
        {"constants", "drop 5 \"a\"\nsay 5 \"a\"", "5 a "},
    };
    for (const Row& row : rows) {
        run(row.text);
        boxes(); // unset names as values
        EXPECT_EQ(saidLine(), row.said) << row.name;
    }
}

TEST_F(RThread, DropStackForgetsWhoCalled) {
    run("call p\nsay never\nprocedure p\n[\ncall q\nsay never\n]\n"
        "procedure q\n[\ndrop stack\nsay Q\nwait\n]\n");
    EXPECT_EQ(said(), "Q\n");
    EXPECT_TRUE(thread->isWaiting());
}

TEST_F(RThread, UnknownCommandsAreToldOfTwice) {
    run("Boop 1 2\nsay on\n");
    EXPECT_EQ(said(), "on\n");
    EXPECT_THAT(boxes(), ElementsAre("Boop is undefined", "Keyword \"Boop\" is undefined"));
    run("x = 5\nsay x\n");
    EXPECT_EQ(said(), "x\n");
    EXPECT_THAT(boxes(), ElementsAre("x is undefined", "Keyword \"x\" is undefined"));
    EXPECT_EQ(machine.dialogs().answer, platform::Button::Ok);
}

TEST_F(RThread, MessagesAreAlerts) {
    run("Boop\n");
    const auto& box = machine.dialogs().boxes.at(0);
    EXPECT_EQ(box.caption, "Alert");
    EXPECT_EQ(box.style, 0x3000U);
}

// ---------------------------------------------------------------------------- pace

TEST_F(RThread, TheFirstPaceIsOneInstructionATurn) {
    start("say 1\nsay 2\nsay 3\n", 2);
    EXPECT_EQ(said(), "1\n2\n");
    pass(1);
    EXPECT_EQ(said(), "3\n");
    EXPECT_EQ(thread->status(), 0);
    pass(1);
    EXPECT_EQ(thread->status(), YThread::kStatusBlocked);
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

TEST_F(RThread, AScriptThatLoopsForEverGivesWayInTheEnd) {
    run("for\n[\n]\n", 2);
    EXPECT_TRUE(thread->isRunning());
    EXPECT_EQ(thread->status(), 1);
}

TEST_F(RThread, TheEndIsToldOnce) {
    int ends = 0;
    put("test.mps", "yield off\nwait\nsay x\nwait\nwait\n");
    load("test.mps");
    thread->setEndReachedLink([&] { ++ends; });
    pass(3);
    EXPECT_EQ(ends, 1) << "wait";
    YHeap& heap = YHeap::current();
    put("next.mps", "yield off\nsay end\n");
    thread->loadScript("next.mps");
    thread->run();
    pass(5);
    EXPECT_EQ(ends, 2) << "the end, once";
    EXPECT_NE(&YHeap::current(), &heap);
    thread->loadScript("next.mps");
    thread->run();
    pass(5);
    EXPECT_EQ(ends, 3) << "again after a load";
}

TEST_F(RThread, TheEndIsArmedByAnotherInstruction) {
    int ends = 0;
    put("test.mps", "yield off\nschedule 0.1 p\nwait\nwait\nsay on\nwait\n"
                    "procedure p\n[\ndrop wait\n]\n");
    load("test.mps");
    thread->setEndReachedLink([&] { ++ends; });
    pass(3);
    EXPECT_EQ(ends, 1);
    pass(4, 101);
    EXPECT_EQ(ends, 2) << "the handler's instructions lay between";
}

} // namespace
