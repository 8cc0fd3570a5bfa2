#include "omsregistry.h"

#include "omsclass.h"
#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using testing_support::ScriptTest;

struct Plain : OMScriptableObject {
    ~Plain() override { log("gone"); }
    void declareProperties() override { log("declared"); }

    static std::unique_ptr<OMScriptableObject> create() {
        log("made " + OMSArguments::global().next());
        return std::make_unique<Plain>();
    }
    static void log(std::string text) { done.push_back(std::move(text)); }
    static std::vector<std::string> done;
};
std::vector<std::string> Plain::done;

class OMSRegistries : public ScriptTest {
  protected:
    OMSRegistries() { Plain::done.clear(); }
    ~OMSRegistries() override { OMSRegistry::global().setComponentLoading(false); }

    std::unique_ptr<OMScriptableObject> create(std::string_view name,
                                               std::initializer_list<std::string_view> arguments) {
        OMSArguments::global().clear();
        for (const auto argument : arguments) OMSArguments::global().push(argument);
        return registry.create(name);
    }

    OMSRegistry& registry = OMSRegistry::global();
};

// ---------------------------------------------------------------------------- classes

TEST_F(OMSRegistries, CreatesDeclaresAndAnnounces) {
    registry.registerClass("Plain", Plain::create);
    registry.attachClassHandler("Plain", [] { Plain::log("born"); });
    registry.setCreationHook([](OMScriptableObject&) { Plain::log("hook"); });
    const auto object = create("Plain", {"red"});
    EXPECT_THAT(Plain::done, ElementsAre("made red", "declared", "born", "hook"));
    EXPECT_EQ(object->classEntry(), registry.find("Plain"));
    EXPECT_EQ(OMScriptableObject::lastBorn, object.get());
    EXPECT_NE(object->property("born"), nullptr);

    EXPECT_FALSE(create("plain", {})) << "case counts";
    EXPECT_FALSE(registry.attachClassHandler("None", nullptr));
    registry.attachClassHandler("Plain", nullptr);
    Plain::done.clear();
    create("Plain", {"blue"});
    EXPECT_THAT(Plain::done, ElementsAre("made blue", "declared", "hook", "gone"));
}

TEST_F(OMSRegistries, TheFirstRegistrationOfANameStays) {
    registry.registerClass("Plain", Plain::create);
    registry.registerClass("Plain", [] { return std::unique_ptr<OMScriptableObject>(); });
    EXPECT_TRUE(create("Plain", {}));
    registry.unregisterClass("Other");
    EXPECT_TRUE(registry.find("Plain"));
    registry.unregisterClass("Plain");
    EXPECT_FALSE(registry.find("Plain"));
}

TEST_F(OMSRegistries, TheLastClassTakesTheGlobalsWithIt) {
    int told = 0;
    OMSobException::setNotification([&](const OMSobException&) { ++told; });
    registry.registerClass("One", Plain::create);
    registry.registerClass("Two", Plain::create);
    OMSArguments::global().push("left");
    OMSobExceptionMessage("kept").report();
    registry.unregisterClass("One");
    EXPECT_TRUE(OMSobException::current());
    registry.unregisterClass("Two");
    EXPECT_FALSE(OMSobException::current());
    EXPECT_EQ(OMSArguments::global().count(), 0U);
    OMSobExceptionMessage("unheard").report();
    EXPECT_EQ(told, 1);
    OMSobException::clearCurrent();
}

TEST_F(OMSRegistries, ObjectsOfTheProgramAnnounceThemselves) {
    registry.registerClass("Plain", Plain::create);
    registry.attachClassHandler("Plain", [] { Plain::log("born"); });
    Plain object;
    object.announceBorn("Plain");
    object.announceBorn("Plain");
    EXPECT_THAT(Plain::done, ElementsAre("declared", "born", "born")) << "declared once";
    Plain other;
    other.announceBorn("Unknown");
    EXPECT_EQ(other.classEntry(), nullptr);
    EXPECT_EQ(OMScriptableObject::lastBorn, &other);
}

TEST_F(OMSRegistries, ReportsCarryTheirKind) {
    std::vector<std::string> heard;
    OMSobException::setNotification([&](const OMSobException& report) {
        heard.push_back(std::string(report.kind()) + " " + report.text());
    });
    OMSobException("a").report();
    OMSobExceptionMessage("b").report();
    OMSobExceptionWarning("c").report();
    EXPECT_THAT(heard, ElementsAre("error a", "message b", "warning c"));
    EXPECT_EQ(OMSobException::current()->text(), "c");
    OMSobException::setNotification(nullptr);
    OMSobException::clearCurrent();
}

// ---------------------------------------------------------------------------- components

TEST_F(OMSRegistries, ComponentsAreLoadedOnDemand) {
    auto& modules = machine.modules();
    modules.libraries["Extra.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass("Extra", Plain::create);
    };
    EXPECT_FALSE(registry.isClass("Extra")) << "not enabled";
    EXPECT_THAT(modules.loaded, IsEmpty());

    registry.setComponentLoading(true);
    run("x=Extra 1\ny=Extra 2\nz=Absent\nz=Absent\n");
    EXPECT_THAT(modules.loaded, ElementsAre("Extra.lrn", "Absent.lrn")) << "once each";
    EXPECT_THAT(Plain::done, ElementsAre("made 1", "declared", "made 2", "declared"));
    EXPECT_EQ(value("z"), "Absent");
    EXPECT_EQ(modules.unloaded, 0);
    thread->unload();
    registry.unregisterClass("Extra");
    EXPECT_EQ(modules.unloaded, 1);
}

TEST_F(OMSRegistries, AllComponentsOfTheFolderAreLoaded) {
    auto& modules = machine.modules();
    for (const char* file : {"One.lrn", "Two.LRN", "three.txt", ".lrn"})
        machine.files().put(file, "");
    machine.files().putFolder("folder.lrn");
    modules.libraries["One.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass("One", Plain::create);
    };
    modules.libraries["Two.LRN"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass("Two", Plain::create);
    };
    registry.loadAllComponents();
    EXPECT_THAT(modules.loaded, ElementsAre("One.lrn", "Two.LRN"));
    registry.loadAllComponents();
    EXPECT_EQ(modules.loaded.size(), 2U) << "they are there";
}

using OMSRegistryDeath = OMSRegistries;

TEST_F(OMSRegistryDeath, AComponentThatRegistersNothingIsFatal) {
    machine.modules().libraries["Empty.lrn"] = {};
    machine.modules().libraries["Wrong.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass("Other", Plain::create);
    };
    registry.setComponentLoading(true);
    for (const char* name : {"Empty", "Wrong"})
        EXPECT_EXIT((void)registry.isClass(name), ExitedWithCode(255),
                    "!registryEntry(.|\n)*Component registration failure");
}

// ---------------------------------------------------------------------------- class tables

/// One property of every type that a table can convert.
class Typed : public OMScriptableObject {
  public:
    Typed() { declareProperties(); }
    void declareProperties() override;

    int whole() const { return whole_; }
    void setWhole(int value) { whole_ = value; }
    bool flag() const { return flag_; }
    void setFlag(bool value) { flag_ = value; }
    double real() { return real_; }
    void setReal(double value) { real_ = value; }
    std::string text() const { return text_; }
    void setText(std::string value) { text_ = std::move(value); }
    platform::Rect area() const { return {1, -2, 30, 40}; }
    void mix(int a, std::optional<int> b, const std::string& c, std::optional<double> d, bool e) {
        text_ = std::to_string(a) + "/" + (b ? std::to_string(*b) : "-") + "/" + c + "/" +
                (d ? oms::toText(*d) : "-") + "/" + (e ? "yes" : "no");
    }

  private:
    int whole_ = 0;
    bool flag_ = false;
    double real_ = 0;
    std::string text_;
};

constexpr OMSEntry kTyped[] = {
    oms::data<&Typed::whole, &Typed::setWhole>("whole"),
    oms::data<&Typed::flag, &Typed::setFlag>("flag"),
    oms::data<&Typed::real, &Typed::setReal>("real"),
    oms::data<&Typed::text, &Typed::setText>("text"),
    oms::readOnly<&Typed::area>("area"),
    oms::method<&Typed::mix>("mix"),
    oms::event("done"),
};

void Typed::declareProperties() { declare(kTyped); }

TEST_F(OMSRegistries, TablesConvertAtTheScriptBoundary) {
    const struct {
        const char* property;
        const char* written;
        const char* read;
    } rows[] = {
        {"whole", "12", "12"},
        {"whole", " -7x", "-7"},
        {"whole", "", "0"},
        {"whole", "1e3", "1"},
        {"whole", "99999999999", "2147483647"},
        {"flag", "2", "1"},
        {"flag", "0", "0"},
        {"flag", "true", "0"},
        {"real", "0.1", "0.1"},
        {"real", "1e20", "1e+20"},
        {"real", "x", "0"},
        {"text", "a \xA5 b", "a \xA5 b"},
        {"area", "anything", "1 -2 30 40"},
    };
    Typed object;
    for (const auto& row : rows) {
        EXPECT_TRUE(object.setProperty(row.property, row.written)) << row.property;
        EXPECT_EQ(object.getProperty(row.property), row.read) << row.property << row.written;
    }
    EXPECT_FALSE(object.setProperty("mix", "1"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Refused);
    EXPECT_FALSE(object.getProperty("done"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Refused);
    EXPECT_FALSE(object.getProperty("none"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Absent);
}

TEST_F(OMSRegistries, MethodsReadTheirArgumentsInOrder) {
    Typed object;
    const struct {
        std::initializer_list<std::string_view> arguments;
        const char* seen;
    } rows[] = {
        {{}, "0/-///no"},
        {{"1"}, "1/-///no"},
        {{"1", "2", "three", "4.5", "6", "seven"}, "1/2/three/4.5/yes"},
        {{"1", "", "", "", "0"}, "1/-//-/no"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(object.invoke("mix", row.arguments));
        std::string expected = row.seen;
        if (const auto gap = expected.find("///"); gap != std::string::npos)
            expected.replace(gap, 3, "//-/");
        EXPECT_EQ(object.getProperty("text"), expected);
    }
    EXPECT_FALSE(object.invoke("whole", {}));
    EXPECT_FALSE(object.invoke("none", {}));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Absent);
}

TEST_F(OMSRegistries, PropertiesAreReplacedByName) {
    Typed object;
    object.addDataProperty("text", nullptr, [] { return std::string("new"); });
    object.addMethod("mix", [] { Plain::log("new mix"); });
    EXPECT_TRUE(object.setProperty("text", "ignored")) << "only read, so writes are accepted";
    EXPECT_EQ(object.getProperty("text"), "new");
    EXPECT_TRUE(object.invoke("mix", {}));
    object.addDefaultMethod([] { Plain::log("default"); });
    EXPECT_TRUE(object.invoke("default", {}));
    EXPECT_THAT(Plain::done, ElementsAre("new mix", "default"));
    object.addEvent("text");
    EXPECT_FALSE(object.setProperty("text", "x"));
    EXPECT_TRUE(object.attachHandler(
        "text", [] { Plain::log("first"); }, [] { Plain::log("second"); }));
    EXPECT_TRUE(object.fireEvent("text"));
    EXPECT_EQ(Plain::done.back(), "second");
    EXPECT_TRUE(object.attachHandler("text", nullptr));
    EXPECT_FALSE(object.fireEvent("text"));
}

TEST_F(OMSRegistries, ArgumentsRunOutQuietly) {
    OMSArguments& arguments = OMSArguments::global();
    arguments.clear();
    arguments.push("one");
    arguments.push("");
    EXPECT_EQ(arguments.next(), "one");
    EXPECT_TRUE(arguments.hasNext());
    EXPECT_EQ(arguments.next(), "");
    EXPECT_FALSE(arguments.hasNext());
    EXPECT_EQ(arguments.next(), "");
    EXPECT_EQ(arguments.nextInteger(), 0);
    arguments.rewind();
    EXPECT_EQ(arguments.next(), "one");
}

TEST_F(OMSRegistries, WatchesKnowWhenTheirObjectIsGone) {
    auto object = std::make_unique<Plain>();
    Plain other;
    OMSWatch a(object.get());
    OMSWatch b(object.get());
    {
        const OMSWatch inner(object.get());
        b.watch(&other);
    }
    OMSWatch c(object.get());
    object.reset();
    EXPECT_FALSE(a);
    EXPECT_FALSE(c);
    EXPECT_EQ(b.object(), &other);
    a.watch(&other);
    EXPECT_TRUE(a);
}

TEST_F(OMSRegistries, NamedFindsWhatAVariableHolds) {
    YHeap& heap = YHeap::current();
    Plain object;
    heap.get(heap.intern("item.2")).setObject(std::unique_ptr<OMScriptableObject>(&object));
    heap.get(heap.intern("i")).setInteger(2);
    heap.intern("item.i");
    EXPECT_EQ(OMScriptableObject::named("item.2"), &object);
    EXPECT_EQ(OMScriptableObject::named("item.i"), &object);
    EXPECT_EQ(OMScriptableObject::named("i"), nullptr);
    EXPECT_EQ(OMScriptableObject::named("nobody"), nullptr);
    EXPECT_EQ(heap.lookup("nobody"), -1) << "asking makes no variable";
    EXPECT_EQ(OMScriptableObject::named("item.i", true), &object);
    EXPECT_EQ(heap.get(heap.lookup("item.2")).ownership(), YVariable::Ownership::Reference);
    heap.get(heap.lookup("item.2")).makeEmpty();
    EXPECT_THAT(Plain::done, IsEmpty()) << "the variable did not own it any more";
}

// ---------------------------------------------------------------------------- commands

TEST_F(OMSRegistries, CommandsAreFoundByTheirExactName) {
    std::vector<std::string> heard;
    YCommands::add("PlaySound", [&] { heard.push_back("first " + OMSArguments::global().next()); });
    YCommands::add("PlaySound", [&] { heard.emplace_back("second"); });
    EXPECT_EQ(YCommands::find("playsound"), nullptr);
    EXPECT_EQ(YCommands::find("PlaySound")->name(), "PlaySound");
    run("i=2\nitem.2=two\nPlaySound item.i\n\"PlaySound\" 1\n");
    EXPECT_THAT(heard, ElementsAre("first two"));
    boxes();
    put("later.mps", "PlaySound 1\nwait\nPlaySound 2\n");
    load("later.mps");
    pass(1);
    YCommands::clear();
    pass(3);
    EXPECT_THAT(boxes(), IsEmpty());
    start("PlaySound 1\n");
    EXPECT_THAT(boxes(),
                ElementsAre("PlaySound is undefined", "Keyword \"PlaySound\" is undefined"));
}

} // namespace
