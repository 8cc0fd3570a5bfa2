#include "ycompiler.h"

#include "scriptfixture.h"
#include "yexpression.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

namespace {

using testing_support::withLineEnds;
using ErrorKind = YCompileError::Kind;

std::string repeat(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

class YCompilers : public testing::Test {
  protected:
    YCompilers() {
        YCommands::add("Beep", [] {});
    }
    ~YCompilers() override { YCommands::clear(); }

    /// The instructions of a script as "OPCODE operands; ...", jump targets with ">", or "failed".
    std::string compile(const std::string& text,
                        YCompiler::OnError onError = YCompiler::OnError::Stop) {
        heap = std::make_unique<YHeap>();
        const auto read = [this](const std::string& name) {
            const auto found = files.find(name);
            if (found == files.end()) return YCompiler::Source{std::nullopt, "can't find " + name};
            return YCompiler::Source{withLineEnds(found->second), {}};
        };
        YCompiler compiler(*heap, read, onError);
        script = compiler.compile("test.mps", withLineEnds(text));
        errors = compiler.errors();
        return script ? listing() : "failed";
    }
    std::string listing() {
        std::string list;
        for (const YInstruction& instruction : script->instructions) {
            if (!list.empty()) list += "; ";
            list += std::to_string(static_cast<int>(instruction.opcode));
            if (YIsJump(instruction.opcode)) list += " >" + std::to_string(instruction.operand);
            if (!YHasOperands(instruction.opcode)) continue;
            for (auto at = static_cast<std::size_t>(instruction.operand);
                 script->operands[at] != YScript::kEndOfList; ++at)
                list += " " + heap->get(script->operands[at]).text();
        }
        return list;
    }
    void expectFailure(const std::string& text, ErrorKind kind) {
        EXPECT_EQ(compile(text), "failed");
        EXPECT_EQ(errors.at(0).kind, kind) << text.substr(0, 50);
    }

    std::map<std::string, std::string> files{{"a", "say a1\ninclude b\nsay a2"},
                                             {"b", "say b\n"},
                                             {"empty", ""},
                                             {"open", "[\nsay o\n"},
                                             {"close", "]\n"},
                                             {"if", "if c\nsay i\n"},
                                             {"self", "say s\ninclude self\n"},
                                             {"inc", "\nsay i\n"},
                                             {"half", repeat(4001, "wait\n")}};
    std::unique_ptr<YHeap> heap;
    std::unique_ptr<YScript> script;
    std::vector<YCompileError> errors;
};

TEST_F(YCompilers, StatementsBecomeInstructions) {
    const std::pair<std::string, const char*> rows[] = {
        {"x=", "18 x; 0"},
        {"say a\nwait\ndrop x y\nexit\nsuspend\nresume\nquit\nquit s\nrelay s\n",
         "14 a; 22; 19 x y; 25; 26; 27; 46; 46 s; 45 s; 0"},
        {"call p 1\nyield off\nplay o m 1 }\nset o e p\nget o e r\ndebug on\n",
         "6 p 1; 37 off; 40 o m 1 }; 35 o e p; 36 o e r; 29 on; 0"},
        {"schedule 1 p\nidle 2 p\npause 3\n", "24 1 p; 23 2 p; 28 3; 0"},
        {"if c\nsay 1\nelse say 2", "12 c; 10 >4; 14 1; 11 >6; 13; 14 2; 0"},
        {"if c\n[\nsay 1\n]\n\n; no\n  else\n[\n]", "12 c; 10 >4; 14 1; 11 >5; 13; 0"},
        {"if a\nsay 1\nelse\nif b\nsay 2\nelse\nsay 3",
         "12 a; 10 >4; 14 1; 11 >11; 13; 12 b; 10 >9; 14 2; 11 >11; 13; 14 3; 0"},
        {"if a\nif b\nsay 1\nelse\nsay 2",
         "12 a; 10 >9; 12 b; 10 >6; 14 1; 11 >8; 13; 14 2; 13; 0"},
        {"for a\n[\nfor b\n[\nbreak\n]\nbreak\n]",
         "8 a; 9 a; 10 >10; 8 b; 9 b; 10 >8; 11 >8; 11 >4; 11 >10; 11 >1; 0"},
        {"procedure p a b\n[\nsay a\n]\nsay 1", "7 p a b; 14 a; 15; 14 1; 0"},
        // words
        {"say \"a b\" 'c \"d'", "14 \"a b\" 'c \"d'; 0"},
        {"say a\tb\x7Fz\xE9z \xE9 e", "14 a b z z e; 0"}, // tab and bytes that are no ASCII
        {"say \"caf\xE9\"", "14 \"caf\xE9\"; 0"},
        {std::string("say a\0b", 7), "14 a b; 0"},
        {"say a=b", "14 a=b; 0"},
        {"\"a=b\"=1\nitem.i=1", "18 \"a=b\" 1; 18 item.i 1; 0"},
        {"ifx 1\nsay=2\nSay 3", "21 ifx 1; 18 say 2; 21 Say 3; 0"}, // keywords need a blank
        // included files
        {"say 1\ninclude a\nsay 2", "14 1; 14 a1; 14 b; 14 a2; 14 2; 0"},
        {"include b say x\nsay 2", "14 b; 14 2; 0"}, // the rest of the line is skipped
        {"if x\ninclude b\nsay 2", "12 x; 10 >4; 14 b; 13; 14 2; 0"},
        {"if x\ninclude empty\nsay 2", "12 x; 10 >4; 14 2; 13; 0"},
        {"if x\ninclude open\nsay 2\ninclude close\nsay 3", "12 x; 10 >5; 14 o; 14 2; 13; 14 3; 0"},
        {"include if\nelse\nsay e", "12 c; 10 >4; 14 i; 11 >6; 13; 14 e; 0"},
        {"include if\nelsewhere=1", "12 c; 10 >4; 14 i; 13; 18 elsewhere 1; 0"},
        {repeat(400, "include empty\n") + "say 1", "14 1; 0"},
    };
    for (const auto& [text, instructions] : rows) EXPECT_EQ(compile(text), instructions) << text;

    compile("say 1\n\nif x\nsay 2\ninclude inc\nsay 3");
    std::string places;
    for (const YSourceLine& line : script->lines)
        places += script->files[line.file] + ":" + std::to_string(line.line) + " ";
    EXPECT_EQ(places, "test.mps:1 test.mps:3 test.mps:3 test.mps:4 test.mps:3 inc:2 test.mps:6 "
                      "test.mps:7 ");
}

TEST_F(YCompilers, LinesEndWithLfOnlyWhereThereIsNoCr) {
    heap = std::make_unique<YHeap>();
    YCompiler compiler(*heap, nullptr);
    for (const char* text : {"say a\nsay b\n", "say a\r\nsay b\r\n"}) {
        script = compiler.compile("lines", text);
        EXPECT_EQ(listing(), "14 a; 14 b; 0");
    }
    script = compiler.compile("mixed", "say a\nb\rsay c");
    EXPECT_EQ(listing(), "14 a b; 14 c; 0") << "LF is a blank";
}

TEST_F(YCompilers, ListsAndMarksAreDoneWhileCompiling) {
    std::vector<std::string> checks;
    OMDebug::setCheckListener([&](const OMDebug::Failure& f) { checks.emplace_back(f.message); });
    EXPECT_EQ(compile("say 1\nprocedure p\n[\n]\nx=[ one \"two words\" 3 p 1+1 last]\nx=[more\n"
                      "y=&z\ny.1=5\n"),
              "14 1; 7 p; 15; 18 y z; 18 y.1 5; 0");
    std::string values;
    for (const char* name : {"p", "x.1", "x.2", "x.3", "x.4", "x.5", "x.6", "x.7"}) {
        YScratch scratch;
        values.append(heap->get(heap->intern(name)).string(scratch)).append(",");
    }
    EXPECT_EQ(values, "+1,one,two words,3,+1,2,last],more,") << "a procedure that is known by then";
    EXPECT_EQ(heap->get(heap->lookup("y")).ownership(), YVariable::Ownership::Reference);
    compile("x=\nx=1\n");
    OMDebug::setCheckListener(nullptr);
    EXPECT_EQ(checks, std::vector<std::string>{"Assignment to nothing"});
}

TEST_F(YCompilers, ErrorsTellKindAndPlace) {
    const std::string deep = std::string(500, '(') + "a" + std::string(500, ')');
    const struct {
        std::string text;
        ErrorKind kind;
        int code;
        std::string message;
    } rows[] = {
        {"say 1\nx=(a+1\n", ErrorKind::Expression, yerror::kUnbalanced, "2: (a+1"},
        {"\n\nsay a 3--2 b", ErrorKind::Expression, yerror::kMissingOperand, "3: 3--2 b"},
        {"say \"open\nsay 2", ErrorKind::Expression, yerror::kUnclosedQuote, "1: \"open"},
        {"x=" + deep, ErrorKind::Expression, yerror::kTooDeep, "1: " + deep.substr(0, 50)},
        {"x == 5", ErrorKind::Expression, yerror::kMissingOperand, "1: == 5"},
        {"=5", ErrorKind::MissingOperand, 0, "1: =5"},
        {"pause", ErrorKind::MissingOperand, 0, "1: pause"},
        {"schedule 5", ErrorKind::MissingOperand, 0, "1: schedule 5"},
        {"set o", ErrorKind::MissingOperand, 0, "1: set o"},
        {"get o name", ErrorKind::MissingOperand, 0, "1: get o name"},
        {"procedure\n[\n]", ErrorKind::MissingOperand, 0, "1: procedure"},
        {"say 1\n[\nsay 2", ErrorKind::OpenBlock, 0, "2: ["},
        {"[\nfor\n]", ErrorKind::OpenBlock, 0, "2: for"},
        {"say 1\n]\nsay 2", ErrorKind::StrayBracket, 0, "2: ]"},
        {"if a\nsay 1\nelse\nsay 2\nelse\nsay 3", ErrorKind::StrayElse, 0, "5: else"},
        {"for\n[\nprocedure p\ncontinue\n]", ErrorKind::OutsideLoop, 0, "4: continue"},
        {"procedure go.now\n[\n]", ErrorKind::ProcedureName, 0, "1: procedure go.now"},
        {"procedure \"x\"\n[\n]", ErrorKind::ProcedureName, 0, "1: procedure \"x\""},
        {"say 1\ninclude  \nsay 2", ErrorKind::MissingOperand, 0, "2: "},
    };
    std::set<std::string> descriptions;
    for (const auto& row : rows) {
        EXPECT_EQ(compile(row.text), "failed") << row.text;
        const auto error = std::ranges::find_if_not(errors, &YCompileError::isWarning);
        ASSERT_NE(error, errors.end()) << row.text;
        EXPECT_EQ(error->kind, row.kind) << row.text;
        EXPECT_EQ(error->code, row.code) << row.text;
        EXPECT_EQ(YCompiler::message(*error), row.message) << row.text;
        descriptions.insert(error->description().substr(0, error->description().find(':')));
    }
    EXPECT_EQ(descriptions.size(), 10U) << "each kind, and code, has its own";
    expectFailure("include none\nsay 1", ErrorKind::IncludeUnreadable);
    EXPECT_EQ(errors.at(0).description(), "can't find none");
}

TEST_F(YCompilers, CollectsAllErrorsWhenAsked) {
    const std::string text = "x=(1\nbreak\nBoop\nsay \"ok\"\npause\nelse\n]\nsay \"open\nif x\n";
    EXPECT_EQ(compile(text, YCompiler::OnError::Collect), "failed");
    std::string kinds;
    for (const YCompileError& error : errors)
        kinds += std::to_string(error.line) + (error.isWarning() ? "? " : "! ");
    EXPECT_EQ(kinds, "1! 2! 3? 5! 6! 7! 8! 9! ");
    compile(text);
    EXPECT_EQ(errors.size(), 1U);
}

TEST_F(YCompilers, SizesAreLimited) {
    EXPECT_NE(compile(repeat(8000, "wait\n")), "failed");
    expectFailure(repeat(8001, "wait\n"), ErrorKind::TooManyInstructions);
    EXPECT_EQ(errors.at(0).line, 8001);
    expectFailure("for\n[\ninclude half\nif x\ninclude half\n]", ErrorKind::TooManyInstructions);
    // Three predefined words, and -1 after each list.
    EXPECT_NE(compile("say" + repeat(19996, " a")), "failed");
    expectFailure("say" + repeat(19997, " a"), ErrorKind::TooManyOperands);

    EXPECT_NE(compile(repeat(100, "if x\n[\n") + repeat(100, "]\n")), "failed");
    expectFailure(repeat(30000, "[\n") + repeat(30000, "]\n"), ErrorKind::NestedTooDeep);
    expectFailure("say 1\ninclude self", ErrorKind::NestedTooDeep);
    for (const std::string& text : {repeat(10000, "if x\n"), std::string(65535, '['),
                                    std::string(65535, ']'), "say " + std::string(65531, '"')})
        EXPECT_EQ(compile(text, YCompiler::OnError::Collect), "failed");
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
        compile(text, random() % 2 ? YCompiler::OnError::Stop : YCompiler::OnError::Collect);
        ASSERT_EQ(script == nullptr, !std::ranges::all_of(errors, &YCompileError::isWarning))
            << text;
    }
}

} // namespace
