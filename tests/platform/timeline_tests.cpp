// What an input file may say, and what is refused with the number of its line.
#include "platform/headless/timeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace platform {
namespace {

using testing::HasSubstr;
using Kind = Message::Kind;

Timeline parsed(const std::string& text) {
    std::istringstream input(text);
    auto result = parseTimeline(input);
    if (const auto* error = std::get_if<TimelineError>(&result)) {
        ADD_FAILURE() << "line " << error->line << ": " << error->text << " in:\n" << text;
        return {};
    }
    return std::get<Timeline>(result);
}

Message key(std::uint16_t code, bool control = false) {
    return {.kind = Kind::Key, .key = {.code = code, .control = control}};
}

TEST(Timeline, ReadsMessages) {
    const std::pair<std::string, Message> rows[] = {
        {"move 320 240", {.kind = Kind::MouseMove, .position = {320, 240}}},
        {"down 0 479", {.kind = Kind::MouseDown, .position = {0, 479}}},
        {"up -5 2000", {.kind = Kind::MouseUp, .position = {-5, 2000}}},
        {"\tdouble  1\t2 \r", {.kind = Kind::DoubleClick, .position = {1, 2}}},
        {"command 59396", {.kind = Kind::Command, .command = 59396}},
        {"background", {.kind = Kind::Background}},
        {"foreground", {.kind = Kind::Foreground}},
        {"quit", {.kind = Kind::Quit}},
        {"key A ", key('A')},
        {"key #", key('#')},
        {"key  ", key(' ')},         // a blank after the blank that ends the word
        {"key \xC3\xA3", key(0xE3)}, // UTF-8
        {"key \xE3", key(0xE3)},     // the same as Latin-1
        {"key \xC3", key(0xC3)},
        {"key Ctrl-c", key(3, true)},
        {"key Ctrl-Z", key(26, true)},
        {"key Ctrl-5", key('5', true)},
        {"key Ctrl--", key('-', true)},
        {"key   Enter", key(0xE802)},
        {"key Ctrl-Enter", key(0xE802, true)},
        {"key F12", key(static_cast<std::uint16_t>(Key::F12))},
    };
    for (const auto& [line, expected] : rows) {
        SCOPED_TRACE(line);
        const Timeline timeline = parsed(" 4294967295 " + line);
        ASSERT_EQ(timeline.size(), 1u);
        EXPECT_EQ(timeline[0].timeMs, 4294967295u);
        const auto& message = std::get<Message>(timeline[0].what);
        EXPECT_EQ(message.kind, expected.kind);
        EXPECT_EQ(message.position, expected.position);
        EXPECT_EQ(message.command, expected.command);
        EXPECT_EQ(message.key.code, expected.key.code);
        EXPECT_EQ(message.key.control, expected.key.control);
    }
}

TEST(Timeline, ReadsAnswersAndScreenshotsInTheOrderOfTheirTimes) {
    const Timeline timeline = parsed("\xEF\xBB\xBF# begins with a byte order mark\r\n"
                                     "3 screenshot my shots/\xC3\xA3.png \n"
                                     "\r\n  \t\n"
                                     "1 answer Sair\n"
                                     "  # 5 command 9\n"
                                     "1 answer checked N\xC3\xA3o sair  \n"
                                     "2 answer unchecked");
    std::string answers;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto& answer = std::get<TimelineAnswer>(timeline.at(i).what);
        answers += answer.button + (answer.checked ? " checked/" : "/");
    }
    EXPECT_EQ(answers, "Sair/N\xE3o sair checked/unchecked/");
    ASSERT_EQ(timeline.size(), 4u);
    EXPECT_EQ(std::get<TimelineScreenshot>(timeline[3].what).file, "my shots/\xC3\xA3.png");
}

TEST(Timeline, RefusesBadLinesByNumber) {
    const std::pair<std::string, std::string> rows[] = {
        {"quit", "time"},
        {"4294967296 quit", "time"},
        {"5 Quit", "unknown event \"Quit\""},
        {"5 quit now", "\"quit\" wants nothing"},
        {"5 move 1", "two numbers"},
        {"5 move 1 2 3", "two numbers"},
        {"5 move 99999999999 2", "two numbers"},
        {"5 key ", "one Latin-1 character"},
        {"5 key Ctrl-", "one Latin-1 character"},
        {"5 key F13", "one Latin-1 character"},
        {"5 key \xE2\x82\xAC", "one Latin-1 character"}, // the euro sign lies beyond Latin-1
        {"5 key \x01", "one Latin-1 character"},
        {"5 command 65536", "0 to 65535"},
        {"5 command -1", "0 to 65535"},
        {"5 answer \xE2\x82\xAC", "text of a button"},
        {"5 screenshot", "file name"},
    };
    for (const auto& [line, complaint] : rows) {
        SCOPED_TRACE(line);
        std::istringstream input("# first\n1 quit\n\n" + line + "\n7 nonsense\n");
        const auto result = parseTimeline(input);
        const auto* error = std::get_if<TimelineError>(&result);
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->line, 4);
        EXPECT_THAT(error->text, HasSubstr(complaint));
    }
}

} // namespace
} // namespace platform
