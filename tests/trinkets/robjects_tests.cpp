#include "omsclass.h"
#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScriptTest;

/// A lamp: something with every kind of property, which tells what is done to it.
class Lamp : public OMScriptableObject {
  public:
    static std::unique_ptr<OMScriptableObject> create() {
        const std::string first = OMSArguments::global().next();
        if (first == "broken") return nullptr;
        auto lamp = std::make_unique<Lamp>();
        lamp->note_ = first;
        for (OMSArguments& more = OMSArguments::global(); more.hasNext();)
            lamp->note_ += "," + more.next();
        return lamp;
    }
    Lamp() { ++alive; }
    Lamp(const Lamp& other) : OMScriptableObject(other), level_(other.level_), note_(other.note_) {
        ++alive;
    }
    ~Lamp() override { --alive; }

    std::unique_ptr<OMScriptableObject> duplicate() override {
        return std::make_unique<Lamp>(*this);
    }
    static const OMSClass kClass;

    // Script hooks.
    int level() const { return level_; }
    void setLevel(int level) {
        level_ = level;
        if (level > 100) {
            fireEvent("hot");
            fireEvent("smoke");
        }
    }
    std::string note() const { return note_; }
    void setNote(const std::string& note) { note_ = note; }
    std::string arguments() const {
        std::string all;
        for (OMSArguments& list = OMSArguments::global(); list.hasNext();)
            all += "[" + list.next() + "]";
        return all;
    }
    int age() const { return 7; }
    void turnOn() { note_ = "on"; }
    void blink(std::optional<int> times, std::optional<std::string> color) {
        note_ = std::to_string(times.value_or(-1)) + color.value_or("none");
    }
    void finish() { fireCompletion(); }
    void start() {}
    void warmUp() { fireEvent("hot"); }

    static int alive;

  private:
    int level_ = 0;
    std::string note_;
};
int Lamp::alive = 0;

constexpr OMSEntry kVocabulary[] = {
    oms::data<&Lamp::level, &Lamp::setLevel>("level", "brightness"),
    oms::data<&Lamp::note, &Lamp::setNote>("note", "any text"),
    oms::readOnly<&Lamp::arguments>("arguments", "what it was asked with"),
    oms::readOnly<&Lamp::age>("age", "in hours"),
    oms::method<&Lamp::turnOn>("default"),
    oms::method<&Lamp::blink>("blink", "[times] [color]"),
    oms::method<&Lamp::finish>("finish", "at once"),
    oms::lasting<&Lamp::start>("start", "finishes later"),
    oms::method<&Lamp::warmUp>("warmUp", "fires hot"),
    oms::event("hot"),
    oms::event("smoke"),
    oms::event("hit"),
};

const OMSClass Lamp::kClass{"Lamp", &OMScriptableObject::kClass, kVocabulary, &Lamp::create};

class RObjects : public ScriptTest {
  protected:
    RObjects() {
        Lamp::alive = 0;
        OMSRegistry::global().registerClass(Lamp::kClass);
        YCommands::add("Hit", [] {
            if (auto* hit = OMScriptableObject::named(OMSArguments::global().next()))
                hit->fireEvent("hit");
        });
    }
    ~RObjects() override {
        if (thread) thread->unload();
        EXPECT_EQ(Lamp::alive, 0);
    }
    Lamp* lamp(const std::string& name) {
        return static_cast<Lamp*>(OMScriptableObject::named(name));
    }
    void fire(const std::string& name, const std::string& event) { lamp(name)->fireEvent(event); }
};

TEST_F(RObjects, ClassNamesConstruct) {
    run("a=Lamp red 2 1+2 item.i\nget a note n\nb=Lamp\nc=Lamp broken\nsay n c\n");
    EXPECT_EQ(said(), "red,2,3,item.i 0\n");
    EXPECT_THAT(boxes(), ElementsAre("Constructor Lamp has no parameters"));
    EXPECT_EQ(Lamp::alive, 2);
    EXPECT_EQ(YHeap::current().get(YHeap::current().lookup("a")).ownership(),
              YVariable::Ownership::Owner);
}

TEST_F(RObjects, VariablesOwnWhatTheyConstruct) {
    const struct {
        const char* name;
        const char* statements;
        int alive;
    } rows[] = {
        {"kept", "", 1},
        {"overwritten", "a=5\n", 0},
        {"dropped", "drop a\n", 0},
        {"copied", "b=a\n", 2},
        {"referred to", "b=&a\n", 1},
        {"reference dropped by name", "b=&a\nn=\"b\"\ndrop var n\n", 1},
        {"reference dropped", "b=&a\ndrop b\n", 0},
        {"element", "i=1\nitem.i=Lamp 2\ndrop item.1\n", 1},
        {"elements", "item.1=Lamp 2\nitem.2=Lamp 3\nitem.1.1=Lamp 4\ndrop [ item\n", 2},
        {"all", "b=Lamp 2\nc=&a\ndrop trinkets\n", 0},
        {"construction into a reference", "c=&a\nc=Lamp 2\nc=0\n", 1},
    };
    for (const auto& row : rows) {
        run(std::string("a=Lamp 1\n") + row.statements);
        EXPECT_EQ(Lamp::alive, row.alive) << row.name;
        thread->unload();
        EXPECT_EQ(Lamp::alive, 0) << row.name;
    }
}

TEST_F(RObjects, DroppedObjectsAreForgottenEverywhere) {
    run("a=Lamp 1\nb=&a\nc=&b\ndrop a\nsay a b c\n");
    EXPECT_EQ(said(), "a b c\n");
    run("a=Lamp 1\nset a hit p\nHit \"a\"\nprocedure p\n[\ndrop RECEIVER\n]\nsay a RECEIVER\n");
    EXPECT_EQ(said(), "a RECEIVER\n");
    EXPECT_THAT(engine->records(), IsEmpty());
}

TEST_F(RObjects, PropertiesAreReadAndWritten) {
    const struct {
        const char* name;
        const char* statements;
        const char* said;
        std::vector<std::string> boxes;
    } rows[] = {
        {"number", "set a level 5\nget a level r\n", "5", {}},
        {"expression", "x=4\nset a level x*2+1\nget a level r\n", "9", {}},
        {"of an element", "i=1\nitem.i=Lamp in\nget item.i note r\n", "in", {}},
        {"read only", "set a age 5\nget a age r\n", "7", {}},
        {"arguments", "i=2\nget a arguments word 1+1 item.i r\n", "[word][2][item.2]", {}},
        {"method", "r=\"none\"\nget a blink r\n", "none", {"Property blink not found"}},
        {"unknown", "r=\"none\"\nget a sound r\n", "none", {"Property sound not found"}},
        {"set a method", "r=1\nset a blink 5\n", "1", {"Procedure 5 not found"}},
        {"set without an object",
         "r=1\nset b level 5\n",
         "1",
         {"b is not a trinket,\nso \"set\" won't work here"}},
        {"get without an object",
         "r=1\nget b level r\n",
         "1",
         {"b is not a trinket,\nso \"get\" won't work here"}},
        {"set a class", "r=1\nset Lamp level 5\n", "1", {"Property level not found"}},
        {"own name", "get a name r\n", "a", {}},
    };
    for (const auto& row : rows) {
        run(std::string("a=Lamp 1\n") + row.statements + "say r\n");
        EXPECT_EQ(said(), std::string(row.said) + "\n") << row.name;
        EXPECT_EQ(boxes(), row.boxes) << row.name;
    }
}

TEST_F(RObjects, TheReceiverIsNamedAfterItsHandler) {
    const std::string handler = "procedure p\n[\nget RECEIVER name r\nsay r\n]\n";
    run("a=Lamp 1\nb=&a\nset b hot p\nset a hit p\nHit \"a\"\n" + handler);
    EXPECT_EQ(said(), "b\n") << "the first record that was made";
    EXPECT_THAT(boxes(), ElementsAre("RECEIVER event name b\ndoes not match\ntrinket real name a",
                                     "Found eventRec holding the same trinket under the name a"));
    run("a=Lamp 1\nset Lamp born p\nb=Lamp 2\n" + handler);
    EXPECT_EQ(said(), "\n") << "nobody owns it yet";
}

TEST_F(RObjects, MethodsAreRunWithTheirArguments) {
    const struct {
        const char* name;
        const char* statement;
        const char* note;
        std::vector<std::string> boxes;
    } rows[] = {
        {"default", "play a", "on", {}},
        {"no arguments", "play a blink", "-1none", {}},
        {"two", "play a blink 1+1 \"dark red\" more", "2dark red", {}},
        {"empty argument", "play a blink \"\" red", "-1red", {}},
        {"unknown", "play a jump", "1", {"Method jump not found"}},
        {"a property", "play a level", "1", {"Method level not found"}},
        {"no object", "play b", "1", {"b is not a trinket"}},
        {"unknown, synchronously", "play a jump }", "1", {"Method jump not found"}},
        {"reports itself", "play a finish }", "1", {}},
    };
    for (const auto& row : rows) {
        run(std::string("a=Lamp 1\n") + row.statement + "\nget a note n\nsay n\n");
        EXPECT_EQ(said(), std::string(row.note) + "\n") << row.name;
        EXPECT_EQ(boxes(), row.boxes) << row.name;
    }
}

TEST_F(RObjects, ASynchronousPlayWaitsForTheObject) {
    run("a=Lamp 1\nset a hit p\nplay a start }\nsay done\nprocedure p\n[\nsay hit\n]\n");
    EXPECT_EQ(said(), "");
    EXPECT_EQ(thread->status(), YThread::Status::Blocked);
    fire("a", "hit");
    pass(5);
    EXPECT_EQ(said(), "") << "no events meanwhile";
    lamp("a")->finish();
    pass(1);
    EXPECT_EQ(said(), "done\n");
    fire("a", "hit");
    EXPECT_EQ(said(), "hit\n");
    lamp("a")->finish();
    pass(1);
    EXPECT_EQ(said(), "") << "the link fires once";
}

TEST_F(RObjects, ASynchronousPlayEndsWithTheObject) {
    run("a=Lamp 1\nb=&a\nplay b start }\nsay done\n");
    delete lamp("a");
    pass(1);
    EXPECT_EQ(said(), "done\n");
}

TEST_F(RObjects, HandlersRunAtOnceAndGiveBack) {
    run("a=Lamp 1\nset a hit p\nsuspend\nHit \"a\"\nresume\nsay one\nHit \"a\"\nsay three\nwait\n"
        "say never\n"
        "procedure p\n[\nget RECEIVER note n\ncall q n\nsay back\n]\n"
        "procedure q what\n[\nsay two what\n]\n");
    EXPECT_EQ(said(), "one\ntwo 1\nback\nthree\n") << "a suspended event is not made up for";
    fire("a", "hit");
    EXPECT_EQ(said(), "two 1\nback\n") << "without a pass of the main loop";
    EXPECT_TRUE(thread->isWaiting());
    EXPECT_THAT(boxes(), IsEmpty());
    EXPECT_THAT(failedChecks, IsEmpty());
}

TEST_F(RObjects, HandlersAreReplacedAndRemoved) {
    run("a=Lamp 1\nset a hit p\nset a hit q\nHit \"a\"\nset a hit\nHit \"a\"\n"
        "set a hit p\nHit \"a\"\na=0\n"
        "procedure p\n[\nsay P\n]\nprocedure q\n[\nsay Q\n]\n");
    EXPECT_EQ(said(), "Q\nP\n");
    EXPECT_THAT(engine->records(), IsEmpty()) << "they went with the object";

    run("a=Lamp 1\nset a jump p\nset a level p\nset a blink p\n"
        "x=\"+99999999999\"\nset a hit x\nx=\"+500\"\nset a hit x\nHit \"a\"\n"
        "procedure p\n[\nsay P\n]\n");
    EXPECT_EQ(said(), "");
    EXPECT_THAT(boxes(),
                ElementsAre("Event jump not found", "Event level not found",
                            "Event blink not found", "Event hit not found", "Event hit not found"));
    EXPECT_THAT(engine->records(), IsEmpty());
}

TEST_F(RObjects, AHandlerMayWaitAndGoOnLater) {
    run("a=Lamp 1\nset a hit p\nset a hot q\nwait\nsay main\n"
        "procedure p\n[\nsay p1\nwait\nsay p2\n]\nprocedure q\n[\nsay Q\ndrop wait\n]\n");
    fire("a", "hit");
    pass(3);
    EXPECT_EQ(said(), "p1\n");
    fire("a", "hot"); // ends the first handler
    EXPECT_THAT(boxes(), ElementsAre("Nested interrupt on a's event"));
    pass(3);
    EXPECT_EQ(said(), "Q\nmain\n");
}

TEST_F(RObjects, LoopsOfAHandlerThatIsGivenUpAreLeft) {
    run("a=Lamp 1\nset a hit p\nset a hot q\nfor k 1 3\n[\nwait\nsay k\n]\nsay end\n"
        "procedure p\n[\nfor i 5 9\n[\nwait\n]\n]\nprocedure q\n[\ndrop wait\n]\n");
    for (int round = 0; round < 3; ++round) {
        fire("a", "hit");
        pass(2);
        fire("a", "hot");
        pass(2);
    }
    EXPECT_EQ(said(), "1\n2\n3\nend\n");
    EXPECT_EQ(boxes().size(), 3U) << "nested interrupts";
}

TEST_F(RObjects, EndlessEventsStopTheThread) {
    run("a=Lamp 1\nset a hit p\nHit \"a\"\nsay never\nprocedure p\n[\nHit \"a\"\n]\n");
    const auto shown = boxes();
    EXPECT_EQ(shown.size(), static_cast<std::size_t>(YEngine::kMaxDeliveries));
    EXPECT_EQ(shown.back(), "test.mps:8: events are nested too deep");
    EXPECT_FALSE(thread->isRunning());
    EXPECT_EQ(said(), "");
}

TEST_F(RObjects, EventsDuringACallFromTheScriptAreIgnored) {
    run("a=Lamp 1\nset a hot p\nset a level 200\nget a level r\nsay r\nplay a warmUp\nset a hot\n"
        "play a warmUp\nset a level 300\nprocedure p\n[\nsay never\n]\n");
    EXPECT_EQ(said(), "200\n");
    EXPECT_THAT(boxes(),
                ElementsAre("Setting property \"level\"\ncaused event \"hot\" (ignored)\n",
                            "Invoking method \"warmUp\"\ncaused event \"hot\" (ignored)\n"));
}

TEST_F(RObjects, TheTextOfIgnoredEventsHasALimit) {
    struct Noisy : OMScriptableObject {
        void declareProperties() override {
            addEvent("quiet");
            addEvent("loud");
            addMethod("default", [this] {
                for (int i = 0; i < 100; ++i) fireEvent("quiet");
                fireEvent("loud");
            });
        }
    };
    static constexpr OMSClass kNoisy{"Noisy", &OMScriptableObject::kClass, {}, &oms::create<Noisy>};
    OMSRegistry::global().registerClass(kNoisy);
    run("a=Noisy 1\nset a loud p\nplay a\nprocedure p\n[\n]\n");
    const auto shown = boxes();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_TRUE(shown[0].starts_with("Invoking method \"default\"\ncaused event \"quiet\""));
    EXPECT_EQ(shown[0].size(), 980U);
}

TEST_F(RObjects, PropertiesMayGoWhileTheyAreUsed) {
    struct Shy : OMScriptableObject {
        void declareProperties() override {
            const std::string text(100, 'x'); // of their own, so that a use after the end shows
            addDataProperty(
                "level",
                [this, text](std::string_view value) {
                    removeProperty("level");
                    OMScriptableObject::setResult(std::string(value) + text.substr(99));
                },
                nullptr);
            addDataProperty("note", nullptr, [this, text] {
                removeProperty("note");
                return text.substr(98);
            });
            addMethod("leave", [this, text] {
                removeProperty("leave");
                OMScriptableObject::setResult(text.substr(97));
            });
        }
    };
    static constexpr OMSClass kShy{"Shy", &OMScriptableObject::kClass, {}, &oms::create<Shy>};
    OMSRegistry::global().registerClass(kShy);
    run("a=Shy 1\nset a level 5\nsay RESULT\nget a note r\nsay r\nplay a leave\nsay RESULT\n"
        "set a level 5\nget a note r\nplay a leave\n");
    EXPECT_EQ(said(), "5x\nxx\nxxx\n");
    EXPECT_THAT(boxes(), ElementsAre("Property level not found", "Property note not found",
                                     "Method leave not found"));
}

TEST_F(RObjects, ClassHandlersHearOfEveryBirthAndMayEndIt) {
    run("set Lamp born p\na=Lamp one\nb=a\nset Lamp born\nc=Lamp three\n"
        "procedure p\n[\nget RECEIVER note n\nsay n\n]\n");
    EXPECT_EQ(said(), "one\none\n") << "copies are born too";
    EXPECT_THAT(engine->records(), IsEmpty());
    const std::string kill = "procedure p\n[\ndrop RECEIVER\n]\n";
    run("set Lamp born p\na=Lamp one\nsay a\nb=5\nb=a\nsay b\n" + kill);
    EXPECT_EQ(said(), "0\n0\n");
    run("a=Lamp one\nset Lamp born p\nb=a\nsay b\n" + kill);
    EXPECT_EQ(said(), "b\n") << "a duplicate that did not live";
    EXPECT_EQ(Lamp::alive, 1);
}

TEST_F(RObjects, ResultsComeBackThroughRESULT) {
    YCommands::add("Third", [] { OMScriptableObject::setResult(1.0 / 3); });
    run("Third\nsay RESULT RESULT*3\n");
    EXPECT_EQ(said(), "0.333333333333333 0.999999999999999\n");
}

} // namespace
