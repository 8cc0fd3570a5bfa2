// Classes, their words, the components that bring them, and the commands.
#include "omsregistry.h"

#include "omsclass.h"
#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using testing_support::ScriptTest;

std::vector<std::string> logged;
void note(std::string text) { logged.push_back(std::move(text)); }

struct Plain : OMScriptableObject {
    ~Plain() override { note("gone"); }
    void declareProperties() override { note("declared"); }
    static std::unique_ptr<OMScriptableObject> create() {
        note("made " + OMSArguments::global().next());
        return std::make_unique<Plain>();
    }
};

constexpr OMSClass plain(std::string_view name) {
    return {name, &OMScriptableObject::kClass, {}, &Plain::create};
}
constexpr OMSClass kPlain = plain("Plain");
constexpr OMSClass kOne = plain("One");
constexpr OMSClass kTwo = plain("Two");

class OMSRegistries : public ScriptTest {
  protected:
    OMSRegistries() { logged.clear(); }
    ~OMSRegistries() override { registry.setComponentLoading(false); }

    std::unique_ptr<OMScriptableObject> create(std::string_view name, std::string_view argument) {
        OMSArguments::global().clear();
        OMSArguments::global().push(argument);
        return registry.create(name);
    }
    /// A library that registers something when it is loaded.
    void library(const std::string& file, void (*entry)()) {
        machine.files().put(file, "");
        machine.modules().libraries[file][OMSRegistry::kComponentEntry] = entry;
        registry.setComponentLoading(true);
    }
    const std::vector<std::string>& loaded() { return machine.modules().loaded; }

    OMSRegistry& registry = OMSRegistry::global();
};

TEST_F(OMSRegistries, ObjectsAreMadeDeclaredAndAnnounced) {
    static constexpr OMSClass kBase{"Base", &OMScriptableObject::kClass, {}};
    static constexpr OMSClass kRefusing{
        "Plain", nullptr, {}, [] { return std::unique_ptr<OMScriptableObject>(); }};
    registry.registerClass(kBase);
    registry.registerClass(kPlain);
    registry.registerClass(kRefusing);
    registry.attachClassHandler("Plain", [] { note("born"); });
    registry.setCreationHook([](OMScriptableObject&) { note("hook"); });
    const auto object = create("Plain", "red");
    EXPECT_THAT(logged, ElementsAre("made red", "declared", "born", "hook"))
        << "the first registration stays";
    EXPECT_EQ(object->classEntry(), registry.find("Plain"));
    EXPECT_EQ(OMScriptableObject::lastBorn, object.get());
    EXPECT_FALSE(create("plain", "")) << "case counts";
    EXPECT_FALSE(create("Base", "")) << "it only has heirs";
    EXPECT_FALSE(registry.attachClassHandler("None", nullptr));
    registry.attachClassHandler("Plain", nullptr);
    logged.clear();
    create("Plain", "blue");
    EXPECT_THAT(logged, ElementsAre("made blue", "declared", "hook", "gone"));
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

TEST_F(OMSRegistries, ComponentsAreLoadedOnceAndStayForAllTheirClasses) {
    for (const char* file : {"three.txt", ".lrn"}) machine.files().put(file, "");
    machine.files().putFolder("folder.lrn");
    library("One.lrn", [] { OMSRegistry::global().registerClass(kOne); });
    library("Two.LRN", [] {
        EXPECT_TRUE(OMSRegistry::global().isClass("One")) << "one may need another";
        OMSRegistry::global().registerClass(kTwo);
        OMSRegistry::global().registerClass(kPlain);
    });
    registry.setComponentLoading(false);
    EXPECT_FALSE(registry.isClass("One"));
    registry.setComponentLoading(true);
    run("x=One 1\ny=One 2\nz=Absent\nz=Absent\n");
    EXPECT_THAT(loaded(), ElementsAre("One.lrn", "Absent.lrn"));
    EXPECT_EQ(value("z"), "Absent");
    thread->unload();
    for (int i = 0; i < 2; ++i) registry.loadAllComponents();
    EXPECT_THAT(loaded(), ElementsAre("One.lrn", "Absent.lrn", "Two.LRN"));
    std::vector<int> unloaded;
    for (const char* name : {"Two", "Plain", "One"}) {
        registry.unregisterClass(name);
        unloaded.push_back(machine.modules().unloaded);
    }
    EXPECT_THAT(unloaded, ElementsAre(0, 1, 2));
}

using OMSRegistryDeath = OMSRegistries;

TEST_F(OMSRegistryDeath, AComponentThatRegistersNothingIsFatal) {
    library("Wrong.lrn", [] { OMSRegistry::global().registerClass(kPlain); });
    machine.modules().libraries["Empty.lrn"] = {};
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
    void leave(int) { removeProperty("late"); }
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

TEST_F(OMSRegistries, WordsAreConvertedReplacedAndRefused) {
    Typed object;
    for (const auto& [property, written, read] :
         std::vector<std::array<const char*, 3>>{{"whole", "12", "12"},
                                                 {"whole", "99999999999", "2147483647"},
                                                 {"flag", "2", "1"},
                                                 {"flag", "true", "0"},
                                                 {"real", "0.1", "0.1"},
                                                 {"real", "1e20", "1e+20"},
                                                 {"text", "a \xA5 b", "a \xA5 b"},
                                                 {"area", "anything", "1 -2 30 40"}}) {
        EXPECT_TRUE(object.setProperty(property, written)) << property;
        EXPECT_EQ(object.getProperty(property), read) << property << written;
    }
    EXPECT_FALSE(object.setProperty("mix", "1"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Refused);
    EXPECT_FALSE(object.getProperty("done"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Refused);
    EXPECT_FALSE(object.getProperty("none"));
    EXPECT_EQ(OMScriptableObject::status(), OMScriptableObject::Status::Absent);
    static constexpr OMSEntry kLate = oms::data<&Typed::whole, &Typed::leave>("late");
    object.addEntry(kLate);
    EXPECT_TRUE(object.setProperty("late", "2")); // goes while it is written
    EXPECT_FALSE(object.hasProperty("late"));

    object.addDataProperty("text", nullptr, [] { return std::string("new"); });
    EXPECT_TRUE(object.setProperty("text", "ignored")) << "only read, so writes are accepted";
    EXPECT_EQ(object.getProperty("text"), "new");
    object.addEvent("text");
    EXPECT_FALSE(object.setProperty("text", "x"));
    EXPECT_TRUE(object.attachHandler(
        "text", [] { note("first"); }, [] { note("second"); }));
    EXPECT_TRUE(object.fireEvent("text"));
    EXPECT_THAT(logged, ElementsAre("first", "second"));
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
    EXPECT_FALSE(a || c);
    EXPECT_EQ(b.object(), &other);
    a.watch(&other);
    EXPECT_TRUE(a);
}

TEST_F(OMSRegistries, CommandsAreFoundByTheirExactName) {
    std::string heard;
    YCommands::add("PlaySound", [&] { heard += "first " + OMSArguments::global().next(); });
    YCommands::add("PlaySound", [&] { heard += "second"; });
    EXPECT_EQ(YCommands::find("playsound"), nullptr);
    start("i=2\nitem.2=\"two\"\nPlaySound item.i\nwait\nPlaySound 2\n", 4);
    EXPECT_EQ(heard, "first two");
    YCommands::clear();
    pass(3);
    EXPECT_THAT(boxes(), IsEmpty()) << "a compiled script keeps its commands";
}

} // namespace
