#include "yline.h"

#include "omscrptb.h"
#include "omsregistry.h"
#include "rthread.h"
#include "ycompiler.h"
#include "yengine.h"
#include "yexpression.h"
#include "ykeyword.h"
#include "ystatement.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr std::size_t kLongestValue = 200; ///< bytes
constexpr const char* kLineName = "console";
constexpr const char* kDone = "done";

/// What begins a statement that leads to another place in the script, or belongs to others.
constexpr std::string_view kSteering[] = {"if",       "else", "for",   "procedure", "break",
                                          "continue", "call", "yield", "wait",      "pause",
                                          "include",  "[",    "]"};

bool isSteering(std::string_view word) {
    return std::ranges::find(kSteering, word) != std::end(kSteering);
}

/// What a line looks like before it is compiled.
struct LineShape {
    std::string_view first; ///< its first word, as far as the "=" of an assignment
    bool isWord = true;     ///< and there is no other
    bool isAssignment = false;
    bool hasValue = false; ///< something stands behind the "="
};

/// An "=" in parentheses compares.
LineShape shapeOf(std::string_view line) {
    LineShape shape;
    char quote = 0;
    int depth = 0;
    std::size_t end = 0;
    for (; end < line.size(); ++end) {
        const char c = line[end];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (YVariable::isQuote(c)) {
            quote = c;
        } else if (c == ' ') {
            break;
        } else if (c == '=' && depth == 0) {
            shape.isAssignment = true;
            break;
        } else {
            depth += (c == '(') - (c == ')');
        }
    }
    shape.first = line.substr(0, end);
    shape.isWord = end == line.size();
    shape.hasValue = shape.isAssignment && end + 1 < line.size();
    return shape;
}

/// One line, with the blanks that are needed.
std::string trimmedLine(std::string_view line) {
    std::string text(line);
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string evaluationError(int code) {
    switch (code) {
    case yerror::kTooLong: return "the texts are too long to be joined";
    case yerror::kIntegerDivision:
    case yerror::kRealDomain: return "a division by zero, or a power that has no value";
    case yerror::kNotANumber: return "a text stands where a number is needed";
    default: return "the expression has no value";
    }
}

/// The value of an operand.
std::string valueOf(YVariable& word, const YThread& thread) {
    if (const YExpression* expression = word.expression()) {
        YValue value;
        const int error = expression->evaluate(YHeap::current(), value);
        if (error != yerror::kNone) return evaluationError(error);
        return yvalue::cut(std::string(value.text()));
    }
    const YVariable& meant = word.resolve();
    const bool isName = meant.kind() == YVariable::Kind::Name;
    if ((isName || meant.kind() == YVariable::Kind::Compound) && !meant.isDefined()) {
        const bool isClass = OMSRegistry::global().find(meant.text()) != nullptr;
        return meant.text() + (isClass ? " is a class" : " is not set");
    }
    const std::string value = yvalue::shown(word, &thread);
    if (!word.object()) return value;
    return yvalue::typeOf(word, &thread) + (value.empty() ? "" : " " + value);
}

std::string firstMistake(const YCompiler& compiler) {
    return compiler.errors().empty() ? std::string() : compiler.errors().front().description();
}

} // namespace

std::string yvalue::cut(std::string text) {
    if (text.size() <= kLongestValue) return text;
    text.resize(kLongestValue);
    return text + "...";
}

std::string yvalue::typeOf(YVariable& variable, const YThread* thread) {
    if (const OMScriptableObject* object = variable.object()) {
        const OMSR* entry = object->classEntry();
        return entry ? std::string(entry->name()) : "object";
    }
    if (thread && !thread->placeOf(textOf(variable)).empty()) return "procedure";
    const YVariable& meant = variable.resolve();
    return meant.holdsInteger() || meant.holdsReal() ? "number" : "text";
}

std::string yvalue::shown(YVariable& variable, const YThread* thread) {
    if (variable.object()) {
        const bool isOwner = variable.resolve().ownership() == YVariable::Ownership::Owner &&
                             variable.ownership() == YVariable::Ownership::Owner;
        return isOwner ? "" : "(a second name)";
    }
    const std::string text = textOf(variable);
    const std::string place = thread ? thread->placeOf(text) : std::string();
    return place.empty() ? cut(text) : place;
}

std::string YLine::run(std::string_view line) {
    if (YEngine::isHeld()) return "the game is about to end";
    if (engine_.isSwitching()) return "another script is about to begin";
    const int words = YHeap::current().count();
    std::string came = outcome(trimmedLine(line));
    // The script that is wanted next is known by its word.
    if (!engine_.isSwitching()) YHeap::current().dropWordsFrom(words);
    std::ranges::replace(came, '\n', ' ');
    return came;
}

std::string YLine::outcome(std::string_view line) {
    if (line.empty() || line.front() == ';') return kDone;
    const LineShape shape = shapeOf(line);
    const std::string first(shape.first);
    if (shape.isAssignment && !shape.hasValue)
        return "a value is missing; \"drop " + first + "\" empties the variable";
    bool isExpression = false;
    if (!shape.isAssignment) {
        if (isSteering(first))
            return "\"" + first + "\" leads the script to another place, which a line cannot do";
        const bool isKnown = YCompiler::isKeyword(first) || YCommands::find(first);
        isExpression = shape.isWord && !isKnown;
        if (!isExpression && !isKnown)
            return "there is no command " + first + "; an expression is written without blanks";
    }
    YCompiler compiler(YHeap::current(), nullptr);
    std::unique_ptr<YScript> script =
        compiler.compile(kLineName, (isExpression ? "say " : "") + std::string(line));
    if (!script) return firstMistake(compiler);
    script->lines.clear(); // so that its place is its name alone
    if (script->instructions.front().opcode == YOpcode::End) return kDone; // a list
    const YProgram program(YHeap::current(), std::move(script));
    if (isExpression) return valueOf(*program.at(0).operands[0], thread_);
    return carryOut(program);
}

std::string YLine::carryOut(const YProgram& program) {
    const std::string resultBefore = textOf(YHeap::current().get(YHeap::kResult));
    const std::string warnings = thread_.runLine(program);
    return warnings.empty() ? valueAfter(program.at(0), resultBefore) : warnings;
}

std::string YLine::valueAfter(const YProgramInstruction& code,
                              const std::string& resultBefore) const {
    if (code.opcode == YOpcode::Assign) return valueOf(*code.operands[0], thread_);
    if (code.opcode == YOpcode::Get) return valueOf(*code.operands[code.count - 1], thread_);
    YVariable& result = YHeap::current().get(YHeap::kResult);
    if (code.opcode != YOpcode::Command || textOf(result) == resultBefore) return kDone;
    return "done, RESULT is " + valueOf(result, thread_);
}
