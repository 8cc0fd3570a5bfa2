// Classes that component libraries bring.
#include "omsclass.h"
#include "omsregistry.h"
#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

struct Plain : OMScriptableObject {
    static std::unique_ptr<OMScriptableObject> create() { return std::make_unique<Plain>(); }
};
constexpr OMSClass plain(std::string_view name) {
    return {name, &OMScriptableObject::kClass, {}, &Plain::create};
}
constexpr OMSClass kPlain = plain("Plain");
constexpr OMSClass kOne = plain("One");
constexpr OMSClass kTwo = plain("Two");

class OMSComponents : public testing_support::ScriptTest {
  protected:
    ~OMSComponents() override { registry.setComponentLoading(false); }
    /// A library that registers something when it is loaded.
    void library(const std::string& file, void (*entry)()) {
        machine.files().put(file, "");
        machine.modules().libraries[file][OMSRegistry::kComponentEntry] = entry;
        registry.setComponentLoading(true);
    }
    OMSRegistry& registry = OMSRegistry::global();
};

TEST_F(OMSComponents, AreLoadedOnceAndStayForAllTheirClasses) {
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
    const std::vector<std::string>& loaded = machine.modules().loaded;
    EXPECT_THAT(loaded, ElementsAre("One.lrn", "Absent.lrn"));
    thread->unload();
    for (int i = 0; i < 2; ++i) registry.loadAllComponents();
    EXPECT_THAT(loaded, ElementsAre("One.lrn", "Absent.lrn", "Two.LRN"));
    std::vector<int> unloaded;
    for (const char* name : {"Two", "Plain", "One"}) {
        registry.unregisterClass(name);
        unloaded.push_back(machine.modules().unloaded);
    }
    EXPECT_THAT(unloaded, ElementsAre(0, 1, 2));
}

TEST_F(OMSComponents, ThatRegisterNothingAreFatal) {
    library("Wrong.lrn", [] { OMSRegistry::global().registerClass(kPlain); });
    machine.modules().libraries["Empty.lrn"] = {};
    for (const char* name : {"Empty", "Wrong"})
        EXPECT_EXIT((void)registry.isClass(name), testing::ExitedWithCode(255),
                    "!registryEntry(.|\n)*Component registration failure");
}

} // namespace
