// Resources of the program itself and of module files, and streams over them.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omistreamfile.h"
#include "omistreamres.h"

using testing_support::Bytes;
using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toBytes;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kStillAttached = "OMResFile::~OMResFile - cannot delete an OMResFile with "
                                       "OMRes instances still attached to it!";

class OMResTest : public FrameworkTest {
  protected:
    OMResTest() {
        machine.modules().resources = {{{"TEXT", 1}, toBytes("of the program")},
                                       {{"TEXT", 5}, toBytes("another")},
                                       {{"WAVE", 2}, toBytes("sound")}};
        files.put(
            "mod.dll",
            NEBuilder().add("TEXT", 1, "of the module...").addStandard(12, 3, "a cursor").build());
    }
    static std::string textOf(OMRes& resource) {
        const std::byte* bytes = resource.lock();
        std::string text = bytes ? toText({bytes, resource.size()}) : "none";
        if (bytes) resource.unlock();
        return text;
    }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(OMResTest, FindsResourcesOfTheProgramAndOfModules) {
    OMRes own(1, "TEXT");
    EXPECT_EQ(own.status(), OMRes::Status::Ok);
    EXPECT_EQ(textOf(own), "of the program");

    OMResFile file("mod.dll");
    EXPECT_EQ(file.error(), OMResFile::Error::None);
    EXPECT_EQ(file.path(), "mod.dll");
    OMRes text(1, "TEXT", &file);
    OMRes cursor(3, "CURSOR", &file);
    EXPECT_EQ(textOf(text), "of the module...");
    EXPECT_EQ(textOf(cursor).substr(0, 8), "a cursor");

    OMRes missing(2, "TEXT", &file);
    EXPECT_EQ(missing.status(), OMRes::Status::NotLoaded);
    EXPECT_EQ(textOf(missing), "none");
    EXPECT_EQ(missing.status(), OMRes::Status::CannotLock);
    EXPECT_FALSE(missing.isLocked());
    EXPECT_TRUE(failures.empty());
}

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
        EXPECT_EQ(file.path(), "");
        EXPECT_TRUE(file.getResTypes().empty() && file.getResIDs("TEXT").empty())
            << "never the resources of another module";
    }
}

TEST_F(OMResTest, CountsLocks) {
    OMRes resource(5, "TEXT");
    EXPECT_TRUE(resource.lock());
    EXPECT_TRUE(resource.lock());
    resource.unlock();
    EXPECT_TRUE(resource.isLocked());
    resource.unlock();
    EXPECT_FALSE(resource.isLocked());
    EXPECT_TRUE(takeFailures().empty());
    resource.unlock();
    EXPECT_EQ(takeFailures(), Strings{"OMRes::unlock - too many unlocks!"});
    EXPECT_EQ(resource.status(), OMRes::Status::CannotUnlock);
    EXPECT_FALSE(resource.isLocked());
}

TEST_F(OMResTest, LockedResourcesStayLoadedWithTheirModule) {
    auto file = std::make_unique<OMResFile>("mod.dll");
    const std::byte* bytes = nullptr;
    {
        OMRes resource(1, "TEXT", file.get());
        bytes = resource.lock();
    }
    EXPECT_EQ(takeFailures(), Strings{"OMRes::~OMRes - instance is still locked!"});
    EXPECT_EQ(toText({bytes, 16}), "of the module...");
    OMRes late(1, "TEXT", file.get());
    file.reset();
    EXPECT_EQ(takeFailures(), Strings{kStillAttached});
    EXPECT_EQ(textOf(late), "of the module...");
}

TEST_F(OMResTest, StreamsReadThem) {
    OMResFile file("mod.dll");
    for (int mode : {kOMIStreamCache, kOMIStreamBuffered, 4})
        for (OMResFile* module : {static_cast<OMResFile*>(nullptr), &file}) {
            OMIStreamRes stream(1, "TEXT", module, mode);
            std::string text;
            while (stream.fill() > 0) text += toText(stream.current());
            EXPECT_EQ(text, module ? "of the module..." : "of the program");
            OMIStreamRes copy(stream);
            EXPECT_GT(copy.fill(), 0U);
            EXPECT_EQ(toText(copy.current()), toText(stream.current()));
            stream.close();
            stream.seek(3);
            EXPECT_EQ(toText(stream.current()), "");
            EXPECT_GT(stream.fill(), 0U);
            EXPECT_EQ(toText(stream.current()).substr(0, 3), "the");
        }
    EXPECT_TRUE(takeFailures().empty()) << "every stream lets go of its resource";

    auto shortLived = std::make_unique<OMResFile>("mod.dll");
    OMIStreamRes orphan(1, "TEXT", shortLived.get(), kOMIStreamCache);
    shortLived.reset();
    EXPECT_EQ(takeFailures(), Strings{kStillAttached});
    EXPECT_EQ(toText(orphan.readAll()), "of the module...");

    EXPECT_EQ(OMIStreamRes(9, "TEXT", &file, 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(0, "TEXT", &file, 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(1, "", &file, 0).length(), 0U);
    EXPECT_EQ(OMIStreamRes(1, "TEXT", &file, -2).fill(), 0U);
    const std::string invalid = "OMIStreamRes::OMIStreamRes - invalid parameter!";
    EXPECT_EQ(takeFailures(),
              (Strings{"OMIStreamRes::OMIStreamRes - resource (id 9 type TEXT) not found in "
                       "mod.dll!",
                       invalid, invalid, invalid}));
}

TEST_F(OMResTest, TheResourceManagerUsesModules) {
    const auto textOfResource = [](int id, std::string_view type) {
        const auto stream = OMResMgrGetIStream(id, type, kOMIStreamCache);
        return stream ? toText(stream->readAll()) : "none";
    };
    OMResMgrUseRes("", true); // the program itself
    EXPECT_EQ(textOfResource(5, "TEXT"), "another");
    EXPECT_EQ(textOfResource(2, "WAVE"), "sound");
    EXPECT_FALSE(OMResMgrGetIStreamInfo(3, "CURSOR"));
    OMResMgrUseRes("mod.dll", true);
    EXPECT_EQ(textOfResource(3, "CURSOR").substr(0, 8), "a cursor");
    OMResMgrStopUsing("", true);
    EXPECT_EQ(textOfResource(1, "TEXT"), "of the module...");
    OMResMgrStopUsing("MOD.DLL", true);
    EXPECT_FALSE(OMResMgrGetIStreamInfo(1, "TEXT"));

    const OMResMgrEntry entries[] = {{1, "TEXT"}, {0, ""}};
    OMResMgrUseRes("mod.dll", OMResMgrTerminated{entries}, true);
    EXPECT_TRUE(OMResMgrGetIStreamInfo(1, "TEXT"));
    EXPECT_FALSE(OMResMgrGetIStreamInfo(3, "CURSOR")) << "only what the table says";
    OMResMgrStopUsing("mod.dll", true);
    files.put("table", "3 CURSOR\n");
    // A stream over a cached file was filled once when it was made.
    OMCachedFile::cache("table");
    OMIStreamFile table("table", kOMIStreamCache);
    OMResMgrUseRes("mod.dll", table, true);
    EXPECT_TRUE(OMResMgrGetIStreamInfo(3, "CURSOR"));
    EXPECT_TRUE(takeFailures().empty());

    files.put("long", std::string(65536, ' '));
    OMIStreamFile tooLong("long", kOMIStreamCache);
    OMResMgrUseRes("other.dll", tooLong, true);
    EXPECT_EQ(takeFailures(),
              Strings{"OMResMgrUseRes - resource table cannot be larger than 64K!"});
}

} // namespace
