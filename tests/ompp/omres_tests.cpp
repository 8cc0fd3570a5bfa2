// Resources of the program itself and of module files, and streams over them.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omistreamfile.h"
#include "omistreamres.h"

using testing_support::NEBuilder;
using testing_support::toBytes;
using testing_support::toText;

namespace {

constexpr const char* kStillAttached = "OMResFile::~OMResFile - cannot delete an OMResFile with "
                                       "OMRes instances still attached to it!";

class OMResTest : public testing_support::OMAppTest {
  protected:
    OMResTest() {
        machine.modules().resources = {{{"TEXT", 1}, toBytes("of the program")},
                                       {{"WAVE", 2}, toBytes("sound")}};
        files.put(
            "mod.dll",
            NEBuilder().add("TEXT", 1, "of the module...").add("CURSOR", 3, "a cursor").build());
    }
    /// Of what the resource manager finds, without padding.
    static std::string found(int id, std::string_view type) {
        if (!OMResMgrGetIStreamInfo(id, type)) return "none";
        return toText(OMResMgrGetIStream(id, type, kOMIStreamCache)->readAll()).c_str();
    }
};

TEST_F(OMResTest, TellsWhyAModuleCannotBeLoaded) {
    files.put("text.dll", "no module");
    struct Row {
        const char* name;
        OMResFile::Error error;
    };
    for (const Row& row : {Row{"none.dll", OMResFile::Error::NotFound},
                           Row{"text.dll", OMResFile::Error::CannotLoad}}) {
        const OMResFile file(row.name);
        EXPECT_EQ(file.error(), row.error) << row.name;
        EXPECT_TRUE(file.getResTypes().empty() && file.getResIDs("TEXT").empty())
            << "never the resources of another module";
    }
    OMResFile file("mod.dll");
    OMRes missing(2, "TEXT", &file);
    EXPECT_EQ(missing.status(), OMRes::Status::NotLoaded);
    EXPECT_EQ(missing.lock(), nullptr);
    EXPECT_EQ(missing.status(), OMRes::Status::CannotLock);
}

TEST_F(OMResTest, CountsLocksAndStaysLoadedWithItsModule) {
    auto file = std::make_unique<OMResFile>("mod.dll");
    OMRes resource(1, "TEXT", file.get());
    EXPECT_EQ(resource.lock(), resource.lock());
    resource.unlock();
    EXPECT_TRUE(resource.isLocked());
    resource.unlock();
    EXPECT_EQ(takeFailures(), Strings{});
    resource.unlock();
    EXPECT_EQ(takeFailures(), Strings{"OMRes::unlock - too many unlocks!"});
    EXPECT_EQ(resource.status(), OMRes::Status::CannotUnlock);
    const std::byte* bytes = OMRes(1, "TEXT", file.get()).lock();
    EXPECT_EQ(takeFailures(), Strings{"OMRes::~OMRes - instance is still locked!"});
    EXPECT_EQ(toText({bytes, 16}), "of the module...");
    file.reset();
    EXPECT_EQ(takeFailures(), Strings{kStillAttached});
    EXPECT_EQ(toText({resource.lock(), 16}), "of the module...");
    resource.unlock();
}

TEST_F(OMResTest, StreamsReadResources) {
    auto file = std::make_unique<OMResFile>("mod.dll");
    for (const int mode : {kOMIStreamCache, kOMIStreamBuffered, 4})
        for (OMResFile* module : {static_cast<OMResFile*>(nullptr), file.get()}) {
            OMIStreamRes stream(1, "TEXT", module, mode);
            std::string text;
            while (stream.fill() > 0) text += toText(stream.current());
            EXPECT_EQ(text, module ? "of the module..." : "of the program");
            OMIStreamRes copy(stream);
            EXPECT_GT(copy.fill(), 0U);
            EXPECT_EQ(toText(copy.current()), toText(stream.current()));
            stream.close();
            stream.seek(3);
            EXPECT_GT(stream.fill(), 0U);
            EXPECT_EQ(toText(stream.current()).substr(0, 3), "the");
        }
    EXPECT_EQ(takeFailures(), Strings{}) << "every stream lets go of its resource";

    EXPECT_EQ(OMIStreamRes(9, "TEXT", file.get(), 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(0, "TEXT", file.get(), 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(1, "", file.get(), 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(1, "TEXT", file.get(), -2).fill(), 0U);
    OMIStreamRes orphan(1, "TEXT", file.get(), kOMIStreamCache);
    file.reset();
    EXPECT_EQ(toText(orphan.readAll()), "of the module...");
    const std::string place = "OMIStreamRes::OMIStreamRes - ";
    EXPECT_EQ(takeFailures(), (Strings{place + "resource (id 9 type TEXT) not found in mod.dll!",
                                       place + "invalid parameter!", place + "invalid parameter!",
                                       place + "invalid parameter!", kStillAttached}));
}

TEST_F(OMResTest, TheResourceManagerUsesModules) {
    OMResMgrUseRes("", true); // the program itself
    EXPECT_EQ(found(2, "WAVE"), "sound");
    EXPECT_EQ(found(3, "CURSOR"), "none");
    OMResMgrUseRes("mod.dll", true);
    EXPECT_EQ(found(3, "CURSOR"), "a cursor");
    OMResMgrStopUsing("", true);
    EXPECT_EQ(found(1, "TEXT"), "of the module...");
    OMResMgrStopUsing("MOD.DLL", true);
    EXPECT_EQ(found(1, "TEXT"), "none");

    const OMResMgrEntry entries[] = {{1, "TEXT"}, {0, ""}};
    OMResMgrUseRes("mod.dll", OMResMgrTerminated{entries}, true);
    EXPECT_EQ(found(1, "TEXT"), "of the module...");
    EXPECT_EQ(found(3, "CURSOR"), "none") << "only what the table says";
    OMResMgrStopUsing("mod.dll", true);
    files.put("table", "3 CURSOR\n");
    OMCachedFile::cache("table"); // a stream over a cached file was filled once when it was made
    OMIStreamFile table("table", kOMIStreamCache);
    OMResMgrUseRes("mod.dll", table, true);
    EXPECT_EQ(found(3, "CURSOR"), "a cursor");
    EXPECT_EQ(takeFailures(), Strings{});
}

} // namespace
