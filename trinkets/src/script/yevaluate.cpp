// What expressions give, whatever their values are.
#include "yexpression.h"

#include <cmath>

namespace {

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
    if (from.holdsText()) {
        type_ = YVariable::Type::String;
        text_ = from.heldText();
        hasText_ = true;
    } else if (from.holdsInteger() && from.isCanonical()) {
        setInteger(from.heldInteger());
    } else if (OMScriptableObject* object = from.object()) {
        type_ = YVariable::Type::Object;
        object_ = object;
        hasText_ = false;
    } else {
        setText(from.string(scratch_));
    }
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

/// An integer is a real without a fraction: sums, differences and products are exact as far as
/// reals are.
int YExpression::applyReals(char operation, double left, double right, double& result) {
    const auto whole = [](double number) { return std::int64_t{ynumber::truncate(number)}; };
    switch (operation) {
    case '+': result = left + right; return yerror::kNone;
    case '-': result = left - right; return yerror::kNone;
    case '*': result = left * right; return yerror::kNone;
    case '/':
        if (right * right < kSmallestDivisorSquared) return yerror::kRealDomain;
        result = left / right;
        return yerror::kNone;
    case '\\':
        if (whole(right) == 0) return yerror::kIntegerDivision;
        result = static_cast<double>(whole(left) / whole(right));
        return yerror::kNone;
    case '%':
        if (whole(right) == 0) return yerror::kIntegerDivision;
        result = static_cast<double>(whole(left) % whole(right));
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
