// What cannot be compiled, and where: errors, limits and noise.
#include "ycompiler.h"

#include "scriptfixture.h"
#include "wordtable.h"

#include <random>

namespace {

using namespace testing_support;
using ErrorKind = YCompileError::Kind;
using OnError = YCompiler::OnError;

/// The errors of a script as "LINE: DESCRIPTION", those that are only warnings with "?"; and
/// whether it can run.
class YCompilers : public testing::Test {
  protected:
    std::string compile(const std::string& text, OnError onError = OnError::Stop) {
        YHeap heap;
        const auto read = [this](const std::string& name) {
            const auto found = files.find(name);
            if (found == files.end()) return YCompiler::Source{std::nullopt, "can't find " + name};
            return YCompiler::Source{withLineEnds(found->second), {}};
        };
        YCompiler compiler(heap, read, onError);
        isSound = compiler.compile("test.mps", withLineEnds(text)) != nullptr;
        errors = compiler.errors();
        std::string told;
        for (const YCompileError& error : errors)
            told += std::to_string(error.line) + (error.isWarning() ? "? " : ": ") +
                    error.description() + "/";
        return told;
    }
    void expectFailure(const std::string& text, ErrorKind kind) {
        compile(text);
        EXPECT_FALSE(isSound);
        EXPECT_EQ(errors.at(0).kind, kind) << text.substr(0, 50);
    }

    std::map<std::string, std::string> files{{"self", "say s\ninclude self\n"},
                                             {"half", repeat(4001, "wait\n")}};
    bool isSound = false;
    std::vector<YCompileError> errors;
};

TEST_F(YCompilers, ErrorsTellKindAndPlace) {
    for (const auto& [text, told] : rowTable(R"x(
    x=(a+1,,say a 3--2 b,say "open,=5,x == 5,pause,schedule 5,set o,get o name,
    procedure go.now,[,],procedure "x",[,],include ,Boop,break,say "ok",],if a,say,else,say,else,
    say 1,procedure,[,] => 1: parentheses or quotes do not match: (a+1/
    => 3: an operator lacks an operand: 3--2 b/4: a quote is not closed: "open/
    => 5: the statement lacks a word: =5/6? x is undefined/
    => 6: an operator lacks an operand: == 5/7: the statement lacks a word: pause/
    => 8: the statement lacks a word: schedule 5/9: the statement lacks a word: set o/
    => 10: the statement lacks a word: get o name/11: a procedure needs a plain name: procedure
    =>  go.now/14: a procedure needs a plain name: procedure "x"/17: the statement lacks a word: /
    => 18? Boop is undefined/19: outside a loop: break/21: "]" without "[": ]/26: "else" without
    =>  "if": else/28: the statement lacks a word: procedure/
    say 1,[,say 2 => 2: a block or a body is missing or not closed: [/
    [,for,] => 2: a block or a body is missing or not closed: for/
    => 1: a block or a body is missing or not closed: [/
    for,[,procedure p,continue,] => 4: outside a loop: continue/
    say "ok",,include none, => 3: can't find none/
    Boop, => 1? Boop is undefined/)x")) {
        std::string script = text;
        std::replace(script.begin(), script.end(), ',', '\n');
        EXPECT_EQ(compile(script, OnError::Collect), told) << text;
        EXPECT_EQ(isSound, text.starts_with("Boop"));
        compile(script);
        EXPECT_LE(std::ranges::count_if(errors, [](auto& e) { return !e.isWarning(); }), 1);
    }
    const std::string deep = std::string(500, '(') + "a" + std::string(500, ')');
    EXPECT_EQ(compile("x=" + deep),
              "1: the expression is too large: " + std::string(50, '(') + "/");
}

TEST_F(YCompilers, SizesAreLimited) {
    const auto expectSound = [this](const std::string& text) {
        EXPECT_EQ(compile(text), "");
        EXPECT_TRUE(isSound);
    };
    expectSound(repeat(8000, "wait\n"));
    expectFailure(repeat(8001, "wait\n"), ErrorKind::TooManyInstructions);
    EXPECT_EQ(errors.at(0).line, 8001);
    expectFailure("for\n[\ninclude half\nif x\ninclude half\n]", ErrorKind::TooManyInstructions);
    expectSound("say" + repeat(19996, " a")); // three predefined words, and -1 after each list
    expectFailure("say" + repeat(19997, " a"), ErrorKind::TooManyOperands);
    expectSound(repeat(100, "if x\n[\n") + repeat(100, "]\n"));
    expectFailure(repeat(30000, "[\n") + repeat(30000, "]\n"), ErrorKind::NestedTooDeep);
    expectFailure("say 1\ninclude self", ErrorKind::NestedTooDeep);
    for (const std::string& text : {repeat(10000, "if x\n"), std::string(65535, '['),
                                    std::string(65535, ']'), "say " + std::string(65531, '"')})
        EXPECT_NE(compile(text, OnError::Collect), "");
}

TEST_F(YCompilers, SurvivesNoise) {
    std::mt19937 random(1);
    const std::string_view bits[] = {
        "if ", "else", "for ", "[",  "]",  "\r",    "\r",          "x", "=", "\"",
        "(",   ")",    "+",    "|",  ".",  "break", "procedure p", "$", " ", "include self",
        "~",   "'",    "1",    "=[", "=&", "?",     "\xFF"};
    for (int i = 0; i < 2000; ++i) {
        std::string text;
        for (auto count = random() % 40; count > 0; --count)
            text += bits[random() % std::size(bits)];
        compile(text, random() % 2 ? OnError::Stop : OnError::Collect);
        ASSERT_EQ(isSound, std::ranges::all_of(errors, &YCompileError::isWarning)) << text;
    }
}

} // namespace
