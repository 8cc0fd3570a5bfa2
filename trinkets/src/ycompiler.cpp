#include "ycompiler.h"

#include "omdebug.h"
#include "yexpression.h"
#include "ykeyword.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kLineEnd = '\r';
constexpr std::size_t kShownText = 50;
constexpr std::size_t kShownQuote = 24;
constexpr int kMaxDepth = 250;
constexpr int kLastLine = 65535; ///< lines of traces are counted up to here
constexpr std::size_t kMaxIncludeDepth = 32;
constexpr std::size_t kMaxIncludes = 1000;

bool isBlank(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x21 || byte >= 0x7F) && c != kLineEnd;
}
bool endsWord(char c) { return isBlank(c) || c == kLineEnd; }
bool isQuote(char c) { return c == '"' || c == '\''; }

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
constexpr std::string_view kElse = "else";

const KeywordRow* findKeyword(std::string_view word) {
    const auto row = std::find_if(std::begin(kKeywords), std::end(kKeywords),
                                  [&](const KeywordRow& k) { return k.text == word; });
    return row == std::end(kKeywords) ? nullptr : row;
}

/// The next place that is no blank, line end or comment; the size at the end of the text.
std::size_t statementFrom(std::string_view script, std::size_t at) {
    while (at < script.size()) {
        if (script[at] == ';')
            at = std::min(script.find(kLineEnd, at), script.size());
        else if (endsWord(script[at]))
            ++at;
        else
            break;
    }
    return std::min(at, script.size());
}

std::string_view withoutQuotes(std::string_view word) {
    const bool quoted = word.size() >= 2 && isQuote(word.front()) && word.back() == word.front();
    return quoted ? word.substr(1, word.size() - 2) : word;
}

/// At most `limit` bytes of the script's line from `at` on, without blanks at the end.
std::string shownText(std::string_view script, std::size_t at, std::size_t limit) {
    std::string_view shown = script.substr(std::min(at, script.size()), limit);
    shown = shown.substr(0, shown.find(kLineEnd));
    while (!shown.empty() && endsWord(shown.back())) shown.remove_suffix(1);
    return std::string(shown);
}

std::string_view expressionErrorText(int code) {
    switch (code) {
    case yerror::kUnbalanced: return "parentheses or quotes do not match";
    case yerror::kMissingOperand: return "an operator lacks an operand";
    case yerror::kUnclosedQuote: return "a quote is not closed";
    case yerror::kTooDeep: return "the expression is too large";
    default: return "the expression is wrong";
    }
}

} // namespace

// ---------------------------------------------------------------------------- errors

std::string YCompileError::description() const {
    const auto at = [&](std::string_view what) { return std::string(what) + ": " + text; };
    switch (kind) {
    case Kind::Expression: return at(expressionErrorText(code));
    case Kind::MissingOperand: return at("the statement lacks a word");
    case Kind::OpenBlock: return at("a block or a body is missing or not closed");
    case Kind::StrayBracket: return at("\"]\" without \"[\"");
    case Kind::StrayElse: return at("\"else\" without \"if\"");
    case Kind::OutsideLoop: return at("outside a loop");
    case Kind::TooManyInstructions: return at("more than 8000 instructions");
    case Kind::TooManyOperands: return at("more than 20000 operand words");
    case Kind::TooManyNames: return at("too many names");
    case Kind::NestedTooDeep: return at("nested too deep");
    case Kind::UndefinedCommand: return text + " is undefined";
    case Kind::IncludeUnreadable: return text;
    }
    return text;
}

std::string YCompiler::message(const YCompileError& error) {
    return std::to_string(error.line) + ": " + error.text;
}

void YCompiler::record(YCompileError::Kind kind, std::size_t at, int code, std::string where) {
    YCompileError error;
    error.kind = kind;
    error.code = code;
    error.text = std::move(where);
    error.file = script_->files[text().file];
    error.line = lineAt(at);
    if (code == yerror::kUnclosedQuote)
        error.statement = shownText(text().text, statementAt_, kShownQuote);
    const bool warning = error.isWarning();
    failed_ |= !warning;
    errors_.push_back(std::move(error));
    if (warning) warn_(errors_.back());
}

YCompiler::Outcome YCompiler::fail(YCompileError::Kind kind, std::size_t at, int code) {
    record(kind, at, code, shownText(text().text, at, kShownText));
    using Kind = YCompileError::Kind;
    gaveUp_ |= onError_ == OnError::Stop || kind == Kind::TooManyInstructions ||
               kind == Kind::TooManyOperands || kind == Kind::TooManyNames ||
               kind == Kind::NestedTooDeep;
    if (gaveUp_) return Outcome::Failed;
    skipLine();
    return Outcome::Statement;
}

int YCompiler::lineAt(std::size_t at) {
    Text& t = text();
    if (at < t.countedTo) {
        t.countedTo = 0;
        t.line = 1;
    }
    const auto from = t.text.begin() + static_cast<std::ptrdiff_t>(t.countedTo);
    const auto to = t.text.begin() + static_cast<std::ptrdiff_t>(std::min(at, t.text.size()));
    t.line += static_cast<int>(std::count(from, to, kLineEnd));
    t.countedTo = std::min(at, t.text.size());
    return t.line;
}

// ---------------------------------------------------------------------------- texts

YCompiler::YCompiler(YHeap& heap, Reader reader, OnError onError)
    : heap_(heap), reader_(std::move(reader)), onError_(onError) {}

std::unique_ptr<YScript> YCompiler::compile(const std::string& name, std::string source) {
    script_ = std::make_unique<YScript>();
    script_->name = name;
    script_->operands = {YHeap::kSystem, YHeap::kReceiver, YHeap::kResult};
    errors_.clear();
    texts_.clear();
    loops_.clear();
    failed_ = gaveUp_ = false;
    openText(name, std::move(source));

    Outcome outcome = Outcome::Statement;
    while (outcome == Outcome::Statement) {
        outcome = compileStatement();
        if (outcome == Outcome::Closed)
            outcome = fail(YCompileError::Kind::StrayBracket, text().at - 1);
    }
    if (failed_) return nullptr;
    emit(YOpcode::End, 0, placeOf(text().at));
    script_->instructions.shrink_to_fit();
    script_->operands.shrink_to_fit();
    return std::move(script_);
}

void YCompiler::openText(const std::string& name, std::string source) {
    if (source.find(kLineEnd) == std::string::npos)
        std::replace(source.begin(), source.end(), '\n', kLineEnd);
    source.push_back(kLineEnd);
    script_->files.push_back(name);
    texts_.push_back(
        {.text = std::move(source), .file = static_cast<std::uint16_t>(script_->files.size() - 1)});
}

bool YCompiler::leaveInclude() {
    if (texts_.size() <= 1) return false;
    texts_.pop_back();
    return true;
}

/// Goes on in the file that the next word names.
YCompiler::Outcome YCompiler::include() {
    const std::size_t start = text().at;
    const auto word = nextWord(false);
    if (!word) return fail(YCompileError::Kind::MissingOperand, start);
    if (texts_.size() > kMaxIncludeDepth || script_->files.size() > kMaxIncludes)
        return fail(YCompileError::Kind::NestedTooDeep, word->at);
    const std::string name(withoutQuotes(word->text));
    skipLine();
    Source source = reader_(name);
    if (!source.text) {
        record(YCompileError::Kind::IncludeUnreadable, word->at, 0, source.message);
        gaveUp_ |= onError_ == OnError::Stop;
        return gaveUp_ ? Outcome::Failed : Outcome::Included;
    }
    openText(name, std::move(*source.text));
    return Outcome::Included;
}

// ---------------------------------------------------------------------------- words

void YCompiler::skipBlanks() {
    Text& t = text();
    while (t.at < t.text.size() && isBlank(t.text[t.at])) ++t.at;
}

void YCompiler::skipLine() {
    Text& t = text();
    const auto end = t.text.find(kLineEnd, t.at);
    t.at = end == std::string::npos ? t.text.size() : end;
}

bool YCompiler::atLineEnd() const {
    return text().at >= text().text.size() || text().text[text().at] == kLineEnd;
}

/// False at the end of all texts.
bool YCompiler::skipToStatement() {
    do {
        Text& t = text();
        t.at = statementFrom(t.text, t.at);
        if (t.at < t.text.size()) return true;
    } while (leaveInclude());
    return false;
}

/// The next word of the line, or none at its end. An unclosed quote is found by who interns the
/// word.
std::optional<YCompiler::Word> YCompiler::nextWord(bool stopAtEquals) {
    skipBlanks();
    if (atLineEnd()) return std::nullopt;
    Text& t = text();
    const std::size_t start = t.at;
    char quote = 0;
    for (; t.at < t.text.size(); ++t.at) {
        const char c = t.text[t.at];
        if (c == kLineEnd) break;
        if (quote) {
            if (c == quote) quote = 0;
        } else if (isQuote(c)) {
            quote = c;
        } else if (endsWord(c) || (stopAtEquals && c == '=')) {
            break;
        }
    }
    return Word{std::string_view(t.text).substr(start, t.at - start), start};
}

std::optional<int> YCompiler::internWord(const Word& word) {
    char quote = 0;
    for (const char c : word.text) {
        if (quote) {
            if (c == quote) quote = 0;
        } else if (isQuote(c)) {
            quote = c;
        }
    }
    if (quote) {
        fail(YCompileError::Kind::Expression, word.at, yerror::kUnclosedQuote);
        return std::nullopt;
    }
    int error = yerror::kNone;
    const int index = heap_.internOperand(word.text, error);
    if (error != yerror::kNone) {
        fail(YCompileError::Kind::Expression, word.at, error);
        return std::nullopt;
    }
    if (index > YHeap::kMaxOperand) {
        fail(YCompileError::Kind::TooManyNames, word.at);
        return std::nullopt;
    }
    return index;
}

/// Interns the words up to the end of the line. False after an error.
bool YCompiler::readOperands(std::vector<int>& indices) {
    while (const auto word = nextWord(false)) {
        const auto index = internWord(*word);
        if (!index) return false;
        indices.push_back(*index);
    }
    return true;
}

// ---------------------------------------------------------------------------- instructions

std::optional<int> YCompiler::emitList(const std::vector<int>& indices, std::size_t at) {
    auto& operands = script_->operands;
    if (operands.size() + indices.size() + 1 > YScript::kMaxOperandWords) {
        fail(YCompileError::Kind::TooManyOperands, at);
        return std::nullopt;
    }
    const int start = static_cast<int>(operands.size());
    for (const int index : indices) operands.push_back(static_cast<std::int16_t>(index));
    operands.push_back(YScript::kEndOfList);
    return start;
}

std::optional<int> YCompiler::emitOperands(std::size_t at) {
    std::vector<int> indices;
    return readOperands(indices) ? emitList(indices, at) : std::nullopt;
}

int YCompiler::emit(YOpcode opcode, int operand, YSourceLine place) {
    if (here() == YScript::kMaxInstructions && opcode != YOpcode::End)
        fail(YCompileError::Kind::TooManyInstructions, text().at);
    // The compilation ends at this statement's end; until then there is room for what belongs to
    // it.
    script_->instructions.push_back({opcode, static_cast<std::int16_t>(operand)});
    script_->lines.push_back(place);
    return here() - 1;
}

YSourceLine YCompiler::placeOf(std::size_t at) {
    return {text().file, static_cast<std::uint16_t>(std::min(lineAt(at), kLastLine))};
}

void YCompiler::patch(int instruction, int target) {
    script_->instructions[static_cast<std::size_t>(instruction)].operand =
        static_cast<std::int16_t>(target);
}

// ---------------------------------------------------------------------------- statements

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
    std::vector<int> indices;
    if (!readOperands(indices)) return Outcome::Statement;
    if (static_cast<int>(indices.size()) < YMinOperands(opcode))
        return fail(YCompileError::Kind::MissingOperand, keyword.at);
    if (const auto list = emitList(indices, keyword.at)) emit(opcode, *list, placeOf(keyword.at));
    return Outcome::Statement;
}

YCompiler::Outcome YCompiler::compileCommand(const Word& word) {
    if (!YCommands::find(word.text))
        record(YCompileError::Kind::UndefinedCommand, word.at, 0, std::string(word.text));
    std::vector<int> indices;
    const auto command = internWord(word);
    if (!command) return Outcome::Statement;
    indices.push_back(*command);
    if (!readOperands(indices)) return Outcome::Statement;
    if (const auto list = emitList(indices, word.at))
        emit(YOpcode::Command, *list, placeOf(word.at));
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
        variable.markReference();
    }
    std::vector<int> indices{*target};
    if (!readOperands(indices)) return Outcome::Statement;
    OMDebug::check(indices.size() > 1, "operands", "Assignment to nothing");
    if (const auto list = emitList(indices, name.at))
        emit(YOpcode::Assign, *list, placeOf(name.at));
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
    if (!nextIsElse()) return Outcome::Statement;

    // The end of the body jumps over the else body; a false test lands on the else.
    const std::size_t elseAt = text().at - kElse.size();
    script_->instructions[static_cast<std::size_t>(end)].opcode = YOpcode::Jump;
    emit(YOpcode::Nothing, 0, placeOf(elseAt));
    if (const Outcome outcome = compileBody(elseAt); outcome != Outcome::Statement) return outcome;
    patch(end, here());
    return Outcome::Statement;
}

/// Whether the next statement is an "else", which may stand behind the end of an included file; it
/// is consumed then.
bool YCompiler::nextIsElse() {
    std::size_t depth = texts_.size();
    std::size_t at = 0;
    std::string_view rest;
    while (rest.empty() && depth > 0) {
        const Text& t = texts_[--depth];
        at = statementFrom(t.text, t.at);
        rest = std::string_view(t.text).substr(at);
    }
    if (!rest.starts_with(kElse) || !endsWord(rest[kElse.size()])) return false;
    texts_.resize(depth + 1);
    text().at = at + kElse.size();
    return true;
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
    std::vector<int> indices;
    if (!readOperands(indices)) return Outcome::Statement;
    if (indices.empty()) return fail(YCompileError::Kind::MissingOperand, at);
    const auto list = emitList(indices, at);
    if (!list) return Outcome::Statement;
    heap_.get(indices.front()).setString("+" + std::to_string(here()));
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
