// zorbet-mps: which errors it tells, in which place, its exit codes; pages whose tables it prints.
#include "tooltest.h"

#include "zorbetmps/commandline.h"

namespace {

using namespace testfiles;
using testing::StartsWith;

class MpsCheck : public ToolTest {
  protected:
    int mps(const Files& arguments) {
        std::vector<const char*> argv{"zorbet-mps"};
        for (const std::string& argument : arguments) argv.push_back(argument.c_str());
        return run([&](auto& out, auto& errors) {
            return mps::run(static_cast<int>(argv.size()), argv.data(), out, errors);
        });
    }
    /// What the check of files of the folder tells.
    std::string check(const Files& names) {
        Files arguments{"check"};
        for (const std::string& name : names) arguments.push_back(at(name).string());
        const int code = mps(arguments);
        EXPECT_TRUE(code == (out_.empty() ? 0 : 1) && errors_.empty()) << code << errors_;
        return out_;
    }
    std::string checkText(const std::string& text) {
        folder_.make("a.mps", text);
        return check({"a.mps"});
    }
};

TEST_F(MpsCheck, EveryErrorIsToldInItsPlace) {
    EXPECT_EQ(checkText("dance\nsay \"open\nx=(1+2\nScene 1\nbreak\n\xE9t\xE9 1\ny=1\nif y\n[\n"
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
    EXPECT_EQ(checkText("; a comment\nx=1\nif x>0\n[\nScene 100\n]\nelse\nLogMessage no\n"), "");
    // Each script has variables of its own: together they have more names than one may have.
    Files names;
    for (const char letter : std::string("uvwxyz")) {
        std::string text = "say";
        for (int i = 0; text.size() < 60000; ++i)
            text += std::string(" ") + letter + std::to_string(i);
        names.push_back(letter + std::string(".mps"));
        folder_.make(names.back(), text);
    }
    EXPECT_EQ(check(names), "");
}

TEST_F(MpsCheck, IncludesAreFoundAsTheGameFindsThem) {
    const std::pair<const char*, const char*> files[] = {
        {"game/Startup.mps", "include common.mps\ninclude deeper.mps\ninclude SUB\\Odd.mps\nend\n"},
        {"game/common.mps", "one\n"},
        {"game/scripts/Deeper.MPS", "include Common.mps\nx=1\ntwo\n"},
        {"game/sub/odd.mps", "three\n"},
        {"game/scripts/level.mps", "include common.mps\ninclude scripts\\deeper.mps\n"},
        {"game/a.mps", "include b.mps\nfive\n"},
        {"game/b.mps", "\nfour\n"},
    };
    for (const auto& [name, text] : files) folder_.make(name, text);
    const std::string one = "@/game/common.mps:1: one is undefined\n";
    const std::string two = "@/game/scripts/Deeper.MPS:3: two is undefined\n";
    EXPECT_EQ(check({"game/Startup.mps"}), one + one + two +
                                               "@/game/sub/odd.mps:1: three is undefined\n"
                                               "@/game/Startup.mps:4: end is undefined\n");
    // A script of the folder "scripts": the game's current directory is the one above.
    EXPECT_EQ(check({"game/scripts/level.mps"}), one + one + two);
    // The name of an include may be the path of the script itself.
    EXPECT_EQ(check({"game/a.mps"}), "@/game/b.mps:2: four is undefined\n"
                                     "@/game/a.mps:2: five is undefined\n");
}

TEST_F(MpsCheck, FilesThatCannotBeRead) {
    const std::string tooLong = "Script too long: at most 65535 bytes are allowed; move a part of "
                                "it into a script of its own\n";
    folder_.make("large.mps", std::string(65536, ' '));
    folder_.make("largest.mps", std::string(65535, ' '));
    folder_.make("self.mps", "include self.mps\n");
    folder_.make("folder/x", "");
    EXPECT_EQ(checkText("include none.mps\ninclude large.mps\ncall\nlast\n"),
              "@/a.mps:1: can't find none.mps\n"
              "@/a.mps:2: large.mps: " +
                  tooLong + //
                  "@/a.mps:3: the statement lacks a word: call\n"
                  "@/a.mps:4: last is undefined\n");
    EXPECT_THAT(check({"self.mps"}), StartsWith("@/self.mps:1: nested too deep: self.mps\n"));
    EXPECT_EQ(check({"none.mps", "largest.mps", "large.mps", "folder"}),
              "@/none.mps: cannot be read: No such file or directory\n"
              "@/large.mps: " +
                  tooLong + "@/folder: cannot be read: Is a directory\n");
}

/// A precompiled script that calls one global command.
std::string precompiledCall(const std::string& command) {
    formats::ByteWriter out;
    out.u8(2).u32(1).u8(21).u16(3);
    out.u32(5).u16(0).u16(1).u16(2).u16(3).u16(-1);        // operand words
    out.u32(4).u32(0).u32(0).u32(0).u32(0).u32(-1).u32(0); // variables
    out.u32(std::ssize(command)).text(command).u32(-1).u32(-1);
    return {out.bytes().begin(), out.bytes().end()};
}

TEST_F(MpsCheck, PrecompiledScripts) {
    const std::string sound = precompiledCall("Scene");
    folder_.make("sound.mps", sound);
    folder_.make("unknown.mps", precompiledCall("dance"));
    folder_.make("cut.mps", sound.substr(0, sound.size() - 1));
    folder_.make("version.mps", std::string(1, '\1') + sound.substr(1));
    folder_.make("one.mps", "\2");
    EXPECT_EQ(check({"sound.mps", "unknown.mps", "cut.mps", "version.mps", "one.mps", "sound.mps"}),
              "@/unknown.mps: dance is undefined\n"
              "@/cut.mps: damaged precompiled script\n"
              "@/version.mps: damaged precompiled script\n"
              "@/one.mps: damaged precompiled script\n");
    folder_.make("huge.mps", sound + std::string(std::size_t{16} << 20, '\0'));
    EXPECT_THAT(check({"huge.mps"}), StartsWith("@/huge.mps: Script too long: at most 16777216"));
}

TEST_F(MpsCheck, TablesOfPagesKeepWhatTheirAuthorsWrote) {
    const std::string mark = "# Fonts\n<!-- words: RGraphicTextAnswer methods -->\n";
    folder_.make("p.md", mark + "| x |\n|-|\n| `gone` | | told |\n| `setFont` | X | **one** |\n"
                                "| | | two |\n<!-- end -->\nmore\n"
                                "<!-- words: RNone events -->\n<!-- end -->\n");
    EXPECT_EQ(mps({"words", "--pages", folder_.path()}), 1);
    EXPECT_THAT(out_, HasSubstr("p.md: out of date"));
    EXPECT_EQ(mps({"words", "--pages", folder_.path(), "--write"}), 1);
    for (const char* told :
         {"`gone` is no word any more: | `gone` | | told |\n", "no words RNone events",
          "no page has <!-- words: RText properties -->", "no page has a heading for Scene"})
        EXPECT_THAT(out_, HasSubstr(told));
    EXPECT_THAT(
        read("p.md"),
        StartsWith(mark +
                   "| Name | Arguments | Effect |\n|---|---|---|\n"
                   "| `setFont` | ID | **one** |\n| | FACE [SIZE [STYLE]] | two |\n"
                   "| `playAnimation` | | |\n| `stopAnimation` | | |\n<!-- end -->\nmore\n"));
}

TEST_F(MpsCheck, AWrongCommandLineGetsTheUsage) {
    for (const Files& arguments : {Files{}, {"check"}, {"dance"}, {"check", "--dance", "a.mps"}}) {
        EXPECT_EQ(mps(arguments), 2) << testing::PrintToString(arguments);
        EXPECT_EQ(out_, "");
        EXPECT_THAT(errors_, HasSubstr("Usage: zorbet-mps"));
    }
    EXPECT_EQ(mps({"check", "--help"}), 0);
    EXPECT_THAT(out_, HasSubstr("FILE"));
}

} // namespace
