#include "ycompiler.h"

#include "yexpression.h"

#include <algorithm>

namespace {

constexpr char kLineEnd = '\r';
constexpr std::size_t kShownText = 50;
constexpr std::size_t kShownQuote = 24;
constexpr int kLast = 65535; ///< lines, and columns, are counted up to here
constexpr std::size_t kMaxIncludeDepth = 32;
constexpr std::size_t kMaxIncludes = 1000;

bool isBlank(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x21 || byte >= 0x7F) && c != kLineEnd;
}
bool endsWord(char c) { return isBlank(c) || c == kLineEnd; }

constexpr std::string_view kElse = "else";

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
    const bool quoted =
        word.size() >= 2 && YVariable::isQuote(word.front()) && word.back() == word.front();
    return quoted ? word.substr(1, word.size() - 2) : word;
}

/// At most `limit` bytes of the script's line from `at` on.
std::string_view lineFrom(std::string_view script, std::size_t at, std::size_t limit) {
    const std::string_view line = script.substr(std::min(at, script.size()), limit);
    return line.substr(0, line.find(kLineEnd));
}

/// The same without blanks at the end.
std::string shownText(std::string_view script, std::size_t at) {
    std::string_view shown = lineFrom(script, at, kShownText);
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
    case Kind::ProcedureName: return at("a procedure needs a plain name");
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
    error.column = columnAt(at);
    if (code == yerror::kUnclosedQuote)
        error.statement = lineFrom(text().text, statementAt_, kShownQuote); // blanks too
    const bool warning = error.isWarning();
    failed_ |= !warning;
    errors_.push_back(std::move(error));
    if (warning) warn_(errors_.back());
}

YCompiler::Outcome YCompiler::fail(YCompileError::Kind kind, std::size_t at, int code) {
    record(kind, at, code, shownText(text().text, at));
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

int YCompiler::columnAt(std::size_t at) const {
    const std::size_t start = at == 0 ? at : text().text.rfind(kLineEnd, at - 1) + 1;
    const bool isSecond = start < at && text().text[start] == '\n'; // of a line's two ends
    return static_cast<int>(std::min<std::size_t>(at - start + (isSecond ? 0 : 1), kLast));
}

// ---------------------------------------------------------------------------- texts

YCompiler::YCompiler(YHeap& heap, Reader reader, OnError onError)
    : heap_(heap), reader_(std::move(reader)), onError_(onError) {}

std::unique_ptr<YScript> YCompiler::compile(const std::string& name, std::string source) {
    script_ = std::make_unique<YScript>();
    script_->name = name;
    script_->operands = {YHeap::kSystem, YHeap::kReceiver, YHeap::kResult};
    if (onError_ == OnError::Collect) script_->columns.resize(script_->operands.size());
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

std::pair<std::string, int> YCompiler::includer() {
    return {script_->files[text().file], lineAt(text().at)};
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

/// The next word of the line, or none at its end. An unclosed quote is told by who interns the
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
        } else if (YVariable::isQuote(c)) {
            quote = c;
        } else if (endsWord(c) || (stopAtEquals && c == '=')) {
            break;
        }
    }
    return Word{std::string_view(t.text).substr(start, t.at - start), start, quote == 0};
}

std::optional<int> YCompiler::internWord(const Word& word) {
    if (!word.closed) {
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
bool YCompiler::readOperands(std::vector<Operand>& words) {
    while (const auto word = nextWord(false)) {
        const auto index = internWord(*word);
        if (!index) return false;
        words.push_back({*index, word->at});
    }
    return true;
}

/// Where the "else" stood that is the next statement, perhaps behind the end of an included file;
/// it is consumed then.
std::optional<std::size_t> YCompiler::takeElse() {
    std::size_t depth = texts_.size();
    std::size_t at = 0;
    std::string_view rest;
    while (rest.empty() && depth > 0) {
        const Text& t = texts_[--depth];
        at = statementFrom(t.text, t.at);
        rest = std::string_view(t.text).substr(at);
    }
    if (!rest.starts_with(kElse) || !endsWord(rest[kElse.size()])) return std::nullopt;
    texts_.resize(depth + 1);
    text().at = at + kElse.size();
    return at;
}

// ---------------------------------------------------------------------------- instructions

std::optional<int> YCompiler::emitList(const std::vector<Operand>& words, std::size_t at) {
    auto& operands = script_->operands;
    if (operands.size() + words.size() + 1 > YScript::kMaxOperandWords) {
        fail(YCompileError::Kind::TooManyOperands, at);
        return std::nullopt;
    }
    const int start = static_cast<int>(operands.size());
    for (const Operand& word : words) {
        operands.push_back(static_cast<std::int16_t>(word.index));
        if (onError_ == OnError::Collect)
            script_->columns.push_back(static_cast<std::uint16_t>(columnAt(word.at)));
    }
    operands.push_back(YScript::kEndOfList);
    if (onError_ == OnError::Collect) script_->columns.push_back(0);
    return start;
}

std::optional<int> YCompiler::emitOperands(std::size_t at) {
    std::vector<Operand> words;
    return readOperands(words) ? emitList(words, at) : std::nullopt;
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
    return {text().file, static_cast<std::uint16_t>(std::min(lineAt(at), kLast))};
}

void YCompiler::patch(int instruction, int target) {
    script_->instructions[static_cast<std::size_t>(instruction)].operand =
        static_cast<std::int16_t>(target);
}
