// What an input file may say, and what is refused with the number of its line.
#include "platform/headless/timeline.h"

#include <gtest/gtest.h>
#include <sstream>

namespace platform {
namespace {

/// All that is read, an event after the other; or the line of the fault and what it is.
std::string parsed(const std::string& text) {
    std::istringstream input(text);
    const auto result = parseTimeline(input);
    std::ostringstream out;
    if (const auto* error = std::get_if<TimelineError>(&result)) {
        out << error->line << ": " << error->text;
        return out.str();
    }
    for (const TimelineEvent& event : std::get<Timeline>(result)) {
        out << event.timeMs << ' ';
        if (const auto* message = std::get_if<Message>(&event.what))
            out << int(message->kind) << " (" << message->position.x << ',' << message->position.y
                << ") " << std::hex << message->key.code << std::dec
                << (message->key.control ? "^ " : " ") << message->command << '\n';
        else if (const auto* answer = std::get_if<TimelineAnswer>(&event.what))
            out << answer->button << (answer->checked ? " checked\n" : "\n");
        else
            out << std::get<TimelineScreenshot>(event.what).file << '\n';
    }
    return out.str();
}

TEST(Timeline, ReadsMessages) {
    using Kind = Message::Kind;
    const std::tuple<std::string, Kind, std::string> rows[] = {
        {"move 320 240", Kind::MouseMove, "(320,240) 0 0"},
        {"down 0 479", Kind::MouseDown, "(0,479) 0 0"},
        {"up -5 2000", Kind::MouseUp, "(-5,2000) 0 0"},
        {"\tdouble  1\t2 \r", Kind::DoubleClick, "(1,2) 0 0"},
        {"command 65535", Kind::Command, "(0,0) 0 65535"},
        {"background", Kind::Background, "(0,0) 0 0"},
        {"foreground", Kind::Foreground, "(0,0) 0 0"},
        {"quit", Kind::Quit, "(0,0) 0 0"}};
    for (const auto& [line, kind, rest] : rows)
        EXPECT_EQ(parsed(" 4294967295 " + line),
                  "4294967295 " + std::to_string(int(kind)) + " " + rest + "\n");
    std::string keys; // a blank may be one; UTF-8, Latin-1
    for (const char* key : {"A ", "#", " ", "\xC3\xA3", "\xE3", "\xC3", "Ctrl-c", "Ctrl-Z",
                            "Ctrl-5", "Ctrl--", "  Enter", "Ctrl-Enter", "F12"})
        keys += parsed(std::string("7 key ") + key).substr(10);
    EXPECT_EQ(keys,
              "41 0\n23 0\n20 0\ne3 0\ne3 0\nc3 0\n3^ 0\n1a^ 0\n35^ 0\n2d^ 0\ne802 0\ne802^ 0\n"
              "e81a 0\n");
    EXPECT_EQ(
        parsed("\xEF\xBB\xBF# begins with a byte order mark\r\n"
               "3 screenshot my shots/\xC3\xA3.png \n\r\n  \t\n1 answer Sair\n  # 5 command 9\n"
               "1 answer checked N\xC3\xA3o sair  \n2 answer unchecked"),
        "1 Sair\n1 N\xE3o sair checked\n2 unchecked\n3 my shots/\xC3\xA3.png\n");
}

TEST(Timeline, RefusesBadLinesByNumber) {
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"the line does not begin with a time in milliseconds", {"quit", "4294967296 quit"}},
        {"unknown event \"Quit\"", {"5 Quit"}},
        {"\"quit\" wants nothing after it", {"5 quit now"}},
        {"\"move\" wants two numbers, x and y",
         {"5 move 1", "5 move 1 2 3", "5 move 99999999999 2"}},
        {"\"key\" wants one Latin-1 character or the name of a key",
         {"5 key ", "5 key Ctrl-", "5 key F13", "5 key \xE2\x82\xAC", "5 key \x01"}},
        {"\"command\" wants a number from 0 to 65535", {"5 command 65536", "5 command -1"}},
        {"\"answer\" wants the text of a button", {"5 answer \xE2\x82\xAC"}},
        {"\"screenshot\" wants a file name", {"5 screenshot"}}};
    for (const auto& [fault, lines] : rows)
        for (const std::string& line : lines)
            EXPECT_EQ(parsed("# first\n1 quit\n\n" + line + "\n7 nonsense\n"), "4: " + fault)
                << line;
}

} // namespace
} // namespace platform
