// Where files are looked for.
#include "frameworkfixture.h"

using OMPathTest = testing_support::FrameworkTest;

namespace {

TEST_F(OMPathTest, LeavesNamesAloneThatAreNotToBeSearched) {
    EXPECT_EQ(OMPathResolveFilename("a.rsc"), "a.rsc") << "no directories";
    OMPathSetStrict(true);
    OMPathAddDirectory("RSC\\", true);
    EXPECT_EQ(OMPathResolveFilename("D:a.rsc"), "D:a.rsc");
    EXPECT_EQ(OMPathResolveFilename("x\\a.rsc"), "x\\a.rsc");
    EXPECT_EQ(OMPathResolveFilename("x/a.rsc"), std::nullopt);
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(OMPathResolveFilename(""), std::nullopt);
    EXPECT_EQ(takeFailures(),
              std::vector<std::string>{"OMPathResolveFilename - invalid filename!"});
}

TEST_F(OMPathTest, TakesTheFirstDirectoryThatHoldsTheName) {
    files.put("RSC\\both.rsc", "local");
    files.put("D:\\RSC\\BOTH.RSC", "cd");
    files.put("D:\\RSC\\Cd.rsc", "cd");
    OMPathAddDirectory("RSC", true); // without its backslash
    OMPathAddDirectory("D:\\RSC\\", false);
    EXPECT_EQ(OMPathResolveFilename("Both.RSC"), "RSC\\Both.RSC");
    EXPECT_EQ(OMPathResolveFilename("cd.rsc"), "D:\\RSC\\cd.rsc");
    EXPECT_EQ(OMPathOpen("BOTH.rsc")->size(), 5U);
    EXPECT_EQ(OMPathResolveFilename("none.rsc"), "D:\\RSC\\none.rsc") << "else the last one";
    OMPathSetStrict(true);
    EXPECT_EQ(OMPathResolveFilename("none.rsc"), std::nullopt);
    EXPECT_EQ(OMPathOpen("none.rsc"), nullptr);
}

TEST_F(OMPathTest, AsksADirectoryWithACachedListingOnce) {
    files.put("RSC\\old.rsc", "");
    files.put("RSC\\folder.rsc\\x", "");
    OMPathSetStrict(true);
    OMPathAddDirectory("RSC\\", true);
    files.put("RSC\\new.rsc", "");
    files.questions = 0;
    EXPECT_TRUE(OMPathResolveFilename("old.rsc"));
    EXPECT_FALSE(OMPathResolveFilename("new.rsc")) << "came after the listing";
    EXPECT_FALSE(OMPathResolveFilename("folder.rsc")) << "a folder is no file";
    EXPECT_EQ(files.questions, 0);
    OMPathAddDirectory("RSC\\", false);
    EXPECT_TRUE(OMPathResolveFilename("new.rsc"));
}

} // namespace
