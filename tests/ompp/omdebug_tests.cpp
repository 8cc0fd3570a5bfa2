#include "omdebug.h"

#include "frameworkfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing_support::FrameworkTest;

using OMDebugs = FrameworkTest;
using OMDebugDeath = FrameworkTest;

TEST_F(OMDebugs, FatalTextsStopAtTheFirstPieceThatDoesNotFit) {
    const std::string caption = "OMDebug Fatal Error!\n";
    const struct {
        const char* name;
        std::string condition, message, file;
        std::string text;
    } rows[] = {
        {"all", "a == b", "why", "src/x.cpp", "a == b\n\nsrc/x.cpp\nLine # 12\nwhy"},
        {"no message", "a", "", "f", "a\n\nf\nLine # 12\n"},
        {"long message", "a", std::string(475, 'm'), "f",
         "a\n\nf\nLine # 12\n" + std::string(475, 'm')},
        {"longer message", "a", std::string(476, 'm'), "f", "a\n\nf\nLine # 12\n"},
        {"long file", "a", "m", std::string(600, 'f'), "a\n\n"},
        {"long condition", std::string(511, 'c'), "m", "f", ""},
        {"just too long a condition", std::string(491, 'c'), "m", "f", ""},
        {"just fitting condition", std::string(490, 'c'), "m", "f", std::string(490, 'c')},
    };
    for (const auto& row : rows) {
        const std::string text = OMDebug::fatalText({row.condition, row.message, row.file, 12});
        EXPECT_EQ(text, caption + row.text) << row.name;
        EXPECT_LE(text.size(), 511U) << row.name;
    }
}

TEST_F(OMDebugDeath, FatalChecksEndTheProgram) {
    OMDebug::require(true, "fine", "");
    EXPECT_EXIT(OMDebug::require(false, "a < b", "a is too large", {"src/x.cpp", 7}),
                ExitedWithCode(255),
                "OMDebug Fatal Error!\na < b\n\nsrc/x.cpp\nLine # 7\na is too large");
    EXPECT_EXIT(OMDebug::fatal("c", "m"), ExitedWithCode(255), "omdebug_tests.cpp");
}

TEST_F(OMDebugs, NonFatalChecksOnlyAnswer) {
    std::vector<std::string> heard;
    OMDebug::setCheckListener([&](const OMDebug::Failure& failure) {
        heard.push_back(std::string(failure.condition) + " " + std::string(failure.message));
    });
    EXPECT_TRUE(OMDebug::check(true, "one", "first"));
    EXPECT_FALSE(OMDebug::check(false, "two", "second"));
    EXPECT_THAT(heard, ElementsAre("two second"));
    OMDebug::setCheckListener(nullptr);
    EXPECT_FALSE(OMDebug::check(false, "three", "third"));
    EXPECT_TRUE(machine.dialogs().boxes.empty());
}

} // namespace
