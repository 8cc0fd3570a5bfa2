// What an input file may say, and what is refused with the number of its line.
#include "platform/headless/timeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace platform {
namespace {

using testing::ElementsAre;
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

TEST(Timeline, ReadsMessages) {
    struct Row {
        std::string line;
        std::uint32_t timeMs;
        Message message;
    };
    const Row rows[] = {
        {"500 move 320 240", 500, {.kind = Kind::MouseMove, .position = {320, 240}}},
        {"520 down 0 479", 520, {.kind = Kind::MouseDown, .position = {0, 479}}},
        {"600 up -5 2000", 600, {.kind = Kind::MouseUp, .position = {-5, 2000}}},
        {"700 double 1 2", 700, {.kind = Kind::DoubleClick, .position = {1, 2}}},
        {" \t700\tdouble  1\t2 \r", 700, {.kind = Kind::DoubleClick, .position = {1, 2}}},
        {"900 command 59396", 900, {.kind = Kind::Command, .command = 59396}},
        {"1000 background", 1000, {.kind = Kind::Background}},
        {"1100 foreground", 1100, {.kind = Kind::Foreground}},
        {"4294967295 quit", 4294967295u, {.kind = Kind::Quit}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const Timeline timeline = parsed(row.line);
        ASSERT_EQ(timeline.size(), 1u);
        EXPECT_EQ(timeline[0].timeMs, row.timeMs);
        const auto* message = std::get_if<Message>(&timeline[0].what);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message->kind, row.message.kind);
        EXPECT_EQ(message->position, row.message.position);
        EXPECT_EQ(message->command, row.message.command);
    }
}

TEST(Timeline, ReadsKeys) {
    struct Row {
        std::string key;
        int code;
        bool control;
    };
    const Row rows[] = {
        {"a", 'a', false},
        {"A ", 'A', false},
        {"#", '#', false},
        {" ", ' ', false},         // a blank after the blank that ends the word
        {"\xC3\xA3", 0xE3, false}, // UTF-8
        {"\xE3", 0xE3, false},     // the same as Latin-1
        {"\xC3", 0xC3, false},
        {"Ctrl-c", 3, true},
        {"Ctrl-Z", 26, true},
        {"Ctrl-5", '5', true},
        {"Ctrl--", '-', true},
        {"Backspace", 0xE800, false},
        {"  Enter", 0xE802, false},
        {"Ctrl-Enter", 0xE802, true},
        {"Delete", static_cast<int>(Key::Delete), false},
        {"F1", static_cast<int>(Key::F1), false},
        {"F12", static_cast<int>(Key::F12), false},
        {"f", 'f', false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        const Timeline timeline = parsed("1 key " + row.key);
        ASSERT_EQ(timeline.size(), 1u);
        const auto* message = std::get_if<Message>(&timeline[0].what);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message->kind, Kind::Key);
        EXPECT_EQ(message->key.code, row.code);
        EXPECT_EQ(message->key.control, row.control);
    }
}

TEST(Timeline, ReadsAnswersAndScreenshots) {
    const Timeline timeline = parsed("0 answer Sair\n"
                                     "1 answer checked N\xC3\xA3o sair  \n"
                                     "2 answer unchecked\n"
                                     "3 screenshot my shots/\xC3\xA3.png \n");
    ASSERT_EQ(timeline.size(), 4u);
    const auto answer = [&](std::size_t i) { return std::get<TimelineAnswer>(timeline[i].what); };
    EXPECT_EQ(answer(0).button, "Sair");
    EXPECT_FALSE(answer(0).checked);
    EXPECT_EQ(answer(1).button, "N\xE3o sair");
    EXPECT_TRUE(answer(1).checked);
    EXPECT_EQ(answer(2).button, "unchecked");
    EXPECT_FALSE(answer(2).checked);
    EXPECT_EQ(std::get<TimelineScreenshot>(timeline[3].what).file, "my shots/\xC3\xA3.png");
}

TEST(Timeline, SkipsCommentsAndOrdersByTime) {
    const Timeline timeline = parsed("\xEF\xBB\xBF# begins with a byte order mark\r\n"
                                     "\r\n  \t\n"
                                     "20 command 3\n"
                                     "10 command 1\n"
                                     "  # 5 command 9\n"
                                     "10 command 2");
    std::vector<int> commands;
    for (const TimelineEvent& event : timeline) {
        commands.push_back(std::get<Message>(event.what).command);
    }
    EXPECT_THAT(commands, ElementsAre(1, 2, 3));
    EXPECT_TRUE(parsed("").empty());
}

TEST(Timeline, RefusesBadLinesByNumber) {
    struct Row {
        std::string line;
        std::string complaint;
    };
    const Row rows[] = {
        {"quit", "time"},
        {"-1 quit", "time"},
        {"4294967296 quit", "time"},
        {"5x quit", "time"},
        {"5", "unknown event \"\""},
        {"5 Quit", "unknown event \"Quit\""},
        {"5 quit now", "\"quit\" wants nothing"},
        {"5 move 1", "two numbers"},
        {"5 move 1 2 3", "two numbers"},
        {"5 move 1.5 2", "two numbers"},
        {"5 move 99999999999 2", "two numbers"},
        {"5 key", "one Latin-1 character"},
        {"5 key ", "one Latin-1 character"},
        {"5 key ab", "one Latin-1 character"},
        {"5 key Ctrl-", "one Latin-1 character"},
        {"5 key Return", "one Latin-1 character"},
        {"5 key F13", "one Latin-1 character"},
        {"5 key \xE2\x82\xAC", "one Latin-1 character"}, // the euro sign lies beyond Latin-1
        {"5 key \x01", "one Latin-1 character"},
        {"5 command", "0 to 65535"},
        {"5 command 65536", "0 to 65535"},
        {"5 command -1", "0 to 65535"},
        {"5 answer", "text of a button"},
        {"5 answer checked", "text of a button"},
        {"5 answer \xE2\x82\xAC", "text of a button"},
        {"5 screenshot", "file name"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        std::istringstream input("# first\n1 quit\n\n" + row.line + "\n7 nonsense\n");
        const auto result = parseTimeline(input);
        const auto* error = std::get_if<TimelineError>(&result);
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->line, 4);
        EXPECT_THAT(error->text, HasSubstr(row.complaint));
    }
}

} // namespace
} // namespace platform
