// zorbet-mps: which errors it tells, in which place, its exit codes; what it makes of scripts;
// pages whose tables it prints.
#include "tooltest.h"

namespace {

using namespace testfiles;
using testing::StartsWith;

class MpsCheck : public ToolTest {
  protected:
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

TEST_F(MpsCheck, CompiledScriptsLieWhereTheyAreWanted) {
    folder_.make("a.mps", "include b.mps\nsay x \"\xE9\xA0\"\nif x\nsay 1\n");
    folder_.make("b.mps", "x=1\ny=x\n");
    const std::string a = at("a.mps").string(), b = at("b.mps").string();
    const auto listed = [&](const std::string& file) {
        EXPECT_EQ(mps({"disasm", "--no-lines", at(file).string()}), 0);
        return out_;
    };
    EXPECT_EQ(mps({"compile", a}), 0);
    EXPECT_EQ(mps({"compile", a, b, "-o", at("new/out").string()}), 0);
    EXPECT_EQ(mps({"compile", a, "-o", at("new/one").string()}), 0);
    EXPECT_EQ(namesIn("."), "a.mpc a.mps b.mps new ");
    EXPECT_EQ(namesIn("new/out"), "a.mps b.mps ");
    for (const char* made : {"a.mpc", "new/out/a.mps", "new/one"})
        EXPECT_EQ(listed(made), listed("a.mps"));
    const std::pair<Files, const char*> kWrong[] = {
        {{a, "-o", a}, "would be written over a script's text"},
        {{a, "-o", at(".").string()}, "would be written over a script's text"},
        {{a, at("new/../a.mps").string()}, "would be written twice"},
        {{a, b, "-o"}, "Usage: zorbet-mps compile FILE... [-o FILE|DIR]"}};
    for (const auto& [arguments, told] : kWrong) {
        EXPECT_EQ(mps(join(Files{"compile"}, arguments)), 2);
        EXPECT_THAT(errors_, HasSubstr(told));
    }
    EXPECT_EQ(mps({"compile", b, "-o", at("b.mps/x/").string()}), 1);
    EXPECT_EQ(errors_, "@/b.mps/x: cannot be made: Not a directory\n");
}

TEST_F(MpsCheck, WhatCannotBeCompiledLeavesNothing) {
    folder_.make("sound.mps", "say 1\n");
    for (const auto& [text, told] : std::initializer_list<std::pair<const char*, const char*>>{
             {"dance\nbreak\n",
              "@/a.mps:1: dance is undefined\n@/a.mps:2: outside a loop: break\n"},
             {"RESULT=&x\n", "@/a.mps: cannot be precompiled: RESULT has a value, or the mark &, "
                             "before the script runs\n"},
             {"x=[1 '?'\ny=?\n", ""},
             {"x=[1 2+?\n",
              "@/a.mps: cannot be precompiled: a list has a random digit, which would "
              "be the same in every game; store it with NAME=?\n"},
             {"\2", "@/a.mps: damaged precompiled script\n"}}) {
        folder_.make("a.mps", text);
        const bool isSound = *told == 0;
        EXPECT_EQ(mps({"compile", at("sound.mps").string(), at("a.mps").string(), "-o",
                       at("out").string()}),
                  isSound ? 0 : 1);
        EXPECT_EQ(out_, told);
        EXPECT_EQ(std::filesystem::remove_all(at("out")) > 0, isSound);
    }
    // Who silences it knows that the command is there.
    folder_.make("a.mps", "; check skip unknown-command\ndance\n");
    EXPECT_EQ(mps({"compile", at("a.mps").string()}), 0);
    EXPECT_EQ(mps({"compile", at("a.mpc").string(), "-o", at("b").string()}), 1);
    EXPECT_EQ(out_, "@/a.mpc: dance is undefined\n");
    EXPECT_EQ(mps({"compile", at("sound.mps").string()}), 0);
    EXPECT_EQ(mps({"compile", at("sound.mpc").string(), "-o", at("b").string()}), 1);
    EXPECT_EQ(out_, "@/sound.mpc: is precompiled already\n");
}

TEST_F(MpsCheck, ListingsTellInstructionsAndVariables) {
    folder_.make("b.mps", "\nfor i 3\ncall p -i|2\n");
    folder_.make("a.mps", "include b.mps\np.1=&x\np=[\"a\tb\"\nprocedure q\nq=p.i\n");
    EXPECT_EQ(mps({"disasm", at("a.mps").string(), at("b.mps").string()}), 0);
    EXPECT_EQ(out_.substr(0, out_.find("@/b.mps:\n")), R"(@/a.mps:
instructions
    0 b.mps:2  for            i 3
    1 b.mps:2  for-next       i 3
    2 b.mps:2  jump-if-false  -> 5
    3 b.mps:3  call           p -i|2
    4 b.mps:2  jump           -> 1
    5      2  assign         p.1 x
    6      4  procedure      q
    7      5  assign         q p.i
    8      4  return
    9      -  end
variables
    0  name        SYSTEM = text WIN
    1  name        RECEIVER
    2  name        RESULT
    3  name        i
    4  constant    3  integer
    5  name        p  elements 1
    6  part        i|2 of i 2 -
    7  constant    2  integer
    8  expression  -i|2  s-tz of i|2
    9  name        p.1 = text a\x09b
   10  name        x
   11  constant    "a\x09b"  text
   12  name        q = integer +6
   13  family      p.i of i
)");
    EXPECT_EQ(mps({"disasm", at("none.mps").string(), at("b.mps").string()}), 1);
    EXPECT_THAT(out_,
                StartsWith("@/none.mps: cannot be read: No such file or directory\n@/b.mps:\n"));
}

TEST_F(MpsCheck, FormattedScriptsHaveOneLayout) {
    const std::pair<std::string, std::string> rows[] = {
        {"if  a\n[\nsay\t1 ; 2\n; c  d \t\n]\n; e\nelse\nsay 2",
         "if a\n[\n    say 1 ; 2\n    ; c  d\n]\n; e\nelse\n    say 2\n"},
        {"\n\nsay 1\n \n\n\n  say  \"a  b\"  'c \t\"' \n\n", "say 1\n\nsay \"a  b\" 'c \t\"'\n"},
        {"if a\nif b\nsay 1\nelse\nfor\nif c\nsay 2\nelse if d\n[\nbreak\n]\nelse say 3\nsay 4\n",
         "if a\n    if b\n        say 1\n    else\n        for\n            if c\n"
         "                say 2\n            else if d\n            [\n                break\n"
         "            ]\n            else say 3\nsay 4\n"},
        {"x= [ a  b]\nx=  & y\nx= 1  +  2\nset= 5\nelse=1\n x = 5\n",
         "x=[a b]\nx=&y\nx=1 + 2\nset=5\nelse=1\nx = 5\n"},
        {"[say 1\n[ ;c\n]]\nprocedure p\n;c\n\n\n[\n]say 2\n",
         "[ say 1\n    [ ;c\n    ] ]\nprocedure p\n;c\n\n[\n] say 2\n"},
        {"say 1\r\n\r\n\r\nsay  2\rsay 3\r\n", "say 1\r\n\r\nsay 2\r\nsay 3\r\n"},
        {"say  1\rsay 2\n", "say 1\rsay 2\r"},
        {"say  1\nsay 2  3\r", "say 1\nsay 2 3\r"}, // one statement
        {"say  ma\xE7\xE3  o \xE9 \r \xA0 say  \"\xE9  \"\r",
         "say ma\xE7\xE3  o \xE9\r\xA0 say \"\xE9  \"\r"},
        {"\xEF\xBB\xBFsay  \xC5\x82o  \xC3\xA7  x\n", "\xEF\xBB\xBFsay \xC5\x82o  \xC3\xA7  x\n"},
        {"include  b.mps  \"not read \nbreaks  \x1A", "include b.mps \"not read\nbreaks  \x1A\n"},
        {" \n", ""}};
    folder_.make("b.mps", "x=1\n");
    const std::string file = at("a.mps").string();
    for (const auto& [text, formatted] : rows) {
        folder_.make("a.mps", text);
        EXPECT_EQ(mps({"format", "--check", file}), 1) << text;
        EXPECT_EQ(out_, "@/a.mps\n");
        EXPECT_EQ(mps({"format", file}), 0);
        EXPECT_EQ(out_, formatted);
        EXPECT_EQ(read("a.mps"), text);
        EXPECT_EQ(mps({"format", "--write", folder_.path()}), 0);
        EXPECT_EQ(read("a.mps"), formatted);
        EXPECT_TRUE(mps({"format", "--check", folder_.path()}) == 0 && out_.empty()) << out_;
    }
}

TEST_F(MpsCheck, WhatCannotBeFormattedStaysAsItIs) {
    namespace fs = std::filesystem;
    const std::string large = [] { // has no room for its indents
        std::string text = "procedure p\n[\n";
        while (text.size() < 65000) text += "say \"aaaaaaaaaa\"\n";
        return text + "]\n";
    }();
    folder_.make("bad.mps", "say  \"a\n");
    folder_.make("large.mps", large);
    folder_.make("one.MPS", "\2");
    folder_.make("real", "say  1\n");
    fs::permissions(at("real"), fs::perms::owner_all);
    fs::create_symlink(at("real"), at("z.mps"));
    EXPECT_EQ(mps({"format", "--write", folder_.path()}), 1);
    EXPECT_EQ(out_,
              "@/bad.mps:1: a quote is not closed: \"a\n"
              "@/large.mps: Script too long: at most 65535 bytes are allowed; move a part of it "
              "into a script of its own\n"
              "@/large.mps: stays as it is: formatted, it would be refused, as told above\n"
              "@/one.MPS: is precompiled, and has no text to format\n@/z.mps\n");
    EXPECT_EQ(read("bad.mps") + read("large.mps") + read("one.MPS"), "say  \"a\n" + large + "\2");
    EXPECT_EQ(read("real"), "say 1\n");
    EXPECT_TRUE(fs::is_symlink(at("z.mps")));
    EXPECT_EQ(fs::status(at("real")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(namesIn("."), "bad.mps large.mps one.MPS real z.mps ");
    EXPECT_EQ(mps({"format", at("bad.mps").string()}), 1);
    EXPECT_TRUE(out_.empty() && errors_.starts_with("@/bad.mps:1: ")) << errors_;
    for (const Files& arguments : {Files{folder_.path()}, {"a", "b"}, {"a", "--check", "--write"}})
        EXPECT_EQ(mps(join(Files{"format"}, arguments)), 2);
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
