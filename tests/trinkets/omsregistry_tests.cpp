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

constexpr OMSClass plain(std::string_view name) {
    return {name, &OMScriptableObject::kClass, {}, &Plain::create};
}
constexpr OMSClass kPlain = plain("Plain");
constexpr OMSClass kOne = plain("One");
constexpr OMSClass kTwo = plain("Two");

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

TEST_F(OMSRegistries, CreatesDeclaresAndAnnounces) {
    registry.registerClass(kPlain);
    registry.attachClassHandler("Plain", [] { Plain::log("born"); });
    registry.setCreationHook([](OMScriptableObject&) { Plain::log("hook"); });
    const auto object = create("Plain", {"red"});
    EXPECT_THAT(Plain::done, ElementsAre("made red", "declared", "born", "hook"));
    EXPECT_EQ(object->classEntry(), registry.find("Plain"));
    EXPECT_EQ(OMScriptableObject::lastBorn, object.get());
    EXPECT_FALSE(create("plain", {})) << "case counts";
    EXPECT_FALSE(registry.attachClassHandler("None", nullptr));
    registry.attachClassHandler("Plain", nullptr);
    static constexpr OMSClass kRefusing{
        "Plain", nullptr, {}, [] { return std::unique_ptr<OMScriptableObject>(); }};
    registry.registerClass(kRefusing);
    Plain::done.clear();
    create("Plain", {"blue"});
    EXPECT_THAT(Plain::done, ElementsAre("made blue", "declared", "hook", "gone"))
        << "the first registration stays";
}

TEST_F(OMSRegistries, TheLastClassTakesTheGlobalsWithIt) {
    std::string told;
    OMSobException::setNotification([&](const OMSobException& report) {
        told += std::string(report.kind()) + " " + report.text() + "/";
    });
    registry.registerClass(kOne);
    registry.registerClass(kTwo);
    OMSArguments::global().push("left");
    OMSobExceptionWarning("kept").report();
    registry.unregisterClass("One");
    EXPECT_TRUE(OMSobException::current());
    registry.unregisterClass("Two");
    EXPECT_FALSE(OMSobException::current());
    EXPECT_EQ(OMSArguments::global().count(), 0U);
    OMSobExceptionMessage("unheard").report();
    EXPECT_EQ(told, "warning kept/");
    OMSobException::clearCurrent();
}

TEST_F(OMSRegistries, ComponentsAreLoadedOnce) {
    auto& modules = machine.modules();
    for (const char* file : {"One.lrn", "Two.LRN", "three.txt", ".lrn"})
        machine.files().put(file, "");
    machine.files().putFolder("folder.lrn");
    modules.libraries["One.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass(kOne);
    };
    modules.libraries["Two.LRN"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass(kTwo);
    };
    EXPECT_FALSE(registry.isClass("One")) << "not enabled";
    registry.setComponentLoading(true);
    run("x=One 1\ny=One 2\nz=Absent\nz=Absent\n");
    EXPECT_THAT(modules.loaded, ElementsAre("One.lrn", "Absent.lrn"));
    EXPECT_EQ(value("z"), "Absent");
    thread->unload();
    registry.loadAllComponents();
    registry.loadAllComponents();
    EXPECT_THAT(modules.loaded, ElementsAre("One.lrn", "Absent.lrn", "Two.LRN"));
    registry.unregisterClass("One");
    EXPECT_EQ(modules.unloaded, 1);
}

TEST_F(OMSRegistries, ALibraryStaysForAllItsClasses) {
    auto& modules = machine.modules();
    machine.files().put("Two.lrn", "");
    modules.libraries["Two.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass(kOne);
        OMSRegistry::global().registerClass(kTwo);
    };
    registry.setComponentLoading(true);
    EXPECT_TRUE(registry.isClass("Two"));
    registry.unregisterClass("Two");
    EXPECT_EQ(modules.unloaded, 0);
    registry.unregisterClass("One");
    EXPECT_EQ(modules.unloaded, 1);
}

TEST_F(OMSRegistries, AComponentMayNeedAnother) {
    auto& modules = machine.modules();
    for (const char* file : {"One.lrn", "Two.lrn"}) machine.files().put(file, "");
    modules.libraries["One.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass(kOne);
    };
    modules.libraries["Two.lrn"][OMSRegistry::kComponentEntry] = [] {
        EXPECT_TRUE(OMSRegistry::global().isClass("One"));
        OMSRegistry::global().registerClass(kTwo);
    };
    registry.setComponentLoading(true);
    EXPECT_TRUE(registry.isClass("Two"));
    EXPECT_EQ(modules.unloaded, 0);
    registry.unregisterClass("Two");
    EXPECT_EQ(modules.unloaded, 1);
    EXPECT_TRUE(create("One", {}));
}

TEST_F(OMSRegistries, AClassThatOnlyHasHeirsIsNotCreated) {
    static constexpr OMSClass kBase{"Base", &OMScriptableObject::kClass, {}};
    registry.registerClass(kBase);
    EXPECT_FALSE(create("Base", {}));
}

using OMSRegistryDeath = OMSRegistries;

TEST_F(OMSRegistryDeath, AComponentThatRegistersNothingIsFatal) {
    machine.modules().libraries["Empty.lrn"] = {};
    machine.modules().libraries["Wrong.lrn"][OMSRegistry::kComponentEntry] = [] {
        OMSRegistry::global().registerClass(kPlain);
    };
    registry.setComponentLoading(true);
    for (const char* name : {"Empty", "Wrong"})
        EXPECT_EXIT((void)registry.isClass(name), ExitedWithCode(255),
                    "!registryEntry(.|\n)*Component registration failure");
}

/// One property of every type that a table can convert.
class Typed : public OMScriptableObject {
  public:
    static const OMSClass kClass;

    Typed() { takeClass(kClass); }

    int whole() const { return whole_; }
    void setWhole(int value) { whole_ = value; }
    bool flag() const { return flag_; }
    void setFlag(bool value) { flag_ = value; }
    double real() { return real_; }
    void setReal(double value) { real_ = value; }
    std::string text() const { return text_; }
    void setText(std::string value) { text_ = std::move(value); }
    platform::Rect area() const { return {1, -2, 30, 40}; }
    void mix() {}

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

const OMSClass Typed::kClass{"Typed", &OMScriptableObject::kClass, kTyped};

TEST_F(OMSRegistries, TablesConvertAtTheScriptBoundary) {
    const struct {
        const char* property;
        const char* written;
        const char* read;
    } rows[] = {
        {"whole", "12", "12"},
        {"whole", "99999999999", "2147483647"},
        {"flag", "2", "1"},
        {"flag", "true", "0"},
        {"real", "0.1", "0.1"},
        {"real", "1e20", "1e+20"},
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

TEST_F(OMSRegistries, ARowMayGoWhileItIsWritten) {
    struct Leaving : OMScriptableObject {
        void leave(int) { removeProperty("late"); }
        int late() const { return 1; }
    } object;
    static constexpr OMSEntry kLate = oms::data<&Leaving::late, &Leaving::leave>("late");
    object.addEntry(kLate);
    EXPECT_EQ(object.getProperty("late"), "1");
    EXPECT_TRUE(object.setProperty("late", "2"));
    EXPECT_FALSE(object.hasProperty("late"));
}

TEST_F(OMSRegistries, PropertiesAreReplacedByName) {
    Typed object;
    object.addDataProperty("text", nullptr, [] { return std::string("new"); });
    EXPECT_TRUE(object.setProperty("text", "ignored")) << "only read, so writes are accepted";
    EXPECT_EQ(object.getProperty("text"), "new");
    object.addEvent("text");
    EXPECT_FALSE(object.setProperty("text", "x"));
    EXPECT_TRUE(object.attachHandler(
        "text", [] { Plain::log("first"); }, [] { Plain::log("second"); }));
    EXPECT_TRUE(object.fireEvent("text"));
    EXPECT_THAT(Plain::done, ElementsAre("first", "second"));
    EXPECT_TRUE(object.attachHandler("text", nullptr));
    EXPECT_FALSE(object.fireEvent("text"));
    EXPECT_FALSE(object.fireEvent("mix")) << "a method is no event";
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Absent);
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

TEST_F(OMSRegistries, CommandsAreFoundByTheirExactName) {
    std::string heard;
    YCommands::add("PlaySound", [&] { heard += "first " + OMSArguments::global().next(); });
    YCommands::add("PlaySound", [&] { heard += "second"; });
    EXPECT_EQ(YCommands::find("playsound"), nullptr);
    run("i=2\nitem.2=two\nPlaySound item.i\n");
    EXPECT_EQ(heard, "first two");
    boxes();
    put("later.mps", "PlaySound 1\nwait\nPlaySound 2\n");
    load("later.mps");
    pass(1);
    YCommands::clear();
    pass(3);
    EXPECT_THAT(boxes(), IsEmpty()) << "a compiled script keeps its commands";
}

} // namespace
