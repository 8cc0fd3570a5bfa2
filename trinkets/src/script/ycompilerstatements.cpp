// The statements of the language, and what instructions they become.
#include "omdebug.h"
#include "ycompiler.h"
#include "ykeyword.h"

#include <algorithm>

namespace {

constexpr int kMaxDepth = 250;

/// Words that begin a statement, in the order in which they are matched.
struct KeywordRow {
    std::string_view text;
    enum class Form { If, Else, For, Procedure, Break, Continue, Plain } form;
    YOpcode opcode;
};
using Form = KeywordRow::Form;

constexpr KeywordRow kKeywords[] = {
    {"if", Form::If, YOpcode::Test},
    {"else", Form::Else, YOpcode::Else},
    {"call", Form::Plain, YOpcode::Call},
    {"for", Form::For, YOpcode::ForSetUp},
    {"procedure", Form::Procedure, YOpcode::Procedure},
    {"break", Form::Break, YOpcode::Jump},
    {"continue", Form::Continue, YOpcode::Jump},
    {"yield", Form::Plain, YOpcode::Yield},
    {"play", Form::Plain, YOpcode::Play},
    {"set", Form::Plain, YOpcode::Set},
    {"get", Form::Plain, YOpcode::Get},
    {"suspend", Form::Plain, YOpcode::Suspend},
    {"resume", Form::Plain, YOpcode::Resume},
    {"drop", Form::Plain, YOpcode::Drop},
    {"schedule", Form::Plain, YOpcode::Schedule},
    {"idle", Form::Plain, YOpcode::Idle},
    {"wait", Form::Plain, YOpcode::Wait},
    {"pause", Form::Plain, YOpcode::Pause},
    {"relay", Form::Plain, YOpcode::Relay},
    {"say", Form::Plain, YOpcode::Say},
    {"exit", Form::Plain, YOpcode::Exit},
    {"debug", Form::Plain, YOpcode::Debug},
    {"quit", Form::Plain, YOpcode::Quit},
};
constexpr std::string_view kInclude = "include";

const KeywordRow* findKeyword(std::string_view word) {
    const auto row = std::find_if(std::begin(kKeywords), std::end(kKeywords),
                                  [&](const KeywordRow& k) { return k.text == word; });
    return row == std::end(kKeywords) ? nullptr : row;
}

} // namespace

bool YCompiler::isKeyword(std::string_view word) {
    return word == kInclude || findKeyword(word) != nullptr;
}

std::vector<std::string_view> YCompiler::keywords() {
    std::vector<std::string_view> words{kInclude};
    for (const KeywordRow& row : kKeywords) words.push_back(row.text);
    return words;
}

YCompiler::Outcome YCompiler::compileStatement() {
    Outcome outcome = Outcome::Included;
    while (outcome == Outcome::Included) outcome = compileNextStatement();
    return outcome;
}

YCompiler::Outcome YCompiler::compileNextStatement() {
    if (gaveUp_) return Outcome::Failed;
    if (!skipToStatement()) return Outcome::EndOfText;
    const char first = text().text[text().at];
    if (first == ']') {
        ++text().at;
        return Outcome::Closed;
    }
    if (depth_ >= kMaxDepth) return fail(YCompileError::Kind::NestedTooDeep, text().at);
    ++depth_;
    const Outcome outcome = first == '[' ? compileBlock() : compileFirstWord();
    --depth_;
    return outcome;
}

YCompiler::Outcome YCompiler::compileBlock() {
    const std::size_t start = text().at++;
    for (;;) {
        switch (compileStatement()) {
        case Outcome::Closed: return Outcome::Statement;
        case Outcome::EndOfText: return fail(YCompileError::Kind::OpenBlock, start);
        case Outcome::Failed: return Outcome::Failed;
        case Outcome::Statement:
        case Outcome::Included: break;
        }
    }
}

/// The statement that belongs to the one at `at`.
YCompiler::Outcome YCompiler::compileBody(std::size_t at) {
    const Outcome outcome = compileStatement();
    if (outcome == Outcome::Closed) --text().at;
    if (outcome == Outcome::Closed || outcome == Outcome::EndOfText)
        return fail(YCompileError::Kind::OpenBlock, at);
    return outcome;
}

YCompiler::Outcome YCompiler::compileFirstWord() {
    const Word word = *nextWord(true);
    statementAt_ = word.at;
    if (!atLineEnd() && text().text[text().at] == '=') return compileAssignment(word);
    if (word.text == kInclude) return include();
    const KeywordRow* keyword = findKeyword(word.text);
    if (!keyword) return compileCommand(word);
    switch (keyword->form) {
    case Form::If: return compileIf(word);
    case Form::Else: return fail(YCompileError::Kind::StrayElse, word.at);
    case Form::For: return compileFor(word);
    case Form::Procedure: return compileProcedure(word);
    case Form::Break: return compileLoopJump(YOpcode::Jump, word);
    case Form::Continue: return compileLoopJump(YOpcode::ForNext, word);
    case Form::Plain: return compileKeyword(keyword->opcode, word);
    }
    return Outcome::Failed;
}

YCompiler::Outcome YCompiler::compileKeyword(YOpcode opcode, const Word& keyword) {
    std::vector<Operand> words;
    if (!readOperands(words)) return Outcome::Statement;
    if (static_cast<int>(words.size()) < YMinOperands(opcode))
        return fail(YCompileError::Kind::MissingOperand, keyword.at);
    if (const auto list = emitList(words, keyword.at)) emit(opcode, *list, placeOf(keyword.at));
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileCommand(const Word& word) {
    if (!YCommands::find(word.text))
        record(YCompileError::Kind::UndefinedCommand, word.at, 0, std::string(word.text));
    const auto command = internWord(word);
    if (!command) return Outcome::Statement;
    std::vector<Operand> words{{*command, word.at}};
    if (!readOperands(words)) return Outcome::Statement;
    if (const auto list = emitList(words, word.at)) emit(YOpcode::Command, *list, placeOf(word.at));
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileAssignment(const Word& name) {
    ++text().at; // "="
    if (name.text.empty()) return fail(YCompileError::Kind::MissingOperand, name.at);
    const auto target = internWord(name);
    if (!target) return Outcome::Statement;
    YVariable& variable = heap_.get(*target);
    skipBlanks();
    if (!atLineEnd() && text().text[text().at] == '[') {
        ++text().at;
        compileList(variable);
        return Outcome::Statement;
    }
    if (!atLineEnd() && text().text[text().at] == '&') {
        ++text().at;
        // In a running script a name may have its own object already, and is its owner then.
        if (!variable.ownsObject()) variable.markReference();
    }
    std::vector<Operand> words{{*target, name.at}};
    if (!readOperands(words)) return Outcome::Statement;
    OMDebug::check(words.size() > 1, "operands", "Assignment to nothing");
    if (const auto list = emitList(words, name.at)) emit(YOpcode::Assign, *list, placeOf(name.at));
    return Outcome::Statement;
}

void YCompiler::compileList(YVariable& name) {
    while (const auto word = nextWord(false)) {
        const auto index = internWord(*word);
        if (!index) return;
        YScratch scratch;
        heap_.appendElement(name, heap_.get(*index).string(scratch));
    }
}

YCompiler::Outcome YCompiler::compileIf(const Word& keyword) {
    const std::size_t at = keyword.at;
    const YSourceLine place = placeOf(at);
    const auto list = emitOperands(at);
    if (!list) return Outcome::Statement;
    emit(YOpcode::Test, *list, place);
    const int skip = emit(YOpcode::JumpIfFalse, 0, place);
    if (const Outcome outcome = compileBody(at); outcome != Outcome::Statement) return outcome;
    const int end = emit(YOpcode::Nothing, 0, place);
    patch(skip, here());
    const std::optional<std::size_t> elseAt = takeElse();
    if (!elseAt) return Outcome::Statement;

    // The end of the body jumps over the else body; a false test lands on the else.
    script_->instructions[static_cast<std::size_t>(end)].opcode = YOpcode::Jump;
    emit(YOpcode::Nothing, 0, placeOf(*elseAt));
    if (const Outcome outcome = compileBody(*elseAt); outcome != Outcome::Statement) return outcome;
    // No jump but a loop's own may land where the loop is left.
    if (script_->instructions.back().opcode == YOpcode::Jump) emit(YOpcode::Nothing, 0, place);
    patch(end, here());
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileFor(const Word& keyword) {
    const std::size_t at = keyword.at;
    const YSourceLine place = placeOf(at);
    const auto list = emitOperands(at);
    if (!list) return Outcome::Statement;
    emit(YOpcode::ForSetUp, *list, place);
    const int next = emit(YOpcode::ForNext, *list, place);
    const int leave = emit(YOpcode::JumpIfFalse, 0, place);
    loops_.push_back({next, {}});
    if (const Outcome outcome = compileBody(at); outcome != Outcome::Statement) return outcome;
    emit(YOpcode::Jump, next, place);
    patch(leave, here());
    for (const int jump : loops_.back().breaks) patch(jump, here());
    loops_.pop_back();
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileProcedure(const Word& keyword) {
    const std::size_t at = keyword.at;
    const YSourceLine place = placeOf(at);
    std::vector<Operand> words;
    if (!readOperands(words)) return Outcome::Statement;
    if (words.empty()) return fail(YCompileError::Kind::MissingOperand, at);
    YVariable& name = heap_.get(words.front().index);
    if (name.kind() != YVariable::Kind::Name) return fail(YCompileError::Kind::ProcedureName, at);
    const auto list = emitList(words, at);
    if (!list) return Outcome::Statement;
    name.setString("+" + std::to_string(here()));
    emit(YOpcode::Procedure, *list, place);
    std::vector<Loop> outer; // a procedure's body is in no loop
    outer.swap(loops_);
    const Outcome outcome = compileBody(at);
    outer.swap(loops_);
    if (outcome != Outcome::Statement) return outcome;
    emit(YOpcode::Return, 0, place);
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileLoopJump(YOpcode which, const Word& keyword) {
    if (loops_.empty()) return fail(YCompileError::Kind::OutsideLoop, keyword.at);
    skipLine();
    Loop& loop = loops_.back();
    const int jump = emit(YOpcode::Jump, loop.next, placeOf(keyword.at));
    if (which == YOpcode::Jump) loop.breaks.push_back(jump);
    return Outcome::Statement;
}
