// Checks that end the program and checks that only answer.
#include "omdebug.h"

#include "frameworkfixture.h"

namespace {

using OMDebugs = testing_support::FrameworkTest;

TEST_F(OMDebugs, FatalTextsStopAtTheFirstPieceThatDoesNotFit) {
    const struct {
        const char* name;
        std::string condition, message, file, text;
    } rows[] = {
        {"all", "a == b", "why", "src/x.cpp", "a == b\n\nsrc/x.cpp\nLine # 12\nwhy"},
        {"long message", "a", std::string(475, 'm'), "f",
         "a\n\nf\nLine # 12\n" + std::string(475, 'm')},
        {"longer message", "a", std::string(476, 'm'), "f", "a\n\nf\nLine # 12\n"},
        {"long file", "a", "m", std::string(600, 'f'), "a\n\n"},
        {"just fitting condition", std::string(490, 'c'), "m", "f", std::string(490, 'c')},
        {"just too long a condition", std::string(491, 'c'), "m", "f", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(OMDebug::fatalText({row.condition, row.message, row.file, 12}),
                  "OMDebug Fatal Error!\n" + row.text)
            << row.name;
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
