// Expressions: operand words with operators. A word is compiled once into a prefix form (a shape
// string and the list of its leaves) and evaluated each time its value is read.
//
// Shape: "t" a leaf, the last one not yet used; "z" a left operand that was left out (0); "s" and
// an operator character, followed by the shape of the right operand and, for a binary operator,
// that of the left one. `a-b-c` is "s-ts-tt" with the leaves a, b, c.
//
//     level   operators           (lowest first; all left-associative)
//     1       + - < > = #         binary
//     2       ~ $                 unary
//     3       * / \ % @ ^ !       binary
#pragma once

#include "yheap.h"
#include "ynumber.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Error codes of compiling and evaluating; a script's compile message and traces show them.
namespace yerror {
inline constexpr int kNone = 0;
inline constexpr int kUnbalanced = 1; ///< parentheses or quotes
inline constexpr int kTooLong = 2;    ///< concatenation of 128 bytes or more
inline constexpr int kMissingOperand = 3;
inline constexpr int kIntegerDivision = 4; ///< by zero
inline constexpr int kRealDomain = 5; ///< division by nearly zero, fractional power of a negative
inline constexpr int kUnclosedQuote = 6; ///< in a statement word
inline constexpr int kNotANumber = 7;
inline constexpr int kTooDeep = 8; ///< more parentheses or operands than can be handled
} // namespace yerror

/// A temporary value: a number, a text or an object reference. Texts lie in the variables that they
/// come from or in the value's own buffer. Not copyable.
class YValue {
  public:
    YValue() = default;
    YValue& operator=(YValue&&) = delete;

    [[nodiscard]] YVariable::Type type() const { return type_; }
    [[nodiscard]] bool isInteger() const { return type_ == YVariable::Type::Integer; }
    [[nodiscard]] bool isNumber() const { return isInteger() || type_ == YVariable::Type::Real; }
    [[nodiscard]] bool isObject() const { return type_ == YVariable::Type::Object; }
    [[nodiscard]] double number() const { return isInteger() ? integer_ : real_; }
    [[nodiscard]] std::int32_t integer() const {
        return isInteger() ? integer_ : ynumber::truncate(real_);
    }
    [[nodiscard]] OMScriptableObject* object() const { return object_; }
    /// The string form; valid while this value and the variable it came from stay unchanged.
    [[nodiscard]] std::string_view text();

    void setInteger(std::int32_t value);
    /// Whole numbers within the integers' range become integers.
    void setReal(double value);
    /// Takes the text as a variable would: what looks like a number is one. The text is not copied.
    void setText(std::string_view text);
    void copyText(std::string_view text);
    void load(YVariable& variable);

    /// Room for computed texts of this value.
    [[nodiscard]] YScratch& scratch() { return scratch_; }

  private:
    YVariable::Type type_ = YVariable::Type::Empty;
    bool hasText_ = false; ///< of its own, not just a computed number
    union {
        std::int32_t integer_;
        double real_;
        OMScriptableObject* object_;
    };
    std::string_view text_;
    YScratch scratch_;
};

class YExpression {
  public:
    /// A leaf, or an operator with its operands; 'z' for an operand left out.
    struct Node {
        char operation = 't';
        YVariable* leaf = nullptr;
        const Node* left = nullptr; ///< null for the operators of one operand
        const Node* right = nullptr;
    };

    /// What compiling a word gives.
    struct Compiled {
        int error = yerror::kNone;
        std::string shape;
        std::vector<int> leaves; ///< heap indices in source order
        [[nodiscard]] bool isLeaf() const { return shape == "t"; }
    };

    /// Interns the leaves. Words of a single leaf are no expressions.
    [[nodiscard]] static Compiled compile(YHeap& heap, std::string_view text);
    /// Whether a word can be an expression at all.
    [[nodiscard]] static bool mayContainOperator(std::string_view text);
    /// Null when the shape does not fit the leaves.
    [[nodiscard]] static std::unique_ptr<YExpression> build(YHeap& heap, std::string_view shape,
                                                            const std::vector<int>& leaves);

    /// An error code. `result` is meaningful only without an error.
    int evaluate(YHeap& heap, YValue& result) const;

    static constexpr double kSmallestDivisorSquared = 1e-08;
    static constexpr std::size_t kMaxConcatenation = 128; ///< bytes; joined texts stay below
    /// An operator on two numbers. An error code.
    static int applyReals(char operation, double left, double right, double& result);

    [[nodiscard]] const Node& root() const { return nodes_.front(); }
    [[nodiscard]] const std::string& shape() const { return shape_; }

  private:
    class Builder;

    static int evaluate(YHeap& heap, const Node& node, YValue& result);
    static int applyUnary(YHeap& heap, char operation, YValue& operand, YValue& result);
    static int apply(char operation, YValue& left, YValue& right, YValue& result);
    static int applyNumbers(char operation, const YValue& left, const YValue& right,
                            YValue& result);
    static int applyTexts(char operation, YValue& left, YValue& right, YValue& result);
    static int evaluateNamed(YHeap& heap, std::string_view text, YValue& result);

    std::vector<Node> nodes_; ///< the root first
    std::string shape_;
};
