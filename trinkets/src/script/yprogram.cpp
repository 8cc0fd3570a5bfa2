// Decoding: what a script's instructions become when it is loaded.
#include "yprogram.h"

#include "omformat.h"
#include "ynumber.h"

#include <algorithm>
#include <utility>

using Do = YProgram::Do;

namespace {

constexpr std::string_view kNumericOperators = "+-*/\\%^=#<>";
/// What the operators do on integers, in that order; powers are reals.
constexpr Do kIntegerOperations[] = {Do::Add,      Do::Subtract,  Do::Multiply, Do::Divide,
                                     Do::Quotient, Do::Remainder, Do::Execute,  Do::Equal,
                                     Do::Unequal,  Do::Less,      Do::Greater};

Do realOperation(char operation) {
    switch (operation) {
    case '+': return Do::AddReal;
    case '-': return Do::SubtractReal;
    case '*': return Do::MultiplyReal;
    case '/': return Do::DivideReal;
    default: return Do::OperateReal;
    }
}

bool isConstant(const YVariable& leaf) { return leaf.kind() == YVariable::Kind::Constant; }

} // namespace

/// Writes the rows of one expression, for integers and for reals, as far as it has them.
class YProgram::RowBuilder {
  public:
    explicit RowBuilder(int instruction) : instruction_(static_cast<std::uint16_t>(instruction)) {}

    /// They store into `target`, or, without one, test and jump.
    Rows build(const YExpression& expression, YVariable* target, int jump, const Step& any) {
        if (!add(expression.root(), 0)) return {{}, {}, any};
        if (target)
            add(Do::StoreInteger, Do::StoreReal, 0, target);
        else
            test(jump);
        if (!hasIntegers_) integers_.clear();
        return {std::move(integers_), std::move(reals_), any};
    }

  private:
    /// False when the tree needs more than numbers.
    bool add(const YExpression::Node& node, int depth) {
        if (depth >= kStack) return false;
        switch (node.operation) {
        case 't': return addLeaf(Do::LoadInteger, Do::LoadReal, 0, *node.leaf);
        case 'z': return false; // see below: only as a left operand
        case '~':
            if (node.right->operation != 't') return false;
            add(Do::LengthInteger, Do::LengthReal, 0, node.right->leaf);
            return true;
        default: return addOperator(node, depth);
        }
    }

    bool addOperator(const YExpression::Node& node, int depth) {
        const auto which = kNumericOperators.find(node.operation);
        if (which == std::string_view::npos) return false;
        const Do operation = kIntegerOperations[which];
        hasIntegers_ = hasIntegers_ && operation != Do::Execute;
        if (node.left->operation == 'z')
            add(Do::Clear, Do::ClearReal, 0, nullptr);
        else if (!add(*node.left, depth))
            return false;
        const int real = node.operation;
        if (node.right->operation == 't') {
            if (addNumber(node.operation, *node.right->leaf)) return true;
            if (!addLeaf(operation, realOperation(node.operation), real, *node.right->leaf))
                return false;
            if (operation == Do::Remainder) divideByConstant(*node.right->leaf);
            return true;
        }
        const std::size_t push = integers_.size();
        add(Do::PushInteger, Do::PushReal, 0, nullptr);
        integers_.back().slot = reals_.back().slot = static_cast<std::size_t>(depth);
        if (!add(*node.right, depth + 1)) return false;
        pushAndLoad(push, depth);
        add(Do::CombineInteger, Do::CombineReal, real, nullptr);
        integers_.back().number = static_cast<int>(operation);
        integers_.back().slot = reals_.back().slot = static_cast<std::size_t>(depth);
        return true;
    }

    bool addLeaf(Do onIntegers, Do onReals, int real, YVariable& leaf) {
        using Kind = YVariable::Kind;
        if (leaf.kind() == Kind::Substring || leaf.kind() == Kind::Expression) return false;
        if (isConstant(leaf) && !leaf.holdsInteger()) {
            if (!leaf.holdsReal()) return false;
            hasIntegers_ = false;
        }
        add(onIntegers, onReals, real, &leaf);
        return true;
    }

    /// A sum with a whole constant needs no variable of its own.
    bool addNumber(char operation, const YVariable& leaf) {
        if ((operation != '+' && operation != '-') || !isConstant(leaf) || !leaf.holdsInteger() ||
            leaf.heldInteger() == 0) // a real zero would lose its sign
            return false;
        const int number = operation == '+' ? leaf.heldInteger() : -leaf.heldInteger();
        if (integers_.back().what == Do::LoadInteger) {
            integers_.back().what = Do::LoadSum;
            reals_.back().what = Do::LoadSumReal;
        } else {
            add(Do::AddNumber, Do::AddNumberReal, 0, nullptr);
        }
        integers_.back().number = reals_.back().number = number;
        return true;
    }

    /// What puts the accumulator aside and then loads it anew is one step.
    void pushAndLoad(std::size_t push, int slot) {
        if (integers_[push + 1].what != Do::LoadInteger) return;
        const auto join = [&](Row& row, Do joined) {
            row.erase(row.begin() + static_cast<std::ptrdiff_t>(push));
            row[push].what = joined;
            row[push].number = slot;
        };
        join(integers_, Do::PushLoadInteger);
        join(reals_, Do::PushLoadReal);
    }

    /// A comparison at the end is one step with its test.
    void test(int jump) {
        const auto becomes = [&](Do onIntegers, Do onReals) {
            integers_.back().what = onIntegers;
            reals_.back().what = onReals;
        };
        switch (integers_.back().what) {
        case Do::Equal: becomes(Do::TestEqual, Do::TestEqualReal); break;
        case Do::Unequal: becomes(Do::TestUnequal, Do::TestUnequalReal); break;
        case Do::Less: becomes(Do::TestLess, Do::TestLessReal); break;
        case Do::Greater: becomes(Do::TestGreater, Do::TestGreaterReal); break;
        default: add(Do::TestInteger, Do::TestReal, 0, nullptr);
        }
        integers_.back().number = reals_.back().number = jump;
    }

    void add(Do onIntegers, Do onReals, int real, YVariable* leaf) {
        integers_.push_back({onIntegers, instruction_, 0, {leaf}});
        reals_.push_back({onReals, instruction_, real, {leaf}});
    }

    void divideByConstant(const YVariable& divisor) {
        if (!isConstant(divisor) || !divisor.holdsInteger() || divisor.heldInteger() <= 1) return;
        Step& step = integers_.back();
        step.what = Do::RemainderBy;
        step.number = divisor.heldInteger();
        step.reciprocal = UINT64_MAX / static_cast<std::uint64_t>(step.number) + 1;
    }

    std::uint16_t instruction_;
    Row integers_;
    Row reals_;
    bool hasIntegers_ = true;
};

YProgram::YProgram(YHeap& heap, std::unique_ptr<YScript> script) : script_(std::move(script)) {
    operands_.reserve(script_->operands.size());
    for (const std::int16_t index : script_->operands)
        operands_.push_back(index == YScript::kEndOfList ? nullptr : &heap.get(index));
    for (const YInstruction& instruction : script_->instructions) {
        Instruction decoded{instruction.opcode, instruction.operand, 0, nullptr};
        if (YHasOperands(instruction.opcode)) {
            decoded.operands = operands_.data() + static_cast<std::size_t>(instruction.operand);
            while (decoded.operands[decoded.count]) ++decoded.count;
        }
        instructions_.push_back(decoded);
    }
    for (int i = 0; i < size(); ++i) {
        Rows& rows = rows_.emplace_back(decode(i));
        starts_.push_back(static_cast<std::int32_t>(steps_.size()));
        steps_.resize(steps_.size() + std::max<std::size_t>(rows.reals.size(), 1));
        expect(i, Values::Integers);
    }
}

std::string YProgram::place(const Instruction& code) const {
    if (script_->lines.empty()) return script_->name;
    const auto number = static_cast<std::size_t>(&code - instructions_.data());
    const YSourceLine line = script_->lines[number];
    return OMFormat("%s:%d", script_->files[line.file].c_str(), line.line);
}

std::string YProgram::statement(const Instruction& code) {
    const auto keyword = [&]() -> std::string_view {
        switch (code.opcode) {
        case YOpcode::Procedure: return "procedure";
        case YOpcode::ForNext: return "for";
        case YOpcode::Test: return "if";
        case YOpcode::Assign:
        case YOpcode::Command: return {};
        default: return YTraceName(code.opcode);
        }
    };
    std::string text(keyword());
    for (int i = 0; i < code.count; ++i) {
        if (!text.empty()) text += code.opcode == YOpcode::Assign && i == 1 ? '=' : ' ';
        text += code.operands[i]->text();
    }
    return text;
}

std::optional<int> YProgram::handlerOf(std::string_view procedure) const {
    if (!procedure.starts_with('+')) return std::nullopt;
    const int header = ynumber::scanInteger(procedure);
    return isHeader(header) ? std::optional(header + 1) : std::nullopt;
}

YProgram::Step* YProgram::expect(int instruction, Values values) {
    const Rows& rows = rows_[static_cast<std::size_t>(instruction)];
    Step* const begin = start(instruction);
    const auto use = [begin](const Row& row) {
        if (begin->what != row.front().what) std::copy(row.begin(), row.end(), begin);
    };
    if (values == Values::Integers && !rows.integers.empty())
        use(rows.integers);
    else if (values != Values::Any && !rows.reals.empty())
        use(rows.reals);
    else
        *begin = rows.any;
    return begin;
}

/// The jump after a test is there: the compiler writes it and the reader of precompiled scripts
/// asks for it.
YProgram::Rows YProgram::decode(int instruction) const {
    const Instruction& code = at(instruction);
    const auto any = [&](Do what, YVariable* variable = nullptr, int number = 0) {
        return Step{what, static_cast<std::uint16_t>(instruction), number, {variable}};
    };
    const auto isExpression = [&](int operand) {
        return code.count > operand &&
               code.operands[operand]->kind() == YVariable::Kind::Expression;
    };
    const auto ways = [&](int operand, YVariable* target, int jump, const Step& general) {
        RowBuilder rows(instruction);
        return rows.build(*code.operands[operand]->expression(), target, jump, general);
    };
    switch (code.opcode) {
    case YOpcode::ForNext:
        if (code.count < 2) break;
        return {{}, {}, any(Do::CountRound, code.operands[0], at(instruction + 1).target)};
    case YOpcode::Test: {
        if (!isExpression(0)) break;
        const int jump = at(instruction + 1).target;
        return ways(0, nullptr, jump, any(Do::TestAny, nullptr, jump));
    }
    case YOpcode::Assign:
        if (code.count != 2) break;
        if (!isExpression(1)) return {{}, {}, any(Do::AssignValue)};
        return ways(1, code.operands[0], 0, any(Do::AssignAny));
    case YOpcode::Jump: return {{}, {}, any(Do::Jump, nullptr, code.target)};
    case YOpcode::Call: return {{}, {}, any(Do::Call, code.operands[0])};
    case YOpcode::Procedure: return {{}, {}, any(Do::EnterProcedure)};
    case YOpcode::Return: return {{}, {}, any(Do::Return)};
    default: break;
    }
    return {{}, {}, any(Do::Execute)};
}
