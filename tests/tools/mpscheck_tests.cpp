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
    EXPECT_EQ(
        checkText("dance\nsay \"open\nx=(1+2\nScene 1\nbreak\n\xE9t\xE9 1\ny=1\ncall\nif y\n[\n"
                  "say y\n"),
        "@/a.mps:1: dance is undefined\n"
        "@/a.mps:2: a quote is not closed: \"open\n"
        "@/a.mps:3: parentheses or quotes do not match: (1+2\n"
        "@/a.mps:5: outside a loop: break\n"
        "@/a.mps:6: t is undefined\n"
        "@/a.mps:8: the statement lacks a word: call\n"
        "@/a.mps:10: a block or a body is missing or not closed: [\n"
        "@/a.mps:6:1: warning: \xC3\xA9 outside of quotes counts as a blank [accent]\n");
    // Line ends of all kinds; what is shown is one line without control characters, in UTF-8.
    EXPECT_EQ(checkText("x=1\rsay \"\xE9\x1B[2J\tend\r\nlast\r\n"),
              "@/a.mps:2: a quote is not closed: \"\xC3\xA9 [2J end\n"
              "@/a.mps:3: last is undefined\n");
    EXPECT_EQ(checkText("; a comment\nx=1\nif x>0\n[\nScene 100\n]\nelse\nLogMessage no\n"), "");
}

TEST_F(MpsCheck, IncludesAreFoundAsTheGameFindsThem) {
    const std::pair<const char*, const char*> files[] = {
        {"Startup.mps", "include common.mps\ninclude deeper.mps\ninclude SUB\\Odd.mps\nend\n"},
        {"common.mps", "one\n"},
        {"scripts/Deeper.MPS", "include Common.mps\nx=1\ntwo\n"},
        {"sub/odd.mps", "\nthree\n"},
        {"scripts/level.mps", "include common.mps\ninclude scripts\\deeper.mps\n"},
    };
    for (const auto& [name, text] : files) folder_.make(name, text);
    const std::string two = "@/common.mps:1: one is undefined\n"
                            "@/common.mps:1: one is undefined\n"
                            "@/scripts/Deeper.MPS:3: two is undefined\n";
    EXPECT_EQ(check({"Startup.mps"}),
              two + "@/sub/odd.mps:2: three is undefined\n@/Startup.mps:4: end is undefined\n");
    // A script of the folder "scripts": the game's current directory is the one above.
    EXPECT_EQ(check({"scripts/level.mps"}), two);
}

TEST_F(MpsCheck, FilesThatCannotBeReadAndPrecompiledOnes) {
    const auto tooLong = [](const std::string& most) {
        return "Script too long: at most " + most +
               " bytes are allowed; move a part of it into a "
               "script of its own\n";
    };
    const auto precompiled = [](const char* command) {
        const Bytes head = bytesOf("0201(3)15030005(5)010002000300FFFF04(19)FFFFFFFF(4)05(3)");
        return join(join(head, asBytes(command)), Bytes(8, 0xFF));
    };
    const Bytes sound = precompiled("Scene");
    write("sound.mps", sound);
    write("unknown.mps", precompiled("dance"));
    write("cut.mps", Bytes(sound.begin(), sound.end() - 1));
    write("version.mps", changed(sound, 0, 1));
    write("one.mps", Bytes{2});
    write("huge.mps", join(sound, Bytes(std::size_t{16} << 20)));
    folder_.make("large.mps", std::string(65536, ' '));
    folder_.make("largest.mps", std::string(65535, ' '));
    folder_.make("self.mps", "include self.mps\n");
    folder_.make("folder/x", "");
    EXPECT_EQ(checkText("include none.mps\ninclude large.mps\nlast\n"),
              "@/a.mps:1: can't find none.mps\n@/a.mps:2: large.mps: " + tooLong("65535") +
                  "@/a.mps:3: last is undefined\n");
    EXPECT_THAT(check({"self.mps"}), StartsWith("@/self.mps:1: nested too deep: self.mps\n"));
    EXPECT_EQ(check({"none.mps", "largest.mps", "large.mps", "folder", "sound.mps", "unknown.mps",
                     "cut.mps", "version.mps", "one.mps", "huge.mps", "sound.mps"}),
              "@/none.mps: cannot be read: No such file or directory\n"
              "@/large.mps: " +
                  tooLong("65535") +
                  "@/folder: error: there is no script Startup.mps, with which a game begins "
                  "[unknown-script]\n"
                  "@/unknown.mps: dance is undefined\n"
                  "@/cut.mps: damaged precompiled script\n"
                  "@/version.mps: damaged precompiled script\n"
                  "@/one.mps: damaged precompiled script\n"
                  "@/huge.mps: " +
                  tooLong("16777216"));
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
                   "| `setFont` | FONT | **one** |\n| | FACE [SIZE [STYLE]] | two |\n"
                   "| `playAnimation` | | |\n| `stopAnimation` | | |\n<!-- end -->\nmore\n"));
}

TEST_F(MpsCheck, AWrongCommandLineGetsTheUsage) {
    for (const Files& arguments : {Files{}, {"check"}, {"dance"}, {"check", "--dance", "a.mps"}})
        EXPECT_TRUE(mps(arguments) == 2 && out_.empty() &&
                    errors_.find("Usage: zorbet-mps") != errors_.npos)
            << errors_;
    EXPECT_TRUE(mps({"check", "--help"}) == 0 && out_.find("FILE") != out_.npos) << out_;
}

} // namespace
