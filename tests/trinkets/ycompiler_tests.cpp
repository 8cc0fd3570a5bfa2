#include "ycompiler.h"

#include "scriptfixture.h"
#include "yexpression.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::withLineEnds;
using ErrorKind = YCompileError::Kind;

class YCompilers : public testing::Test {
  protected:
    YCompilers() {
        YCommands::clear();
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
        warnings.clear();
        compiler.setWarningLink(
            [this](const YCompileError& error) { warnings.push_back(error.description()); });
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
    std::string value(const std::string& name) {
        YScratch scratch;
        return std::string(heap->get(heap->intern(name)).string(scratch));
    }

    std::map<std::string, std::string> files;
    std::unique_ptr<YHeap> heap;
    std::unique_ptr<YScript> script;
    std::vector<YCompileError> errors;
    std::vector<std::string> warnings;
};

// ---------------------------------------------------------------------------- statements

TEST_F(YCompilers, StatementsBecomeInstructions) {
    const struct {
        const char* name;
        const char* text;
        const char* listing;
    } rows[] = {
        {"nothing", "", "0"},
        {"assignment", "x=1", "18 x 1; 0"},
        {"blanks after the sign", "x=   1 2", "18 x 1 2; 0"},
        {"to nothing", "x=", "18 x; 0"},
        {"keywords", "say a\nwait\ndrop x y\nexit\nsuspend\nresume\nquit\nquit s\nrelay s\n",
         "14 a; 22; 19 x y; 25; 26; 27; 46; 46 s; 45 s; 0"},
        {"more keywords", "call p 1\nyield off\nplay o m 1 }\nset o e p\nget o e r\ndebug on\n",
         "6 p 1; 37 off; 40 o m 1 }; 35 o e p; 36 o e r; 29 on; 0"},
        {"timers", "schedule 1 p\nidle 2 p\npause 3\n", "24 1 p; 23 2 p; 28 3; 0"},
        {"command", "Beep 1 x+1\n", "21 Beep 1 x+1; 0"},
        {"if", "if c\nsay 1\nsay 2", "12 c; 10 >4; 14 1; 13; 14 2; 0"},
        {"if else", "if c\nsay 1\nelse\nsay 2\nsay 3",
         "12 c; 10 >4; 14 1; 11 >6; 13; 14 2; 14 3; 0"},
        {"else on the line", "if c\nsay 1\nelse say 2", "12 c; 10 >4; 14 1; 11 >6; 13; 14 2; 0"},
        {"else after comments", "if c\n[\nsay 1\n]\n\n; no\n  else\n[\n]",
         "12 c; 10 >4; 14 1; 11 >5; 13; 0"},
        {"else if", "if a\nsay 1\nelse\nif b\nsay 2\nelse\nsay 3",
         "12 a; 10 >4; 14 1; 11 >11; 13; 12 b; 10 >9; 14 2; 11 >11; 13; 14 3; 0"},
        {"nearest if", "if a\nif b\nsay 1\nelse\nsay 2",
         "12 a; 10 >9; 12 b; 10 >6; 14 1; 11 >8; 13; 14 2; 13; 0"},
        {"if without condition", "if\nsay 1", "12; 10 >4; 14 1; 13; 0"},
        {"counted for", "for i 1 3\nsay i", "8 i 1 3; 9 i 1 3; 10 >5; 14 i; 11 >1; 0"},
        {"endless for", "for\n[\nsay 1\nbreak\ncontinue\n]\nsay 2",
         "8; 9; 10 >7; 14 1; 11 >7; 11 >1; 11 >1; 14 2; 0"},
        {"nested loops", "for a\n[\nfor b\n[\nbreak\n]\nbreak\n]",
         "8 a; 9 a; 10 >10; 8 b; 9 b; 10 >8; 11 >8; 11 >4; 11 >10; 11 >1; 0"},
        {"procedure", "procedure p a b\n[\nsay a\n]\nsay 1", "7 p a b; 14 a; 15; 14 1; 0"},
        {"procedure of one line", "procedure p\nsay 1", "7 p; 14 1; 15; 0"},
        {"empty blocks", "[\n]\nif a\n[\n[\n]\n]", "12 a; 10 >3; 13; 0"},
        {"statement after a bracket", "[ x=1\n]", "18 x 1; 0"},
        {"comments", "; one\n  ;two\nsay 1 ;not\n;", "14 1 ;not; 0"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(compile(row.text), row.listing) << row.name;
        EXPECT_THAT(errors, IsEmpty()) << row.name;
    }
}

TEST_F(YCompilers, TheFirstOperandWordsArePredefined) {
    compile("say x");
    EXPECT_THAT(script->operands, ElementsAre(0, 1, 2, 3, -1));
}

TEST_F(YCompilers, WordsEndAtBlanksAndEqualsSigns) {
    const struct {
        const char* name;
        const char* text;
        const char* listing;
    } rows[] = {
        {"quoted", "say \"a b\" 'c \"d'", "14 \"a b\" 'c \"d'; 0"},
        {"tab, LF and bytes that are no ASCII",
         "say a\tb\x7F"
         "c\xE9"
         "d \xE9 e",
         "14 a b c d e; 0"},
        {"quoted Latin-1", "say \"caf\xE9\"", "14 \"caf\xE9\"; 0"},
        {"NUL", nullptr, "14 a b; 0"},
        {"equals sign in an operand", "say a=b", "14 a=b; 0"},
        {"quoted equals sign", "\"a=b\"=1", "18 \"a=b\" 1; 0"},
        {"compound target", "item.i=1", "18 item.i 1; 0"},
        {"expression", "x=(a+b)*2", "18 x (a+b)*2; 0"},
        {"bracket in a statement", "say a ]", "14 a ]; 0"},
        {"keywords need a blank", "ifx 1\nsay=2\nSay 3", "21 ifx 1; 18 say 2; 21 Say 3; 0"},
        {"a blank before the sign", "x = 5", "21 x = 5; 0"},
        {"names like list and include", "include=1\nelse=2\nprocedure=3",
         "18 include 1; 18 else 2; 18 procedure 3; 0"},
    };
    for (const auto& row : rows) {
        const std::string text = row.text ? std::string(row.text) : std::string("say a\0b", 7);
        EXPECT_EQ(compile(text), row.listing) << row.name;
    }
}

TEST_F(YCompilers, LinesEndWithLfOnlyWhereThereIsNoCr) {
    heap = std::make_unique<YHeap>();
    YCompiler compiler(*heap, nullptr);
    script = compiler.compile("lf", "say a\nsay b\n");
    EXPECT_EQ(listing(), "14 a; 14 b; 0");
    script = compiler.compile("crlf", "say a\r\nsay b\r\n");
    EXPECT_EQ(listing(), "14 a; 14 b; 0");
    script = compiler.compile("mixed", "say a\nb\rsay c");
    EXPECT_EQ(listing(), "14 a b; 14 c; 0") << "LF is a blank";
}

TEST_F(YCompilers, SomethingHappensWhileCompiling) {
    compile(
        "say 1\nprocedure p\n[\n]\nx=[ one \"two words\" 3 p 1+1 last]\nx=[more\ny=&z\ny.1=5\n");
    EXPECT_EQ(value("p"), "+1");
    EXPECT_EQ(value("x.1"), "one");
    EXPECT_EQ(value("x.2"), "two words");
    EXPECT_EQ(value("x.3"), "3");
    EXPECT_EQ(value("x.4"), "+1") << "a procedure that is known by then";
    EXPECT_EQ(value("x.5"), "2");
    EXPECT_EQ(value("x.6"), "last]");
    EXPECT_EQ(value("x.7"), "more");
    EXPECT_EQ(heap->get(heap->lookup("y")).ownership(), YVariable::Ownership::Reference);
    EXPECT_EQ(listing(), "14 1; 7 p; 15; 18 y z; 18 y.1 5; 0") << "lists leave no instruction";

    std::vector<std::string> checks;
    OMDebug::setCheckListener([&](const OMDebug::Failure& f) { checks.emplace_back(f.message); });
    compile("x=\nx=1\n");
    OMDebug::setCheckListener(nullptr);
    EXPECT_THAT(checks, ElementsAre("Assignment to nothing"));
}

TEST_F(YCompilers, UnknownCommandsAreReportedAndCompiled) {
    EXPECT_EQ(compile("Beep\nbeep 1\nBoop\n"), "21 Beep; 21 beep 1; 21 Boop; 0");
    EXPECT_THAT(warnings, ElementsAre("beep is undefined", "Boop is undefined"));
    compile("x = 5");
    EXPECT_THAT(warnings, ElementsAre("x is undefined"));
    compile("Beep\nbeep 1\nBoop\n");
    EXPECT_EQ(errors.at(1).line, 3);
}

TEST_F(YCompilers, KnowsWhereInstructionsStand) {
    files["inc"] = "\nsay i\n";
    compile("say 1\n\nif x\nsay 2\ninclude inc\nsay 3");
    std::string places;
    for (const YSourceLine& line : script->lines)
        places += script->files[line.file] + ":" + std::to_string(line.line) + " ";
    EXPECT_EQ(places, "test.mps:1 test.mps:3 test.mps:3 test.mps:4 test.mps:3 inc:2 test.mps:6 "
                      "test.mps:7 ");
}

// ---------------------------------------------------------------------------- includes

TEST_F(YCompilers, IncludesUnwindInTheirOrder) {
    files["a"] = "say a1\ninclude b\nsay a2";
    files["b"] = "say b\n";
    files["empty"] = "";
    files["open"] = "[\nsay o\n";
    files["close"] = "]\n";
    files["if"] = "if c\nsay i\n";
    const struct {
        const char* name;
        const char* text;
        const char* listing;
    } rows[] = {
        {"nested", "say 1\ninclude a\nsay 2", "14 1; 14 a1; 14 b; 14 a2; 14 2; 0"},
        {"at the end", "say 1\ninclude b", "14 1; 14 b; 0"},
        {"the rest of the line is skipped", "include b say x\nsay 2", "14 b; 14 2; 0"},
        {"in quotes", "include \"b\"\ninclude 'b'", "14 b; 14 b; 0"},
        {"nothing included", "include empty\ninclude empty\nsay 2", "14 2; 0"},
        {"as a body", "if x\ninclude b\nsay 2", "12 x; 10 >4; 14 b; 13; 14 2; 0"},
        {"nothing as a body", "if x\ninclude empty\nsay 2", "12 x; 10 >4; 14 2; 13; 0"},
        {"blocks across files", "if x\ninclude open\nsay 2\ninclude close\nsay 3",
         "12 x; 10 >5; 14 o; 14 2; 13; 14 3; 0"},
        {"else behind an included if", "include if\nelse\nsay e",
         "12 c; 10 >4; 14 i; 11 >6; 13; 14 e; 0"},
        {"no else behind an included if", "include if\nelsewhere=1",
         "12 c; 10 >4; 14 i; 13; 18 elsewhere 1; 0"},
    };
    for (const auto& row : rows) EXPECT_EQ(compile(row.text), row.listing) << row.name;

    std::string many;
    for (int i = 0; i < 400; ++i) many += "include empty\n";
    EXPECT_EQ(compile(many + "say 1"), "14 1; 0");
}

TEST_F(YCompilers, IncludesMayFail) {
    files["self"] = "say s\ninclude self\n";
    EXPECT_EQ(compile("say 1\ninclude self"), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::NestedTooDeep);
    EXPECT_EQ(compile("include none\nsay 1"), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::IncludeUnreadable);
    EXPECT_EQ(errors.at(0).description(), "can't find none");
    EXPECT_EQ(compile("say 1\ninclude  \nsay 2"), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::MissingOperand);
}

// ---------------------------------------------------------------------------- errors

TEST_F(YCompilers, ErrorsTellKindAndPlace) {
    const struct {
        const char* name;
        const char* text;
        ErrorKind kind;
        int code;
        const char* message;
    } rows[] = {
        {"parentheses", "say 1\nx=(a+1\n", ErrorKind::Expression, yerror::kUnbalanced, "2: (a+1"},
        {"missing operand of an operator", "\n\nsay a 3--2 b", ErrorKind::Expression,
         yerror::kMissingOperand, "3: 3--2 b"},
        {"unclosed quote", "say 1\nsay a \"open\nsay 2", ErrorKind::Expression,
         yerror::kUnclosedQuote, "2: \"open"},
        {"too large", nullptr, ErrorKind::Expression, yerror::kTooDeep, nullptr},
        {"equals sign alone", "=5", ErrorKind::MissingOperand, 0, "1: =5"},
        {"operators alone", "x == 5", ErrorKind::Expression, yerror::kMissingOperand, "1: == 5"},
        {"pause", "pause", ErrorKind::MissingOperand, 0, "1: pause"},
        {"yield", "yield ", ErrorKind::MissingOperand, 0, "1: yield"},
        {"relay", "relay", ErrorKind::MissingOperand, 0, "1: relay"},
        {"call", "call", ErrorKind::MissingOperand, 0, "1: call"},
        {"debug", "debug", ErrorKind::MissingOperand, 0, "1: debug"},
        {"play", "play", ErrorKind::MissingOperand, 0, "1: play"},
        {"schedule", "schedule 5", ErrorKind::MissingOperand, 0, "1: schedule 5"},
        {"idle", "idle 5", ErrorKind::MissingOperand, 0, "1: idle 5"},
        {"set", "set o", ErrorKind::MissingOperand, 0, "1: set o"},
        {"get", "get o name", ErrorKind::MissingOperand, 0, "1: get o name"},
        {"procedure", "procedure\n[\n]", ErrorKind::MissingOperand, 0, "1: procedure"},
        {"open block", "say 1\n[\nsay 2", ErrorKind::OpenBlock, 0, "2: ["},
        {"open blocks", "[\n[\n]", ErrorKind::OpenBlock, 0, "1: ["},
        {"no body", "if x", ErrorKind::OpenBlock, 0, "1: if x"},
        {"no body in a block", "[\nfor\n]", ErrorKind::OpenBlock, 0, "2: for"},
        {"stray bracket", "say 1\n]\nsay 2", ErrorKind::StrayBracket, 0, "2: ]"},
        {"else alone", "say 1\nelse\nsay 2", ErrorKind::StrayElse, 0, "2: else"},
        {"second else", "if a\nsay 1\nelse\nsay 2\nelse\nsay 3", ErrorKind::StrayElse, 0,
         "5: else"},
        {"break", "break", ErrorKind::OutsideLoop, 0, "1: break"},
        {"continue in a procedure in a loop", "for\n[\nprocedure p\ncontinue\n]",
         ErrorKind::OutsideLoop, 0, "4: continue"},
    };
    for (const auto& row : rows) {
        const std::string text =
            row.text ? row.text : "x=" + std::string(500, '(') + "a" + std::string(500, ')');
        EXPECT_EQ(compile(text), "failed") << row.name;
        const auto error = std::ranges::find_if_not(errors, &YCompileError::isWarning);
        ASSERT_NE(error, errors.end()) << row.name;
        EXPECT_EQ(error->kind, row.kind) << row.name;
        EXPECT_EQ(error->code, row.code) << row.name;
        if (row.message) {
            EXPECT_EQ(YCompiler::message(*error), row.message) << row.name;
        }
        EXPECT_FALSE(error->description().empty()) << row.name;
    }
    compile("say a \"" + std::string(100, 'o'));
    EXPECT_EQ(errors.at(0).statement, "say a \"" + std::string(17, 'o'));
    EXPECT_EQ(YCompiler::message(errors.at(0)), "1: \"" + std::string(49, 'o'));
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

// ---------------------------------------------------------------------------- limits

TEST_F(YCompilers, CountsInstructionsAndOperandWords) {
    const auto repeat = [](const std::string& line, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += line;
        return text;
    };
    EXPECT_NE(compile(repeat("wait\n", 8000)), "failed");
    EXPECT_EQ(script->instructions.size(), 8001U) << "and the end";
    EXPECT_EQ(compile(repeat("wait\n", 8001)), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::TooManyInstructions);
    EXPECT_EQ(errors.at(0).line, 8001);
    // Three predefined words, and -1 after each list.
    EXPECT_NE(compile("say" + repeat(" a", 19996)), "failed");
    EXPECT_EQ(compile("say" + repeat(" a", 19997)), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::TooManyOperands);
    files["half"] = repeat("wait\n", 4001);
    EXPECT_EQ(compile("include half\ninclude half"), "failed") << "included files are counted in";
    EXPECT_EQ(errors.at(0).kind, ErrorKind::TooManyInstructions);
    // A statement that is open when the limit is met.
    EXPECT_EQ(compile("for\n[\nif x\n[\n" + repeat("wait\n", 8001) + "]\n]\n"), "failed");
}

TEST_F(YCompilers, NestsBlocksToALimit) {
    const auto nested = [](const std::string& open, int depth, const std::string& close) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += open;
        for (int i = 0; i < depth; ++i) text += close;
        return text;
    };
    EXPECT_NE(compile(nested("if x\n[\n", 100, "]\n")), "failed");
    EXPECT_EQ(compile(nested("[\n", 30000, "]\n")), "failed");
    EXPECT_EQ(errors.at(0).kind, ErrorKind::NestedTooDeep);
    EXPECT_EQ(compile(nested("if x\n", 10000, "")), "failed");
    EXPECT_EQ(compile(std::string(65535, '[')), "failed");
    EXPECT_EQ(compile(std::string(65535, ']')), "failed");
    EXPECT_EQ(compile(std::string(65535, ']'), YCompiler::OnError::Collect), "failed");
    EXPECT_EQ(compile("say " + std::string(65531, '"')), "failed") << "an odd number of quotes";
}

// Whatever the bytes are, there is an answer.
TEST_F(YCompilers, SurvivesNoise) {
    std::uint32_t state = 1;
    const auto random = [&] { return (state = state * 1664525U + 1013904223U) >> 16; };
    const std::string_view bits[] = {
        "if ", "else", "for ", "[",  "]",  "\r",    "\r",          "x", "=", "\"",
        "(",   ")",    "+",    "|",  ".",  "break", "procedure p", "$", " ", "include self",
        "~",   "'",    "1",    "=[", "=&", "?",     "\xFF"};
    files["self"] = "say s";
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
