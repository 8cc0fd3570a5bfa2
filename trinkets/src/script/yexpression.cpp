#include "yexpression.h"

namespace {

constexpr std::string_view kLevels[] = {"+-<>=#", "~$", "*/\\%@^!"};
constexpr int kLevelCount = 3;
constexpr std::string_view kAllOperators = "+-<>=#~$*/\\%@^!";

constexpr std::size_t kMaxLeaves = 1000;

bool isUnary(char operation) { return operation == '~' || operation == '$'; }

/// Splits a text at the operators of one level and writes the shape from the last piece on.
class Compiler {
  public:
    Compiler(YHeap& heap, YExpression::Compiled& out) : heap_(heap), out_(out) {}

    std::string compileLevel(std::string_view text, int level);

  private:
    struct Piece {
        char operation; ///< before the segment; 0 for the first
        std::string_view segment;
    };

    std::vector<Piece> split(std::string_view text, int level);
    std::string compileSegment(std::string_view segment, int level);
    std::string compilePrimary(std::string_view segment);
    std::string fail(int error) {
        if (out_.error == yerror::kNone) out_.error = error;
        return {};
    }

    YHeap& heap_;
    YExpression::Compiled& out_;
};

std::vector<Compiler::Piece> Compiler::split(std::string_view text, int level) {
    std::vector<Piece> pieces;
    const std::string_view operators = kLevels[level];
    int depth = 0;
    char quote = 0;
    char operation = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (YVariable::isQuote(c)) {
            quote = c;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            if (--depth < 0) break;
        } else if (depth == 0 && operators.find(c) != std::string_view::npos) {
            pieces.push_back({operation, text.substr(start, i - start)});
            operation = c;
            start = i + 1;
        }
    }
    if (depth != 0 || quote) {
        fail(yerror::kUnbalanced);
        return {};
    }
    pieces.push_back({operation, text.substr(start)});
    return pieces;
}

std::string Compiler::compileLevel(std::string_view text, int level) {
    std::string shape;
    for (const Piece& piece : split(text, level)) {
        if (out_.error != yerror::kNone) return {};
        const bool start = piece.operation == 0;
        if (piece.segment.empty()) {
            // Only the start of a text may lack its operand, and not when it is the whole text.
            if (!start || piece.segment.size() == text.size()) return fail(yerror::kMissingOperand);
            const char next = text.front();
            if (!isUnary(next)) shape = "z";
            continue;
        }
        std::string operand = compileSegment(piece.segment, level);
        if (out_.error != yerror::kNone) return {};
        if (start) {
            shape = std::move(operand);
        } else if (isUnary(piece.operation)) {
            if (!shape.empty()) return fail(yerror::kMissingOperand);
            shape = std::string("s") + piece.operation + operand;
        } else {
            shape = std::string("s") + piece.operation + operand + shape;
        }
    }
    return shape;
}

std::string Compiler::compileSegment(std::string_view segment, int level) {
    return level + 1 < kLevelCount ? compileLevel(segment, level + 1) : compilePrimary(segment);
}

std::string Compiler::compilePrimary(std::string_view segment) {
    if (segment.front() == '(') {
        if (segment.back() != ')') return fail(yerror::kUnbalanced);
        const YHeap::Nesting nesting(heap_);
        if (nesting.tooDeep()) return fail(yerror::kTooDeep);
        return compileLevel(segment.substr(1, segment.size() - 2), 0);
    }
    if (out_.leaves.size() >= kMaxLeaves) return fail(yerror::kTooDeep);
    out_.leaves.push_back(heap_.intern(segment));
    return "t";
}

} // namespace

// ---------------------------------------------------------------------------- compiling

bool YExpression::mayContainOperator(std::string_view text) {
    // An operator alone is a word like any other: `x = 5` calls a command x with two words.
    if (text.size() == 1 && kAllOperators.find(text.front()) != std::string_view::npos)
        return false;
    char quote = 0;
    for (const char c : text) {
        if (quote) {
            if (c == quote) quote = 0;
        } else if (YVariable::isQuote(c)) {
            quote = c;
        } else if (c == '(' || c == ')' || kAllOperators.find(c) != std::string_view::npos) {
            return true;
        }
    }
    return quote != 0;
}

YExpression::Compiled YExpression::compile(YHeap& heap, std::string_view text) {
    Compiled compiled;
    compiled.shape = Compiler(heap, compiled).compileLevel(text, 0);
    return compiled;
}

/// Turns a shape into nodes. Nodes are kept in one array that never grows, so that they can point
/// at each other.
class YExpression::Builder {
  public:
    Builder(YHeap& heap, std::string_view shape, const std::vector<int>& leaves,
            YExpression& expression)
        : heap_(heap), shape_(shape), leaves_(leaves), expression_(expression),
          unused_(leaves.size()) {
        expression_.nodes_.reserve(shape.size());
    }

    const Node* build() {
        if (at_ >= shape_.size()) return nullptr;
        const char c = shape_[at_++];
        auto& nodes = expression_.nodes_;
        Node& node = nodes.emplace_back();
        if (c == 'z') {
            node.operation = 'z';
            return &node;
        }
        if (c == 't') {
            if (unused_ == 0) return nullptr;
            node.leaf = &heap_.get(leaves_[--unused_]);
            return &node;
        }
        if (c != 's' || at_ >= shape_.size()) return nullptr;
        node.operation = shape_[at_++];
        if (kAllOperators.find(node.operation) == std::string_view::npos) return nullptr;
        node.right = build();
        if (!node.right) return nullptr;
        if (isUnary(node.operation)) return &node;
        node.left = build();
        return node.left ? &node : nullptr;
    }

  private:
    YHeap& heap_;
    std::string_view shape_;
    const std::vector<int>& leaves_;
    YExpression& expression_;
    std::size_t at_ = 0;
    std::size_t unused_; ///< leaves are taken from the end
};

std::unique_ptr<YExpression> YExpression::build(YHeap& heap, std::string_view shape,
                                                const std::vector<int>& leaves) {
    if (shape.empty() || shape.size() > 4 * kMaxLeaves) return nullptr;
    auto expression = std::make_unique<YExpression>();
    expression->shape_ = shape;
    if (!Builder(heap, shape, leaves, *expression).build()) return nullptr;
    return expression;
}
