// zorbet-mps: which errors it tells, in which place, its exit codes; pages whose tables it prints.
#include "testfiles.h"

#include "zorbetmps/commandline.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class MpsCheckTest : public testing::Test {
  protected:
    struct Outcome {
        int code = 0;
        std::string out;
        std::string errors;
    };

    static Outcome run(std::vector<std::string> arguments) {
        std::vector<const char*> argv{"zorbet-mps"};
        for (const std::string& argument : arguments) argv.push_back(argument.c_str());
        std::ostringstream out;
        std::ostringstream errors;
        const int code = mps::run(static_cast<int>(argv.size()), argv.data(), out, errors);
        return {code, out.str(), errors.str()};
    }

    void put(const std::string& name, std::string_view text) { folder_.write(name, text); }

    /// What the check of files of the folder wrote, with "@" for the folder's path.
    std::string check(const std::vector<std::string>& names, int expectedCode) {
        std::vector<std::string> arguments{"check"};
        for (const std::string& name : names) arguments.push_back(folder_.at(name).string());
        Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, expectedCode) << outcome.out;
        EXPECT_EQ(outcome.errors, "");
        const std::string path = folder_.path();
        for (auto at = outcome.out.find(path); at != std::string::npos;
             at = outcome.out.find(path, at))
            outcome.out.replace(at, path.size(), "@");
        return outcome.out;
    }
    std::string checkText(std::string_view text, int expectedCode = 1) {
        put("a.mps", text);
        return check({"a.mps"}, expectedCode);
    }

    testfiles::TestFolder folder_;
};

TEST_F(MpsCheckTest, EveryErrorIsToldInItsPlace) {
    EXPECT_EQ(checkText("dance\n"
                        "say \"open\n"
                        "x=(1+2\n"
                        "Scene 1\n"
                        "break\n"
                        "\xE9t\xE9 1\n"
                        "y=1\n"
                        "if y\n"
                        "[\n"
                        "say y\n"),
              "@/a.mps:1: dance is undefined\n"
              "@/a.mps:2: a quote is not closed: \"open\n"
              "@/a.mps:3: parentheses or quotes do not match: (1+2\n"
              "@/a.mps:5: outside a loop: break\n"
              "@/a.mps:6: t is undefined\n"
              "@/a.mps:9: a block or a body is missing or not closed: [\n");
    // Line ends of all kinds; what is shown is one line without control characters, in UTF-8.
    EXPECT_EQ(checkText("x=1\r\nsay \"\xE9\x1B[2J\tend\r\nlast\r\n"),
              "@/a.mps:2: a quote is not closed: \"\xC3\xA9 [2J end\n"
              "@/a.mps:3: last is undefined\n");
    EXPECT_EQ(checkText("x=1\rfirst\r"), "@/a.mps:2: first is undefined\n");
    EXPECT_EQ(checkText("; a comment\nx=1\nif x>0\n[\nScene 100\n]\nelse\nLogMessage no\n", 0), "");
}

TEST_F(MpsCheckTest, EachScriptHasVariablesOfItsOwn) {
    // Together they have more names than a script may have.
    std::vector<std::string> names;
    for (const char letter : std::string_view("uvwxyz")) {
        std::string text = "say";
        for (int i = 0; text.size() < 60000; ++i)
            text += std::string(1, ' ') + letter + std::to_string(i);
        names.push_back(letter + std::string(".mps"));
        put(names.back(), text);
    }
    EXPECT_EQ(check(names, 0), "");
}

TEST_F(MpsCheckTest, IncludesAreFoundAsTheGameFindsThem) {
    put("game/Startup.mps", "include common.mps\ninclude deeper.mps\ninclude SUB\\Odd.mps\nend\n");
    put("game/common.mps", "one\n");
    put("game/scripts/Deeper.MPS", "include Common.mps\nx=1\ntwo\n");
    put("game/sub/odd.mps", "three\n");
    EXPECT_EQ(check({"game/Startup.mps"}, 1), "@/game/common.mps:1: one is undefined\n"
                                              "@/game/common.mps:1: one is undefined\n"
                                              "@/game/scripts/Deeper.MPS:3: two is undefined\n"
                                              "@/game/sub/odd.mps:1: three is undefined\n"
                                              "@/game/Startup.mps:4: end is undefined\n");
    // A script of the folder "scripts": the game's current directory is the one above.
    put("game/scripts/level.mps", "include common.mps\ninclude scripts\\deeper.mps\n");
    EXPECT_EQ(check({"game/scripts/level.mps"}, 1),
              "@/game/common.mps:1: one is undefined\n"
              "@/game/common.mps:1: one is undefined\n"
              "@/game/scripts/Deeper.MPS:3: two is undefined\n");
    // The name of an include may be the path of the script itself.
    put("game/a.mps", "include b.mps\nfive\n");
    put("game/b.mps", "\nfour\n");
    EXPECT_EQ(check({"game/a.mps"}, 1), "@/game/b.mps:2: four is undefined\n"
                                        "@/game/a.mps:2: five is undefined\n");
}

TEST_F(MpsCheckTest, FilesThatCannotBeRead) {
    put("large.mps", std::string(65536, ' '));
    put("self.mps", "include self.mps\n");
    EXPECT_EQ(checkText("include none.mps\ninclude large.mps\ncall\nlast\n"),
              "@/a.mps:1: can't find none.mps\n"
              "@/a.mps:2: large.mps: Script too long: at most 65535 bytes are allowed; move a part "
              "of it into a script of its own\n"
              "@/a.mps:3: the statement lacks a word: call\n"
              "@/a.mps:4: last is undefined\n");
    EXPECT_THAT(check({"self.mps"}, 1), StartsWith("@/self.mps:1: nested too deep: self.mps\n"));
    put("largest.mps", std::string(65535, ' '));
    put("folder/x", "");
    EXPECT_EQ(
        check({"none.mps", "largest.mps", "large.mps", "folder"}, 1),
        "@/none.mps: cannot be read: No such file or directory\n"
        "@/large.mps: Script too long: at most 65535 bytes are allowed; move a part of it into "
        "a script of its own\n"
        "@/folder: cannot be read: Is a directory\n");
}

/// Little-endian numbers of a precompiled file.
std::string number(std::int64_t value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> 8 * i);
    return out;
}

/// A precompiled script that calls one global command.
std::string precompiledCall(const std::string& command) {
    std::string file = number(2, 1) + number(1, 4) + number(21, 1) + number(3, 2);
    file += number(5, 4); // operand words
    for (const int word : {0, 1, 2, 3, -1}) file += number(word, 2);
    file += number(4, 4); // variables, three of them predefined
    for (const int field : {0, 0, 0, 0, -1, 0}) file += number(field, 4);
    file += number(std::ssize(command), 4) + command;
    return file + number(-1, 4) + number(-1, 4);
}

TEST_F(MpsCheckTest, PrecompiledScripts) {
    const std::string sound = precompiledCall("Scene");
    put("sound.mps", sound);
    put("unknown.mps", precompiledCall("dance"));
    put("cut.mps", sound.substr(0, sound.size() - 1));
    put("version.mps", std::string(1, '\1') + sound.substr(1));
    put("one.mps", "\2");
    EXPECT_EQ(
        check({"sound.mps", "unknown.mps", "cut.mps", "version.mps", "one.mps", "sound.mps"}, 1),
        "@/unknown.mps: dance is undefined\n"
        "@/cut.mps: damaged precompiled script\n"
        "@/version.mps: damaged precompiled script\n"
        "@/one.mps: damaged precompiled script\n");
    put("huge.mps", sound + std::string(std::size_t{16} << 20, '\0'));
    EXPECT_THAT(check({"huge.mps"}, 1),
                StartsWith("@/huge.mps: Script too long: at most 16777216"));
}

TEST_F(MpsCheckTest, TablesOfPagesKeepWhatTheirAuthorsWrote) {
    const std::string mark = "# Fonts\n<!-- words: RGraphicTextAnswer methods -->\n";
    put("p.md", mark + "| x |\n|-|\n| `gone` | | told |\n| `setFont` | X | **one** |\n| | | two |\n"
                       "<!-- end -->\nmore\n<!-- words: RNone events -->\n<!-- end -->\n");
    const std::string folder = folder_.path();
    EXPECT_THAT(run({"words", "--pages", folder}).out, HasSubstr("p.md: out of date"));
    const Outcome outcome = run({"words", "--pages", folder, "--write"});
    EXPECT_EQ(outcome.code, 1);
    for (const char* told :
         {"`gone` is no word any more: | `gone` | | told |\n", "no words RNone events",
          "no page has <!-- words: RText properties -->", "no page has a heading for Scene"})
        EXPECT_THAT(outcome.out, HasSubstr(told));
    EXPECT_THAT(
        folder_.contents("p.md"),
        StartsWith(mark +
                   "| Name | Arguments | Effect |\n|---|---|---|\n"
                   "| `setFont` | ID | **one** |\n| | FACE [SIZE [STYLE]] | two |\n"
                   "| `playAnimation` | | |\n| `stopAnimation` | | |\n<!-- end -->\nmore\n"));
}

TEST_F(MpsCheckTest, AWrongCommandLineGetsTheUsage) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"check"}, {"dance"}, {"check", "--dance", "a.mps"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.errors, HasSubstr("Usage: zorbet-mps"));
    }
    const Outcome help = run({"check", "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_THAT(help.out, HasSubstr("FILE"));
}

} // namespace
