#include "omsclass.h"
#include "omscrptb.h"
#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::ScriptTest;

struct Light : OMScriptableObject {
    void declareProperties() override {
        addDataProperty(
            "level", [this](std::string_view text) { level = text; }, [this] { return level; });
        addMethod("default", [] {});
        addMethod("blink", [] {});
        addEvent("hit");
    }
    std::string level = "0";
};

class RTrace : public ScriptTest {
  protected:
    RTrace() {
        static constexpr OMSClass kLamp{
            "Lamp", &OMScriptableObject::kClass, {}, &oms::create<Light>};
        OMSRegistry::global().registerClass(kLamp);
        YCommands::add("Hit", [] { OMScriptableObject::named("a")->fireEvent("hit"); });
    }
    /// The trace of the statement that follows the set-up: each message of one instruction, "/"
    /// for its line ends.
    std::string traceOf(const std::string& setUp, const std::string& statement, int passes = 3) {
        run(setUp + "debug f\ndebug on\n" + statement, passes);
        std::string text = said();
        const std::string own = "debug\non\n\ntest.mps\n";
        EXPECT_TRUE(text.starts_with(own)) << text;
        text.erase(0, own.size());
        std::replace(text.begin(), text.end(), '\n', '/');
        return text;
    }
};

TEST_F(RTrace, EveryStatementSaysWhatItDid) {
    const struct {
        const char* name;
        const char* setUp;
        const char* statement;
        const char* trace;
    } rows[] = {
        {"assignment", "x=1\n", "x=2\nwait", "assignment/x=2: x was [1] now [2]/wait//"},
        {"to an element", "i=3\n", "item.i=5\nwait",
         "assignment/item.i=5: item.i(item.3) was [item.3] now [5]/wait//"},
        {"if that holds", "x=1\n", "if x\nwait", "check condition/condition [x] is true///wait//"},
        {"if that does not", "x=0\n", "if x\n[\n]\nsay a b\n",
         "check condition/condition [x] is false/jumping/to say a b/a b/say//"},
        {"if without a condition", "", "if\nwait", "check condition/eternal loop///wait//"},
        {"counted loop", "", "for i 1 2\n[\n]\nwait",
         "for/counter i: from 1 to 2 by 1/"
         "loop iteration/counter i=1 target=2///jumping/to loop iteration i 1 2/"
         "loop iteration/counter i=2 target=2///jumping/to loop iteration i 1 2/"
         "loop iteration/counter i=3 target=2/jumping/leaving a loop nested 0 jumping to wait "
         "/wait//"},
        {"conditional loop", "n=1\n", "for n\n[\nbreak\n]\nwait",
         "for/loop while [n] is true/loop iteration/condition [n] is true///jumping/to wait "
         "/wait//"},
        {"call", "procedure p a b\n[\n]\n", "x=5\ncall p x+1 y z\nwait",
         "assignment/x=5: x was [x] now [5]/call/procedure p=1/"
         "procedure header/Args: a <- x+1 [6] b <- y [y] /return from procedure/at pc = 7/wait//"},
        {"timers", "n=2\nprocedure p\n[\n]\n", "schedule n p\nidle 0.25 p\nwait",
         "schedule/p (pc=3) in n [2.0] seconds/idle/p (pc=3) on 0.25 [0.2] idle seconds/wait//"},
        {"set", "a=Lamp 1\nx=3\n", "set a level 5\nset a level x\nwait",
         "set/a: property \"level\" <- [5]/set/a: property \"level\" <- x=[3]/wait//"},
        {"set from an element", "a=Lamp 1\ni=2\nitem.2=7\n", "set a level item.i\nwait",
         "set/a: property \"level\" <- item.i(item.2)=[7]/wait//"},
        {"set of nothing", "a=Lamp 1\n", "set a color 5\nwait",
         "set/a: \"color\" is not a property/wait//"},
        {"handler", "a=Lamp 1\nprocedure p\n[\n]\n", "set a hit p\nset a hit\nset a level p\nwait",
         "set/\"hit\" for a will trigger procedure [+2]/set/remove the \"hit\" handler for a/"
         "set/\"level\" for a not found/wait//"},
        {"get", "a=Lamp 1\nr=x1\n", "get a level r\nwait",
         "get/Property \"level\" of a: r was [x1] now [0]/wait//"},
        {"play", "a=Lamp 1\n", "play a blink 3\nplay a jump\nplay b\nplay a }",
         "play/method \"blink\" for [a]/play/method \"jump\" for [a] not found/"
         "play/b is not a trinket/play/default method for [a]/synchronously/"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(traceOf(row.setUp, row.statement), row.trace) << row.name;
        boxes();
    }
}

TEST_F(RTrace, InterruptsAreMarked) {
    EXPECT_EQ(traceOf("a=Lamp 1\nset a hit p\n",
                      "Hit\nwait\nprocedure p\n[\nx=1\ncall q\n]\nprocedure q\n[\n]\n"),
              "assignment/x=1: x was [x] now [1]//[interrupt]/"
              "call/procedure q=11//[interrupt]/procedure header/Args: //[interrupt]/"
              "return from procedure/at pc = 10//[interrupt]/"
              "return from interrupt//run-time call//wait//");
}

TEST_F(RTrace, TracingBeginsAndEndsWithItsStatement) {
    for (const char* pace : {"", "yield off\n"}) {
        start(std::string(pace) + "debug f\ndebug on\nx=1\ndebug off\nx=2\n");
        EXPECT_EQ(said(), "debug\non\n\ntest.mps\nassignment\nx=1: x was [x] now [1]\n") << pace;
    }
}

TEST_F(RTrace, GoesWhereItIsAskedTo) {
    std::string window;
    engine->setTraceWindow([&](std::string_view) { window += "w"; });
    for (const std::string letters : {"m", "f", "w", "mfw", "none"}) {
        window.clear();
        run("debug " + letters + "\ndebug on\n");
        const std::string seen =
            (boxes().empty() ? "" : "m") + std::string(said().empty() ? "" : "f") + window;
        EXPECT_EQ(seen, letters == "none" ? "" : letters);
    }
}

TEST_F(RTrace, CancelEndsIt) {
    machine.dialogs().answer = platform::Button::Cancel;
    run("debug on\nx=1\nx=2\n"); // the first output is the box
    EXPECT_EQ(machine.dialogs().boxes.at(0).style & platform::boxstyle::kButtonMask,
              platform::boxstyle::kOkCancel);
    EXPECT_THAT(boxes(), ElementsAre("debug\non\n\ntest.mps"));
    EXPECT_EQ(value("x"), "2");
}

} // namespace
