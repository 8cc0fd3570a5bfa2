// What expressions give: first on numbers alone, by steps, then on any values, by nodes.
#include "yexpression.h"

#include <cmath>
#include <span>

namespace {

constexpr std::size_t kMaxConcatenation = 128; ///< bytes; joined texts must stay below
constexpr double kSmallestDivisorSquared = 1e-08;
constexpr int kMaxEvaluationDepth = 2000; ///< nodes on the stack, over all nested expressions

} // namespace

// ---------------------------------------------------------------------------- values

std::string_view YValue::text() {
    if (hasText_) return text_;
    switch (type_) {
    case YVariable::Type::Integer: text_ = ynumber::format(integer_, scratch_.data); break;
    case YVariable::Type::Real: text_ = ynumber::format(real_, scratch_.data); break;
    case YVariable::Type::Object: text_ = YVariable::kObjectText; break;
    default: text_ = {}; break;
    }
    hasText_ = true;
    return text_;
}

void YValue::setInteger(std::int32_t value) {
    type_ = YVariable::Type::Integer;
    integer_ = value;
    hasText_ = false;
}

void YValue::setReal(double value) {
    if (ynumber::isIntegral(value, 0)) {
        setInteger(static_cast<std::int32_t>(value));
        return;
    }
    type_ = YVariable::Type::Real;
    real_ = value;
    hasText_ = false;
}

void YValue::setText(std::string_view text) {
    text_ = text;
    hasText_ = true;
    if (!ynumber::looksNumeric(text)) {
        type_ = YVariable::Type::String;
        return;
    }
    const double value = ynumber::scan(text);
    if (ynumber::isIntegral(value, text.size())) {
        type_ = YVariable::Type::Integer;
        integer_ = static_cast<std::int32_t>(value);
    } else {
        type_ = YVariable::Type::Real;
        real_ = value;
    }
}

void YValue::copyText(std::string_view text) {
    setText({scratch_.data, text.copy(scratch_.data, YScratch::kSize)});
}

void YValue::load(YVariable& variable) {
    YVariable& from = variable.resolve();
    if (OMScriptableObject* object = from.object()) {
        type_ = YVariable::Type::Object;
        object_ = object;
        hasText_ = false;
    } else if (from.holdsInteger() && from.isCanonical()) {
        setInteger(from.heldInteger());
    } else {
        setText(from.string(scratch_));
    }
}

// ---------------------------------------------------------------------------- numbers only

YExpression::Number YExpression::Number::of(std::int64_t value) {
    Number number;
    number.tag = Tag::Integer;
    number.integer = value;
    return number;
}

YExpression::Number YExpression::Number::of(double value) {
    if (ynumber::isIntegral(value, 0)) return of(static_cast<std::int64_t>(value));
    Number number;
    number.tag = Tag::Real;
    number.real = value;
    return number;
}

/// False when the tree needs more than numbers.
bool YExpression::addSteps(const Node& node, int depth) {
    using Operation = YStep::Operation;
    constexpr std::string_view kNumeric = "+-*/\\%^=#<>"; // in the order of Operation from Add on
    if (depth >= YStep::kStack) return false;
    switch (node.operation) {
    case 't': steps_.push_back({Operation::Load, node.leaf}); return true;
    case 'z': return false; // see below: only as a left operand
    case '~':
        if (node.right->operation != 't') return false;
        steps_.push_back({Operation::Length, node.right->leaf});
        return true;
    default: break;
    }
    const auto which = kNumeric.find(node.operation);
    if (which == std::string_view::npos) return false;
    const auto operation = static_cast<Operation>(static_cast<std::size_t>(Operation::Add) + which);
    if (node.left->operation == 'z')
        steps_.push_back({Operation::Load, nullptr});
    else if (!addSteps(*node.left, depth))
        return false;
    if (node.right->operation == 't') {
        steps_.push_back({operation, node.right->leaf});
        return true;
    }
    steps_.push_back({Operation::Push, nullptr});
    if (!addSteps(*node.right, depth + 1)) return false;
    steps_.push_back({operation, nullptr});
    return true;
}

namespace {

/// Numbers that the steps work on: what a leaf must hold, and what the operators make of two of
/// them. False gives up.
struct Integers {
    using Number = std::int64_t;

    static bool load(YVariable* leaf, Number& value) {
        if (!leaf->holdsInteger()) [[unlikely]] {
            leaf = &leaf->resolve();
            if (!leaf->holdsInteger()) return false;
        }
        value = leaf->heldInteger();
        return true;
    }

    static bool apply(YStep::Operation operation, Number& value, Number right);
};

struct Reals {
    using Number = double;

    static bool load(YVariable* leaf, Number& value) {
        if (!leaf->holdsInteger() && !leaf->holdsReal()) leaf = &leaf->resolve();
        if (leaf->holdsInteger())
            value = leaf->heldInteger();
        else if (leaf->holdsReal())
            value = leaf->heldReal();
        else
            return false;
        return true;
    }

    static bool apply(YStep::Operation operation, Number& value, Number right);
};

/// All operands and results are integers.
inline bool Integers::apply(YStep::Operation operation, Number& value, Number right) {
    using Operation = YStep::Operation;
    constexpr auto kLimit = static_cast<Number>(ynumber::kIntegerLimit);
    switch (operation) {
    case Operation::Add: value += right; break;
    case Operation::Subtract: value -= right; break;
    case Operation::Multiply: value *= right; break;
    case Operation::Divide:
    case Operation::Quotient:
    case Operation::Remainder: {
        if (right == 0 || right == -1) return false;
        const auto left = static_cast<std::int32_t>(value);
        const auto divisor = static_cast<std::int32_t>(right);
        if (operation == Operation::Divide && left % divisor != 0) return false;
        value = operation == Operation::Remainder ? left % divisor : left / divisor;
        return true;
    }
    case Operation::Equal: value = value == right; return true;
    case Operation::Unequal: value = value != right; return true;
    case Operation::Less: value = value < right; return true;
    case Operation::Greater: value = value > right; return true;
    default: return false;
    }
    return value >= -kLimit && value <= kLimit;
}

/// The operators on two numbers, where an integer is a real without a fraction: sums, differences
/// and products are exact as far as reals are. An error code.
int applyReals(char operation, double left, double right, double& result) {
    const auto l = std::int64_t{ynumber::truncate(left)};
    const auto r = std::int64_t{ynumber::truncate(right)};
    switch (operation) {
    case '+': result = left + right; return yerror::kNone;
    case '-': result = left - right; return yerror::kNone;
    case '*': result = left * right; return yerror::kNone;
    case '/':
        if (right * right < kSmallestDivisorSquared) return yerror::kRealDomain;
        result = left / right;
        return yerror::kNone;
    case '\\':
        if (r == 0) return yerror::kIntegerDivision;
        result = static_cast<double>(l / r);
        return yerror::kNone;
    case '%':
        if (r == 0) return yerror::kIntegerDivision;
        result = static_cast<double>(l % r);
        return yerror::kNone;
    case '^':
        if (left < 0 && right != std::floor(right)) return yerror::kRealDomain;
        result = std::pow(left, right);
        return yerror::kNone;
    case '=': result = left == right; return yerror::kNone;
    case '#': result = left != right; return yerror::kNone;
    case '<': result = left < right; return yerror::kNone;
    case '>': result = left > right; return yerror::kNone;
    default: result = 0; return yerror::kNone; // "!"
    }
}

inline bool Reals::apply(YStep::Operation operation, Number& value, Number right) {
    using Operation = YStep::Operation;
    constexpr char kCharacters[] = {0,    0,   0,   '+', '-', '*', '/',
                                    '\\', '%', '^', '=', '#', '<', '>'};
    switch (operation) {
    case Operation::Add: value += right; return true;
    case Operation::Subtract: value -= right; return true;
    case Operation::Multiply: value *= right; return true;
    default:
        return applyReals(kCharacters[static_cast<std::size_t>(operation)], value, right, value) ==
               yerror::kNone;
    }
}

/// The accumulator machine; false when it gave up.
template <class Numbers>
bool run(std::span<const YStep> steps, typename Numbers::Number& result) {
    using Operation = YStep::Operation;
    using Number = typename Numbers::Number;
    if (steps.empty()) return false;
    Number aside[YStep::kStack];
    int count = 0;
    Number value = 0;
    for (const YStep& step : steps) {
        switch (step.operation) {
        case Operation::Load:
            if (!step.leaf)
                value = 0;
            else if (!Numbers::load(step.leaf, value))
                return false;
            break;
        case Operation::Length: {
            // Of a text that is there already.
            const std::int64_t length = step.leaf->resolve().heldLength();
            if (length == YVariable::kUnknownLength) return false;
            value = static_cast<Number>(length);
            break;
        }
        case Operation::Push: aside[count++] = value; break;
        default: {
            Number right = value;
            if (!step.leaf)
                value = aside[--count];
            else if (!Numbers::load(step.leaf, right))
                return false;
            if (!Numbers::apply(step.operation, value, right)) return false;
        }
        }
    }
    result = value;
    return true;
}

} // namespace

YExpression::Number YExpression::evaluateNumber() const {
    if (std::int64_t whole = 0; run<Integers>(steps_, whole)) [[likely]]
        return Number::of(whole);
    if (double real = 0; run<Reals>(steps_, real)) return Number::of(real);
    return {};
}

// ---------------------------------------------------------------------------- any values

int YExpression::evaluate(YHeap& heap, YValue& result) const {
    return evaluate(heap, nodes_.front(), result);
}

int YExpression::evaluate(YHeap& heap, const Node& node, YValue& result) {
    static int depth = 0;
    struct Level {
        Level() { ++depth; }
        ~Level() { --depth; }
    } const level;
    if (depth > kMaxEvaluationDepth) return yerror::kTooDeep;

    if (node.operation == 'z') {
        result.setInteger(0);
        return yerror::kNone;
    }
    if (node.operation == 't') {
        result.load(*node.leaf);
        return yerror::kNone;
    }
    YValue right;
    if (const int error = evaluate(heap, *node.right, right)) return error;
    if (!node.left) return applyUnary(heap, node.operation, right, result);
    YValue left;
    if (const int error = evaluate(heap, *node.left, left)) return error;
    return apply(node.operation, left, right, result);
}

int YExpression::applyUnary(YHeap& heap, char operation, YValue& operand, YValue& result) {
    if (operation == '~') {
        result.setInteger(static_cast<std::int32_t>(operand.text().size()));
        return yerror::kNone;
    }
    return evaluateNamed(heap, operand.text(), result);
}

/// `$`: the text is a word of its own, compiled and read.
int YExpression::evaluateNamed(YHeap& heap, std::string_view text, YValue& result) {
    if (text.empty()) {
        result.setText({});
        return yerror::kNone;
    }
    const YHeap::Nesting nesting(heap);
    if (nesting.tooDeep()) return yerror::kTooDeep;
    int error = yerror::kNone;
    const int index = heap.internOperand(text, error);
    if (error != yerror::kNone) return error;
    YVariable& variable = heap.get(index);
    if (variable.kind() == YVariable::Kind::Expression) {
        YValue value;
        if (variable.expression()->evaluate(heap, value) == yerror::kNone) {
            const std::string_view computed = value.text();
            if (computed.size() < YScratch::kSize)
                result.copyText(computed);
            else
                result.setText(computed);
        } else {
            result.setText(variable.text());
        }
        return yerror::kNone;
    }
    result.setText(variable.string(result.scratch()));
    return yerror::kNone;
}

int YExpression::apply(char operation, YValue& left, YValue& right, YValue& result) {
    if (left.isObject() && right.isObject()) {
        result.setInteger(0);
        return yerror::kNone;
    }
    const bool numbers = left.isNumber() && right.isNumber();
    if (numbers && operation != '@') return applyNumbers(operation, left, right, result);
    return applyTexts(operation, left, right, result);
}

int YExpression::applyNumbers(char operation, const YValue& left, const YValue& right,
                              YValue& result) {
    double number = 0;
    if (const int error = applyReals(operation, left.number(), right.number(), number))
        return error;
    result.setReal(number);
    return yerror::kNone;
}

int YExpression::applyTexts(char operation, YValue& left, YValue& right, YValue& result) {
    const std::string_view l = left.text();
    const std::string_view r = right.text();
    switch (operation) {
    case '+': {
        if (l.size() + r.size() >= kMaxConcatenation) return yerror::kTooLong;
        char* joined = result.scratch().data;
        const std::size_t length = l.copy(joined, l.size());
        result.setText({joined, length + r.copy(joined + length, r.size())});
        return yerror::kNone;
    }
    case '=': result.setInteger(l == r); return yerror::kNone;
    case '#': result.setInteger(l != r); return yerror::kNone;
    case '<': result.setInteger(l < r); return yerror::kNone;
    case '>': result.setInteger(l > r); return yerror::kNone;
    case '!': result.setInteger(0); return yerror::kNone;
    case '@': {
        const auto position = r.find(l);
        result.setInteger(position == std::string_view::npos ? 0 : static_cast<int>(position) + 1);
        return yerror::kNone;
    }
    default: return yerror::kNotANumber;
    }
}
