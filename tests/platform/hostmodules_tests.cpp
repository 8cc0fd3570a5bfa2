// Loading of libraries by the program's names for files.
#include "temporaryfolder.h"

#include "platform/host/machine/hostmodules.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform {
namespace {

using testing::HasSubstr;

class HostModulesTest : public testing::Test {
  protected:
    HostModulesTest() { folder_.makeFolder("Parts"); }

    void copy(const char* library, const std::string& name) {
        std::filesystem::copy_file(library, folder_.path(name));
    }

    TemporaryFolder folder_;
    HostFiles files_{HostOptions{.content = folder_.path(), .cd = "", .home = folder_.path()}};
    HostModules modules_{files_, true, {}, {}};
};

TEST_F(HostModulesTest, LoadsByTheNamingRulesOfFiles) {
    copy(ZORBET_PLAIN_LIBRARY, "Plain.LRN");
    const auto library = modules_.load("plain.lrn");
    ASSERT_TRUE(library) << modules_.loadError();
    EXPECT_EQ(library->entry("noSuchFunction"), nullptr);
    EXPECT_NE(library->entry("plainLibraryCalled"), nullptr);
}

TEST_F(HostModulesTest, TellsWhyAFileIsNoLibrary) {
    for (const char* none : {"missing.lrn", "Parts", "", "libc.so.6"}) // the host is not asked
        EXPECT_FALSE(modules_.load(none)) << none;
    EXPECT_EQ(modules_.loadError(), "") << "there is nothing to tell of files that are not there";

    folder_.make("broken.lrn", "no library at all");
    EXPECT_FALSE(modules_.load("broken.lrn"));
    EXPECT_THAT(modules_.loadError(), HasSubstr("broken.lrn"));

    // A component needs what the program exports; this test exports nothing.
    copy(ZORBET_TEST_COMPONENT, "component.lrn");
    EXPECT_FALSE(modules_.load("component.lrn"));
    EXPECT_THAT(modules_.loadError(), HasSubstr("undefined symbol"));
    EXPECT_FALSE(modules_.load("missing.lrn"));
    EXPECT_EQ(modules_.loadError(), "");
}

} // namespace
} // namespace platform
