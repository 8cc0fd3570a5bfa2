// Checks that end the program and checks that only answer.
#include "omdebug.h"

#include "frameworkfixture.h"

namespace {

using OMDebugs = testing_support::FrameworkTest;

TEST_F(OMDebugs, FatalTextsStopAtTheFirstPieceThatDoesNotFit) {
    const auto expect = [](const std::string& condition, const std::string& message,
                           const std::string& file, const std::string& text) {
        EXPECT_EQ(OMDebug::fatalText({condition, message, file, 12}),
                  "OMDebug Fatal Error!\n" + text);
    };
    expect("a == b", "why", "src/x.cpp", "a == b\n\nsrc/x.cpp\nLine # 12\nwhy");
    const std::string fits(475, 'm');
    expect("a", fits, "f", "a\n\nf\nLine # 12\n" + fits);
    expect("a", fits + "m", "f", "a\n\nf\nLine # 12\n");
    expect("a", "m", std::string(600, 'f'), "a\n\n");
    expect(std::string(490, 'c'), "m", "f", std::string(490, 'c'));
    expect(std::string(491, 'c'), "m", "f", "");
}

TEST_F(OMDebugs, OnlyFatalChecksEndTheProgram) {
    OMDebug::require(true, "fine", "");
    EXPECT_EXIT(OMDebug::require(false, "a < b", "a is too large", {"src/x.cpp", 7}),
                testing::ExitedWithCode(255),
                "OMDebug Fatal Error!\na < b\n\nsrc/x.cpp\nLine # 7\na is too large");
    EXPECT_TRUE(OMDebug::check(true, "one", "first"));
    EXPECT_FALSE(OMDebug::check(false, "two", "second"));
    EXPECT_EQ(takeFailures(), std::vector<std::string>{"second"});
    EXPECT_TRUE(machine.dialogs().boxes.empty());
}

} // namespace
