// Resources of the program itself and of module files. Streams over them: omistream_tests.cpp.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamfile.h"
#include "omistreamres.h"

using testing_support::NEBuilder;
using testing_support::toBytes;
using testing_support::toText;

namespace {

class OMResTest : public testing_support::OMAppTest {
  protected:
    OMResTest() {
        machine.modules().resources = {{{"TEXT", 1}, toBytes("of the program")},
                                       {{"WAVE", 2}, toBytes("sound")}};
        files.put(
            "mod.dll",
            NEBuilder().add("TEXT", 1, "of the module...").add("CURSOR", 3, "a cursor").build());
    }
    /// What the resource manager finds of them all.
    static std::string found() {
        std::string all;
        for (const auto& [id, type] :
             {std::pair(1, "TEXT"), std::pair(2, "WAVE"), std::pair(3, "CURSOR")})
            all += OMResMgrGetIStreamInfo(id, type)
                       ? toText(OMResMgrGetIStream(id, type, kOMIStreamCache)->readAll()).c_str()
                       : "none",
                all += '/';
        return all;
    }
};

TEST_F(OMResTest, ModulesTellWhyAndCountLocksAndLeaveTheirResourcesLoaded) {
    files.put("text.dll", "no module");
    for (const auto& [name, error] : {std::pair("none.dll", OMResFile::Error::NotFound),
                                      std::pair("text.dll", OMResFile::Error::CannotLoad)}) {
        const OMResFile file(name);
        EXPECT_EQ(file.error(), error) << name;
        EXPECT_TRUE(file.getResTypes().empty() && file.getResIDs("TEXT").empty()) << name;
    }
    auto file = std::make_unique<OMResFile>("mod.dll");
    OMRes missing(2, "TEXT", file.get());
    EXPECT_EQ(missing.status(), OMRes::Status::NotLoaded);
    EXPECT_EQ(missing.lock(), nullptr);
    EXPECT_EQ(missing.status(), OMRes::Status::CannotLock);

    OMRes resource(1, "TEXT", file.get());
    EXPECT_EQ(resource.lock(), resource.lock());
    resource.unlock();
    EXPECT_TRUE(resource.isLocked());
    resource.unlock();
    EXPECT_EQ(takeFailures(), Strings{});
    resource.unlock();
    EXPECT_EQ(resource.status(), OMRes::Status::CannotUnlock);
    const std::byte* bytes = OMRes(1, "TEXT", file.get()).lock();
    EXPECT_EQ(takeFailures(), (Strings{"OMRes::unlock - too many unlocks!",
                                       "OMRes::~OMRes - instance is still locked!"}));
    EXPECT_EQ(toText({bytes, 16}), "of the module...");
    file.reset();
    EXPECT_EQ(takeFailures().size(), 1U) << "some are still attached";
    EXPECT_EQ(toText({resource.lock(), 16}), "of the module...");
    resource.unlock();
}

TEST_F(OMResTest, TheResourceManagerUsesModules) {
    OMResMgrUseRes("", true); // the program itself
    EXPECT_EQ(found(), "of the program/sound/none/");
    OMResMgrUseRes("mod.dll", true);
    EXPECT_EQ(OMResMgrFindFile(3, "CURSOR")->name(), "mod.dll");
    OMResMgrStopUsing("", true);
    EXPECT_EQ(found(), "of the module.../none/a cursor/");
    OMResMgrStopUsing("MOD.DLL", true);
    EXPECT_EQ(found(), "none/none/none/");

    const OMResMgrEntry entries[] = {{1, "TEXT"}, {0, ""}};
    OMResMgrUseRes("mod.dll", OMResMgrTerminated{entries}, true);
    EXPECT_EQ(found(), "of the module.../none/none/") << "only what the table says";
    OMResMgrStopUsing("mod.dll", true);
    files.put("table", "3 CURSOR\n");
    OMCachedFile::cache("table"); // a stream over a cached file was filled once when it was made
    OMIStreamFile table("table", kOMIStreamCache);
    OMResMgrUseRes("mod.dll", table, true);
    EXPECT_EQ(found(), "none/none/a cursor/");
    EXPECT_EQ(takeFailures(), Strings{});
}

} // namespace
