// Where files are looked for.
#include "frameworkfixture.h"

using OMPathTest = testing_support::FrameworkTest;

namespace {

TEST_F(OMPathTest, TakesTheFirstDirectoryThatHoldsTheName) {
    const auto expect = [](const char* name, const std::optional<std::string>& path) {
        EXPECT_EQ(OMPathResolveFilename(name), path);
    };
    expect("a.rsc", "a.rsc"); // no directories
    files.put("RSC\\both.rsc", "local");
    files.put("D:\\RSC\\BOTH.RSC", "cd");
    files.put("D:\\RSC\\Cd.rsc", "cd");
    files.put("RSC\\folder.rsc\\x", "");
    OMPathAddDirectory("RSC", true); // without its backslash
    OMPathAddDirectory("D:\\RSC\\", false);
    files.put("RSC\\late.rsc", "");
    files.questions = 0;
    expect("Both.RSC", "RSC\\Both.RSC");
    EXPECT_EQ(files.questions, 0) << "a listing is kept";
    expect("cd.rsc", "D:\\RSC\\cd.rsc");
    EXPECT_EQ(OMPathOpen("BOTH.rsc")->size(), 5U);
    expect("none.rsc", "D:\\RSC\\none.rsc"); // else the last one
    OMPathSetStrict(true);
    for (const char* name : {"none.rsc", "x/a.rsc", "folder.rsc", "late.rsc"})
        expect(name, std::nullopt);
    EXPECT_EQ(OMPathOpen("none.rsc"), nullptr);
    expect("D:a.rsc", "D:a.rsc");
    expect("x\\a.rsc", "x\\a.rsc");
    OMPathAddDirectory("RSC\\", false);
    expect("late.rsc", "RSC\\late.rsc");
    EXPECT_TRUE(failures.empty());
    expect("", std::nullopt);
    EXPECT_EQ(takeFailures(),
              std::vector<std::string>{"OMPathResolveFilename - invalid filename!"});
}

} // namespace
